#pragma once

#include <QString>

namespace quillon {

// The middle of File Open, after the path is known and before the windows
// are shown: prepares the working database (built and loaded with the
// suite's lookups when it is missing, emptied of the last document
// otherwise; a damaged one is deleted and rebuilt), reads the file, and
// repairs and derives what the file lacks (planting method, levels,
// relations, management tables, initial-condition soils). Moves the progress
// bar as it goes. The type flags come from the file's extension.
void openExperiment(const QString& path);

// The message of a working database that can't be read when a file is opened.
inline const QString damagedWorkDatabase = QStringLiteral(
    "There is a problem with internal database. Please delete file "
    "TERVA48/TOOLS/Quillon/QUILLONTEMP2.mdb and start the program again.");

// Prepares the working database for a document: opens it, or builds it and
// loads every lookup from the suite when its file is missing or its profile
// table is empty (a damaged database is deleted first). A database file that
// can't be read at all shows `unreadableMessage` and ends the program.
void prepareWorkDatabase(const QString& unreadableMessage = damagedWorkDatabase);

// Empties the working database of the last document (its relations go
// first) and brings the simulation and soil lookups up to date, ready for
// the next file to be read.
void clearLastDocument();

// Fills the irrigation, fertilizer, residue and harvest management tables
// from the document's levels, as after a file is read.
void fillManagementTables();

} // namespace quillon
