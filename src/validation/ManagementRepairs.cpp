#include "validation/ManagementRepairs.h"

#include "app/UserInterface.h"
#include "database/Sql.h"
#include "format/TextLines.h"

#include <QSqlQuery>

#include <vector>

namespace quillon::validation {

void ChangeManagementHarvest()
{
    try {
        struct Treatment {
            int harvest;
            QVariant simulation;
        };
        std::vector<Treatment> treatments;
        database::Rows q(
            QStringLiteral("SELECT [LNHAR], [LNSIM] FROM [Treatments] ORDER BY rowid"));
        while (q.next()) {
            if (!q.value(0).isNull() && q.value(0).toInt() != 0)
                treatments.push_back({ q.value(0).toInt(), q.value(1) });
        }
        for (const Treatment& t : treatments) {
            const bool harvested
                = database::scalar(
                      QStringLiteral("SELECT COUNT(*) FROM [Harvest] WHERE [LNHAR] = ?"),
                      { t.harvest })
                      .toInt()
                > 0;
            // The first management row of the simulation level is the one
            // the treatment runs with.
            const QVariant management
                = database::scalar(QStringLiteral("SELECT rowid FROM [SimulationControlManagement] "
                                                  "WHERE [LNSIM] = ? ORDER BY rowid"),
                    { t.simulation });
            if (!management.isValid())
                continue;
            database::exec(
                QStringLiteral(
                    "UPDATE [SimulationControlManagement] SET [IHARI] = ? WHERE rowid = ?"),
                { harvested ? QStringLiteral("R") : QStringLiteral("M"), management });
        }
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in ChangeManagementHarvest."));
    }
}

namespace {

// The cell's trimmed text, or "" when there is nothing to test.
QString codeToTest(const QVariant& cell)
{
    if (cell.isNull())
        return QString();
    const QString code = format::trimSpaces(cell.toString());
    return code == QLatin1String("-99") ? QString() : code;
}

bool knownCode(const QString& type, const QString& code)
{
    return database::select(
        QStringLiteral("SELECT * FROM [Codelookup] WHERE [Type] = ? AND [CODE] = ?"),
        { type, code })
        .next();
}

} // namespace

void ChangePlantingMethod()
{
    try {
        struct Planting {
            qint64 rowId;
            QString method;
            QString distribution;
        };
        std::vector<Planting> rows;
        database::Rows q(
            QStringLiteral("SELECT rowid, [PLME], [PLDS] FROM [Planting] ORDER BY rowid"));
        while (q.next())
            rows.push_back(
                { q.value(0).toLongLong(), codeToTest(q.value(1)), codeToTest(q.value(2)) });

        bool methodChanged = false;
        bool distributionChanged = false;
        for (const Planting& row : rows) {
            if (!row.method.isEmpty()
                && !knownCode(QStringLiteral("Planting Material/Method"), row.method)) {
                database::exec(QStringLiteral("UPDATE [Planting] SET [PLME] = 'S' WHERE rowid = ?"),
                    { row.rowId });
                methodChanged = true;
            }
            if (!row.distribution.isEmpty()
                && !knownCode(QStringLiteral("Plant Distribution"), row.distribution)) {
                database::exec(QStringLiteral("UPDATE [Planting] SET [PLDS] = 'R' WHERE rowid = ?"),
                    { row.rowId });
                distributionChanged = true;
            }
        }
        const QString title = QStringLiteral("Warning");
        if (methodChanged) {
            msgBox(
                QStringLiteral(
                    "An unrecognized code was found in Planting Method. It has been changed to 'S' "
                    "for 'Dry Seed'."),
                MsgButtons::OK, MsgIcon::Exclamation, title);
        }
        if (distributionChanged) {
            msgBox(
                QStringLiteral(
                    "An unrecognized code was found in Plant Distribution. It has been changed to "
                    "'R' for 'Rows'."),
                MsgButtons::OK, MsgIcon::Exclamation, title);
        }
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in ChangePlantingMethod."));
    }
}

} // namespace quillon::validation
