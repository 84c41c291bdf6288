#include "database/Relations.h"

#include "database/Sql.h"

namespace quillon::database {

namespace {

const QString prefix = QStringLiteral("rel_");

QString quotedText(QString text)
{
    text.replace(QLatin1String("'"), QLatin1String("''"));
    return QLatin1Char('\'') + text + QLatin1Char('\'');
}

QString raise(int number, const QString& message)
{
    return QStringLiteral("RAISE(ABORT, %1)").arg(quotedText(QStringLiteral("#%1#%2").arg(number).arg(message)));
}

} // namespace

void createRelation(const Relation& r)
{
    if (relationExists(r.name))
        throw RuntimeError(err::TableExists, QStringLiteral("Relationship '%1' already exists.").arg(r.name));
    // Like the data it is to guard, a relation can't be made over rows that
    // already break it.
    const int orphans = scalar(QStringLiteral("SELECT COUNT(*) FROM [%1] WHERE [%2] IS NOT NULL AND [%2] NOT IN "
                                              "(SELECT [%3] FROM [%4] WHERE [%3] IS NOT NULL)")
                                   .arg(r.childTable, r.childField, r.parentField, r.parentTable))
                            .toInt();
    if (orphans > 0)
        throw RuntimeError(err::RelatedRecordRequired,
            QStringLiteral("Data in the table '%1' violates referential integrity rules.").arg(r.childTable));
    const QString base = prefix + r.name;
    const QString required = raise(err::RelatedRecordRequired,
        QStringLiteral("You cannot add or change a record because a related record is required in table '%1'.")
            .arg(r.parentTable));
    const QString parentHas = QStringLiteral("EXISTS (SELECT 1 FROM [%1] WHERE [%2] = NEW.[%3])")
                                  .arg(r.parentTable, r.parentField, r.childField);
    Transaction transaction;
    exec(QStringLiteral("CREATE TRIGGER [%1__ins] BEFORE INSERT ON [%2] WHEN NEW.[%3] IS NOT NULL AND NOT %4 "
                        "BEGIN SELECT %5; END")
             .arg(base, r.childTable, r.childField, parentHas, required));
    exec(QStringLiteral("CREATE TRIGGER [%1__upd] BEFORE UPDATE OF [%3] ON [%2] WHEN NEW.[%3] IS NOT NULL "
                        "AND NOT %4 BEGIN SELECT %5; END")
             .arg(base, r.childTable, r.childField, parentHas, required));
    exec(QStringLiteral("CREATE TRIGGER [%1__del] BEFORE DELETE ON [%2] WHEN EXISTS (SELECT 1 FROM [%3] "
                        "WHERE [%4] = OLD.[%5]) BEGIN SELECT %6; END")
             .arg(base, r.parentTable, r.childTable, r.childField, r.parentField,
                 raise(err::RelatedRecordsExist,
                     QStringLiteral("The record cannot be deleted or changed because table '%1' includes "
                                    "related records.")
                         .arg(r.childTable))));
    exec(QStringLiteral("CREATE TRIGGER [%1__cascade] AFTER UPDATE OF [%3] ON [%2] WHEN OLD.[%3] IS NOT NEW.[%3] "
                        "BEGIN UPDATE [%4] SET [%5] = NEW.[%3] WHERE [%5] = OLD.[%3]; END")
             .arg(base, r.parentTable, r.parentField, r.childTable, r.childField));
    transaction.commit();
}

void deleteRelation(const QString& name)
{
    if (!relationExists(name))
        throw RuntimeError(err::ItemNotFound, QStringLiteral("Item not found in this collection."));
    Transaction transaction;
    for (const char* suffix : { "__ins", "__upd", "__del", "__cascade" })
        exec(QStringLiteral("DROP TRIGGER IF EXISTS [%1%2%3]").arg(prefix, name, QLatin1String(suffix)));
    transaction.commit();
}

bool relationExists(const QString& name)
{
    return scalar(QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE type = 'trigger' AND name = ? COLLATE NOCASE"),
               { prefix + name + QStringLiteral("__ins") })
               .toInt()
        > 0;
}

QStringList relationNames()
{
    QStringList names;
    QSqlQuery q = select(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'trigger' AND name LIKE 'rel\\_%\\_\\_ins' ESCAPE '\\' ORDER BY name"));
    while (q.next()) {
        const QString trigger = q.value(0).toString();
        names << trigger.mid(prefix.size(), trigger.size() - prefix.size() - 5);
    }
    return names;
}

} // namespace quillon::database
