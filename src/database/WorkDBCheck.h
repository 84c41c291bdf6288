#pragma once

#include <QString>

class QSqlError;

namespace quillon::database {

// The message of a working database whose file is damaged: a malformed
// page, a file cut short, or a file that is no database at all.
inline const QString damagedWorkDatabase
    = QStringLiteral("There is a problem with internal database. Please delete file "
                     "TERVA48/TOOLS/Quillon/QUILLONTEMP2.mdb and start the program again.");

// Whether an error of the database layer says that the file is damaged
// (SQLite's corrupt and not-a-database classes).
bool isDamage(const QSqlError& error);

// Shows damagedWorkDatabase and ends the program. Every routine that meets
// a damaged file ends here, so that the user learns that the working
// database is the culprit and that deleting it cures it.
[[noreturn]] void reportDamagedWorkDB();

// Whether a damaged working database has been reported in this run.
bool workDBDamageReported();

// What the working database file turned out to be on the way to Open and
// New.
enum class WorkDBCondition {
    Sound, // opens, passes the check, and its profile table has rows
    Empty, // sound, but its profile table is empty: left half-built
    Damaged, // fails the check, or is no database at all
    Unreadable, // can't be opened or read for another reason (locked, ...)
};

// Opens the working database at `path` unless it is open there already and
// tells its condition. The file is checked with SQLite's quick check once
// per run of the program and path; it costs a read of the whole file.
WorkDBCondition examineWorkDB(const QString& path);

} // namespace quillon::database
