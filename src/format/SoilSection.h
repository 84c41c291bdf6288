#pragma once

#include "format/FileWriter.h"
#include "format/TextLines.h"

#include <QString>

namespace quillon::format {

// *SOIL ANALYSIS and *INITIAL CONDITIONS: per level, one level line under
// its header, then the level's layer lines under a second header.

// Level line of a soil analysis (SoilAnalysis) and one of its layers
// (SoilLayers). A level read twice keeps its first line, with a message.
void SoilAnalRead(const QString& line);
void SoilLayersRead(const QString& line);
// Level line of an initial condition (InitialConditions) and one of its
// layers (ICLayers). ICLayersRead passes over "@" and "*" lines.
void InitialCondRead(const QString& line);
void ICLayersRead(const QString& line);

// The section drivers, with `c.i` at the section line: any number of level
// and layer groups, told apart by their headers; they stop before a line
// beginning with "*" or at the end.
void readSoilAnalysisSection(LineCursor& c);
void readInitialConditionsSection(LineCursor& c);

// Every level with both headers and its layers, then the comment block;
// nothing for a table without levels.
void writeSoilAnalysisSection(FileWriter& w);
void writeInitialConditionsSection(FileWriter& w);

} // namespace quillon::format
