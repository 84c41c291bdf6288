#include "app/gui/frmSplash.h"

#include "app/StartUp.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace quillon {

frmSplash::frmSplash(QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("frmSplash"));
    setWindowTitle(versionText());
    auto* title = new QLabel(QStringLiteral("<h2>Quillon</h2>"), this);
    title->setAlignment(Qt::AlignCenter);
    auto* version = new QLabel(versionText(), this);
    version->setAlignment(Qt::AlignCenter);
    auto* about = new QLabel(tr("Experiment editor for the TERVA crop-simulation suite.\n"
                                "Made by the Quillon developers."),
        this);
    about->setAlignment(Qt::AlignCenter);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdOK"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addWidget(version);
    layout->addWidget(about);
    layout->addWidget(buttons);
    setAttribute(Qt::WA_DeleteOnClose);
}

} // namespace quillon
