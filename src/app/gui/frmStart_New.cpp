#include "app/gui/frmStart_New.h"

#include "app/AppState.h"
#include "app/DialogSwitches.h"
#include "app/gui/RefreshNotice.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace quillon {

frmStart_New::frmStart_New(QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("frmStart_New"));
    setWindowTitle(tr("Refresh Information"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 20, 20, 16);
    m_dontShow = addRefreshNotice(this, layout,
        QStringLiteral(" 3. changed directories in TERVA configuration menu (TERVAPRO.V46), or"));

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* close = buttons->addButton(QDialogButtonBox::Close);
    close->setObjectName(QStringLiteral("cmdClose"));
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &frmStart_New::cmdClose_Click);
    layout->addWidget(buttons);
    setMinimumWidth(480);
}

bool frmStart_New::dontShowAgain() const
{
    return m_dontShow->isChecked();
}

void frmStart_New::cmdClose_Click()
{
    accept();
}

void frmStart_New::done(int result)
{
    // However the notice is closed, the refresh may go on.
    state().RefreshGoOn = true;
    if (dontShowAgain())
        DontShowNew_Remove();
    QDialog::done(result);
}

} // namespace quillon
