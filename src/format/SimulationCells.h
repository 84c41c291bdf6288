#pragma once

// The rules that the readers and writers of the simulation control groups
// and of the automatic management groups share: how a cell of a data line
// becomes a table value, how a group's row is stored, and how a data line is
// laid out. Used by SimulationSection.cpp and AutomaticSection.cpp only.

#include <QString>
#include <QVariant>
#include <QVariantMap>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace quillon::reference {
struct SimGroup;
}

namespace quillon::format::simulation {

using Row = std::vector<std::pair<QString, QVariant>>;

// A cell of a data line: the line must be longer than `lengthTest` (0: no
// test, the cell is read on every line); its text lies at `start`, `width`.
// The test for a negative value looks at `numStart`, `numWidth` where given
// and at the cell's own text otherwise.
struct Cell {
    const char* column;
    int lengthTest;
    int start;
    int width;
    int numStart = 0;
    int numWidth = 0;
};

// The level number at positions 1 to 3, read as a number.
double levelOf(const QString& line);
// The level as the messages show it.
QString levelText(double level);

// The cell rule: no value (the cell stays NULL) when the line is too short;
// the default member when the text is blank or its number negative;
// otherwise the trimmed text.
std::optional<QVariant> cellValue(const QString& line, const Cell& cell);
// Adds the cell to the row when the line reaches it.
void addCell(Row& row, const QString& line, const Cell& cell);
// addCell for each of the cells in turn.
void addCells(Row& row, const QString& line, const std::vector<Cell>& cells);

// The group label at positions 4 to 14: the group's own two letters in
// place of a blank or negative label. No value when the line isn't longer
// than `lengthTest` (0: no test).
std::optional<QVariant> labelValue(const QString& line, int lengthTest, const QString& letters);

// A comment handed to a group reader: appended to the simulation comments,
// after which the whole buffer loses its first two characters.
void takeComment(const QString& line);

// Stores a row in a group's table, converting text to the column's type as
// the database would (text that is no number in a numeric column is refused
// with a conversion error). A level that the table holds already is refused
// as a duplicate key, in every group table alike.
void storeRow(const QString& table, const Row& row);

// The message of a group reader that failed on a line.
void groupFailed(const QString& where, double level);

// The level's row of defaults, stored in `table` (normally the group's own).
void storeDefaultRow(const QString& table, const reference::SimGroup& group, double level);

// How every group reader takes a line. A comment goes to the simulation
// comments. Otherwise the row opens with the level and the label (its
// length test `labelTest`), `body` adds the cells, and the row goes to the
// group's table. If that fails, the failure is shown as in `where` and the
// level's row of defaults goes to `defaultsTable`; a failure of that goes on
// to the caller.
void readGroupLine(const QString& line, const reference::SimGroup& group, int labelTest, const QString& where,
    const QString& defaultsTable, const std::function<void(Row& row, double level)>& body);

// The section-level recovery: every group table emptied and given level 1
// of defaults; the start date comes from the first planting row if any.
void restoreDefaultControls();

// Writer side.

// The start of a data line: level, then the label filling 11 positions.
QString lineStart(const QVariant& level, const QString& label);
// A cell as the writer prints it: the value, or the default member for a
// NULL, as text.
QString cellText(const QVariantMap& row, const QString& column);
// The label of a row, or the group's letters for a NULL.
QString labelText(const QVariantMap& row, const reference::SimGroup& group);
// Level, label and each column right-aligned in 6 positions.
QString plainLine(const QVariant& level, const QVariantMap& row, const reference::SimGroup& group);

// The rows of a group's table in level order, for the writer.
QList<QVariantMap> groupRows(const reference::SimGroup& group);
// Row `i` of a table's rows, or an empty row (all NULL) past its end.
QVariantMap rowAt(const QList<QVariantMap>& rows, int i);

} // namespace quillon::format::simulation
