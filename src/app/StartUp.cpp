#include "app/StartUp.h"

#include "app/AppState.h"
#include "app/CommandLine.h"
#include "app/LocaleSettings.h"
#include "app/RuntimeError.h"
#include "app/UserInterface.h"

#include <QDir>
#include <QFile>
#include <QLockFile>

#include <memory>

namespace quillon {

namespace {

std::unique_ptr<QLockFile>& instanceLock()
{
    static std::unique_ptr<QLockFile> lock;
    return lock;
}

QString withSeparator(const QString& folder)
{
    QString f = QDir::toNativeSeparators(folder);
    if (!f.endsWith(QDir::separator()))
        f += QDir::separator();
    return f;
}

// Holds the lock for as long as the program runs. Returns false when another
// instance holds it.
bool lockInstance(const QString& appFolder)
{
    auto lock = std::make_unique<QLockFile>(appFolder + QStringLiteral("Quillon.lock"));
    lock->setStaleLockTime(0);
    if (!lock->tryLock(0))
        return false;
    instanceLock() = std::move(lock);
    return true;
}

} // namespace

QString appFolderFor(const QString& executableFolder)
{
    const QString overridden = qEnvironmentVariable("QUILLON_APP_DIR");
    return withSeparator(QDir(overridden.isEmpty() ? executableFolder : overridden).absolutePath());
}

QString suiteFolderFor(const QString& appFolder)
{
    QDir dir(appFolder);
    do {
        if (dir.dirName().compare(QLatin1String("TERVA48"), Qt::CaseInsensitive) == 0)
            return QDir::toNativeSeparators(dir.absolutePath());
    } while (dir.cdUp());
    const QString fromEnvironment = qEnvironmentVariable("TERVA_DIR");
    if (!fromEnvironment.isEmpty())
        return QDir::toNativeSeparators(QDir(fromEnvironment).absolutePath());
    return QString();
}

QString versionText()
{
    return appTitle() + QStringLiteral(" v ") + QString::number(QUILLON_VERSION_MAJOR) + QLatin1Char('.')
        + QString::number(QUILLON_VERSION_MINOR) + QLatin1Char('.') + QString::number(QUILLON_VERSION_PATCH);
}

StartDecision Main(const QString& executableFolder, const QStringList& arguments)
{
    StartDecision decision;
    AppState& s = state();
    const QString appFolder = appFolderFor(executableFolder);
    QDir().mkpath(appFolder);
    if (!lockInstance(appFolder)) {
        // A running instance can't be brought to the front from here: the
        // lock tells only that it runs.
        msgBox(QStringLiteral("Another instance of Quillon is already running!"), MsgButtons::OK,
            MsgIcon::Critical);
        return decision;
    }
    saveLocaleSettings();
    s.EditorOpen.fill(false);
    takeCommandLine(s, arguments.join(QLatin1Char(' ')));
    s.AppFolder = appFolder;

    QFile record(s.AppFolder + QStringLiteral("CommandQuillon.txt"));
    if (record.open(QIODevice::WriteOnly | QIODevice::Truncate))
        record.write(s.CommandLine.toLocal8Bit() + "\r\n");

    try {
        s.WorkDBPath = s.AppFolder + QStringLiteral("QUILLONTEMP2.mdb");
        s.SuiteFolderName = QStringLiteral("TERVA48");
        s.DataFolder = suiteFolderFor(s.AppFolder);
        if (s.DataFolder.isEmpty())
            s.DataFolder = QDir::toNativeSeparators(QDir(s.AppFolder).absolutePath());
        // A command line that names a folder and a file starts there.
        if (s.CommandArgs.size() >= 2)
            s.DataFolder = s.CommandFolder;
        decision.showSplash = s.CommandLine.isEmpty();
    } catch (const std::exception& e) {
        reportError(QString::fromLocal8Bit(e.what()), QStringLiteral(" in Module1."));
    }
    decision.proceed = true;
    return decision;
}

void releaseInstanceLock() { instanceLock().reset(); }

} // namespace quillon
