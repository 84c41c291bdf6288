#pragma once

#include <QMainWindow>

#include <map>

class QAction;
class QMdiArea;

namespace quillon {

// The main window: an MDI frame with the menu bar. Editors open as child
// windows inside it.
class frmMain final : public QMainWindow {
    Q_OBJECT
public:
    // The menu states of the document's life.
    enum class MenuState { Empty, Opening, DocumentOpen };

    explicit frmMain(QWidget* parent = nullptr);

    // Runs the start of the window's life: caption, scaling factors, the
    // command-line start, the empty state and the background document.
    void Form_Load();

    void setMenuState(MenuState state);
    QAction* menuAction(const QString& name) const;
    QMdiArea* mdiArea() const { return m_mdi; }

    // Creates the empty background child window "Document N".
    void LoadNewDoc();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QAction* addEntry(QMenu* menu, const char* name, const QString& caption, const QKeySequence& key = {});
    void buildMenus();
    void notAvailable(const QString& command);

    QMdiArea* m_mdi;
    std::map<QString, QAction*> m_actions;
    int m_documentCount = 0;
};

} // namespace quillon
