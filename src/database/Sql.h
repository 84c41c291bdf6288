#pragma once

#include "app/RuntimeError.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

#include <utility>
#include <vector>

namespace quillon::database {

// The open connection to the working database.
QSqlDatabase WorkDB();
// The name under which the connection is registered with QSqlDatabase.
QString connectionName();
// Forgets the prepared statements; called before the connection closes.
void clearStatementCache();
// Counts the openings of the working database, so that what is known about
// one open database can be told from what was known about an earlier one.
int connectionGeneration();

// Maps an error of the database layer to the program's classes of failure:
// a duplicate key gives DuplicateKey, a refused rule its own number and its
// own message text, and so on. An error that says the file is damaged
// doesn't return: it is reported as reportDamagedWorkDB() does.
RuntimeError classify(const QSqlError& error);

// Runs a statement with positional parameters ("?"); throws RuntimeError.
void exec(const QString& sql, const QVariantList& params = {});
// As exec(), but returns the error instead of throwing (number 0: done).
RuntimeError tryExec(const QString& sql, const QVariantList& params = {});
// Runs a query and returns it positioned before its first row; throws.
QSqlQuery select(const QString& sql, const QVariantList& params = {});
// The first column of the first row, or an invalid QVariant without rows.
QVariant scalar(const QString& sql, const QVariantList& params = {});
// Number of rows of a table.
int rowCount(const QString& table);

// Adds one row, naming the columns given; the others stay NULL. Throws the
// classified error when the database refuses the row.
using Values = std::vector<std::pair<QString, QVariant>>;
void insertRow(const QString& table, const Values& values);

// Whether a table exists (case-blind).
bool tableExists(const QString& table);

// "Drop Table" followed by "Create Table" for a scratch table that is made
// anew each time: when the table already stands with exactly that
// definition it is only emptied, which leaves the same empty table without
// changing the schema (a schema change makes every kept statement compile
// again). `createStatement` is the full CREATE TABLE statement.
void remakeTable(const QString& table, const QString& createStatement);

// Runs a block inside one transaction: committed when it returns, rolled
// back when it throws. Nested use joins the outer transaction.
class Transaction {
public:
    Transaction();
    ~Transaction();
    void commit();

private:
    bool m_owner = false;
    bool m_done = false;
};

} // namespace quillon::database
