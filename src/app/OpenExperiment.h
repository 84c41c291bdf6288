#pragma once

#include "database/WorkDBCheck.h"

#include <QString>

namespace quillon {

// The middle of File Open, after the path is known and before the windows
// are shown: prepares the working database (built and loaded with the
// suite's lookups when it is missing or left half-built, emptied of the
// last document otherwise; a damaged one ends the program), reads the file, and
// repairs and derives what the file lacks (planting method, levels,
// relations, management tables, initial-condition soils). Moves the progress
// bar as it goes. The type flags come from the file's extension.
void openExperiment(const QString& path);

// Prepares the working database for a document: opens it, or builds it and
// loads every lookup from the suite when its file is missing or its profile
// table is empty (such a database is deleted first). A damaged file shows
// database::damagedWorkDatabase and ends the program; one that can't be
// read for another reason shows `unreadableMessage` and ends it too.
void prepareWorkDatabase(const QString& unreadableMessage = database::damagedWorkDatabase);

// Empties the working database of the last document (its relations go
// first) and brings the simulation and soil lookups up to date, ready for
// the next file to be read.
void clearLastDocument();

// Fills the irrigation, fertilizer, residue and harvest management tables
// from the document's levels, as after a file is read.
void fillManagementTables();

} // namespace quillon
