#include "format/NumberText.h"

#include <charconv>
#include <cmath>
#include <system_error>

namespace quillon::format {

namespace {

// Shortest digits and decimal exponent that give back `value` as a float:
// value = 0.d1d2d3… × 10^(exponent + 1), i.e. d1 is the digit of 10^exponent.
struct Decimal {
    bool negative = false;
    QString digits; // no leading zeros; "0" for zero
    int exponent = 0;
};

Decimal shortestFloat(float value)
{
    Decimal d;
    char buf[64];
    auto res = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::scientific);
    QString text = QString::fromLatin1(buf, int(res.ptr - buf)); // e.g. "-1.2345e+02"
    if (text.startsWith(QLatin1Char('-'))) {
        d.negative = true;
        text.remove(0, 1);
    }
    const int e = text.indexOf(QLatin1Char('e'));
    QString mantissa = text.left(e);
    d.exponent = text.mid(e + 1).toInt();
    mantissa.remove(QLatin1Char('.'));
    while (mantissa.size() > 1 && mantissa.endsWith(QLatin1Char('0')))
        mantissa.chop(1);
    d.digits = mantissa;
    if (d.digits == QLatin1String("0"))
        d.negative = false;
    return d;
}

QString fixedText(const Decimal& d)
{
    QString out;
    if (d.exponent < 0) {
        out = QStringLiteral("0.") + QString(-d.exponent - 1, QLatin1Char('0')) + d.digits;
    } else if (d.digits.size() <= d.exponent + 1) {
        out = d.digits + QString(d.exponent + 1 - d.digits.size(), QLatin1Char('0'));
    } else {
        out = d.digits.left(d.exponent + 1) + QLatin1Char('.') + d.digits.mid(d.exponent + 1);
    }
    return d.negative ? QLatin1Char('-') + out : out;
}

QString floatText(float value)
{
    if (std::isnan(value))
        return QStringLiteral("NaN");
    if (std::isinf(value))
        return value > 0 ? QStringLiteral("Infinity") : QStringLiteral("-Infinity");
    const Decimal d = shortestFloat(value);
    if (d.digits == QLatin1String("0"))
        return QStringLiteral("0");
    if (d.exponent >= 7 || d.exponent < -4) {
        QString out = d.digits.left(1);
        if (d.digits.size() > 1)
            out += QLatin1Char('.') + d.digits.mid(1);
        out += QStringLiteral("E%1%2").arg(QLatin1Char(d.exponent < 0 ? '-' : '+')).arg(std::abs(d.exponent), 2, 10, QLatin1Char('0'));
        return d.negative ? QLatin1Char('-') + out : out;
    }
    return fixedText(d);
}

// Rounds the decimal digits of `d` to `places` after the point, half away
// from zero, and returns the integer and fraction digit strings.
void roundDecimal(const Decimal& d, int places, QString& intDigits, QString& fracDigits)
{
    // Lay the digits out as a fixed string with `places` decimals plus one
    // guard digit, then round on the guard.
    QString all; // digits of floor(|value| * 10^(places+1))
    const int shift = d.exponent + 1 + places + 1; // digits before the cut
    if (shift <= 0) {
        all = QStringLiteral("0");
    } else if (shift >= d.digits.size()) {
        all = d.digits + QString(shift - d.digits.size(), QLatin1Char('0'));
    } else {
        all = d.digits.left(shift);
    }
    const bool roundUp = all.back().digitValue() >= 5 && shift > 0;
    all.chop(1);
    if (all.isEmpty())
        all = QStringLiteral("0");
    if (roundUp) {
        int i = all.size() - 1;
        while (i >= 0) {
            if (all[i] == QLatin1Char('9')) {
                all[i] = QLatin1Char('0');
                --i;
            } else {
                all[i] = QChar(all[i].unicode() + 1);
                break;
            }
        }
        if (i < 0)
            all.prepend(QLatin1Char('1'));
    }
    if (all.size() < places + 1)
        all = QString(places + 1 - all.size(), QLatin1Char('0')) + all;
    intDigits = all.left(all.size() - places);
    fracDigits = all.right(places);
    while (intDigits.size() > 1 && intDigits.startsWith(QLatin1Char('0')))
        intDigits.remove(0, 1);
}

} // namespace

QString decimalText(double value)
{
    if (std::isfinite(value) && value == std::floor(value) && std::fabs(value) < 1e15)
        return QString::number(static_cast<qint64>(value));
    char buf[64];
    auto res = std::to_chars(buf, buf + sizeof buf, value);
    return QString::fromLatin1(buf, int(res.ptr - buf));
}

QString NumText(const QVariant& value)
{
    if (value.isNull() || !value.isValid())
        return QString();
    QString text;
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
        text = floatText(static_cast<float>(value.toDouble()));
        break;
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::ULongLong:
    case QMetaType::Short:
        text = QString::number(value.toLongLong());
        break;
    case QMetaType::Bool:
        text = value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
        break;
    default:
        text = value.toString();
    }
    text.replace(QLatin1Char(','), QLatin1Char('.'));
    return text.trimmed();
}

QString formatMask(double value, const QString& mask)
{
    const int point = mask.indexOf(QLatin1Char('.'));
    const QString intMask = point < 0 ? mask : mask.left(point);
    const QString fracMask = point < 0 ? QString() : mask.mid(point + 1);
    const int places = fracMask.size();

    const Decimal d = shortestFloat(static_cast<float>(value));
    QString intDigits;
    QString fracDigits;
    roundDecimal(d, places, intDigits, fracDigits);

    const int zerosBefore = int(intMask.count(QLatin1Char('0')));
    if (intDigits == QLatin1String("0") && zerosBefore == 0)
        intDigits.clear();
    if (intDigits.size() < zerosBefore)
        intDigits = QString(zerosBefore - intDigits.size(), QLatin1Char('0')) + intDigits;

    // '#' places after the point drop trailing zeros; '0' places keep them.
    const int lastZero = int(fracMask.lastIndexOf(QLatin1Char('0')));
    while (fracDigits.size() > lastZero + 1 && fracDigits.endsWith(QLatin1Char('0')))
        fracDigits.chop(1);

    QString out = intDigits;
    if (point >= 0)
        out += QLatin1Char('.') + fracDigits;
    const bool zero = (intDigits.isEmpty() || intDigits.count(QLatin1Char('0')) == intDigits.size())
        && fracDigits.count(QLatin1Char('0')) == fracDigits.size();
    if (d.negative && !zero)
        out.prepend(QLatin1Char('-'));
    return out;
}

QString maskedNumber(const QVariant& value, const QString& mask)
{
    return NumText(formatMask(value.toDouble(), mask));
}

double leadingNumber(const QString& text)
{
    // The characters of the number, blanks left out, into a small buffer: a
    // cell is a few characters wide.
    char number[64];
    int n = 0;
    for (QChar c : text) {
        if (c == QLatin1Char(' ') || c == QLatin1Char('\t') || c == QLatin1Char('\n')
            || c == QLatin1Char('\r'))
            continue;
        if (c.unicode() >= 128 || n == int(sizeof number))
            break;
        number[n++] = char(c.unicode());
    }
    const auto isDigit = [&number](int i) { return number[i] >= '0' && number[i] <= '9'; };
    int i = 0;
    const bool negative = i < n && number[i] == '-';
    if (i < n && (number[i] == '-' || number[i] == '+'))
        ++i;
    const int digitsStart = i;
    while (i < n && isDigit(i))
        ++i;
    if (i < n && number[i] == '.') {
        ++i;
        while (i < n && isDigit(i))
            ++i;
    }
    if (i == digitsStart || (i == digitsStart + 1 && number[digitsStart] == '.'))
        return 0;
    int end = i;
    if (i < n && (number[i] == 'e' || number[i] == 'E' || number[i] == 'd' || number[i] == 'D')) {
        int j = i + 1;
        if (j < n && (number[j] == '-' || number[j] == '+'))
            ++j;
        const int expStart = j;
        while (j < n && isDigit(j))
            ++j;
        if (j > expStart) {
            number[i] = 'e';
            end = j;
        }
    }
    // A point with no digits behind it ends the number.
    int last = end;
    if (number[last - 1] == '.')
        --last;
    double value = 0;
    const auto result = std::from_chars(number + digitsStart, number + last, value);
    if (result.ec != std::errc() || !std::isfinite(value))
        return 0;
    return negative ? -value : value;
}

bool isNumeric(const QString& text)
{
    const QString s = text.trimmed();
    int i = 0;
    const int n = s.size();
    if (i < n && (s[i] == QLatin1Char('-') || s[i] == QLatin1Char('+')))
        ++i;
    int digits = 0;
    while (i < n && s[i].isDigit() && s[i].unicode() < 128) {
        ++i;
        ++digits;
    }
    if (i < n && s[i] == QLatin1Char('.')) {
        ++i;
        while (i < n && s[i].isDigit() && s[i].unicode() < 128) {
            ++i;
            ++digits;
        }
    }
    if (digits == 0)
        return false;
    if (i < n && (s[i] == QLatin1Char('e') || s[i] == QLatin1Char('E'))) {
        ++i;
        if (i < n && (s[i] == QLatin1Char('-') || s[i] == QLatin1Char('+')))
            ++i;
        const int expStart = i;
        while (i < n && s[i].isDigit() && s[i].unicode() < 128)
            ++i;
        if (i == expStart)
            return false;
    }
    return i == n;
}

} // namespace quillon::format
