// Times the experiment-file reader and writer (run a Release build; figures
// are printed, nothing is asserted):
//   a) the sample maize experiment opened and written, warm;
//   b) a large generated experiment (99 treatments, 99 levels of every
//      factor, about 20,000 event rows) read, opened and written, and the
//      process's peak memory;
//   c) quillon-cli view, check and diff over 1,000 sample-size files in one
//      process, and diff of the large generated file.
//
//   bench_experiment_file [--keep DIR] [--cli PATH] [a] [b] [c]
// --keep leaves the generated files in DIR; --cli times another quillon-cli
// (an earlier build, say); naming parts runs only those.

#include "HeadlessHost.h"

#include "LargeExperiment.h"
#include "app/AppState.h"
#include "app/OpenExperiment.h"
#include "app/UserInterface.h"
#include "database/WorkDatabase.h"
#include "format/ChangesReport.h"
#include "format/Columns.h"
#include "format/Cp1252.h"
#include "format/FileWriter.h"
#include "format/ReadFile.h"
#include "format/TextLines.h"
#include "format/WriteFile.h"
#include "validation/TableRelations.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <vector>

using namespace quillon;

namespace {

const QString suiteDir = QStringLiteral(QUILLON_SAMPLE_SUITE_DIR);
QString cliPath = QStringLiteral(QUILLON_CLI);

class QuietUserInterface final : public UserInterface {
public:
    int messages = 0;
    QString first;
    MsgAnswer message(const QString& text, const QString&, MsgIcon, MsgButtons) override
    {
        if (messages++ == 0)
            first = text;
        return MsgAnswer::OK;
    }
    QString openFileName(const QString&, const QString&, const QString&) override { return {}; }
    QString saveFileName(const QString&, const QString&, const QString&) override { return {}; }
    PrintChoice choosePrinter() override { return {}; }
    void progress(int) override { }
    void endProgram() override { throw std::runtime_error("the program would end here"); }
};

QuietUserInterface quiet;

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v.empty() ? 0 : v[v.size() / 2];
}

double best(const std::vector<double>& v)
{
    return v.empty() ? 0 : *std::min_element(v.begin(), v.end());
}

long peakMemoryKb()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').first().toLong();
    }
    return -1;
}

QByteArray contents(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

bool writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

QByteArray writtenText(const QString& fileName)
{
    format::FileWriter w;
    format::writeExperiment(w, fileName);
    return w.bytes();
}

// ---- the runs --------------------------------------------------------------

void sampleMaize()
{
    const QString maize
        = QDir::toNativeSeparators(suiteDir + QStringLiteral("/Maize/QLNV2101.MZX"));
    std::vector<double> open, read, write;
    QElapsedTimer t;
    for (int run = 0; run < 30; ++run) {
        t.start();
        openExperiment(maize);
        open.push_back(t.nsecsElapsed() / 1e6);
        t.start();
        const QByteArray text = writtenText(QStringLiteral("QLNV2101.MZX"));
        write.push_back(t.nsecsElapsed() / 1e6);
        if (text != contents(maize))
            std::printf("  (the written text differs from the file)\n");
    }
    QStringList lines;
    format::readLines(maize, lines);
    validation::DeleteRelations();
    for (int run = 0; run < 30; ++run) {
        database::CleanDataBase_Partially();
        state().comments.clear();
        t.start();
        format::readExperimentLines(maize, lines);
        read.push_back(t.nsecsElapsed() / 1e6);
    }
    std::printf("a) sample maize experiment (%lld bytes), warm, median of 30:\n",
        static_cast<long long>(QFileInfo(maize).size()));
    std::printf("   File Open (prepare, read, repairs, relations) %7.2f ms\n", median(open));
    std::printf("   the reading of the lines alone               %7.2f ms\n", median(read));
    std::printf("   writing the text                             %7.2f ms\n", median(write));
    std::printf("   open + write                                 %7.2f ms   (target < 20 ms)\n",
        median(open) + median(write));
}

QString largePath(const QString& folder)
{
    return QDir::toNativeSeparators(folder + QStringLiteral("/QLGN9901.MZX"));
}

// Writes the large experiment to the folder; returns its bytes.
QByteArray writeLarge(const QString& folder, int& eventRows)
{
    const QByteArray bytes = bench::generateLarge(
        contents(suiteDir + QStringLiteral("/Maize/QLNV2101.MZX")), 16, eventRows);
    writeBytes(largePath(folder), bytes);
    return bytes;
}

void largeExperiment(const QString& folder)
{
    int eventRows = 0;
    const QByteArray bytes = writeLarge(folder, eventRows);
    const QString path = largePath(folder);
    std::printf(
        "b) generated experiment: %lld bytes, %lld lines, 99 treatments, 99 levels a factor, "
        "%d event rows\n",
        static_cast<long long>(bytes.size()), static_cast<long long>(bytes.count('\n')), eventRows);

    QElapsedTimer t;
    // The reading alone (ReadFile: defaults, lines, section readers) into an
    // emptied database.
    validation::DeleteRelations();
    database::CleanDataBase_Partially();
    state().comments.clear();
    quiet.messages = 0;
    t.start();
    format::ReadFile(path);
    const double read = t.nsecsElapsed() / 1e6;
    const int readMessages = quiet.messages;

    state().ExpFilePath = path;
    t.start();
    openExperiment(path);
    const double open = t.nsecsElapsed() / 1e6;

    t.start();
    format::FileWriter w;
    format::writeExperiment(w, QStringLiteral("QLGN9901.MZX"));
    const double write = t.nsecsElapsed() / 1e6;
    QDir().mkpath(folder + QStringLiteral("/written"));
    t.start();
    w.save(folder + QStringLiteral("/written/QLGN9901.MZX"));
    const double save = t.nsecsElapsed() / 1e6;

    std::printf(
        "   ReadFile (reading alone)                      %8.1f ms   (target < 500 ms)\n", read);
    std::printf("   File Open as a whole                          %8.1f ms\n", open);
    std::printf(
        "   writing the text                              %8.1f ms   (target < 300 ms)\n", write);
    std::printf("   saving it (temporary file, sync, rename)      %8.1f ms\n", save);
    std::vector<double> compare;
    int valueChanges = 0;
    for (int run = 0; run < 5; ++run) {
        t.start();
        valueChanges = format::valueChangeCount(format::compareForSave(bytes, w.bytes()));
        compare.push_back(t.nsecsElapsed() / 1e6);
    }
    std::printf("   comparing file and text (diff), 5 runs        %8.1f ms best, %.1f ms median; "
                "%d value changes\n",
        best(compare), median(compare), valueChanges);
    std::printf("   written %lld bytes; %d messages while reading%s%s\n",
        static_cast<long long>(w.bytes().size()), readMessages, readMessages ? ", the first: " : "",
        qPrintable(quiet.first.left(120)));
    std::printf("   peak memory (VmHWM)                           %8.1f MB   (target < 100 MB)\n",
        peakMemoryKb() / 1024.0);
}

void cliBatch(const QString& folder)
{
    std::vector<QString> samples;
    QDirIterator it(suiteDir, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QFileInfo info(it.next());
        if (info.suffix().size() == 3
            && info.suffix().endsWith(QLatin1Char('X'), Qt::CaseInsensitive))
            samples.push_back(info.absoluteFilePath());
    }
    std::sort(samples.begin(), samples.end());
    const QString in = folder + QStringLiteral("/batch");
    QDir().mkpath(in);
    QStringList files;
    for (int i = 0; i < 1000; ++i) {
        const QFileInfo sample(samples.at(size_t(i) % samples.size()));
        const QString name
            = QStringLiteral("QB%1.%2").arg(i, 6, 10, QLatin1Char('0')).arg(sample.suffix());
        QFile::copy(sample.absoluteFilePath(), in + QLatin1Char('/') + name);
        files << in + QLatin1Char('/') + name;
    }
    auto run = [&](const QString& command, const QStringList& extra) {
        QProcess cli;
        cli.setStandardOutputFile(QProcess::nullDevice());
        cli.setStandardErrorFile(QProcess::nullDevice());
        QElapsedTimer t;
        t.start();
        cli.start(cliPath, QStringList { command } + files + extra);
        cli.waitForFinished(-1);
        const double seconds = t.nsecsElapsed() / 1e9;
        return std::make_pair(seconds, cli.exitCode());
    };
    const auto toStdout = run(QStringLiteral("view"), { QStringLiteral("--suite"), suiteDir });
    const auto toFiles = run(QStringLiteral("view"),
        { QStringLiteral("--suite"), suiteDir, QStringLiteral("--out"),
            folder + QStringLiteral("/out") });
    const auto checked = run(QStringLiteral("check"), { QStringLiteral("--suite"), suiteDir });
    std::printf("c) quillon-cli view, 1,000 sample-size files in one process:\n");
    std::printf(
        "   to standard output     %6.2f s  %6.0f files/s   (exit %d; target >= 200 files/s)\n",
        toStdout.first, 1000 / toStdout.first, toStdout.second);
    std::printf("   with --out (saved)     %6.2f s  %6.0f files/s   (exit %d)\n", toFiles.first,
        1000 / toFiles.first, toFiles.second);
    std::printf(
        "   quillon-cli check      %6.2f s  %6.0f files/s   (exit %d; target >= 100 files/s)\n",
        checked.first, 1000 / checked.first, checked.second);

    // The machine is shared: diff runs three times, best and median shown.
    const auto diffThrice = [&](std::vector<double>& seconds) {
        int exit = 0;
        for (int round = 0; round < 3; ++round) {
            const auto diffed
                = run(QStringLiteral("diff"), { QStringLiteral("--suite"), suiteDir });
            seconds.push_back(diffed.first);
            exit = diffed.second;
        }
        return exit;
    };
    std::vector<double> batch, large;
    const int batchExit = diffThrice(batch);
    std::printf("   quillon-cli diff       %6.2f s  %6.0f files/s   best of 3, median %.0f files/s "
                "(exit %d; target >= 150 files/s)\n",
        best(batch), 1000 / best(batch), 1000 / median(batch), batchExit);
    int eventRows = 0;
    if (!QFile::exists(largePath(folder)))
        writeLarge(folder, eventRows);
    files = QStringList { largePath(folder) };
    const int largeExit = diffThrice(large);
    std::printf("   quillon-cli diff of the large generated file: %.2f s best of 3, %.2f s median "
                "(exit %d; target < 1 s)\n",
        best(large), median(large), largeExit);
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    setUserInterface(&quiet);
    QTemporaryDir scratch;
    QString folder = scratch.path();
    QStringList parts = app.arguments().mid(1);
    if (parts.size() > 1 && parts.first() == QLatin1String("--keep")) {
        folder = parts.at(1);
        QDir().mkpath(folder);
        parts = parts.mid(2);
    }
    if (parts.size() > 1 && parts.first() == QLatin1String("--cli")) {
        cliPath = parts.at(1);
        parts = parts.mid(2);
    }
    if (parts.isEmpty())
        parts = QStringList { QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c") };

    AppState& s = state();
    bench::useProgramFolder(folder + QStringLiteral("/app"), suiteDir);

    // The first open builds the working database and loads the suite's
    // lookups; the figures are of the opens behind it.
    const QString maize
        = QDir::toNativeSeparators(suiteDir + QStringLiteral("/Maize/QLNV2101.MZX"));
    s.ExpFilePath = maize;
    openExperiment(maize);
    if (parts.contains(QLatin1String("a")))
        sampleMaize();
    if (parts.contains(QLatin1String("b")))
        largeExperiment(folder);
    database::closeWorkDB();
    if (parts.contains(QLatin1String("c")))
        cliBatch(folder);
    return 0;
}
