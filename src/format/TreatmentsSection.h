#pragma once

#include "format/FileWriter.h"
#include "format/TextLines.h"

#include <QString>

namespace quillon::format {

// *TREATMENTS and *CULTIVARS.

// Adds one treatment line to Treatments. Level columns that hold 0, a blank
// or no number leave the level NULL. A failure (a treatment read twice
// among them) is reported and costs the line.
void TreatmentRead(const QString& line);
// Adds one cultivar line to Cultivars. A level read twice keeps its first
// line and tells the user so.
void CultivarRead(const QString& line);

// The section loops, with `c.i` at the section line; they stop before the
// next line beginning with "*" or at the end.
void readTreatmentsSection(LineCursor& c);
void readCultivarsSection(LineCursor& c);

// The sections with their comment blocks. An empty table is told to the
// user ("No Treatment data available.", "No cultivar available.") and its
// section is left out.
void writeTreatmentsSection(FileWriter& w);
void writeCultivarsSection(FileWriter& w);

} // namespace quillon::format
