#include "app/gui/frmSaveFile.h"

#include "app/AppState.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace quillon {

frmSaveFile::frmSaveFile(QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("frmSaveFile"));
    setWindowTitle(tr("Save File"));

    auto* icon = new QLabel(this);
    const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    icon->setPixmap(
        style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this).pixmap(size, size));
    auto* text = new QLabel(
        QStringLiteral("Please save your file prior to refreshing the database!"), this);
    text->setObjectName(QStringLiteral("lblSave"));
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);

    auto* body = new QHBoxLayout;
    body->setSpacing(16);
    body->addWidget(icon, 0, Qt::AlignTop);
    body->addWidget(text, 1);

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* save
        = buttons->addButton(QStringLiteral("Save and Refresh"), QDialogButtonBox::AcceptRole);
    save->setObjectName(QStringLiteral("cmdSave"));
    save->setDefault(true);
    QPushButton* cancel
        = buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    connect(save, &QPushButton::clicked, this, &frmSaveFile::cmdSave_Click);
    connect(cancel, &QPushButton::clicked, this, &frmSaveFile::cmdCancel_Click);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 20, 20, 16);
    layout->setSpacing(18);
    layout->addLayout(body);
    layout->addWidget(buttons);
    setMinimumWidth(400);
}

void frmSaveFile::cmdSave_Click()
{
    m_answer = 1;
    accept();
}

void frmSaveFile::cmdCancel_Click()
{
    m_answer = 3;
    reject();
}

void frmSaveFile::done(int result)
{
    // Closing the window any other way is a Cancel.
    if (result != Accepted)
        m_answer = 3;
    state().RefreshAnswer = m_answer;
    QDialog::done(result);
}

} // namespace quillon
