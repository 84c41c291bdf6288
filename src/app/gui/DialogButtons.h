#pragma once

#include <QDialogButtonBox>
#include <QPushButton>

namespace quillon {

// The OK / Cancel row of the program's dialogs: the buttons are named cmdOK
// and cmdCancel, OK is the default, and each calls its handler.
template <typename Dialog, typename OkHandler, typename CancelHandler>
QDialogButtonBox* okCancelButtons(Dialog* dialog, OkHandler onOk, CancelHandler onCancel)
{
    auto* buttons = new QDialogButtonBox(dialog);
    QPushButton* ok = buttons->addButton(QDialogButtonBox::Ok);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    QPushButton* cancel = buttons->addButton(QDialogButtonBox::Cancel);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    QObject::connect(ok, &QPushButton::clicked, dialog, onOk);
    QObject::connect(cancel, &QPushButton::clicked, dialog, onCancel);
    return buttons;
}

} // namespace quillon
