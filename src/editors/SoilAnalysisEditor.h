#pragma once

#include "editors/SoilAnalysisScreen.h"
#include "editors/SqlGridModel.h"
#include "editors/TreatmentLevels.h"

#include <QVariant>

#include <optional>

namespace quillon::editors {

// A method combo of the soil analysis page: the field of SoilAnalysis it
// stores and the CodeLookup type it lists.
struct MethodCombo {
    QString control; // "DBCmbSMPX"
    QString field; // "SMPX"
    QString type; // "Methods - Soil Analysis1"
};
const std::vector<MethodCombo>& soilMethodCombos();

// Edit > Soil Analysis: closes the other editors (they commit); a file
// without soil analysis gets level 1, dated by the simulation start or the
// planting, with one empty layer. Says whether the editor is to be shown.
bool mnuEditSoil_Click();

// The soil analysis editor frmSoilAnalysis: the frame's two grids, buttons,
// keys and deletion rules, with layers for events and no scratch table. It
// edits SoilAnalysis and SoilLayers in place; BackUp and
// BackUp_Applications, taken at opening, are Cancel's undo. A level carries
// an analysis date and three method codes. The routines trap their own
// failures: a message with the error's text and the routine's tail, and the
// window stays open.
class SoilAnalysisEditor {
public:
    explicit SoilAnalysisEditor(SoilAnalysisScreen& screen);

    // The events of the record sources of DBGrid1 and DBGrid2.
    SqlGridModel::Hooks levelGridHooks();
    SqlGridModel::Hooks layerGridHooks();

    void Form_Load();
    void CreateBackUp();
    void EditEntry(int level);
    // The level's SADAT shown as a date in txtDate.
    void EditIC_Date(int level);
    // txtDate's date stored in SADAT as a code, or emptied with it.
    void EditSA_Date();
    void ColumnNames();
    void ColumnNames_Layers();

    void cmdAdd1_Click();
    void cmdAdd2_Click();
    void cmdDelete1_Click();
    void cmdDelete2_Click();
    void cmdOK_Click();
    void cmdCancel_Click();

    // txtDate's validate event: false keeps the focus there.
    bool txtDate_Validate();
    // A method combo's choice.
    void MethodCombo_Click(const QString& field, const QString& description);
    // Focus enters the level grid: the layer being typed is stored first.
    void DBGrid1_GotFocus();
    void DBGrid1_RowColChange();

    // The unload handler: a close that didn't come from OK or Cancel
    // commits as OK does.
    void Form_Unload();
    // Esc: the warning, then Cancel.
    void escapePressed();

    // The level DBGrid1's current row holds, if its text is a number.
    std::optional<int> currentLevel() const;

private:
    bool DBGrid1_BeforeColUpdate(int column, const QVariant& oldValue, QVariant& value);
    void goToLevel(LevelRow row);
    QString layersStatement(int level) const;
    void showLayers(int level);
    bool dateAccepted(QDate& date);
    bool layersCommitted();

    SoilAnalysisScreen& m_screen;
    TreatmentLevels m_treatmentLevels;
    // The level the page shows; 0 for none.
    int m_level = 0;
    bool m_closedByButton = false;
};

} // namespace quillon::editors
