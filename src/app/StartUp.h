#pragma once

#include <QString>
#include <QStringList>

namespace quillon {

// The program's folder: the folder of the executable, or the one that
// QUILLON_APP_DIR names; always ending in a separator.
QString appFolderFor(const QString& executableFolder);

// The suite's folder for a program folder: the nearest ancestor folder named
// TERVA48 (any case), else the folder $TERVA_DIR names, else empty.
QString suiteFolderFor(const QString& appFolder);

// Application title and version: "Quillon v 1.0.0".
QString versionText();

struct StartDecision {
    bool proceed = false; // false: the program ends (another instance runs)
    bool showSplash = false;
};

// The start of the program, up to loading the main window: refuses a second
// instance, keeps the locale settings, takes the command line (the program's
// arguments, joined by blanks), records it in CommandQuillon.txt and sets the
// folders. Errors are reported with the tail " in Module1.".
StartDecision Main(const QString& executableFolder, const QStringList& arguments);

// Lets go of the single-instance lock (at the end of the program).
void releaseInstanceLock();

} // namespace quillon
