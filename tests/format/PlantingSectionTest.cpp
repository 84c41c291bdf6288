#include "format/PlantingSection.h"
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

const QString header = QStringLiteral(
    "@P PDATE EDATE  PPOP  PPOE  PLME  PLDS  PLRS  PLRD  PLDP  PLWT  PAGE  PENV  PLPH  "
    "SPRL                        PLNAME");
const QString planting1 = QStringLiteral(
    " 1  1100   -99   7.2   7.2     S     R    75     0   5.0   -99   -99    -5 -99.0   "
    "-99                        Planting one");

class PlantingSection : public WorkDbTest {
protected:
    static QStringList plantings()
    {
        return rowsOf(QStringLiteral(
            "SELECT LNPLT, YRPLT, IEMRG, PLANTS, PLTPOP, PLME, PLDS, ROWSPC, AZIR, SDEPTH, "
            "SDWTPL, SDAGE, ATEMP, PLPH, SPRLAP, PLNAME FROM Planting ORDER BY LNPLT"));
    }
};

} // namespace

TEST_F(PlantingSection, ReadsPlantingLines)
{
    LineCursor c = LineCursor::fromLines({
        QStringLiteral("*PLANTING DETAILS"),
        header,
        planting1,
        QStringLiteral(" ! remark"),
        // Cut off at column 30: the rest stays NULL.
        QStringLiteral(" 2 98001 98010  25.0  25.0     "),
        // A name in columns 87 to 110 isn't read; only below -10 is the
        // temperature missing.
        QStringLiteral(
            " 3 98001   -99   -99   -99   -99   -99   -99   -99   -99   -99   -99   -10   -99   -99"
            "    a name too early"),
        QStringLiteral(
            " 4 98001   -99   -99   -99   -99   -99   -99   -99   -99   -99   -99   -99"),
        QStringLiteral(" 1 98001 98010"), // level one again
        QStringLiteral("*IRRIGATION AND WATER MANAGEMENT"),
    });
    readPlantingSection(c);
    EXPECT_EQ(c.i, 8);
    EXPECT_EQ(plantings(),
        (QStringList {
            QStringLiteral("1|01100|NULL|7.2|7.2|S|R|75|0|5|NULL|NULL|-5|NULL|NULL|Planting one"),
            QStringLiteral(
                "2|98001|98010|25|25|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL"),
            QStringLiteral(
                "3|98001|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|-10|NULL|NULL|NULL"),
            QStringLiteral(
                "4|98001|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL"),
        }));
    EXPECT_EQ(state().comments.CommentsPlanting, QStringLiteral("\r\n! remark"));
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].text,
        QStringLiteral("duplicate levels in 'Planting'. Level 1 is read only once."));
    EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Error"));
}

TEST_F(PlantingSection, DateAndFailureRules)
{
    // A four-character date gets its zero before any other test, so a
    // negative one of four characters is kept as text.
    PlantRead(QStringLiteral(" 1  -991"));
    PlantRead(QStringLiteral(" 2 -9999"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNPLT, YRPLT FROM Planting ORDER BY LNPLT")),
        (QStringList { QStringLiteral("1|0-991"), QStringLiteral("2|NULL") }));

    // Text that is no number in a numeric column costs the line.
    PlantRead(QStringLiteral(" 5 98001 98010  many"));
    EXPECT_EQ(m_ui.texts(),
        QStringList { QStringLiteral("Data type conversion error. in PlantRead/frmMain.") });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT COUNT(*) FROM Planting")),
        QStringList { QStringLiteral("2") });
}

TEST_F(PlantingSection, WritesPlantingLines)
{
    database::exec(QStringLiteral("INSERT INTO Planting (LNPLT) VALUES (2)"));
    database::exec(QStringLiteral("INSERT INTO Planting (LNPLT, YRPLT, IEMRG, PLANTS, PLTPOP, "
                                  "PLME, PLDS, ROWSPC, AZIR, SDEPTH, SDWTPL, SDAGE, "
                                  "ATEMP, PLPH, SPRLAP, PLNAME) VALUES (1, '01100', ' ', 7.2, 7.2, "
                                  "'S', 'R', 75, 0, 5, NULL, NULL, -5, -99, "
                                  "NULL, 'Planting one')"));
    state().comments.CommentsPlanting = QStringLiteral("remark");
    EXPECT_EQ(written(writePlantingSection),
        (QStringList {
            QString(),
            QStringLiteral("*PLANTING DETAILS"),
            header,
            QStringLiteral(" 1 01100   -99   7.2   7.2     S     R    75     0     5   -99   -99   "
                           " -5   -99 -99.0"
                           "                        Planting one"),
            QStringLiteral(" 2   -99   -99 -99.0 -99.0   -99   -99   -99   -99 -99.0   -99   -99 "
                           "-99.0 -99.0 -99.0"
                           "                        -99"),
            QStringLiteral("!remark"),
        }));

    database::exec(QStringLiteral("DELETE FROM Planting"));
    EXPECT_TRUE(written(writePlantingSection).isEmpty());
    EXPECT_TRUE(m_ui.messages.empty());
}

TEST_F(PlantingSection, WritingAndReadingBack)
{
    const std::map<QString, Reader> readers { { QStringLiteral("*PLA"), readPlantingSection } };
    const QStringList input { QStringLiteral("*PLANTING DETAILS"), header, planting1,
        QStringLiteral(" 2 98001 98010  25.0  25.0     "), QStringLiteral("! remark") };
    const TwoSaves saves
        = saveTwice(input, { QStringLiteral("Planting") }, readers, writePlantingSection);
    EXPECT_EQ(saves.first, saves.second);
    EXPECT_EQ(saves.first.at(3),
        QStringLiteral(
            " 1 01100   -99   7.2   7.2     S     R    75     0     5   -99   -99    -5 -99.0 -99.0"
            "                        Planting one"));
    EXPECT_EQ(saves.first.at(4),
        QStringLiteral(
            " 2 98001 98010    25    25   -99   -99   -99   -99 -99.0   -99   -99 -99.0 -99.0 -99.0"
            "                        -99"));
}
