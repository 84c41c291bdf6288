#pragma once

#include <QObject>
#include <QPointer>

#include <functional>
#include <map>

class QWidget;

namespace quillon {

// Checks a box when the user moves the focus out of it, and keeps the focus
// there when the check refuses the entry (the check shows its own message).
//
// A button that takes the focus doesn't trigger the check at once: a modal
// message in the middle of a mouse press would leave the button half
// pressed. The box is remembered instead, and the button's handler calls
// settle() before it acts. Focus lost to another window or a popup checks
// nothing.
class FocusValidation final : public QObject {
    Q_OBJECT
public:
    using Check = std::function<bool()>;

    explicit FocusValidation(QObject* parent = nullptr);

    void watch(QWidget* box, Check check);

    // Runs the check of a box that lost the focus to a button, or else of the
    // watched box that still has the focus. True when there was nothing to
    // check or the check passed; false (focus back in the box) when it
    // refused.
    bool settle();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool run(QWidget* box);

    std::map<QObject*, Check> m_checks;
    QPointer<QWidget> m_pending;
    // Re-entry guard: a message box takes the focus from the box being
    // checked, which would check the box again.
    bool m_running = false;
};

} // namespace quillon
