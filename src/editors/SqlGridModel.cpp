#include "editors/SqlGridModel.h"

#include "app/AppState.h"
#include "editors/ScratchDates.h"
#include "format/DateCodes.h"
#include "format/NumberText.h"

#include <QRegularExpression>
#include <QSqlRecord>

namespace quillon::editors {

namespace {

const QString typeMismatch = QStringLiteral("Type mismatch");

} // namespace

QString dateEditFormat()
{
    QString format = state().DateTextFormat;
    static const QRegularExpression singleDay(QStringLiteral("(?<!d)d(?!d)"));
    static const QRegularExpression singleMonth(QStringLiteral("(?<!M)M(?!M)"));
    format.replace(singleDay, QStringLiteral("dd"));
    format.replace(singleMonth, QStringLiteral("MM"));
    return format;
}

QString dateInputMask()
{
    QString mask = dateEditFormat();
    for (QChar& c : mask) {
        if (c.isLetter())
            c = QLatin1Char('9');
    }
    return mask;
}

SqlGridModel::SqlGridModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

void SqlGridModel::setQuery(const QString& statement, const QString& table)
{
    m_statement = statement;
    m_table = table;
    requery();
}

void SqlGridModel::requery()
{
    beginResetModel();
    readRows();
    endResetModel();
}

void SqlGridModel::readRows()
{
    m_rows.clear();
    m_ids.clear();
    m_columns.clear();
    m_kinds.clear();
    if (m_statement.isEmpty())
        return;
    // Each row keeps its id in the table, so that an edit finds its row
    // whatever the statement's order.
    static const QRegularExpression selectWord(
        QStringLiteral("^\\s*SELECT\\s+"), QRegularExpression::CaseInsensitiveOption);
    QString sql = m_statement;
    sql.replace(selectWord, QStringLiteral("SELECT [%1].rowid, ").arg(m_table));
    QSqlQuery q = database::select(sql);
    const QSqlRecord record = q.record();
    for (int i = 1; i < record.count(); ++i)
        m_columns << record.fieldName(i);

    QHash<QString, QString> declared;
    QSqlQuery info = database::select(QStringLiteral("PRAGMA table_info([%1])").arg(m_table));
    while (info.next())
        declared.insert(info.value(1).toString().toUpper(), info.value(2).toString().toUpper());
    for (const QString& column : m_columns) {
        const QString type = declared.value(column.toUpper());
        m_kinds.push_back(type.startsWith(QLatin1String("DATE")) ? Kind::Date
                : type.startsWith(QLatin1String("FLOAT"))        ? Kind::Real
                : type.contains(QLatin1String("INT"))            ? Kind::Integer
                                                                 : Kind::Text);
    }
    while (q.next()) {
        m_ids.push_back(q.value(0).toLongLong());
        std::vector<QVariant> row;
        row.reserve(m_columns.size());
        for (int i = 1; i <= m_columns.size(); ++i)
            row.push_back(q.value(i));
        m_rows.push_back(std::move(row));
    }
}

void SqlGridModel::setNewRows(bool allowed, const database::Values& fixed)
{
    if (allowed == m_newRows && fixed == m_fixed)
        return;
    beginResetModel();
    m_newRows = allowed;
    m_fixed = fixed;
    endResetModel();
}

void SqlGridModel::setCaptions(const QStringList& captions)
{
    m_captions = captions;
    if (!m_columns.isEmpty())
        emit headerDataChanged(Qt::Horizontal, 0, int(m_columns.size()) - 1);
}

void SqlGridModel::setEditableColumns(const std::vector<bool>& editable)
{
    m_editable = editable;
}

int SqlGridModel::rowOf(qint64 id) const
{
    for (size_t i = 0; i < m_ids.size(); ++i) {
        if (m_ids[i] == id)
            return int(i);
    }
    return -1;
}

qint64 SqlGridModel::rowId(int row) const
{
    return row >= 0 && row < int(m_ids.size()) ? m_ids[size_t(row)] : 0;
}

QVariant SqlGridModel::value(int row, int column) const
{
    if (row < 0 || row >= int(m_rows.size()) || column < 0 || column >= int(m_columns.size()))
        return {};
    return m_rows[size_t(row)][size_t(column)];
}

SqlGridModel::Kind SqlGridModel::kindOf(int column) const
{
    return column >= 0 && column < int(m_kinds.size()) ? m_kinds[size_t(column)] : Kind::Text;
}

bool SqlGridModel::isDateColumn(int column) const
{
    return kindOf(column) == Kind::Date;
}

QString SqlGridModel::columnName(int column) const
{
    return m_columns.value(column);
}

QString SqlGridModel::text(int row, int column) const
{
    const QVariant v = value(row, column);
    if (v.isNull())
        return QString();
    switch (kindOf(column)) {
    case Kind::Date:
        return format::dateText(dateOfScratch(v));
    case Kind::Real:
    case Kind::Integer:
        return format::NumText(v);
    case Kind::Text:
        break;
    }
    return v.toString();
}

QString SqlGridModel::editText(int row, int column) const
{
    if (kindOf(column) == Kind::Date) {
        const QDate date = dateOfScratch(value(row, column));
        return date.isValid() ? date.toString(dateEditFormat()) : QString();
    }
    return text(row, column);
}

// Typed text in the column's type: a date, a whole number, a number, or the
// text itself; empty text is NULL. Text that isn't of the type throws.
QVariant SqlGridModel::converted(int column, const QVariant& typed) const
{
    if (typed.isNull())
        return {};
    if (typed.userType() != QMetaType::QString)
        return typed;
    const QString text = typed.toString();
    if (text.trimmed().isEmpty())
        return {};
    switch (kindOf(column)) {
    case Kind::Date: {
        const QDate date = format::toDate(text.trimmed());
        if (!date.isValid())
            throw RuntimeError(err::TypeMismatch, typeMismatch);
        return scratchDate(date);
    }
    case Kind::Integer: {
        if (!format::isNumeric(text))
            throw RuntimeError(err::TypeMismatch, typeMismatch);
        const double number = text.trimmed().toDouble();
        if (number > 32767 || number < -32768)
            throw RuntimeError(err::NumericOverflow, QStringLiteral("Overflow"));
        return qRound(number);
    }
    case Kind::Real:
        if (!format::isNumeric(text))
            throw RuntimeError(err::TypeMismatch, typeMismatch);
        return text.trimmed().toDouble();
    case Kind::Text:
        break;
    }
    return text;
}

RuntimeError SqlGridModel::store(int row, int column, const QVariant& typed, bool fromList)
{
    if (column < 0 || column >= int(m_columns.size()) || row < 0 || row > int(m_rows.size()))
        return RuntimeError(0, {});
    try {
        // The owner sees what was typed, before it becomes the column's type.
        QVariant v = typed;
        const QVariant old = value(row, column);
        if (m_hooks.beforeUpdate && !m_hooks.beforeUpdate(column, old, v, fromList))
            return RuntimeError(0, {});
        v = converted(column, v);
        const QString& name = m_columns.at(column);
        if (isNewRow(row)) {
            if (v.isNull())
                return RuntimeError(0, {});
            database::Values values = m_fixed;
            values.push_back({ name, v });
            database::insertRow(m_table, values);
            const qint64 id
                = database::scalar(QStringLiteral("SELECT last_insert_rowid()")).toLongLong();
            beginInsertRows({}, row + 1, row + 1);
            std::vector<QVariant> added(size_t(m_columns.size()));
            added[size_t(column)] = v;
            m_rows.push_back(std::move(added));
            m_ids.push_back(id);
            endInsertRows();
            emit dataChanged(index(row, 0), index(row, columnCount() - 1));
        } else {
            database::exec(
                QStringLiteral("UPDATE [%1] SET [%2] = ? WHERE rowid = ?").arg(m_table, name),
                { v, m_ids[size_t(row)] });
            m_rows[size_t(row)][size_t(column)] = v;
            emit dataChanged(index(row, column), index(row, column));
        }
        if (m_hooks.afterUpdate)
            m_hooks.afterUpdate(column, v);
        return RuntimeError(0, {});
    } catch (const RuntimeError& e) {
        m_lastError = e;
        if (m_hooks.error)
            m_hooks.error(e);
        return e;
    }
}

int SqlGridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size()) + (m_newRows ? 1 : 0);
}

int SqlGridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_columns.size());
}

QVariant SqlGridModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    if (role == Qt::DisplayRole)
        return text(index.row(), index.column());
    if (role == Qt::EditRole)
        return editText(index.row(), index.column());
    if (role == Qt::TextAlignmentRole && kindOf(index.column()) != Kind::Text)
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

QVariant SqlGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Vertical)
        return isNewRow(section) ? QVariant(QStringLiteral("*")) : QVariant(section + 1);
    return section < m_captions.size() ? m_captions.at(section) : m_columns.value(section);
}

Qt::ItemFlags SqlGridModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags f = QAbstractTableModel::flags(index);
    const int column = index.column();
    if (m_editable.empty() || (column < int(m_editable.size()) && m_editable[size_t(column)]))
        f |= Qt::ItemIsEditable;
    return f;
}

bool SqlGridModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || role != Qt::EditRole)
        return false;
    return store(index.row(), index.column(), value).number() == 0;
}

} // namespace quillon::editors
