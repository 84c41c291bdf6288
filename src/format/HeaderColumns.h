#pragma once

#include <QString>

#include <vector>

namespace quillon::format {

// Where the cells of a data line stand, read from the group header ("@" line)
// above it, the way the writer lays them out. A number stands right-aligned
// under its name, so the name's last letter is the cell's right edge and the
// cell reaches back to the edge of the cell before it (the separating blank
// belongs to it). Names, codes of free length and group labels stand
// left-aligned from where their cell begins. The last cell of a line runs to
// its end.
struct HeaderColumn {
    QString name; // as the header spells it, without its fill dots
    int start = 1; // first position, counted from 1
    int end = 0; // last position; 0: to the end of the line
    // The level or the group label: it says which line this is rather than
    // holding a value of its own.
    bool key = false;
    // Stands against the cell before it by design: the adjustment behind its
    // one-letter factor in the environment modifications.
    bool attached = false;
};

struct GroupHeader {
    // What names the group in any file, whatever the spacing of its header:
    // the first word and the first column's name ("@A SABL", "@N GENERAL",
    // "@ PAREA"), or the one word of a text group ("@PEOPLE").
    QString key;
    // Empty for a group whose lines are text as a whole (@PEOPLE, @ADDRESS,
    // @SITE, @NOTES).
    std::vector<HeaderColumn> columns;
};

// The columns of a header line. Any text gives a header: a line of "@"
// alone is a text group with no name.
GroupHeader groupHeader(const QString& headerLine);

// The text of a cell: the positions of `column` in `line` ("" past its end).
QString cellAt(const QString& line, const HeaderColumn& column);

} // namespace quillon::format
