#include "editors/ScratchDates.h"

#include "format/DateCodes.h"

namespace quillon::editors {

QVariant scratchDate(const QDate& date)
{
    return date.isValid() ? QVariant(date.toString(Qt::ISODate)) : QVariant();
}

QVariant scratchDateOf(const QString& dateText)
{
    return dateText.isEmpty() ? QVariant() : scratchDate(format::toDate(dateText));
}

QDate dateOfScratch(const QVariant& value)
{
    return value.isNull() ? QDate() : QDate::fromString(value.toString(), Qt::ISODate);
}

} // namespace quillon::editors
