#pragma once

#include "editors/gui/EditorWindow.h"

class QBoxLayout;
class QPushButton;
class QTableView;

namespace quillon {

namespace editors {
class SqlGridModel;
}

class GridDelegate;

// What the windows of the editors whose level is one row of one table
// (cultivars, planting) share: the level grid DBGrid1 over the editor's
// record source, its Add and Delete buttons, and OK and Cancel. The
// routines are the editor's; the window tells it when the user moves in
// the grid.
class LevelGridWindow : public EditorWindow {
    Q_OBJECT
protected:
    LevelGridWindow(const QString& formName, const QStringList& buttonNames, QWidget* parent);
    // Shows the editor's record source in DBGrid1; the window's constructor
    // calls it once the editor exists.
    void bindGrid(editors::SqlGridModel& levels);

    // The user moved to another row of DBGrid1.
    virtual void levelRowChanged() = 0;
    // Esc: the editor's warning, then its Cancel.
    virtual void escapePressed() = 0;
    // The shared keys press the buttons they stand for.
    void keyCommand(Key key) override;

    // DBGrid1's current row, -1 for none; a move that is not the user's.
    int gridRow() const;
    void moveGrid(int row);
    // Stores the level cell the user is still typing in.
    void commitGridEdit();
    // Deletes the grid: a window's destructor calls it before the editor
    // whose rows the grid shows goes.
    void releaseGrid();
    // The grid with Add and Delete under it, and OK and Cancel in a row.
    QBoxLayout* gridWithButtons() const;
    QBoxLayout* closingButtons() const;

    QTableView* m_DBGrid1;
    GridDelegate* m_delegate = nullptr;
    // Add, Delete, OK and Cancel, named as buttonNames says.
    QPushButton* m_add;
    QPushButton* m_delete;
    QPushButton* m_ok;
    QPushButton* m_cancel;

private:
    editors::SqlGridModel* m_levels = nullptr;
    bool m_moving = false;
};

} // namespace quillon
