#pragma once

#include <QWidget>

#include <initializer_list>
#include <utility>

namespace quillon {

// What every editor window shares: its keys and its unload rule. Enter and
// Ctrl+O run OK; Esc warns "New data will not be saved." and then cancels;
// Ctrl+N cancels without the warning; Ctrl+A and Ctrl+D add and delete a
// level, Ctrl+P and Ctrl+L an event. The keys belong to the window and the
// widgets in it, so that they win over the main window's while the editor
// has the focus. Closing the window any other way than by OK or Cancel runs
// the editor's unload handler, which commits.
class EditorWindow : public QWidget {
    Q_OBJECT
public:
    // The keys a window's editor answers.
    enum class Key { OK, Cancel, Escape, AddLevel, DeleteLevel, AddEvent, DeleteEvent };

    explicit EditorWindow(const QString& formName, QWidget* parent = nullptr);

    // Loads the window from the tables: the editor's Form_Load.
    virtual void Form_Load() = 0;

    // Closes the window from one of the editor's routines; a second call
    // while it closes does nothing.
    void closeFromEditor();

signals:
    // The window has unloaded and is going away.
    void unloaded();

protected:
    // The editor's routine for a key; keys the editor lacks do nothing.
    virtual void keyCommand(Key key) = 0;
    // The editor's unload handler.
    virtual void unload() = 0;

    // The routine `routines` gives `key`, if any, on `editor`. Cancel and Esc
    // run at once, dropping what is being typed; the others go through
    // `checked`, which runs a routine once the box being typed in is settled.
    template <typename Editor, typename Checked>
    static void runKey(Key key, Editor& editor,
        std::initializer_list<std::pair<Key, void (Editor::*)()>> routines, Checked checked)
    {
        for (const auto& [k, routine] : routines) {
            if (k != key)
                continue;
            if (key == Key::Cancel || key == Key::Escape)
                (editor.*routine)();
            else
                checked(routine);
            return;
        }
    }

    void closeEvent(QCloseEvent* event) override;

private:
    void addKey(const QKeySequence& sequence, Key key);

    bool m_unloaded = false;
};

} // namespace quillon
