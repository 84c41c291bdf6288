#pragma once

#include "database/Sql.h"

#include <QString>
#include <QVariant>

#include <functional>

class QSqlQuery;

namespace quillon::format {
class FileWriter;
}

// Cell rules shared by the readers and writers of the dated event sections
// (irrigation, fertilizers, residues, chemicals, tillage, environment
// modifications, harvest).

namespace quillon::format::events {

// --- Reading -------------------------------------------------------------

// The level number at the start of a data line: the leading number of
// columns 1 to 3, with no length test ("" gives 0).
int levelOf(const QString& line);

// A numeric cell: NULL when the line isn't longer than `test`, when the
// column is blank, or when its leading number is negative (so "-99" never
// reaches a table); otherwise the leading number of the column, so that
// "90kg" reads as 90 and a column without a number as 0.
QVariant numberCell(const QString& line, int test, int start, int width);

// A text cell: NULL as for numberCell (a code's leading number is 0, so a
// code is never negative); otherwise the column trimmed.
QVariant textCell(const QString& line, int test, int start, int width);

// The date cell at 4, width 5 with its length test 5. With `padFour`, a
// trimmed date of exactly four characters gets a "0" in front (a day
// number of the year 2000 written without its leading zero); every other
// value follows the text cell rule.
QVariant dateCell(const QString& line, bool padFour);

// The row with each text value converted by its field's type, as the
// engine does when a field is given text: a number field refuses text that
// isn't a number ("Data type conversion error."), which costs the line.
// Numbers take the field's type too (an Integer field rounds them).
database::Values typedRow(const QString& table, const database::Values& values);

// The tables a named event reader stores into: the event table, its level
// column (the same name in both tables), and the table of level names with
// its name column.
struct NamedEventTables {
    const char* events;
    const char* levelColumn;
    const char* names;
    const char* nameColumn;
};

// The fill-and-store pattern of the named event readers. The level comes
// from the start of `line` and opens the event row; `fill` adds the
// further cells and the name inside the error trap. A duplicate key there
// shows "duplicate levels in '<section>'. Level N is read only once." with a
// stop icon and the title "Error"; any other error shows its own text and
// `tail`. Either way the line is lost. After a clean fill the name row
// (when it has a name) and the event row are stored with errors ignored:
// a name for a level that already has one is dropped silently.
struct NamedEventRow {
    int level = 0;
    database::Values event;
    QVariant name;
};
void storeNamedEvent(const QString& line, const NamedEventTables& tables, const QString& section,
    const QString& tail, const std::function<void(NamedEventRow&)>& fill);

// --- Writing -------------------------------------------------------------

// A cell is missing when format::isBlank says so.

// A number through NumText: "-99" when missing.
QString numberOr99(const QVariant& value);
// A number through a mask and NumText: "-99" when missing.
QString maskOr99(const QVariant& value, const QString& mask);
// A number rounded to `digits` places (half away from zero) and written
// without trailing zeros, through NumText.
QString roundedText(const QVariant& value, int digits);
// roundedText, "-99" when missing.
QString roundedOr99(const QVariant& value, int digits);

// The level names the writer puts behind each event row, looked up through
// one of the Find_…NAME routines. The rows come ordered by level, so the
// name is looked up once a level instead of once a row (a query each). A
// level that is no number is looked up every time, so that the lookup's
// error shows as often as it would.
class LevelNameLookup {
public:
    explicit LevelNameLookup(QString (*find)(const QVariant&))
        : m_find(find)
    {
    }
    QString operator()(const QVariant& level);

private:
    QString (*m_find)(const QVariant&);
    QVariant m_level;
    QString m_name;
};

// The rows of a named event section as the file writes them. An empty
// event table writes nothing and gives false. Otherwise: a blank line, the
// title and the column header, then a line for each row in level order
// (rows of one level in the order they were read): the level column, the
// row's `cells`, and the level's name found through `find`, looked up once
// a level. The comments behind the block are the caller's.
bool writeNamedEvents(FileWriter& w, const NamedEventTables& tables, const QString& title,
    const QString& header, QString (*find)(const QVariant&),
    const std::function<QString(const database::Rows&)>& cells);

} // namespace quillon::format::events
