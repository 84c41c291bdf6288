#include "editors/gui/EditorGrid.h"

#include "editors/gui/GridDelegate.h"
#include "editors/gui/WrappingHeader.h"

#include <QHeaderView>
#include <QScopedValueRollback>

#include <algorithm>

namespace quillon {

EditorGrid::EditorGrid(const QString& name, QWidget* parent)
    : QTableView(parent)
    , m_cells(new GridDelegate(m_records, this))
{
    setObjectName(name);
    setModel(&m_records);
    setItemDelegate(m_cells);
    setHorizontalHeader(new WrappingHeader(this));
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
        | QAbstractItemView::AnyKeyPressed);
    setAlternatingRowColors(true);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this,
        [this](const QModelIndex& current) {
            if (current.isValid())
                m_column = current.column();
        });
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this,
        [this](const QModelIndex& current) {
            if (!m_moving && current.isValid())
                emit rowMoved();
        });
}

void EditorGrid::setHooks(editors::SqlGridModel::Hooks hooks)
{
    if (hooks.error) {
        hooks.error = [this, error = hooks.error](const RuntimeError& e) {
            if (!m_committing)
                error(e);
        };
    }
    m_records.setHooks(std::move(hooks));
}

void EditorGrid::moveTo(int row)
{
    QScopedValueRollback<bool> moving(m_moving, true);
    const int rows = m_records.rowCount();
    if (rows == 0)
        return;
    setCurrentIndex(m_records.index(std::clamp(row, 0, rows - 1), m_column));
}

void EditorGrid::bind(const QString& statement, const QString& table, editors::LevelRow row)
{
    const qint64 stoodOn = currentId();
    const int index = currentIndex().row();
    {
        QScopedValueRollback<bool> moving(m_moving, true);
        m_records.setQuery(statement, table);
    }
    switch (row) {
    case editors::LevelRow::First:
        moveTo(0);
        break;
    case editors::LevelRow::Last:
        goToLastRow();
        break;
    case editors::LevelRow::Same:
        // The row by its id, which a new number doesn't change; a row that
        // went gives way to the one that took its place.
        moveTo(m_records.rowOf(stoodOn) >= 0 ? m_records.rowOf(stoodOn) : index);
        break;
    }
}

QString EditorGrid::currentText(int column) const
{
    return m_records.text(currentIndex().row(), column);
}

QVariant EditorGrid::currentValue(int column) const
{
    return m_records.value(currentIndex().row(), column);
}

qint64 EditorGrid::currentId() const
{
    return m_records.rowId(currentIndex().row());
}

void EditorGrid::goToId(qint64 id)
{
    moveTo(id == 0 ? 0 : std::max(0, m_records.rowOf(id)));
}

void EditorGrid::goToLastRow()
{
    // The empty row for new rows is not a row of the table.
    const int rows = m_records.rowCount();
    moveTo(m_records.isNewRow(rows - 1) ? rows - 2 : rows - 1);
}

RuntimeError EditorGrid::commitEdit()
{
    QScopedValueRollback<bool> committing(m_committing, true);
    if (m_cells->commitOpenEditor())
        return RuntimeError(0, {});
    return RuntimeError(err::RowNotStored, m_records.lastError().text());
}

void EditorGrid::setCaptions(const QStringList& captions)
{
    m_records.setCaptions(captions);
    for (int column = 0; column < m_records.columnCount(); ++column)
        setColumnHidden(column, column >= captions.size());
    resizeColumnsToContents();
}

} // namespace quillon
