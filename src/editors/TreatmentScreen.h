#pragma once

#include <QString>
#include <QStringList>

namespace quillon::editors {

// The window of the treatment table as its routines see it: where the grid
// DBGrdTreatment stands, and what the routines tell the window to show. The
// grid's rows are the editor's own record source; the window implements
// this, tests fake it.
class TreatmentScreen {
public:
    virtual ~TreatmentScreen() = default;

    // The grid's current cell; -1 for the row when the grid has no rows.
    virtual int currentRow() const = 0;
    virtual int currentColumn() const = 0;
    // Stores what the user is still typing in the current cell (through
    // TreatmentEditor::DBGrdTreatment_Change); nothing when no cell is being
    // edited.
    virtual void commitEdit() = 0;
    // Moves the grid to a row of its record source, keeping the column. A
    // move made by a routine is not a move of the user: it runs no
    // DBGrdTreatment_RowColChange.
    virtual void goToRow(int row) = 0;

    virtual void setCaption(const QString& caption) = 0;
    // CmdAdd, cmdDelete, cmdSave and Command1.
    virtual void setButtonsEnabled(bool enabled) = 0;
    // List1: opens under the current cell with its entries and `selected`
    // chosen (-1 for none); hideList closes it and gives the grid the focus.
    virtual void showList(const QStringList& items, int selected) = 0;
    virtual void hideList() = 0;

    // Closes the window; its unload handler runs.
    virtual void closeWindow() = 0;
};

} // namespace quillon::editors
