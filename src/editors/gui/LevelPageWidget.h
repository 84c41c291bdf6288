#pragma once

#include "editors/EventMember.h"

#include <QWidget>

#include <functional>
#include <vector>

class QComboBox;
class QLineEdit;

namespace quillon {

class FocusValidation;

// The level page of an event editor: a captioned box or combo per column of
// the level table, named as the member names them. A box is checked as the
// focus leaves it and keeps the focus when its check refuses the text; a
// combo's choice is passed on at once.
class LevelPageWidget final : public QWidget {
    Q_OBJECT
public:
    using Validate = std::function<bool(int field, const QString& text)>;
    using Choose = std::function<void(int field, const QString& description)>;

    LevelPageWidget(const std::vector<editors::LevelPageField>& fields, Validate validate,
        Choose choose, QWidget* parent = nullptr);

    void setChoices(int field, const QStringList& descriptions);
    void showTexts(const QStringList& texts);
    // Checks a box that lost the focus to a button, or that still has it;
    // false when its text is refused.
    bool settle();

private:
    std::vector<QLineEdit*> m_boxes; // null for a combo
    std::vector<QComboBox*> m_combos; // null for a box
    FocusValidation* m_validation;
};

} // namespace quillon
