#include "app/gui/HelpMenu.h"

#include "app/SystemInfo.h"
#include "app/gui/AboutDialog.h"
#include "app/gui/HelpWindow.h"

#include <QAction>
#include <QCoreApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>

namespace quillon {

namespace {

QString text(const char* source)
{
    return QCoreApplication::translate("HelpMenu", source);
}

} // namespace

QMenu* addHelpMenu(QMainWindow* window)
{
    QMenu* help = window->menuBar()->addMenu(text("&Help"));
    help->setObjectName(QStringLiteral("mnuHelp"));

    QAction* contents = help->addAction(text("&Contents"), showHelpContents);
    contents->setObjectName(QStringLiteral("mnuHelpContents"));
    // F1 everywhere, besides the platform's own key for help.
    QList<QKeySequence> keys = QKeySequence::keyBindings(QKeySequence::HelpContents);
    if (!keys.contains(QKeySequence(Qt::Key_F1)))
        keys.append(QKeySequence(Qt::Key_F1));
    contents->setShortcuts(keys);

    help->addSeparator();
    QAction* about = help->addAction(text("&About Quillon"), window, [window] {
        auto* dialog = new AboutDialog(window);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->open();
    });
    about->setObjectName(QStringLiteral("mnuHelpAbout"));
    about->setMenuRole(QAction::AboutRole);
    return help;
}

HelpWindow* showHelpContents()
{
    // A window of its own, not a child of the main window, so that it can
    // stand beside it; the main window closes it when the program ends.
    static QPointer<HelpWindow> window;
    if (!window) {
        window = new HelpWindow(manualFile());
        window->setAttribute(Qt::WA_DeleteOnClose);
    }
    window->show();
    window->raise();
    window->activateWindow();
    return window;
}

} // namespace quillon
