#include "reference/SoilLookups.h"

#include "app/AppState.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "format/Columns.h"
#include "format/NumberText.h"
#include "format/TextLines.h"
#include "reference/LookupText.h"
#include "reference/Profile.h"
#include "reference/SuiteFiles.h"

#include <QFile>

#include <algorithm>
#include <filesystem>
#include <vector>

namespace quillon::reference {

namespace {

using format::mid;
using format::trimSpaces;

// Whether a line names the soil `code` in its columns 2-11, trimmed. The
// search runs over every line of every soil file, so it compares in place.
bool namesSoil(const QString& line, const QString& code)
{
    const QChar* text = line.constData();
    int begin = 1;
    int end = std::min(int(line.size()), 11);
    while (begin < end && text[begin] == QLatin1Char(' '))
        ++begin;
    while (end > begin && text[end - 1] == QLatin1Char(' '))
        --end;
    if (end - begin != code.size())
        return false;
    for (int k = 0; k < code.size(); ++k) {
        const QChar a = text[begin + k];
        const QChar b = code.at(k);
        if (a != b && a.toCaseFolded() != b.toCaseFolded())
            return false;
    }
    return true;
}

void tellRepeatedId(const QString& code)
{
    msgBox(QStringLiteral("Soil ID is not unique. Soil") + QStringLiteral(" '") + code
            + QStringLiteral("' is read once."),
        MsgButtons::OK, MsgIcon::None, QStringLiteral("Error"));
}

// The soil files of the folder as the file system describes them: names,
// sizes and modification times. An equal stamp means that no soil file was
// added, removed or written since.
struct FolderStamp {
    QString folder;
    QStringList names;
    std::vector<std::pair<qint64, qint64>> sizesAndTimes;
    bool operator==(const FolderStamp& other) const
    {
        return folder == other.folder && names == other.names
            && sizesAndTimes == other.sizesAndTimes;
    }
};

FolderStamp stampOf(const QString& folder, const QStringList& names)
{
    FolderStamp stamp { folder, names, {} };
    for (const QString& name : names) {
        // Nanoseconds, so that a file written twice within a second counts
        // as changed.
        std::error_code error;
        const std::filesystem::path file = QFile::encodeName(joinPath(folder, name)).toStdString();
        const auto size = std::filesystem::file_size(file, error);
        const auto time = std::filesystem::last_write_time(file, error);
        stamp.sizesAndTimes.emplace_back(
            error ? -1 : qint64(size), qint64(time.time_since_epoch().count()));
    }
    return stamp;
}

// What the last reading of the soil files found: an Open with the folder
// unchanged replays it instead of reading every soil file again. The rows
// are kept in a temporary table of the connection, which the next Open
// copies back with one statement.
struct LastReading {
    FolderStamp stamp;
    QStringList lines;
    QStringList repeatedIds; // in the order they were told
    int rows = 0;
    int generation = -1; // the opening of the database the kept rows live in
};

LastReading& lastReading()
{
    static LastReading reading;
    return reading;
}

// The number of kept rows, or -1 when the table isn't there (a transaction
// that made it was rolled back).
int keptRowCount()
{
    try {
        return database::scalar(QStringLiteral("SELECT COUNT(*) FROM temp.SoilLookupKept")).toInt();
    } catch (const RuntimeError&) {
        return -1;
    }
}

void keepReading(const FolderStamp& stamp, const QStringList& repeatedIds)
{
    database::exec(QStringLiteral("DROP TABLE IF EXISTS temp.SoilLookupKept"));
    database::exec(
        QStringLiteral("CREATE TEMP TABLE SoilLookupKept AS SELECT * FROM main.SoilLookup"));
    lastReading()
        = { stamp, SoilLines(), repeatedIds, keptRowCount(), database::connectionGeneration() };
}

// Replays the last reading when the folder is as it was then, SoilLookup is
// empty as a reading finds it, and the kept rows are all there: the same
// rows, the same lines, the same messages in the same order.
bool replayReading(const FolderStamp& stamp)
{
    const LastReading& last = lastReading();
    if (last.generation != database::connectionGeneration() || !(last.stamp == stamp)
        || database::rowCount(QStringLiteral("SoilLookup")) != 0 || keptRowCount() != last.rows)
        return false;
    database::exec(QStringLiteral("INSERT INTO main.SoilLookup SELECT * FROM temp.SoilLookupKept"));
    SoilLines() = last.lines;
    for (const QString& code : last.repeatedIds)
        tellRepeatedId(code);
    return true;
}

// Adds the profiles of one soil file; the identifiers already listed are
// told and added to `repeatedIds`.
void addProfiles(
    const QString& fileName, int number, const QStringList& lines, QStringList& repeatedIds)
{
    QStringList& soilLines = SoilLines();
    std::vector<int> headers;
    for (const QString& line : lines) {
        if (line.startsWith(QLatin1Char('!')) || trimSpaces(line).isEmpty())
            continue;
        if (line.startsWith(QLatin1Char('*')))
            headers.push_back(int(soilLines.size()));
        soilLines.append(line);
    }

    const QString soilFile = fileName.toUpper().left(30);
    for (int index : headers) {
        const QString& header = soilLines.at(index);
        const QString code = trimSpaces(mid(header, 2, 10));
        QString description = trimSpaces(withoutApostrophes(mid(header, 38, 30)));
        if (description.isEmpty())
            description = code;
        try {
            database::insertRow(QStringLiteral("SoilLookup"),
                { { QStringLiteral("Code"), textOrNull(code) },
                    { QStringLiteral("Depth"), textOrNull(trimSpaces(mid(header, 32, 5))) },
                    { QStringLiteral("Description"), textOrNull(description) },
                    { QStringLiteral("SoilFileNumber"), number },
                    { QStringLiteral("SoilFile"), soilFile } });
        } catch (const RuntimeError& e) {
            if (e.number() != err::DuplicateKey)
                throw;
            tellRepeatedId(code);
            repeatedIds << code;
        }
    }
}

} // namespace

QString& SoilFolder()
{
    static QString folder;
    return folder;
}

QStringList& SoilLines()
{
    static QStringList lines;
    return lines;
}

void CreateSoilLookup()
{
    SoilFolder() = requiredProfileLocation("SLD", QStringLiteral("Cannot locate Soil files."));

    database::Transaction transaction;
    const QString folder = locationFolder(SoilFolder());
    const QStringList names = listMatching(folder, QStringLiteral("*.sol"));
    const FolderStamp stamp = stampOf(folder, names);
    if (replayReading(stamp)) {
        transaction.commit();
        return;
    }
    SoilLines().clear();
    QStringList repeatedIds;
    int number = 1;
    for (const QString& name : names) {
        // SOIL.SOL and the two-letter files only; SOIL.SOL is always number
        // 1, and a file after it counts on from there.
        const bool general = name.compare(QLatin1String("SOIL.SOL"), Qt::CaseInsensitive) == 0;
        if (!general && trimSpaces(name).size() != 6)
            continue;
        number = general ? 1 : number + 1;

        const QString path = joinPath(folder, name);
        QStringList lines;
        try {
            lines = readSuiteLines(path);
        } catch (const RuntimeError& e) {
            msgBox(QStringLiteral("Cannot open file ") + path + QStringLiteral(". ") + e.text());
            endProgram();
        }
        try {
            addProfiles(name, number, lines, repeatedIds);
        } catch (const RuntimeError& e) {
            msgBox(QStringLiteral("Invalid information in file  ") + path + QStringLiteral(". ")
                + e.text());
            endProgram();
        }
    }
    keepReading(stamp, repeatedIds);
    transaction.commit();
}

void FillSoilTable(const QString& code)
{
    try {
        database::Transaction transaction;
        database::exec(QStringLiteral("DELETE FROM SoilData"));

        const QStringList& lines = SoilLines();
        const int n = int(lines.size());
        int header = 0;
        while (header < n && !namesSoil(lines.at(header), code))
            ++header;
        if (header == n) {
            transaction.commit();
            return;
        }

        // Five site and heading lines stand between the header and the
        // layers; only the first layer block is read.
        for (int i = header + 6; i < n; ++i) {
            const QString& line = lines.at(i);
            if (line.startsWith(QLatin1Char('*')) || trimSpaces(line).isEmpty())
                break;
            const QString bulkDensity = mid(line, 45, 5);
            database::insertRow(QStringLiteral("SoilData"),
                { { QStringLiteral("SLB"), format::leadingNumber(mid(line, 2, 5)) },
                    { QStringLiteral("SLLL"), format::leadingNumber(mid(line, 15, 5)) },
                    { QStringLiteral("SDUL"), format::leadingNumber(mid(line, 21, 5)) },
                    { QStringLiteral("SBDM"),
                        trimSpaces(bulkDensity).isEmpty() ? -99.0
                                                          : format::leadingNumber(bulkDensity) } });
            if (i + 1 < n && lines.at(i + 1).startsWith(QLatin1String("@  SLB")))
                break;
        }
        transaction.commit();
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in FillSoilTable."));
    }
}

void CheckOn_ICSoil_Empty()
{
    try {
        database::Transaction transaction;
        // The table is made anew, empty, and takes the soils of the fields.
        database::remakeTable(QStringLiteral("ICSoil"), QStringLiteral("CREATE TABLE ICSoil (SLNO TEXT COLLATE NOCASE)"));
        database::exec(QStringLiteral(
            "INSERT INTO ICSoil (SLNO) SELECT DISTINCT SLNO FROM Fields ORDER BY SLNO"));
        transaction.commit();
        AdjustToAvailableSoils();
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" CheckOn_ICSoil_Empty."));
    }
}

void AdjustToAvailableSoils()
{
    try {
        database::Transaction transaction;
        // A soil not shown yet becomes "<description> (<code>)" when the soil
        // files have it, and goes otherwise.
        database::exec(QStringLiteral(
            "UPDATE ICSoil SET SLNO = (SELECT IFNULL(Description, '') || ' (' || IFNULL(Code, '') "
            "|| ')' FROM SoilLookup WHERE CODE = trim(ICSoil.SLNO, ' ') LIMIT 1) "
            "WHERE SLNO <> '' AND instr(SLNO, '(') = 0"));
        database::exec(QStringLiteral("DELETE FROM ICSoil WHERE SLNO IS NULL"));
        transaction.commit();
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in AdjustToAvailableSoils."));
    }
}

void CheckIC_WaterNitrogen()
{
    try {
        database::Transaction transaction;
        QStringList soils;
        QSqlQuery q
            = database::select(QStringLiteral("SELECT SLNO FROM IC_Water_Nitrogen ORDER BY rowid"));
        while (q.next())
            soils << (q.value(0).isNull() ? QStringLiteral("") : q.value(0).toString());
        q.finish();

        for (const QString& soil : soils) {
            if (database::scalar(
                    QStringLiteral("SELECT COUNT(*) FROM ICSoil WHERE SLNO = ?"), { soil })
                    .toInt()
                > 0)
                continue;
            database::exec(
                QStringLiteral("UPDATE [IC_Water_Nitrogen] SET SLNO = NULL WHERE SLNO = ?"),
                { soil });
            database::exec(
                QStringLiteral("UPDATE [IC_Water_Nitrogen] SET Water = NULL WHERE SLNO IS NULL"));
            database::exec(QStringLiteral(
                "UPDATE [IC_Water_Nitrogen] SET Nitrogen = NULL WHERE SLNO IS NULL"));
        }
        transaction.commit();
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in CheckIC_WaterNitrogen."));
    }
}

} // namespace quillon::reference
