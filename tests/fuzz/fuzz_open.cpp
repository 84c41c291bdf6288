// Fuzz target: any bytes opened as an experiment file (the whole of File
// Open: reading, repairs, relations, management tables), written as Save
// does, and compared with what was written (quillon-cli diff). What counts
// as a finding: a crash, a sanitizer report, a hang, an allocation beyond
// the fuzzer's limit, and a file that makes the program end (only a file
// that can't be opened may do that).
//
// Built with libFuzzer when the compiler offers it (QUILLON_LIBFUZZER);
// otherwise it is a standalone driver that damages the sample suite's files
// at random for a given number of seconds:
//   fuzz_open [seconds] [seed]
// and, given files, replays them: fuzz_open FILE...

#include "OpenBytes.h"

#include "app/UserInterface.h"
#include "database/WorkDatabase.h"
#include "format/SaveChanges.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

#ifndef QUILLON_LIBFUZZER
#include "Mutations.h"
#endif

using namespace quillon;

namespace {

// Answers every message with its first button and says nothing.
class SilentUserInterface final : public UserInterface {
public:
    MsgAnswer message(const QString&, const QString&, MsgIcon, MsgButtons buttons) override
    {
        return buttons == MsgButtons::YesNo || buttons == MsgButtons::YesNoCancel ? MsgAnswer::Yes
                                                                                  : MsgAnswer::OK;
    }
    QString openFileName(const QString&, const QString&, const QString&) override { return {}; }
    QString saveFileName(const QString&, const QString&, const QString&) override { return {}; }
    PrintChoice choosePrinter() override { return {}; }
    void progress(int) override { }
    void endProgram() override
    {
        std::fprintf(stderr, "fuzz_open: the file made the program end\n");
        std::abort();
    }
};

const char* const extensions[] = { "MZX", "WHX", "SQX", "SNX", "GSX", "FCX" };

QTemporaryDir* scratch = nullptr;

void setUp()
{
    static SilentUserInterface silent;
    setUserInterface(&silent);
    scratch = new QTemporaryDir(QDir::tempPath() + QStringLiteral("/quillon-fuzz-XXXXXX"));
    if (!scratch->isValid()
        || !test::prepareProgramFolder(scratch->path(), QStringLiteral(QUILLON_SAMPLE_SUITE_DIR))) {
        std::fprintf(stderr, "fuzz_open: no scratch folder\n");
        std::exit(2);
    }
}

QByteArray openOnce(const QByteArray& bytes)
{
    // The type of file follows from the extension; let the input choose it.
    const char* extension
        = extensions[(bytes.isEmpty() ? 0 : uchar(bytes.at(bytes.size() / 2))) % 6];
    const QByteArray written = test::openBytes(
        bytes, scratch->path(), QStringLiteral("QLNV2101.") + QLatin1String(extension));
    // What Save would change is told for any bytes as well.
    format::compareForSave(bytes, written);
    return written;
}

} // namespace

#ifdef QUILLON_LIBFUZZER

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    setUp();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray written
        = openOnce(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    if (!written.endsWith("\x1A\r\n"))
        std::abort();
    return 0;
}

#else

int main(int argc, char* argv[])
{
    setUp();
    QList<QByteArray> corpus;
    QDirIterator it(
        QStringLiteral(QUILLON_SAMPLE_SUITE_DIR), QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QFileInfo info(it.next());
        if (info.suffix().size() == 3
            && info.suffix().endsWith(QLatin1Char('X'), Qt::CaseInsensitive)) {
            QFile f(info.absoluteFilePath());
            if (f.open(QIODevice::ReadOnly))
                corpus << f.readAll();
        }
    }

    // Replay mode: the given files, once each.
    if (argc > 1 && !QByteArray(argv[1]).toInt()) {
        for (int i = 1; i < argc; ++i) {
            QFile f(QString::fromLocal8Bit(argv[i]));
            if (!f.open(QIODevice::ReadOnly))
                return 2;
            openOnce(f.readAll());
            std::printf("%s: read and written\n", argv[i]);
        }
        return 0;
    }

    const int seconds = argc > 1 ? std::atoi(argv[1]) : 60;
    const unsigned seed = argc > 2 ? unsigned(std::strtoul(argv[2], nullptr, 10)) : 1;
    test::Mutator mutator(seed);
    QElapsedTimer clock;
    clock.start();
    long runs = 0;
    while (clock.elapsed() < seconds * 1000LL) {
        QByteArray input = corpus.at(mutator.below(int(corpus.size())));
        input = mutator.mutate(input);
        // Keep the input where a crash can be replayed from.
        {
            QFile last(scratch->path() + QStringLiteral("/last-input"));
            if (last.open(QIODevice::WriteOnly))
                last.write(input);
        }
        const QByteArray written = openOnce(input);
        if (!written.endsWith("\x1A\r\n")) {
            std::fprintf(stderr, "fuzz_open: run %ld wrote no closing line\n", runs);
            return 1;
        }
        ++runs;
    }
    database::closeWorkDB();
    std::printf("fuzz_open: %ld runs in %d s, seed %u\n", runs, seconds, seed);
    return 0;
}

#endif
