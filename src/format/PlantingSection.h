#pragma once

#include "format/FileWriter.h"
#include "format/TextLines.h"

#include <QString>

namespace quillon::format {

// *PLANTING DETAILS: one line per planting level, in the table Planting.

// Adds one planting line. A negative column is missing (the temperature
// only below -10); a four-character planting date gets its leading zero
// back. A level read twice keeps its first line, with a message.
void PlantRead(const QString& line);

// The section loop, with `c.i` at the section line; stops before the next
// line beginning with "*" or at the end.
void readPlantingSection(LineCursor& c);

// One line per level, then CommentsPlanting; nothing without levels.
void writePlantingSection(FileWriter& w);

} // namespace quillon::format
