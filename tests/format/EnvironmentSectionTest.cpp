#include "app/AppState.h"
#include "database/Sql.h"
#include "format/EnvironmentSection.h"
#include "support/QtPrinters.h"
#include "support/WorkDbFixture.h"

#include "EventSectionSupport.h"

using namespace quillon;
using namespace quillon::format;
using quillon::test::rowsOf;

namespace {

class EnvironmentSection : public test::WorkDbTest { };

const QString EnvHead = QStringLiteral("*ENVIRONMENT MODIFICATIONS");
const QString EnvHeader = QStringLiteral("@E ODATE EDAY  ERAD  EMAX  EMIN  ERAIN ECO2  EDEW  EWIND ENVNAME  ");
const QString HarHead = QStringLiteral("*HARVEST DETAILS");
const QString HarHeader = QStringLiteral("@H HDATE  HSTG  HCOM HSIZE   HPC  HBPC HNAME");
const QStringList EnvTables { QStringLiteral("EnvironMod"), QStringLiteral("EnvLevelNames") };
const QStringList HarTables { QStringLiteral("Harvest"), QStringLiteral("HarLevelNames") };

QStringList environment() { return rowsOf(QStringLiteral("SELECT * FROM EnvironMod ORDER BY rowid")); }

} // namespace

TEST_F(EnvironmentSection, ReadsPairsAndMarksNegativeValues)
{
    // -99 is the missing value: stored NULL without a mark.
    test::readSection({ EnvHead, EnvHeader, QStringLiteral(" 2 01005 A -99") }, readEnvironmentSection);
    EXPECT_EQ(environment(),
        QStringList { QStringLiteral("2|01005|A|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL") });
    EXPECT_FALSE(state().NegativeEnvValue);

    test::clearSection(EnvTables);
    const int stop = test::readSection(
        {
            EnvHead,
            EnvHeader,
            QStringLiteral(" 1  1001 A 1.0 M 1.5 A 2.0 S-5.0 M 1.2 R 500 A 0.0 A -99 Warmer"),
            QStringLiteral("! a note"),
            // The wind factor needs a line of 53 characters, so a line that
            // ends with it loses it, and one blank more keeps it.
            QStringLiteral(" 3 01010 A 1.0 A 1.0 A 1.0 A 1.0 A 1.0 A 1.0 A 1.0 W"),
            QStringLiteral(" 4 01010 A 1.0 A 1.0 A 1.0 A 1.0 A 1.0 A 1.0 A 1.0 W "),
            QStringLiteral("*HARVEST DETAILS"),
        },
        readEnvironmentSection);
    EXPECT_EQ(stop, 6);
    EXPECT_EQ(environment(),
        QStringList({
            QStringLiteral("1|01001|A|1|M|1.5|A|2|S|NULL|M|1.2|R|500|A|0|A|NULL"),
            QStringLiteral("3|01010|A|1|A|1|A|1|A|1|A|1|A|1|A|1|NULL|NULL"),
            QStringLiteral("4|01010|A|1|A|1|A|1|A|1|A|1|A|1|A|1|W|NULL"),
        }));
    EXPECT_TRUE(state().NegativeEnvValue); // from the -5.0
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM EnvLevelNames")), QStringList { QStringLiteral("1|Warmer") });
    EXPECT_EQ(state().comments.CommentsEnvironment, QStringLiteral("\r\n a note"));
    EXPECT_TRUE(m_ui.messages.empty());
}

TEST_F(EnvironmentSection, CommentsHandedToTheReadersCutTheirBuffer)
{
    EvironModRead(QStringLiteral("!first"));
    EvironModRead(QStringLiteral("!second"));
    // Each comment handed over costs the buffer its first two characters.
    EXPECT_EQ(state().comments.CommentsEnvironment, QStringLiteral("rst\r\nsecond"));
    HarvestRead(QStringLiteral("  !one"));
    EXPECT_EQ(state().comments.CommentsHarvest, QStringLiteral(" !one"));
    EXPECT_EQ(database::rowCount(QStringLiteral("EnvironMod")), 0);
}

TEST_F(EnvironmentSection, WritesFactorsAndTheirValueForms)
{
    using database::insertRow;
    insertRow(QStringLiteral("EnvironMod"),
        { { "LNENV", 1 }, { "WMDATE", QStringLiteral("01001") }, { "DAYFAC", QStringLiteral("M") },
            { "RADFAC", QStringLiteral("M") }, { "RADADJ", 1.5 }, { "TXADJ", 2 }, { "TMFAC", QStringLiteral("S") },
            { "PRCFAC", QStringLiteral("M") }, { "PRCADJ", 12.5 }, { "CO2FAC", QStringLiteral("R") },
            { "CO2ADJ", 500.4 }, { "DPTFAC", QStringLiteral("A") }, { "DPTADJ", 1.25 },
            { "WNDFAC", QStringLiteral("M") }, { "WNDADJ", 0.5 } });
    insertRow(QStringLiteral("EnvironMod"),
        { { "LNENV", 2 }, { "RADFAC", QStringLiteral("A") }, { "RADADJ", 12345 }, { "TXFAC", QStringLiteral("A") },
            { "TXADJ", 1.5 } });
    insertRow(QStringLiteral("EnvLevelNames"), { { "LNENV", 1 }, { "ENVNAME", QStringLiteral("Warmer") } });
    state().comments.CommentsEnvironment = QStringLiteral("note");

    EXPECT_EQ(test::written(writeEnvironmentSection),
        QStringList({
            QString(),
            EnvHead,
            EnvHeader,
            QStringLiteral(" 1 01001 A 0.0 M1.50 A   0 A   0 M12.5 R 500 A 1.3 M 0.5 Warmer"),
            // A value wider than its field pushes the rest; no name writes nothing.
            QStringLiteral(" 2   -99 A 0.0 A12345.0 A 1.5 A   0 A 0.0 A   0 A   0 A   0 "),
            QStringLiteral("!note"),
        }));
}

TEST_F(EnvironmentSection, SecondSaveWritesWhatTheFirstWrote)
{
    const auto [first, second] = test::saveAndReload(
        {
            EnvHead,
            EnvHeader,
            QStringLiteral(" 1  1001 A 1.0 M 1.5 A 2.0 S-5.0 M 1.2 R 500 A 0.0 A -99 Warmer"),
            QStringLiteral(" 1 01010 M 0.8"),
            QStringLiteral("! a note"),
            QStringLiteral(" 2 01020 A   1 A 0.5 A  -2"),
        },
        EnvTables, readEnvironmentSection, writeEnvironmentSection);
    EXPECT_EQ(first, second);
    EXPECT_EQ(first.mid(3),
        QStringList({
            QStringLiteral(" 1 01001 A 1.0 M1.50 A   2 A   0 M1.20 R 500 A   0 A   0 Warmer"),
            QStringLiteral(" 1 01010 M0.80 A 0.0 A   0 A   0 A 0.0 A   0 A   0 A   0 Warmer"),
            QStringLiteral(" 2 01020 A 1.0 A 0.5 A   0 A   0 A 0.0 A   0 A   0 A   0 "),
            QStringLiteral("! a note"),
        }));
}

TEST_F(EnvironmentSection, HarvestReadAndWritten)
{
    test::readSection(
        {
            HarHead,
            HarHeader,
            QStringLiteral(" 1  1001 GS000     C     A 100.0   -99 At maturity"),
            QStringLiteral(" 1 01100   -99     C"),
            QStringLiteral(" 2 01200 GS009  CANO   -99  12.5  88.8"),
        },
        readHarvestSection);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM Harvest ORDER BY rowid")),
        QStringList({
            QStringLiteral("1|01001|GS000|C|A|100|NULL"),
            QStringLiteral("1|01100|NULL|C|NULL|NULL|NULL"),
            QStringLiteral("2|01200|GS009|CANO|NULL|12.5|88.8"),
        }));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM HarLevelNames")), QStringList { QStringLiteral("1|At maturity") });

    // "GS000" stands for no stage and is written as missing; a level without
    // a name ends its lines with the blank.
    EXPECT_EQ(test::written(writeHarvestSection),
        QStringList({
            QString(),
            HarHead,
            HarHeader,
            QStringLiteral(" 1 01001   -99     C     A 100.0   -99 At maturity"),
            QStringLiteral(" 1 01100   -99     C   -99   -99   -99 At maturity"),
            QStringLiteral(" 2 01200 GS009  CANO   -99  12.5  88.8 "),
        }));

    const auto [first, second] = test::saveAndReload(
        {
            HarHead,
            HarHeader,
            QStringLiteral(" 1  1001 GS000     C     A 100.0   -99 At maturity"),
            QStringLiteral("! a note"),
        },
        HarTables, readHarvestSection, writeHarvestSection);
    EXPECT_EQ(first, second);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT HSTG FROM Harvest")), QStringList { QStringLiteral("NULL") });
    EXPECT_EQ(first.last(), QStringLiteral("! a note"));
}
