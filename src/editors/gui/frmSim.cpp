#include "editors/gui/frmSim.h"

#include "app/gui/FocusValidation.h"
#include "editors/EditorTexts.h"
#include "editors/SimTexts.h"
#include "editors/gui/GridDelegate.h"
#include "format/DateCodes.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QComboBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>

namespace quillon {

using namespace editors;
namespace st = sim_text;

namespace {

// The pages of TabRTF and TabRTF2 and the tables whose fields they hold.
struct Page {
    const char* table;
    const QString& caption;
};

const Page firstStrip[] = {
    { "SimulationControl", st::general },
    { "SimulationControlOptions", st::options },
    { "SimulationControlMethods", st::methods },
    { "SimulationControlManagement", st::management },
    { "SimulationControlOutputs", st::outputs },
};

const Page secondStrip[] = {
    { "AutoManagementPlanting", st::planting },
    { "AutoManagementIrrigation", st::irrigation },
    { "AutoManagementNitrogen", st::nitrogen },
    { "AutoManagementResidues", st::residue },
    { "AutoManagementHarvest", st::harvest },
};

// The columns of the forecast dates' header that the file never carries:
// shown for what they are, not kept anywhere.
const char* const unkeptForecastLabels[]
    = { "End of Simulation Date", "Maximum Duration of  One Season (Days)", "Ensemble Start Year",
          "Ensemble Last Year", "Forecast Weather File" };

bool isDateBox(const QString& control)
{
    const SimField* field = simField(control);
    return field && (field->kind == SimKind::Date || field->kind == SimKind::LongDate);
}

QLabel* caution(const QString& text, const char* name, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setObjectName(QLatin1String(name));
    label->setWordWrap(true);
    QFont font = label->font();
    font.setItalic(true);
    label->setFont(font);
    return label;
}

// The index of a control of an array, "DBCombo4(2)" giving 2, and whether it
// belongs to that array.
int arrayIndex(const QString& control, const char* array)
{
    const QString prefix = QLatin1String(array) + QLatin1Char('(');
    if (!control.startsWith(prefix))
        return -1;
    return control.mid(prefix.size()).chopped(1).toInt();
}

} // namespace

frmSim::frmSim(Tab first, QWidget* parent)
    : EditorWindow(QStringLiteral("frmSim"), parent)
    , m_validation(new FocusValidation(this))
    , m_firstTab(first)
{
    m_DBGrid1 = new QTableView(this);
    m_DBGrid1->setObjectName(QStringLiteral("DBGrid1"));
    m_DBGrid1->setModel(&m_editor.Data1());
    m_levelDelegate = new GridDelegate(m_editor.Data1(), m_DBGrid1);
    m_levelDelegate->setMaxLength(1, SimEditor::titleLength);
    m_DBGrid1->setItemDelegate(m_levelDelegate);
    m_DBGrid1->setSelectionMode(QAbstractItemView::SingleSelection);
    m_DBGrid1->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
        | QAbstractItemView::AnyKeyPressed);
    m_DBGrid1->horizontalHeader()->setStretchLastSection(true);
    m_DBGrid1->verticalHeader()->hide();
    m_DBGrid1->verticalHeader()->setDefaultSectionSize(m_DBGrid1->fontMetrics().height() + 8);
    m_DBGrid1->setMinimumWidth(260);
    connect(m_DBGrid1->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
        &frmSim::levelChanged);

    m_TabRTF = new QTabWidget(this);
    m_TabRTF->setObjectName(QStringLiteral("TabRTF"));
    for (const Page& page : firstStrip) {
        const QString table = QLatin1String(page.table);
        QWidget* widget = table == QLatin1String("SimulationControlManagement")
            ? buildManagementPage()
            : buildPage(table);
        m_TabRTF->addTab(widget, page.caption);
    }
    m_forecastPage = buildForecastPage();
    m_forecastPage->hide();

    // The buttons: Add and Delete under the level list, OK and Cancel below.
    // Cancel drops whatever a box holds; the others wait for its check.
    auto* levelButtons = new QHBoxLayout;
    auto* bottom = new QHBoxLayout;
    bottom->addStretch();
    const struct {
        const char* name;
        QString caption;
        QString hint;
        void (SimEditor::*routine)();
        bool checked;
        QHBoxLayout* row;
    } buttons[] = {
        { "CmdAdd", tr("Add"), tr("Add a level, a copy of the selected one (Ctrl+A)"),
            &SimEditor::CmdAdd_Click, true, levelButtons },
        { "CmdRemove", tr("Delete"), tr("Delete the selected level (Ctrl+D)"),
            &SimEditor::CmdRemove_Click, true, levelButtons },
        { "cmdOK", tr("OK"), tr("Keep the changes and close (Enter or Ctrl+O)"),
            &SimEditor::cmdOK_Click, true, bottom },
        { "cmdCancel", tr("Cancel"), tr("Drop the changes and close (Esc or Ctrl+N)"),
            &SimEditor::cmdCancel_Click, false, bottom },
    };
    for (const auto& b : buttons) {
        auto* widget = new QPushButton(b.caption, this);
        widget->setObjectName(QLatin1String(b.name));
        widget->setToolTip(b.hint);
        widget->setAutoDefault(false);
        const auto routine = b.routine;
        if (b.checked)
            connect(widget, &QPushButton::clicked, this, [this, routine] { afterCheck(routine); });
        else
            connect(
                widget, &QPushButton::clicked, this, [this, routine] { (m_editor.*routine)(); });
        b.row->addWidget(widget);
    }
    levelButtons->addStretch();
    auto* levels = new QVBoxLayout;
    levels->addWidget(new QLabel(tr("Levels"), this));
    levels->addWidget(m_DBGrid1, 1);
    levels->addLayout(levelButtons);

    auto* top = new QHBoxLayout;
    top->addLayout(levels, 2);
    top->addWidget(m_TabRTF, 5);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top, 1);
    layout->addLayout(bottom);
    resize(980, 620);
}

frmSim::~frmSim()
{
    // The list goes before the editor whose rows it shows.
    delete m_DBGrid1;
}

void frmSim::addField(const SimField& field, QFormLayout* form)
{
    auto* label = new QLabel(field.label, this);
    m_labels[field.control] = label;
    QWidget* widget = nullptr;
    if (field.kind == SimKind::Code) {
        auto* combo = new QComboBox(this);
        combo->setMinimumWidth(240);
        combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        m_combos[field.control] = combo;
        const QString control = field.control;
        connect(combo, &QComboBox::activated, this, [this, control] {
            if (const int i = arrayIndex(control, "DBCombo1"); i >= 0)
                m_editor.DBCombo1_Click(i);
            if (const int i = arrayIndex(control, "DBCombo4"); i >= 0)
                m_editor.DBCombo4_Change(i);
        });
        widget = combo;
    } else {
        auto* box = new QLineEdit(this);
        if (isDateBox(field.control)) {
            box->setInputMask(dateInputMask());
            box->setMaximumWidth(120);
        } else if (field.kind == SimKind::Number) {
            box->setMaximumWidth(120);
        }
        if (field.maxLength > 0)
            box->setMaxLength(field.maxLength);
        m_boxes[field.control] = box;
        const QString control = field.control;
        m_validation->watch(box, [this, box, control] {
            const bool passed = m_editor.Validate(control);
            m_refused = passed ? nullptr : box;
            return passed;
        });
        widget = box;
    }
    widget->setObjectName(field.control);
    label->setBuddy(widget);
    form->addRow(label, widget);
}

QWidget* frmSim::buildPage(const QString& table)
{
    auto* page = new QWidget(this);
    auto* form = new QFormLayout;
    for (const SimField& f : simFields()) {
        if (f.table != table)
            continue;
        addField(f, form);
        if (f.control == QLatin1String("DBCombo1(0)")) {
            // Where the weather method is chosen.
            m_combos[f.control]->setToolTip(st::weatherCaution);
            form->addRow(caution(st::weatherCaution, "lblWeatherCaution", page));
        }
    }
    auto* layout = new QHBoxLayout(page);
    layout->addLayout(form, 1);
    if (table == QLatin1String("SimulationControl")) {
        auto* side = new QVBoxLayout;
        m_List1 = new QListWidget(page);
        m_List1->setObjectName(QStringLiteral("List1"));
        m_List1->setMaximumWidth(140);
        m_List1->setToolTip(
            tr("Available years.  Weather stations are selected in Fields section."));
        side->addWidget(new QLabel(tr("Available years"), page));
        side->addWidget(m_List1, 1);
        m_picture1 = new QLabel(page);
        m_picture1->hide();
        side->addWidget(m_picture1);
        layout->addLayout(side);
    }
    return page;
}

QWidget* frmSim::buildManagementPage()
{
    auto* page = new QWidget(this);
    auto* form = new QFormLayout;
    for (const SimField& f : simFields()) {
        if (f.table == QLatin1String("SimulationControlManagement")) {
            addField(f, form);
            m_combos[f.control]->setToolTip(st::managementCaution);
        }
    }
    form->addRow(caution(st::managementCaution, "lblManagementCaution", page));
    m_TabRTF2 = new QTabWidget(page);
    m_TabRTF2->setObjectName(QStringLiteral("TabRTF2"));
    for (const Page& strip : secondStrip)
        m_TabRTF2->addTab(buildPage(QLatin1String(strip.table)), strip.caption);
    m_picture2 = new QLabel(page);
    m_picture2->hide();
    auto* layout = new QVBoxLayout(page);
    layout->addLayout(form);
    layout->addWidget(new QLabel(tr("Automatic management"), page));
    layout->addWidget(m_TabRTF2, 1);
    layout->addWidget(m_picture2);
    return page;
}

QWidget* frmSim::buildForecastPage()
{
    QWidget* page = buildPage(QStringLiteral("AutoManagementSimdates"));
    auto* form = static_cast<QFormLayout*>(page->layout()->itemAt(0)->layout());
    for (const char* caption : unkeptForecastLabels) {
        auto* box = new QLineEdit(page);
        box->setEnabled(false);
        box->setToolTip(tr("Not kept in the experiment file."));
        form->addRow(new QLabel(QLatin1String(caption), page), box);
    }
    return page;
}

void frmSim::Form_Load()
{
    m_editor.Form_Load();
    m_DBGrid1->resizeColumnToContents(0);
    const int first = static_cast<int>(m_firstTab);
    m_TabRTF->setCurrentIndex(first);
}

void frmSim::levelChanged()
{
    if (m_moving)
        return;
    // A box that refused its text keeps the focus, and the list stays on
    // the level the page shows.
    if (m_refused && m_refused->hasFocus()) {
        const std::optional<int> shown = m_editor.shownLevel();
        for (int row = 0; shown && row < m_editor.Data1().rowCount(); ++row) {
            if (m_editor.Data1().value(row, 0).toInt() == *shown)
                goToLevelRow(row);
        }
        return;
    }
    m_editor.DBGrid1_RowColChange();
}

void frmSim::afterCheck(void (SimEditor::*routine)())
{
    if (m_validation->settle())
        (m_editor.*routine)();
}

int frmSim::levelRow() const
{
    return m_DBGrid1->currentIndex().row();
}

void frmSim::goToLevelRow(int row)
{
    const QAbstractItemModel* model = m_DBGrid1->model();
    if (row < 0 || row >= model->rowCount())
        return;
    const bool was = m_moving;
    m_moving = true;
    m_DBGrid1->setCurrentIndex(model->index(row, std::max(0, m_DBGrid1->currentIndex().column())));
    m_moving = was;
}

void frmSim::setCaption(const QString& caption)
{
    setWindowTitle(caption);
}

void frmSim::setForecastTab(bool shown)
{
    const int index = m_TabRTF->indexOf(m_forecastPage);
    if (shown && index < 0) {
        m_TabRTF->addTab(m_forecastPage, st::forecast);
    } else if (!shown && index >= 0) {
        m_TabRTF->removeTab(index);
        m_forecastPage->hide();
    }
}

void frmSim::showPictures(const QString& first, const QString& second)
{
    for (auto [label, path] :
        { std::pair { m_picture1, first }, std::pair { m_picture2, second } }) {
        label->setVisible(!path.isEmpty());
        if (!path.isEmpty())
            label->setPixmap(QPixmap(path).scaledToWidth(140, Qt::SmoothTransformation));
    }
}

void frmSim::setYears(const QStringList& years)
{
    m_List1->clear();
    m_List1->addItems(years);
}

void frmSim::setChoices(const QString& combo, const std::vector<CodeChoice>& choices)
{
    QComboBox* box = m_combos.at(combo);
    QSignalBlocker blocker(box);
    box->clear();
    for (const CodeChoice& choice : choices)
        box->addItem(choice.text, choice.code);
    box->setCurrentIndex(-1);
}

void frmSim::showCode(const QString& combo, const QString& code)
{
    QComboBox* box = m_combos.at(combo);
    QSignalBlocker blocker(box);
    int index = box->findData(code);
    for (int i = 0; index < 0 && i < box->count(); ++i) {
        if (box->itemData(i).toString().compare(code, Qt::CaseInsensitive) == 0)
            index = i;
    }
    // A code the list lacks shows as it stands, so that nothing is lost.
    if (index < 0 && !code.isEmpty()) {
        box->addItem(code, code);
        index = box->count() - 1;
    }
    box->setCurrentIndex(index);
}

QString frmSim::code(const QString& combo) const
{
    const QComboBox* box = m_combos.at(combo);
    return box->currentIndex() < 0 ? QString() : box->currentData().toString();
}

void frmSim::setText(const QString& box, const QString& text)
{
    QLineEdit* edit = m_boxes.at(box);
    if (isDateBox(box)) {
        // The mask wants two-digit days and months.
        const QDate date = format::toDate(text);
        edit->setText(date.isValid() ? date.toString(dateEditFormat()) : QString());
    } else {
        edit->setText(text);
    }
    edit->setCursorPosition(0);
}

QString frmSim::text(const QString& box) const
{
    const QLineEdit* edit = m_boxes.at(box);
    if (!isDateBox(box))
        return edit->text();
    // An empty masked box still holds its separators.
    const QString typed = edit->text();
    if (!typed.contains(QRegularExpression(QStringLiteral("\\d"))))
        return QString();
    const QDate date = QDate::fromString(typed, dateEditFormat());
    return date.isValid() ? format::dateText(date) : typed;
}

void frmSim::setFieldEnabled(const QString& control, bool enabled)
{
    if (const auto box = m_boxes.find(control); box != m_boxes.end())
        box->second->setEnabled(enabled);
    if (const auto combo = m_combos.find(control); combo != m_combos.end())
        combo->second->setEnabled(enabled);
    if (const auto label = m_labels.find(control); label != m_labels.end())
        label->second->setEnabled(enabled);
}

void frmSim::closeWindow()
{
    closeFromEditor();
}

void frmSim::keyCommand(Key key)
{
    using E = editors::SimEditor;
    runKey(key, m_editor,
        { { Key::OK, &E::cmdOK_Click }, { Key::Cancel, &E::cmdCancel_Click },
            { Key::Escape, &E::escapePressed }, { Key::AddLevel, &E::CmdAdd_Click },
            { Key::DeleteLevel, &E::CmdRemove_Click } },
        [this](void (E::*routine)()) { afterCheck(routine); });
}

void frmSim::unload()
{
    m_editor.Form_Unload();
}

void frmSim::closeEvent(QCloseEvent* event)
{
    // The frame's close button warns that the changes will go; any other
    // close (another editor opening, Save) keeps them.
    if (m_frameGesture && !m_editor.Form_QueryUnload()) {
        event->ignore();
        return;
    }
    EditorWindow::closeEvent(event);
}

void frmSim::showEvent(QShowEvent* event)
{
    if (auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget()))
        frame->installEventFilter(this);
    EditorWindow::showEvent(event);
}

bool frmSim::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parentWidget()
        && (event->type() == QEvent::MouseButtonRelease
            || event->type() == QEvent::MouseButtonDblClick)) {
        // The frame acts on the gesture while it handles it; the mark goes
        // when the event loop next turns.
        m_frameGesture = true;
        QTimer::singleShot(0, this, [this] { m_frameGesture = false; });
    }
    return EditorWindow::eventFilter(watched, event);
}

} // namespace quillon
