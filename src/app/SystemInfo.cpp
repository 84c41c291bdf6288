#include "app/SystemInfo.h"

#include "app/AppState.h"
#include "app/StartUp.h"
#include "reference/SimDefaults.h"
#include "reference/SuiteFiles.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSysInfo>

namespace quillon {

namespace {

const QString notReadYet = QStringLiteral("not read yet: New or Open reads it");

// A file in a folder, found without regard to case, as a clean native path;
// empty when it isn't there.
QString foundIn(const QString& folder, const QString& name)
{
    const QString found = reference::findIn(folder, name);
    return found.isEmpty() ? found : QDir::toNativeSeparators(QDir::cleanPath(found));
}

// When this file was compiled: the build date of a clean build, which is how
// a release is built.
QString buildDate()
{
    const QString compiled = QStringLiteral(__DATE__ " " __TIME__).simplified();
    const QDateTime at = QDateTime::fromString(compiled, QStringLiteral("MMM d yyyy hh:mm:ss"));
    return at.isValid() ? at.toString(QStringLiteral("yyyy-MM-dd hh:mm")) : compiled;
}

QString qtVersion()
{
    const QString running = QString::fromLatin1(qVersion());
    const QString built = QStringLiteral(QT_VERSION_STR);
    return running == built ? running
                            : running + QStringLiteral(" (built with ") + built + QLatin1Char(')');
}

QString operatingSystem()
{
    return QSysInfo::prettyProductName() + QStringLiteral(" (") + QSysInfo::currentCpuArchitecture()
        + QLatin1Char(')');
}

// What the working database holds of the profile: its line count and the
// first path of each code asked for, in file order.
struct ProfileAsRead {
    bool read = false;
    QString failure;
    int lines = 0;
    std::vector<QString> paths;
};

ProfileAsRead readProfileTable(const QString& databasePath, const std::vector<const char*>& codes)
{
    ProfileAsRead result;
    const QString connection = QStringLiteral("quillon_system_information");
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        db.setDatabaseName(databasePath);
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        if (!db.open()) {
            result.failure = db.lastError().text();
        } else {
            QSqlQuery q(db);
            result.read = q.exec(QStringLiteral("SELECT COUNT(*) FROM TERVAPRO")) && q.next();
            if (!result.read) {
                result.failure = q.lastError().text();
            } else {
                result.lines = q.value(0).toInt();
                q.prepare(QStringLiteral(
                    "SELECT Path FROM TERVAPRO WHERE Code = ? ORDER BY rowid LIMIT 1"));
                for (const char* code : codes) {
                    q.bindValue(0, QLatin1String(code));
                    const bool found = q.exec() && q.next();
                    result.paths.push_back(found ? q.value(0).toString() : QString());
                }
            }
        }
    }
    QSqlDatabase::removeDatabase(connection);
    return result;
}

// The folder a profile line names on this machine, with the text the profile
// wrote, so that a mapping gone wrong shows.
QString folderLine(const QString& profilePath)
{
    const QString text = reference::locationText(profilePath);
    const QString folder = reference::locationFolder(text);
    const QString missing = QFileInfo(folder).isDir() ? QString() : QStringLiteral(", missing");
    return folder + QStringLiteral(" (profile: ") + text + missing + QLatin1Char(')');
}

void addProfileLines(std::vector<SystemInfoLine>& lines)
{
    const AppState& s = state();
    const QString profileName = QStringLiteral("TERVAPRO.V48");
    const QString profile = foundIn(s.DataFolder, profileName);
    lines.push_back({ QStringLiteral("Profile"),
        profile.isEmpty()
            ? reference::joinPath(s.DataFolder, profileName) + QStringLiteral(" was not found")
            : profile });

    if (!QFileInfo::exists(s.WorkDBPath)) {
        lines.push_back({ QStringLiteral("Profile as read"), notReadYet });
        return;
    }
    const std::vector<const char*> codes { "WED", "CRD", "SLD" };
    const ProfileAsRead read = readProfileTable(s.WorkDBPath, codes);
    if (!read.read) {
        lines.push_back({ QStringLiteral("Profile as read"),
            QStringLiteral("the working database could not be read: ") + read.failure });
        return;
    }
    if (read.lines == 0) {
        lines.push_back({ QStringLiteral("Profile as read"), notReadYet });
        return;
    }
    lines.push_back({ QStringLiteral("Profile as read"),
        QStringLiteral("%1 lines, kept in the working database until Refresh").arg(read.lines) });
    const QStringList labels { QStringLiteral("Weather folder"), QStringLiteral("Genotype folder"),
        QStringLiteral("Soil folder") };
    for (size_t i = 0; i < codes.size(); ++i) {
        const QString& path = read.paths.at(i);
        lines.push_back({ labels.at(int(i)),
            path.isEmpty()
                ? QStringLiteral("no %1 line in the profile").arg(QLatin1String(codes.at(i)))
                : folderLine(path) });
    }
}

void addDefaultsLines(std::vector<SystemInfoLine>& lines)
{
    const AppState& s = state();
    const QString inUse = s.DocumentOpen ? reference::defaultsFileName() : QString();
    for (const char* name : { "Simulate.def", "Simulate_Sequence.def", "Simulate_Seasonal.def",
             "Simulate_Spatial.def", "Simulate_Forecast.def" }) {
        const QString file = QLatin1String(name);
        const QString found = foundIn(s.AppFolder, file);
        QString value = found.isEmpty()
            ? file + QStringLiteral(" not found: built-in values are used")
            : found;
        if (file == inUse)
            value += QStringLiteral(" (for the open file)");
        lines.push_back({ QStringLiteral("Defaults file"), value });
    }
}

} // namespace

QString manualFileName()
{
    return QStringLiteral("Manual_Quillon.md");
}

QString manualFile()
{
    // Without an application object there is no program folder to look in.
    const QString programFolder
        = QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QString();
    for (const QString& folder : { programFolder, state().AppFolder }) {
        const QString found = foundIn(folder, manualFileName());
        if (!found.isEmpty())
            return found;
    }
    return QString();
}

std::vector<SystemInfoLine> systemInformation()
{
    const AppState& s = state();
    std::vector<SystemInfoLine> lines {
        { QStringLiteral("Program"), versionText() },
        { QStringLiteral("Build date"), buildDate() },
        { QStringLiteral("Qt version"), qtVersion() },
        { QStringLiteral("Operating system"), operatingSystem() },
        { QStringLiteral("Program folder (AppFolder)"), s.AppFolder },
        { QStringLiteral("Suite folder (DataFolder)"), s.DataFolder },
        { QStringLiteral("Working database"), s.WorkDBPath },
    };
    const QFileInfo database(s.WorkDBPath);
    lines.push_back({ QStringLiteral("Working database size"),
        database.exists() ? QLocale().toString(database.size()) + QStringLiteral(" bytes")
                          : QStringLiteral("not built yet: New or Open builds it") });
    addProfileLines(lines);
    addDefaultsLines(lines);
    lines.push_back({ QStringLiteral("Experiment file"),
        s.ExpFilePath.isEmpty() ? QStringLiteral("none open") : s.ExpFilePath });
    const QString manual = manualFile();
    lines.push_back({ QStringLiteral("User manual"),
        manual.isEmpty() ? manualFileName() + QStringLiteral(" not found beside the program")
                         : manual });
    return lines;
}

QString systemInformationText(const std::vector<SystemInfoLine>& lines)
{
    QString text;
    for (const SystemInfoLine& line : lines)
        text += line.label + QStringLiteral(": ") + line.value + QLatin1Char('\n');
    return text;
}

} // namespace quillon
