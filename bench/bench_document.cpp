// Times the document commands on the sample maize experiment, the way the
// main window runs them, with a headless host standing in for the windows
// (it loads the identification values and the crop list as the
// identification window does when it is shown):
//   - File Open with the working database already built,
//   - File Open with the working database missing, so that every lookup is
//     rebuilt from the sample suite,
//   - File Save: write, empty the database, read the file back.
// Run a Release build; the figures are printed in milliseconds.

#include "HeadlessHost.h"

#include "app/AppState.h"
#include "app/DocumentCommands.h"
#include "app/UserInterface.h"
#include "database/WorkDatabase.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <vector>

using namespace quillon;
using bench::BenchUserInterface;
using bench::HeadlessHost;

namespace {

void copyFolder(const QString& from, const QString& to)
{
    const QDir source(from);
    QDirIterator it(from, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString file = it.next();
        const QString target = QDir(to).filePath(source.relativeFilePath(file));
        QDir().mkpath(QFileInfo(target).path());
        if (!QFile::copy(file, target))
            throw std::runtime_error("can't copy " + file.toStdString());
    }
}

struct Figures {
    double median = 0;
    double worst = 0;
};

template <typename Step, typename Between> Figures timeRuns(int runs, Step step, Between between)
{
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        between();
        QElapsedTimer timer;
        timer.start();
        step();
        times.push_back(timer.nsecsElapsed() / 1e6);
    }
    std::sort(times.begin(), times.end());
    return { times[times.size() / 2], times.back() };
}

void print(const char* what, const Figures& f, double target)
{
    std::printf("%-48s median %7.1f ms  worst %7.1f ms  (target %4.0f ms) %s\n", what, f.median,
        f.worst, target, f.median < target ? "ok" : "OVER");
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    BenchUserInterface bench;
    setUserInterface(&bench);
    HeadlessHost host;
    setDocumentHost(&host);

    QTemporaryDir dir;
    const QString suite = dir.filePath(QStringLiteral("TERVA48"));
    const QString program = dir.filePath(QStringLiteral("program"));
    copyFolder(QStringLiteral(QUILLON_SAMPLE_SUITE_DIR), suite);
    bench::useProgramFolder(program, suite);
    bench.openAnswer = QDir::toNativeSeparators(suite + QStringLiteral("/Maize/QLNV2101.MZX"));
    const int runs = argc > 1 ? std::max(1, atoi(argv[1])) : 15;

    auto close = [] {
        if (state().DocumentOpen)
            mnuFileClose_Click();
    };
    try {
        // The first open builds the working database.
        mnuFileOpen_Click();
        print("Open, working database built", timeRuns(runs, mnuFileOpen_Click, close), 100);
        print("Open, working database missing",
            timeRuns(runs, mnuFileOpen_Click,
                [&] {
                    close();
                    database::closeWorkDB();
                    QFile::remove(state().WorkDBPath);
                }),
            1000);
        close();
        mnuFileOpen_Click();
        print("Save (write, read back, reopen)", timeRuns(runs, mnuFileSave_Click, [] {}), 150);
    } catch (const std::exception& e) {
        std::printf("stopped: %s\n", e.what());
        return 1;
    }
    std::printf("%zu crops offered, %d messages\n", host.crops, bench.messages);
    database::closeWorkDB();
    return bench.messages == 0 ? 0 : 1;
}
