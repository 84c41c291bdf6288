#include "editors/gui/frmSoilAnalysis.h"

#include "app/gui/FocusValidation.h"
#include "editors/EditorTexts.h"
#include "editors/SoilAnalysisTexts.h"
#include "editors/gui/EditorButton.h"
#include "editors/gui/EditorGrid.h"
#include "editors/gui/GridDelegate.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

namespace quillon {

using namespace editors;
namespace st = soil_analysis_text;

frmSoilAnalysis::frmSoilAnalysis(QWidget* parent)
    : EditorWindow(QStringLiteral("frmSoilAnalysis"), parent)
    , m_editor(*this)
    , m_DBGrid1(new EditorGrid(QStringLiteral("DBGrid1"), this))
    , m_DBGrid2(new EditorGrid(QStringLiteral("DBGrid2"), this))
    , m_validation(new FocusValidation(this))
    , m_LblLevelNumber(new QLabel(this))
    , m_txtDate(new QLineEdit(this))
    , m_ComboYear(new QComboBox(this))
    , m_cmdAdd1(editorButton(QStringLiteral("cmdAdd1"), tr("Add"),
          tr("Add a level, a copy of the selected one (Ctrl+A)"), this))
    , m_cmdDelete1(editorButton(QStringLiteral("cmdDelete1"), tr("Delete"),
          tr("Delete the selected level (Ctrl+D)"), this))
    , m_cmdAdd2(editorButton(QStringLiteral("cmdAdd2"), tr("Add Layer"),
          tr("Add a copy of the selected layer (Ctrl+P)"), this))
    , m_cmdDelete2(editorButton(QStringLiteral("cmdDelete2"), tr("Delete Layer"),
          tr("Delete the selected layer (Ctrl+L)"), this))
    , m_cmdOK(editorButton(QStringLiteral("cmdOK"), tr("OK"),
          tr("Keep the changes and close (Enter or Ctrl+O)"), this))
    , m_cmdCancel(editorButton(QStringLiteral("cmdCancel"), tr("Cancel"),
          tr("Drop the changes and close (Esc or Ctrl+N)"), this))
{
    m_LblLevelNumber->setObjectName(QStringLiteral("LblLevelNumber"));
    m_txtDate->setObjectName(QStringLiteral("txtDate"));
    m_ComboYear->setObjectName(QStringLiteral("ComboYear"));
    m_ComboYear->setToolTip(
        tr("Available years.  Weather stations are selected in Fields section."));
    m_DBGrid1->setHooks(m_editor.levelGridHooks());
    m_DBGrid2->setHooks(m_editor.layerGridHooks());
    m_DBGrid1->cells().setMaxLength(1, text::levelNameLength);
    connect(m_DBGrid1, &EditorGrid::rowMoved, this, [this] { m_editor.DBGrid1_RowColChange(); });
    m_DBGrid1->installEventFilter(this);
    m_validation->watch(m_txtDate, [this] { return m_editor.txtDate_Validate(); });

    for (const MethodCombo& method : soilMethodCombos()) {
        auto* combo = new QComboBox(this);
        combo->setObjectName(method.control);
        combo->setMinimumWidth(260);
        connect(combo, &QComboBox::activated, this, [this, combo, field = method.field](int index) {
            m_editor.MethodCombo_Click(field, combo->itemText(index));
        });
        m_methods[method.field] = combo;
    }

    const std::pair<QPushButton*, void (SoilAnalysisEditor::*)()> routines[] = {
        { m_cmdAdd1, &SoilAnalysisEditor::cmdAdd1_Click },
        { m_cmdDelete1, &SoilAnalysisEditor::cmdDelete1_Click },
        { m_cmdAdd2, &SoilAnalysisEditor::cmdAdd2_Click },
        { m_cmdDelete2, &SoilAnalysisEditor::cmdDelete2_Click },
        { m_cmdOK, &SoilAnalysisEditor::cmdOK_Click },
    };
    for (const auto& [b, routine] : routines)
        connect(b, &QPushButton::clicked, this, [this, routine = routine] { settled(routine); });
    connect(m_cmdCancel, &QPushButton::clicked, this, [this] { m_editor.cmdCancel_Click(); });
    buildLayout();
}

frmSoilAnalysis::~frmSoilAnalysis()
{
    // The grids go before the editor whose routines their record sources call.
    delete m_DBGrid1;
    delete m_DBGrid2;
}

void frmSoilAnalysis::buildLayout()
{
    QFont bold = m_LblLevelNumber->font();
    bold.setBold(true);
    m_LblLevelNumber->setFont(bold);
    m_DBGrid1->setMinimumSize(360, 150);
    m_DBGrid1->horizontalHeader()->setStretchLastSection(true);
    m_DBGrid2->setMinimumHeight(200);
    m_ComboYear->setMinimumWidth(80);
    m_txtDate->setMaximumWidth(120);

    auto* levels = new QVBoxLayout;
    levels->addWidget(m_DBGrid1);
    levels->addLayout(widgetRow({ m_cmdAdd1, m_cmdDelete1 }));

    auto* details = new QFormLayout;
    details->addRow(m_LblLevelNumber);
    auto* date = new QHBoxLayout;
    date->addWidget(m_txtDate);
    date->addSpacing(16);
    date->addWidget(new QLabel(tr("Year"), this));
    date->addWidget(m_ComboYear);
    date->addStretch();
    details->addRow(st::analysisDate, date);
    details->addRow(st::phMethod, m_methods.at(QStringLiteral("SMHB")));
    details->addRow(st::phosphorusMethod, m_methods.at(QStringLiteral("SMPX")));
    details->addRow(st::potassiumMethod, m_methods.at(QStringLiteral("SMKE")));

    auto* top = new QHBoxLayout;
    top->addLayout(levels, 2);
    top->addSpacing(12);
    top->addLayout(details, 3);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_DBGrid2, 1);
    layout->addLayout(widgetRow({ m_cmdAdd2, m_cmdDelete2 }, { m_cmdOK, m_cmdCancel }));
    resize(1040, 560);
}

void frmSoilAnalysis::settled(void (SoilAnalysisEditor::*routine)())
{
    if (m_validation->settle())
        (m_editor.*routine)();
}

void frmSoilAnalysis::keyCommand(Key key)
{
    using E = editors::SoilAnalysisEditor;
    runKey(key, m_editor,
        { { Key::OK, &E::cmdOK_Click }, { Key::Cancel, &E::cmdCancel_Click },
            { Key::Escape, &E::escapePressed }, { Key::AddLevel, &E::cmdAdd1_Click },
            { Key::DeleteLevel, &E::cmdDelete1_Click }, { Key::AddEvent, &E::cmdAdd2_Click },
            { Key::DeleteEvent, &E::cmdDelete2_Click } },
        [this](void (E::*routine)()) { settled(routine); });
}

bool frmSoilAnalysis::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_DBGrid1 && event->type() == QEvent::FocusIn)
        m_editor.DBGrid1_GotFocus();
    return EditorWindow::eventFilter(watched, event);
}

QString frmSoilAnalysis::levelCellText() const
{
    return m_DBGrid1->currentText(0);
}

QVariant frmSoilAnalysis::layerValue(int column) const
{
    return m_DBGrid2->currentValue(column);
}

qint64 frmSoilAnalysis::currentLayerRow() const
{
    return m_DBGrid2->currentId();
}

RuntimeError frmSoilAnalysis::commitLayerEdit()
{
    return m_DBGrid2->commitEdit();
}

void frmSoilAnalysis::showLevels(const QString& statement, LevelRow row)
{
    m_DBGrid1->bind(statement, QStringLiteral("SoilAnalysis"), row);
}

void frmSoilAnalysis::showLayers(const QString& statement, int level)
{
    m_DBGrid2->bind(statement, QStringLiteral("SoilLayers"), LevelRow::First);
    m_DBGrid2->records().setNewRows(true, { { QStringLiteral("LNSA"), level } });
}

void frmSoilAnalysis::goToLayer(qint64 row)
{
    m_DBGrid2->goToId(row);
}

void frmSoilAnalysis::goToLastLayer()
{
    m_DBGrid2->goToLastRow();
}

void frmSoilAnalysis::setLevelCaptions(const QStringList& captions)
{
    m_DBGrid1->setCaptions(captions);
}

void frmSoilAnalysis::setLayerCaptions(const QStringList& captions)
{
    m_DBGrid2->setCaptions(captions);
    for (int column = 0; column < captions.size(); ++column)
        m_DBGrid2->setColumnWidth(column, std::clamp(m_DBGrid2->columnWidth(column), 90, 160));
}

void frmSoilAnalysis::setLevelNumberText(const QString& text)
{
    m_LblLevelNumber->setText(text);
}

void frmSoilAnalysis::showYears(const QStringList& years)
{
    m_ComboYear->clear();
    m_ComboYear->addItems(years);
    m_ComboYear->setEnabled(!years.isEmpty());
}

QString frmSoilAnalysis::dateText() const
{
    return m_txtDate->text();
}

void frmSoilAnalysis::showDate(const QString& text)
{
    m_txtDate->setText(text);
}

void frmSoilAnalysis::setMethodChoices(const QString& field, const QStringList& descriptions)
{
    QComboBox* combo = m_methods.at(field);
    const QSignalBlocker blocker(combo);
    combo->clear();
    combo->addItems(descriptions);
    combo->setCurrentIndex(-1);
}

void frmSoilAnalysis::showMethod(const QString& field, const QString& description)
{
    QComboBox* combo = m_methods.at(field);
    const QSignalBlocker blocker(combo);
    combo->setCurrentIndex(description.isEmpty() ? -1 : combo->findText(description));
}

} // namespace quillon
