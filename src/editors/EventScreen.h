#pragma once

#include "app/RuntimeError.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace quillon::editors {

// What the event grid DBGrid2 is bound to: the statement of SetUpData2, the
// level its new rows belong to, and how its date column is shown.
struct EventGridSetup {
    QString statement; // "SELECT TheDate, ... From Applications Where LNFER = 3 Order By TheDate"
    QString levelField; // "LNFER"
    int level = 0;
    bool daysMode = false; // the first column is DayAfterPlanting, else TheDate with the date mask
};

// Where the level grid goes after it is bound again.
enum class LevelRow { First, Last, Same };

// The year controls: ComboYear lists the years of the fields' weather, and
// txtYear the year of the level's first event. They inform only.
struct YearControls {
    QStringList years;
    int selected = -1; // the entry equal to txtYear, -1 for none
    bool comboVisible = false;
    bool comboEnabled = false;
    QString txtYear;
    bool txtYearVisible = false;
};

// The window of an event editor as its routines see it: the current rows and
// cell texts of its two grids, and what the routines tell it to show. The
// window implements it; tests fake it.
class EventScreen {
public:
    virtual ~EventScreen() = default;

    // DBGrid1: the text of the level-number cell of the current row; "" when
    // the grid has no rows.
    virtual QString levelCellText() const = 0;
    // DBGrid2: the text of a cell of the current row (0 is the date column);
    // "" when the grid has no rows or the new row is current.
    virtual QString eventCellText(int column) const = 0;
    // DBGrid2: the row id in Applications of the current row; 0 for none.
    virtual qint64 currentEventRow() const = 0;

    // Stores what the user is still typing in DBGrid2. Returns the failure
    // (number 0 when it was stored or nothing was pending).
    virtual RuntimeError commitEventEdit() = 0;

    // Data1: binds the level grid to its statement again and moves it.
    virtual void showLevels(const QString& statement, LevelRow row) = 0;
    // Data2: binds the event grid to a statement.
    virtual void showEvents(const EventGridSetup& setup) = 0;
    // Data2 read again with its statement, keeping the current row.
    virtual void refreshEvents() = 0;
    // Moves DBGrid2 to a row (0: the first row), or to its last row.
    virtual void goToEvent(qint64 row) = 0;
    virtual void goToLastEvent() = 0;
    // Writes a text into a cell of DBGrid2's current row, as the user's
    // choice from a list.
    virtual void setEventCell(int column, const QString& text) = 0;

    // ColumnNames and ColumnNames_Layers: the captions of the two grids,
    // level grid first; `visible` says which event columns show.
    virtual void setLevelCaptions(const QStringList& captions) = 0;
    virtual void setEventCaptions(const QStringList& captions, const std::vector<bool>& visible)
        = 0;

    virtual void setCaption(const QString& caption) = 0;
    // LblLevelNumber.
    virtual void setLevelNumberText(const QString& text) = 0;
    virtual void showYears(const YearControls& years) = 0;
    // DBComboManagement: the descriptions it offers, and the one of the
    // current level's code ("" when the level has none).
    virtual void setManagementChoices(const QStringList& descriptions) = 0;
    virtual void showManagement(const QString& description) = 0;
    // The drop-down lists over DBGrid2.
    virtual void setListItems(int list, const QStringList& items) = 0;
    // Opens a list under the current cell with `selected` chosen; the
    // others close.
    virtual void showList(int list, const QString& selected) = 0;
    virtual void hideLists() = 0;
    virtual void setDeleteEnabled(bool levelButton, bool eventButton) = 0;

    // Closes the window; its unload handler runs.
    virtual void closeWindow() = 0;
};

} // namespace quillon::editors
