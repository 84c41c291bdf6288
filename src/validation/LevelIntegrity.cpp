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
        // One statement per factor does what a look-up per treatment and
        // level would: a level (other than 0 or NULL) that its table doesn't
        // have is set to NULL, silently.
        for (const FactorLevel& f : factorLevels) {
            database::exec(QStringLiteral(
                "UPDATE [Treatments] SET [%1] = NULL WHERE [%1] IS NOT NULL AND [%1] <> 0 "
                "AND NOT EXISTS (SELECT 1 FROM [%2] WHERE [%2].[%1] = [Treatments].[%1])")
                               .arg(QLatin1String(f.column), QLatin1String(f.table)));
        }
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in CheckLevels/Module."));
    }
}

} // namespace quillon::validation
