// Times Quillon on an installed suite of real size, generated at run time
// (about 40 soil files with 430 profiles, shared title lines and repeated
// ids; 1,200 weather files; 160 cultivar files; 280 experiments of 2-30 KB
// with up to 40 treatments and event-heavy irrigation and fertilizer):
//   cli    quillon-cli view (to standard output, and with --out, whose
//          every file is synced to disk) and check over all experiments in
//          one process, with a new program folder (the working database is
//          built by the run) and with a kept one; best and median of runs
//   open   File Open of one experiment with the working database built,
//          as the main window runs it (median and worst)
//   check  the cost of the working database's soundness check
//
//   bench_installation [--keep DIR] [--runs N] [--cli PATH] [cli] [open] [check]
// --keep generates into DIR, or reuses what an earlier run generated there;
// --cli times another quillon-cli (an earlier build, say).
// Run a Release build on a machine as idle as can be; figures are printed.

#include "HeadlessHost.h"
#include "SuiteGenerator.h"

#include "app/AppState.h"
#include "app/DocumentCommands.h"
#include "database/WorkDatabase.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <vector>

using namespace quillon;

namespace {

const QString sampleSuite = QStringLiteral(QUILLON_SAMPLE_SUITE_DIR);
QString cliPath = QStringLiteral(QUILLON_CLI);

struct Spread {
    double best = 0;
    double median = 0;
    double worst = 0;
};

// Best, median and worst of figures where less is better.
Spread spreadOf(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return { values.front(), values[values.size() / 2], values.back() };
}

// The experiments laid out under a suite, as the generator names them.
QStringList experimentsIn(const QString& suite)
{
    QStringList files;
    QDirIterator it(suite, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QFileInfo info(it.next());
        if (info.fileName().startsWith(QLatin1Char('Q')) && info.suffix().size() == 3
            && info.suffix().endsWith(QLatin1Char('X'), Qt::CaseInsensitive))
            files << QDir::toNativeSeparators(info.absoluteFilePath());
    }
    files.sort();
    return files;
}

bench::Installation installationIn(const QString& folder)
{
    const QString marker = folder + QStringLiteral("/generated");
    if (QFile::exists(marker)) {
        bench::Installation kept;
        kept.suite = folder + QStringLiteral("/TERVA48");
        kept.experiments = experimentsIn(kept.suite);
        return kept;
    }
    QElapsedTimer t;
    t.start();
    bench::Installation made = bench::generateInstallation(folder, sampleSuite);
    bench::writeFile(marker, "1\n");
    std::printf("generated the installation in %lld ms: %d soil profiles, %d weather files, %d "
                "cultivar files\n",
        t.elapsed(), made.soilProfiles, made.weatherFiles, made.cultivarFiles);
    return made;
}

void describe(const QStringList& experiments)
{
    std::vector<qint64> sizes;
    qint64 total = 0;
    for (const QString& file : experiments) {
        sizes.push_back(QFileInfo(file).size());
        total += sizes.back();
    }
    std::sort(sizes.begin(), sizes.end());
    std::printf(
        "%lld experiments, %.1f MB, sizes %.1f / %.1f / %.1f KB (smallest / median / largest)\n",
        static_cast<long long>(experiments.size()), total / 1e6, sizes.front() / 1e3,
        sizes[sizes.size() / 2] / 1e3, sizes.back() / 1e3);
}

struct CliRun {
    double seconds = 0;
    int exitCode = 0;
};

CliRun runCli(const QStringList& arguments, const QString& errorFile = QString())
{
    QProcess cli;
    cli.setStandardOutputFile(QProcess::nullDevice());
    cli.setStandardErrorFile(errorFile.isEmpty() ? QProcess::nullDevice() : errorFile);
    QElapsedTimer t;
    t.start();
    cli.start(cliPath, arguments);
    cli.waitForFinished(-1);
    return { t.nsecsElapsed() / 1e9, cli.exitCode() };
}

void printRate(const char* what, int files, const std::vector<CliRun>& runs)
{
    std::vector<double> seconds;
    for (const CliRun& r : runs)
        seconds.push_back(r.seconds);
    const Spread s = spreadOf(seconds);
    std::printf("   %-34s best %6.0f files/s  median %6.0f files/s  (%zu runs, exit %d)\n", what,
        files / s.best, files / s.median, runs.size(), runs.back().exitCode);
}

void cliFigures(
    const QString& folder, const QString& suite, const QStringList& experiments, int runs)
{
    const QString kept = folder + QStringLiteral("/app");
    const QString out = folder + QStringLiteral("/out");
    const QStringList suiteArgs { QStringLiteral("--suite"), suite };
    // One untimed run builds the kept working database and tells what the
    // readers report, so that the figures are of runs that show the same.
    QDir(kept).removeRecursively();
    const QString errors = folder + QStringLiteral("/messages.txt");
    runCli(QStringList { QStringLiteral("view") } + experiments + suiteArgs
            + QStringList { QStringLiteral("--app-dir"), kept, QStringLiteral("--out"), out },
        errors);
    QFile messages(errors);
    messages.open(QIODevice::ReadOnly);
    const QList<QByteArray> lines = messages.readAll().split('\n');
    std::printf(
        "c) quillon-cli over %lld experiments (messages on standard error: %lld, the first: %s)\n",
        static_cast<long long>(experiments.size()), static_cast<long long>(lines.size() - 1),
        lines.value(0).left(100).constData());

    const QStringList keptArgs { QStringLiteral("--app-dir"), kept };
    std::vector<CliRun> printed, cold, warm, checked;
    for (int r = 0; r < runs; ++r) {
        printed.push_back(
            runCli(QStringList { QStringLiteral("view") } + experiments + suiteArgs + keptArgs));
        cold.push_back(runCli(QStringList { QStringLiteral("view") } + experiments + suiteArgs
            + QStringList { QStringLiteral("--out"), out }));
        warm.push_back(runCli(QStringList { QStringLiteral("view") } + experiments + suiteArgs
            + keptArgs + QStringList { QStringLiteral("--out"), out }));
        checked.push_back(
            runCli(QStringList { QStringLiteral("check") } + experiments + suiteArgs + keptArgs));
    }
    const int n = int(experiments.size());
    printRate("view, kept folder, standard output", n, printed);
    printRate("view --out, new program folder", n, cold);
    printRate("view --out, kept program folder", n, warm);
    printRate("check, kept program folder", n, checked);
}

// File Open of the median-size and the largest experiment, the working
// database built by an earlier Open.
void openFigures(
    const QString& folder, const QString& suite, const QStringList& experiments, int runs)
{
    bench::BenchUserInterface ui;
    ui.print = false;
    setUserInterface(&ui);
    bench::HeadlessHost host;
    setDocumentHost(&host);
    const QString program = folder + QStringLiteral("/program");
    QDir(program).removeRecursively();
    bench::useProgramFolder(program, suite);

    QStringList bySize = experiments;
    std::sort(bySize.begin(), bySize.end(), [](const QString& a, const QString& b) {
        return QFileInfo(a).size() < QFileInfo(b).size();
    });
    std::printf("b) File Open, working database built, %d runs each:\n", runs);
    for (const QString& file : { bySize.at(bySize.size() / 2), bySize.back() }) {
        ui.openAnswer = file;
        mnuFileOpen_Click();
        std::vector<double> times;
        int messages = 0;
        for (int r = 0; r < runs; ++r) {
            mnuFileClose_Click();
            ui.messages = 0;
            QElapsedTimer t;
            t.start();
            mnuFileOpen_Click();
            times.push_back(t.nsecsElapsed() / 1e6);
            messages = ui.messages;
        }
        mnuFileClose_Click();
        const Spread spread = spreadOf(times);
        std::printf("   %s (%5.1f KB)   median %6.1f ms  best %6.1f ms  worst %6.1f ms  (%d "
                    "messages an Open)\n",
            qPrintable(QFileInfo(file).fileName()), QFileInfo(file).size() / 1e3, spread.median,
            spread.best, spread.worst, messages);
    }
    database::closeWorkDB();
    setDocumentHost(nullptr);
}

// PRAGMA quick_check on the working database the kept-folder runs built.
void checkFigures(const QString& folder, int runs)
{
    const QString path = folder + QStringLiteral("/app/QUILLONTEMP2.mdb");
    if (!QFile::exists(path)) {
        std::printf("d) no working database at %s: run the cli part first\n", qPrintable(path));
        return;
    }
    std::vector<double> times;
    QString answer;
    {
        QSqlDatabase db
            = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("check"));
        db.setDatabaseName(path);
        db.open();
        for (int r = 0; r < runs; ++r) {
            QElapsedTimer t;
            t.start();
            QSqlQuery q(db);
            q.exec(QStringLiteral("PRAGMA quick_check"));
            answer = q.next() ? q.value(0).toString() : QStringLiteral("(no answer)");
            times.push_back(t.nsecsElapsed() / 1e6);
        }
        db.close();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("check"));
    const Spread spread = spreadOf(times);
    std::printf("d) PRAGMA quick_check of the working database (%.1f MB): median %.2f ms, worst "
                "%.2f ms (%s)\n",
        QFileInfo(path).size() / 1e6, spread.median, spread.worst, qPrintable(answer));
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QTemporaryDir scratch;
    QString folder = scratch.path();
    int runs = 5;
    QStringList parts;
    const QStringList args = app.arguments().mid(1);
    for (int i = 0; i < args.size(); ++i) {
        if (args.at(i) == QLatin1String("--keep") && i + 1 < args.size())
            folder = QDir(args.at(++i)).absolutePath();
        else if (args.at(i) == QLatin1String("--cli") && i + 1 < args.size())
            cliPath = args.at(++i);
        else if (args.at(i) == QLatin1String("--runs") && i + 1 < args.size())
            runs = std::max(1, args.at(++i).toInt());
        else
            parts << args.at(i);
    }
    if (parts.isEmpty())
        parts = QStringList { QStringLiteral("cli"), QStringLiteral("open"),
            QStringLiteral("check") };
    QDir().mkpath(folder);

    const bench::Installation installation = installationIn(folder);
    describe(installation.experiments);
    if (parts.contains(QLatin1String("open")))
        openFigures(folder, installation.suite, installation.experiments, std::max(runs, 15));
    if (parts.contains(QLatin1String("cli")))
        cliFigures(folder, installation.suite, installation.experiments, runs);
    if (parts.contains(QLatin1String("check")))
        checkFigures(folder, std::max(runs, 20));
    return 0;
}
