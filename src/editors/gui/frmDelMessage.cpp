#include "editors/gui/frmDelMessage.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace quillon {

frmDelMessage::frmDelMessage(
    const QString& levelName, const QStringList& treatments, QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("frmDelMessage"));
    setWindowTitle(QStringLiteral("Deletion Warning"));
    auto* heading
        = new QLabel(QStringLiteral("This level is used in one or more treatments."), this);
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    auto* rule
        = new QLabel(QStringLiteral("You may not delete the level used by a treatment. You MUST "
                                    "modify the treatment design to use another available level "
                                    "or delete the treatment."),
            this);
    rule->setWordWrap(true);
    auto* lblLevelName = new QLabel(levelName, this);
    lblLevelName->setObjectName(QStringLiteral("lblLevelName"));
    auto* list = new QListWidget(this);
    list->setObjectName(QStringLiteral("List1"));
    list->addItems(treatments);
    list->setMaximumHeight(120);

    auto* using_ = new QHBoxLayout;
    using_->addWidget(new QLabel(QStringLiteral("Treatment"), this), 0, Qt::AlignTop);
    using_->addWidget(list);
    auto* tail = new QHBoxLayout;
    tail->addWidget(new QLabel(QStringLiteral("is currently using this "), this));
    tail->addWidget(lblLevelName);
    tail->addWidget(new QLabel(QStringLiteral("level"), this));
    tail->addStretch();

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdOK"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(heading);
    layout->addWidget(rule);
    layout->addLayout(using_);
    layout->addLayout(tail);
    layout->addWidget(buttons);
    resize(420, sizeHint().height());
}

} // namespace quillon
