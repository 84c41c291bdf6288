// What Save would change: header columns, the comparison of two texts, and
// crafted files run through the real reader and writer.

#include "format/SaveChanges.h"
#include "format/ChangesReport.h"
#include "format/HeaderColumns.h"
#include "support/WorkDbFixture.h"

#include "fuzz/Mutations.h"
#include "fuzz/OpenBytes.h"

#include <QDirIterator>

#include <gtest/gtest.h>

using namespace quillon;
using namespace quillon::format;

namespace {

const QString suiteDir = QStringLiteral(QUILLON_SAMPLE_SUITE_DIR);

QByteArray crlf(const QString& text)
{
    QString t = text;
    t.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
    return t.toLatin1();
}

QStringList report(const QString& onDisk, const QString& written, bool withLayout = false)
{
    return changesReport(compareForSave(crlf(onDisk), crlf(written)), withLayout);
}

QByteArray sample(const QString& relative)
{
    QFile f(suiteDir + QLatin1Char('/') + relative);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

} // namespace

TEST(HeaderColumns, SpansFollowTheWriter)
{
    const struct {
        const char* header;
        const char* column;
        int start;
        int end;
    } cases[] = {
        { "@A  SABL  SADM  SAOC  SANI SAPHW SAPHB  SAPX  SAKE  SASC", "SAKE", 45, 50 },
        { "@A  SABL  SADM  SAOC  SANI SAPHW SAPHB  SAPX  SAKE  SASC", "SASC", 51, 0 },
        { "@A  SABL  SADM  SAOC  SANI SAPHW SAPHB  SAPX  SAKE  SASC", "@A", 1, 3 },
        { "@N R O C TNAME.................... CU FL SA IC MP MI MF MR MC MT ME MH SM", "@N", 1, 2 },
        { "@N R O C TNAME.................... CU FL SA IC MP MI MF MR MC MT ME MH SM", "TNAME", 9,
            34 },
        { "@C CDATE CHCOD CHAMT  CHME CHDEP   CHT..CHNAME", "CHT", 33, 38 },
        { "@C CDATE CHCOD CHAMT  CHME CHDEP   CHT..CHNAME", "CHNAME", 39, 0 },
        { "@L ID_FIELD WSTA....  FLSA  FLOB  FLDT  FLDD  FLDS  FLST SLTX  SLDP  ID_SOIL    FLNAME",
            "ID_SOIL", 68, 80 },
        { "@L ID_FIELD WSTA....  FLSA  FLOB  FLDT  FLDD  FLDS  FLST SLTX  SLDP  ID_SOIL    FLNAME",
            "FLSA", 21, 26 },
        { "@L ...........XCRD ...........YCRD .....ELEV", "YCRD", 19, 34 },
        { "@ PAREA  PRNO  PLEN  PLDR", "PAREA", 1, 7 },
        { "@E ODATE EDAY  ERAD  EMAX  EMIN  ERAIN ECO2  EDEW  EWIND ENVNAME  ", "EDAY factor", 9,
            10 },
        { "@E ODATE EDAY  ERAD  EMAX  EMIN  ERAIN ECO2  EDEW  EWIND ENVNAME  ", "EWIND", 53, 56 },
        { "@E ODATE EDAY  ERAD  EMAX  EMIN  ERAIN ECO2  EDEW  EWIND ENVNAME  ", "ENVNAME", 57, 0 },
        { "@N GENERAL     NYERS NREPS START SDATE RSEED SNAME.................... SMODEL", "SNAME",
            45, 71 },
        { "@N GENERAL     NYERS NREPS START SDATE RSEED SNAME.................... SMODEL", "SMODEL",
            72, 0 },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.header) + " / " + c.column);
        const GroupHeader h = groupHeader(QLatin1String(c.header));
        const auto it = std::find_if(h.columns.begin(), h.columns.end(),
            [&](const HeaderColumn& col) { return col.name == QLatin1String(c.column); });
        ASSERT_NE(it, h.columns.end());
        EXPECT_EQ(it->start, c.start);
        EXPECT_EQ(it->end, c.end);
    }
    EXPECT_EQ(groupHeader(QStringLiteral("@C   PCR ICDAT")).key, QStringLiteral("@C PCR"));
    EXPECT_EQ(groupHeader(QStringLiteral("@C PCR ICDAT")).key, QStringLiteral("@C PCR"));
    EXPECT_TRUE(groupHeader(QStringLiteral("@PEOPLE")).columns.empty());
    EXPECT_TRUE(groupHeader(QStringLiteral("@")).columns.empty());
}

TEST(SaveChanges, EachKindOnCraftedTexts)
{
    const QString layers = QStringLiteral(
        "*SOIL ANALYSIS\n@A  SABL  SADM  SAOC  SANI SAPHW SAPHB  SAPX  SAKE  SASC\n");
    const QString harvest
        = QStringLiteral("*SIMULATION CONTROLS\n@N HARVEST     HFRST HLAST HPCNP HPCNR");
    const struct {
        const char* what;
        QString onDisk;
        QString written;
        QStringList expected;
    } cases[] = {
        { "the same value in other forms, blanks and a moved comment",
            layers
                + QStringLiteral(
                    " 1    15    .8    13   -99 -99.0   -99   -99   -99   -99   \n"
                    "! a comment\n 1    30   1.0  2.10  0.14   6.5   6.9  14.0   0.3  0.95\n"),
            layers
                + QStringLiteral(
                    " 1    15   0.8  13.0 -99.0   -99 -99.0 -99.0 -99.0   -99\n"
                    " 1    30   1.0  2.10  0.14   6.5   6.9  14.0   0.3  0.95\n! a comment\n"),
            { QStringLiteral("No values change."),
                QStringLiteral("(8 changes of layout only are not listed.)") } },
        { "a rounded value and -99.00 against its neighbour",
            layers + QStringLiteral(" 1    15  1.34  2.10  0.18   6.4   6.9  28.5 -99.0   -99\n"),
            layers + QStringLiteral(" 1    15   1.3  2.10  0.18   6.4   6.9  28.5 -99.0-99.00\n"),
            { QStringLiteral("value changed: *SOIL ANALYSIS, @A SABL, level 1, SADM: \"1.34\" -> "
                             "\"1.3\" (line 3 -> 3)"),
                QStringLiteral(
                    "value changed: *SOIL ANALYSIS, @A SABL, level 1, SASC: \"-99\" -> \"-99.00\", "
                    "now touches SAKE (line 3 -> 3)") } },
        { "a trailing column the writer doesn't carry",
            harvest + QStringLiteral(" HMFRQ\n 1 HA              0 79065   100     0     7\n"),
            harvest + QStringLiteral("\n 1 HA              0 79065   100     0\n"),
            { QStringLiteral(
                  "dropped: *SIMULATION CONTROLS, @N HARVEST, level 1, HMFRQ: \"7\", the column is "
                  "not written (line 3 -> 3)"),
                QStringLiteral("(1 changes of layout only are not listed.)") } },
        { "a title cut and put in capitals",
            QStringLiteral(
                "*EXP.DETAILS: QLNV2101MZ Maize trial\n*SIMULATION CONTROLS\n"
                "@N GENERAL     NYERS NREPS START SDATE RSEED SNAME.................... SMODEL\n"
                " 1 GE              1     1     S 21100  2150 TWENTY-FIVE CHARACTERS OK MZKES\n"),
            QStringLiteral(
                "*EXP.DETAILS: QLNV2101MZ MAIZE TRIAL\n*SIMULATION CONTROLS\n"
                "@N GENERAL     NYERS NREPS START SDATE RSEED SNAME.................... SMODEL\n"
                " 1 GE              1     1     S 21100  2150 TWENTY-FIVE CHARACTERS O  MZKES\n"),
            { QStringLiteral("value changed: *EXP.DETAILS:, title: \"Maize trial\" -> \"MAIZE "
                             "TRIAL\" (line 1 -> 1)"),
                QStringLiteral("value changed: *SIMULATION CONTROLS, @N GENERAL, level 1, SNAME: "
                               "\"TWENTY-FIVE CHARACTERS OK\" -> \"TWENTY-FIVE CHARACTERS O\" "
                               "(line 4 -> 4)") } },
        { "a comment, a line and a section gone; a line of missing values left out",
            QStringLiteral("*GENERAL\n@ PAREA  PRNO\n  -99.0   -99\n! kept\n! lost\n*CULTIVARS\n@C "
                           "CR INGENO CNAME\n"
                           " 1 MZ QL0003 One\n 1 MZ QL0004 Two\n*WEATHER\n@W A\n 1  5\n"),
            QStringLiteral("*GENERAL\n! kept\n*CULTIVARS\n@C CR INGENO CNAME\n 1 MZ QL0003 One\n"),
            { QStringLiteral("dropped: comment: \"! lost\" (line 5)"),
                QStringLiteral(
                    "dropped: *CULTIVARS, @C CR, level 1: \" 1 MZ QL0004 Two\", the line is not "
                    "written (line 9)"),
                QStringLiteral("dropped: *WEATHER: the whole section up to line 12 (line 10)"),
                QStringLiteral("(1 changes of layout only are not listed.)") } },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(report(c.onDisk, c.written), c.expected);
    }
}

TEST(SaveChanges, LayoutListedOnRequest)
{
    const QStringList all = report(
        QStringLiteral("*PLANTING DETAILS\n@P PDATE EDATE  PPOP\n 1 21121   -99     7  \n"),
        QStringLiteral("*PLANTING DETAILS\n@P PDATE EDATE  PPOP\n 1 21121   -99   7.0\n"), true);
    EXPECT_EQ(all,
        (QStringList { QStringLiteral("layout: *PLANTING DETAILS, @P PDATE, level 1, PPOP: \"7\" "
                                      "-> \"7.0\" (line 3 -> 3)"),
            QStringLiteral("No values change.") }));
    // Line ends and blanks alone.
    EXPECT_EQ(changesReport(
                  compareForSave("*CULTIVARS\n@C CR INGENO CNAME\n 1 MZ QL0003 One  \n",
                      crlf(QStringLiteral("*CULTIVARS\n@C CR INGENO CNAME\n 1 MZ QL0003 One\n"))),
                  true),
        (QStringList {
            QStringLiteral(
                "layout: *CULTIVARS, @C CR, level 1: \" 1 MZ QL0003 One  \" -> \" 1 MZ QL0003 "
                "One\", blanks (line 3 -> 3)"),
            QStringLiteral("layout: line ends: \"other\" -> \"CR LF\""),
            QStringLiteral("No values change.") }));
}

// Crafted files opened as File Open does and compared with what Save writes.
class SaveChangesOfFiles : public test::WorkDbTest {
protected:
    void SetUp() override
    {
        WorkDbTest::SetUp();
        ASSERT_TRUE(test::prepareProgramFolder(m_dir.path(), suiteDir));
    }
    std::vector<SaveChange> changes(
        const QByteArray& bytes, const QString& name = QStringLiteral("QLNV2101.MZX"))
    {
        return compareForSave(bytes, test::openBytes(bytes, m_dir.path(), name));
    }
    QStringList valueLines(const QByteArray& bytes)
    {
        QStringList lines;
        for (const SaveChange& c : changes(bytes))
            if (altersValue(c))
                lines << changeLine(c);
        return lines;
    }
};

TEST_F(SaveChangesOfFiles, SamplesKeepTheirValues)
{
    QDirIterator it(suiteDir, QDir::Files, QDirIterator::Subdirectories);
    int samples = 0;
    while (it.hasNext()) {
        const QFileInfo info(it.next());
        if (info.suffix().size() != 3
            || !info.suffix().endsWith(QLatin1Char('X'), Qt::CaseInsensitive))
            continue;
        ++samples;
        SCOPED_TRACE(info.fileName().toStdString());
        const QByteArray bytes = sample(info.dir().dirName() + QLatin1Char('/') + info.fileName());
        EXPECT_EQ(changesReport(changes(bytes, info.fileName()), true),
            QStringList { QStringLiteral("No values change.") });
    }
    EXPECT_GE(samples, 5);
}

TEST_F(SaveChangesOfFiles, WhatTheWriterChangesInCraftedFiles)
{
    const QByteArray maize = sample(QStringLiteral("Maize/QLNV2101.MZX"));
    const auto edited = [&](std::initializer_list<std::pair<const char*, const char*>> edits) {
        QByteArray bytes = maize;
        for (const auto& [from, to] : edits)
            bytes.replace(from, to);
        return bytes;
    };
    const struct {
        const char* what;
        QByteArray bytes;
        QStringList expected;
    } cases[] = {
        { "layout only: number forms, blanks, line ends, a comment moved, a plot line of -99",
            edited({ { " 1    15  .280    .8   8.2", " 1    15  0.28   0.8   8.2  " },
                { "1.3  2.10  0.18   6.4 -99.0", "1.3  2.10  0.18   6.4   -99" },
                { "   54.7     6  12.0    90   0.0   -99  18.2     2  12.0  Hand",
                    "  -99.0   -99   -99   -99   -99   -99   -99   -99   -99   -99" },
                { "! The sidedress date is about the six-leaf stage.\r\n", "" },
                { " 2 21118 FE006",
                    "! The sidedress date is about the six-leaf stage.\r\n 2 21118 FE006" },
                { "\r\n", "\n" } }),
            {} },
        { "a soil value rounded and a missing value against its neighbour",
            edited({ { " 1    15   1.3  2.10  0.18   6.4 -99.0  28.5   0.4  1.10",
                " 1    15  1.34  2.10  0.18   6.4 -99.0  28.5   -99   -99" } }),
            { QStringLiteral("value changed: *SOIL ANALYSIS, @A SABL, level 1, SADM: \"1.34\" -> "
                             "\"1.3\" (line 53 -> 53)"),
                QStringLiteral("value changed: *SOIL ANALYSIS, @A SABL, level 1, SASC: \"-99\" -> "
                               "\"-99.00\", now "
                               "touches SAKE (line 53 -> 53)") } },
        { "a trailing column of a simulation-control line",
            edited({ { "@N HARVEST     HFRST HLAST HPCNP HPCNR",
                         "@N HARVEST     HFRST HLAST HPCNP HPCNR HMFRQ" },
                { "0 21330   100     0", "0 21330   100     0     7" } }),
            { QStringLiteral("dropped: *SIMULATION CONTROLS, @N HARVEST, level 1, HMFRQ: \"7\", "
                             "the column is not "
                             "written (line 170 -> 170)"),
                QStringLiteral("dropped: *SIMULATION CONTROLS, @N HARVEST, level 2, HMFRQ: \"7\", "
                               "the column is not "
                               "written (line 193 -> 193)") } },
        { "titles cut and put in capitals",
            edited({ { "MAIZE NITROGEN RATE", "Maize nitrogen rate" },
                { "REPORTED MANAGEMENT       MZKES", "REPORTED MANAGEMENT PLANS MZKES" } }),
            { QStringLiteral(
                  "value changed: *EXP.DETAILS:, title: \"Maize nitrogen rate BY IRRIGATION, NORTH "
                  "VALLEY\" -> \"MAIZE NITROGEN RATE BY IRRIGATION, NORTH VALLEY\" (line 1 -> 1)"),
                QStringLiteral(
                    "value changed: *SIMULATION CONTROLS, @N GENERAL, level 1, SNAME: \"REPORTED "
                    "MANAGEMENT PLANS\" -> \"REPORTED MANAGEMENT PLAN\" (line 150 -> 150)") } },
        { "a comment of a section without rows",
            QByteArray("*EXP.DETAILS: QLNV2101MZ TRIAL\r\n\r\n*RESIDUES AND ORGANIC FERTILIZER\r\n"
                       "@R RDATE  RCOD\r\n! nothing applied\r\n!\r\n"),
            { QStringLiteral("dropped: comment: \"! nothing applied\" (line 5)") } },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(valueLines(c.bytes), c.expected);
    }
}

TEST_F(SaveChangesOfFiles, DamagedBytesGiveAReport)
{
    QList<QByteArray> inputs { QByteArray(), QByteArray("\x1A"), QByteArray(300, '\0'),
        QByteArray("@\r\n@ \r\n@A\r\n@E ODATE\r\n 1\r\n*\r\n!\r\n"), QByteArray(20000, '@'),
        QByteArray("*EXP.DETAILS:\r\n*EXP\r\n@N R O C\r\n 1 1 1 0\t\tx\r\n") };
    test::Mutator mutator(20261123);
    const QByteArray maize = sample(QStringLiteral("Maize/QLNV2101.MZX"));
    for (int i = 0; i < 40; ++i)
        inputs << mutator.mutate(maize);
    for (const QByteArray& input : inputs) {
        std::vector<SaveChange> found;
        EXPECT_NO_THROW(found = changes(input));
        const QStringList lines = changesReport(found, true);
        EXPECT_FALSE(lines.isEmpty());
    }
}
