#include "reference/SoilLookups.h"

#include "app/AppState.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "format/Columns.h"
#include "format/NumberText.h"
#include "format/TextLines.h"
#include "reference/LookupText.h"
#include "reference/Profile.h"
#include "reference/SoilListing.h"
#include "reference/SuiteFiles.h"

#include <algorithm>
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

// The soil folder of a profile location and its soil files as they stand.
SoilFolderStamp stampOfLocation(const QString& location)
{
    const QString folder = locationFolder(location);
    return soilFolderStamp(folder, listMatching(folder, QStringLiteral("*.sol")));
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

bool SoilLookupStands()
{
    const QVariant location = database::scalar(
        QStringLiteral("SELECT Path FROM TERVAPRO WHERE CODE = 'SLD' ORDER BY rowid"));
    return !location.isNull()
        && soilReadingKeptFor(stampOfLocation(locationText(location.toString())))
        && keptSoilRowsStand();
}

void CreateSoilLookup()
{
    SoilFolder() = requiredProfileLocation("SLD", QStringLiteral("Cannot locate Soil files."));

    database::Transaction transaction;
    const SoilFolderStamp stamp = stampOfLocation(SoilFolder());
    const bool rowsStand = keptSoilRowsStand();
    if (soilReadingKeptFor(stamp)
        && (rowsStand || database::rowCount(QStringLiteral("SoilLookup")) == 0)) {
        // The folder is as the last reading found it: its rows, lines and
        // messages again.
        if (!rowsStand)
            restoreKeptSoilRows();
        SoilLines() = keptSoilLines();
        for (const QString& code : keptRepeatedSoilIds())
            tellRepeatedId(code);
        transaction.commit();
        return;
    }
    // Rows left in place for a listing that no longer holds go, as the
    // document's cleaning would have taken them.
    if (rowsStand)
        database::exec(QStringLiteral("DELETE FROM SoilLookup"));
    const bool fromEmpty = database::rowCount(QStringLiteral("SoilLookup")) == 0;

    SoilLines().clear();
    QStringList repeatedIds;
    int number = 1;
    for (const QString& name : stamp.names) {
        // SOIL.SOL and the two-letter files only; SOIL.SOL is always number
        // 1, and a file after it counts on from there.
        const bool general = name.compare(QLatin1String("SOIL.SOL"), Qt::CaseInsensitive) == 0;
        if (!general && trimSpaces(name).size() != 6)
            continue;
        number = general ? 1 : number + 1;

        const QString path = joinPath(stamp.folder, name);
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
    // Only a reading into the empty table can be given again as it was.
    if (fromEmpty)
        keepSoilReading(stamp, SoilLines(), repeatedIds);
    else
        forgetSoilReading();
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
