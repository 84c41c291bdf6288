#include "app/gui/frmAddInfo.h"

#include "app/UserInterface.h"
#include "app/gui/DialogButtons.h"
#include "app/gui/FocusValidation.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace quillon {

namespace {

struct BoxLabel {
    const char* control;
    const char* caption;
    const char* tip;
};

// The plot side and the harvest side of the plot details.
const BoxLabel plotBoxes[] = {
    { "txtPAREA", "Gross plot &area (m²):", "Gross plot area per replicate" },
    { "txtPRNO", "&Rows per plot:", "Number of rows in a plot" },
    { "txtPLEN", "Plot &length (m):", "Length of a plot" },
    { "txtPLDR", "Plots to &drains (°):", "Direction of the plots relative to the drains" },
    { "txtPLSP", "Plot s&pacing (cm):", "Spacing between plots" },
    { "txtPLAY", "Plot la&yout:", "Layout of the plots" },
};
const BoxLabel harvestBoxes[] = {
    { "txtHAREA", "Harvest ar&ea (m²):", "Area harvested per plot" },
    { "txtHRNO", "Harvested ro&ws:", "Number of rows harvested" },
    { "txtHLEN", "Harvested row le&ngth (m):", "Length of the rows harvested" },
    { "txtHARM", "Harvest &method:", "How the plots were harvested" },
};

const PlotField& fieldOf(const QString& control)
{
    for (const PlotField& field : plotFields()) {
        if (control == QLatin1String(field.control))
            return field;
    }
    return plotFields().front();
}

QLineEdit* textBox(QWidget* parent, const QString& name, int maxLength)
{
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(name);
    edit->setMaxLength(maxLength);
    return edit;
}

} // namespace

frmAddInfo::frmAddInfo(QWidget* parent)
    : QDialog(parent)
    , m_txtPEOPLE(textBox(this, QStringLiteral("txtPEOPLE"), 200))
    , m_txtADDRESS(textBox(this, QStringLiteral("txtADDRESS"), 200))
    , m_txtSITE(textBox(this, QStringLiteral("txtSITE"), 75))
    , m_validation(new FocusValidation(this))
{
    setObjectName(QStringLiteral("frmAddInfo"));
    setWindowTitle(tr("Additional Information"));

    auto* general = new QGroupBox(tr("General information"), this);
    general->setObjectName(QStringLiteral("fraGeneral"));
    auto* generalForm = new QFormLayout(general);
    generalForm->addRow(tr("&People:"), m_txtPEOPLE);
    generalForm->addRow(tr("A&ddress:"), m_txtADDRESS);
    generalForm->addRow(tr("&Site:"), m_txtSITE);
    m_txtPEOPLE->setPlaceholderText(tr("Names of the people who ran the experiment"));
    m_txtADDRESS->setPlaceholderText(tr("Address of the institute"));
    m_txtSITE->setPlaceholderText(tr("Where the experiment was run"));

    auto* plot = new QGroupBox(tr("Plot details"), this);
    plot->setObjectName(QStringLiteral("fraPlot"));
    auto* grid = new QGridLayout(plot);
    grid->setHorizontalSpacing(10);
    grid->setColumnMinimumWidth(2, 28);
    grid->setColumnStretch(5, 1);
    std::vector<QWidget*> tabOrder { m_txtPEOPLE, m_txtADDRESS, m_txtSITE };
    auto addColumn = [&](const BoxLabel* begin, const BoxLabel* end, const QString& heading,
                         int column) {
        auto* title = new QLabel(QStringLiteral("<b>%1</b>").arg(heading), plot);
        grid->addWidget(title, 0, column, 1, 2);
        int row = 1;
        for (const BoxLabel* b = begin; b != end; ++b, ++row) {
            const QString control = QLatin1String(b->control);
            const PlotField& field = fieldOf(control);
            QLineEdit* edit = textBox(
                plot, control, field.numeric ? 12 : (control == QLatin1String("txtPLAY") ? 5 : 15));
            edit->setToolTip(tr(b->tip));
            if (field.numeric) {
                edit->setAlignment(Qt::AlignRight);
                edit->setPlaceholderText(QStringLiteral("-99"));
                m_validation->watch(edit, [this, control] { return validatePlotBox(control); });
            }
            edit->setFixedWidth(field.numeric ? 90 : 130);
            auto* label = new QLabel(tr(b->caption), plot);
            label->setBuddy(edit);
            grid->addWidget(label, row, column);
            grid->addWidget(edit, row, column + 1, Qt::AlignLeft);
            m_boxes[control] = edit;
            tabOrder.push_back(edit);
        }
    };
    addColumn(std::begin(plotBoxes), std::end(plotBoxes), tr("Plot"), 0);
    addColumn(std::begin(harvestBoxes), std::end(harvestBoxes), tr("Harvest"), 3);
    grid->setRowStretch(static_cast<int>(std::size(plotBoxes)) + 1, 1);

    auto* buttons = okCancelButtons(this, &frmAddInfo::cmdOK_Click, &QDialog::reject);
    for (QAbstractButton* button : buttons->buttons())
        tabOrder.push_back(button);
    for (size_t i = 1; i < tabOrder.size(); ++i)
        setTabOrder(tabOrder[i - 1], tabOrder[i]);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 12);
    layout->setSpacing(12);
    layout->addWidget(general);
    layout->addWidget(plot);
    layout->addWidget(buttons);
    setMinimumWidth(600);
}

QLineEdit* frmAddInfo::box(const QString& control) const
{
    const auto it = m_boxes.find(control);
    return it == m_boxes.end() ? nullptr : it->second;
}

void frmAddInfo::setDetails(const PlotDetails& plot, const GeneralDetails& general)
{
    for (const PlotField& field : plotFields())
        box(QLatin1String(field.control))->setText(plot.*field.member);
    m_txtPEOPLE->setText(general.PEOPLE);
    m_txtADDRESS->setText(general.ADDRESS);
    m_txtSITE->setText(general.SITE);
}

PlotDetails frmAddInfo::plotDetails() const
{
    PlotDetails plot;
    for (const PlotField& field : plotFields())
        plot.*field.member = box(QLatin1String(field.control))->text();
    return plot;
}

GeneralDetails frmAddInfo::generalDetails() const
{
    return { m_txtPEOPLE->text(), m_txtADDRESS->text(), m_txtSITE->text() };
}

bool frmAddInfo::validatePlotBox(const QString& control)
{
    QLineEdit* edit = box(control);
    const PlotField& field = fieldOf(control);
    if (!edit || !field.numeric)
        return true;
    const std::optional<QString> accepted = acceptRange(edit->text(), field.rule);
    if (!accepted) {
        msgBox(identity_text::invalidEntry, MsgButtons::OK, MsgIcon::Critical,
            identity_text::errorTitle);
        edit->setFocus();
        edit->selectAll();
        return false;
    }
    edit->setText(*accepted);
    return true;
}

void frmAddInfo::cmdOK_Click()
{
    if (m_validation->settle())
        accept();
}

} // namespace quillon
