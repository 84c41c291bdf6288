#include "reference/CodeTables.h"

#include "app/AppState.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "format/Columns.h"
#include "format/TextLines.h"
#include "reference/LookupText.h"
#include "reference/SuiteFiles.h"

#include <QDateTime>
#include <QFileInfo>

#include <array>
#include <tuple>
#include <vector>

namespace quillon::reference {

namespace {

using format::mid;
using format::trimSpaces;

// The path of a suite file in DataFolder, matched without regard to case;
// the name as formed when nothing matches, so that opening it fails.
QString dataFile(const QString& name, QString* shownName)
{
    *shownName = joinPath(state().DataFolder, name);
    const QString found = findPath(*shownName);
    return found.isEmpty() ? *shownName : found;
}

// A description column: kept with its blanks, without "'"; blank means
// "No description".
QString codeDescription(const QString& column)
{
    const QString text = withoutApostrophes(column);
    return trimSpaces(text).isEmpty() ? QStringLiteral("No description") : text;
}

QString simulationDescription(const QString& column)
{
    QString text = withoutApostrophes(trimSpaces(column));
    text.remove(QLatin1Char('\t'));
    return text;
}

const QLatin1String fertilizerType("Methods - Fertilizer and");

} // namespace

QStringList keptCodeLines(const QStringList& lines, bool titleRule)
{
    QStringList kept;
    kept.reserve(lines.size());
    for (int i = 0; i < lines.size(); ++i) {
        const QString& line = lines.at(i);
        if (titleRule && line.startsWith(QLatin1String("*EXP"))) {
            // The title line and the line read over it are both lost.
            ++i;
            continue;
        }
        const QString trimmed = trimSpaces(line);
        if (trimmed.isEmpty() || trimmed.startsWith(QLatin1Char('!'))
            || line.startsWith(QLatin1Char('@')))
            continue;
        kept << line;
    }
    return kept;
}

namespace {

// Reads a code file of DataFolder and gives its kept lines to `fill`, all in
// one transaction. A file that cannot be read, or a row the table refuses,
// names the file and ends the program.
template <typename Fill>
void loadCodeFile(const QString& fileName, Fill fill)
{
    QString name;
    const QString path = dataFile(fileName, &name);
    QString failure = QStringLiteral("Cannot open the file.");
    database::Transaction transaction;
    try {
        const QStringList lines = readSuiteLines(path);
        if (!lines.isEmpty())
            failure = QStringLiteral("The file contains invalid data.");
        fill(keptCodeLines(lines, true));
    } catch (const RuntimeError& e) {
        msgBox(failure + name + QStringLiteral(". ") + e.text());
        endProgram();
    }
    transaction.commit();
}

} // namespace

void CreateCodeLookup()
{
    loadCodeFile(QStringLiteral("Detail.cde"), [](const QStringList& lines) {
        QString type;
        for (const QString& line : lines) {
            if (line.startsWith(QLatin1Char('*'))) {
                type = trimSpaces(line.left(25));
                type.remove(QLatin1Char('*'));
                continue;
            }
            database::insertRow(QStringLiteral("CodeLookup"),
                { { QStringLiteral("Type"), textOrNull(type) },
                    { QStringLiteral("Code"), textOrNull(trimSpaces(mid(line, 1, 9))) },
                    { QStringLiteral("Description"), codeDescription(mid(line, 10, 68)) } });
        }

        // Two fertilizer methods share one description, cut short in the
        // file; the code in brackets tells them apart in the lists.
        for (const char* description : { "   Broadcast on flooded/saturated soil",
                 "   Deeply placed urea super granules/p" }) {
            database::exec(
                QStringLiteral("UPDATE CodeLookup SET Description = Description || ' (' || "
                               "IFNULL(Code, '') || ')' WHERE Type = ? AND Description = ?"),
                { fertilizerType, QLatin1String(description) });
        }
    });
}

void CreateCodeStageLookup()
{
    loadCodeFile(QStringLiteral("GRSTAGE.CDE"), [](const QStringList& lines) {
        QString crop;
        bool skipping = false;
        for (const QString& line : lines) {
            if (line.startsWith(QLatin1Char('*'))) {
                skipping = false;
                const QString trimmed = trimSpaces(line);
                if (trimmed == QLatin1String("*Growth and Development Stage References"))
                    continue;
                if (line.startsWith(QLatin1String("*PHENOLO"))) {
                    skipping = true;
                    continue;
                }
                if (trimmed == QLatin1String("*Phenological/Growth Stage Codes")) {
                    crop.clear();
                    continue;
                }
                QString heading = trimSpaces(line.left(80));
                heading.remove(QLatin1Char('*'));
                heading.remove(QLatin1String("Growth and Development Codes -"));
                const int bracket = int(heading.indexOf(QLatin1Char('(')));
                if (bracket >= 0)
                    heading.truncate(bracket);
                crop = trimSpaces(heading).toUpper();
                continue;
            }
            if (skipping || crop.isEmpty())
                continue;
            database::insertRow(QStringLiteral("CodeStageLookup"),
                { { QStringLiteral("Name"), crop },
                    { QStringLiteral("Code"), textOrNull(trimSpaces(mid(line, 1, 5))) },
                    { QStringLiteral("Label"), textOrNull(trimSpaces(mid(line, 6, 5))) },
                    { QStringLiteral("Description"), codeDescription(mid(line, 13, 58)) } });
        }
        database::exec(
            QStringLiteral("DELETE FROM CodeStageLookup WHERE Code IS NULL OR Code = '@CDE'"));

        // Sections common to several crops: each crop gets the rows.
        using Row = std::array<QVariant, 4>;
        std::vector<Row> shared;
        QSqlQuery q = database::select(
            QStringLiteral("SELECT Name, Code, Label, Description FROM CodeStageLookup WHERE Name "
                           "LIKE '%,%' ORDER BY rowid"));
        while (q.next())
            shared.push_back({ q.value(0), q.value(1), q.value(2), q.value(3) });
        q.finish();
        database::exec(QStringLiteral("DELETE FROM CodeStageLookup WHERE Name LIKE '%,%'"));
        for (const Row& row : shared) {
            const QStringList names = row[0].toString().split(QLatin1Char(','));
            for (QString crop : names) {
                crop.remove(QLatin1Char(' '));
                database::insertRow(QStringLiteral("CodeStageLookup"),
                    { { QStringLiteral("Name"), textOrNull(crop.toUpper()) },
                        { QStringLiteral("Code"), row[1] }, { QStringLiteral("Label"), row[2] },
                        { QStringLiteral("Description"), withoutApostrophes(row[3].toString()) } });
            }
        }
    });
}

int simulationType(const QString& heading)
{
    static const std::array<const char*, 23> headings = { "Start Simulation",
        "Simulation/Options/Water", "Simulation/Options/Symbiosis", "Simulation/Methods/Weather",
        "Simulation/Methods/Initial Soil Conditions", "Simulation/Methods/Evapotransportation",
        "Simulation/Methods/Infiltration", "Simulation/Methods/Photosynthesis",
        "Simulation/Methods/Hydrology", "Simulation/Methods/SOM", "Simulation/Management/Planting",
        "Simulation/Management/Irrigation", "Simulation/Management/Fertilization",
        "Simulation/Management/Residue", "Simulation/Management/Harvest", "Simulation/Outputs",
        "Simulation/Outputs/Options", "Simulation/Methods/Soil Evaporation",
        "Simulation/Crop Models", "Simulation/Methods/Soil Layer Distribution",
        "Simulation/Outputs/Verbose", "Simulation/Options/CO2", "Simulation/Outputs/Format" };
    if (heading.compare(QLatin1String("Codes for Simulations Options"), Qt::CaseInsensitive) == 0)
        return -1;
    for (int i = 0; i < int(headings.size()); ++i) {
        if (heading.compare(QLatin1String(headings[i]), Qt::CaseInsensitive) == 0)
            return i + 1;
    }
    return 0;
}

QString modelDisplayName(const QString& code)
{
    if (code == QLatin1String("KESTA"))
        return QStringLiteral("KESTRAL");
    if (code == QLatin1String("LUMEN"))
        return QStringLiteral("LUMEN-ALT");
    return code;
}

namespace {

// What the rows of SimLookUp were last built from. File Open builds the table
// for every file; from the same file, unchanged, into the same open database
// that still holds all the rows, the build would give those rows again.
struct SimLookUpSource {
    int generation = -1;
    QString path;
    qint64 size = -1;
    QDateTime modified;
    int rows = -1;

    static SimLookUpSource of(const QString& path)
    {
        const QFileInfo file(path);
        return { database::connectionGeneration(), path, file.size(), file.lastModified(), -1 };
    }
    bool sameFile(const SimLookUpSource& o) const
    {
        return generation == o.generation && path == o.path && size == o.size && modified == o.modified;
    }
};

SimLookUpSource& lastSimLookUpSource()
{
    static SimLookUpSource source;
    return source;
}

} // namespace

void CreateSIMLookUp()
{
    const QString name = joinPath(state().DataFolder, QStringLiteral("Simulation.cde"));
    const QString found = findPath(name);
    SimLookUpSource& last = lastSimLookUpSource();
    const SimLookUpSource source = found.isEmpty() ? SimLookUpSource() : SimLookUpSource::of(found);
    if (!found.isEmpty() && last.sameFile(source) && last.rows > 0
        && database::tryExec(QStringLiteral("SELECT 1 FROM SimLookUp LIMIT 1")).number() == 0
        && database::rowCount(QStringLiteral("SimLookUp")) == last.rows)
        return;
    last = SimLookUpSource();
    database::Transaction transaction;
    try {
        database::remakeTable(QStringLiteral("SimLookUp"),
            QStringLiteral("CREATE TABLE SimLookUp (Code TEXT COLLATE NOCASE, "
                           "Description TEXT COLLATE NOCASE, Type INTEGER)"));
        if (found.isEmpty()) {
            msgBox(QStringLiteral("Cannot find file") + QStringLiteral(" ") + name, MsgButtons::OK,
                MsgIcon::Critical);
            endProgram();
        }

        int type = 0;
        bool taking = false;
        for (const QString& line : keptCodeLines(readSuiteLines(found), false)) {
            if (line.startsWith(QLatin1Char('*'))) {
                // A heading outside the list keeps the number before it.
                const int number = simulationType(trimSpaces(line.mid(1)));
                taking = number >= 0;
                if (number > 0)
                    type = number;
                continue;
            }
            if (!taking)
                continue;
            const bool models = type == 19;
            database::insertRow(QStringLiteral("SimLookUp"),
                { { QStringLiteral("Code"),
                      models ? modelDisplayName(mid(line, 1, 5)) : mid(line, 1, 1) },
                    { QStringLiteral("Description"),
                        simulationDescription(models ? mid(line, 12, 60) : mid(line, 10, 55)) },
                    { QStringLiteral("Type"), type } });
        }
        database::exec(QStringLiteral("DELETE FROM SimLookUp WHERE Description = ''"));
        database::exec(QStringLiteral("DELETE FROM SimLookUp WHERE Description IS NULL"));

        // Distinct rows in sorted order, as the table is read from then on.
        using Row = std::tuple<QVariant, QVariant, QVariant>;
        std::vector<Row> rows;
        QSqlQuery q
            = database::select(QStringLiteral("SELECT DISTINCT Type, Code, Description FROM "
                                              "SimLookUp ORDER BY Type, Code, Description"));
        while (q.next())
            rows.emplace_back(q.value(0), q.value(1), q.value(2));
        q.finish();
        database::exec(QStringLiteral("DELETE FROM SimLookUp"));
        for (const auto& [rowType, code, description] : rows) {
            database::insertRow(QStringLiteral("SimLookUp"),
                { { QStringLiteral("Code"), code }, { QStringLiteral("Description"), description },
                    { QStringLiteral("Type"), rowType } });
        }
        last = source;
        last.rows = database::rowCount(QStringLiteral("SimLookUp"));
    } catch (const RuntimeError& e) {
        last = SimLookUpSource();
        reportError(e.text(), QStringLiteral(" in CreateSIMLookUp/frmMain. File ") + name);
    }
    transaction.commit();
}

} // namespace quillon::reference
