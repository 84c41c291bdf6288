#pragma once

#include "format/FileWriter.h"
#include "format/TextLines.h"

#include <QString>

namespace quillon::format {

// *FIELDS: two groups of one line per field level.

// Reads one line of group 1 (a new Fields row: station, drainage, soil,
// name) or group 2 (coordinates and geometry of a level group 1 made).
// A field name already in the table moves the line to the next free level
// under a new name, with a message; a group-2 line of an unknown level is
// a format error of the section. Other failures are reported and cost the
// line. `lineNumber` is the line's place among the lines read.
void FieldRead(const QString& line, int group, int lineNumber);

// With `c.i` at the section line: the first header, group-1 lines up to an
// "@" line (the second header), group-2 lines up to a line beginning with
// "*" or the end, where it stops.
void readFieldsSection(LineCursor& c);

// Both groups of every level, then CommentsFields. An empty table is told
// to the user ("No Field data available.") and the section is left out.
void writeFieldsSection(FileWriter& w);

} // namespace quillon::format
