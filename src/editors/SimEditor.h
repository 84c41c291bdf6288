#pragma once

#include "editors/SimFields.h"
#include "editors/SimScreen.h"
#include "editors/SqlGridModel.h"

#include <QVariant>

#include <map>
#include <optional>

namespace quillon::editors {

// View > Simulation Controls: clears NewLevelCreated, closes the open editor
// (which commits it), and gives a first level without a start date the date
// of the first planting. Without a planting date it says "Please enter the
// planting date.", opens the planting editor instead and returns false;
// otherwise true: frmSim is to be shown. Failures are reported and give
// false.
bool EditSimOptGeneral_Click();

// The simulation control editor frmSim. A level is one row in each of the
// eleven group tables (simTables()); the level list Data1 shows
// SimulationControl, and the page shows the current level's row of every
// table in boxes and combos named as the program names them. What the user
// changes on the page goes to the tables when the level changes and on OK;
// Cancel restores every group table and the treatments' levels from the
// backups taken at opening. The routines trap their own failures: a message
// with the error's text and the routine's tail, and the window stays open.
class SimEditor {
public:
    // A level's title is cut to the width the file gives it.
    static constexpr int titleLength = 25;

    explicit SimEditor(SimScreen& screen);

    // The level list's record source; the window shows it.
    SqlGridModel& Data1() { return m_data1; }

    void Form_Load();
    // The _BackUp twin of every group table, and the treatments' levels.
    void CreateBackUp();
    void ColumnNames();
    // Shows the level's row of each group table on the page.
    void EditEntry(int level);

    // A new level as a copy of the one shown, through the _Add tables.
    void CmdAdd_Click();
    void CmdRemove_Click();
    void cmdOK_Click();
    void cmdCancel_Click();

    // A move in the level list: the page's changes are kept and the new
    // level shows.
    void DBGrid1_RowColChange();
    // The level list's update of a cell, before it is stored: a new level
    // number renumbers the level (the group tables and the treatments follow
    // through the relations); a title is cut to its length. False refuses.
    bool DBGrid1_BeforeColUpdate(int column, const QVariant& oldValue, QVariant& value);
    void DBGrid1_Error(const RuntimeError& error);

    // A choice in the methods' combos: canopy evapotranspiration ("Z")
    // needs leaf photosynthesis ("L").
    void DBCombo1_Click(int index);
    // A choice of a management code: the enabled state of its tab's fields.
    void DBCombo4_Change(int index);
    // The validating event of a box: false (after its message) keeps the
    // focus in it.
    bool Validate(const QString& control);

    // The user closes the window other than by OK or Cancel: the warning,
    // and on OK the tables go back as Cancel puts them. False keeps the
    // window open.
    bool Form_QueryUnload();
    // The unload handler: a close that came neither from the buttons nor
    // from the user (another editor opening, Save) keeps the changes as OK
    // does.
    void Form_Unload();
    // Esc: the warning, then Cancel.
    void escapePressed();

    bool forecast() const { return m_forecast; }
    // The level the page shows, if any.
    std::optional<int> shownLevel() const { return m_level; }

private:
    QString levelCellText() const;
    void goToLevel(int level);
    void showField(const SimField& field, const QVariant& value);
    void setEnabled(const QString& control, bool enabled);
    void applyManagement();
    void saveLevel();
    void commit();
    void addLevel(int current, int newLevel);
    void restoreTables();
    bool shownInForm(const QString& table) const;

    SimScreen& m_screen;
    SqlGridModel m_data1;
    bool m_forecast = false;
    bool m_closedByButton = false;
    std::optional<int> m_level;
    // The row id of the shown level's row in each group table that has one.
    std::map<QString, qint64> m_rows;
    // What each field showed when the level was loaded or last saved.
    std::map<QString, QString> m_shown;
    std::vector<QVariant> m_treatmentLevels;
};

} // namespace quillon::editors
