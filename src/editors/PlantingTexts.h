#pragma once

#include <QString>

// The texts of the planting editor, as the program words them.
namespace quillon::editors::planting_text {

// The window caption's stem, and the factor's word in the deletion warning.
inline const QString captionStem = QStringLiteral("Planting");
inline const QString levelWord = QStringLiteral("Planting");

inline const QString selectWeatherStation
    = QStringLiteral("Please select weather station in Fields.");
inline const QString enterPlantingDate = QStringLiteral("Please enter Planting date.");
inline const QString enterEmergenceDate = QStringLiteral("Please enter Emergence date.");
inline const QString emergenceBeforePlanting
    = QStringLiteral("Emergence date should be AFTER Planting date. Please correct the dates.");
inline const QString noPlantingDate = QStringLiteral("You have not entered a planting date,")
    + QLatin1Char('\n')
    + QStringLiteral("so you must enter a date to start simulation under Simulation Control.");
inline const QString noteTitle = QStringLiteral("Note");

// Labels of the page.
inline const QString plantingDate = QStringLiteral("Planting Date");
inline const QString emergenceDate = QStringLiteral("Emergence Date");
inline const QString materialAge = QStringLiteral("Planting Material Age");
inline const QString method = QStringLiteral("Planting Method");
inline const QString distribution = QStringLiteral("Planting Distribution");
inline const QString years = QStringLiteral("Year");
inline const QString yearsHint
    = QStringLiteral("Available years.  Weather stations are selected in Fields section.");
inline const QString next = QStringLiteral("Next >");
inline const QString nextHint
    = QStringLiteral("Keep the changes and go on to the initial conditions");

// The tails of the failure messages, spelt per routine as the program does.
inline const QString menuTail = QStringLiteral(" in mnuEditPlanting_Click.");
inline const QString formLoadTail = QStringLiteral(" in Form_Load/frmPlantingEd.");
inline const QString addTail = QStringLiteral(" in cmdAdd/frmPlantingEd.");
inline const QString deleteTail = QStringLiteral(" in cmdDelete_Click/frmPlantingEd.");
inline const QString createBackUpTail = QStringLiteral(" in CreateBackUp/frmPlantingEd.");
inline const QString editEntryTail = QStringLiteral(" in EditEntry/frmPlantingEd. ");
inline const QString okTail = QStringLiteral(" in cmdOK_Click/frmPlantingEd.");
inline const QString nextTail = QStringLiteral(" in cmdNext/frmPlanting.");
inline const QString cancelTail = QStringLiteral(" in Command1_Click/frmPlantingEd.");
inline const QString validateTail = QStringLiteral(" in Validate/frmPlantingEd.");

} // namespace quillon::editors::planting_text
