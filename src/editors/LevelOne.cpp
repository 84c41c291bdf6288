#include "editors/LevelOne.h"

#include "app/AppState.h"
#include "app/DocumentCommands.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "editors/EditorTexts.h"
#include "format/DateCodes.h"

namespace quillon::editors {

QString plantingOrStartDate()
{
    const AppState& s = state();
    QSqlQuery planting
        = database::select(QStringLiteral("SELECT YRPLT FROM Planting ORDER BY rowid"));
    bool hasPlanting = false;
    QString date = QStringLiteral("-99");
    while (planting.next()) {
        hasPlanting = true;
        if (!planting.value(0).isNull()) {
            date = planting.value(0).toString().trimmed();
            break;
        }
    }
    if (!hasPlanting || s.SimulationDate != QLatin1String("-99")) {
        // A start given as date text becomes the date code levels keep.
        QVariant start = s.SimulationDate;
        date = format::toDate(start).isValid() ? format::DateToYYDDD(start) : s.SimulationDate;
    }
    return date;
}

std::optional<QString> levelOneDate(const QString& enterFieldInformation)
{
    QSqlQuery planting
        = database::select(QStringLiteral("SELECT YRPLT FROM Planting ORDER BY rowid"));
    const bool firstYRPLTNull = planting.next() && planting.value(0).isNull();
    planting.finish();
    const bool noStation
        = database::scalar(QStringLiteral("SELECT WSTA FROM Fields ORDER BY rowid LIMIT 1"))
              .isNull();
    if (firstYRPLTNull && noStation) {
        msgBox(enterFieldInformation);
        documentHost().reopenEditor(QStringLiteral("frmFields"));
        return std::nullopt;
    }
    const QString date = plantingOrStartDate();
    if (date == QLatin1String("-99")) {
        msgBox(text::enterPlantingOrStartDate);
        return std::nullopt;
    }
    return date;
}

} // namespace quillon::editors
