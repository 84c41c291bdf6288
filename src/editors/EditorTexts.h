#pragma once

#include <QString>

// The texts the editors show, as the program words them.
namespace quillon::editors::text {

inline const QString errorTitle = QStringLiteral("Error");
inline const QString warningTitle = QStringLiteral("Warning");
inline const QString invalidEntry = QStringLiteral("Invalid entry.");
inline const QString invalidDate = QStringLiteral("Invalid date.");
inline const QString invalidDay = QStringLiteral("Invalid day.");
inline const QString newDataNotSaved = QStringLiteral("New data will not be saved.");
inline const QString enterDate = QStringLiteral("Please enter date.");
inline const QString enterPlantingDate = QStringLiteral("Please enter the planting date.");
inline const QString enterPlantingOrStartDate
    = QStringLiteral("Please enter planting date or date to start simulation.");
inline const QString addApplications = QStringLiteral("Please add applications.");
inline const QString deleteLevel = QStringLiteral("Are you sure you want to delete level");
// The label's own text ends in a blank, and the question adds one more.
inline const QString deleteApplication
    = QStringLiteral("Are you sure you want to delete application on ");
inline const QString datesDifferent = QStringLiteral("Dates should be different.");
inline const QString daysDifferent = QStringLiteral("Days should be different.");

// Captions of the grids.
inline const QString level = QStringLiteral("Level");
inline const QString description = QStringLiteral("Description");
inline const QString day = QStringLiteral("Day");
inline QString dateCaption(const QString& pattern)
{
    return QStringLiteral("Date") + QStringLiteral(" (") + pattern + QLatin1Char(')');
}

// A level's name is cut to this length as it is typed.
constexpr int levelNameLength = 60;

// The failure of a statement that typed text can't be part of.
inline QString syntaxError(const QString& typed)
{
    return QStringLiteral("Syntax error in date in query expression '%1'.").arg(typed);
}

} // namespace quillon::editors::text
