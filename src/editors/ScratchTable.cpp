#include "editors/ScratchTable.h"

#include "database/Rules.h"
#include "database/Schema.h"
#include "database/Sql.h"
#include "editors/EditorTexts.h"
#include "editors/ScratchDates.h"
#include "format/DateCodes.h"
#include "format/NumberText.h"

namespace quillon::editors {

using database::exec;
using database::scalar;
using database::select;

namespace {

const QString applications = QStringLiteral("Applications");

// The declaration of a backup column: the type of the table's column, without
// its checks, so that the backup takes back every row the table held.
QString backupColumns(const QString& table)
{
    QStringList columns;
    if (const database::TableDef* def = database::findTable(table)) {
        for (const database::FieldDef& field : def->fields)
            columns << QStringLiteral("[%1] %2").arg(
                field.name, database::columnDeclaration(field));
    }
    return columns.join(QStringLiteral(", "));
}

QString scratchDeclaration(const QString& type)
{
    if (type.compare(QLatin1String("Single"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("FLOAT");
    return QStringLiteral("TEXT COLLATE NOCASE");
}

void copyTable(const QString& table, const QString& backup)
{
    exec(QStringLiteral("CREATE TABLE [%1] (%2)").arg(backup, backupColumns(table)));
    exec(QStringLiteral("INSERT INTO [%1] SELECT * FROM [%2]").arg(backup, table));
}

void restoreTable(const QString& table, const QString& backup)
{
    exec(QStringLiteral("INSERT INTO [%1] SELECT * FROM [%2]").arg(table, backup));
    exec(QStringLiteral("DROP TABLE [%1]").arg(backup));
}

} // namespace

ScratchTable::ScratchTable(const EventMember& member)
    : m_member(member)
    , m_descriptions(member.lists.size())
    , m_codes(member.lists.size())
{
}

void ScratchTable::create() const
{
    QStringList columns { QStringLiteral("[%1] SMALLINT").arg(m_member.levelField),
        QStringLiteral("TheDate DATE") };
    if (m_member.hasManagement())
        columns << QStringLiteral("DayAfterPlanting SMALLINT");
    for (const ScratchColumn& c : m_member.scratch)
        columns << QStringLiteral("[%1] %2").arg(c.name, scratchDeclaration(c.type));
    exec(
        QStringLiteral("CREATE TABLE [Applications] (%1)").arg(columns.join(QStringLiteral(", "))));
}

std::optional<bool> ScratchTable::firstEventInDays() const
{
    const QVariant first
        = scalar(QStringLiteral("SELECT IFNULL([%1], '') FROM [%2] ORDER BY rowid LIMIT 1")
                     .arg(m_member.dateField, m_member.eventTable));
    if (!first.isValid())
        return std::nullopt;
    return m_member.hasManagement() && first.toString().size() <= 3;
}

void ScratchTable::fill(bool daysMode) const
{
    QStringList eventFields { m_member.levelField, m_member.dateField };
    std::vector<const ScratchColumn*> filled;
    for (const ScratchColumn& c : m_member.scratch) {
        if (!c.eventField.isEmpty()) {
            eventFields << c.eventField;
            filled.push_back(&c);
        }
    }
    database::Transaction transaction;
    QSqlQuery events
        = select(QStringLiteral("SELECT [%1] FROM [%2] ORDER BY rowid")
                     .arg(eventFields.join(QStringLiteral("], [")), m_member.eventTable));
    while (events.next()) {
        database::Values row { { m_member.levelField, events.value(0) } };
        const QVariant date = events.value(1);
        if (!date.isNull() && daysMode) {
            row.push_back({ QStringLiteral("DayAfterPlanting"),
                int(format::leadingNumber(date.toString())) });
        } else if (!date.isNull()) {
            QString code = date.toString();
            row.push_back({ QStringLiteral("TheDate"), scratchDateOf(format::YYDDDToDate(code)) });
        }
        for (size_t i = 0; i < filled.size(); ++i) {
            const ScratchColumn& c = *filled[i];
            const QVariant value = events.value(int(i) + 2);
            const bool coded = c.list >= 0 && !value.isNull();
            row.push_back(
                { c.name, coded ? QVariant(description(c.list, value.toString())) : value });
        }
        database::insertRow(applications, row);
    }
    transaction.commit();
}

void ScratchTable::setRules() const
{
    database::setValidationRule(applications, QStringLiteral("TheDate"),
        QStringLiteral("Between #1/1/1926# and #1/1/3000#"), text::invalidDate);
    for (const ScratchColumn& c : m_member.scratch) {
        if (!c.rule.isEmpty())
            database::setValidationRule(applications, c.name, c.rule, text::invalidEntry);
    }
}

void ScratchTable::writeBack(bool daysMode) const
{
    std::vector<const ScratchColumn*> written;
    QStringList columns { m_member.levelField, QStringLiteral("TheDate") };
    if (m_member.hasManagement())
        columns << QStringLiteral("DayAfterPlanting");
    for (const ScratchColumn& c : m_member.scratch) {
        if (!c.eventField.isEmpty()) {
            columns << c.name;
            written.push_back(&c);
        }
    }
    const int first = m_member.hasManagement() ? 3 : 2;
    const QString order = daysMode ? QStringLiteral("DayAfterPlanting") : QStringLiteral("TheDate");
    exec(QStringLiteral("DELETE FROM [%1]").arg(m_member.eventTable));
    QSqlQuery rows
        = select(QStringLiteral("SELECT %1 FROM Applications ORDER BY %2, %3, rowid")
                     .arg(columns.join(QStringLiteral(", ")), m_member.levelField, order));
    while (rows.next()) {
        QVariant when;
        if (daysMode) {
            when = rows.value(2).isNull() ? QVariant() : QVariant(rows.value(2).toString());
        } else if (!rows.value(1).isNull()) {
            QVariant date = dateOfScratch(rows.value(1));
            when = format::DateToYYDDD(date);
        }
        database::Values row { { m_member.levelField, rows.value(0) },
            { m_member.dateField, when } };
        for (size_t i = 0; i < written.size(); ++i) {
            const ScratchColumn& c = *written[i];
            const QVariant value = rows.value(first + int(i));
            const bool coded = c.list >= 0 && !value.isNull();
            row.push_back(
                { c.eventField, coded ? QVariant(code(c.list, value.toString())) : value });
        }
        database::insertRow(m_member.eventTable, row);
    }
}

void ScratchTable::backUp() const
{
    for (const char* table : { "BackUp", "BackUp2", "BackUp_Applications" })
        database::tryExec(QStringLiteral("DROP TABLE [%1]").arg(QLatin1String(table)));
    copyTable(m_member.levelTable, QStringLiteral("BackUp"));
    copyTable(m_member.eventTable, QStringLiteral("BackUp_Applications"));
    if (m_member.hasManagement())
        copyTable(m_member.managementTable, QStringLiteral("BackUp2"));
}

void ScratchTable::restore(bool dropNewLevel) const
{
    exec(QStringLiteral("DELETE FROM [%1]").arg(m_member.eventTable));
    exec(QStringLiteral("DELETE FROM [%1]").arg(m_member.levelTable));
    restoreTable(m_member.levelTable, QStringLiteral("BackUp"));
    if (m_member.hasManagement()) {
        exec(QStringLiteral("DELETE FROM [%1]").arg(m_member.managementTable));
        restoreTable(m_member.managementTable, QStringLiteral("BackUp2"));
    }
    restoreTable(m_member.eventTable, QStringLiteral("BackUp_Applications"));
    exec(QStringLiteral("DROP TABLE [Applications]"));
    if (dropNewLevel) {
        // The management row stays: it was in the backup.
        exec(QStringLiteral("DELETE FROM [%1]").arg(m_member.eventTable));
        exec(QStringLiteral("DELETE FROM [%1]").arg(m_member.levelTable));
    }
}

void ScratchTable::dropBackups() const
{
    for (const char* table : { "BackUp", "BackUp_Applications", "BackUp2" })
        database::tryExec(QStringLiteral("DROP TABLE [%1]").arg(QLatin1String(table)));
}

QStringList ScratchTable::eventColumns() const
{
    QStringList columns { QStringLiteral("TheDate") };
    if (m_member.hasManagement())
        columns << QStringLiteral("DayAfterPlanting");
    for (const ScratchColumn& c : m_member.scratch)
        columns << c.name;
    return columns;
}

QString ScratchTable::code(int list, const QString& description) const
{
    if (!m_codes.at(size_t(list)))
        loadCodes(list);
    return m_codes.at(size_t(list))->value(description.toUpper());
}

QString ScratchTable::description(int list, const QString& code) const
{
    if (!m_descriptions.at(size_t(list)))
        loadCodes(list);
    return m_descriptions.at(size_t(list))->value(code.toUpper());
}

// Reads a list's code table once: the first row of a code or description
// answers, as a lookup statement would, without regard to case.
void ScratchTable::loadCodes(int list) const
{
    QHash<QString, QString> codes;
    QHash<QString, QString> descriptions;
    QSqlQuery q = select(
        QStringLiteral("SELECT Code, Description FROM CodeLookup WHERE Type = ? ORDER BY rowid"),
        { m_member.lists.at(size_t(list)).type });
    while (q.next()) {
        const QString code = q.value(0).toString();
        const QString description = q.value(1).toString();
        if (!descriptions.contains(code.toUpper()))
            descriptions.insert(code.toUpper(), description);
        if (!codes.contains(description.toUpper()))
            codes.insert(description.toUpper(), code);
    }
    m_codes.at(size_t(list)) = codes;
    m_descriptions.at(size_t(list)) = descriptions;
}

} // namespace quillon::editors
