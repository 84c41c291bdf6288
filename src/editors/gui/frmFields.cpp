#include "editors/gui/frmFields.h"

#include "app/gui/FocusValidation.h"
#include "database/Schema.h"
#include "editors/EditorTexts.h"
#include "editors/FieldTexts.h"
#include "editors/gui/EditorButton.h"
#include "editors/gui/EditorGrid.h"
#include "editors/gui/GridDelegate.h"

#include <QApplication>
#include <QBoxLayout>
#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabWidget>

namespace quillon {

using namespace editors;
namespace ft = field_text;

namespace {

// The caption of a column of Fields in the level grid, without its blanks.
QString captionOf(const QString& field)
{
    const std::vector<database::FieldDef>& columns
        = database::findTable(QStringLiteral("Fields"))->fields;
    for (size_t i = 0; i < columns.size() && i < size_t(ft::gridCaptions.size()); ++i) {
        if (columns[i].name == field)
            return ft::gridCaptions.at(int(i)).trimmed();
    }
    return field;
}

} // namespace

frmFields::frmFields(QWidget* parent)
    : EditorWindow(QStringLiteral("frmFields"), parent)
    , m_editor(*this)
    , m_DBGrid1(new EditorGrid(QStringLiteral("DBGrid1"), this))
    , m_validation(new FocusValidation(this))
    , m_LblLevelNumber(new QLabel(this))
    , m_tabs(new QTabWidget(this))
    , m_CmdAddField(editorButton(QStringLiteral("CmdAddField"), tr("Add"),
          tr("Add a field, a copy of the selected one (Ctrl+A)"), this))
    , m_CmdRemoveField(editorButton(QStringLiteral("CmdRemoveField"), tr("Delete"),
          tr("Delete the selected field (Ctrl+D)"), this))
    , m_cmdOK(editorButton(
          QStringLiteral("cmdOK"), tr("OK"), tr("Keep the changes and close (Ctrl+O)"), this))
    , m_cmdNext(editorButton(QStringLiteral("cmdNext"), tr("Next >"),
          tr("Keep the changes and go on to the planting"), this))
    , m_Command1(editorButton(QStringLiteral("Command1"), tr("Cancel"),
          tr("Drop the changes and close (Esc or Ctrl+N)"), this))
{
    m_LblLevelNumber->setObjectName(QStringLiteral("LblLevelNumber"));
    m_DBGrid1->setHooks(m_editor.levelGridHooks());
    m_DBGrid1->cells().setMaxLength(1, text::levelNameLength);
    connect(m_DBGrid1, &EditorGrid::rowMoved, this, [this] { m_editor.DBGrid1_RowColChange(); });
    // A click on the grid that the check of a box refused doesn't move it.
    m_DBGrid1->viewport()->installEventFilter(this);

    for (const FieldBox& box : fieldBoxes()) {
        const bool named = box.field == QLatin1String("FLNAME");
        QLineEdit* edit = addBox(box.control, named ? text::levelNameLength : 0);
        m_validation->watch(
            edit, [this, control = box.control] { return m_editor.Validate(control); });
    }
    for (const CodeCombo& combo : fieldCodeCombos()) {
        QComboBox* c = addCombo(combo.control);
        connect(c, &QComboBox::activated, this, [this, c, control = combo.control](int index) {
            m_editor.CodeCombo_Click(control, c->itemText(index));
        });
    }
    const auto onChoice
        = [this](const char* control, void (FieldEditor::*routine)(const QString&)) {
              QComboBox* c = addCombo(QLatin1String(control));
              connect(c, &QComboBox::activated, this,
                  [this, c, routine](int index) { (m_editor.*routine)(c->itemText(index)); });
              return c;
          };
    onChoice("DBComboMethod", &FieldEditor::DBComboMethod_Click)
        ->setToolTip(ft::sourceHint + QLatin1Char('\n') + ft::observedHint);
    onChoice("ComboWSTA", &FieldEditor::ComboWSTA_Click)->setToolTip(ft::stationsHint);
    onChoice("ComboWSTA_ID", &FieldEditor::ComboWSTA_ID_Change)->setToolTip(ft::stationIdsHint);
    onChoice("ComboSoil", &FieldEditor::ComboSoil_Click);
    onChoice("Combo2", &FieldEditor::Combo2_Click)->setToolTip(ft::soilIdHint);
    m_boxes.at(QStringLiteral("txtFLDNAM"))->setMaxLength(8);
    m_boxes.at(QStringLiteral("txtWSTA"))->setMaxLength(8);
    m_combos.at(QStringLiteral("ComboWSTA_ID"))->hide();

    connect(
        m_CmdAddField, &QPushButton::clicked, this, [this] { settled(&FieldEditor::CmdAddField); });
    connect(m_CmdRemoveField, &QPushButton::clicked, this,
        [this] { settled(&FieldEditor::CmdRemoveField); });
    connect(m_cmdOK, &QPushButton::clicked, this, [this] { settled(&FieldEditor::cmdOK_Click); });
    connect(m_cmdNext, &QPushButton::clicked, this, [this] { settled(&FieldEditor::cmdNext); });
    connect(m_Command1, &QPushButton::clicked, this, [this] { m_editor.Command1_Click(); });
    buildLayout();
}

frmFields::~frmFields()
{
    // The grid goes before the editor whose routines its record source calls.
    delete m_DBGrid1;
}

QLineEdit* frmFields::addBox(const QString& control, int maxLength)
{
    auto* edit = new QLineEdit(this);
    edit->setObjectName(control);
    if (maxLength > 0)
        edit->setMaxLength(maxLength);
    m_boxes[control] = edit;
    return edit;
}

QComboBox* frmFields::addCombo(const QString& control)
{
    auto* combo = new QComboBox(this);
    combo->setObjectName(control);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(16);
    m_combos[control] = combo;
    return combo;
}

// A tab of the page: a label and its controls a row.
QWidget* frmFields::page(const std::vector<std::pair<QString, QStringList>>& rows)
{
    auto* tab = new QWidget(m_tabs);
    auto* form = new QFormLayout(tab);
    for (const auto& [label, controls] : rows) {
        auto* line = new QHBoxLayout;
        for (const QString& control : controls) {
            QWidget* widget = m_boxes.count(control) ? static_cast<QWidget*>(m_boxes.at(control))
                                                     : m_combos.at(control);
            line->addWidget(widget, m_combos.count(control) ? 2 : 1);
        }
        form->addRow(label, line);
    }
    return tab;
}

void frmFields::buildLayout()
{
    const auto field = [](const char* name) { return captionOf(QLatin1String(name)); };
    m_tabs->addTab(page({ { field("FLDNAM"), { QStringLiteral("txtFLDNAM") } },
                       { text::description, { QStringLiteral("txtFLNAME") } },
                       { tr("Weather data source"), { QStringLiteral("DBComboMethod") } },
                       { tr("Weather station"), { QStringLiteral("ComboWSTA") } },
                       { tr("Weather station ID"),
                           { QStringLiteral("txtWSTA"), QStringLiteral("ComboWSTA_ID") } },
                       { tr("Soil"), { QStringLiteral("ComboSoil") } },
                       { field("SLNO"), { QStringLiteral("Combo2") } } }),
        tr("Weather and soil"));
    m_tabs->addTab(page({ { field("SLTX"), { QStringLiteral("DBComboSLTX") } },
                       { field("SLDP"), { QStringLiteral("TxtSLDP") } },
                       { field("SLOPE"), { QStringLiteral("txtSLOPE") } },
                       { field("FLOB"), { QStringLiteral("txtFLOB") } },
                       { field("DFDRN"), { QStringLiteral("DBComboDFDRN") } },
                       { field("FLDD"), { QStringLiteral("txtFLDD") } },
                       { field("SFDRN"), { QStringLiteral("txtSFDRN") } },
                       { field("FLST"), { QStringLiteral("TxtFLST") } },
                       { tr("Field history"), { QStringLiteral("DBComboFLHST") } },
                       { tr("Field history duration, years"), { QStringLiteral("txtFHDUR") } } }),
        tr("Soil surface and drainage"));
    m_tabs->addTab(page({ { tr("X - coordinate (longitude)"), { QStringLiteral("txtXCRD") } },
                       { tr("Y - coordinate (latitude)"), { QStringLiteral("txtYCRD") } },
                       { field("ELEV"), { QStringLiteral("txtELEV") } },
                       { field("AREA"), { QStringLiteral("txtAREA") } },
                       { field("SLEN"), { QStringLiteral("txtSLEN") } },
                       { field("FLWR"), { QStringLiteral("txtFLWR") } },
                       { field("SLAS"), { QStringLiteral("txtSLAS") } } }),
        tr("Location and size"));

    QFont bold = m_LblLevelNumber->font();
    bold.setBold(true);
    m_LblLevelNumber->setFont(bold);
    m_DBGrid1->setMinimumHeight(150);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_DBGrid1, 2);
    layout->addLayout(widgetRow({ m_CmdAddField, m_CmdRemoveField }));
    layout->addWidget(m_tabs, 3);
    layout->addLayout(widgetRow({ m_LblLevelNumber }, { m_cmdOK, m_cmdNext, m_Command1 }));
    resize(1040, 640);
}

void frmFields::settled(void (FieldEditor::*routine)())
{
    if (m_validation->settle())
        (m_editor.*routine)();
}

void frmFields::keyCommand(Key key)
{
    using E = editors::FieldEditor;
    runKey(key, m_editor,
        { { Key::OK, &E::cmdOK_Click }, { Key::Cancel, &E::Command1_Click },
            { Key::Escape, &E::escapePressed }, { Key::AddLevel, &E::CmdAddField },
            { Key::DeleteLevel, &E::CmdRemoveField } },
        [this](void (E::*routine)()) { settled(routine); });
}

bool frmFields::eventFilter(QObject* watched, QEvent* event)
{
    // The focus moved to the grid before the click reaches it; when the
    // check of the box it left refused, the focus is back in the box and
    // the click goes no further.
    if (watched == m_DBGrid1->viewport() && event->type() == QEvent::MouseButtonPress) {
        QWidget* focus = QApplication::focusWidget();
        for (const auto& [control, box] : m_boxes) {
            if (box == focus)
                return true;
        }
    }
    return EditorWindow::eventFilter(watched, event);
}

QString frmFields::levelCellText() const
{
    return m_DBGrid1->currentText(0);
}

RuntimeError frmFields::commitLevelEdit()
{
    return m_DBGrid1->commitEdit();
}

void frmFields::showLevels(const QString& statement, LevelRow row)
{
    m_DBGrid1->bind(statement, QStringLiteral("Fields"), row);
    // Only the level and the field ID are typed in the grid; the page holds
    // the rest.
    std::vector<bool> typed(size_t(m_DBGrid1->records().columnCount()), false);
    for (size_t column = 0; column < typed.size() && column < 2; ++column)
        typed[column] = true;
    m_DBGrid1->records().setEditableColumns(typed);
}

void frmFields::setLevelCaptions(const QStringList& captions)
{
    m_DBGrid1->setCaptions(captions);
}

void frmFields::setLevelNumberText(const QString& text)
{
    m_LblLevelNumber->setText(text);
}

QString frmFields::boxText(const QString& control) const
{
    return m_boxes.at(control)->text();
}

void frmFields::showBoxText(const QString& control, const QString& text)
{
    m_boxes.at(control)->setText(text);
}

void frmFields::setComboItems(const QString& control, const QStringList& items)
{
    // The long lists come again with every level: refill only what changed.
    QStringList& shown = m_comboItems[control];
    if (shown == items && !items.isEmpty())
        return;
    shown = items;
    QComboBox* combo = m_combos.at(control);
    const QSignalBlocker blocker(combo);
    combo->clear();
    combo->addItems(items);
    combo->setCurrentIndex(-1);
}

void frmFields::showComboText(const QString& control, const QString& text)
{
    QComboBox* combo = m_combos.at(control);
    const QSignalBlocker blocker(combo);
    combo->setCurrentIndex(text.isEmpty() ? -1 : combo->findText(text, Qt::MatchFixedString));
}

QString frmFields::comboText(const QString& control) const
{
    return m_combos.at(control)->currentText();
}

void frmFields::setComboVisible(const QString& control, bool visible)
{
    m_combos.at(control)->setVisible(visible);
}

void frmFields::focusControl(const QString& control)
{
    if (m_boxes.count(control))
        m_boxes.at(control)->setFocus();
    else if (m_combos.count(control))
        m_combos.at(control)->setFocus();
}

} // namespace quillon
