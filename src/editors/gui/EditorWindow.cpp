#include "editors/gui/EditorWindow.h"

#include <QCloseEvent>
#include <QMdiSubWindow>
#include <QShortcut>

namespace quillon {

EditorWindow::EditorWindow(const QString& formName, QWidget* parent)
    : QWidget(parent)
{
    setObjectName(formName);
    setAttribute(Qt::WA_DeleteOnClose);
    addKey(QKeySequence(Qt::Key_Return), Key::OK);
    addKey(QKeySequence(Qt::Key_Enter), Key::OK);
    addKey(QKeySequence(Qt::CTRL | Qt::Key_O), Key::OK);
    addKey(QKeySequence(Qt::Key_Escape), Key::Escape);
    addKey(QKeySequence(Qt::CTRL | Qt::Key_N), Key::Cancel);
    addKey(QKeySequence(Qt::CTRL | Qt::Key_A), Key::AddLevel);
    addKey(QKeySequence(Qt::CTRL | Qt::Key_D), Key::DeleteLevel);
    addKey(QKeySequence(Qt::CTRL | Qt::Key_P), Key::AddEvent);
    addKey(QKeySequence(Qt::CTRL | Qt::Key_L), Key::DeleteEvent);
}

void EditorWindow::addKey(const QKeySequence& sequence, Key key)
{
    auto* shortcut = new QShortcut(sequence, this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, [this, key] { keyCommand(key); });
}

void EditorWindow::closeFromEditor()
{
    if (m_unloaded)
        return;
    // Inside the main window the frame around the editor closes with it.
    if (auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget()))
        frame->close();
    else
        close();
}

void EditorWindow::closeEvent(QCloseEvent* event)
{
    if (!m_unloaded) {
        m_unloaded = true;
        unload();
        emit unloaded();
    }
    event->accept();
}

} // namespace quillon
