#include "format/SoilSection.h"
#include "app/AppState.h"
#include "database/Sql.h"
#include "support/QtPrinters.h"
#include "support/WorkDbFixture.h"

#include "SectionFileSupport.h"

#include <gtest/gtest.h>

using namespace quillon;
using namespace quillon::format;
using namespace quillon::test;
using namespace quillon::test::sections;

namespace {

const QString saLevelHeader = QStringLiteral("@A SADAT  SMHB  SMPX  SMKE  SANAME");
const QString saLayerHeader
    = QStringLiteral("@A  SABL  SADM  SAOC  SANI SAPHW SAPHB  SAPX  SAKE  SASC");
const QString icLevelHeader = QStringLiteral(
    "@C   PCR ICDAT  ICRT  ICND  ICRN  ICRE  ICWD ICRES ICREN ICREP ICRIP ICRID ICNAME");
const QString icLayerHeader = QStringLiteral("@C  ICBL  SH2O  SNH4  SNO3");

class SoilSection : public WorkDbTest {
protected:
    static QStringList analyses()
    {
        return rowsOf(QStringLiteral(
            "SELECT LNSA, SADAT, SMHB, SMPX, SMKE, SANAME FROM SoilAnalysis ORDER BY LNSA"));
    }
    static QStringList soilLayers()
    {
        return rowsOf(
            QStringLiteral("SELECT LNSA, SABL, SADM, SAOC, SANI, SAPHW, SAPHB, SAPX, SAKE, SASC "
                           "FROM SoilLayers ORDER BY LNSA, SABL"));
    }
    static QStringList conditions()
    {
        return rowsOf(QStringLiteral(
            "SELECT LNIC, PRCROP, IDAYIC, WRESR, WRESND, EFINOC, EFNFIX, ICWD, ICRES, ICREN, "
            "ICREP, ICRIP, ICRID, ICNAME FROM InitialConditions ORDER BY LNIC"));
    }
    static QStringList icLayers()
    {
        return rowsOf(QStringLiteral(
            "SELECT LNIC, DLAYRI, SWINIT, INH4, INO3 FROM ICLayers ORDER BY LNIC, DLAYRI"));
    }
};

} // namespace

TEST_F(SoilSection, ReadsSoilAnalysisGroups)
{
    LineCursor c = LineCursor::fromLines({
        QStringLiteral("*SOIL ANALYSIS"),
        QStringLiteral("! before"),
        saLevelHeader,
        QStringLiteral(" 1  1100 SA001   -99    K1  Analysis one"),
        saLayerHeader,
        QStringLiteral(" 1    15   1.2   -99    .5   6.5 -99.0  12.0   0.3   100"),
        QStringLiteral("! inside"),
        QStringLiteral(" 1    30"),
        saLevelHeader,
        QStringLiteral(" 2   -99   -99   -99   -99  -99"),
        QStringLiteral(" 1  9999 read again"),
        QStringLiteral("@A other header, stepped over"),
        saLayerHeader,
        // A layer of a level without a level line is kept all the same.
        QStringLiteral(" 3    30   1.4"),
        QStringLiteral(" 3    40   1.4   100"),
        QStringLiteral("*INITIAL CONDITIONS"),
    });
    readSoilAnalysisSection(c);
    EXPECT_EQ(c.i, 15);
    EXPECT_EQ(analyses(),
        (QStringList { QStringLiteral("1|01100|SA001|NULL|K1|Analysis one"),
            QStringLiteral("2|NULL|NULL|NULL|NULL|NULL") }));
    EXPECT_EQ(soilLayers(),
        (QStringList { QStringLiteral("1|15|1.2|NULL|0.5|6.5|NULL|12|0.3|100"),
            QStringLiteral("1|30|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL"),
            QStringLiteral("3|30|1.4|NULL|NULL|NULL|NULL|NULL|NULL|NULL") }));
    EXPECT_EQ(state().comments.CommentsSoil, QStringLiteral("\r\n before\r\n inside"));
    // The level read twice, then organic carbon beyond its rule.
    EXPECT_EQ(m_ui.texts(),
        (QStringList {
            QStringLiteral("Duplicate levels in 'Soil Analysis'. Level 1 is read only once."),
            QStringLiteral("Invalid entry. in SoilLayersRead/frmMain") }));
}

TEST_F(SoilSection, WritesSoilAnalysis)
{
    database::exec(QStringLiteral(
        "INSERT INTO SoilAnalysis (LNSA, SADAT, SMHB, SANAME) VALUES (2, NULL, NULL, NULL)"));
    database::exec(
        QStringLiteral("INSERT INTO SoilAnalysis (LNSA, SADAT, SMHB, SMPX, SMKE, SANAME) "
                       "VALUES (1, '01100', 'SA001', NULL, 'K1', 'Analysis one')"));
    // Stored -99: organic carbon is written "-99", bulk density through its template.
    database::exec(QStringLiteral(
        "INSERT INTO SoilLayers (LNSA, SABL, SADM, SAOC, SANI) VALUES (1, 5, -99, -99, 0.5)"));
    database::exec(
        QStringLiteral("INSERT INTO SoilLayers (LNSA, SABL, SADM, SAOC) VALUES (1, NULL, 1.4, 0)"));
    database::exec(QStringLiteral(
        "INSERT INTO SoilLayers (LNSA, SABL, SASC) VALUES (3, 10, 100)")); // no level: not written
    state().comments.CommentsSoil = QStringLiteral("remark");
    EXPECT_EQ(written(writeSoilAnalysisSection),
        (QStringList {
            QString(),
            QStringLiteral("*SOIL ANALYSIS"),
            saLevelHeader,
            QStringLiteral(" 1 01100 SA001   -99    K1  Analysis one"),
            saLayerHeader,
            QStringLiteral(" 1   -99   1.4  0.00   -99 -99.0 -99.0 -99.0 -99.0-99.00"),
            QStringLiteral(" 1     5 -99.0   -99  0.50 -99.0 -99.0 -99.0 -99.0-99.00"),
            saLevelHeader,
            QStringLiteral(" 2   -99   -99   -99   -99  -99"),
            saLayerHeader,
            QStringLiteral("!remark"),
        }));

    database::exec(QStringLiteral("DELETE FROM SoilAnalysis"));
    EXPECT_TRUE(written(writeSoilAnalysisSection).isEmpty());
    EXPECT_TRUE(m_ui.messages.empty());
}

TEST_F(SoilSection, SoilAnalysisReadWriteRead)
{
    const std::map<QString, Reader> readers { { QStringLiteral("*SOI"), readSoilAnalysisSection } };
    const QStringList input { QStringLiteral("*SOIL ANALYSIS"), saLevelHeader,
        QStringLiteral(" 1  1100 SA001   -99    K1  Analysis one"), saLayerHeader,
        QStringLiteral(" 1    15   1.2   -99    .5   6.5 -99.0  12.0   0.3   100"),
        QStringLiteral("! remark") };
    const TwoSaves saves
        = saveTwice(input, { QStringLiteral("SoilLayers"), QStringLiteral("SoilAnalysis") },
            readers, writeSoilAnalysisSection);
    // A base saturation of 100 fills its six written columns and loses its
    // first character on reading; an empty one is written "-99.00" and
    // comes back as 99. Both are properties of the format.
    EXPECT_EQ(saves.first.at(5),
        QStringLiteral(" 1    15   1.2   -99  0.50   6.5 -99.0  12.0   0.3100.00"));
    EXPECT_EQ(saves.second.at(5),
        QStringLiteral(" 1    15   1.2   -99  0.50   6.5 -99.0  12.0   0.3  0.00"));
    EXPECT_EQ(saves.first.mid(0, 5), saves.second.mid(0, 5));
    EXPECT_EQ(saves.first.mid(6), saves.second.mid(6));

    const TwoSaves again
        = saveTwice(saves.second, { QStringLiteral("SoilLayers"), QStringLiteral("SoilAnalysis") },
            readers, writeSoilAnalysisSection);
    EXPECT_EQ(again.first, again.second);
    EXPECT_EQ(again.first, saves.second);
}

TEST_F(SoilSection, ReadsInitialConditionGroups)
{
    LineCursor c = LineCursor::fromLines({
        QStringLiteral("*INITIAL CONDITIONS"),
        icLevelHeader,
        QStringLiteral(
            " 1    MZ  1100  1200   1.5     1     1   -99     0     0     0   100    15 IC one"),
        icLayerHeader,
        QStringLiteral(" 1    20  .145   1.5 -99.0"),
        QStringLiteral(" 1    40  0.95   1.5   2.0"),
        QStringLiteral("@C  another header inside the layers is passed over"),
        QStringLiteral("  ! remark"),
        QStringLiteral(" 1    60     0     0     0"),
        // The number of blanks after "@C" is free.
        QStringLiteral("@C PCR ICDAT"),
        QStringLiteral(" 2   -99 98001   250"), // a short line ends the reading of the line
        QStringLiteral(" 1    MZ  1100"),
        QStringLiteral("@C ICBL"),
        QStringLiteral(" 2    10   .90"),
        QStringLiteral("*PLANTING DETAILS"),
    });
    readInitialConditionsSection(c);
    EXPECT_EQ(c.i, 14);
    EXPECT_EQ(conditions(),
        (QStringList {
            QStringLiteral("1|MZ|01100|1200|1.5|1|1|NULL|0|0|0|100|15|IC one"),
            QStringLiteral("2|NULL|98001|250|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL"),
        }));
    EXPECT_EQ(icLayers(),
        (QStringList { QStringLiteral("1|20|0.145|1.5|NULL"), QStringLiteral("1|60|0|0|0"),
            QStringLiteral("2|10|0.9|NULL|NULL") }));
    EXPECT_EQ(state().comments.CommentsIC, QStringLiteral("\r\n ! remark"));
    EXPECT_EQ(m_ui.texts(),
        (QStringList { QStringLiteral("Invalid entry. in ICLayersRead/frmMain."),
            QStringLiteral(
                "Duplicate levels in 'Initial Conditions'. Level 1 is read only once.") }));
}

TEST_F(SoilSection, WritesInitialConditions)
{
    database::exec(QStringLiteral("INSERT INTO InitialConditions (LNIC, PRCROP, IDAYIC, WRESR, "
                                  "WRESND, EFINOC, EFNFIX, ICWD, ICRES, ICREN, ICREP, "
                                  "ICRIP, ICRID, ICNAME) VALUES (1, 'MZ', '01100', 1200, 1.5, 1, "
                                  "1, NULL, 0, 0, 0, 100, 15, 'IC one')"));
    database::exec(QStringLiteral(
        "INSERT INTO InitialConditions (LNIC, IDAYIC, WRESR) VALUES (2, '98001', 250)"));
    database::exec(QStringLiteral(
        "INSERT INTO ICLayers (LNIC, DLAYRI, SWINIT, INH4) VALUES (1, 20, 0.145, 1.5)"));
    // A stored -99 goes through the templates; zero keeps only its point.
    database::exec(QStringLiteral(
        "INSERT INTO ICLayers (LNIC, DLAYRI, SWINIT, INH4, INO3) VALUES (1, NULL, -99, -99, 0)"));
    EXPECT_EQ(written(writeInitialConditionsSection),
        (QStringList {
            QString(),
            QStringLiteral("*INITIAL CONDITIONS"),
            icLevelHeader,
            QStringLiteral(" 1    MZ 01100  1200   1.5     1     1 -99.0     0     0     0   100   "
                           " 15 IC one"),
            icLayerHeader,
            QStringLiteral(" 1   -99-99.000 -99.0    .0"),
            QStringLiteral(" 1    20  .145   1.5 -99.0"),
            icLevelHeader,
            QStringLiteral(
                " 2   -99 98001   250   -99   -99   -99 -99.0   -99   -99   -99   -99   -99 -99"),
            icLayerHeader,
        }));
}

TEST_F(SoilSection, InitialConditionsReadWriteRead)
{
    const std::map<QString, Reader> readers { { QStringLiteral("*INI"),
        readInitialConditionsSection } };
    const QStringList input { QStringLiteral("*INITIAL CONDITIONS"), icLevelHeader,
        QStringLiteral(
            " 1    MZ  1100  1200   1.5     1     1   -99     0     0     0   100    15 IC one"),
        icLayerHeader, QStringLiteral(" 1    20  .145   1.5 -99.0"),
        QStringLiteral(" 1    40  .200    .5    .1"), QStringLiteral("@C   PCR"),
        QStringLiteral(" 2   -99 98001   250"), QStringLiteral("! remark") };
    const TwoSaves saves
        = saveTwice(input, { QStringLiteral("ICLayers"), QStringLiteral("InitialConditions") },
            readers, writeInitialConditionsSection);
    EXPECT_EQ(saves.first, saves.second);
    EXPECT_EQ(saves.first.size(), 11);
    EXPECT_EQ(saves.first.at(6), QStringLiteral(" 1    40  .200    .5    .1"));
    EXPECT_EQ(saves.first.last(), QStringLiteral("! remark"));
}
