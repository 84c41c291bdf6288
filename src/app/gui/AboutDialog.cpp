#include "app/gui/AboutDialog.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace quillon {

AboutDialog::AboutDialog(QWidget* parent)
    : QDialog(parent)
    , m_lines(systemInformation())
{
    setObjectName(QStringLiteral("AboutDialog"));
    setWindowTitle(tr("About Quillon"));

    auto* title = new QLabel(QStringLiteral("<h2>Quillon</h2>"), this);
    auto* about = new QLabel(tr("Experiment editor for the TERVA crop-simulation suite.\n"
                                "Made by the Quillon developers."),
        this);

    auto* information = new QGroupBox(tr("System information"), this);
    auto* form = new QFormLayout(information);
    for (const SystemInfoLine& line : m_lines) {
        auto* value = new QLabel(line.value, information);
        value->setObjectName(line.label);
        value->setTextFormat(Qt::PlainText);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        value->setCursor(Qt::IBeamCursor);
        form->addRow(line.label + QLatin1Char(':'), value);
    }

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->button(QDialogButtonBox::Close)->setObjectName(QStringLiteral("cmdClose"));
    QPushButton* copy = buttons->addButton(tr("&Copy to clipboard"), QDialogButtonBox::ActionRole);
    copy->setObjectName(QStringLiteral("cmdCopy"));
    connect(copy, &QPushButton::clicked, this, &AboutDialog::copyToClipboard);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addWidget(about);
    layout->addWidget(information);
    layout->addWidget(buttons);
}

QString AboutDialog::informationText() const
{
    return systemInformationText(m_lines);
}

void AboutDialog::copyToClipboard()
{
    QGuiApplication::clipboard()->setText(informationText());
}

} // namespace quillon
