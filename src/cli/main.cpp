// quillon-cli: the experiment-file core without windows, for scripts and
// batch work. One process handles many files, so a batch pays the start-up
// (and the loading of the suite's lookups) once.

#include "app/AppState.h"
#include "app/OpenExperiment.h"
#include "app/RuntimeError.h"
#include "cli/ConsoleUserInterface.h"
#include "database/Sql.h"
#include "database/WorkDBCheck.h"
#include "database/WorkDatabase.h"
#include "format/ChangesReport.h"
#include "format/FileWriter.h"
#include "format/WriteFile.h"
#include "reference/SuiteFiles.h"
#include "validation/ExperimentDebugger.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#ifdef __GLIBC__
#include <malloc.h>
#endif
#include <memory>
#include <optional>

using namespace quillon;

namespace {

constexpr int ExitUsage = 2;

int usage(const char* why = nullptr)
{
    if (why)
        std::fprintf(stderr, "quillon-cli: %s\n", why);
    std::fprintf(stderr,
        "usage: quillon-cli view FILE... [--suite DIR] [--app-dir DIR] [--out DIR]\n"
        "       quillon-cli check FILE... [--suite DIR] [--app-dir DIR]\n"
        "       quillon-cli diff FILE... [--suite DIR] [--app-dir DIR] [--all]\n"
        "\n"
        "view   reads each FILE as File Open does and prints what Save would write\n"
        "       (to standard output, or to DIR/<file name> with --out)\n"
        "check  reads each FILE and runs the experiment checker on it\n"
        "diff   reads each FILE and prints the values Save would change or drop in it\n"
        "       (with --all the changes of layout only too)\n"
        "\n"
        "--suite DIR    the suite folder (default: $TERVA_DIR, else the sample suite)\n"
        "--app-dir DIR  the program folder: defaults files and the working database,\n"
        "               which is kept for the next run (default: a temporary folder)\n");
    return ExitUsage;
}

struct Options {
    QString command;
    QStringList files;
    QString suite;
    QString appDir;
    QString outDir;
    bool all = false;
};

bool parse(const QStringList& args, Options& o, QString& error)
{
    if (args.isEmpty()) {
        error = QStringLiteral("no command");
        return false;
    }
    o.command = args.first();
    if (o.command != QLatin1String("view") && o.command != QLatin1String("check")
        && o.command != QLatin1String("diff")) {
        error = QStringLiteral("unknown command '%1'").arg(o.command);
        return false;
    }
    for (int i = 1; i < args.size(); ++i) {
        const QString& a = args.at(i);
        QString* target = a == QLatin1String("--suite") ? &o.suite
            : a == QLatin1String("--app-dir")           ? &o.appDir
            : a == QLatin1String("--out")               ? &o.outDir
                                                        : nullptr;
        if (a == QLatin1String("--all") && o.command == QLatin1String("diff")) {
            o.all = true;
        } else if (target) {
            if (i + 1 >= args.size()) {
                error = QStringLiteral("%1 needs a folder").arg(a);
                return false;
            }
            *target = args.at(++i);
        } else if (a.startsWith(QLatin1String("--"))) {
            error = QStringLiteral("unknown option '%1'").arg(a);
            return false;
        } else {
            o.files << a;
        }
    }
    if (o.files.isEmpty()) {
        error = QStringLiteral("no file given");
        return false;
    }
    if (!o.outDir.isEmpty() && o.command != QLatin1String("view")) {
        error = QStringLiteral("--out belongs to view");
        return false;
    }
    return true;
}

// A temporary program folder gets the suite's defaults files when the suite
// has them, so that files read the way the windowed program reads them.
void copyDefaults(const QString& suite, const QString& appFolder)
{
    const QString tools = reference::findIn(suite, QStringLiteral("TOOLS/Quillon"));
    if (tools.isEmpty())
        return;
    for (const QString& name : reference::listMatching(tools, QStringLiteral("*.def")))
        QFile::copy(QDir(tools).filePath(name), QDir(appFolder).filePath(name));
}

QString defaultSuite()
{
    const QString fromEnvironment = qEnvironmentVariable("TERVA_DIR");
    return fromEnvironment.isEmpty() ? QStringLiteral(QUILLON_SAMPLE_SUITE_DIR) : fromEnvironment;
}

// diff: the file on disk against what Save would write for it. Counts the
// file in `withChanges` when a value would change; false when the file
// can't be read again.
bool printChanges(const QString& file, const QString& path, bool all, int& withChanges)
{
    QFile onDisk(path);
    if (!onDisk.open(QIODevice::ReadOnly)) {
        std::fprintf(
            stderr, "quillon-cli: %s: %s\n", qPrintable(file), qPrintable(onDisk.errorString()));
        return false;
    }
    format::FileWriter w;
    try {
        format::writeExperiment(w, QFileInfo(path).fileName());
    } catch (const RuntimeError& e) {
        std::fprintf(stderr, "quillon-cli: %s: %s\n", qPrintable(file), qPrintable(e.text()));
        return false;
    }
    const std::vector<format::SaveChange> changes
        = format::compareForSave(onDisk.readAll(), w.bytes());
    std::printf("%s\n", qPrintable(file));
    for (const QString& line : format::changesReport(changes, all))
        std::printf("  %s\n", qPrintable(line));
    if (format::valueChangeCount(changes) > 0)
        ++withChanges;
    return true;
}

} // namespace

int main(int argc, char* argv[])
try {
#ifdef __GLIBC__
    // A batch frees and takes the same large blocks file after file: the C
    // library keeps freed memory rather than give it back to the system and
    // fault it in again for the next file.
    mallopt(M_TRIM_THRESHOLD, 64 * 1024 * 1024);
#endif
    QCoreApplication app(argc, argv);
    Options options;
    QString error;
    if (!parse(QCoreApplication::arguments().mid(1), options, error))
        return usage(error.toLocal8Bit().constData());

    cli::ConsoleUserInterface console;
    setUserInterface(&console);

    AppState& s = state();
    s.DataFolder = QDir::toNativeSeparators(
        QDir(options.suite.isEmpty() ? defaultSuite() : options.suite).absolutePath());
    if (!QFileInfo(s.DataFolder).isDir())
        return usage("the suite folder doesn't exist");
    std::unique_ptr<QTemporaryDir> scratch;
    QString appFolder = options.appDir;
    if (appFolder.isEmpty()) {
        scratch = std::make_unique<QTemporaryDir>();
        appFolder = scratch->path();
        copyDefaults(s.DataFolder, appFolder);
    } else if (!QDir().mkpath(appFolder)) {
        return usage("the program folder can't be made");
    }
    if (!options.outDir.isEmpty() && !QDir().mkpath(options.outDir))
        return usage("the output folder can't be made");
    s.AppFolder = QDir::toNativeSeparators(QDir(appFolder).absolutePath()) + QDir::separator();
    s.WorkDBPath = s.AppFolder + QStringLiteral("QUILLONTEMP2.mdb");

    int failures = 0;
    int withFindings = 0;
    // The files after the first share one transaction, begun once the first
    // has made the working database ready: it is written to disk once, at
    // the end, instead of once a file.
    std::optional<database::Transaction> batch;
    for (const QString& file : options.files) {
        const QString path = QDir::toNativeSeparators(QFileInfo(file).absoluteFilePath());
        s.ExpFilePath = path;
        try {
            openExperiment(path);
        } catch (const cli::ProgramEnded&) {
            if (database::workDBDamageReported())
                throw;
            ++failures;
            continue;
        }
        if (!batch)
            batch.emplace();
        if (options.command == QLatin1String("view")) {
            format::FileWriter w;
            format::writeExperiment(w, QFileInfo(path).fileName());
            if (options.outDir.isEmpty()) {
                std::fwrite(w.bytes().constData(), 1, size_t(w.bytes().size()), stdout);
            } else if (!w.save(QDir(options.outDir).filePath(QFileInfo(path).fileName()), &error)) {
                std::fprintf(stderr, "quillon-cli: %s: %s\n", qPrintable(file), qPrintable(error));
                ++failures;
            }
        } else if (options.command == QLatin1String("diff")) {
            if (!printChanges(file, path, options.all, withFindings))
                ++failures;
        } else {
            const validation::DebugResult result = validation::DebugFile();
            std::printf("%s\n", qPrintable(file));
            for (const QString& line : validation::findingsReport(result))
                std::printf("%s\n", qPrintable(line));
            if (result.outcome != validation::DebugResult::Outcome::Clean)
                ++withFindings;
        }
    }
    if (batch)
        batch->commit();
    database::closeWorkDB();
    std::fflush(stdout);
    if (options.command != QLatin1String("view"))
        return failures > 0 ? ExitUsage : withFindings > 0 ? 1 : 0;
    return failures > 0 ? 1 : 0;
} catch (const cli::ProgramEnded&) {
    // A damaged working database spoils every file after it: the run stops
    // and says which file to delete.
    if (database::workDBDamageReported())
        std::fprintf(stderr,
            "quillon-cli: the working database %s is damaged: delete it and run again\n",
            qPrintable(state().WorkDBPath));
    return ExitUsage;
}
