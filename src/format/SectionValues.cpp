#include "format/SectionValues.h"

#include "app/RuntimeError.h"
#include "app/UserInterface.h"
#include "database/Schema.h"
#include "format/Columns.h"
#include "format/NumberText.h"
#include "format/TextLines.h"

#include <QHash>

#include <cmath>

namespace quillon::format {

namespace {

// The engine's refusal of text that can't become a number.
constexpr int DataTypeConversion = 3421;

const database::FieldDef* lookUpField(const QString& table, const QString& field)
{
    const database::TableDef* def = database::findTable(table);
    if (!def)
        return nullptr;
    for (const database::FieldDef& f : def->fields) {
        if (f.name.compare(field, Qt::CaseInsensitive) == 0)
            return &f;
    }
    return nullptr;
}

// Every cell a reader stores asks for its field's type, and the schema is a
// list searched from the top: the answers are kept, by the names as the
// readers spell them (the schema never changes while the program runs).
const database::FieldDef* findField(const QString& table, const QString& field)
{
    static QHash<QString, QHash<QString, const database::FieldDef*>> known;
    QHash<QString, const database::FieldDef*>& fields = known[table];
    const auto it = fields.constFind(field);
    if (it != fields.constEnd())
        return *it;
    const database::FieldDef* def = lookUpField(table, field);
    fields.insert(field, def);
    return def;
}

QVariant wholeNumber(double number)
{
    if (!std::isfinite(number) || std::fabs(number) > 2147483647.0)
        throw RuntimeError(err::NumericOverflow, QStringLiteral("Overflow"));
    return QVariant(static_cast<qint64>(std::nearbyint(number)));
}

} // namespace

QString column(const QString& line, int start, int length)
{
    return trimSpaces(mid(line, start, length));
}

QVariant fieldValue(const QString& table, const QString& field, const QString& text)
{
    const database::FieldDef* def = findField(table, field);
    if (!def || def->type == database::FieldType::Text)
        return text.isNull() ? QStringLiteral("") : text;
    if (!isNumeric(text))
        throw RuntimeError(DataTypeConversion, QStringLiteral("Data type conversion error."));
    // A plain number reads quickest by the leading-number rule, which gives
    // the same value; one with an exponent may overflow, as the text's own
    // conversion tells.
    const double number = text.contains(QLatin1Char('e'), Qt::CaseInsensitive)
        ? trimSpaces(text).toDouble()
        : leadingNumber(text);
    return fieldNumber(table, field, number);
}

QVariant fieldNumber(const QString& table, const QString& field, double number)
{
    const database::FieldDef* def = findField(table, field);
    if (!def || def->type == database::FieldType::Text)
        return decimalText(number);
    if (def->type == database::FieldType::Single)
        return QVariant(number);
    return wholeNumber(number);
}

void RowValues::text(const QString& field, const QString& text)
{
    replace(field, fieldValue(m_table, field, text));
}

void RowValues::number(const QString& field, double number)
{
    replace(field, fieldNumber(m_table, field, number));
}

void RowValues::null(const QString& field)
{
    replace(field, QVariant());
}

void RowValues::replace(const QString& field, const QVariant& value)
{
    for (auto& entry : m_values) {
        if (entry.first.size() == field.size()
            && entry.first.compare(field, Qt::CaseInsensitive) == 0) {
            entry.second = value;
            return;
        }
    }
    m_values.emplace_back(field, value);
}

void RowValues::insert() const
{
    database::insertRow(m_table, m_values);
}

void RowValues::update(qint64 rowid) const
{
    if (m_values.empty())
        return;
    QStringList sets;
    QVariantList params;
    for (const auto& entry : m_values) {
        sets << QStringLiteral("[%1] = ?").arg(entry.first);
        params << entry.second;
    }
    params << rowid;
    database::exec(QStringLiteral("UPDATE [%1] SET %2 WHERE rowid = ?")
                       .arg(m_table, sets.join(QStringLiteral(", "))),
        params);
}

void readColumn(
    RowValues& row, const QString& field, const QString& line, int start, int length, double floor)
{
    const QString text = column(line, start, length);
    if (text.isEmpty())
        return;
    if (leadingNumber(text) < floor)
        row.null(field);
    else
        row.text(field, text);
}

bool isBlank(const QVariant& value)
{
    return value.isNull() || !value.isValid() || trimSpaces(value.toString()).isEmpty();
}

QString cellText(const QVariant& value, const QString& missing)
{
    return isBlank(value) ? missing : NumText(value);
}

QString textOr99(const QVariant& value)
{
    return isBlank(value) ? QStringLiteral("-99") : trimSpaces(value.toString());
}

QString maskedCell(const QVariant& value, const QString& mask, const QString& missing)
{
    if (isBlank(value))
        return missing;
    const bool number = value.typeId() != QMetaType::QString || isNumeric(value.toString());
    return number ? maskedNumber(value, mask) : NumText(value);
}

QString levelText(const QVariant& level)
{
    return NumText(level);
}

QString duplicateLevelsText(const QString& what, const QVariant& level)
{
    return QStringLiteral("Duplicate levels in '%1'.").arg(what) + QLatin1Char(' ')
        + QStringLiteral("Level") + QLatin1Char(' ') + levelText(level) + QLatin1Char(' ')
        + QStringLiteral("is read only once.");
}

DuplicateLevel duplicateLevels(const QString& what)
{
    return [what](const QVariant& level) { msgBox(duplicateLevelsText(what, level)); };
}

void readLevelLine(const QString& line, QString& comments, const QString& table, const QString& levelField,
    const QString& tail, const DuplicateLevel& onDuplicate, const std::function<void(RowValues&)>& fill)
{
    if (isComment(line)) {
        appendComment(comments, line);
        return;
    }
    QVariant level;
    try {
        RowValues row(table);
        row.number(levelField, leadingNumber(mid(line, 1, 3)));
        level = row.values().front().second;
        fill(row);
        row.insert();
    } catch (const RuntimeError& e) {
        if (e.number() == err::DuplicateKey)
            onDuplicate(level);
        else
            reportError(e.text(), tail);
    }
}

} // namespace quillon::format
