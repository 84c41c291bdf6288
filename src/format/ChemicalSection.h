#pragma once

#include "format/FileWriter.h"
#include "format/TextLines.h"

#include <QString>

namespace quillon::format {

// Reads one line of *CHEMICAL APPLICATIONS into `Chemicals`, and the level's
// name into `ChemLevelNames` unless the level has one. A comment line goes to
// the chemical comments. A failure loses the line.
void ChemicalRead(const QString& line);

// Reads one line of *TILLAGE AND ROTATIONS into `Tillage` and
// `TillLevelNames`, likewise.
void TillageRead(const QString& line);

// Section readers from the section line on, in the common section loop.
void readChemicalsSection(LineCursor& c);
void readTillageSection(LineCursor& c);

// Section writers; nothing at all for an empty table.
void writeChemicalsSection(FileWriter& w);
void writeTillageSection(FileWriter& w);

} // namespace quillon::format
