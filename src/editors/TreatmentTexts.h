#pragma once

#include <QString>

// The texts of the treatment table, as the program words them.
namespace quillon::editors::treatment_text {

// The window caption's stem.
inline const QString captionStem = QStringLiteral("Treatments");

inline const QString selectCultivar = QStringLiteral("Please select Cultivar.");
inline const QString invalidTreatmentLevel = QStringLiteral("Invalid treatment level.");
// The question before a rotation step of a sequence file is deleted; the
// other files ask the factor editors' "Are you sure you want to delete level".
inline const QString deleteLevelOfRotation
    = QStringLiteral("Are you sure you want to delete Level");
inline const QString rotationNumber = QStringLiteral("Rotation Number");
// The entry of a factor's list that takes the factor out of a treatment.
inline const QString none = QStringLiteral("NONE");
// What joins a level's number and its name in a factor's list.
inline const QString levelSeparator = QStringLiteral(" - ");

// The tails of the failure messages, spelt per routine as the program does.
inline const QString menuTail = QStringLiteral(" Error is in Menu Treatments.");
inline const QString gridTail = QStringLiteral(" in Treatment table.");
inline const QString formLoadTail = QStringLiteral(" in Form_Load/frmViewTreatments.");
inline const QString createBackUpTail = QStringLiteral(" in CreateBackUp/frmViewTreatments.");
inline const QString cmdAddTail = QStringLiteral(" in cmdAdd_Click/frmViewTreatments.");
inline const QString cmdDeleteTail = QStringLiteral(" in cmdDelete/frmTreat.");
inline const QString fillListBoxTail = QStringLiteral(" in FillListBox/frmViewTreatments.");
inline const QString list1Tail = QStringLiteral(" in List1_Click/frmViewTreatments.");
inline const QString buttonClickTail
    = QStringLiteral(" in DBGrdTreatment_ButtonClick/frmViewTreatments.");
inline const QString rowColChangeTail
    = QStringLiteral(" in DBGrdTreatment_RowColChange/frmViewTreatments.");
inline const QString command1Tail = QStringLiteral(" in Command1_Click/frmFields.");

// Buttons and their hints.
inline const QString add = QStringLiteral("Add");
inline const QString remove = QStringLiteral("Delete");
inline const QString save = QStringLiteral("Save");
inline const QString cancel = QStringLiteral("Cancel");
inline const QString addHint = QStringLiteral("Add Treatment (Ctrl + A).");
inline const QString deleteHint = QStringLiteral("Delete the selected Treatment (Ctrl + D).");
inline const QString saveHint
    = QStringLiteral("Save the changes to the Treatments and close the screen (Ctrl + O).");
inline const QString cancelHint = QStringLiteral(
    "Cancel all changes to the Treatments and close the screen (Ctrl + N or Esc).");
inline const QString selectLevelHint
    = QStringLiteral("Select level for each experiment factor by clicking the mouse into the cell");
inline const QString moreDetailsHint
    = QStringLiteral("For more details select the corresponding section from menu options");

} // namespace quillon::editors::treatment_text
