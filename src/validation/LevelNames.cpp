#include "validation/LevelNames.h"

#include "app/RuntimeError.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "format/NumberText.h"

#include <QSqlQuery>

namespace quillon::validation {

namespace {

// Runs "<prefix><level>" and gives the name column of its first row, or
// `missing` without a row or for a NULL name.
QString findName(const QString& prefix, const QVariant& level, const QString& column, const QString& missing,
    const QString& routine)
{
    try {
        // The level is put into the statement as text, as the lookup always
        // did: a level without a number makes the statement fail.
        QSqlQuery q = database::select(prefix + format::NumText(level));
        if (!q.next())
            return missing;
        const QVariant name = q.value(column);
        return name.isNull() ? missing : name.toString();
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in ") + routine + QLatin1Char('.'));
        return QString();
    }
}

} // namespace

QString Find_FERNAME(const QVariant& level)
{
    return findName(QStringLiteral("Select * From FerLevelNames Where LNFER = "), level, QStringLiteral("Fername"),
        QStringLiteral("-99"), QStringLiteral("Find_FERNAME"));
}

QString Find_RESNAME(const QVariant& level)
{
    return findName(QStringLiteral("Select * From ResLevelNames Where LNRES = "), level, QStringLiteral("REname"),
        QStringLiteral("-99"), QStringLiteral("Find_RESNAME"));
}

QString Find_CHNAME(const QVariant& level)
{
    return findName(QStringLiteral("Select * From ChemLevelNames Where LNCHE = "), level, QStringLiteral("CHNAME"),
        QStringLiteral("-99"), QStringLiteral("Find_CHNAME"));
}

QString Find_TillNAME(const QVariant& level)
{
    return findName(QStringLiteral("Select * From TillLevelNames Where LNTIL = "), level, QStringLiteral("TNAME"),
        QStringLiteral("-99"), QStringLiteral("Find_TillNAME"));
}

QString Find_EnvNAME(const QVariant& level)
{
    return findName(QStringLiteral("Select * From EnvLevelNames Where LNENV = "), level, QStringLiteral("EnvNAME"),
        QString(""), QStringLiteral("Find_EnvNAME"));
}

QString Find_HarNAME(const QVariant& level)
{
    return findName(QStringLiteral("Select * From HarLevelNames Where LNHAR = "), level, QStringLiteral("HNAME"),
        QString(""), QStringLiteral("Find_HarNAME"));
}

} // namespace quillon::validation
