#pragma once

#include "editors/gui/EditorWindow.h"

#include <QKeySequence>
#include <QObject>
#include <QPointer>

#include <functional>
#include <map>

class QAction;
class QMdiArea;
class QMdiSubWindow;

namespace quillon {

// The editors inside the main window: one at a time, each opened by its menu
// handler, which may refuse (a message said why) or first make the factor's
// level 1. Opening an editor closes the open one, which commits. While an
// editor is the active window its keys win over the main window's: the
// actions that share a key with an editor give it up until another window
// is active.
class EditorHost final : public QObject {
    Q_OBJECT
public:
    using Action = std::function<QAction*(const QString& name)>;

    EditorHost(QMdiArea* mdi, Action action, QObject* parent = nullptr);

    // Whether an editor of that form name can be opened.
    bool knows(const QString& formName) const;
    // Runs the form's menu handler and shows its window if the handler lets it.
    void open(const QString& formName);
    // Closes the open editor, which commits as OK does. Returns the name of
    // the editor whose open flag was set, "" for none.
    QString closeEditor();

private:
    struct Form {
        std::function<bool()> menuHandler;
        std::function<EditorWindow*()> create;
    };
    void show(EditorWindow* window);
    void giveKeysToEditor(bool editorActive);

    QMdiArea* m_mdi;
    Action m_action;
    std::map<QString, Form> m_forms;
    QPointer<EditorWindow> m_window;
    QPointer<QMdiSubWindow> m_child;
    // The main window's keys an editor takes while it is active.
    std::map<QString, QKeySequence> m_takenKeys;
};

} // namespace quillon
