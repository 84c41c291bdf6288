#include "format/EventCells.h"

#include "app/RuntimeError.h"
#include "app/UserInterface.h"
#include "format/Columns.h"
#include "format/FileWriter.h"
#include "format/NumberText.h"
#include "format/SectionValues.h"
#include "format/TextLines.h"

#include <QSqlQuery>

#include <cmath>

namespace quillon::format::events {

namespace {

// The trimmed column, or a null string when the cell stays NULL because the
// line is too short or the column is blank.
QString presentColumn(const QString& line, int test, int start, int width)
{
    if (line.size() <= test)
        return QString();
    const QString t = trimSpaces(mid(line, start, width));
    return t.isEmpty() ? QString() : t;
}

} // namespace

int levelOf(const QString& line)
{
    // The engine stores a fraction in an Integer field rounded half to even,
    // which is what nearbyint does in the default rounding mode.
    return static_cast<int>(std::nearbyint(leadingNumber(mid(line, 1, 3))));
}

QVariant numberCell(const QString& line, int test, int start, int width)
{
    const QString t = presentColumn(line, test, start, width);
    if (t.isNull())
        return {};
    const double value = leadingNumber(t);
    return value < 0 ? QVariant() : QVariant(value);
}

QVariant textCell(const QString& line, int test, int start, int width)
{
    const QString t = presentColumn(line, test, start, width);
    if (t.isNull() || leadingNumber(t) < 0)
        return {};
    return t;
}

QVariant dateCell(const QString& line, bool padFour)
{
    if (padFour && line.size() > 5) {
        const QString t = trimSpaces(mid(line, 4, 5));
        if (t.size() == 4)
            return QStringLiteral("0") + t;
    }
    return textCell(line, 5, 4, 5);
}

database::Values typedRow(const QString& table, const database::Values& values)
{
    database::Values typed;
    typed.reserve(values.size());
    for (const auto& [field, value] : values) {
        if (value.isNull())
            typed.emplace_back(field, value);
        else if (value.typeId() == QMetaType::QString)
            typed.emplace_back(field, fieldValue(table, field, value.toString()));
        else if (value.typeId() == QMetaType::Double)
            typed.emplace_back(field, fieldNumber(table, field, value.toDouble()));
        else
            typed.emplace_back(field, value);
    }
    return typed;
}

void storeNamedEvent(const QString& line, const NamedEventTables& tables, const QString& section,
    const QString& tail, const std::function<void(NamedEventRow&)>& fill)
{
    const QString eventTable = QLatin1String(tables.events);
    NamedEventRow row;
    try {
        row.level = levelOf(line);
        row.event = { { QLatin1String(tables.levelColumn), row.level } };
        fill(row);
        row.event = typedRow(eventTable, row.event);
    } catch (const RuntimeError& e) {
        if (e.number() == err::DuplicateKey) {
            msgBox(QStringLiteral("duplicate levels in '%1'. Level %2 is read only once.")
                       .arg(section)
                       .arg(row.level),
                MsgButtons::OK, MsgIcon::Critical, QStringLiteral("Error"));
        } else {
            reportError(e.text(), tail);
        }
        return;
    }
    // From here on errors are ignored: a level that already has a name keeps
    // it, and the event row goes in regardless. (Every further row of a level
    // meets the name already there; OR IGNORE lets that pass without making
    // an error of it, which is the same outcome at less cost.)
    if (!row.name.isNull()) {
        database::tryExec(QStringLiteral("INSERT OR IGNORE INTO [%1] ([%2], [%3]) VALUES (?, ?)")
                              .arg(QLatin1String(tables.names), QLatin1String(tables.levelColumn),
                                  QLatin1String(tables.nameColumn)),
            { row.level, row.name });
    }
    try {
        database::insertRow(eventTable, row.event);
    } catch (const RuntimeError&) {
    }
}


QString LevelNameLookup::operator()(const QVariant& level)
{
    bool number = false;
    level.toLongLong(&number);
    if (!number || level.isNull())
        return m_find(level);
    if (m_level.isNull() || m_level != level) {
        m_name = m_find(level);
        m_level = level;
    }
    return m_name;
}

QString numberOr99(const QVariant& value)
{
    return cellText(value, QStringLiteral("-99"));
}

QString maskOr99(const QVariant& value, const QString& mask)
{
    return isBlank(value) ? QStringLiteral("-99") : maskedNumber(value, mask);
}

QString roundedText(const QVariant& value, int digits)
{
    QString text = formatMask(value.toDouble(), digits > 0 ? QStringLiteral("0.") + QString(digits, QLatin1Char('0')) : QStringLiteral("0"));
    if (text.contains(QLatin1Char('.'))) {
        while (text.endsWith(QLatin1Char('0')))
            text.chop(1);
        if (text.endsWith(QLatin1Char('.')))
            text.chop(1);
    }
    return NumText(text);
}

QString roundedOr99(const QVariant& value, int digits)
{
    return isBlank(value) ? QStringLiteral("-99") : roundedText(value, digits);
}

bool writeNamedEvents(FileWriter& w, const NamedEventTables& tables, const QString& title,
    const QString& header, QString (*find)(const QVariant&),
    const std::function<QString(const database::Rows&)>& cells)
{
    const QString table = QLatin1String(tables.events);
    const QString levelField = QLatin1String(tables.levelColumn);
    database::Rows q(
        QStringLiteral("SELECT * FROM [%1] ORDER BY [%2], rowid").arg(table, levelField));
    if (!q.next())
        return false;
    w.line();
    w.line(title);
    w.line(header);
    LevelNameLookup names(find);
    do {
        const QVariant level = q.value(levelField);
        w.line(levelColumn(level) + cells(q) + names(level));
    } while (q.next());
    return true;
}

} // namespace quillon::format::events
