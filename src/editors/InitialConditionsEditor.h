#pragma once

#include "editors/InitialConditionsScreen.h"
#include "editors/SqlGridModel.h"

#include <QVariant>

#include <array>
#include <optional>
#include <vector>

namespace quillon::editors {

// A validated box of a level's page: its control, its column of
// InitialConditions, its caption and its range.
struct InitialConditionsBox {
    const char* control;
    const char* field;
    const char* caption;
    double lower;
    double upper;
};
const std::array<InitialConditionsBox, 10>& initialConditionsBoxes();

// The three recalculation buttons: water and nitrogen, water alone,
// nitrogen alone.
enum class Recalculation { All, Water, Nitrogen };

// Edit > Initial Conditions: closes the other editors (which commit), makes
// what the editor needs ready (prepareInitialConditions) and says whether
// the window is to be shown. Failures are reported and give false.
bool mnuEditInitCond_Click();

// The initial conditions editor frmInitCond: one row of InitialConditions
// per level, its soil layers in ICLayers, and its soil, water and nitrogen
// in IC_Water_Nitrogen, edited in place. The backups taken at opening
// (BackUp, BackUp_Layers, BackUp2 of ICSoil, BackUp_IC_Water_Nitrogen, and
// the treatments' levels) are Cancel's undo. The routines trap their own
// failures: a message with the error's text and the routine's tail, and the
// window stays open.
class InitialConditionsEditor {
public:
    // The most layers a level may have.
    static constexpr int maxLayers = 20;

    explicit InitialConditionsEditor(InitialConditionsScreen& screen);

    void Form_Load();
    void CreateBackUp();
    void EditEntry(int level);
    void EditIC_Date();
    void ColumnNames();
    void ColumnNames_Layers();

    void cmdAdd_Click();
    void CmdDelete_Click();
    void cmdAddLayers();
    void cmdDeleteLayers();
    // OK.
    void cmdSave();
    void cmdCancel_Click();
    // A copy of a level's soil, water and nitrogen under a new level; and
    // their removal with the level.
    void Add_IC_Water_Nitrogen(int level, int newLevel);
    void Delete_IC_Water_Nitrogen(int level);

    // A recalculation button: checks the soil and the boxes it needs, reads
    // the soil's profile and runs its routine on the current level.
    void cmdRecalculate_Click(Recalculation which);
    // Another soil chosen: the level's water and nitrogen show again.
    void DBComboSLNO_Change();

    // The page, as the user leaves a box he changed: a validated box
    // (by its field) stores its value or refuses it with "Invalid entry.";
    // the date box stores the level's date code or refuses a non-date.
    // False keeps the focus in the box.
    bool txtBox_Validate(const QString& field, const QString& text);
    bool txtDate_Validate(const QString& text);
    // A previous crop chosen (its code).
    void PRCROP_Click(const QString& code);

    // The level grid: a typed level number is checked and carried to the
    // level's summary (its layers and treatments follow through the
    // relations); a name is cut to its length. False refuses the value.
    bool DBGridIC_BeforeColUpdate(int column, const QVariant& oldValue, QVariant& value);
    void DBGridIC_RowColChange();
    // The layer grid: a depth the level has already is refused.
    bool dbgICLayers_BeforeColUpdate(int column, QVariant& value);
    SqlGridModel::Hooks levelGridHooks();
    SqlGridModel::Hooks layerGridHooks();

    // The unload handler: a close that didn't come from OK or Cancel
    // commits as OK does.
    void Form_Unload();
    // Esc: the warning, then Cancel.
    void escapePressed();

    // The level DBGridIC's current row holds, if its text is a number.
    std::optional<int> currentLevel() const;

private:
    QString levelsStatement() const;
    QString layersStatement(int level) const;
    void showLayers(int level, qint64 row = 0);
    void showSummary(int level);
    void storeDate(const QString& text);
    bool layerCommitted();
    void restoreTables();

    InitialConditionsScreen& m_screen;
    int m_level = 0;
    bool m_closedByButton = false;
    std::vector<QVariant> m_treatmentLevels;
};

} // namespace quillon::editors
