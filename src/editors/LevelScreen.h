#pragma once

#include <QString>

namespace quillon::editors {

// What the windows of the editors whose level is one row of one table
// (cultivars, planting) show their routines alike: where the level grid
// DBGrid1 stands, its caption, and closing. The grid's rows are the editor's
// record source Data1.
class LevelScreen {
public:
    virtual ~LevelScreen() = default;

    // DBGrid1's current row; -1 when the grid has no rows.
    virtual int currentRow() const = 0;
    // Moves DBGrid1 to a row of Data1. A move made by a routine is not a move
    // of the user: it runs no DBGrid1_RowColChange.
    virtual void goToRow(int row) = 0;
    // Stores what the user is still typing in the grid, if anything.
    virtual void commitEdit() = 0;

    virtual void setCaption(const QString& caption) = 0;

    // Closes the window; its unload handler runs.
    virtual void closeWindow() = 0;
};

} // namespace quillon::editors
