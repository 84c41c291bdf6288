#pragma once

#include <QString>

namespace quillon {

struct AppState;

// Takes the command line into the state: the whole text is a list of fields
// separated by commas.
//  - no text: interactive start, neither flag set;
//  - one field: new file in CommandFolder;
//  - two or more with the second not empty: open CommandFile = second
//    field + separator + third field;
//  - two or more with the second empty: new file.
// With two or more fields the program starts in CommandFolder (Main sets
// DataFolder so).
// "55" is the value a Close leaves in CommandLine, never a command: a
// CommandLine of "55", and a command line that is "55", count as none.
void takeCommandLine(AppState& state, const QString& platformCommandLine);

// Whether an open request names no file but asks for a new one: a path
// ending in a separator and "NEW", in any case.
bool namesNewFile(const QString& path);

} // namespace quillon
