#include "app/gui/FocusValidation.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFocusEvent>
#include <QWidget>

namespace quillon {

FocusValidation::FocusValidation(QObject* parent)
    : QObject(parent)
{
}

void FocusValidation::watch(QWidget* box, Check check)
{
    m_checks[box] = std::move(check);
    box->installEventFilter(this);
    connect(box, &QObject::destroyed, this, [this, box] { m_checks.erase(box); });
}

bool FocusValidation::settle()
{
    QWidget* box = m_pending;
    m_pending = nullptr;
    if (box)
        return run(box);
    // Enter on a default button acts without moving the focus: the box that
    // still has it is checked now.
    QWidget* focus = QApplication::focusWidget();
    return !focus || run(focus);
}

bool FocusValidation::run(QWidget* box)
{
    const auto it = m_checks.find(box);
    if (it == m_checks.end() || m_running)
        return true;
    m_running = true;
    const bool passed = it->second();
    m_running = false;
    if (!passed)
        box->setFocus(Qt::OtherFocusReason);
    return passed;
}

bool FocusValidation::eventFilter(QObject* watched, QEvent* event)
{
    if (m_running)
        return false;
    if (event->type() == QEvent::FocusIn) {
        // The focus went from a box to a button and on to another box: the
        // first box is checked now.
        if (m_pending && m_pending != watched && !settle())
            return false;
    } else if (event->type() == QEvent::FocusOut) {
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason)
            return false;
        auto* box = static_cast<QWidget*>(watched);
        if (qobject_cast<QAbstractButton*>(QApplication::focusWidget())) {
            m_pending = box;
            return false;
        }
        run(box);
    }
    return false;
}

} // namespace quillon
