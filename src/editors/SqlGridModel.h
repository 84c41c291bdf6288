#pragma once

#include "app/RuntimeError.h"
#include "database/Sql.h"

#include <QAbstractTableModel>
#include <QStringList>

#include <functional>
#include <vector>

namespace quillon::editors {

// The rows of a grid bound to a statement, the editors' record source: it
// reads the statement's rows (with each row's id in its table), shows them
// as the editors show values (dates as date text, numbers as the file writes
// them), and stores an edited cell with a statement on that one row, asking
// the owner first. A grid that takes new rows shows an empty row last; a
// value typed there adds a row with the owner's fixed values.
class SqlGridModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    struct Hooks {
        // Before a cell is stored: may change the value, or refuse it.
        std::function<bool(int column, const QVariant& oldValue, QVariant& value, bool fromList)>
            beforeUpdate;
        // After a cell was stored.
        std::function<void(int column, const QVariant& value)> afterUpdate;
        // The grid's error event: the value could not be stored.
        std::function<void(const RuntimeError& error)> error;
    };

    explicit SqlGridModel(QObject* parent = nullptr);

    // Binds the grid to a statement "SELECT a, b FROM T ..." whose rows come
    // from `table`, and reads its rows.
    void setQuery(const QString& statement, const QString& table);
    // Reads the rows of the statement again.
    void requery();
    const QString& statement() const { return m_statement; }

    // The empty row for new rows, and the values every new row takes.
    void setNewRows(bool allowed, const database::Values& fixed = {});
    bool isNewRow(int row) const { return m_newRows && row == int(m_rows.size()); }
    void setHooks(Hooks hooks) { m_hooks = std::move(hooks); }
    void setCaptions(const QStringList& captions);
    // Columns the user may type in (all, when never set).
    void setEditableColumns(const std::vector<bool>& editable);

    int rowOf(qint64 id) const;
    qint64 rowId(int row) const;
    QVariant value(int row, int column) const;
    // A cell as the grid shows it; "" for the new row or a row out of range.
    QString text(int row, int column) const;
    // The text a cell's editor starts with: dates in the date mask's form.
    QString editText(int row, int column) const;
    bool isDateColumn(int column) const;
    QString columnName(int column) const;

    // Stores a value typed into a cell (or chosen from a list). Returns the
    // failure; the owner's error hook has been told of it.
    RuntimeError store(int row, int column, const QVariant& typed, bool fromList = false);
    // The failure of the last store that failed.
    const RuntimeError& lastError() const { return m_lastError; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(
        int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

private:
    enum class Kind { Text, Integer, Real, Date };
    Kind kindOf(int column) const;
    QVariant converted(int column, const QVariant& typed) const;
    void readRows();

    QString m_statement;
    QString m_table;
    QStringList m_columns;
    std::vector<Kind> m_kinds;
    std::vector<qint64> m_ids;
    std::vector<std::vector<QVariant>> m_rows;
    QStringList m_captions;
    std::vector<bool> m_editable;
    bool m_newRows = false;
    database::Values m_fixed;
    Hooks m_hooks;
    RuntimeError m_lastError { 0, {} };
};

// The format of the date column's editor: the editors' date format with day
// and month in two digits, so that an input mask fits it ("MM/dd/yyyy").
QString dateEditFormat();
// The input mask of that format ("99/99/9999").
QString dateInputMask();

} // namespace quillon::editors
