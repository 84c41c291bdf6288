#include "editors/gui/frmInitCond.h"

#include "app/gui/FocusValidation.h"
#include "editors/EditorTexts.h"
#include "editors/InitialConditionsTexts.h"
#include "editors/gui/EditorButton.h"
#include "editors/gui/GridDelegate.h"
#include "editors/gui/WrappingHeader.h"
#include "format/DateCodes.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTableView>

#include <algorithm>

namespace quillon {

using namespace editors;
namespace ict = editors::ic_text;

namespace {

QTableView* grid(const char* name, QWidget* parent)
{
    auto* view = new QTableView(parent);
    view->setObjectName(QLatin1String(name));
    view->setHorizontalHeader(new WrappingHeader(view));
    view->setSelectionMode(QAbstractItemView::SingleSelection);
    view->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
        | QAbstractItemView::AnyKeyPressed);
    view->verticalHeader()->setDefaultSectionSize(view->fontMetrics().height() + 8);
    view->setAlternatingRowColors(true);
    return view;
}

QComboBox* combo(const char* name, QWidget* parent)
{
    auto* c = new QComboBox(parent);
    c->setObjectName(QLatin1String(name));
    return c;
}

} // namespace

frmInitCond::frmInitCond(QWidget* parent)
    : EditorWindow(QStringLiteral("frmInitCond"), parent)
    , m_DBGridIC(grid("DBGridIC", this))
    , m_dbgICLayers(grid("dbgICLayers", this))
    , m_levelDelegate(new GridDelegate(m_levels, this))
    , m_layerDelegate(new GridDelegate(m_layers, this))
    , m_validation(new FocusValidation(this))
    , m_LblLevelNumber(new QLabel(this))
    , m_txtDate(box("txtDate"))
    , m_ComboYear(combo("ComboYear", this))
    , m_DBComboPRCROP(combo("DBComboPRCROP", this))
    , m_DBComboSLNO(combo("DBComboSLNO", this))
    , m_txtWater(box("txtWater"))
    , m_txtNitrogen(box("txtNitrogen"))
{
    m_LblLevelNumber->setObjectName(QStringLiteral("LblLevelNumber"));
    m_DBGridIC->setModel(&m_levels);
    m_dbgICLayers->setModel(&m_layers);
    m_DBGridIC->setItemDelegate(m_levelDelegate);
    m_dbgICLayers->setItemDelegate(m_layerDelegate);
    m_levelDelegate->setMaxLength(1, text::levelNameLength);
    m_levels.setHooks(m_editor.levelGridHooks());
    SqlGridModel::Hooks layers = m_editor.layerGridHooks();
    const auto gridError = layers.error;
    layers.error = [this, gridError](const RuntimeError& e) {
        if (!m_committing)
            gridError(e);
    };
    m_layers.setHooks(layers);
    for (const InitialConditionsBox& b : initialConditionsBoxes())
        m_boxes[QLatin1String(b.field)] = box(b.control);
    buildLayout();
    connectWidgets();
}

frmInitCond::~frmInitCond()
{
    // The grids go before the models and the editor they use.
    delete m_DBGridIC;
    delete m_dbgICLayers;
}

QLineEdit* frmInitCond::box(const char* name)
{
    auto* edit = new QLineEdit(this);
    edit->setObjectName(QLatin1String(name));
    edit->setMaximumWidth(90);
    return edit;
}

QPushButton* frmInitCond::button(const char* name, const QString& caption, const QString& hint,
    void (InitialConditionsEditor::*routine)())
{
    QPushButton* b = editorButton(QLatin1String(name), caption, hint, this);
    connect(b, &QPushButton::clicked, this, [this, routine] { afterChecks(routine); });
    return b;
}

void frmInitCond::afterChecks(void (InitialConditionsEditor::*routine)())
{
    if (m_validation->settle())
        (m_editor.*routine)();
}

QWidget* frmInitCond::buildPage()
{
    auto* page = new QWidget(this);
    QFont bold = m_LblLevelNumber->font();
    bold.setBold(true);
    m_LblLevelNumber->setFont(bold);
    m_ComboYear->setEnabled(false);
    m_ComboYear->setToolTip(
        tr("Available years.  Weather stations are selected in Fields section."));
    m_DBComboPRCROP->setMinimumWidth(200);
    m_txtDate->setMaximumWidth(110);

    const auto caption = [](const char* field) {
        for (const InitialConditionsBox& b : initialConditionsBoxes()) {
            if (qstrcmp(b.field, field) == 0)
                return QString::fromUtf8(b.caption);
        }
        return QString();
    };
    const auto group = [&](const QString& title, std::initializer_list<const char*> fields) {
        auto* g = new QGroupBox(title, page);
        auto* form = new QFormLayout(g);
        for (const char* field : fields)
            form->addRow(caption(field), m_boxes.at(QLatin1String(field)));
        return g;
    };

    auto* general = new QFormLayout;
    general->addRow(m_LblLevelNumber);
    auto* date = new QHBoxLayout;
    date->addWidget(m_txtDate);
    date->addWidget(new QLabel(tr("Year"), page));
    date->addWidget(m_ComboYear);
    date->addStretch();
    general->addRow(ict::measurementDate, date);
    general->addRow(ict::previousCrop, m_DBComboPRCROP);
    general->addRow(caption("ICWD"), m_boxes.at(QStringLiteral("ICWD")));

    auto* groups = new QHBoxLayout;
    groups->addWidget(group(tr("Residue of the previous crop"), { "ICRES", "ICREN", "ICREP" }));
    groups->addWidget(group(tr("Incorporation"), { "ICRIP", "ICRID" }));
    groups->addWidget(group(tr("Roots and nodules"), { "WRESR", "WRESND" }));
    groups->addWidget(group(tr("Rhizobia"), { "EFINOC", "EFNFIX" }));

    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(general);
    layout->addLayout(groups);
    layout->addStretch();
    return page;
}

QWidget* frmInitCond::buildSoilBox()
{
    auto* soil = new QGroupBox(tr("Soil, water and nitrogen"), this);
    m_DBComboSLNO->setToolTip(ict::soilListHint);
    m_DBComboSLNO->setMinimumWidth(260);
    m_DBComboSLNO->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    auto* form = new QFormLayout;
    form->addRow(new QLabel(ict::soilHint, soil));
    form->addRow(m_DBComboSLNO);
    const auto withUnit = [soil](QLineEdit* edit, const QString& unit) {
        auto* row = new QHBoxLayout;
        row->addWidget(edit);
        row->addWidget(new QLabel(unit, soil));
        row->addStretch();
        return row;
    };
    form->addRow(ict::water, withUnit(m_txtWater, ict::waterUnit));
    form->addRow(ict::nitrogen, withUnit(m_txtNitrogen, ict::nitrogenUnit));

    auto* all = new QPushButton(tr("Recalculate water and nitrogen"), soil);
    auto* water = new QPushButton(tr("Recalculate water"), soil);
    auto* nitrogen = new QPushButton(tr("Recalculate nitrogen"), soil);
    const std::pair<QPushButton*, Recalculation> buttons[] = { { all, Recalculation::All },
        { water, Recalculation::Water }, { nitrogen, Recalculation::Nitrogen } };
    const char* names[] = { "cmdRecalculate", "cmdRecalculateWater", "cmdRecalculateNitrogen" };
    auto* column = new QVBoxLayout(soil);
    column->addLayout(form);
    for (size_t i = 0; i < std::size(buttons); ++i) {
        QPushButton* b = buttons[i].first;
        b->setObjectName(QLatin1String(names[i]));
        b->setAutoDefault(false);
        connect(b, &QPushButton::clicked, this, [this, which = buttons[i].second] {
            if (m_validation->settle())
                m_editor.cmdRecalculate_Click(which);
        });
        column->addWidget(b);
    }
    auto* note = new QLabel(ict::overwriteNote1 + QLatin1Char('\n') + ict::overwriteNote2, soil);
    note->setStyleSheet(QStringLiteral("color: #a00000"));
    column->addWidget(note);
    column->addStretch();
    return soil;
}

void frmInitCond::buildLayout()
{
    auto* heading = new QLabel(ict::captionStem, this);
    QFont bold = heading->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.2);
    heading->setFont(bold);

    m_DBGridIC->setMinimumSize(340, 140);
    m_DBGridIC->horizontalHeader()->setStretchLastSection(true);
    m_dbgICLayers->setMinimumSize(440, 220);
    m_dbgICLayers->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);

    auto* levels = new QVBoxLayout;
    levels->addWidget(m_DBGridIC, 1);
    auto* levelButtons = new QHBoxLayout;
    levelButtons->addWidget(
        button("cmdAdd", tr("Add"), tr("Add a level, a copy of the selected one (Ctrl+A)"),
            &InitialConditionsEditor::cmdAdd_Click));
    levelButtons->addWidget(button("CmdDelete", tr("Delete"),
        tr("Delete the selected level (Ctrl+D)"), &InitialConditionsEditor::CmdDelete_Click));
    levelButtons->addStretch();
    levels->addLayout(levelButtons);

    auto* top = new QHBoxLayout;
    top->addLayout(levels, 2);
    top->addSpacing(12);
    top->addWidget(buildPage(), 5);

    auto* middle = new QHBoxLayout;
    middle->addWidget(m_dbgICLayers, 3);
    middle->addWidget(buildSoilBox(), 2);

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(button("cmdAddLayers", tr("Add Layer"),
        tr("Add a copy of the selected layer (Ctrl+P)"), &InitialConditionsEditor::cmdAddLayers));
    bottom->addWidget(button("cmdDeleteLayers", tr("Delete Layer"),
        tr("Delete the selected layer (Ctrl+L)"), &InitialConditionsEditor::cmdDeleteLayers));
    bottom->addStretch();
    bottom->addWidget(button("cmdSave", tr("OK"),
        tr("Keep the changes and close (Enter or Ctrl+O)"), &InitialConditionsEditor::cmdSave));
    bottom->addWidget(
        button("cmdCancel", tr("Cancel"), tr("Drop the changes and close (Esc or Ctrl+N)"),
            &InitialConditionsEditor::cmdCancel_Click));

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(heading);
    layout->addLayout(top);
    layout->addLayout(middle, 1);
    layout->addLayout(bottom);
    resize(1120, 660);
}

void frmInitCond::connectWidgets()
{
    // A box is checked and stored when the user leaves it changed.
    for (const auto& [field, edit] : m_boxes) {
        m_validation->watch(edit, [this, field = field, edit = edit] {
            if (!edit->isModified())
                return true;
            const bool stored = m_editor.txtBox_Validate(field, edit->text());
            edit->setModified(!stored);
            return stored;
        });
    }
    m_validation->watch(m_txtDate, [this] {
        if (!m_txtDate->isModified())
            return true;
        const bool stored = m_editor.txtDate_Validate(m_txtDate->text());
        m_txtDate->setModified(!stored);
        return stored;
    });
    connect(m_DBComboPRCROP, &QComboBox::activated, this,
        [this](int index) { m_editor.PRCROP_Click(m_DBComboPRCROP->itemData(index).toString()); });
    connect(m_DBComboSLNO, &QComboBox::activated, this, [this] { m_editor.DBComboSLNO_Change(); });
    connect(m_DBGridIC->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] {
        if (!m_moving)
            m_editor.DBGridIC_RowColChange();
    });
}

void frmInitCond::keyCommand(Key key)
{
    using E = editors::InitialConditionsEditor;
    runKey(key, m_editor,
        { { Key::OK, &E::cmdSave }, { Key::Cancel, &E::cmdCancel_Click },
            { Key::Escape, &E::escapePressed }, { Key::AddLevel, &E::cmdAdd_Click },
            { Key::DeleteLevel, &E::CmdDelete_Click }, { Key::AddEvent, &E::cmdAddLayers },
            { Key::DeleteEvent, &E::cmdDeleteLayers } },
        [this](void (E::*routine)()) { afterChecks(routine); });
}

QString frmInitCond::levelCellText() const
{
    return m_levels.text(m_DBGridIC->currentIndex().row(), 0);
}

QString frmInitCond::layerDepthText() const
{
    return m_layers.text(m_dbgICLayers->currentIndex().row(), 0);
}

qint64 frmInitCond::currentLayerRow() const
{
    return m_layers.rowId(m_dbgICLayers->currentIndex().row());
}

RuntimeError frmInitCond::commitLayerEdit()
{
    QScopedValueRollback committing(m_committing, true);
    if (m_layerDelegate->commitOpenEditor())
        return RuntimeError(0, {});
    return RuntimeError(err::RowNotStored, m_layers.lastError().text());
}

void frmInitCond::showLevels(const QString& statement, LevelRow row)
{
    QScopedValueRollback moving(m_moving, true);
    const int previous = m_DBGridIC->currentIndex().row();
    const QVariant level = m_levels.value(previous, 0);
    m_levels.setQuery(statement, QStringLiteral("InitialConditions"));
    const int count = m_levels.rowCount();
    int target = row == LevelRow::First ? 0 : row == LevelRow::Last ? count - 1 : previous;
    for (int i = 0; row == LevelRow::Same && i < count; ++i) {
        if (m_levels.value(i, 0) == level)
            target = i;
    }
    if (count > 0)
        m_DBGridIC->setCurrentIndex(m_levels.index(std::clamp(target, 0, count - 1), 0));
    m_DBGridIC->setColumnWidth(0, 60);
}

void frmInitCond::showLayers(const QString& statement, int level)
{
    QScopedValueRollback moving(m_moving, true);
    m_layers.setQuery(statement, QStringLiteral("ICLayers"));
    m_layers.setNewRows(true, { { QStringLiteral("LNIC"), level } });
}

void frmInitCond::goToLayer(qint64 row)
{
    const int at = row == 0 ? 0 : std::max(0, m_layers.rowOf(row));
    m_dbgICLayers->setCurrentIndex(
        m_layers.index(at, std::max(0, m_dbgICLayers->currentIndex().column())));
}

void frmInitCond::setLevelCaptions(const QStringList& captions)
{
    m_levels.setCaptions(captions);
}

void frmInitCond::setLayerCaptions(const QStringList& captions)
{
    m_layers.setCaptions(captions);
}

void frmInitCond::setCaption(const QString& caption)
{
    setWindowTitle(caption);
}

void frmInitCond::setLevelNumberText(const QString& text)
{
    m_LblLevelNumber->setText(text);
}

void frmInitCond::setBoxText(const QString& field, const QString& text)
{
    const auto it = m_boxes.find(field);
    if (it != m_boxes.end())
        it->second->setText(text);
}

void frmInitCond::setCropChoices(const std::vector<Crop>& crops)
{
    m_DBComboPRCROP->clear();
    for (const Crop& crop : crops)
        m_DBComboPRCROP->addItem(crop.name, crop.code);
}

void frmInitCond::showPreviousCrop(const QString& code)
{
    m_DBComboPRCROP->setCurrentIndex(
        code.isEmpty() ? -1 : m_DBComboPRCROP->findData(code, Qt::UserRole, Qt::MatchFixedString));
}

void frmInitCond::setDateText(const QString& text)
{
    m_txtDate->setText(text);
    // The list of years shows the measurement's year when the weather has it.
    const QDate day = format::toDate(text.trimmed());
    const int year = day.isValid() ? m_ComboYear->findText(QString::number(day.year())) : -1;
    if (year >= 0)
        m_ComboYear->setCurrentIndex(year);
}

QString frmInitCond::dateText() const
{
    return m_txtDate->text();
}

void frmInitCond::showYears(const QStringList& years)
{
    m_ComboYear->clear();
    m_ComboYear->addItems(years);
}

void frmInitCond::setSoilChoices(const QStringList& soils)
{
    m_DBComboSLNO->clear();
    m_DBComboSLNO->addItems(soils);
}

void frmInitCond::showSoil(const QString& soil)
{
    m_DBComboSLNO->setCurrentIndex(m_DBComboSLNO->findText(soil));
    m_DBComboSLNO->setToolTip(soil.isEmpty() ? ict::soilListHint : ict::soilSelectedInFields);
}

void frmInitCond::showWaterNitrogen(const QString& water, const QString& nitrogen)
{
    m_txtWater->setText(water);
    m_txtNitrogen->setText(nitrogen);
}

QString frmInitCond::soilText() const
{
    return m_DBComboSLNO->currentText();
}

QString frmInitCond::waterText() const
{
    return m_txtWater->text();
}

QString frmInitCond::nitrogenText() const
{
    return m_txtNitrogen->text();
}

void frmInitCond::focusWater()
{
    m_txtWater->setFocus();
    m_txtWater->selectAll();
}

} // namespace quillon
