#include "app/AppState.h"
#include "database/Sql.h"
#include "format/EventCells.h"
#include "format/FertilizerSection.h"
#include "support/QtPrinters.h"
#include "support/WorkDbFixture.h"

#include "EventSectionSupport.h"

using namespace quillon;
using namespace quillon::format;
using quillon::test::rowsOf;

namespace {

class FertilizerSection : public test::WorkDbTest { };

const QString FerHead = QStringLiteral("*FERTILIZERS (INORGANIC)");
const QString FerHeader = QStringLiteral("@F FDATE  FMCD  FACD  FDEP  FAMN  FAMP  FAMK  FAMC  FAMO  FOCD FERNAME");
const QString ResHead = QStringLiteral("*RESIDUES AND ORGANIC FERTILIZER");
const QString ResHeader = QStringLiteral("@R RDATE  RCOD  RAMT  RESN  RESP  RESK  RINP  RDEP  RMET RENAME");

} // namespace

TEST_F(FertilizerSection, ReadsApplicationsAndTheFirstNameOfEachLevel)
{
    const int stop = test::readSection(
        {
            FerHead,
            FerHeader,
            QStringLiteral(" 1  1001 FE005 AP002    10  32.6   -99   -99   -99   -99   -99 Split N"),
            QStringLiteral("! a note"),
            QStringLiteral(" 1 01030 FE005 AP002    10    20   -99   -99   -99   -99   -99 Another name"),
            QStringLiteral(" 2 01010 FE001 AP001     5"), // ends before the name
            QStringLiteral(" 2 01020 FE001 AP001     5    20     1     2     3     4 OC001   -99"),
            QStringLiteral(" 3   -99   -99   -99   -99   -99   -99   -99   -99   -99   -99    "), // blank name
            QStringLiteral(" 3 01040 FE001 AP001     5    20     1     2     3     4 OC001 Late name"),
            QStringLiteral("*RESIDUES AND ORGANIC FERTILIZER"),
        },
        readFertilizersSection);
    EXPECT_EQ(stop, 9);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM Fertilization ORDER BY rowid")),
        QStringList({
            // The fertilizer date keeps four digits as they stand.
            QStringLiteral("1|1001|FE005|AP002|10|32.6|NULL|NULL|NULL|NULL|NULL"),
            QStringLiteral("1|01030|FE005|AP002|10|20|NULL|NULL|NULL|NULL|NULL"),
            QStringLiteral("2|01010|FE001|AP001|5|NULL|NULL|NULL|NULL|NULL|NULL"),
            QStringLiteral("2|01020|FE001|AP001|5|20|1|2|3|4|OC001"),
            QStringLiteral("3|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL"),
            QStringLiteral("3|01040|FE001|AP001|5|20|1|2|3|4|OC001"),
        }));
    // The first name of a level stands; a blank or negative name adds no row.
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM FerLevelNames ORDER BY LNFER")),
        QStringList({ QStringLiteral("1|Split N"), QStringLiteral("3|Late name") }));
    EXPECT_EQ(state().comments.CommentsFertilizer, QStringLiteral("\r\n a note"));
    EXPECT_TRUE(m_ui.messages.empty());
}

TEST_F(FertilizerSection, ResidueDatesGetTheirLeadingZero)
{
    test::readSection(
        {
            ResHead,
            ResHeader,
            QStringLiteral(" 1  1001 RE001  1000  0.80   -99  1.25   100    15   -99 Wheat straw"),
            QStringLiteral(" 1   100 RE001  1000"),
            QStringLiteral(" 2 01001 RE002"),
        },
        readResiduesSection);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM Residue ORDER BY rowid")),
        QStringList({
            QStringLiteral("1|01001|RE001|1000|0.8|NULL|1.25|100|15|NULL"),
            QStringLiteral("1|100|RE001|1000|NULL|NULL|NULL|NULL|NULL|NULL"),
            QStringLiteral("2|01001|RE002|NULL|NULL|NULL|NULL|NULL|NULL|NULL"),
        }));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM ResLevelNames")), QStringList { QStringLiteral("1|Wheat straw") });
}

TEST_F(FertilizerSection, WritesRoundedAmountsAndLevelNames)
{
    using database::insertRow;
    insertRow(QStringLiteral("Fertilization"),
        { { "LNFER", 2 }, { "FDAY", QStringLiteral("1001") }, { "IFTYPE", QStringLiteral("FE005") },
            { "DFERT", 2.5 }, { "ANFER", 32.6 }, { "APFER", 0.4 }, { "AKFER", 123456 } });
    insertRow(QStringLiteral("Fertilization"),
        { { "LNFER", 1 }, { "FDAY", QStringLiteral("01001") }, { "IFTYPE", QStringLiteral("FE005") },
            { "FERCOD", QStringLiteral("AP002") }, { "DFERT", 10 }, { "ANFER", 40 }, { "APFER", 5 }, { "AKFER", 6 },
            { "ACFER", 7 }, { "AOFER", 8 }, { "FOCOD", QStringLiteral("OC001") } });
    insertRow(QStringLiteral("FerLevelNames"), { { "LNFER", 1 }, { "FERNAME", QStringLiteral("Split N") } });
    state().comments.CommentsFertilizer = QStringLiteral("!already marked");

    EXPECT_EQ(test::written(writeFertilizersSection),
        QStringList({
            QString(),
            FerHead,
            FerHeader,
            QStringLiteral(" 1 01001 FE005 AP002    10    40     5     6     7     8 OC001 Split N"),
            QStringLiteral(" 2  1001 FE005   -99     3    33     0123456   -99   -99   -99 -99"),
            QStringLiteral("!already marked"),
        }));
}

TEST_F(FertilizerSection, WritesResiduesWithConcentrationMasks)
{
    database::insertRow(QStringLiteral("Residue"),
        { { "LNRES", 1 }, { "RESDAY", QStringLiteral("01001") }, { "RESCOD", QStringLiteral("RE001") },
            { "RESIDUE", 1000.4 }, { "RESN", 0.8 }, { "RESP", -0.5 }, { "RINP", 99.5 }, { "DEPRES", 15 } });
    database::insertRow(QStringLiteral("ResLevelNames"), { { "LNRES", 1 }, { "RENAME", QStringLiteral("Straw") } });
    EXPECT_EQ(test::written(writeResiduesSection),
        QStringList({
            QString(),
            ResHead,
            ResHeader,
            QStringLiteral(" 1 01001 RE001  1000  0.80   -99   -99   100    15   -99 Straw"),
        }));
}

TEST_F(FertilizerSection, SecondSaveWritesWhatTheFirstWrote)
{
    const QStringList ferTables { QStringLiteral("Fertilization"), QStringLiteral("FerLevelNames") };
    const auto [fer1, fer2] = test::saveAndReload(
        {
            FerHead,
            FerHeader,
            QStringLiteral(" 1  1001 FE005 AP002  10.4  32.6   -99   -99   -99   -99   -99 Split N"),
            QStringLiteral(" 1 01030 FE005 AP002    10    20"),
            QStringLiteral("! a note"),
            QStringLiteral("! !marked"),
        },
        ferTables, readFertilizersSection, writeFertilizersSection);
    EXPECT_EQ(fer1, fer2);
    EXPECT_EQ(fer1.at(3), QStringLiteral(" 1  1001 FE005 AP002    10    33   -99   -99   -99   -99   -99 Split N"));
    EXPECT_EQ(fer1.mid(5), QStringList({ QStringLiteral("! a note"), QStringLiteral("! !marked") }));

    const auto [res1, res2] = test::saveAndReload(
        {
            ResHead,
            ResHeader,
            QStringLiteral(" 1  1001 RE001  1000  0.80   -99  1.25   100    15   -99 Wheat straw"),
            QStringLiteral(" 2 01001 RE002"),
        },
        { QStringLiteral("Residue"), QStringLiteral("ResLevelNames") }, readResiduesSection, writeResiduesSection);
    EXPECT_EQ(res1, res2);
    EXPECT_EQ(res1.at(3), QStringLiteral(" 1 01001 RE001  1000  0.80   -99  1.25   100    15   -99 Wheat straw"));
    EXPECT_EQ(res1.at(4), QStringLiteral(" 2 01001 RE002   -99   -99   -99   -99   -99   -99   -99 -99"));
}
