#include "editors/gui/frmViewTreatments.h"

#include "editors/TreatmentTexts.h"
#include "editors/gui/DropDownList.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTableView>

#include <algorithm>

namespace quillon {

namespace tt = editors::treatment_text;

namespace {

// The columns from which List1 opens to the left of the cell's right edge,
// so that it stays inside the window.
constexpr int firstRightColumn = 12;

// A cell's typing goes to the editor's typing rules, and only when the user
// changed the text: leaving a cell untouched changes nothing. The
// description takes no more than its width.
class TreatmentCellDelegate final : public QStyledItemDelegate {
public:
    TreatmentCellDelegate(editors::TreatmentEditor& editor, QObject* parent)
        : QStyledItemDelegate(parent)
        , m_editor(editor)
    {
    }

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override
    {
        QWidget* widget = QStyledItemDelegate::createEditor(parent, option, index);
        auto* line = qobject_cast<QLineEdit*>(widget);
        if (line && m_editor.DatTreatment().columnName(index.column()) == QLatin1String("TITLET"))
            line->setMaxLength(editors::TreatmentEditor::titleLength);
        return widget;
    }

    void setModelData(QWidget* widget, QAbstractItemModel*, const QModelIndex& index) const override
    {
        auto* line = qobject_cast<QLineEdit*>(widget);
        if (line && line->isModified())
            m_editor.DBGrdTreatment_Change(index.row(), index.column(), line->text());
    }

private:
    editors::TreatmentEditor& m_editor;
};

} // namespace

// DBGrdTreatment: a table that can store the cell being typed in on demand
// and tells a click on its current cell (the cell's button) from a click
// that moves it.
class TreatmentGrid final : public QTableView {
public:
    using QTableView::QTableView;

    void commitCurrentEdit()
    {
        if (state() != EditingState)
            return;
        if (QWidget* editor = indexWidget(currentIndex())) {
            commitData(editor);
            closeEditor(editor, QAbstractItemDelegate::NoHint);
        }
    }

    bool pressedOnCurrent() const { return m_pressedOnCurrent; }

protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        m_pressedOnCurrent = indexAt(event->position().toPoint()) == currentIndex();
        QTableView::mousePressEvent(event);
    }

private:
    bool m_pressedOnCurrent = false;
};

frmViewTreatments::frmViewTreatments(QWidget* parent)
    : EditorWindow(QStringLiteral("frmViewTreatments"), parent)
{
    m_grid = new TreatmentGrid(this);
    m_grid->setObjectName(QStringLiteral("DBGrdTreatment"));
    m_grid->setModel(&m_editor.DatTreatment());
    m_grid->setItemDelegate(new TreatmentCellDelegate(m_editor, m_grid));
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
        | QAbstractItemView::AnyKeyPressed);
    m_grid->horizontalHeader()->setDefaultAlignment(Qt::AlignCenter);
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentChanged, this,
        &frmViewTreatments::cellChanged);
    connect(m_grid, &QAbstractItemView::clicked, this, [this] {
        if (m_grid->pressedOnCurrent())
            m_editor.DBGrdTreatment_ButtonClick();
    });
    // ColumnNames follows every reading of the rows.
    connect(&m_editor.DatTreatment(), &QAbstractItemModel::headerDataChanged, this,
        &frmViewTreatments::fitColumns);

    m_list = new DropDownList(this);
    m_list->setObjectName(QStringLiteral("List1"));
    m_list->onChosen = [this](const QString& entry) { m_editor.List1_Click(entry); };
    m_list->onHidden = [this] { m_editor.List1_Hidden(); };

    auto button = [this](const QString& name, const QString& text, const QString& hint,
                      void (editors::TreatmentEditor::*routine)()) {
        auto* b = new QPushButton(text, this);
        b->setObjectName(name);
        b->setToolTip(hint);
        b->setAutoDefault(false);
        b->setEnabled(false);
        connect(b, &QPushButton::clicked, this, [this, routine] { (m_editor.*routine)(); });
        return b;
    };
    m_add = button(
        QStringLiteral("CmdAdd"), tt::add, tt::addHint, &editors::TreatmentEditor::cmdAdd_Click);
    m_delete = button(QStringLiteral("cmdDelete"), tt::remove, tt::deleteHint,
        &editors::TreatmentEditor::cmdDelete);
    m_save = button(QStringLiteral("cmdSave"), tt::save, tt::saveHint,
        &editors::TreatmentEditor::cmdSave_Click);
    m_cancel = button(QStringLiteral("Command1"), tt::cancel, tt::cancelHint,
        &editors::TreatmentEditor::Command1_Click);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(tt::selectLevelHint, this));
    layout->addWidget(m_grid, 1);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(new QLabel(tt::moreDetailsHint, this), 1);
    for (QPushButton* b : { m_add, m_delete, m_save, m_cancel })
        bottom->addWidget(b);
    layout->addLayout(bottom);
}

frmViewTreatments::~frmViewTreatments()
{
    // The grid and the list go before the editor whose rows and routines
    // they use.
    m_list->onHidden = {};
    m_list->onChosen = {};
    delete m_grid;
}

void frmViewTreatments::Form_Load()
{
    m_editor.Form_Load();
    // Wide enough for every column; the main window's frame bounds it.
    int width = m_grid->verticalHeader()->sizeHint().width() + 2 * m_grid->frameWidth()
        + m_grid->verticalScrollBar()->sizeHint().width();
    for (int column = 0; column < m_editor.DatTreatment().columnCount(); ++column)
        width += m_grid->columnWidth(column);
    const QMargins margins = layout()->contentsMargins();
    width += margins.left() + margins.right();
    // Tall enough for every row and the new one.
    const int rows = m_editor.DatTreatment().rowCount() + 1;
    const int height = sizeHint().height() - m_grid->sizeHint().height()
        + m_grid->horizontalHeader()->sizeHint().height()
        + rows * m_grid->verticalHeader()->defaultSectionSize() + 2 * m_grid->frameWidth()
        + m_grid->horizontalScrollBar()->sizeHint().height();
    resize(std::max(width, sizeHint().width()), std::max(420, height));
}

// Every column as wide as its caption and its values; the description as
// wide as its longest possible text.
void frmViewTreatments::fitColumns()
{
    m_grid->resizeColumnsToContents();
    const editors::SqlGridModel& model = m_editor.DatTreatment();
    const int wide = fontMetrics().averageCharWidth() * editors::TreatmentEditor::titleLength;
    for (int column = 0; column < model.columnCount(); ++column) {
        if (model.columnName(column) == QLatin1String("TITLET"))
            m_grid->setColumnWidth(column, std::max(m_grid->columnWidth(column), wide));
    }
}

void frmViewTreatments::cellChanged(const QModelIndex& current, const QModelIndex& previous)
{
    if (m_moving || !current.isValid())
        return;
    m_editor.DBGrdTreatment_RowColChange(current.row() != previous.row());
}

int frmViewTreatments::currentRow() const
{
    const QModelIndex index = m_grid->currentIndex();
    return index.isValid() ? index.row() : -1;
}

int frmViewTreatments::currentColumn() const
{
    return std::max(0, m_grid->currentIndex().column());
}

void frmViewTreatments::commitEdit()
{
    m_grid->commitCurrentEdit();
}

void frmViewTreatments::goToRow(int row)
{
    const QAbstractItemModel& model = m_editor.DatTreatment();
    if (row < 0 || row >= model.rowCount())
        return;
    m_moving = true;
    m_grid->setCurrentIndex(model.index(row, currentColumn()));
    m_moving = false;
}

void frmViewTreatments::setCaption(const QString& caption)
{
    setWindowTitle(caption);
}

void frmViewTreatments::setButtonsEnabled(bool enabled)
{
    for (QPushButton* b : { m_add, m_delete, m_save, m_cancel })
        b->setEnabled(enabled);
}

void frmViewTreatments::showList(const QStringList& items, int selected)
{
    const QModelIndex cell = m_grid->currentIndex();
    m_grid->scrollTo(cell);
    m_list->showUnder(m_grid, cell, items, selected, cell.column() >= firstRightColumn);
}

void frmViewTreatments::hideList()
{
    m_list->hide();
    m_grid->setFocus();
}

void frmViewTreatments::closeWindow()
{
    closeFromEditor();
}

void frmViewTreatments::keyCommand(Key key)
{
    using E = editors::TreatmentEditor;
    runKey(key, m_editor,
        { { Key::OK, &E::cmdSave_Click }, { Key::Cancel, &E::Command1_Click },
            { Key::Escape, &E::escapePressed }, { Key::AddLevel, &E::cmdAdd_Click },
            { Key::DeleteLevel, &E::cmdDelete } },
        [this](void (E::*routine)()) { (m_editor.*routine)(); });
}

void frmViewTreatments::unload()
{
    m_editor.Form_Unload();
}

} // namespace quillon
