#pragma once

#include <QString>

namespace quillon::format {

class FileWriter;

// The text of the experiment file as the working database holds it: the
// *EXP line, the sections in their order, the simulation comments and the
// closing 0x1A line. `fileName` decides the form of the *EXP line (a file
// named TEMP.TXT gets the identity fields, any other the name itself).
void writeExperiment(FileWriter& w, const QString& fileName);

// Writes the experiment file to `path`, replacing any file there in one
// step. A failure shows "Cannot open file <path>. " with the reason and
// leaves the old file untouched. Returns whether the file was written.
bool writeFile(const QString& path);

} // namespace quillon::format
