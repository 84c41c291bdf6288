#pragma once

#include <QDate>
#include <QString>
#include <QVariant>

namespace quillon::format {

// Date codes of the experiment file and the date text of the editors.
//
// A five-digit code is a two-digit year and a three-digit day of the year;
// a seven-digit code a four-digit year and the day. Two-digit years 26 to 99
// are 1926 to 1999, 00 to 25 are 2000 to 2025. Date text is written in the
// format of state().DateTextFormat.

// A code whose last three digits are a zero-based day offset (000 is
// January 1) as date text; "" for NULL. Failures are reported
// (" in TheDate.") and give "".
QString TheDate(const QVariant& value);
// The same for a seven-character code; "" unless it has 7 characters.
QString TheDate2(const QVariant& value);

// The five-digit code as it stands in the file (001 is January 1) as date
// text; "", "-99" and 0 give "". `value` keeps the code less one day,
// zero-padded to five characters.
QString YYDDDToDate(QString& value);
// The same ending in TheDate2: fewer than seven digits give "".
QString YYYYDDDToDate(QString& value);

// A date as a five-character (two-digit year) or seven-character code.
// `date` is replaced by its month/day/year text. A value that isn't a date
// gives "001" and leaves `date` empty.
QString DateToYYDDD(QVariant& date);
QString DateToYYYYDDD(QVariant& date);

// Month/day/year with no leading zeros and a four-digit year; "" when the
// value is no date.
QString DateToSlashText(const QVariant& value);

// The date a value holds: a date, or text in the date-text format or in
// month/day/year form. Invalid when it holds none.
QDate toDate(const QVariant& value);

// Date text of a date, in the editors' format.
QString dateText(const QDate& date);

} // namespace quillon::format
