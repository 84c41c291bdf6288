#include "editors/gui/frmPlantingEd.h"

#include "app/AppState.h"
#include "app/gui/FocusValidation.h"
#include "editors/PlantingTexts.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

#include <algorithm>

namespace quillon {

using editors::PlantingBox;
using editors::PlantingDate;
using editors::PlantingEditor;
namespace pt = editors::planting_text;

namespace {

QLineEdit* box(const QString& name, QWidget* parent)
{
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(name);
    edit->setMaximumWidth(110);
    return edit;
}

QComboBox* combo(const char* name, QWidget* parent)
{
    auto* c = new QComboBox(parent);
    c->setObjectName(QLatin1String(name));
    c->setMinimumContentsLength(22);
    return c;
}

} // namespace

frmPlantingEd::frmPlantingEd(QWidget* parent)
    : LevelGridWindow(QStringLiteral("frmPlantingEd"),
        { QStringLiteral("cmdAdd"), QStringLiteral("cmdDelete"), QStringLiteral("cmdOK"),
            QStringLiteral("Command1") },
        parent)
    , m_validation(new FocusValidation(this))
    , m_LblLevelNumber(new QLabel(this))
    , m_txtPlantingDate(box(QStringLiteral("txtPlantingDate"), this))
    , m_txtEmergenceDate(box(QStringLiteral("txtEmergenceDate"), this))
    , m_ComboYear(combo("ComboYear", this))
    , m_DBComboPLME(combo("DBComboPLME", this))
    , m_DBComboPLDS(combo("DBComboPLDS", this))
    , m_cmdNext(new QPushButton(pt::next, this))
{
    bindGrid(m_editor.Data1());
    m_LblLevelNumber->setObjectName(QStringLiteral("LblLevelNumber"));
    m_cmdNext->setObjectName(QStringLiteral("cmdNext"));
    m_cmdNext->setToolTip(pt::nextHint);
    m_cmdNext->setAutoDefault(false);
    m_ComboYear->setMinimumContentsLength(6);
    m_ComboYear->setToolTip(pt::yearsHint);
    // The years inform only.
    m_ComboYear->setFocusPolicy(Qt::NoFocus);
    for (const PlantingBox& b : PlantingEditor::boxes())
        m_boxes.push_back(box(b.control, this));
    const QString pattern = state().DateTextFormat;
    m_txtPlantingDate->setPlaceholderText(pattern);
    m_txtEmergenceDate->setPlaceholderText(pattern);

    connect(m_add, &QPushButton::clicked, this, [this] { afterChecks(&PlantingEditor::cmdAdd); });
    connect(m_delete, &QPushButton::clicked, this,
        [this] { afterChecks(&PlantingEditor::cmdDelete_Click); });
    connect(
        m_ok, &QPushButton::clicked, this, [this] { afterChecks(&PlantingEditor::cmdOK_Click); });
    connect(
        m_cmdNext, &QPushButton::clicked, this, [this] { afterChecks(&PlantingEditor::cmdNext); });
    connect(m_cancel, &QPushButton::clicked, this, [this] { m_editor.Command1_Click(); });
    connect(m_DBComboPLME, &QComboBox::activated, this, [this](int index) {
        m_editor.ComboClick(QStringLiteral("PLME"), m_DBComboPLME->itemText(index));
    });
    connect(m_DBComboPLDS, &QComboBox::activated, this, [this](int index) {
        m_editor.ComboClick(QStringLiteral("PLDS"), m_DBComboPLDS->itemText(index));
    });

    for (int i = 0; i < int(m_boxes.size()); ++i) {
        QLineEdit* edit = m_boxes[size_t(i)];
        m_validation->watch(edit, [this, i, edit] {
            QString text = edit->text();
            if (!m_editor.BoxValidate(i, text))
                return false;
            if (text != edit->text())
                edit->setText(text);
            return true;
        });
    }
    m_validation->watch(m_txtPlantingDate, [this] {
        return m_editor.DateValidate(PlantingDate::Planting, m_txtPlantingDate->text());
    });
    m_validation->watch(m_txtEmergenceDate, [this] {
        return m_editor.DateValidate(PlantingDate::Emergence, m_txtEmergenceDate->text());
    });
    buildLayout();
}

frmPlantingEd::~frmPlantingEd()
{
    releaseGrid();
}

void frmPlantingEd::buildLayout()
{
    QFont bold = m_LblLevelNumber->font();
    bold.setBold(true);
    m_LblLevelNumber->setFont(bold);
    m_DBGrid1->setMinimumWidth(300);

    auto* page = new QGridLayout;
    int row = 0;
    page->addWidget(m_LblLevelNumber, row++, 0, 1, 4);
    const auto pair = [&](int column, const QString& caption, QWidget* field) {
        auto* label = new QLabel(caption, this);
        label->setBuddy(field);
        label->setWordWrap(true);
        page->addWidget(label, row, column);
        page->addWidget(field, row, column + 1);
    };
    pair(0, pt::plantingDate, m_txtPlantingDate);
    pair(2, pt::years, m_ComboYear);
    ++row;
    pair(0, pt::emergenceDate, m_txtEmergenceDate);
    ++row;
    pair(0, pt::method, m_DBComboPLME);
    ++row;
    pair(0, pt::distribution, m_DBComboPLDS);
    ++row;
    // Two columns of boxes; the transplant's age and environment sit under
    // their own heading.
    const std::vector<PlantingBox>& boxes = PlantingEditor::boxes();
    const auto place = [&](int column, const char* field) {
        for (size_t i = 0; i < boxes.size(); ++i) {
            if (boxes[i].field == QLatin1String(field))
                pair(column, boxes[i].caption, m_boxes[i]);
        }
        ++row;
    };
    const int first = row;
    for (const char* field : { "PLANTS", "PLTPOP", "ROWSPC", "AZIR", "SDEPTH" })
        place(0, field);
    const int last = row;
    row = first;
    for (const char* field : { "SDWTPL", "PLPH", "SPRLAP" })
        place(2, field);
    auto* heading = new QLabel(pt::materialAge, this);
    heading->setFont(bold);
    page->addWidget(heading, row++, 2, 1, 2);
    for (const char* field : { "SDAGE", "ATEMP" })
        place(2, field);
    row = std::max(row, last);
    page->setColumnStretch(0, 1);
    page->setColumnStretch(2, 1);
    page->setRowStretch(row, 1);
    page->setHorizontalSpacing(10);

    auto* top = new QHBoxLayout;
    top->addLayout(gridWithButtons(), 2);
    top->addSpacing(12);
    top->addLayout(page, 5);

    auto* bottom = closingButtons();
    bottom->addWidget(m_cmdNext);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top, 1);
    layout->addLayout(bottom);
    resize(1120, 480);
}

void frmPlantingEd::Form_Load()
{
    m_editor.Form_Load();
    m_DBGrid1->setColumnWidth(0, 60);
}

void frmPlantingEd::afterChecks(void (PlantingEditor::*routine)())
{
    if (m_validation->settle())
        (m_editor.*routine)();
}

void frmPlantingEd::setChoices(const QStringList& methods, const QStringList& distributions)
{
    for (auto [c, items] :
        { std::pair { m_DBComboPLME, &methods }, std::pair { m_DBComboPLDS, &distributions } }) {
        QSignalBlocker blocker(c);
        c->clear();
        c->addItems(*items);
    }
}

void frmPlantingEd::showPage(const editors::PlantingPage& page)
{
    m_LblLevelNumber->setText(page.levelNumber);
    m_txtPlantingDate->setText(page.plantingDate);
    m_txtEmergenceDate->setText(page.emergenceDate);
    for (size_t i = 0; i < m_boxes.size(); ++i)
        m_boxes[i]->setText(i < page.boxes.size() ? page.boxes[i] : QString());
    for (auto [c, text] : { std::pair { m_DBComboPLME, &page.method },
             std::pair { m_DBComboPLDS, &page.distribution } }) {
        QSignalBlocker blocker(c);
        c->setCurrentIndex(c->findText(*text));
    }
    m_ComboYear->clear();
    m_ComboYear->addItems(page.years);
    m_ComboYear->setCurrentIndex(page.year);
    m_ComboYear->setEnabled(!page.years.isEmpty());
}

QString frmPlantingEd::dateText(PlantingDate box) const
{
    return (box == PlantingDate::Planting ? m_txtPlantingDate : m_txtEmergenceDate)->text();
}

void frmPlantingEd::setDatesInError(bool inError)
{
    for (QLineEdit* edit : { m_txtPlantingDate, m_txtEmergenceDate }) {
        QPalette colours = palette();
        if (inError)
            colours.setColor(QPalette::Base, Qt::red);
        edit->setPalette(colours);
    }
}

} // namespace quillon
