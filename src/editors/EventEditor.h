#pragma once

#include "editors/EventMember.h"
#include "editors/EventScreen.h"
#include "editors/LevelPage.h"
#include "editors/ScratchTable.h"
#include "editors/SqlGridModel.h"

#include <QVariant>

#include <optional>

namespace quillon::editors {

// The event-editor frame: the routines of an editor of dated events
// (fertilizer, residue, chemical, tillage, irrigation, harvest, environment
// modification), run on the member's tables. Where a member adds to a
// routine (EventMember::additions, its level page, its stage list), the
// routine looks it up in the member.
// While the editor is open the events live in the scratch table Applications,
// with descriptions in place of codes and real dates; OK writes them back in
// the file's form, Cancel restores every table from the backups taken at
// opening. The routines trap their own failures: a message with the error's
// text and the routine's tail, and the window stays open.
class EventEditor {
public:
    EventEditor(const EventMember& member, EventScreen& screen);

    const EventMember& member() const { return m_member; }

    // The menu handler (mnuEditFertilizer_Click, ...): closes the other
    // editors, gives a factor without levels its level 1, and says whether
    // the window is to be shown.
    static bool openEditor(const EventMember& member);

    void Form_Load();
    void CreateDateTable();
    void CreateBackUp();
    void EditEntry(int level);
    void SetUpData2(int level);
    void ColumnNames();
    void ColumnNames_Layers();

    void cmdAdd1_Click();
    void cmdAdd2_Click();
    void cmdDelete1_Click();
    void cmdDelete2_Click();
    void cmdOK_Click();
    void cmdCancel_Click();

    // The level grid's update of a cell, before it is stored: checks a typed
    // level number and carries a renumbering to the level's events and
    // management; cuts a name to its length. False refuses the value.
    bool DBGrid1_BeforeColUpdate(int column, const QVariant& oldValue, QVariant& value);
    // After a level number is stored: the level's events show again.
    void DBGrid1_AfterColUpdate(int column, const QVariant& value);
    // The event grid's update of a cell: a typed text in a list column
    // blanks it.
    void DBGrid2_BeforeColUpdate(int column, QVariant& value, bool fromList);
    // The grids' error events, for a value the database refused.
    void DBGrid1_Error(const RuntimeError& error);
    void DBGrid2_Error(const RuntimeError& error);
    // The events of the two grids' record sources, tied to the routines
    // above.
    SqlGridModel::Hooks levelGridHooks();
    SqlGridModel::Hooks eventGridHooks();
    // Focus enters the level grid.
    void DBGrid1_GotFocus();
    void DBGrid1_RowColChange();
    // A move in the event grid; a new row clears RowInError first.
    void DBGrid2_RowColChange(int column, bool newRow);
    void DBGrid2_ButtonClick(int column);
    void ListDescription_Click(int list, const QString& text);
    // A list lost the focus and hid.
    void ListLostFocus() { m_listShown = -1; }
    void DBComboManagement_Click(const QString& text);
    // The crop shown in ComboCrop changed: the stage list offers its stages.
    void ComboCrop_Change(const QString& crop);
    // The level page: a box left (false keeps the focus in it), a combo's
    // choice.
    bool LevelPage_Validate(int field, const QString& text);
    void LevelPage_Click(int field, const QString& description);
    void Check_Dates(int level);

    // The unload handler: a close that didn't come from OK or Cancel
    // commits as OK does.
    void Form_Unload();
    // Esc: the warning, then Cancel.
    void escapePressed();

    // Description to code and back through the code table of a list.
    QString MyIRRCode(int list, const QString& description) const;
    QString MyIRRDescription(int list, const QString& code) const;

    bool DaysMode() const { return m_daysMode; }
    bool RowInError() const { return m_rowInError; }
    // Whether the crop in ComboCrop has stages to offer.
    // The message Check_Dates leaves, "" when the dates are distinct.
    const QString& datesMessage() const { return m_datesMessage; }
    // The level DBGrid1's current row holds, if its text is a number.
    std::optional<int> currentLevel() const;

private:
    void report(const RuntimeError& e, Routine routine) const;
    void handleAddFailure(const RuntimeError& e, Routine routine);
    void goToLevel(LevelRow row);
    bool copyLevel(int current, int newLevel);
    bool addFirstLevel();
    void addFirstEvent(int level);
    void writeChoice(int column, const QString& value);
    QString levelsStatement() const;
    QString eventOrder(int level) const;
    QString eventStatement(int level, const QString& order) const;
    void showYears();
    void openList(int column, bool toggle);
    void restoreTables();

    const EventMember& m_member;
    EventScreen& m_screen;
    ScratchTable m_scratch;
    LevelPage m_page;
    bool m_daysMode = false;
    bool m_rowInError = false;
    bool m_closedByButton = false;
    int m_listShown = -1;
    // The order of the event grid's rows, as SetUpData2 chose it.
    QString m_eventOrder = QStringLiteral("TheDate");
    int m_eventLevel = 0;
    YearControls m_years;
    std::vector<QVariant> m_treatmentLevels;
    QString m_datesMessage;
    QString m_crop;
};

} // namespace quillon::editors
