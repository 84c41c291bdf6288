#pragma once

#include "editors/EventScreen.h"
#include "editors/SqlGridModel.h"

#include <QTableView>

namespace quillon {

class GridDelegate;

// A grid of an editor that is bound to a statement in place, without a
// scratch table: its own record source and cell editors, the routines'
// moves told apart from the user's, and the cell being typed in stored on
// demand. A routine's move emits nothing; a move of the user emits
// rowMoved.
class EditorGrid final : public QTableView {
    Q_OBJECT
public:
    EditorGrid(const QString& name, QWidget* parent);

    editors::SqlGridModel& records() { return m_records; }
    GridDelegate& cells() { return *m_cells; }
    // The record source's events; a failure of a store that a routine asked
    // for (commitEdit) goes to the routine, not to the error event.
    void setHooks(editors::SqlGridModel::Hooks hooks);

    // Binds the grid to a statement on `table` again and moves it: to the
    // first or last row, or back to the row it stood on.
    void bind(const QString& statement, const QString& table, editors::LevelRow row);
    // The current row's cell as text, and as the value the table holds.
    QString currentText(int column) const;
    QVariant currentValue(int column) const;
    // The current row's id in its table; 0 for none or the new row.
    qint64 currentId() const;
    // Moves to the row of an id (0: the first row), or to the last row.
    void goToId(qint64 id);
    void goToLastRow();
    // Stores the cell being typed in. Returns the failure (number 0 when it
    // was stored or nothing was being typed).
    RuntimeError commitEdit();
    // Captions of the first columns; the columns behind them don't show.
    void setCaptions(const QStringList& captions);

signals:
    // The user moved the grid to another row.
    void rowMoved();

private:
    void moveTo(int row);

    editors::SqlGridModel m_records;
    GridDelegate* m_cells;
    // The column the grid stands in, kept while the records are bound anew.
    int m_column = 0;
    bool m_moving = false;
    bool m_committing = false;
};

} // namespace quillon
