#include "validation/ManagementTables.h"

#include "app/AppState.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "database/WorkDatabase.h"
#include "format/TextLines.h"

#include <QSqlQuery>

#include <algorithm>
#include <map>
#include <set>
#include <vector>

namespace quillon::validation {

namespace {

// One management table and where its codes and dates come from. The code
// column has the same name in the table and in SimulationControlManagement.
struct ManagementTable {
    const char* table;
    const char* levelColumn;
    const char* codeColumn;
    const char* applications;
    const char* dateColumn;
    const char* routine;
};

const ManagementTable irrigation { "IrrManagement", "LNIR", "IIRRI", "IrrigApplications", "IDLAPL",
    "FillIrrManagement" };
const ManagementTable fertilizer { "FerManagement", "LNFER", "IFERI", "Fertilization", "FDAY",
    "FillFerManagement" };
const ManagementTable residue { "ResManagement", "LNRES", "IRESI", "Residue", "RESDAY",
    "FillResManagement" };
const ManagementTable harvest { "HarManagement", "LNHAR", "IHARI", "Harvest", "HDATE",
    "FillHarManagement" };

QString name(const char* text)
{
    return QLatin1String(text);
}

template <typename Step> void ignoringErrors(Step step)
{
    try {
        step();
    } catch (const RuntimeError&) {
    }
}

// The error class "object not set": the routine has no database to work
// on, because the working database isn't open.
void requireWorkDB()
{
    if (!database::isWorkDBOpen())
        throw RuntimeError(
            err::ObjectNotSet, QStringLiteral("Object variable or With block variable not set"));
}

QString experimentFileName()
{
    const QString& path = state().ExpFilePath;
    const int cut
        = std::max(path.lastIndexOf(QLatin1Char('\\')), path.lastIndexOf(QLatin1Char('/')));
    return path.mid(cut + 1);
}

// One row per treatment, with the treatment's level and the management code
// of its simulation level unless that code is "N". The table's unique index
// refuses a second row of a level, so the first treatment of a level gives
// its code. Every failure just loses its row.
void addTreatmentRows(const ManagementTable& m)
{
    struct Treatment {
        QVariant level;
        QVariant simulation;
    };
    std::vector<Treatment> treatments;
    ignoringErrors([&] {
        QSqlQuery q = database::select(
            QStringLiteral("SELECT [%1], [LNSIM] FROM [Treatments] ORDER BY rowid")
                .arg(name(m.levelColumn)));
        while (q.next())
            treatments.push_back({ q.value(0), q.value(1) });
    });
    // Treatments share their simulation levels: each is looked up once.
    std::map<QString, QVariant> codes;
    for (const Treatment& t : treatments) {
        const QString simulation = t.simulation.isNull() ? QString() : t.simulation.toString();
        auto found = codes.find(simulation);
        if (found == codes.end()) {
            QVariant code;
            ignoringErrors([&] {
                QSqlQuery q = database::select(
                    QStringLiteral("SELECT [%1] FROM [SimulationControlManagement] "
                                   "WHERE [LNSIM] = ? ORDER BY rowid")
                        .arg(name(m.codeColumn)),
                    { t.simulation });
                if (q.next() && !q.value(0).isNull() && q.value(0).toString() != QLatin1String("N"))
                    code = q.value(0).toString();
            });
            found = codes.emplace(simulation, code).first;
        }
        const QVariant& code = found->second;
        ignoringErrors([&] {
            database::insertRow(
                name(m.table), { { name(m.levelColumn), t.level }, { name(m.codeColumn), code } });
        });
    }
}

// The first date of each level that has applications, in table order.
// Levels without a date in their first row are left out: nothing can be told
// from them.
std::vector<std::pair<QVariant, QString>> firstDates(const ManagementTable& m)
{
    // One pass in table order: the first row met of a level is its first.
    std::set<QString> seen;
    std::vector<std::pair<QVariant, QString>> dates;
    QSqlQuery q = database::select(QStringLiteral("SELECT [%1], [%2] FROM [%3] ORDER BY rowid")
                                       .arg(name(m.levelColumn), name(m.dateColumn),
                                           name(m.applications)));
    while (q.next()) {
        const QVariant level = q.value(0);
        if (level.isNull() || !seen.insert(level.toString()).second)
            continue;
        if (!q.value(1).isNull())
            dates.emplace_back(level, q.value(1).toString());
    }
    return dates;
}

void fillManagement(const ManagementTable& m)
{
    ignoringErrors([&] { database::exec(QStringLiteral("DELETE FROM [%1]").arg(name(m.table))); });
    addTreatmentRows(m);

    try {
        requireWorkDB();
        // Rows of treatments that use no level of the factor.
        database::exec(QStringLiteral("DELETE FROM [%1] WHERE [%2] IS NULL")
                           .arg(name(m.table), name(m.levelColumn)));

        // A short first date is a day number; a full one rules day numbers
        // out for the level.
        for (const auto& [level, date] : firstDates(m)) {
            if (format::trimSpaces(date).size() < 5) {
                database::exec(QStringLiteral("UPDATE [%1] SET [%2] = 'D' WHERE [%3] = ?")
                                   .arg(name(m.table), name(m.codeColumn), name(m.levelColumn)),
                    { level });
            } else {
                database::exec(
                    QStringLiteral(
                        "UPDATE [%1] SET [%2] = 'R' WHERE [%3] = ? AND [%2] = 'D' COLLATE BINARY")
                        .arg(name(m.table), name(m.codeColumn), name(m.levelColumn)),
                    { level });
            }
        }
    } catch (const RuntimeError& e) {
        if (e.number() == err::ObjectNotSet) {
            msgBox(QStringLiteral("Error with file: ") + experimentFileName(), MsgButtons::OK,
                MsgIcon::None, QStringLiteral("Error"));
            endProgram();
        }
        reportError(e.text(), QStringLiteral(" in %1.").arg(name(m.routine)));
    }
}

} // namespace

void FillIrrManagement()
{
    fillManagement(irrigation);
}

void FillFerManagement()
{
    fillManagement(fertilizer);
}

void FillResManagement()
{
    fillManagement(residue);
}

void FillHarManagement()
{
    fillManagement(harvest);
}

} // namespace quillon::validation
