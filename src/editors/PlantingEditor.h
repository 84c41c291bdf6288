#pragma once

#include "app/ExpIdentity.h"
#include "editors/LevelTableBackup.h"
#include "editors/PlantingScreen.h"
#include "editors/SqlGridModel.h"

#include <optional>
#include <vector>

namespace quillon::editors {

// Edit > Planting: closes the open editor (which commits it). A first planting
// level without a date in a file whose first field has no weather station
// says "Please select weather station in Fields." and opens the field editor
// instead. Says whether the window is to be shown; the editor works with any
// number of levels. Failures are reported (" in mnuEditPlanting_Click.") and
// give false.
bool mnuEditPlanting_Click();

// A validated box of the planting page: its control, its column of Planting,
// its caption and the ranges the entry must lie in, checked one after the
// other.
struct PlantingBox {
    QString control;
    QString field;
    QString caption;
    std::vector<RangeRule> rules;
};

// The planting editor frmPlantingEd: one row of Planting per level, with no
// events, shown as the level grid DBGrid1 and a page of bound boxes. The
// planting and emergence dates are shown as dates and stored as file date
// codes. It works on Planting itself; BackUp, taken at opening, is Cancel's
// undo. In a new file OK carries the planting date into the simulation
// defaults. The routines trap their own failures: a message with the
// error's text and the routine's tail, and the window stays open.
class PlantingEditor {
public:
    explicit PlantingEditor(PlantingScreen& screen);

    // The validated boxes, in the order of the page.
    static const std::vector<PlantingBox>& boxes();

    // Data1, DBGrid1's record source: the level and its description.
    SqlGridModel& Data1() { return m_grid; }

    void Form_Load();
    void CreateBackUp();
    // Shows the page of a level.
    void EditEntry(int level);
    // The date rule: an emergence before the planting turns both date boxes
    // red and says so. Equal dates pass.
    void EditIC_Date();
    void ColumnNames();

    void cmdAdd();
    void cmdDelete_Click();
    void cmdOK_Click();
    // The guided road of a new file: stores the dates as OK does, readies
    // the initial conditions and opens their editor.
    void cmdNext();
    // Cancel.
    void Command1_Click();

    // The user moved to another row of DBGrid1.
    void DBGrid1_RowColChange();
    // A box of boxes() left by the user with `text`: refused with "Invalid
    // entry." (the box keeps the focus), or stored in the level's row, with
    // `text` set to what the box then shows (-99 for an empty box).
    bool BoxValidate(int box, QString& text);
    // A date box left by the user: text that is no date, or a date the file
    // can't hold, is refused with "Invalid date."; a date is stored as its
    // code; an empty emergence box empties the emergence date.
    bool DateValidate(PlantingDate box, const QString& text);
    // A description chosen in the method (PLME) or distribution (PLDS) combo:
    // the level takes its code.
    void ComboClick(const QString& field, const QString& description);

    // The unload handler: a close that didn't come from OK or Cancel commits
    // as OK does.
    void Form_Unload();
    // Esc: the warning, then Cancel.
    void escapePressed();

    // The level DBGrid1's current row holds, if its text is a number.
    std::optional<int> currentLevel() const;

private:
    // Steps 1 and 2 of OK and Next: the date boxes into the level's row.
    bool storeDates(const QString& plantingTitle);
    QString experimentDate() const;
    void fillSimulationDefaults(const QString& date) const;
    void close();
    qint64 currentRowId() const;
    void storeValue(const QString& field, const QVariant& value);
    QString codeOf(const QString& type, const QString& description) const;
    QString descriptionOf(const QString& type, const QString& code) const;
    void showLevel(int level);

    PlantingScreen& m_screen;
    SqlGridModel m_grid;
    LevelTableBackup m_backup;
    bool m_closedByButton = false;
};

} // namespace quillon::editors
