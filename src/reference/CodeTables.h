#pragma once

#include <QString>
#include <QStringList>

namespace quillon::reference {

// The code files of the suite, all in DataFolder. Each appends to the open
// working database.

// Detail.cde into CodeLookup: a "*" line names the type of the lines after
// it (its first 25 characters), each other line is a code and its
// description. A file that can't be opened or read is shown with its name
// and the failure text, and the program ends.
void CreateCodeLookup();

// GRSTAGE.CDE into CodeStageLookup: growth stages by crop name; a section
// common to several crops ("MAIZE, SORGHUM") gives its rows to each of
// them. Failures as CreateCodeLookup.
void CreateCodeStageLookup();

// Simulation.cde into SimLookUp, which it makes anew: codes and
// descriptions by the type number of their heading, free of repetitions.
// A missing file ends the program; other failures are shown.
void CreateSIMLookUp();

// The lines of a code file that count: empty lines, "!" comments and "@"
// headings go; with `titleRule`, a "*EXP" line goes together with the line
// after it.
QStringList keptCodeLines(const QStringList& lines, bool titleRule);

// The type number of a Simulation.cde heading (its text after the "*",
// trimmed); 0 for a heading that has none, -1 for the file's title.
int simulationType(const QString& heading);

// The display name of a crop model code of Simulation.cde.
QString modelDisplayName(const QString& code);

} // namespace quillon::reference
