#pragma once

#include <QString>
#include <QStringList>

class QSqlError;

namespace quillon::database {

// Opens the working database at state().WorkDBPath, building its schema
// first when no file lies there. A failure while building shows the error
// text with the stage label (" in CreateDataBaseX(2)" …) and ends the
// program; the half-built file stays behind.
void CreateDataBaseX();

// Empties the whole working database, reference tables included. A failure
// is reported (" in CleanDatabase/frmMain.") and stops the list there.
void CleanDataBase();

// Empties the experiment tables and those that depend on the current file,
// and keeps the lookups that don't (" in CleanDataBase_Partially/frmMain.").
// Tables named in `keep` are left as they are: the caller knows that they
// already hold what would be put back into them.
void CleanDataBase_Partially(const QStringList& keep = {});

// The tables each routine empties, in its order.
const QStringList& cleanDataBaseTables();
const QStringList& cleanDataBasePartiallyTables();

// Opens the file at `path` as the working database without building
// anything. Returns false when the file can't be opened or holds no
// database, with the reason in `error` when one is given.
bool openWorkDB(const QString& path, QSqlError* error = nullptr);
// Closes the working database if it is open.
void closeWorkDB();
bool isWorkDBOpen();

// Builds the schema into the open, empty database, moving the progress bar.
// Throws RuntimeError with the failing stage in `stage`.
void buildSchema(int* stage = nullptr);

} // namespace quillon::database
