#pragma once

#include <QString>
#include <QStringList>

// The texts of the field editor frmFields, as the program words them.
namespace quillon::editors::field_text {

// The window caption's stem, and the factor's word in the deletion warning.
inline const QString captionStem = QStringLiteral("Fields");
inline const QString levelWord = QStringLiteral("Field");

inline const QString enterFieldId = QStringLiteral("Please enter Field ID.");
inline const QString selectStation = QStringLiteral("Please select weather station.");
inline const QString selectSoilProfile = QStringLiteral("Please select soil profile.");
inline const QString fieldIdLength = QStringLiteral("FieldID must be 8 characters long.");
inline const QString fieldIdNotUnique = QStringLiteral("This field ID is not unique.");
inline const QString levelOrIdRepeated
    = QStringLiteral("Level numbers and FieldID cannot be repeated.");

// The captions of DBGrid1 (the labels Label1), for the first columns of
// Fields in their order; the trailing blanks are the labels' own.
inline const QStringList gridCaptions { QStringLiteral("Level"), QStringLiteral("Field ID"),
    QStringLiteral("Weather station "), QStringLiteral("Slope"),
    QStringLiteral("Obstruction to sun "), QStringLiteral("Drainage Type"),
    QStringLiteral("Drain depth "), QStringLiteral("Drain spacing "),
    QStringLiteral("Surface stones"), QStringLiteral("Soil texture"), QStringLiteral("Soil depth"),
    QStringLiteral("Soil ID"), QStringLiteral("X - coordinate in a field "),
    QStringLiteral("Y - coordinate in a field "),
    QStringLiteral("Elevation above mean sea level, m"), QStringLiteral("Size of field "),
    QStringLiteral("Length of slope"), QStringLiteral("Field length to width ratio "),
    QStringLiteral("Slope aspect ") };

// Hints of the weather and soil combos.
inline const QString observedHint
    = QStringLiteral("Make sure that in the Simulation Options/Methods section the weather type "
                     "is {Observed data}for this field");
inline const QString sourceHint = QStringLiteral(
    "Be sure that selected weather source type is consistant with 'Sim. Control Method'.");
inline const QString stationIdsHint
    = QStringLiteral("Available weather data for the selected Name");
inline const QString soilIdHint
    = QStringLiteral("Soil ID which corresponds to the selected Soil Name");
inline const QString stationsHint = QStringLiteral(
    "List of available weather stations, which correspond to the selected weather data source");

// The tails of the failure messages, spelt per routine as the program does.
inline const QString cmdAddFieldTail = QStringLiteral(" in cmdAddField/frmFields.");
inline const QString cmdRemoveFieldTail = QStringLiteral(" in cmdRemoveField/frmFields.");
inline const QString createBackUpTail = QStringLiteral(" in CreateBackUp/frmFields.");
inline const QString command1Tail = QStringLiteral(" in Command1_Click/frmFields.");
inline const QString comboWstaTail = QStringLiteral(" in ComboWSTA_Click/frmFields.");
inline const QString dbComboMethodTail = QStringLiteral(" in DBComboMethod_Click/frmFields.");
inline const QString setWeatherDataTail = QStringLiteral(" in SetWeatherData/frmFields.");
inline const QString fillSlnoComboTail = QStringLiteral(" in FillSLNOCombo/frmFields.");
inline const QString fillSoilIstTail = QStringLiteral(" in FillSoilIst/frmFields.");
inline const QString setupComboWeatherDescriptTail
    = QStringLiteral(" in SetupComboWeatherDescript/frmFields.");
inline const QString editEntryTail = QStringLiteral(" in EditEntry/frmFields.");
inline const QString formLoadTail = QStringLiteral(" in Form_Load/frmFields.");
// Routines whose tail the program doesn't spell: their own name and the form's.
inline QString tailOf(const QString& routine)
{
    return QStringLiteral(" in %1/frmFields.").arg(routine);
}

} // namespace quillon::editors::field_text
