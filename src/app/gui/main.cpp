#include "app/StartUp.h"
#include "app/gui/GuiUserInterface.h"
#include "app/gui/frmMain.h"
#include "app/gui/frmSplash.h"
#include "database/WorkDatabase.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quillon"));

    quillon::GuiUserInterface gui;
    quillon::setUserInterface(&gui);

    const quillon::StartDecision start
        = quillon::Main(QCoreApplication::applicationDirPath(), QCoreApplication::arguments().mid(1));
    if (!start.proceed)
        return 0;

    quillon::frmMain mainWindow;
    gui.setParentWindow(&mainWindow);
    if (start.showSplash) {
        auto* splash = new quillon::frmSplash(&mainWindow);
        splash->show();
    }
    mainWindow.show();
    mainWindow.Form_Load();

    const int result = app.exec();
    quillon::database::closeWorkDB();
    quillon::releaseInstanceLock();
    return result;
}
