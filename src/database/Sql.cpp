#include "database/Sql.h"

#include "database/Schema.h"
#include "database/WorkDBCheck.h"
#include "database/WorkDatabase.h"

#include <QHash>
#include <QRegularExpression>
#include <QSqlError>

#include <optional>

namespace quillon::database {

namespace {

int g_transactionDepth = 0;

// Prepared statements, kept per connection and text so that loops of
// inserts don't parse the same statement again and again.
QHash<QString, QSqlQuery>& statementCache()
{
    static QHash<QString, QSqlQuery> cache;
    return cache;
}

QSqlQuery prepared(const QString& sql)
{
    QHash<QString, QSqlQuery>& cache = statementCache();
    // Statements built with values in their text would fill the cache
    // without end; past a bound it starts afresh.
    if (cache.size() > 2000)
        cache.clear();
    auto it = cache.find(sql);
    if (it != cache.end() && it->driver() && WorkDB().isOpen())
        return *it;
    QSqlQuery query(WorkDB());
    if (!query.prepare(sql))
        throw classify(query.lastError());
    cache.insert(sql, query);
    return query;
}

void bindAll(QSqlQuery& query, const QVariantList& params)
{
    for (int i = 0; i < params.size(); ++i)
        query.bindValue(i, params.at(i));
}

} // namespace

QString connectionName()
{
    return QStringLiteral("WorkDB");
}

QSqlDatabase WorkDB()
{
    return QSqlDatabase::database(connectionName(), false);
}

namespace {

int g_generation = 0;

// Prepared SELECT statements not in use by a Rows, by their text.
QHash<QString, QSqlQuery>& idleSelects()
{
    static QHash<QString, QSqlQuery> idle;
    return idle;
}

} // namespace

void clearStatementCache()
{
    statementCache().clear();
    idleSelects().clear();
    ++g_generation;
}

int connectionGeneration()
{
    return g_generation;
}

RuntimeError classify(const QSqlError& error)
{
    // A damaged file can't be worked on: whichever routine meets it, the
    // user is told that the working database is the culprit.
    if (isDamage(error))
        reportDamagedWorkDB();
    QString text = error.databaseText();
    if (text.isEmpty())
        text = error.text();
    // Rules and relations raise their refusals as "#number#message".
    if (text.startsWith(QLatin1Char('#'))) {
        const int end = text.indexOf(QLatin1Char('#'), 1);
        if (end > 1)
            return RuntimeError(text.mid(1, end - 1).toInt(), text.mid(end + 1));
    }
    if (text.contains(QLatin1String("UNIQUE constraint failed")))
        return RuntimeError(err::DuplicateKey,
            QStringLiteral(
                "The changes you requested to the table were not successful because they would "
                "create duplicate values in the index, primary key, or relationship. Change the "
                "data in the field or fields that contain duplicate data, remove the index, or "
                "redefine the index to permit duplicate entries and try again."));
    if (text.startsWith(QLatin1String("no such table")))
        return RuntimeError(err::TableNotFound, text);
    if (text.contains(QLatin1String("already exists")))
        return RuntimeError(err::TableExists, text);
    return RuntimeError(err::Other, text);
}

void exec(const QString& sql, const QVariantList& params)
{
    const RuntimeError e = tryExec(sql, params);
    if (e.number() != 0)
        throw e;
}

RuntimeError tryExec(const QString& sql, const QVariantList& params)
{
    // Changes of the schema and savepoints run once and are not kept.
    static const QRegularExpression ddl(
        QStringLiteral("^\\s*(CREATE|DROP|ALTER|PRAGMA|VACUUM|SAVEPOINT|RELEASE|ROLLBACK)\\b"),
        QRegularExpression::CaseInsensitiveOption);
    if (params.isEmpty() && ddl.match(sql).hasMatch()) {
        QSqlQuery query(WorkDB());
        if (!query.exec(sql))
            return classify(query.lastError());
        return RuntimeError(0, {});
    }
    try {
        QSqlQuery query = prepared(sql);
        bindAll(query, params);
        const bool ok = query.exec();
        const QSqlError error = query.lastError();
        query.finish();
        return ok ? RuntimeError(0, {}) : classify(error);
    } catch (const RuntimeError& e) {
        return e;
    }
}

QSqlQuery select(const QString& sql, const QVariantList& params)
{
    QSqlQuery query(WorkDB());
    query.setForwardOnly(true);
    if (!query.prepare(sql))
        throw classify(query.lastError());
    bindAll(query, params);
    if (!query.exec())
        throw classify(query.lastError());
    return query;
}

Rows::Rows(const QString& sql, const QVariantList& params)
    : m_sql(sql)
    , m_generation(g_generation)
{
    QHash<QString, QSqlQuery>& idle = idleSelects();
    const auto kept = idle.find(sql);
    if (kept != idle.end() && kept->driver() && WorkDB().isOpen()) {
        m_query = *kept;
        idle.erase(kept);
    } else {
        m_query = QSqlQuery(WorkDB());
        m_query.setForwardOnly(true);
        if (!m_query.prepare(sql))
            throw classify(m_query.lastError());
    }
    bindAll(m_query, params);
    if (!m_query.exec()) {
        const QSqlError error = m_query.lastError();
        m_query.finish();
        throw classify(error);
    }
    m_record = m_query.record();
}

Rows::~Rows()
{
    m_query.finish();
    QHash<QString, QSqlQuery>& idle = idleSelects();
    // Statements built with values in their text would fill the cache
    // without end; past a bound the rest are let go.
    if (m_generation == g_generation && idle.size() < 500 && !idle.contains(m_sql))
        idle.insert(m_sql, m_query);
}

QVariant Rows::value(const QString& column) const
{
    // The record's own search compares the names without regard to case, one
    // field after another; each name is searched for once, not once a row.
    auto found = m_indexes.constFind(column);
    if (found == m_indexes.cend())
        found = m_indexes.insert(column, m_record.indexOf(column));
    return m_query.value(*found);
}

QVariant scalar(const QString& sql, const QVariantList& params)
{
    // The value is taken at once, so the statement can be a kept one.
    QSqlQuery query = prepared(sql);
    bindAll(query, params);
    if (!query.exec()) {
        const QSqlError error = query.lastError();
        query.finish();
        throw classify(error);
    }
    const QVariant value = query.next() ? query.value(0) : QVariant();
    query.finish();
    return value;
}

int rowCount(const QString& table)
{
    return scalar(QStringLiteral("SELECT COUNT(*) FROM [%1]").arg(table)).toInt();
}

namespace {

// A schema table's insert statement naming every column, and where each
// column sits in it.
struct FullInsert {
    QString sql;
    QHash<QString, int> positions;
    int columns = 0;
};

// Rows of one table are all added through the one statement that names every
// column, the columns a row doesn't set being NULL (no column has a default,
// so the row is the same). A statement per set of columns would have SQLite
// compile the table's triggers again for every new set. Null for a table
// the schema doesn't have.
QHash<QString, std::optional<FullInsert>>& fullInserts()
{
    static QHash<QString, std::optional<FullInsert>> statements;
    return statements;
}

const FullInsert* fullInsert(const QString& table)
{
    QHash<QString, std::optional<FullInsert>>& statements = fullInserts();
    auto it = statements.find(table);
    if (it == statements.end()) {
        std::optional<FullInsert> made;
        if (const TableDef* def = findTable(table)) {
            FullInsert full;
            QStringList columns;
            QStringList marks;
            for (const FieldDef& field : def->fields) {
                full.positions.insert(field.name, full.columns++);
                columns << QLatin1Char('[') + field.name + QLatin1Char(']');
                marks << QStringLiteral("?");
            }
            full.sql
                = QStringLiteral("INSERT INTO [%1] (%2) VALUES (%3)")
                      .arg(def->name, columns.join(QLatin1Char(',')), marks.join(QLatin1Char(',')));
            made = full;
        }
        it = statements.insert(table, made);
    }
    return it->has_value() ? &**it : nullptr;
}

// The position of `column` in a full insert, the name matched without
// regard to case; -1 when the table has no such column.
int positionOf(const FullInsert& full, const QString& column)
{
    const auto exact = full.positions.constFind(column);
    if (exact != full.positions.constEnd())
        return *exact;
    for (auto it = full.positions.constBegin(); it != full.positions.constEnd(); ++it) {
        if (it.key().compare(column, Qt::CaseInsensitive) == 0)
            return it.value();
    }
    return -1;
}

// The statement that adds a row naming just `values`' columns, for tables
// outside the schema (the editors' scratch tables).
QString partialInsert(const QString& table, const Values& values)
{
    QStringList columns;
    QStringList marks;
    for (const auto& value : values) {
        columns << QLatin1Char('[') + value.first + QLatin1Char(']');
        marks << QStringLiteral("?");
    }
    return values.empty()
        ? QStringLiteral("INSERT INTO [%1] DEFAULT VALUES").arg(table)
        : QStringLiteral("INSERT INTO [%1] (%2) VALUES (%3)")
              .arg(table, columns.join(QLatin1Char(',')), marks.join(QLatin1Char(',')));
}

void execInsert(QSqlQuery& query)
{
    const bool ok = query.exec();
    const QSqlError error = query.lastError();
    query.finish();
    if (!ok)
        throw classify(error);
}

} // namespace

void insertRow(const QString& table, const Values& values)
{
    if (const FullInsert* full = fullInsert(table)) {
        QVariantList row(full->columns);
        bool known = true;
        for (const auto& [column, value] : values) {
            const int at = positionOf(*full, column);
            known = known && at >= 0;
            if (at >= 0)
                row[at] = value;
        }
        // A column the schema lacks: the statement naming it gives the
        // engine's own refusal.
        if (known) {
            QSqlQuery query;
            try {
                query = prepared(full->sql);
            } catch (const RuntimeError&) {
                // A working database made by an older schema lacks some
                // column: its rows name only the columns they set.
                fullInserts().insert(table, std::nullopt);
                insertRow(table, values);
                return;
            }
            bindAll(query, row);
            execInsert(query);
            return;
        }
    }
    QSqlQuery query = prepared(partialInsert(table, values));
    for (int i = 0; i < int(values.size()); ++i)
        query.bindValue(i, values[i].second);
    execInsert(query);
}

bool tableExists(const QString& table)
{
    return scalar(QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE type = 'table' AND name "
                                 "= ? COLLATE NOCASE"),
               { table })
               .toInt()
        > 0;
}

void remakeTable(const QString& table, const QString& createStatement)
{
    const QVariant standing = scalar(
        QStringLiteral(
            "SELECT sql FROM sqlite_master WHERE type = 'table' AND name = ? COLLATE NOCASE"),
        { table });
    // SQLite keeps the statement as written, but for the case of its
    // opening words.
    if (standing.toString().compare(createStatement, Qt::CaseInsensitive) == 0) {
        exec(QStringLiteral("DELETE FROM [%1]").arg(table));
        return;
    }
    tryExec(QStringLiteral("DROP TABLE [%1]").arg(table));
    exec(createStatement);
}

Transaction::Transaction()
{
    const int depth = g_transactionDepth++;
    if (depth == 0) {
        m_owner = WorkDB().transaction();
    } else if (isWorkDBOpen()
        && !tryExec(QStringLiteral("SAVEPOINT nested%1").arg(depth)).number() != 0) {
        m_savepoint = QStringLiteral("nested%1").arg(depth);
    }
}

Transaction::~Transaction()
{
    --g_transactionDepth;
    if (m_done)
        return;
    if (m_owner) {
        WorkDB().rollback();
    } else if (!m_savepoint.isEmpty()) {
        tryExec(QStringLiteral("ROLLBACK TO %1").arg(m_savepoint));
        tryExec(QStringLiteral("RELEASE %1").arg(m_savepoint));
    }
}

void Transaction::commit()
{
    if (m_done)
        return;
    if (m_owner)
        WorkDB().commit();
    else if (!m_savepoint.isEmpty())
        tryExec(QStringLiteral("RELEASE %1").arg(m_savepoint));
    m_done = true;
}

} // namespace quillon::database
