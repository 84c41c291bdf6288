#include "app/gui/RefreshNotice.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QLabel>
#include <QStyle>

namespace quillon {

QCheckBox* addRefreshNotice(QWidget* dialog, QBoxLayout* layout, const QString& thirdReason)
{
    auto* icon = new QLabel(dialog);
    icon->setObjectName(QStringLiteral("imgInfo"));
    const int size = dialog->style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, dialog);
    icon->setPixmap(dialog->style()
                        ->standardIcon(QStyle::SP_MessageBoxInformation, nullptr, dialog)
                        .pixmap(size, size));
    icon->setAlignment(Qt::AlignTop | Qt::AlignHCenter);

    auto* lead = new QLabel(dialog);
    lead->setObjectName(QStringLiteral("lblNotice"));
    lead->setTextFormat(Qt::PlainText);
    lead->setWordWrap(true);
    lead->setText(QStringLiteral(
        "You need to refresh the information in the internal database by selecting the "
        "REFRESH menu option if you:"));

    // The reasons are shown as the program words them, blanks included.
    auto* reasons = new QVBoxLayout;
    reasons->setSpacing(2);
    reasons->setContentsMargins(12, 0, 0, 0);
    const QString lines[] = { QStringLiteral("1. added new weather files,  "),
        QStringLiteral(" 2. added any new cultivar"), thirdReason,
        QStringLiteral(" 4. changed any codes in *.CDE files") };
    int number = 1;
    for (const QString& line : lines) {
        auto* label = new QLabel(line, dialog);
        label->setObjectName(QStringLiteral("lblReason%1").arg(number++));
        label->setTextFormat(Qt::PlainText);
        reasons->addWidget(label);
    }

    auto* text = new QVBoxLayout;
    text->setSpacing(10);
    text->addWidget(lead);
    text->addLayout(reasons);

    auto* body = new QHBoxLayout;
    body->setSpacing(16);
    body->addWidget(icon, 0, Qt::AlignTop);
    body->addLayout(text, 1);
    layout->addLayout(body);

    auto* dontShow = new QCheckBox(QStringLiteral("Don't show this message again."), dialog);
    dontShow->setObjectName(QStringLiteral("chkDontShow"));
    layout->addSpacing(6);
    layout->addWidget(dontShow);
    return dontShow;
}

} // namespace quillon
