// Files that aren't what they should be: any bytes must open without a
// crash, a hang or the program ending, and come out as a file again.

#include "app/AppState.h"
#include "database/Sql.h"
#include "format/Cp1252.h"
#include "support/QtPrinters.h"
#include "support/WorkDbFixture.h"

#include "fuzz/Mutations.h"
#include "fuzz/OpenBytes.h"

#include <QDirIterator>
#include <QElapsedTimer>

#include <gtest/gtest.h>

using namespace quillon;
using namespace quillon::test;

namespace {

const QString suiteDir = QStringLiteral(QUILLON_SAMPLE_SUITE_DIR);

class DamagedInput : public WorkDbTest {
protected:
    void SetUp() override
    {
        WorkDbTest::SetUp();
        ASSERT_TRUE(prepareProgramFolder(m_dir.path(), suiteDir));
    }

    // Opens the bytes and checks what any file must give: no end of the
    // program and a written text that closes as a file should.
    QByteArray open(const QByteArray& bytes, const QString& name = QStringLiteral("QLNV2101.MZX"))
    {
        QByteArray written;
        m_ui.clear();
        EXPECT_NO_THROW(written = openBytes(bytes, m_dir.path(), name));
        EXPECT_TRUE(written.startsWith("*EXP.DETAILS: "));
        EXPECT_TRUE(written.endsWith("\r\n\x1A\r\n"));
        return written;
    }

    static QList<QByteArray> sampleFiles()
    {
        QList<QByteArray> files;
        QDirIterator it(suiteDir, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QFileInfo info(it.next());
            if (info.suffix().size() == 3
                && info.suffix().endsWith(QLatin1Char('X'), Qt::CaseInsensitive)) {
                QFile f(info.absoluteFilePath());
                if (f.open(QIODevice::ReadOnly))
                    files << f.readAll();
            }
        }
        return files;
    }
};

} // namespace

TEST_F(DamagedInput, OddBytesOpenAndSave)
{
    const QByteArray treatments = "*TREATMENTS\r\n@N R O C TNAME\r\n";
    const struct {
        const char* what;
        QByteArray bytes;
    } cases[] = {
        { "an empty file", QByteArray() },
        { "only the closing mark", QByteArray("\x1A") },
        { "only line ends", QByteArray("\r\n\r\n\n\r\r") },
        { "NUL bytes", QByteArray(300, '\0') },
        { "a NUL inside a data line", treatments + QByteArray(" 1 1 0 0 Name\0 here   1  1", 28) },
        { "tabs for blanks", treatments + " 1\t1\t0\t0\tName\t1\t1\r\n" },
        { "a section line and nothing else", QByteArray("*SIMULATION CONTROLS") },
        { "a simulation group without its line", QByteArray("@N GENERAL\r\n 1 GE") },
        { "a header that ends the file", QByteArray("*FIELDS\r\n@L ID_FIELD") },
        { "a line of 20,000 characters", treatments + QByteArray(20000, '9') + "\r\n" },
        { "a treatment line cut in a column", treatments + " 1 1 0 0 Na" },
        { "CR-only line ends",
            QByteArray("*CULTIVARS\r@C CR INGENO CNAME\r 1 MZ QL0003 Northfield\r") },
        { "LF-only line ends",
            QByteArray("*CULTIVARS\n@C CR INGENO CNAME\n 1 MZ QL0003 Northfield\n") },
        { "levels far out of range",
            treatments + " 1 1 0 0 Big levels               99999 32767 -5 70000\r\n" },
        { "every key, one after another",
            QByteArray("*EXP\r\n*GEN\r\n@SIT\r\n@ "
                       "PA\r\n*TRE\r\n*CUL\r\n*SOI\r\n*FIE\r\n*INI\r\n*PLA\r\n*IRR\r\n"
                       "*FER\r\n*RES\r\n*CHE\r\n*TIL\r\n*ENV\r\n*HAR\r\n@N G\r\n*SIM\r\n@  "
                       "AUTOMATIC\r\n") },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        open(c.bytes);
    }
}

TEST_F(DamagedInput, BytesOfTheCodePageSurviveWhereTheColumnIsKept)
{
    // Letters of code page 1252 (ü, é, Ñ, €) and two of the bytes it leaves
    // undefined (0x81, 0x9D).
    const QByteArray input = "*EXP.DETAILS: QLNV2101MZ Ma\xEFs d'\xE9t\xE9\r\n"
                             "\r\n"
                             "*GENERAL\r\n"
                             "@PEOPLE\r\n"
                             "M\xFCller J., \xD1u\xF1" "ez A.\r\n"
                             "@NOTES\r\n"
                             " Costs in \x80, odd bytes \x81\x9D kept\r\n"
                             "\r\n"
                             "*CULTIVARS\r\n"
                             "@C CR INGENO CNAME\r\n"
                             " 1 MZ QL0003 Cr\xE8me br\xFBl\xE9\r\n"
                             "! a comment with \xA7 and \xFF\r\n";
    const QByteArray written = open(input);
    for (const QByteArray& line : { QByteArray("*EXP.DETAILS: QLNV2101MZ MA\xCFS D'\xC9T\xC9\r\n"),
             QByteArray("\r\nM\xFCller J., \xD1u\xF1" "ez A.\r\n"),
             QByteArray("\r\n Costs in \x80, odd bytes \x81\x9D kept\r\n"),
             QByteArray("\r\n 1 MZ QL0003 Cr\xE8me br\xFBl\xE9\r\n"),
             QByteArray("\r\n! a comment with \xA7 and \xFF\r\n") })
        EXPECT_TRUE(written.contains(line)) << "lost: " << line.toStdString();
}

TEST_F(DamagedInput, MutatedSampleFilesOpenAndSave)
{
    const QList<QByteArray> samples = sampleFiles();
    ASSERT_FALSE(samples.isEmpty());
    const unsigned seed = 20261122;
    const char* const names[]
        = { "QLNV2101.MZX", "QLNV1901.SQX", "QLNV1902.SNX", "QLMH1901.GSX", "QLNV2201.FCX" };
    Mutator mutator(seed);
    QElapsedTimer clock;
    clock.start();
    for (int run = 0; run < 300; ++run) {
        const QByteArray input = mutator.mutate(samples.at(mutator.below(int(samples.size()))));
        SCOPED_TRACE("seed " + std::to_string(seed) + ", run " + std::to_string(run));
        const QByteArray written = open(input, QLatin1String(names[mutator.below(5)]));
        // Nothing grows out of all proportion: every written line stands for
        // something that was read, and the writer's own lines are few.
        EXPECT_LT(written.size(), 3 * input.size() + 64 * 1024);
        if (HasFailure())
            break;
    }
    EXPECT_LT(clock.elapsed(), 60000) << "a damaged file took far too long";
}
