#pragma once

#include <QDate>
#include <QString>
#include <QVariant>

namespace quillon::editors {

// The scratch table holds its dates as ISO text ("2021-04-28"), so that they
// sort and compare as dates and the rules' date bounds apply to them.

// A date as the scratch table holds it; NULL for an invalid date.
QVariant scratchDate(const QDate& date);
// The same for date text in the editors' format ("" gives NULL).
QVariant scratchDateOf(const QString& dateText);
// The date a scratch value holds; invalid for NULL.
QDate dateOfScratch(const QVariant& value);

} // namespace quillon::editors
