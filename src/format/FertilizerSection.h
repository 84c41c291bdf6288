#pragma once

#include "format/FileWriter.h"
#include "format/TextLines.h"

#include <QString>

namespace quillon::format {

// Reads one line of *FERTILIZERS (INORGANIC) into `Fertilization`, and the
// level's name into `FerLevelNames` unless the level has one already. A
// comment line goes to the fertilizer comments. A failure loses the line.
void FertilizerRead(const QString& line);

// Reads one line of *RESIDUES AND ORGANIC FERTILIZER into `Residue` and
// `ResLevelNames`, likewise.
void ResidueRead(const QString& line);

// Section readers from the section line on, in the common section loop.
void readFertilizersSection(LineCursor& c);
void readResiduesSection(LineCursor& c);

// Section writers; nothing at all for an empty table.
void writeFertilizersSection(FileWriter& w);
void writeResiduesSection(FileWriter& w);

} // namespace quillon::format
