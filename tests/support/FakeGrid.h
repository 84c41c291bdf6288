#pragma once

#include "editors/EventScreen.h"
#include "editors/SqlGridModel.h"

#include <algorithm>

namespace quillon::test {

// A grid without widgets: a record source and its current row, bound and
// moved as the editor windows' grids do it (a row found again by its id).
struct FakeGrid {
    editors::SqlGridModel records;
    int row = -1;

    void bind(const QString& statement, const QString& table, editors::LevelRow where)
    {
        const qint64 stoodOn = id();
        const int was = row;
        records.setQuery(statement, table);
        const int rows = records.rowCount();
        if (where == editors::LevelRow::First)
            moveTo(0);
        else if (where == editors::LevelRow::Last)
            goToLast();
        else
            moveTo(records.rowOf(stoodOn) >= 0 ? records.rowOf(stoodOn) : std::min(was, rows - 1));
    }
    void moveTo(int to)
    {
        row = records.rowCount() == 0 ? -1 : std::clamp(to, 0, records.rowCount() - 1);
    }
    void goToLast()
    {
        const int rows = records.rowCount();
        moveTo(records.isNewRow(rows - 1) ? rows - 2 : rows - 1);
    }
    void goToId(qint64 target) { moveTo(target == 0 ? 0 : std::max(0, records.rowOf(target))); }
    // Moves to the first row whose cell holds a value; false when none does.
    bool goToValue(int column, const QVariant& value)
    {
        for (int r = 0; r < records.rowCount(); ++r) {
            if (records.text(r, column) == value.toString()) {
                row = r;
                return true;
            }
        }
        return false;
    }
    QString text(int column) const { return records.text(row, column); }
    QVariant value(int column) const { return records.value(row, column); }
    qint64 id() const { return records.rowId(row); }
    // The rows as text, "a|b|c" each, the new row left out.
    QStringList rows() const
    {
        QStringList lines;
        for (int r = 0; r < records.rowCount(); ++r) {
            if (records.isNewRow(r))
                continue;
            QStringList cells;
            for (int c = 0; c < records.columnCount(); ++c)
                cells << records.text(r, c);
            lines << cells.join(QLatin1Char('|'));
        }
        return lines;
    }
};

} // namespace quillon::test
