#include "app/gui/frmWait.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

namespace quillon {

frmWait::frmWait(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint)
    , m_prgLoad(new QProgressBar(this))
{
    setObjectName(QStringLiteral("frmWait"));
    setWindowTitle(tr("Please wait"));
    m_prgLoad->setObjectName(QStringLiteral("prgLoad"));
    m_prgLoad->setRange(0, 100);
    m_prgLoad->setMinimumWidth(320);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_prgLoad);
    setModal(false);
}

void frmWait::setPercent(int percent)
{
    m_prgLoad->setValue(percent);
    if (!isVisible())
        show();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace quillon
