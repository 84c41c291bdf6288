#include "database/Sql.h"

#include "database/WorkDBCheck.h"

#include <QHash>
#include <QRegularExpression>
#include <QSqlError>

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

QString connectionName() { return QStringLiteral("WorkDB"); }

QSqlDatabase WorkDB() { return QSqlDatabase::database(connectionName(), false); }

namespace {
int g_generation = 0;
}

void clearStatementCache()
{
    statementCache().clear();
    ++g_generation;
}

int connectionGeneration() { return g_generation; }

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
            QStringLiteral("The changes you requested to the table were not successful because they would "
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
    // Changes of the schema run once and are not kept.
    static const QRegularExpression ddl(QStringLiteral("^\\s*(CREATE|DROP|ALTER|PRAGMA|VACUUM)\\b"),
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

void insertRow(const QString& table, const Values& values)
{
    QStringList columns;
    QStringList marks;
    for (const auto& value : values) {
        columns << QLatin1Char('[') + value.first + QLatin1Char(']');
        marks << QStringLiteral("?");
    }
    const QString sql = values.empty()
        ? QStringLiteral("INSERT INTO [%1] DEFAULT VALUES").arg(table)
        : QStringLiteral("INSERT INTO [%1] (%2) VALUES (%3)")
              .arg(table, columns.join(QLatin1Char(',')), marks.join(QLatin1Char(',')));
    QSqlQuery query = prepared(sql);
    for (int i = 0; i < int(values.size()); ++i)
        query.bindValue(i, values[i].second);
    const bool ok = query.exec();
    const QSqlError error = query.lastError();
    query.finish();
    if (!ok)
        throw classify(error);
}

bool tableExists(const QString& table)
{
    return scalar(QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE type = 'table' AND name = ? COLLATE NOCASE"),
               { table })
               .toInt()
        > 0;
}

void remakeTable(const QString& table, const QString& createStatement)
{
    const QVariant standing = scalar(
        QStringLiteral("SELECT sql FROM sqlite_master WHERE type = 'table' AND name = ? COLLATE NOCASE"), { table });
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
    if (g_transactionDepth++ == 0)
        m_owner = WorkDB().transaction();
}

Transaction::~Transaction()
{
    --g_transactionDepth;
    if (m_owner && !m_done)
        WorkDB().rollback();
}

void Transaction::commit()
{
    if (m_owner && !m_done)
        WorkDB().commit();
    m_done = true;
}

} // namespace quillon::database
