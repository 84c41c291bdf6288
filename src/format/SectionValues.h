#pragma once

#include "database/Sql.h"

#include <QString>
#include <QVariant>

#include <functional>

namespace quillon::format {

// Helpers shared by the section readers and writers of the experiment file.

// The trimmed text of a fixed column: Mid(line, start, length), blanks off.
QString column(const QString& line, int start, int length);

// Text from the file as the value a field of the working database takes,
// converted by the field's type in the schema: text stays text (never NULL,
// "" stays a zero-length string); Single takes the number; Integer and Long
// take the number rounded half to even. Text that isn't a number in a
// numeric field throws the engine's conversion failure.
QVariant fieldValue(const QString& table, const QString& field, const QString& text);
// A number from the file (the leading-number rule) as the value of a field.
QVariant fieldNumber(const QString& table, const QString& field, double number);

// The row a reader builds from one line: the fields it sets, in the order
// of the line. A field it doesn't set stays as it is.
class RowValues {
public:
    explicit RowValues(QString table)
        : m_table(std::move(table))
    {
    }
    // The text converted by the field's type.
    void text(const QString& field, const QString& text);
    void number(const QString& field, double number);
    void null(const QString& field);
    // Replaces a field set before, or adds it.
    void replace(const QString& field, const QVariant& value);

    const QString& table() const { return m_table; }
    const database::Values& values() const { return m_values; }

    // Adds the row to the table; throws the classified refusal.
    void insert() const;
    // Sets the fields on the row with the given rowid.
    void update(qint64 rowid) const;

private:
    QString m_table;
    database::Values m_values;
};

// The common column rule of the level and event lines: a blank column
// leaves the field alone; one whose leading number is below `floor` sets it
// to NULL; anything else stores the trimmed text.
void readColumn(RowValues& row, const QString& field, const QString& line, int start, int length,
    double floor = 0);

// Whether a cell of the working database counts as empty for the writer:
// NULL, or text of blanks only.
bool isBlank(const QVariant& value);

// A cell as the writer puts it: `missing` for an empty cell, else NumText.
QString cellText(const QVariant& value, const QString& missing);
// A text cell as the writer puts it: "-99" for an empty cell, else the
// text trimmed.
QString textOr99(const QVariant& value);
// cellText through a digit template. Text that isn't a number passes the
// template unchanged, as a text column does.
QString maskedCell(const QVariant& value, const QString& mask, const QString& missing);

// "Duplicate levels in '<what>'. Level <n> is read only once."
QString duplicateLevelsText(const QString& what, const QVariant& level);

// The level a reader took from the line, as its message shows it.
QString levelText(const QVariant& level);

// What a level reader does when the level is in its table already; it gets
// the level as read.
using DuplicateLevel = std::function<void(const QVariant& level)>;
// The usual answer: the message of duplicateLevelsText for `what`.
DuplicateLevel duplicateLevels(const QString& what);

// The pattern of the level readers: a comment line goes to `comments`; any
// other line opens a row of `table` with the level of columns 1 to 3 in
// `levelField`, `fill` adds the further cells, and the row is stored. A
// level already in the table goes to `onDuplicate`; any other error shows
// its text and `tail`. Either way the line is lost.
void readLevelLine(const QString& line, QString& comments, const QString& table, const QString& levelField,
    const QString& tail, const DuplicateLevel& onDuplicate, const std::function<void(RowValues&)>& fill);

} // namespace quillon::format
