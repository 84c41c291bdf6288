#include "app/gui/frmStartRefresh.h"

#include "app/AppState.h"
#include "app/DialogSwitches.h"
#include "app/gui/DialogButtons.h"
#include "app/gui/RefreshNotice.h"

#include <QCheckBox>
#include <QVBoxLayout>

namespace quillon {

frmStartRefresh::frmStartRefresh(QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("frmStartRefresh"));
    setWindowTitle(tr("Refresh Information"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 20, 20, 16);
    m_dontShow = addRefreshNotice(this, layout,
        QStringLiteral(
            " 3. changed directories in TERVA configuration menu (affecting TERVAPRO.V48), or"));

    auto* buttons = okCancelButtons(this, &frmStartRefresh::cmdOK_Click, &frmStartRefresh::cmdCancel_Click);
    layout->addWidget(buttons);
    setMinimumWidth(480);
}

bool frmStartRefresh::dontShowAgain() const
{
    return m_dontShow->isChecked();
}

void frmStartRefresh::cmdOK_Click()
{
    m_goOn = true;
    m_saveQuestion = true;
    accept();
}

void frmStartRefresh::cmdCancel_Click()
{
    m_goOn = false;
    reject();
}

void frmStartRefresh::done(int result)
{
    // Esc and the window's close button count as Cancel.
    if (result != Accepted)
        m_goOn = false;
    state().RefreshGoOn = m_goOn;
    if (dontShowAgain())
        DontShowOption_Remove();
    QDialog::done(result);
}

} // namespace quillon
