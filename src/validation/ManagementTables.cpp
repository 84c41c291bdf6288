#include "validation/ManagementTables.h"

#include "app/AppState.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "database/WorkDatabase.h"
#include <algorithm>

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

// One row per treatment, in table order, with the treatment's level and the
// management code of its simulation level unless that code is "N". The
// table's unique index refuses a second row of a level, so the first
// treatment of a level gives its code. A row that fails is just lost.
void addTreatmentRows(const ManagementTable& m)
{
    const QString insert = QStringLiteral("INSERT OR IGNORE INTO [%1] ([%2], [%3]) ")
                               .arg(name(m.table), name(m.levelColumn), name(m.codeColumn));
    const QString rows
        = QStringLiteral("SELECT t.[%1], "
                         "(SELECT CASE WHEN s.[%2] = 'N' COLLATE BINARY THEN NULL ELSE s.[%2] END "
                         "FROM [SimulationControlManagement] s WHERE s.[LNSIM] = t.[LNSIM] "
                         "ORDER BY s.rowid LIMIT 1) "
                         "FROM [Treatments] t ORDER BY t.rowid")
              .arg(name(m.levelColumn), name(m.codeColumn));
    try {
        database::exec(insert + rows);
    } catch (const RuntimeError&) {
        // A row the table's checks refuse aborts the whole statement: row by
        // row, only that row is lost.
        std::vector<std::pair<QVariant, QVariant>> values;
        ignoringErrors([&] {
            QSqlQuery q = database::select(rows);
            while (q.next())
                values.emplace_back(q.value(0), q.value(1));
        });
        for (const auto& [level, code] : values)
            ignoringErrors([&] {
                database::exec(insert + QStringLiteral("VALUES (?, ?)"), { level, code });
            });
    }
}

// The levels of the applications table whose first row, in table order, has
// a date that is short (a day number) or full: `comparison` is "< 5" or
// ">= 5" on the trimmed date's length.
QString levelsWithFirstDate(const ManagementTable& m, const char* comparison)
{
    return QStringLiteral(
        "SELECT a.[%1] FROM [%2] a WHERE a.rowid = (SELECT min(b.rowid) FROM [%2] b "
        "WHERE b.[%1] = a.[%1]) AND a.[%3] IS NOT NULL AND length(trim(a.[%3], ' ')) %4")
        .arg(name(m.levelColumn), name(m.applications), name(m.dateColumn),
            QLatin1String(comparison));
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
        database::exec(QStringLiteral("UPDATE [%1] SET [%2] = 'D' WHERE [%3] IN (%4)")
                           .arg(name(m.table), name(m.codeColumn), name(m.levelColumn),
                               levelsWithFirstDate(m, "< 5")));
        database::exec(QStringLiteral(
            "UPDATE [%1] SET [%2] = 'R' WHERE [%2] = 'D' COLLATE BINARY AND [%3] IN (%4)")
                           .arg(name(m.table), name(m.codeColumn), name(m.levelColumn),
                               levelsWithFirstDate(m, ">= 5")));
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
