#include "editors/InitialConditionsPreparation.h"

#include "app/AppState.h"
#include "app/DocumentCommands.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "editors/EditorTexts.h"
#include "editors/InitialConditionsTexts.h"
#include "editors/LevelOne.h"
#include "reference/SoilLookups.h"

#include <optional>

namespace quillon::editors {

using database::scalar;

namespace {

// The crop chosen in the identification window, or stored with the
// experiment (in lower case) when the window isn't loaded.
QString identificationCrop()
{
    const std::optional<Identification> shown = documentHost().identification();
    return (shown ? shown->cropCode : storedIdentification().cropCode).toUpper();
}

} // namespace

void addInitialConditionsLevelOne()
{
    database::insertRow(QStringLiteral("InitialConditions"),
        { { QStringLiteral("LNIC"), 1 }, { QStringLiteral("EFNFIX"), 1 },
            { QStringLiteral("EFINOC"), 1 } });
    database::insertRow(QStringLiteral("ICLayers"), { { QStringLiteral("LNIC"), 1 } });
}

bool prepareInitialConditions()
{
    AppState& s = state();
    s.NewLevelCreated = database::rowCount(QStringLiteral("InitialConditions")) == 0;
    if (s.NewLevelCreated)
        addInitialConditionsLevelOne();

    reference::CheckOn_ICSoil_Empty();
    reference::CheckIC_WaterNitrogen();

    const bool undated = database::rowCount(QStringLiteral("InitialConditions")) == 1
        && scalar(QStringLiteral(
                      "SELECT 1 FROM InitialConditions WHERE IDAYIC IS NULL AND PRCROP IS NULL"))
               .isValid();
    if (undated) {
        const std::optional<QString> date = levelOneDate(ic_text::enterFieldInformation);
        if (!date)
            return false;
        if (!s.IsExperimental) {
            database::exec(QStringLiteral("UPDATE InitialConditions SET IDAYIC = ?"), { *date });
        } else if (const QString crop = identificationCrop(); crop.isEmpty()) {
            msgBox(ic_text::specifyCrop);
        } else {
            database::exec(QStringLiteral("UPDATE InitialConditions SET PRCROP = ?, IDAYIC = ?"),
                { crop, *date });
        }
    }
    database::exec(QStringLiteral("DELETE FROM SoilData"));
    return true;
}

} // namespace quillon::editors
