#pragma once

#include <QString>
#include <QVariant>

namespace quillon::format {

// A number as the file writes it: "." as decimal separator whatever the
// locale, trimmed; an empty string for NULL. A floating value is written as
// the shortest text that gives back the same 32-bit float, with no trailing
// ".0" on a whole number, and in exponent form ("1E-05", "1.5E+07") below
// 0.0001 and from ten million up. Text values only have "," turned into ".".
QString NumText(const QVariant& value);

// The value through a digit template: "0" a digit always written, "#" a
// digit written only if significant, "." the decimal point ("#0.00" writes 0
// as "0.00", "##.0" writes 0.5 as ".5", "##" writes 0 as ""). Rounds half
// away from zero on the value's decimal digits.
QString formatMask(double value, const QString& mask);
// The same, passed through NumText: the form every masked column uses.
QString maskedNumber(const QVariant& value, const QString& mask);

// The leading-number rule of the readers: blanks anywhere are skipped, and
// digits are taken up to the first character that can't continue the number
// (sign, digits, one point, an exponent). Text without a number gives 0.
double leadingNumber(const QString& text);

// Whether text reads as a number as a whole: blanks around it, a sign, digits
// with at most one point, an optional exponent.
bool isNumeric(const QString& text);

// Plain decimal text of a double: integers without a point, other values
// in their shortest form.
QString decimalText(double value);

} // namespace quillon::format
