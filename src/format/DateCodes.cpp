#include "format/DateCodes.h"

#include "app/AppState.h"
#include "app/RuntimeError.h"
#include "app/UserInterface.h"
#include "format/NumberText.h"

namespace quillon::format {

namespace {

const QString typeMismatch = QStringLiteral("Type mismatch");

bool allDigits(const QString& text)
{
    if (text.isEmpty())
        return false;
    for (QChar c : text) {
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return false;
    }
    return true;
}

// "1/1/" + year text, plus a number of days given as text. Throws "Type
// mismatch" for a base that is no date or a day count that is no number.
QDate baseDatePlusDays(const QString& yearText, const QString& daysText)
{
    if (!allDigits(yearText))
        throw RuntimeError(err::TypeMismatch, typeMismatch);
    const int year = yearText.toInt();
    if (year < 100 || year > 9999)
        throw RuntimeError(err::TypeMismatch, typeMismatch);
    if (!isNumeric(daysText))
        throw RuntimeError(err::TypeMismatch, typeMismatch);
    const QDate result = QDate(year, 1, 1).addDays(qRound64(daysText.trimmed().toDouble()));
    if (!result.isValid() || result.year() > 9999)
        throw RuntimeError(err::Other, QStringLiteral("Invalid procedure call or argument"));
    return result;
}

QString decrementedCode(QString& value)
{
    value = decimalText(leadingNumber(value) - 1);
    if (value.size() < 5)
        value = QString(5 - value.size(), QLatin1Char('0')) + value;
    return value;
}

bool isMissingCode(const QString& value)
{
    return value.trimmed() == QLatin1String("-99") || value.isEmpty() || leadingNumber(value) == 0;
}

QString dateToCode(QVariant& date, int yearDigits)
{
    const QDate d = toDate(date);
    if (!d.isValid()) {
        date = QString();
        return QStringLiteral("001");
    }
    QString n = QString::number(QDate(d.year(), 1, 1).daysTo(d) + 1);
    if (n.size() < 3)
        n = QString(3 - n.size(), QLatin1Char('0')) + n;
    const QString slash = DateToSlashText(d);
    date = slash;
    return slash.right(yearDigits) + n;
}

} // namespace

QDate toDate(const QVariant& value)
{
    if (value.typeId() == QMetaType::QDate)
        return value.toDate();
    if (value.typeId() == QMetaType::QDateTime)
        return value.toDateTime().date();
    if (value.typeId() != QMetaType::QString)
        return {};
    const QString text = value.toString().trimmed();
    for (const QString& format : { state().DateTextFormat, QStringLiteral("M/d/yyyy") }) {
        const QDate d = QDate::fromString(text, format);
        if (d.isValid())
            return d;
    }
    return {};
}

QString dateText(const QDate& date) { return date.toString(state().DateTextFormat); }

QString TheDate(const QVariant& value)
{
    if (value.isNull() || !value.isValid())
        return QString();
    try {
        const QString s = value.toString().trimmed();
        if (s.size() < 3)
            throw RuntimeError(err::Other, QStringLiteral("Invalid procedure call or argument"));
        const double y = leadingNumber(s.left(s.size() - 3));
        const QString century = (s.size() == 5 && y > 25) ? QStringLiteral("19") : QStringLiteral("20");
        return dateText(baseDatePlusDays(century + s.left(2), s.right(3)));
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in TheDate."));
        return QString();
    }
}

QString TheDate2(const QVariant& value)
{
    if (value.isNull() || !value.isValid())
        return QString();
    const QString s = value.toString().trimmed();
    if (s.size() != 7)
        return QString();
    try {
        return dateText(baseDatePlusDays(s.left(4), s.right(3)));
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in TheDate2."));
        return QString();
    }
}

QString YYDDDToDate(QString& value)
{
    if (isMissingCode(value))
        return QString();
    return TheDate(decrementedCode(value));
}

QString YYYYDDDToDate(QString& value)
{
    if (isMissingCode(value))
        return QString();
    return TheDate2(decrementedCode(value));
}

QString DateToYYDDD(QVariant& date) { return dateToCode(date, 2); }

QString DateToYYYYDDD(QVariant& date) { return dateToCode(date, 4); }

QString DateToSlashText(const QVariant& value)
{
    const QDate d = toDate(value);
    if (!d.isValid())
        return QString();
    return QStringLiteral("%1/%2/%3").arg(d.month()).arg(d.day()).arg(d.year());
}

} // namespace quillon::format
