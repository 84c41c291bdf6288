#pragma once

#include "format/FileWriter.h"
#include "format/TextLines.h"

#include <QString>

namespace quillon::format {

// Reads one line of *ENVIRONMENT MODIFICATIONS into `EnvironMod`, and the
// level's name into `EnvLevelNames` unless the level has one. A negative
// adjustment is stored as NULL; one other than -99 also sets
// `NegativeEnvValue`. A comment line goes to the environment comments, which
// then lose their first two characters. A failure loses the line.
void EvironModRead(const QString& line);

// Reads one line of *HARVEST DETAILS into `Harvest` and `HarLevelNames`;
// comment lines as for the environment.
void HarvestRead(const QString& line);

// Section readers from the section line on, in the common section loop.
void readEnvironmentSection(LineCursor& c);
void readHarvestSection(LineCursor& c);

// Section writers; nothing at all for an empty table.
void writeEnvironmentSection(FileWriter& w);
void writeHarvestSection(FileWriter& w);

} // namespace quillon::format
