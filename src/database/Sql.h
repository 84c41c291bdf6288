#pragma once

#include "app/RuntimeError.h"

#include <QHash>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
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

// The rows of a query, read through a kept prepared statement: for loops
// that read the rows they need and then let them go, so that a statement run
// again and again (a level at a time, a file at a time) is prepared once.
// The statement goes back when the Rows end; a Rows of the same text opened
// meanwhile (a nested loop) gets a statement of its own. Throws RuntimeError
// as select() does.
class Rows {
public:
    explicit Rows(const QString& sql, const QVariantList& params = {});
    ~Rows();
    Rows(const Rows&) = delete;
    Rows& operator=(const Rows&) = delete;

    bool next() { return m_query.next(); }
    QVariant value(int column) const { return m_query.value(column); }
    // The value of a column by name, without regard to case.
    QVariant value(const QString& column) const;
    int columnCount() const { return m_record.count(); }
    QString columnName(int column) const { return m_record.fieldName(column); }
    // The current row with its values.
    QSqlRecord record() const { return m_query.record(); }
    const QSqlQuery& query() const { return m_query; }

private:
    QString m_sql;
    QSqlQuery m_query;
    QSqlRecord m_record;
    mutable QHash<QString, int> m_indexes; // column name to index
    int m_generation;
};
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
// back when it throws. A nested one is a savepoint of the outer: it undoes
// only its own block, and what it keeps is written with the outer.
class Transaction {
public:
    Transaction();
    ~Transaction();
    void commit();

private:
    bool m_owner = false;
    QString m_savepoint;
    bool m_done = false;
};

} // namespace quillon::database
