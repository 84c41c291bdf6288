#include "reference/SoilListing.h"

#include "database/Sql.h"
#include "reference/SuiteFiles.h"

#include <QFile>

#include <filesystem>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif
#include <tuple>

namespace quillon::reference {

namespace {

struct KeptReading {
    SoilFolderStamp stamp;
    QStringList lines;
    QStringList repeatedIds;
    int rows = 0;
    int generation = -1; // the opening of the database the kept rows live in
    // The watch count and the database's data version when SoilLookup last
    // held exactly the kept rows.
    qint64 changes = -1;
    qint64 dataVersion = -1;
};

KeptReading& kept()
{
    static KeptReading reading;
    return reading;
}

// The number of kept rows, or -1 when the table isn't there (the
// transaction that made it was rolled back).
int keptRowCount()
{
    try {
        return database::scalar(QStringLiteral("SELECT COUNT(*) FROM temp.SoilLookupKept")).toInt();
    } catch (const RuntimeError&) {
        return -1;
    }
}

// Rows added to or changed in SoilLookup through this connection are
// counted by two temporary triggers; rows taken away show in the table's
// count. Another connection's writes show in the data version.
void watchSoilLookup()
{
    database::exec(
        QStringLiteral("CREATE TEMP TABLE IF NOT EXISTS SoilLookupWatch AS SELECT 0 AS Changes"));
    for (const char* event : { "INSERT", "UPDATE" }) {
        database::exec(QStringLiteral(
            "CREATE TEMP TRIGGER IF NOT EXISTS SoilLookupWatch_%1 AFTER %1 "
            "ON main.SoilLookup BEGIN UPDATE SoilLookupWatch SET Changes = Changes + 1; END")
                           .arg(QLatin1String(event)));
    }
}

std::pair<qint64, qint64> watchMarks()
{
    return {
        database::scalar(QStringLiteral("SELECT Changes FROM temp.SoilLookupWatch")).toLongLong(),
        database::scalar(QStringLiteral("PRAGMA data_version")).toLongLong()
    };
}

// Notes that SoilLookup holds exactly the kept rows now.
void markStanding()
{
    KeptReading& k = kept();
    std::tie(k.changes, k.dataVersion) = watchMarks();
}

const QString columns = QStringLiteral("Code, Depth, Description, SoilFileNumber, SoilFile");

} // namespace

bool SoilFolderStamp::operator==(const SoilFolderStamp& other) const
{
    return folder == other.folder && names == other.names && sizesAndTimes == other.sizesAndTimes;
}

SoilFolderStamp soilFolderStamp(const QString& folder, const QStringList& names)
{
    SoilFolderStamp stamp { folder, names, {} };
    for (const QString& name : names) {
        // One look at each file; the time to the nanosecond, so that a file
        // written twice within a second counts as changed.
        const QByteArray path = QFile::encodeName(joinPath(folder, name));
#ifdef Q_OS_UNIX
        struct stat info;
        const bool found = ::stat(path.constData(), &info) == 0;
        stamp.sizesAndTimes.emplace_back(found ? qint64(info.st_size) : -1,
            found ? qint64(info.st_mtim.tv_sec) * 1000000000 + info.st_mtim.tv_nsec : 0);
#else
        std::error_code error;
        const std::filesystem::path file = path.toStdString();
        const auto size = std::filesystem::file_size(file, error);
        const auto time = std::filesystem::last_write_time(file, error);
        stamp.sizesAndTimes.emplace_back(
            error ? -1 : qint64(size), qint64(time.time_since_epoch().count()));
#endif
    }
    return stamp;
}

void keepSoilReading(
    const SoilFolderStamp& stamp, const QStringList& lines, const QStringList& repeatedIds)
{
    watchSoilLookup();
    database::exec(QStringLiteral("DROP TABLE IF EXISTS temp.SoilLookupKept"));
    database::exec(
        QStringLiteral("CREATE TEMP TABLE SoilLookupKept (KeptRowid INTEGER PRIMARY KEY, %1)")
            .arg(columns));
    database::exec(
        QStringLiteral("INSERT INTO temp.SoilLookupKept SELECT rowid, %1 FROM main.SoilLookup")
            .arg(columns));
    kept() = { stamp, lines, repeatedIds, keptRowCount(), database::connectionGeneration() };
    markStanding();
}

void forgetSoilReading()
{
    kept() = {};
}

bool soilReadingKeptFor(const SoilFolderStamp& stamp)
{
    const KeptReading& k = kept();
    return k.generation == database::connectionGeneration() && k.stamp == stamp
        && keptRowCount() == k.rows;
}

bool keptSoilRowsStand()
{
    const KeptReading& k = kept();
    return k.generation == database::connectionGeneration() && keptRowCount() == k.rows
        && watchMarks() == std::make_pair(k.changes, k.dataVersion)
        && database::rowCount(QStringLiteral("SoilLookup")) == k.rows;
}

void restoreKeptSoilRows()
{
    database::exec(
        QStringLiteral("INSERT INTO main.SoilLookup (%1) SELECT %1 FROM temp.SoilLookupKept "
                       "ORDER BY KeptRowid")
            .arg(columns));
    markStanding();
}

const QStringList& keptSoilLines()
{
    return kept().lines;
}

const QStringList& keptRepeatedSoilIds()
{
    return kept().repeatedIds;
}

} // namespace quillon::reference
