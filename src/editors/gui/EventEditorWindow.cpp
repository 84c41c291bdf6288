#include "editors/gui/EventEditorWindow.h"

#include "editors/EditorTexts.h"
#include "editors/gui/EditorButton.h"
#include "editors/gui/GridDelegate.h"
#include "editors/gui/LevelPageWidget.h"
#include "editors/gui/WrappingHeader.h"

#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include <map>

namespace quillon {

using namespace editors;

namespace {

// Raises a flag for as long as it lives: a programmatic move of a grid, or
// a commit a routine asked for.
class ScopedFlag {
public:
    explicit ScopedFlag(bool& flag)
        : m_flag(flag)
        , m_was(flag)
    {
        m_flag = true;
    }
    ~ScopedFlag() { m_flag = m_was; }

private:
    bool& m_flag;
    bool m_was;
};

QTableView* grid(const QString& name, QWidget* parent)
{
    auto* view = new QTableView(parent);
    view->setObjectName(name);
    view->setHorizontalHeader(new WrappingHeader(view));
    view->setSelectionMode(QAbstractItemView::SingleSelection);
    view->setSelectionBehavior(QAbstractItemView::SelectItems);
    view->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
        | QAbstractItemView::AnyKeyPressed);
    view->verticalHeader()->setDefaultSectionSize(view->fontMetrics().height() + 8);
    view->setAlternatingRowColors(true);
    return view;
}

} // namespace

EventEditorWindow::EventEditorWindow(const EventMember& member, QWidget* parent)
    : EditorWindow(member.formName, parent)
    , m_editor(member, *this)
    , m_DBGrid1(grid(member.controls.levelGrid, this))
    , m_DBGrid2(grid(member.controls.eventGrid, this))
    , m_levelDelegate(new GridDelegate(m_levels, this))
    , m_eventDelegate(new GridDelegate(m_events, this))
    , m_lblHeading(new QLabel(member.heading, this))
    , m_LblLevelNumber(new QLabel(this))
    , m_lblManagement(new QLabel(tr("Management"), this))
    , m_DBComboManagement(new QComboBox(this))
    , m_lblYear(new QLabel(tr("Year"), this))
    , m_ComboYear(new QComboBox(this))
    , m_txtYear(new QLineEdit(this))
    , m_cmdAdd1(editorButton(member.controls.addLevel, tr("Add"),
          tr("Add a level, a copy of the selected one (Ctrl+A)"), this))
    , m_cmdDelete1(editorButton(member.controls.deleteLevel, tr("Delete"),
          tr("Delete the selected level (Ctrl+D)"), this))
    , m_cmdAdd2(editorButton(member.controls.addEvent, tr("Add Application"),
          tr("Add a copy of the selected application (Ctrl+P)"), this))
    , m_cmdDelete2(editorButton(member.controls.deleteEvent, tr("Delete Application"),
          tr("Delete the selected application (Ctrl+L)"), this))
    , m_cmdOK(editorButton(QStringLiteral("cmdOK"), tr("OK"),
          tr("Keep the changes and close (Enter or Ctrl+O)"), this))
    , m_cmdCancel(editorButton(QStringLiteral("cmdCancel"), tr("Cancel"),
          tr("Drop the changes and close (Esc or Ctrl+N)"), this))
{
    m_DBComboManagement->setObjectName(QStringLiteral("DBComboManagement"));
    m_ComboYear->setObjectName(QStringLiteral("ComboYear"));
    m_txtYear->setObjectName(QStringLiteral("txtYear"));
    m_LblLevelNumber->setObjectName(QStringLiteral("LblLevelNumber"));
    m_DBGrid1->setModel(&m_levels);
    m_DBGrid2->setModel(&m_events);
    m_DBGrid1->setItemDelegate(m_levelDelegate);
    m_DBGrid2->setItemDelegate(m_eventDelegate);
    m_levelDelegate->setMaxLength(1, text::levelNameLength);
    m_levels.setHooks(m_editor.levelGridHooks());
    SqlGridModel::Hooks events = m_editor.eventGridHooks();
    const auto gridError = events.error;
    events.error = [this, gridError](const RuntimeError& e) {
        if (!m_committing)
            gridError(e);
    };
    m_events.setHooks(events);
    for (int i = 0; i < int(member.grid.size()); ++i)
        m_eventDelegate->setListColumn(i + 1, member.grid[size_t(i)].entry == Entry::List);
    for (int list = 0; list < int(member.lists.size()); ++list) {
        // A list opens over the grid without taking the keyboard from it,
        // so that the arrow keys go on moving from cell to cell; F4 hands
        // the keyboard to it.
        auto* popup = new QListWidget(this);
        popup->setObjectName(member.lists[size_t(list)].control);
        popup->setFrameShape(QFrame::Box);
        popup->hide();
        popup->installEventFilter(this);
        m_lists.push_back(popup);
    }
    if (member.listFrom(ListSource::CropStages) >= 0) {
        m_lblCrop = new QLabel(tr("Crop"), this);
        m_ComboCrop = new QComboBox(this);
        m_ComboCrop->setObjectName(QStringLiteral("ComboCrop"));
        m_ComboCrop->setToolTip(tr("Crops defined in the Cultivar/crop section."));
        m_ComboCrop->setMinimumWidth(160);
    }
    if (!member.levelPage.empty())
        m_levelPage = new LevelPageWidget(
            member.levelPage,
            [this](int field, const QString& text) {
                return m_editor.LevelPage_Validate(field, text);
            },
            [this](int field, const QString& description) {
                m_editor.LevelPage_Click(field, description);
            },
            this);
    buildLayout();
    connectWidgets();
}

EventEditorWindow::~EventEditorWindow() = default;

void EventEditorWindow::buildLayout()
{
    const EventMember& member = m_editor.member();
    QFont bold = m_lblHeading->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.2);
    m_lblHeading->setFont(bold);
    QFont levelFont = m_LblLevelNumber->font();
    levelFont.setBold(true);
    m_LblLevelNumber->setFont(levelFont);

    m_DBGrid1->setMinimumSize(380, 150);
    m_DBGrid1->horizontalHeader()->setStretchLastSection(true);
    m_DBGrid2->setMinimumHeight(200);
    m_txtYear->setReadOnly(true);
    m_txtYear->setMaximumWidth(60);
    m_ComboYear->setMinimumWidth(80);
    m_DBComboManagement->setMinimumWidth(220);
    m_ComboYear->setToolTip(
        tr("Available years.  Weather stations are selected in Fields section."));
    m_DBComboManagement->setToolTip(
        tr("Be sure that selected management is consistent with Simulation/Management section."));
    m_lblManagement->setVisible(member.hasManagement());
    m_DBComboManagement->setVisible(member.hasManagement());

    auto* levelButtons = new QHBoxLayout;
    levelButtons->addWidget(m_cmdAdd1);
    levelButtons->addWidget(m_cmdDelete1);
    levelButtons->addStretch();
    auto* levels = new QVBoxLayout;
    levels->addWidget(m_DBGrid1);
    levels->addLayout(levelButtons);

    auto* details = new QGridLayout;
    details->addWidget(m_LblLevelNumber, 0, 0, 1, 3);
    details->addWidget(m_lblManagement, 1, 0);
    details->addWidget(m_DBComboManagement, 1, 1, 1, 2);
    details->addWidget(m_lblYear, 2, 0);
    details->addWidget(m_ComboYear, 2, 1);
    details->addWidget(m_txtYear, 2, 2);
    int row = 3;
    if (m_ComboCrop) {
        details->addWidget(m_lblCrop, row, 0);
        details->addWidget(m_ComboCrop, row++, 1, 1, 2);
    }
    if (m_levelPage)
        details->addWidget(m_levelPage, row++, 0, 1, 4);
    details->setColumnStretch(3, 1);
    details->setRowStretch(row, 1);

    auto* top = new QHBoxLayout;
    top->addLayout(levels, 2);
    top->addSpacing(12);
    top->addLayout(details, 3);

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_cmdAdd2);
    bottom->addWidget(m_cmdDelete2);
    bottom->addStretch();
    bottom->addWidget(m_cmdOK);
    bottom->addWidget(m_cmdCancel);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_lblHeading);
    layout->addLayout(top);
    layout->addWidget(m_DBGrid2, 1);
    layout->addLayout(bottom);
    resize(1120, 600);
}

void EventEditorWindow::connectWidgets()
{
    // The buttons run as their keys do.
    const std::pair<QPushButton*, Key> buttons[] = { { m_cmdAdd1, Key::AddLevel },
        { m_cmdDelete1, Key::DeleteLevel }, { m_cmdAdd2, Key::AddEvent },
        { m_cmdDelete2, Key::DeleteEvent }, { m_cmdOK, Key::OK }, { m_cmdCancel, Key::Cancel } };
    for (const auto& [b, key] : buttons)
        connect(b, &QPushButton::clicked, this, [this, key = key] { keyCommand(key); });
    connect(m_DBComboManagement, &QComboBox::activated, this, [this](int index) {
        m_editor.DBComboManagement_Click(m_DBComboManagement->itemText(index));
    });
    if (m_ComboCrop)
        connect(m_ComboCrop, &QComboBox::currentTextChanged, this,
            [this](const QString& crop) { m_editor.ComboCrop_Change(crop); });
    connect(m_DBGrid1->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] {
        if (!m_moving)
            m_editor.DBGrid1_RowColChange();
    });
    connect(m_DBGrid2->selectionModel(), &QItemSelectionModel::currentChanged, this,
        [this](const QModelIndex& current, const QModelIndex& previous) {
            if (!m_moving && current.isValid())
                m_editor.DBGrid2_RowColChange(current.column(), current.row() != previous.row());
        });
    // A click on a list cell that is already current is its button.
    connect(m_DBGrid2, &QTableView::pressed, this, [this](const QModelIndex& index) {
        if (isListColumn(index.column()) && index == m_DBGrid2->currentIndex()
            && m_lists.size() > 0) {
            bool shown = false;
            for (QListWidget* list : m_lists)
                shown = shown || list->isVisible();
            if (!shown)
                m_editor.DBGrid2_ButtonClick(index.column());
        }
    });
    for (int list = 0; list < int(m_lists.size()); ++list) {
        QListWidget* popup = m_lists[size_t(list)];
        const auto choose = [this, list](QListWidgetItem* item) {
            if (item)
                m_editor.ListDescription_Click(list, item->text());
        };
        connect(popup, &QListWidget::itemClicked, this, choose);
        connect(popup, &QListWidget::itemActivated, this, choose);
    }
    m_DBGrid1->installEventFilter(this);
    m_DBGrid2->installEventFilter(this);
    // A list hides when the keyboard goes anywhere but the grid and the list.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (now == m_DBGrid2 || !isAncestorOf(now))
            return;
        for (QListWidget* list : m_lists) {
            if (list->isVisible() && now != list) {
                hideLists();
                m_editor.ListLostFocus();
            }
        }
    });
}

bool EventEditorWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_DBGrid1 && event->type() == QEvent::FocusIn)
        m_editor.DBGrid1_GotFocus();
    if (watched == m_DBGrid2 && event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        const QModelIndex current = m_DBGrid2->currentIndex();
        if (current.isValid() && isListColumn(current.column())) {
            if (key->key() == Qt::Key_F4
                || (key->key() == Qt::Key_Down && key->modifiers() & Qt::AltModifier)) {
                m_editor.DBGrid2_ButtonClick(current.column());
                for (QListWidget* list : m_lists) {
                    if (list->isVisible())
                        list->setFocus();
                }
                return true;
            }
            // Only a list's choice gets in: typing blanks the cell.
            if (!key->text().isEmpty() && key->text().at(0).isPrint()
                && !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
                m_events.store(current.row(), current.column(), key->text());
                return true;
            }
        }
    }
    if (event->type() == QEvent::ShortcutOverride) {
        // In a list Enter chooses and Esc closes, instead of OK and Cancel.
        const int key = static_cast<QKeyEvent*>(event)->key();
        for (QListWidget* list : m_lists) {
            if (watched == list
                && (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape)) {
                event->accept();
                return true;
            }
        }
    }
    if (event->type() == QEvent::KeyPress
        && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        for (QListWidget* list : m_lists) {
            if (watched == list) {
                hideLists();
                m_editor.ListLostFocus();
                m_DBGrid2->setFocus();
                return true;
            }
        }
    }
    return EditorWindow::eventFilter(watched, event);
}

void EventEditorWindow::keyCommand(Key key)
{
    // A box of the level page is checked before anything else runs; its
    // refusal keeps the focus there.
    using E = EventEditor;
    runKey(key, m_editor,
        { { Key::OK, &E::cmdOK_Click }, { Key::Cancel, &E::cmdCancel_Click },
            { Key::Escape, &E::escapePressed }, { Key::AddLevel, &E::cmdAdd1_Click },
            { Key::DeleteLevel, &E::cmdDelete1_Click }, { Key::AddEvent, &E::cmdAdd2_Click },
            { Key::DeleteEvent, &E::cmdDelete2_Click } },
        [this](void (E::*routine)()) {
            if (!m_levelPage || m_levelPage->settle())
                (m_editor.*routine)();
        });
}

int EventEditorWindow::levelRow() const
{
    return m_DBGrid1->currentIndex().row();
}

int EventEditorWindow::eventRow() const
{
    return m_DBGrid2->currentIndex().row();
}

void EventEditorWindow::setEventRow(int row)
{
    ScopedFlag moving(m_moving);
    const int column = std::max(0, m_DBGrid2->currentIndex().column());
    m_DBGrid2->setCurrentIndex(
        m_events.index(std::clamp(row, 0, std::max(0, m_events.rowCount() - 1)), column));
}

bool EventEditorWindow::isListColumn(int column) const
{
    return m_eventDelegate->isListColumn(column);
}

QString EventEditorWindow::levelCellText() const
{
    return m_levels.text(levelRow(), 0);
}

QString EventEditorWindow::eventCellText(int column) const
{
    return m_events.text(eventRow(), column);
}

qint64 EventEditorWindow::currentEventRow() const
{
    return m_events.rowId(eventRow());
}

RuntimeError EventEditorWindow::commitEventEdit()
{
    ScopedFlag committing(m_committing);
    if (m_eventDelegate->commitOpenEditor())
        return RuntimeError(0, {});
    return RuntimeError(err::RowNotStored, m_events.lastError().text());
}

void EventEditorWindow::showLevels(const QString& statement, LevelRow row)
{
    ScopedFlag moving(m_moving);
    const QVariant level = m_levels.value(levelRow(), 0);
    const int previous = levelRow();
    m_levels.setQuery(statement, m_editor.member().levelTable);
    const int count = m_levels.rowCount();
    int target = row == LevelRow::First ? 0 : row == LevelRow::Last ? count - 1 : previous;
    if (row == LevelRow::Same) {
        for (int i = 0; i < count; ++i) {
            if (m_levels.value(i, 0) == level)
                target = i;
        }
    }
    if (count > 0)
        m_DBGrid1->setCurrentIndex(m_levels.index(std::clamp(target, 0, count - 1), 0));
    m_DBGrid1->setColumnWidth(0, 60);
}

void EventEditorWindow::showEvents(const EventGridSetup& setup)
{
    ScopedFlag moving(m_moving);
    m_eventDelegate->setDateMask(!setup.daysMode);
    m_events.setQuery(setup.statement, QStringLiteral("Applications"));
    m_events.setNewRows(true, { { setup.levelField, setup.level } });
    setEventRow(0);
}

void EventEditorWindow::fitColumns()
{
    m_DBGrid2->resizeColumnsToContents();
    // The date column is as wide as its caption on one line.
    const int dateWidth = m_DBGrid2->fontMetrics().horizontalAdvance(
                              m_events.headerData(0, Qt::Horizontal).toString())
        + 24;
    m_DBGrid2->setColumnWidth(0, std::max(dateWidth, m_DBGrid2->columnWidth(0)));
    // A list column has room for its text and its button.
    for (int column = 1; column < m_events.columnCount(); ++column)
        m_DBGrid2->setColumnWidth(column,
            std::clamp(m_DBGrid2->columnWidth(column) + (isListColumn(column) ? 24 : 0), 96, 264));
}

void EventEditorWindow::refreshEvents()
{
    const qint64 id = currentEventRow();
    {
        ScopedFlag moving(m_moving);
        m_events.requery();
    }
    goToEvent(id);
}

void EventEditorWindow::goToEvent(qint64 row)
{
    setEventRow(row == 0 ? 0 : std::max(0, m_events.rowOf(row)));
}

void EventEditorWindow::goToLastEvent()
{
    setEventRow(m_events.rowCount() - 2);
}

void EventEditorWindow::setEventCell(int column, const QString& text)
{
    const int row = std::max(0, eventRow());
    m_events.store(row, column, text, true);
}

void EventEditorWindow::setLevelCaptions(const QStringList& captions)
{
    m_levels.setCaptions(captions);
}

void EventEditorWindow::setEventCaptions(
    const QStringList& captions, const std::vector<bool>& visible)
{
    m_events.setCaptions(captions);
    for (int column = 0; column < int(visible.size()); ++column)
        m_DBGrid2->setColumnHidden(column, !visible[size_t(column)]);
    fitColumns();
}

void EventEditorWindow::setCaption(const QString& caption)
{
    setWindowTitle(caption);
}

void EventEditorWindow::setLevelNumberText(const QString& text)
{
    m_LblLevelNumber->setText(text);
}

void EventEditorWindow::showYears(const YearControls& years)
{
    m_ComboYear->clear();
    m_ComboYear->addItems(years.years);
    m_ComboYear->setCurrentIndex(years.selected);
    m_ComboYear->setVisible(years.comboVisible);
    m_ComboYear->setEnabled(years.comboEnabled);
    m_txtYear->setText(years.txtYear);
    m_txtYear->setVisible(years.txtYearVisible);
    m_lblYear->setVisible(years.comboVisible || years.txtYearVisible);
}

void EventEditorWindow::setManagementChoices(const QStringList& descriptions)
{
    QSignalBlocker blocker(m_DBComboManagement);
    const QString shown = m_DBComboManagement->currentText();
    m_DBComboManagement->clear();
    m_DBComboManagement->addItems(descriptions);
    m_DBComboManagement->setCurrentIndex(descriptions.indexOf(shown));
}

void EventEditorWindow::showManagement(const QString& description)
{
    QSignalBlocker blocker(m_DBComboManagement);
    m_DBComboManagement->setCurrentIndex(m_DBComboManagement->findText(description));
}

void EventEditorWindow::setListItems(int list, const QStringList& items)
{
    if (list < 0 || list >= int(m_lists.size()))
        return;
    m_lists[size_t(list)]->clear();
    m_lists[size_t(list)]->addItems(items);
}

void EventEditorWindow::showList(int list, const QString& selected)
{
    hideLists();
    if (list < 0 || list >= int(m_lists.size()))
        return;
    QListWidget* popup = m_lists[size_t(list)];
    const QRect cell = m_DBGrid2->visualRect(m_DBGrid2->currentIndex());
    const QPoint below = m_DBGrid2->viewport()->mapTo(this, cell.bottomLeft());
    const int width = std::min(std::max(cell.width(), popup->sizeHintForColumn(0) + 32), 480);
    const int height = 220;
    // Under the cell, or over it when the window ends first.
    const int y = below.y() + height <= this->height()
        ? below.y()
        : std::max(0, below.y() - cell.height() - height);
    popup->setGeometry(std::min(below.x(), std::max(0, this->width() - width)), y, width, height);
    const QList<QListWidgetItem*> found = popup->findItems(selected, Qt::MatchExactly);
    popup->setCurrentItem(found.isEmpty() ? nullptr : found.first());
    if (!found.isEmpty())
        popup->scrollToItem(found.first());
    popup->show();
    popup->raise();
}

void EventEditorWindow::hideLists()
{
    for (QListWidget* list : m_lists) {
        QSignalBlocker blocker(list);
        list->hide();
    }
}

void EventEditorWindow::setCrops(const QStringList& crops)
{
    if (!m_ComboCrop)
        return;
    QSignalBlocker blocker(m_ComboCrop);
    m_ComboCrop->clear();
    m_ComboCrop->addItems(crops);
}

void EventEditorWindow::setLevelPageChoices(int field, const QStringList& descriptions)
{
    if (m_levelPage)
        m_levelPage->setChoices(field, descriptions);
}

void EventEditorWindow::showLevelPage(const QStringList& texts)
{
    if (m_levelPage)
        m_levelPage->showTexts(texts);
}

void EventEditorWindow::setDeleteEnabled(bool levelButton, bool eventButton)
{
    m_cmdDelete1->setEnabled(levelButton);
    m_cmdDelete2->setEnabled(eventButton);
}

} // namespace quillon
