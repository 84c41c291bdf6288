#pragma once

#include <QString>

// The texts of the cultivar editor, as the program words them.
namespace quillon::editors::cultivar_text {

// The window caption's stem, and the factor's word in the deletion warning.
inline const QString captionStem = QStringLiteral("Cultivars");
inline const QString levelWord = QStringLiteral("Cultivar");

// Captions of DBGrid1 after "Level", and the lists' headings.
inline const QString crop = QStringLiteral("Crop");
inline const QString cultivar = QStringLiteral("Cultivar");

// The picture of a crop is its code followed by this in the program's
// folder; a crop without one shows the default.
inline const QString pictureSuffix = QStringLiteral("2.jpg");
inline const QString defaultPicture = QStringLiteral("Green.jpg");

// The tails of the failure messages, spelt per routine as the program does.
inline const QString menuTail = QStringLiteral(" in mnuEditCultivar_Click.");
inline const QString formLoadTail = QStringLiteral(" in Form_Load/frmCult1.");
inline const QString addTail = QStringLiteral(" in CmdAddCultivar_Click/frmCult1.");
inline const QString cancelTail = QStringLiteral(" in cmdCancel_Click/frmCult1.");
inline const QString deleteTail = QStringLiteral(" in Command2_Click/frmCult1");
inline const QString beforeColUpdateTail = QStringLiteral(" in DBGrid1_BeforeColUpdate/frmClut1.");
inline const QString rowColChangeTail = QStringLiteral(" in DBGrid1_RowColChange/frmCult1.");
inline const QString listCropTail = QStringLiteral(" in ListCrop_Click/frmCult1.");
inline const QString listDescriptionTail = QStringLiteral(" in ListDescription_Click/frmCult1.");
// Routines the form shares with others keep those forms' tails.
inline const QString createBackUpTail = QStringLiteral(" in CreateBackUp/frmFields.");
inline const QString fillListBoxTail = QStringLiteral(" in FillListBox/frmViewTreatments.");

// The hint over the lists.
inline const QString listsHint
    = QStringLiteral("Select the crop of the level, then its cultivar, from the lists");

} // namespace quillon::editors::cultivar_text
