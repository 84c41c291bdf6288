#include "editors/InitialConditionsPreparation.h"

#include "app/AppState.h"
#include "app/DocumentCommands.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "editors/EditorTexts.h"
#include "editors/InitialConditionsTexts.h"
#include "format/DateCodes.h"
#include "reference/SoilLookups.h"

#include <optional>

namespace quillon::editors {

using database::scalar;

namespace {

// The date code a first level is dated by: the first planting date, or the
// simulation start when one is set. Nothing when the fields still lack their
// station and the planting its date (the field editor opens), or when there
// is no date at all; the user has been told.
std::optional<QString> firstLevelDate()
{
    const AppState& s = state();
    const bool hasPlanting = scalar(QStringLiteral("SELECT 1 FROM Planting LIMIT 1")).isValid();
    if (hasPlanting
        && scalar(QStringLiteral("SELECT YRPLT FROM Planting ORDER BY rowid LIMIT 1")).isNull()
        && scalar(QStringLiteral("SELECT WSTA FROM Fields ORDER BY rowid LIMIT 1")).isNull()) {
        msgBox(ic_text::enterFieldInformation);
        documentHost().reopenEditor(QStringLiteral("frmFields"));
        return std::nullopt;
    }
    QString date = QStringLiteral("-99");
    const QVariant planted = scalar(QStringLiteral(
        "SELECT YRPLT FROM Planting WHERE YRPLT IS NOT NULL ORDER BY rowid LIMIT 1"));
    if (planted.isValid())
        date = planted.toString().trimmed();
    if (!hasPlanting || s.SimulationDate != QLatin1String("-99")) {
        // The simulation start is date text; the level keeps a date code.
        QVariant start = s.SimulationDate;
        date = format::toDate(start).isValid() ? format::DateToYYDDD(start) : s.SimulationDate;
    }
    if (date == QLatin1String("-99")) {
        msgBox(text::enterPlantingOrStartDate);
        return std::nullopt;
    }
    return date;
}

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
        const std::optional<QString> date = firstLevelDate();
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
