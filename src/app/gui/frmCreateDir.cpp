#include "app/gui/frmCreateDir.h"

#include "app/ExpIdentity.h"
#include "app/RuntimeError.h"
#include "app/UserInterface.h"
#include "app/gui/DialogButtons.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace quillon {

frmCreateDir::frmCreateDir(const QString& cropName, QWidget* parent)
    : QDialog(parent)
    , m_cropName(cropName)
    , m_txtFolder(new QLineEdit(this))
{
    setObjectName(QStringLiteral("frmCreateDir"));
    setWindowTitle(QStringLiteral("Warning!"));

    auto* prompt = new QLabel(tr("The crop %1 has no folder of its own yet. Please enter the name "
                                 "of the folder for its experiment files.")
                                  .arg(cropName),
        this);
    prompt->setObjectName(QStringLiteral("lblPrompt"));
    prompt->setWordWrap(true);

    m_txtFolder->setObjectName(QStringLiteral("txtFolder"));
    m_txtFolder->setMaxLength(20); // the width of CropLookup.TERVA_Folder
    auto* form = new QFormLayout;
    form->addRow(tr("&Folder name:"), m_txtFolder);

    auto* buttons = okCancelButtons(this, &frmCreateDir::cmdOK_Click, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 20, 20, 16);
    layout->setSpacing(14);
    layout->addWidget(prompt);
    layout->addLayout(form);
    layout->addWidget(buttons);
    setMinimumWidth(400);
}

void frmCreateDir::cmdOK_Click()
{
    const QString name = m_txtFolder->text();
    const QString refusal = checkCropFolderName(name);
    if (!refusal.isEmpty()) {
        msgBox(refusal, MsgButtons::OK, MsgIcon::Exclamation, windowTitle());
        m_txtFolder->setFocus();
        return;
    }
    try {
        storeCropFolder(m_cropName, name);
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in cmdOK_Click/frmCreateDir."));
        return;
    }
    m_folder = name.trimmed().toUpper();
    Sub_CreateFolder();
    accept();
}

void frmCreateDir::Sub_CreateFolder() { }

} // namespace quillon
