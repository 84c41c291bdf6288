#include "database/Relations.h"

#include "database/Sql.h"

#include <QHash>

namespace quillon::database {

namespace {

// Each relation is a row of this table plus four triggers named after it.
// The triggers act only while the row says the relation is in force, so that
// deleting and re-creating relations (which every File Open does, 32 of
// them) changes data instead of the schema: a schema change makes SQLite
// parse the whole schema again before the next statement.
const QString registry = QStringLiteral("RelationRegistry");
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

// Makes the registry once per opening of the database.
void ensureRegistry()
{
    static int readyIn = -1;
    if (readyIn == connectionGeneration())
        return;
    exec(QStringLiteral("CREATE TABLE IF NOT EXISTS [%1] (Name TEXT COLLATE NOCASE UNIQUE, Signature TEXT, Active INTEGER)")
             .arg(registry));
    readyIn = connectionGeneration();
}

QString signatureOf(const Relation& r)
{
    return QStringList { r.parentTable, r.parentField, r.childTable, r.childField }.join(QLatin1Char('|')).toLower();
}

// The schema version under which each relation's triggers were last seen in
// place: they can only have gone with a change of the schema.
QHash<QString, int>& verifiedAt()
{
    static QHash<QString, int> versions;
    return versions;
}

int schemaVersion() { return scalar(QStringLiteral("PRAGMA schema_version")).toInt(); }

// The key of a relation in verifiedAt(): a reopened database is checked anew.
QString verifiedKey(const QString& name)
{
    return QString::number(connectionGeneration()) + QLatin1Char('|') + name.toLower();
}

// The names of a relation's four triggers.
QStringList triggerNames(const QString& name)
{
    QStringList names;
    for (const char* suffix : { "__ins", "__upd", "__del", "__cascade" })
        names << prefix + name + QLatin1String(suffix);
    return names;
}

bool triggersExist(const QString& name, int version)
{
    const QString key = verifiedKey(name);
    if (verifiedAt().value(key, -1) == version)
        return true;
    QVariantList params;
    for (const QString& trigger : triggerNames(name))
        params << trigger;
    const bool present = scalar(QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE type = 'trigger' AND name IN (?, ?, ?, ?)"),
                             params)
                             .toInt()
        == 4;
    if (present)
        verifiedAt().insert(key, version);
    return present;
}

void dropTriggers(const QString& name)
{
    for (const QString& trigger : triggerNames(name))
        exec(QStringLiteral("DROP TRIGGER IF EXISTS [%1]").arg(trigger));
}

void createTriggers(const Relation& r)
{
    const QString base = prefix + r.name;
    const QString active = QStringLiteral("EXISTS (SELECT 1 FROM [%1] WHERE Name = %2 AND Active = 1)")
                               .arg(registry, quotedText(r.name));
    const QString required = raise(err::RelatedRecordRequired,
        QStringLiteral("You cannot add or change a record because a related record is required in table '%1'.")
            .arg(r.parentTable));
    const QString parentHas = QStringLiteral("EXISTS (SELECT 1 FROM [%1] WHERE [%2] = NEW.[%3])")
                                  .arg(r.parentTable, r.parentField, r.childField);
    exec(QStringLiteral("CREATE TRIGGER [%1__ins] BEFORE INSERT ON [%2] WHEN %6 AND NEW.[%3] IS NOT NULL "
                        "AND NOT %4 BEGIN SELECT %5; END")
             .arg(base, r.childTable, r.childField, parentHas, required, active));
    exec(QStringLiteral("CREATE TRIGGER [%1__upd] BEFORE UPDATE OF [%3] ON [%2] WHEN %6 AND NEW.[%3] IS NOT NULL "
                        "AND NOT %4 BEGIN SELECT %5; END")
             .arg(base, r.childTable, r.childField, parentHas, required, active));
    exec(QStringLiteral("CREATE TRIGGER [%1__del] BEFORE DELETE ON [%2] WHEN %7 AND EXISTS (SELECT 1 FROM [%3] "
                        "WHERE [%4] = OLD.[%5]) BEGIN SELECT %6; END")
             .arg(base, r.parentTable, r.childTable, r.childField, r.parentField,
                 raise(err::RelatedRecordsExist,
                     QStringLiteral("The record cannot be deleted or changed because table '%1' includes "
                                    "related records.")
                         .arg(r.childTable)),
                 active));
    exec(QStringLiteral("CREATE TRIGGER [%1__cascade] AFTER UPDATE OF [%3] ON [%2] WHEN %6 AND OLD.[%3] IS NOT NEW.[%3] "
                        "BEGIN UPDATE [%4] SET [%5] = NEW.[%3] WHERE [%5] = OLD.[%3]; END")
             .arg(base, r.parentTable, r.parentField, r.childTable, r.childField, active));
}

// The rows of the child table that name a value the parent doesn't have.
QString orphanCount(const Relation& r)
{
    return QStringLiteral("SELECT COUNT(*) FROM [%1] c WHERE c.[%2] IS NOT NULL AND NOT EXISTS "
                          "(SELECT 1 FROM [%4] p WHERE p.[%3] = c.[%2])")
        .arg(r.childTable, r.childField, r.parentField, r.parentTable);
}

QString nameList(const QStringList& names)
{
    QStringList quoted;
    for (const QString& name : names)
        quoted << quotedText(name);
    return quoted.join(QLatin1Char(','));
}

} // namespace

void createRelation(const Relation& r)
{
    ensureRegistry();
    // "active:signature" of the name's row, if it has one.
    const QString entry = scalar(QStringLiteral("SELECT Active || ':' || Signature FROM [%1] WHERE Name = ?").arg(registry),
        { r.name })
                              .toString();
    if (entry.startsWith(QLatin1String("1:")))
        throw RuntimeError(err::TableExists, QStringLiteral("Relationship '%1' already exists.").arg(r.name));
    const QString known = entry.mid(2);
    // Like the data it is to guard, a relation can't be made over rows that
    // already break it.
    const int orphans = scalar(orphanCount(r)).toInt();
    if (orphans > 0)
        throw RuntimeError(err::RelatedRecordRequired,
            QStringLiteral("Data in the table '%1' violates referential integrity rules.").arg(r.childTable));

    Transaction transaction;
    const QString signature = signatureOf(r);
    // The triggers stay from an earlier use of the name unless the relation
    // now links other columns, or a table they sat on was dropped since.
    if (known != signature || !triggersExist(r.name, schemaVersion())) {
        dropTriggers(r.name);
        createTriggers(r);
        verifiedAt().insert(verifiedKey(r.name), schemaVersion());
    }
    exec(QStringLiteral("INSERT OR REPLACE INTO [%1] (Name, Signature, Active) VALUES (?, ?, 1)").arg(registry),
        { r.name, signature });
    transaction.commit();
}

void createRelations(const std::vector<Relation>& relations)
{
    ensureRegistry();
    // A relation whose registry row and triggers stand from an earlier use,
    // and that isn't in force, only needs the check of its rows and the mark
    // in the registry: those checks run as one statement, the marks as
    // another. Any other goes the long way, one by one.
    QHash<QString, QString> entries;
    QSqlQuery q
        = select(QStringLiteral("SELECT Name, Active || ':' || Signature FROM [%1]").arg(registry));
    while (q.next())
        entries.insert(q.value(0).toString().toLower(), q.value(1).toString());
    q.finish();
    const int version = schemaVersion();
    std::vector<const Relation*> quick;
    QStringList counts;
    for (const Relation& r : relations) {
        const QString entry = entries.value(r.name.toLower());
        if (entry == QStringLiteral("0:") + signatureOf(r) && triggersExist(r.name, version)) {
            quick.push_back(&r);
            counts << QLatin1Char('(') + orphanCount(r) + QLatin1Char(')');
        } else {
            try {
                createRelation(r);
            } catch (const RuntimeError&) {
                // Not made: it stays out of force.
            }
        }
    }
    if (quick.empty())
        return;
    // The counts come as one text, so that the statement is a kept one.
    const QStringList orphans
        = scalar(QStringLiteral("SELECT ") + counts.join(QStringLiteral(" || ' ' || ")))
              .toString()
              .split(QLatin1Char(' '));
    QStringList sound;
    for (int i = 0; i < int(quick.size()) && i < orphans.size(); ++i) {
        if (orphans.at(i) == QLatin1String("0"))
            sound << quick[size_t(i)]->name;
    }
    if (!sound.isEmpty())
        exec(QStringLiteral("UPDATE [%1] SET Active = 1 WHERE Name IN (%2)")
                 .arg(registry, nameList(sound)));
}

void deleteRelations(const QStringList& names)
{
    ensureRegistry();
    exec(QStringLiteral("UPDATE [%1] SET Active = 0 WHERE Active = 1 AND Name IN (%2)")
             .arg(registry, nameList(names)));
}

void deleteRelation(const QString& name)
{
    if (!relationExists(name))
        throw RuntimeError(err::ItemNotFound, QStringLiteral("Item not found in this collection."));
    exec(QStringLiteral("UPDATE [%1] SET Active = 0 WHERE Name = ?").arg(registry), { name });
}

bool relationExists(const QString& name)
{
    ensureRegistry();
    return scalar(QStringLiteral("SELECT COUNT(*) FROM [%1] WHERE Name = ? AND Active = 1").arg(registry), { name })
               .toInt()
        > 0;
}

QStringList relationNames()
{
    ensureRegistry();
    QStringList names;
    QSqlQuery q = select(QStringLiteral("SELECT Name FROM [%1] WHERE Active = 1 ORDER BY Name").arg(registry));
    while (q.next())
        names << q.value(0).toString();
    return names;
}

} // namespace quillon::database
