#include "validation/LevelIntegrity.h"

#include "app/UserInterface.h"
#include "database/Sql.h"

#include <array>

namespace quillon::validation {

namespace {

// The factor columns of Treatments in table order (behind TRTNO, ROTNO,
// ROTOPT and CRPNO), each with the table whose rows prove that a level
// exists.
struct FactorLevel {
    const char* column;
    const char* table;
};

constexpr std::array<FactorLevel, 13> factorLevels { {
    { "LNCU", "CULTIVARS" },
    { "LNFLD", "FIELDS" },
    { "LNSA", "SOILANALYSIS" },
    { "LNIC", "INITIALCONDITIONS" },
    { "LNPLT", "PLANTING" },
    { "LNIR", "IRRIGATION" },
    { "LNFER", "FERTILIZATION" },
    { "LNRES", "RESIDUE" },
    { "LNCHE", "CHEMICALS" },
    { "LNTIL", "TILLAGE" },
    { "LNENV", "ENVIRONMOD" },
    { "LNHAR", "HARVEST" },
    { "LNSIM", "SIMULATIONCONTROL" },
} };

} // namespace

void CheckLevels()
{
    try {
        // A level (other than 0 or NULL) that its table doesn't have is set
        // to NULL, silently. One query tells which factors have such a level;
        // only theirs are repaired, with one statement each.
        const auto orphaned = [](const FactorLevel& f) {
            return QStringLiteral("[%1] IS NOT NULL AND [%1] <> 0 AND NOT EXISTS "
                                  "(SELECT 1 FROM [%2] WHERE [%2].[%1] = [Treatments].[%1])")
                .arg(QLatin1String(f.column), QLatin1String(f.table));
        };
        QStringList questions;
        for (const FactorLevel& f : factorLevels)
            questions
                << QStringLiteral("EXISTS (SELECT 1 FROM [Treatments] WHERE %1)").arg(orphaned(f));
        database::Rows broken(QStringLiteral("SELECT ") + questions.join(QLatin1Char(',')));
        if (!broken.next())
            return;
        for (size_t i = 0; i < factorLevels.size(); ++i) {
            if (broken.value(int(i)).toInt() == 0)
                continue;
            database::exec(
                QStringLiteral("UPDATE [Treatments] SET [%1] = NULL WHERE %2")
                    .arg(QLatin1String(factorLevels[i].column), orphaned(factorLevels[i])));
        }
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in CheckLevels/Module."));
    }
}

} // namespace quillon::validation
