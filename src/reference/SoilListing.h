#pragma once

#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

namespace quillon::reference {

// What the last reading of the soil files found, kept so that the next
// CreateSoilLookup on the same open database can give the same rows, lines
// and messages without reading every soil file again, as long as no soil
// file was added, removed or written since.

// The soil files of a folder as the file system describes them: the folder,
// the names, and each file's size and modification time.
struct SoilFolderStamp {
    QString folder;
    QStringList names;
    std::vector<std::pair<qint64, qint64>> sizesAndTimes;
    bool operator==(const SoilFolderStamp& other) const;
};
SoilFolderStamp soilFolderStamp(const QString& folder, const QStringList& names);

// Keeps SoilLookup's rows, which a reading of the files of `stamp` has just
// put into the empty table, with the lines read and the identifiers it told
// twice (in the order told). The rows go to a temporary table of the
// connection.
void keepSoilReading(
    const SoilFolderStamp& stamp, const QStringList& lines, const QStringList& repeatedIds);
// Forgets the kept reading.
void forgetSoilReading();

// Whether the kept reading is of `stamp`, on the database open now.
bool soilReadingKeptFor(const SoilFolderStamp& stamp);
// Whether SoilLookup holds exactly the kept rows: nothing was added to or
// changed in it, or taken from it, since the reading or the last restore,
// through this connection or another.
bool keptSoilRowsStand();
// Puts the kept rows back into the empty SoilLookup, in their order.
void restoreKeptSoilRows();

const QStringList& keptSoilLines();
const QStringList& keptRepeatedSoilIds();

} // namespace quillon::reference
