#pragma once

#include "app/DocumentCommands.h"

#include <QMainWindow>
#include <QPointer>

#include <functional>
#include <map>

class QAction;
class QMdiArea;
class QMdiSubWindow;

namespace quillon {

class EditorHost;
class frmExpidentify;

// The main window: an MDI frame with the menu bar. The identification window
// and the editors open as child windows inside it. It is the host of the
// document commands: they set its menus and open and close its windows.
class frmMain final : public QMainWindow, public DocumentHost {
    Q_OBJECT
public:
    using MenuState = quillon::MenuState;

    explicit frmMain(QWidget* parent = nullptr);
    ~frmMain() override;

    // Runs the start of the window's life: caption, scaling factors, the
    // command-line start, then (unless a file was opened from the command
    // line) the empty state and the background document.
    void Form_Load();

    QAction* menuAction(const QString& name) const;
    QMdiArea* mdiArea() const { return m_mdi; }
    // The identification window while a document is open.
    frmExpidentify* identificationWindow() const;

    // Creates the empty background child window "Document N".
    void LoadNewDoc();

    // Print Preview, Print and the checker's entry.
    void mnuFilePrintPreview_Click();
    void mnuPrint_Click();
    void mnuViewCheck_Click();
    // What Save would change in the file on disk, in the file view.
    void mnuViewChanges_Click();

    // DocumentHost
    void setMenuState(MenuState state) override;
    void setEntryEnabled(const QString& name, bool enabled) override;
    bool isEntryEnabled(const QString& name) const override;
    void showIdentification() override;
    std::optional<Identification> identification() const override;
    QString closeEditors() override;
    void reopenEditor(const QString& name) override;
    void unloadAllWindows() override;
    void rebuildCaptions(const QString& path) override;
    void showStartNew() override;
    RefreshNotice showStartRefresh() override;
    int showSaveFile() override;
    void setBusy(bool busy) override;

protected:
    // Closing the main window asks as Exit does while a document is open;
    // Cancel keeps the window and shows the identification again.
    void closeEvent(QCloseEvent* event) override;

private:
    QAction* addEntry(
        QMenu* menu, const char* name, const QString& caption, const QKeySequence& key = {});
    void buildMenus();
    void connectEntry(const char* name, std::function<void()> command);
    // The background document fills the frame while no document is open.
    void showBackground(bool visible);

    QMdiArea* m_mdi;
    EditorHost* m_editors;
    std::map<QString, QAction*> m_actions;
    int m_documentCount = 0;
    QPointer<frmExpidentify> m_identification;
    QPointer<QMdiSubWindow> m_identificationChild;
    // A close of the main window is being decided: a second one waits.
    bool m_closing = false;
    int m_busy = 0;
};

} // namespace quillon
