#include "editors/LevelOne.h"

#include "app/AppState.h"
#include "app/DocumentCommands.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "editors/EditorTexts.h"

namespace quillon::editors {

std::optional<QString> levelOneDate(const QString& enterFieldInformation)
{
    std::vector<QVariant> plantingDates;
    QSqlQuery planting
        = database::select(QStringLiteral("SELECT YRPLT FROM Planting ORDER BY rowid"));
    while (planting.next())
        plantingDates.push_back(planting.value(0));
    planting.finish();
    const bool noStation
        = database::scalar(QStringLiteral("SELECT WSTA FROM Fields ORDER BY rowid LIMIT 1"))
              .isNull();
    if (!plantingDates.empty() && plantingDates.front().isNull() && noStation) {
        msgBox(enterFieldInformation);
        documentHost().reopenEditor(QStringLiteral("frmFields"));
        return std::nullopt;
    }
    // The simulation start wins over the planting.
    QString date = state().SimulationDate;
    if (date == QLatin1String("-99")) {
        for (const QVariant& planted : plantingDates) {
            if (!planted.isNull()) {
                date = planted.toString().trimmed();
                break;
            }
        }
    }
    if (date == QLatin1String("-99")) {
        msgBox(text::enterPlantingOrStartDate);
        return std::nullopt;
    }
    return date;
}

} // namespace quillon::editors
