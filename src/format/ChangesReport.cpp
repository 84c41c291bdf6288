#include "format/ChangesReport.h"

#include <algorithm>

namespace quillon::format {

namespace {

QString kindText(ChangeKind kind)
{
    switch (kind) {
    case ChangeKind::Layout:
        return QStringLiteral("layout");
    case ChangeKind::Value:
        return QStringLiteral("value changed");
    case ChangeKind::Dropped:
        return QStringLiteral("dropped");
    }
    return QString();
}

QString quoted(const QString& text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

QString texts(const SaveChange& c)
{
    if (c.oldText.isEmpty() && c.newText.isEmpty())
        return QString();
    if (c.gone)
        return quoted(c.oldText);
    return quoted(c.oldText) + QStringLiteral(" -> ") + quoted(c.newText);
}

QString lines(const SaveChange& c)
{
    if (c.oldLine && c.newLine)
        return QStringLiteral("line %1 -> %2").arg(c.oldLine).arg(c.newLine);
    if (c.oldLine)
        return QStringLiteral("line %1").arg(c.oldLine);
    if (c.newLine)
        return QStringLiteral("written line %1").arg(c.newLine);
    return QString();
}

} // namespace

QString changeLine(const SaveChange& c)
{
    QStringList where;
    for (const QString& part : { c.section, c.group,
             c.level.isEmpty() ? QString() : QStringLiteral("level ") + c.level, c.column }) {
        if (!part.isEmpty())
            where << part;
    }
    QStringList what;
    for (const QString& part : { texts(c), c.note }) {
        if (!part.isEmpty())
            what << part;
    }
    QString line = kindText(c.kind) + QStringLiteral(": ") + where.join(QStringLiteral(", "));
    if (!what.isEmpty())
        line += QStringLiteral(": ") + what.join(QStringLiteral(", "));
    const QString numbers = lines(c);
    if (!numbers.isEmpty())
        line += QStringLiteral(" (") + numbers + QLatin1Char(')');
    return line;
}

int valueChangeCount(const std::vector<SaveChange>& changes)
{
    return int(std::count_if(changes.begin(), changes.end(), altersValue));
}

QStringList changesReport(const std::vector<SaveChange>& changes, bool withLayout)
{
    QStringList report;
    int layoutLeftOut = 0;
    for (const SaveChange& c : changes) {
        if (withLayout || altersValue(c))
            report << changeLine(c);
        else
            ++layoutLeftOut;
    }
    if (valueChangeCount(changes) == 0)
        report << QStringLiteral("No values change.");
    if (layoutLeftOut > 0)
        report << QStringLiteral("(%1 changes of layout only are not listed.)").arg(layoutLeftOut);
    return report;
}

} // namespace quillon::format
