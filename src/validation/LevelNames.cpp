#include "validation/LevelNames.h"

#include "app/RuntimeError.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "format/NumberText.h"

#include <QSqlQuery>

namespace quillon::validation {

namespace {

// A level-names table: its level column, its name column, what a level
// without a name gives, and the routine named in an error report.
struct LevelNameTable {
    const char* table;
    const char* levelColumn;
    const char* nameColumn;
    const char* missing;
    const char* routine;
};

// The name column of the first row of the level, or `missing` without a row
// or for a NULL name.
QString findName(const LevelNameTable& t, const QVariant& level)
{
    const QString missing = QLatin1String(t.missing);
    try {
        // The level is put into the statement as text, as the lookup always
        // did: a level without a number makes the statement fail.
        database::Rows q(QStringLiteral("Select * From %1 Where %2 = ")
                             .arg(QLatin1String(t.table), QLatin1String(t.levelColumn))
            + format::NumText(level));
        if (!q.next())
            return missing;
        const QVariant name = q.value(QLatin1String(t.nameColumn));
        return name.isNull() ? missing : name.toString();
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in %1.").arg(QLatin1String(t.routine)));
        return QString();
    }
}

} // namespace

QString Find_FERNAME(const QVariant& level)
{
    return findName({ "FerLevelNames", "LNFER", "Fername", "-99", "Find_FERNAME" }, level);
}

QString Find_RESNAME(const QVariant& level)
{
    return findName({ "ResLevelNames", "LNRES", "REname", "-99", "Find_RESNAME" }, level);
}

QString Find_CHNAME(const QVariant& level)
{
    return findName({ "ChemLevelNames", "LNCHE", "CHNAME", "-99", "Find_CHNAME" }, level);
}

QString Find_TillNAME(const QVariant& level)
{
    return findName({ "TillLevelNames", "LNTIL", "TNAME", "-99", "Find_TillNAME" }, level);
}

QString Find_EnvNAME(const QVariant& level)
{
    return findName({ "EnvLevelNames", "LNENV", "EnvNAME", "", "Find_EnvNAME" }, level);
}

QString Find_HarNAME(const QVariant& level)
{
    return findName({ "HarLevelNames", "LNHAR", "HNAME", "", "Find_HarNAME" }, level);
}

} // namespace quillon::validation
