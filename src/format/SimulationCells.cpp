#include "format/SimulationCells.h"

#include "app/AppState.h"
#include "app/RuntimeError.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "format/Columns.h"
#include "format/NumberText.h"
#include "format/SectionValues.h"
#include "format/TextLines.h"
#include "reference/SimDefaults.h"

#include <QSqlError>
#include <QSqlRecord>

namespace quillon::format::simulation {

using reference::SimGroup;
using reference::simDefaults;

namespace {

bool isNumber(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Short:
    case QMetaType::Double:
    case QMetaType::Float:
        return true;
    default:
        return false;
    }
}

// A value as the column of `table` takes it: a default member as the
// number or text it is, text from the file converted by the column's type.
QVariant storable(const QString& table, const QString& column, const QVariant& value)
{
    if (value.isNull())
        return value;
    if (isNumber(value))
        return fieldNumber(table, column, value.toDouble());
    return fieldValue(table, column, value.toString());
}

} // namespace

double levelOf(const QString& line) { return leadingNumber(mid(line, 1, 3)); }

QString levelText(double level) { return decimalText(level); }

std::optional<QVariant> cellValue(const QString& line, const Cell& cell)
{
    if (cell.lengthTest > 0 && line.size() <= cell.lengthTest)
        return std::nullopt;
    const QString text = mid(line, cell.start, cell.width);
    const QString trimmed = trimSpaces(text);
    const QString numeric = cell.numStart > 0 ? mid(line, cell.numStart, cell.numWidth) : text;
    if (trimmed.isEmpty() || leadingNumber(numeric) < 0)
        return simDefaults().member(QLatin1String(cell.column));
    return QVariant(trimmed);
}

void addCell(Row& row, const QString& line, const Cell& cell)
{
    if (const auto value = cellValue(line, cell))
        row.emplace_back(QLatin1String(cell.column), *value);
}

void addCells(Row& row, const QString& line, const std::vector<Cell>& cells)
{
    for (const Cell& cell : cells)
        addCell(row, line, cell);
}

std::optional<QVariant> labelValue(const QString& line, int lengthTest, const QString& letters)
{
    if (lengthTest > 0 && line.size() <= lengthTest)
        return std::nullopt;
    const QString text = mid(line, 4, 11);
    const QString trimmed = trimSpaces(text);
    if (trimmed.isEmpty() || leadingNumber(text) < 0)
        return QVariant(letters);
    return QVariant(trimmed);
}

void takeComment(const QString& line)
{
    QString& buffer = state().comments.CommentsSimulation;
    appendComment(buffer, line);
    buffer = buffer.mid(2);
}

void storeRow(const QString& table, const Row& row)
{
    database::Values values;
    QVariant level;
    for (const auto& cell : row) {
        values.emplace_back(cell.first, storable(table, cell.first, cell.second));
        if (cell.first == QLatin1String("LNSIM"))
            level = values.back().second;
    }
    // Each group keeps one row per level; the general table's own index
    // refuses a second one, and the other group tables do the same here.
    if (table.compare(QLatin1String("SimulationControl"), Qt::CaseInsensitive) != 0 && !level.isNull()
        && database::scalar(QStringLiteral("SELECT COUNT(*) FROM [%1] WHERE LNSIM = ?").arg(table), { level })
                .toInt()
            > 0)
        throw database::classify(QSqlError(QString(), QStringLiteral("UNIQUE constraint failed: %1.LNSIM").arg(table)));
    database::insertRow(table, values);
}

void groupFailed(const QString& where, double level)
{
    msgBox(QStringLiteral("Error was found in %1. Default information is read for level %2").arg(where, levelText(level)),
        MsgButtons::OK, MsgIcon::Critical, QStringLiteral("Error"));
}

void storeDefaultRow(const QString& table, const SimGroup& group, double level)
{
    Row row = reference::defaultRow(group, 0);
    row.front().second = level;
    storeRow(table, row);
}

void readGroupLine(const QString& line, const SimGroup& group, int labelTest, const QString& where,
    const QString& defaultsTable, const std::function<void(Row& row, double level)>& body)
{
    if (isComment(line)) {
        takeComment(line);
        return;
    }
    const double level = levelOf(line);
    try {
        Row row { { QStringLiteral("LNSIM"), level } };
        if (const auto label = labelValue(line, labelTest, group.label))
            row.emplace_back(group.labelColumn, *label);
        body(row, level);
        storeRow(group.table, row);
    } catch (const RuntimeError&) {
        groupFailed(where, level);
        storeDefaultRow(defaultsTable, group, level);
    }
}

void restoreDefaultControls()
{
    msgBox(QStringLiteral("There is an error in Simulation Control section. Simulation Control will be changed to default."),
        MsgButtons::OK, MsgIcon::Exclamation);
    for (const SimGroup& group : reference::simGroups()) {
        database::exec(QStringLiteral("DELETE FROM [%1]").arg(group.table));
        Row row = reference::defaultRow(group, 1);
        if (group.table == QLatin1String("SimulationControl")) {
            database::Rows planting(QStringLiteral("SELECT YRPLT FROM Planting LIMIT 1"));
            if (planting.next()) {
                for (auto& cell : row) {
                    if (cell.first == QLatin1String("YRSIM"))
                        cell.second = planting.value(0);
                }
            }
        }
        database::insertRow(group.table, row);
    }
}


QString lineStart(const QVariant& level, const QString& label)
{
    return levelColumn(level) + trimSpaces(label).leftJustified(11, QLatin1Char(' '));
}

QString cellText(const QVariantMap& row, const QString& column)
{
    QVariant value = row.value(column);
    if (value.isNull())
        value = simDefaults().member(column);
    return trimSpaces(isNumber(value) ? NumText(value) : value.toString());
}

QString labelText(const QVariantMap& row, const SimGroup& group)
{
    const QVariant value = row.value(group.labelColumn);
    return value.isNull() ? group.label : value.toString();
}

QString plainLine(const QVariant& level, const QVariantMap& row, const SimGroup& group)
{
    QString line = lineStart(level, labelText(row, group));
    for (const QString& column : group.columns)
        line += rightJustified(cellText(row, column), 6);
    return line;
}

QList<QVariantMap> groupRows(const SimGroup& group)
{
    QList<QVariantMap> rows;
    // Rows of one level keep the order they were added in.
    database::Rows q(QStringLiteral("SELECT * FROM [%1] ORDER BY LNSIM, rowid").arg(group.table));
    while (q.next()) {
        QVariantMap row;
        for (int i = 0; i < q.columnCount(); ++i)
            row.insert(q.columnName(i), q.value(i));
        rows << row;
    }
    return rows;
}

QVariantMap rowAt(const QList<QVariantMap>& rows, int i) { return i < rows.size() ? rows.at(i) : QVariantMap(); }

} // namespace quillon::format::simulation
