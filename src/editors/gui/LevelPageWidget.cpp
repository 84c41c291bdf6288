#include "editors/gui/LevelPageWidget.h"

#include "app/gui/FocusValidation.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

namespace quillon {

LevelPageWidget::LevelPageWidget(const std::vector<editors::LevelPageField>& fields,
    Validate validate, Choose choose, QWidget* parent)
    : QWidget(parent)
    , m_validation(new FocusValidation(this))
{
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    // Two columns of caption and box.
    const int perColumn = int(fields.size() + 1) / 2;
    for (int i = 0; i < int(fields.size()); ++i) {
        const editors::LevelPageField& f = fields[size_t(i)];
        QWidget* control = nullptr;
        QLineEdit* box = nullptr;
        QComboBox* combo = nullptr;
        if (f.listType.isEmpty()) {
            box = new QLineEdit(this);
            if (f.maxLength > 0)
                box->setMaxLength(f.maxLength);
            box->setMaximumWidth(90);
            m_validation->watch(box, [validate, box, i] { return validate(i, box->text()); });
            control = box;
        } else {
            combo = new QComboBox(this);
            combo->setMinimumWidth(160);
            connect(combo, &QComboBox::activated, this,
                [choose, combo, i](int index) { choose(i, combo->itemText(index)); });
            control = combo;
        }
        control->setObjectName(f.control);
        m_boxes.push_back(box);
        m_combos.push_back(combo);
        auto* caption = new QLabel(f.caption, this);
        caption->setBuddy(control);
        const int row = i % perColumn;
        const int column = (i / perColumn) * 2;
        layout->addWidget(caption, row, column);
        layout->addWidget(control, row, column + 1);
    }
    layout->setColumnStretch(4, 1);
}

void LevelPageWidget::setChoices(int field, const QStringList& descriptions)
{
    if (QComboBox* combo = m_combos.at(size_t(field))) {
        QSignalBlocker blocker(combo);
        combo->clear();
        combo->addItems(descriptions);
    }
}

void LevelPageWidget::showTexts(const QStringList& texts)
{
    for (int i = 0; i < int(m_boxes.size()) && i < texts.size(); ++i) {
        if (QLineEdit* box = m_boxes[size_t(i)])
            box->setText(texts.at(i));
        if (QComboBox* combo = m_combos[size_t(i)]) {
            QSignalBlocker blocker(combo);
            combo->setCurrentIndex(combo->findText(texts.at(i)));
        }
    }
}

bool LevelPageWidget::settle()
{
    return m_validation->settle();
}

} // namespace quillon
