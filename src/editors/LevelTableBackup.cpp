#include "editors/LevelTableBackup.h"

#include "app/RuntimeError.h"
#include "app/UserInterface.h"
#include "database/Relations.h"
#include "database/Schema.h"
#include "database/Sql.h"

namespace quillon::editors {

using database::exec;

LevelTableBackup::LevelTableBackup(
    const QString& table, const QString& levelField, const QString& relation)
    : m_table(table)
    , m_levelField(levelField)
    , m_relation(relation)
{
}

void LevelTableBackup::create()
{
    drop();
    // The columns of the table without its checks, so that the copy takes
    // back every row the table held.
    QStringList columns;
    if (const database::TableDef* def = database::findTable(m_table)) {
        for (const database::FieldDef& field : def->fields)
            columns << QStringLiteral("[%1] %2").arg(
                field.name, database::columnDeclaration(field));
    }
    exec(QStringLiteral("CREATE TABLE [BackUp] (%1)").arg(columns.join(QStringLiteral(", "))));
    exec(QStringLiteral("INSERT INTO [BackUp] SELECT * FROM [%1] ORDER BY rowid").arg(m_table));

    m_treatmentLevels.clear();
    QSqlQuery q = database::select(
        QStringLiteral("SELECT [%1] FROM Treatments ORDER BY rowid").arg(m_levelField));
    while (q.next())
        m_treatmentLevels.push_back(q.value(0));
}

void LevelTableBackup::restore() const
{
    database::Transaction transaction;
    if (database::relationExists(m_relation))
        database::deleteRelation(m_relation);
    exec(QStringLiteral("DELETE FROM [%1]").arg(m_table));
    exec(QStringLiteral("INSERT INTO [%1] SELECT * FROM [Backup] ORDER BY rowid").arg(m_table));
    exec(QStringLiteral("DROP TABLE [Backup]"));

    QSqlQuery rows
        = database::select(QStringLiteral("SELECT rowid FROM Treatments ORDER BY rowid"));
    std::vector<qint64> ids;
    while (rows.next())
        ids.push_back(rows.value(0).toLongLong());
    for (size_t i = 0; i < ids.size() && i < m_treatmentLevels.size(); ++i)
        exec(QStringLiteral("UPDATE Treatments SET [%1] = ? WHERE rowid = ?").arg(m_levelField),
            { m_treatmentLevels[i], ids[i] });

    try {
        database::createRelation(
            { m_relation, m_table, m_levelField, QStringLiteral("Treatments"), m_levelField });
    } catch (const RuntimeError& e) {
        // Treatments that named a missing level when the editor opened keep
        // the relation off, as they kept it from being made at File Open.
        if (e.number() != err::RelatedRecordRequired)
            throw;
    }
    transaction.commit();
}

void LevelTableBackup::restore(const QString& failureTail) const
{
    try {
        restore();
    } catch (const RuntimeError& e) {
        reportError(e.text(), failureTail);
    }
}

void LevelTableBackup::drop()
{
    database::tryExec(QStringLiteral("DROP TABLE [Backup]"));
}

} // namespace quillon::editors
