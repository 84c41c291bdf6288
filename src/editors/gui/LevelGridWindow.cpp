#include "editors/gui/LevelGridWindow.h"

#include "editors/LevelEditorTexts.h"
#include "editors/SqlGridModel.h"
#include "editors/gui/EditorButton.h"
#include "editors/gui/GridDelegate.h"
#include "editors/gui/WrappingHeader.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableView>

namespace quillon {

namespace lt = editors::level_text;

LevelGridWindow::LevelGridWindow(
    const QString& formName, const QStringList& buttonNames, QWidget* parent)
    : EditorWindow(formName, parent)
    , m_DBGrid1(new QTableView(this))
    , m_add(editorButton(buttonNames.value(0), lt::add, lt::addHint, this))
    , m_delete(editorButton(buttonNames.value(1), lt::remove, lt::deleteHint, this))
    , m_ok(editorButton(buttonNames.value(2), lt::ok, lt::okHint, this))
    , m_cancel(editorButton(buttonNames.value(3), lt::cancel, lt::cancelHint, this))
{
    m_DBGrid1->setObjectName(QStringLiteral("DBGrid1"));
    m_DBGrid1->setHorizontalHeader(new WrappingHeader(m_DBGrid1));
    m_DBGrid1->setSelectionMode(QAbstractItemView::SingleSelection);
    m_DBGrid1->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
        | QAbstractItemView::AnyKeyPressed);
    m_DBGrid1->verticalHeader()->setDefaultSectionSize(m_DBGrid1->fontMetrics().height() + 8);
    m_DBGrid1->horizontalHeader()->setStretchLastSection(true);
    m_DBGrid1->setAlternatingRowColors(true);
}

void LevelGridWindow::bindGrid(editors::SqlGridModel& levels)
{
    m_levels = &levels;
    m_delegate = new GridDelegate(levels, this);
    m_DBGrid1->setModel(&levels);
    m_DBGrid1->setItemDelegate(m_delegate);
    connect(m_DBGrid1->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] {
        if (!m_moving)
            levelRowChanged();
    });
}

void LevelGridWindow::releaseGrid()
{
    delete m_DBGrid1;
    m_DBGrid1 = nullptr;
}

int LevelGridWindow::gridRow() const
{
    return m_DBGrid1->currentIndex().row();
}

void LevelGridWindow::moveGrid(int row)
{
    m_moving = true;
    if (row >= 0 && row < m_levels->rowCount())
        m_DBGrid1->setCurrentIndex(m_levels->index(row, 0));
    else
        m_DBGrid1->setCurrentIndex({});
    m_moving = false;
}

void LevelGridWindow::commitGridEdit()
{
    m_delegate->commitOpenEditor();
}

void LevelGridWindow::keyCommand(Key key)
{
    switch (key) {
    case Key::OK:
        m_ok->click();
        break;
    case Key::Cancel:
        m_cancel->click();
        break;
    case Key::Escape:
        escapePressed();
        break;
    case Key::AddLevel:
        m_add->click();
        break;
    case Key::DeleteLevel:
        m_delete->click();
        break;
    case Key::AddEvent:
    case Key::DeleteEvent:
        break;
    }
}

QBoxLayout* LevelGridWindow::gridWithButtons() const
{
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_add);
    buttons->addWidget(m_delete);
    buttons->addStretch();
    auto* column = new QVBoxLayout;
    column->addWidget(m_DBGrid1, 1);
    column->addLayout(buttons);
    return column;
}

QBoxLayout* LevelGridWindow::closingButtons() const
{
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(m_ok);
    row->addWidget(m_cancel);
    return row;
}

} // namespace quillon
