#include "validation/ExperimentDebugger.h"

#include "app/AppState.h"
#include "app/RuntimeError.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "format/DateCodes.h"
#include "format/FileWriter.h"
#include "format/NumberText.h"
#include "format/TextLines.h"
#include "reference/SuiteFiles.h"
#include "reference/WeatherLookups.h"

#include <QDir>
#include <QSqlRecord>

#include <map>
#include <optional>

namespace quillon::validation {

using database::exec;
using database::select;
using format::trimSpaces;

namespace {

const QString noCurrentRecord = QStringLiteral("No current record.");
const QString typeMismatch = QStringLiteral("Type mismatch");
constexpr int inputPastEndOfFile = 62;
const QString noWeatherYear = QStringLiteral(
    "Applications year does not correspond to available years. Check Fields section Level #");

QList<QSqlRecord> allRows(const QString& sql, const QVariantList& params = {})
{
    QList<QSqlRecord> rows;
    database::Rows q(sql, params);
    while (q.next())
        rows << q.record();
    return rows;
}

// The treatments in table order, as the checks walk them.
QList<QSqlRecord> treatments()
{
    return allRows(QStringLiteral("SELECT * FROM Treatments ORDER BY rowid"));
}

// The first row of a query; reading a field of a row that isn't there is
// the engine's "No current record." failure.
QSqlRecord currentRow(const QString& sql, const QVariant& key)
{
    database::Rows q(sql, { key });
    if (!q.next())
        throw RuntimeError(err::NoCurrentRecord, noCurrentRecord);
    return q.record();
}

bool hasRow(const QString& sql, const QVariantList& params)
{
    return database::Rows(sql, params).next();
}

// hasRow() of a check that changes none of the tables it asks: each
// question is put to the database once.
class KnownRows {
public:
    bool has(const QString& sql, const QVariantList& params)
    {
        QString key = sql;
        for (const QVariant& param : params)
            key += QLatin1Char('|') + param.toString() + QLatin1Char('|')
                + QString::number(param.typeId());
        auto found = m_known.find(key);
        if (found == m_known.end())
            found = m_known.emplace(key, hasRow(sql, params)).first;
        return found->second;
    }

private:
    std::map<QString, bool> m_known;
};

// A date code through TheDate, as a date. TheDate takes the last three
// digits as an offset, so the date is a day late: the planting check
// compares two such dates, which keeps the order true, and the year check
// counts the last day of a year into the next one. A code TheDate can't
// turn into a date is a type mismatch for the caller.
QDate codeDate(const QVariant& code)
{
    const QDate date = format::toDate(format::TheDate(code));
    if (!date.isValid())
        throw RuntimeError(err::TypeMismatch, typeMismatch);
    return date;
}

// A missing text value: NULL, or nothing but blanks.
bool isBlank(const QVariant& value)
{
    return value.isNull() || trimSpaces(value.toString()).isEmpty();
}

// The mark column of the weather lookup for a kind. Only "Observed" exists
// in the table, so a statement for the other kinds fails, and the check's
// trap reports it.
QString markColumn(WeatherKind kind)
{
    switch (kind) {
    case WeatherKind::Observed:
        return QStringLiteral("Observed");
    case WeatherKind::Generated:
        return QStringLiteral("Generated");
    case WeatherKind::Climate:
        return QStringLiteral("Climate");
    case WeatherKind::None:
        break;
    }
    return QString();
}

// The extension of a kind's weather files, as the findings name the files.
QString fileExtension(WeatherKind kind)
{
    switch (kind) {
    case WeatherKind::Observed:
        return QStringLiteral("WTH");
    case WeatherKind::Generated:
        return QStringLiteral("WTG");
    case WeatherKind::Climate:
        return QStringLiteral("CLI");
    case WeatherKind::None:
        break;
    }
    return QString();
}

// The weather file of a code on disk, found case-blind in the weather
// folder of the profile; empty when it isn't there. All kinds share that
// folder: the profile names no other for generated or climate files.
QString weatherFilePath(const QString& fileName)
{
    return reference::findIn(reference::locationFolder(state().WeatherFolder), fileName);
}

// Year text stored into the Integer column of `Years`: a number, or the
// engine's type mismatch.
int yearValue(const QString& text)
{
    if (!format::isNumeric(text))
        throw RuntimeError(err::TypeMismatch, typeMismatch);
    return qRound(format::leadingNumber(text));
}

// The year a weather file states on the line after its "@START" line;
// nothing when it has no such line.
std::optional<QString> yearInFile(const QString& path)
{
    const QStringList lines = reference::readSuiteLines(path);
    for (int i = 0; i < lines.size(); ++i) {
        if (!lines.at(i).startsWith(QLatin1String("@START")))
            continue;
        if (i + 1 >= lines.size())
            throw RuntimeError(inputPastEndOfFile, QStringLiteral("Input past end of file"));
        return trimSpaces(lines.at(i + 1).left(6));
    }
    return std::nullopt;
}

// While a weather check runs, the weather codes of each station and the
// years its files state are remembered: treatments that share a field look
// up the field's files once.
struct WeatherPassMemory {
    std::map<QString, std::optional<QString>> statedYears;
    std::map<QString, QStringList> stationCodes;
};
WeatherPassMemory* weatherPass = nullptr;

class WeatherPass {
public:
    WeatherPass() { weatherPass = &m_memory; }
    ~WeatherPass() { weatherPass = nullptr; }
    WeatherPass(const WeatherPass&) = delete;
    WeatherPass& operator=(const WeatherPass&) = delete;

private:
    WeatherPassMemory m_memory;
};

// yearInFile(), read once a pass; a file that fails is read again.
std::optional<QString> statedYear(const QString& path)
{
    if (!weatherPass)
        return yearInFile(path);
    auto found = weatherPass->statedYears.find(path);
    if (found == weatherPass->statedYears.end())
        found = weatherPass->statedYears.emplace(path, yearInFile(path)).first;
    return found->second;
}

// reference::stationCodes(), asked once a pass.
QStringList stationCodes(const QString& station, const QString& column)
{
    if (!weatherPass)
        return reference::stationCodes(station, column);
    const QString key = station + QLatin1Char('|') + column;
    auto found = weatherPass->stationCodes.find(key);
    if (found == weatherPass->stationCodes.end())
        found = weatherPass->stationCodes.emplace(key, reference::stationCodes(station, column))
                    .first;
    return found->second;
}

// How applications of a factor are dated, per its management code.
struct ManagedFactor {
    const char* code; // column of SimulationControlManagement
    const char* table;
    const char* level; // level column, in the table and in Treatments
    const char* date;
    const char* datesAllowedToo; // the code besides "D" under which no date is looked at
    const char* part;
};

const ManagedFactor managedFactors[] = {
    { "IIRRI", "IrrigApplications", "LNIR", "IDLAPL", "N", "/Irrigation: " },
    { "IFERI", "Fertilization", "LNFER", "FDAY", "N", "/Fertilization: " },
    { "IRESI", "Residue", "LNRES", "RESDAY", "N", "/Residue: " },
    { "IHARI", "Harvest", "LNHAR", "HDATE", "M", "/Harvest: " },
};

// A treatment's management codes. The checks ask for the columns they read,
// not the whole row: the row's every column costs on each lookup.
const QString managementCodes = QStringLiteral(
    "Select IIRRI, IFERI, IRESI, IHARI From SimulationControlManagement Where LNSIM = ?");

// The dated factors whose years must be weather years. `code` is the
// management column that exempts them when it is "D", or null.
struct DatedFactor {
    const char* table;
    const char* level;
    const char* date;
    const char* code;
    const char* part;
};

const DatedFactor datedFactors[] = {
    { "IrrigApplications", "LNIR", "IDLAPL", "IIRRI", "/Irrigation " },
    { "Fertilization", "LNFER", "FDAY", "IFERI", "/Fertilization " },
    { "Residue", "LNRES", "RESDAY", "IRESI", "/Organic Amendments " },
    { "Harvest", "LNHAR", "HDATE", "IHARI", "/Harvest " },
    { "InitialConditions", "LNIC", "IDAYIC", nullptr, "/Initial Conditions " },
    { "Chemicals", "LNCHE", "CDate", nullptr, "/Chemicals " },
    { "Tillage", "LNTIL", "TDATE", nullptr, "/Tillage " },
    { "EnvironMod", "LNENV", "WMDATE", nullptr, "/Environmental Modifications " },
};

QVariantList datesOf(
    const char* table, const char* levelColumn, const char* dateColumn, const QVariant& level)
{
    QVariantList dates;
    database::Rows q(
        QStringLiteral("SELECT %1 FROM %2 WHERE %3 = ?")
            .arg(QLatin1String(dateColumn), QLatin1String(table), QLatin1String(levelColumn)),
        { level });
    while (q.next())
        dates << q.value(0);
    return dates;
}

// The dates of factor levels, each read once a check: treatments share
// their levels, and the checks change none of these tables.
class LevelDates {
public:
    const QVariantList& of(
        const char* table, const char* levelColumn, const char* dateColumn, const QVariant& level)
    {
        const QString key = QLatin1String(table) + QLatin1Char('|') + level.toString();
        auto found = m_dates.find(key);
        if (found == m_dates.end())
            found = m_dates.emplace(key, datesOf(table, levelColumn, dateColumn, level)).first;
        return found->second;
    }

private:
    std::map<QString, QVariantList> m_dates;
};

QString errorsFilePath()
{
    QString folder = state().AppFolder;
    if (!folder.endsWith(QLatin1Char('/')) && !folder.endsWith(QLatin1Char('\\')))
        folder += QDir::separator();
    return folder + QStringLiteral("Errors.txt");
}

QStringList errorsFileLines(const QStringList& findings)
{
    QStringList lines { QString(), QString() };
    for (const QString& finding : findings)
        lines << QStringLiteral("     ") + finding;
    return lines;
}

} // namespace

void Findings::add(const QVariant& trtno, const QString& factorPart, const QString& text)
{
    m_lines << QStringLiteral("(%1)  Treatment #%2").arg(m_lines.size() + 1).arg(trtno.toString())
            + factorPart + text;
}

WeatherKind weatherKindOf(const QVariant& mewth)
{
    const QString code = mewth.toString();
    if (code == QLatin1String("M"))
        return WeatherKind::Observed;
    if (code == QLatin1String("G"))
        return WeatherKind::Generated;
    if (code == QLatin1String("S") || code == QLatin1String("W"))
        return WeatherKind::Climate;
    return WeatherKind::None;
}

void CheckWeatherFileExistence(Findings& findings)
{
    try {
        // Each station's files are looked up in one folder listing.
        reference::ListingCache listings;
        const WeatherPass pass;
        KnownRows weatherRows;
        // "Drop Table [Years]" and the table made anew.
        database::remakeTable(QStringLiteral("Years"),
            QStringLiteral("Create Table [Years] (LNFLD Integer,")
                + QStringLiteral(" Year Integer)"));

        for (const QSqlRecord& treatment : treatments()) {
            const QVariant level = treatment.value(QStringLiteral("LNFLD"));
            const QSqlRecord field
                = currentRow(QStringLiteral("Select WSTA From Fields Where LNFLD = ?"), level);
            const QSqlRecord methods = currentRow(
                QStringLiteral("Select MEWTH From SimulationControlMethods Where LNSIM = ?"),
                treatment.value(QStringLiteral("LNSIM")));
            const WeatherKind kind = weatherKindOf(methods.value(QStringLiteral("MEWTH")));

            const QVariant station = field.value(QStringLiteral("WSTA"));
            if (station.isNull()) {
                findings.add(treatment.value(QStringLiteral("TRTNO")), QStringLiteral("/Fields: "),
                    QStringLiteral("Missing data:") + QLatin1Char(' ')
                        + QStringLiteral("Weather station code."));
                continue;
            }
            const QString code = trimSpaces(station.toString());
            const QString sql = QStringLiteral(
                "Select * From [TotalWeatherLookup] Where [CODE] = ? And [%1] = 'X'")
                                    .arg(markColumn(kind));
            if (!weatherRows.has(sql, { code })) {
                findings.add(treatment.value(QStringLiteral("TRTNO")), QStringLiteral("/Fields: "),
                    QStringLiteral("Weather file") + QLatin1Char(' ') + code + QLatin1Char('.')
                        + fileExtension(kind) + QLatin1Char('.')
                        + QStringLiteral("was not found."));
                continue;
            }
            FindFieldYears_byLevel(level.toInt(), kind);
        }
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in CheckWeatherFileExistence/frmMain."));
    }
}

void FindFieldYears_byLevel(int level, WeatherKind kind)
{
    try {
        const QSqlRecord field
            = currentRow(QStringLiteral("Select WSTA From Fields Where LNFLD = ?"), level);
        const QString station = trimSpaces(field.value(QStringLiteral("WSTA")).toString());
        const QString column = markColumn(kind);
        const QStringList codes = stationCodes(station, column);
        for (const QString& code : codes) {
            QString year = reference::yearOfWeatherCode(code);
            const QString path
                = weatherFilePath(code + QLatin1Char('.') + fileExtension(kind).toLower());
            if (!path.isEmpty()) {
                if (const std::optional<QString> stated = statedYear(path))
                    year = *stated;
            }
            exec(QStringLiteral("Insert Into [Years] (LNFLD, Year) Values (?, ?)"),
                { level, yearValue(year) });
        }
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in FindFieldYears_byLevel/frmMain."));
    }
}

void CheckApplications_Management(Findings& findings)
{
    try {
        LevelDates levelDates;
        for (const QSqlRecord& treatment : treatments()) {
            const QSqlRecord management
                = currentRow(managementCodes, treatment.value(QStringLiteral("LNSIM")));
            for (const ManagedFactor& factor : managedFactors) {
                const QVariant code = management.value(QLatin1String(factor.code));
                const QVariant level = treatment.value(QLatin1String(factor.level));
                // An unset code says nothing about the dates, and a missing
                // level has no applications.
                if (code.isNull() || level.isNull())
                    continue;
                const bool daysAfterPlanting = code.toString() == QLatin1String("D");
                const bool dated = !daysAfterPlanting
                    && code.toString() != QLatin1String(factor.datesAllowedToo);
                if (!daysAfterPlanting && !dated)
                    continue;
                for (const QVariant& date :
                    levelDates.of(factor.table, factor.level, factor.date, level)) {
                    if (date.isNull())
                        continue;
                    const qsizetype length = trimSpaces(date.toString()).size();
                    // A five-digit code can't be a day count, and a day count
                    // can't be a date.
                    if ((daysAfterPlanting && length == 5) || (dated && length < 5))
                        findings.add(treatment.value(QStringLiteral("TRTNO")),
                            QLatin1String(factor.part),
                            QStringLiteral(
                                "Date Inconsistancy with Simulation Control Management."));
                }
            }
        }
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in CheckApplications_Management/frmMain."));
    }
}

void CheckPlanting_date(Findings& findings)
{
    try {
        for (const QSqlRecord& treatment : treatments()) {
            const QVariant trtno = treatment.value(QStringLiteral("TRTNO"));
            const QSqlRecord simulation
                = currentRow(QStringLiteral("Select YRSIM From SimulationControl Where LNSIM = ?"),
                    treatment.value(QStringLiteral("LNSIM")));
            const QVariant plantingLevel = treatment.value(QStringLiteral("LNPLT"));
            if (plantingLevel.isNull())
                findings.add(trtno, QStringLiteral("/ "),
                    QStringLiteral("Planting Factor level is missing."));

            const QVariant start = simulation.value(QStringLiteral("YRSIM"));
            if (isBlank(start))
                findings.add(trtno, QStringLiteral("/Simulation Control "),
                    QStringLiteral("No Simulation start day."));
            if (plantingLevel.isNull())
                continue;

            const QSqlRecord planting = currentRow(
                QStringLiteral("Select YRPLT From Planting Where LNPLT = ?"), plantingLevel);
            const QVariant plantingDay = planting.value(QStringLiteral("YRPLT"));
            if (isBlank(plantingDay))
                findings.add(
                    trtno, QStringLiteral("/Planting "), QStringLiteral("No Planting day."));
            if (isBlank(start) || isBlank(plantingDay))
                continue;
            // Both codes go through TheDate as offsets, so both are a day
            // late and the difference stays true.
            if (codeDate(start).daysTo(codeDate(plantingDay)) < 0)
                findings.add(trtno, QStringLiteral("/Planting "),
                    QStringLiteral("Planting day cannot be before Simulation start."));
        }
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in CheckPlanting_date/frmMain."));
    }
}

void CheckAllYears(Findings& findings)
{
    try {
        LevelDates levelDates;
        KnownRows weatherYears;
        std::map<QString, int> yearsOfDates;
        for (const QSqlRecord& treatment : treatments()) {
            const QVariant trtno = treatment.value(QStringLiteral("TRTNO"));
            const QVariant fieldLevel = treatment.value(QStringLiteral("LNFLD"));
            const QSqlRecord management
                = currentRow(managementCodes, treatment.value(QStringLiteral("LNSIM")));
            for (const DatedFactor& factor : datedFactors) {
                if (factor.code) {
                    // Days after planting have no year; an unset code
                    // doesn't say "not D" either.
                    const QVariant code = management.value(QLatin1String(factor.code));
                    if (code.isNull() || code.toString() == QLatin1String("D"))
                        continue;
                }
                const QVariant level = treatment.value(QLatin1String(factor.level));
                if (level.isNull())
                    continue;
                for (const QVariant& date :
                    levelDates.of(factor.table, factor.level, factor.date, level)) {
                    if (date.isNull()) {
                        findings.add(trtno, QLatin1String(factor.part),
                            QStringLiteral("Application date is missing."));
                        continue;
                    }
                    // A date that converts is converted once; one that
                    // doesn't goes through its failure every time.
                    const QString text = date.toString();
                    auto known = yearsOfDates.find(text);
                    if (known == yearsOfDates.end())
                        known = yearsOfDates.emplace(text, codeDate(date).year()).first;
                    const int year = known->second;
                    if (!weatherYears.has(
                            QStringLiteral("Select * From Years Where LNFLD = ? And Year = ?"),
                            { fieldLevel, year }))
                        findings.add(trtno, QLatin1String(factor.part),
                            noWeatherYear + fieldLevel.toString());
                }
            }
        }
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in CheckAllYears/frmMain."));
    }
}

DebugResult DebugFile()
{
    DebugResult result;
    try {
        const QList<QSqlRecord> rows = treatments();
        if (rows.isEmpty()) {
            msgBox(QStringLiteral("No treatments in this file."), MsgButtons::OK, MsgIcon::None,
                QStringLiteral("Error"));
            return result;
        }
        for (const QSqlRecord& row : rows) {
            if (row.value(QStringLiteral("LNSIM")).isNull()) {
                msgBox(QStringLiteral(
                    "Cannot debug. Simulation Control factor level is missing in Treatments."));
                return result;
            }
            if (row.value(QStringLiteral("LNFLD")).isNull()) {
                msgBox(
                    QStringLiteral("Cannot debug. Fields factor level is missing in Treatments."));
                return result;
            }
        }

        // The weather years go first: the year check rests on them.
        Findings findings;
        CheckWeatherFileExistence(findings);
        CheckApplications_Management(findings);
        CheckPlanting_date(findings);
        CheckAllYears(findings);
        result.findings = findings.lines();

        if (findings.isEmpty()) {
            result.outcome = DebugResult::Outcome::Clean;
            msgBox(QStringLiteral("No errors has been found."));
            return result;
        }

        result.outcome = DebugResult::Outcome::Findings;
        result.errorsFilePath = errorsFilePath();
        format::FileWriter writer;
        for (const QString& line : errorsFileLines(result.findings))
            writer.line(line);
        QString error;
        if (!writer.save(result.errorsFilePath, &error))
            throw RuntimeError(err::PathNotFound, error);
        result.errorsFileWritten = true;
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in DebugFile/frmMain."));
    }
    return result;
}

QStringList findingsReport(const DebugResult& result)
{
    switch (result.outcome) {
    case DebugResult::Outcome::Clean:
        return { QStringLiteral("No errors has been found.") };
    case DebugResult::Outcome::Findings:
        return errorsFileLines(result.findings);
    case DebugResult::Outcome::Refused:
        break;
    }
    return {};
}

bool CheckPlantingDate(const QString& code, const QStringList& availableYears)
{
    const QString trimmed = trimSpaces(code);
    bool found = false;
    if (trimmed.size() == 5) {
        const QString year = reference::fullYear(trimmed.left(2));
        for (const QString& available : availableYears) {
            if (trimSpaces(available) == year) {
                found = true;
                break;
            }
        }
    }
    if (!found)
        msgBox(
            QStringLiteral("There are no weather data for the year of this date. Years available:")
                + QLatin1Char(' ') + QString::number(availableYears.size()),
            MsgButtons::OK, MsgIcon::Exclamation);
    return found;
}

} // namespace quillon::validation
