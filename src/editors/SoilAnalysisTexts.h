#pragma once

#include <QString>
#include <QStringList>

// The texts of the soil analysis editor frmSoilAnalysis, as the program words
// them.
namespace quillon::editors::soil_analysis_text {

inline const QString captionStem = QStringLiteral("Soil Analysis");
// The form's word in the deletion warning, as the form has it.
inline const QString levelWord = QStringLiteral("Harvest");

inline const QString enterFieldInformation = QStringLiteral("Please enter the Field information.");
inline const QString addSoilLayers = QStringLiteral("Please add soil layers.");
inline const QString layersTableError = QStringLiteral("Invalid entry in SA Layers table.");
// lblDeleteLayer; the question adds a blank, the depth and "?".
inline const QString deleteLayer
    = QStringLiteral("Are you sure you want to delete a layer with depth");

// The captions of DBGrid2, one per column of SoilLayers after the level.
inline const QStringList layerCaptions { QStringLiteral("Depth, base of layer, cm"),
    QStringLiteral("Bulk density, moist, g cm-3"), QStringLiteral("Organic carbon, %"),
    QStringLiteral("Total nitrogen, %"), QStringLiteral("pH in water"),
    QStringLiteral("pH in buffer"), QStringLiteral("Phosphorus, extractable, mg kg-1"),
    QStringLiteral("Potassium, exchange- able, cmol kg-1"),
    QStringLiteral("Stable Organic Carbon, %") };

// The labels of the level's date and method combos.
inline const QString analysisDate = QStringLiteral("Analysis date");
inline const QString phMethod = QStringLiteral("pH");
inline const QString phosphorusMethod = QStringLiteral("Phosphorus ");
inline const QString potassiumMethod = QStringLiteral("Potassium ");

// The tails of the failure messages, spelt per routine as the program does.
inline const QString cmdAdd1Tail = QStringLiteral(" in CmdAdd1_Click/frmSoilAnalysis.");
inline const QString createBackUpTail = QStringLiteral(" in CreateBackUp/frmSoilAnalysis.");
inline const QString editSaDateTail = QStringLiteral(" in EditSA_Date/frmSoilAnalysis.");
inline const QString editIcDateTail = QStringLiteral(" in EditIC_Date/frmSoilAnalysis.");
inline const QString cmdOkTail = QStringLiteral(" in cmdOK_Click.");
// Routines whose tail the program doesn't spell: their own name and the form's.
inline QString tailOf(const QString& routine)
{
    return QStringLiteral(" in %1/frmSoilAnalysis.").arg(routine);
}

} // namespace quillon::editors::soil_analysis_text
