#pragma once

#include <QString>

// The texts of the initial conditions editor, as the program words them.
namespace quillon::editors::ic_text {

// The window caption's stem, and the factor's word in the deletion warning.
inline const QString captionStem = QStringLiteral("Initial Conditions");

inline const QString levelExists
    = QStringLiteral("This level already exists. Please change the level.");
inline const QString tooManyLayers = QStringLiteral(
    "There are more then 20 layers in this level. Please, delete unnecessary layers.");
inline const QString depthUnique = QStringLiteral("Depth has to be unique. Change depth");
// The label's own text ends in a blank: the limit follows it.
inline const QString layerLimit
    = QStringLiteral("The number of Initial Condition layers should not exceed ");
inline const QString specifyCrop = QStringLiteral("You must specify crop first.");
inline const QString enterFieldInformation = QStringLiteral("Please enter the Field information.");
inline const QString deleteLayer
    = QStringLiteral("Are you sure you want to delete a layer with depth");
inline const QString depthNotValid = QStringLiteral("Depth is not valid.");
inline const QString layersOfLevel
    = QStringLiteral("There is soil layers information available for the level");
inline const QString stillDelete = QStringLiteral("Do you still want to delete the level?");
inline const QString deleteLevel = QStringLiteral("Are you sure that you want to delete level");
inline const QString layersTableError = QStringLiteral("Invalid entry in IC Layers table.");

// The recalculations.
inline const QString selectSoil = QStringLiteral("Please select a soil.");
inline const QString enterWaterNitrogen
    = QStringLiteral("Please enter Water and Nitrogen into the corresponding text boxes.");
inline const QString noProfileData
    = QStringLiteral("No data available for this soil profile. Please select another profile.");

// Captions of the grids and the page.
inline const QString depthCaption = QStringLiteral("Depth, base of layer, cm");
inline const QString waterCaption = QStringLiteral("Volumetric Water, cm3 cm-3");
inline const QString ammoniumCaption = QStringLiteral("Ammonium  (NH4)      g[N] Mg-1 [soil]");
inline const QString nitrateCaption = QStringLiteral("Nitrate   (NO3)      g[N] Mg-1 [soil]");
inline const QString measurementDate = QStringLiteral("Measurement Date");
inline const QString previousCrop = QStringLiteral("Previous Crop");
inline const QString soilHint = QStringLiteral("You may select a soil from the dropdown list");
inline const QString soilSelectedInFields
    = QStringLiteral("This Soil was selected in Fields section");
inline const QString soilListHint
    = QStringLiteral("List of all available soils for this experiment. These soils were selected "
                     "in the Fields section");
inline const QString water = QStringLiteral("Water");
inline const QString waterUnit = QStringLiteral("(% Available)");
inline const QString nitrogen = QStringLiteral("Nitrogen");
inline const QString nitrogenUnit = QStringLiteral("(kg/ha)");
inline const QString overwriteNote1
    = QStringLiteral("Note: initial condition data will be overwritten");
inline const QString overwriteNote2 = QStringLiteral("when you select recalculate");

// The tails of the failure messages, spelt per routine as the program does.
inline const QString menuTail = QStringLiteral(" in mnuEditInitCond_Click.");
inline const QString formLoadTail = QStringLiteral(" in Form_Load/frmInitCond.");
inline const QString createBackUpTail = QStringLiteral(" in CreateBackUp/frmInitCond.");
inline const QString editEntryTail = QStringLiteral(" in EditEntry/frmInitCond.");
inline const QString editDateTail = QStringLiteral(" in EditIC_Date/frmIniCond.)");
inline const QString cmdAddTail = QStringLiteral(" in cmdAdd_Click/frmInitCond.");
inline const QString cmdDeleteTail = QStringLiteral(" in CmdDelete_Click/frmInitCond.");
inline const QString addLayersTail = QStringLiteral(" in cmdAddLayers/frmInitCond.");
inline const QString deleteLayersTail = QStringLiteral(" in cmdDeleteLayers/frmInitCond.");
inline const QString saveTail = QStringLiteral(" in cmdSave/frmInitCond.");
inline const QString cancelTail = QStringLiteral(" in cmdCancel_Click/frmInitCond.");
inline const QString beforeColUpdateTail = QStringLiteral(" in dbgridic_BeforeColUpdate/frmIC.");
inline const QString recalculateTail = QStringLiteral(" in Old_Command1_Click/frmInitCond.");

} // namespace quillon::editors::ic_text
