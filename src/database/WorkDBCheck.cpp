#include "database/WorkDBCheck.h"

#include "app/UserInterface.h"
#include "database/Sql.h"
#include "database/WorkDatabase.h"

#include <QSet>
#include <QSqlError>

namespace quillon::database {

namespace {

bool g_damageReported = false;

// SQLite's primary result codes for a damaged file.
constexpr int SqliteCorrupt = 11;
constexpr int SqliteNotADatabase = 26;

WorkDBCondition conditionOf(const QSqlError& error)
{
    return isDamage(error) ? WorkDBCondition::Damaged : WorkDBCondition::Unreadable;
}

// PRAGMA quick_check answers a single "ok" for a sound file and one line
// per fault otherwise; a file too broken to be walked fails the statement.
WorkDBCondition quickCheck()
{
    QSqlQuery check(WorkDB());
    if (!check.exec(QStringLiteral("PRAGMA quick_check")))
        return conditionOf(check.lastError());
    const bool sound
        = check.next() && check.value(0).toString() == QLatin1String("ok") && !check.next();
    return sound ? WorkDBCondition::Sound : WorkDBCondition::Damaged;
}

} // namespace

bool isDamage(const QSqlError& error)
{
    // The driver gives the engine's code; extended codes carry the primary
    // one in their low byte.
    bool number = false;
    const int code = error.nativeErrorCode().toInt(&number) & 0xff;
    return number && (code == SqliteCorrupt || code == SqliteNotADatabase);
}

void reportDamagedWorkDB()
{
    g_damageReported = true;
    msgBox(damagedWorkDatabase);
    endProgram();
}

bool workDBDamageReported()
{
    return g_damageReported;
}

WorkDBCondition examineWorkDB(const QString& path)
{
    static QSet<QString> checked;
    if (!isWorkDBOpen() || WorkDB().databaseName() != path) {
        QSqlError error;
        if (!openWorkDB(path, &error))
            return conditionOf(error);
    }
    if (!checked.contains(path)) {
        const WorkDBCondition condition = quickCheck();
        if (condition != WorkDBCondition::Sound)
            return condition;
        checked.insert(path);
    }
    QSqlQuery profile(WorkDB());
    if (!profile.exec(QStringLiteral("SELECT COUNT(*) FROM TERVAPRO")) || !profile.next())
        return conditionOf(profile.lastError());
    return profile.value(0).toInt() == 0 ? WorkDBCondition::Empty : WorkDBCondition::Sound;
}

} // namespace quillon::database
