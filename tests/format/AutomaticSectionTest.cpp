#include "format/AutomaticSection.h"
#include "format/SimulationTestSupport.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

using namespace quillon;
using namespace quillon::format;
using quillon::reference::simDefaults;
using quillon::test::groupLine;
using quillon::test::rowsOf;

namespace {

class AutomaticSectionTest : public test::SimulationTest {
protected:
    void startsOn(int level, const char* yrsim)
    {
        database::insertRow(QStringLiteral("SimulationControl"),
            { { QStringLiteral("LNSIM"), level }, { QStringLiteral("YRSIM"), QString::fromLatin1(yrsim) } });
    }
    static QStringList windows()
    {
        return rowsOf(QStringLiteral("SELECT LNSIM, PWDINF, PWDINL FROM AutoManagementPlanting ORDER BY rowid"));
    }
};

} // namespace

TEST_F(AutomaticSectionTest, PlantingWindowTakesTheYearOfTheStart)
{
    startsOn(1, "98001");
    startsOn(2, "98150");
    startsOn(3, "00001");
    startsOn(4, "09001");
    startsOn(5, "98001");
    startsOn(6, "98001");
    // A day after the start moves to the next year, and the last day takes
    // the year that the first one left, without a comparison of its own.
    AutoPlantingRead(groupLine(" 1 PL", { "150", "200" }) + QLatin1Char(' '));
    // Full codes are never compared; four characters keep their last three.
    AutoPlantingRead(groupLine(" 2 PL", { "98100", "8120" }) + QLatin1Char(' '));
    // The next year's digits are the second and third of the year: 2001
    // gives "00", 2010 gives "01".
    AutoPlantingRead(groupLine(" 3 PL", { "100", "9" }) + QLatin1Char(' '));
    AutoPlantingRead(groupLine(" 4 PL", { "100", "99" }) + QLatin1Char(' '));
    // The start day itself and the missing value stay.
    AutoPlantingRead(groupLine(" 5 PL", { "1", "-99" }) + QLatin1Char(' '));
    AutoPlantingRead(groupLine(" 6 PL", { "", "-12" }) + QLatin1Char(' '));
    EXPECT_EQ(windows(),
        QStringList({ QStringLiteral("1|99150|99200"), QStringLiteral("2|98100|98120"), QStringLiteral("3|00100|00009"),
            QStringLiteral("4|01100|01099"), QStringLiteral("5|98001|-99  "), QStringLiteral("6|-99  |-99  ") }));
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();

    // The length tests stand at the columns' starts.
    startsOn(7, "98001");
    startsOn(8, "98001");
    AutoPlantingRead(QStringLiteral(" 7 PL").leftJustified(15) + QStringLiteral("5"));
    AutoPlantingRead(QStringLiteral(" 8 PL"));
    EXPECT_EQ(windows().mid(6), QStringList({ QStringLiteral("7|NULL|NULL"), QStringLiteral("8|NULL|NULL") }));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT TITPLA FROM AutoManagementPlanting WHERE LNSIM = 8")),
        QStringList { QStringLiteral("NULL") });
}

TEST_F(AutomaticSectionTest, LastHarvestMovesWhenItLiesBeforeTheStart)
{
    for (int level = 1; level <= 5; ++level)
        startsOn(level, "98150");
    AutoHarvestRead(groupLine(" 1 HA", { "10", "100", "100", "0" }));
    AutoHarvestRead(groupLine(" 2 HA", { "10", "200", "100", "0" }));
    AutoHarvestRead(groupLine(" 3 HA", { "10", "97100", "100", "0" }));
    // The harvest label has no length test; blank and negative cells take
    // the defaults, the blank date its own missing value.
    AutoHarvestRead(groupLine(" 4", { "-99", "", "-1", "7" }));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM AutoManagementHarvest ORDER BY rowid")),
        QStringList({ QStringLiteral("1|HA|10|99100|100|0"), QStringLiteral("2|HA|10|98200|100|0"),
            QStringLiteral("3|HA|10|97100|100|0"), QStringLiteral("4|HA|30|  -99|100|7") }));
    AutoHarvestRead(QStringLiteral(" 5"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM AutoManagementHarvest WHERE LNSIM = 5")),
        QStringList { QStringLiteral("5|HA|NULL|NULL|NULL|NULL") });
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
}

TEST_F(AutomaticSectionTest, FailedLinesGiveRowsOfDefaults)
{
    startsOn(1, "98001");
    // No start date for level 9; letters in a number; a stage code wider
    // than its column, read over eleven positions.
    AutoPlantingRead(groupLine(" 9 PL", { "150", "200", "41" }));
    AutoHarvestRead(groupLine(" 1 HA", { "abc", "300" }));
    AutoNitrogenRead(groupLine(" 1 NI", { "30", "50", "25", "FE001", "GS000" }) + QStringLiteral(" X"));
    AutoNitrogenRead(groupLine(" 2 NI", { "30", "50", "25", "FE001", "GS000" }) + QStringLiteral("      X"));
    EXPECT_EQ(m_ui.texts(),
        QStringList({ QStringLiteral("Error was found in Auto Management/Planting. Default information is read for level 9"),
            QStringLiteral("Error was found in Auto Management/Harvest. Default information is read for level 1"),
            QStringLiteral("Error was found in Auto Management/Nitrogen. Default information is read for level 1") }));
    EXPECT_EQ(m_ui.messages.at(0).title, QStringLiteral("Error"));
    EXPECT_EQ(m_ui.messages.at(0).icon, MsgIcon::Critical);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM AutoManagementPlanting")),
        QStringList { QStringLiteral("9|PL|-99  |-99  |40|100|30|40|10") });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM AutoManagementHarvest")),
        QStringList { QStringLiteral("1|HA|30|-99  |100|30") });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM AutoManagementNitrogen ORDER BY rowid")),
        QStringList({ QStringLiteral("1|NI|30|50|25|FE001|GS000"), QStringLiteral("2|NI|30|50|25|FE001|GS000") }));

    // A second line of a level fails, and so does its row of defaults.
    EXPECT_THROW(AutoNitrogenRead(groupLine(" 2 NI", { "1" })), RuntimeError);
}

TEST_F(AutomaticSectionTest, ForecastDatesAndTheRemainingGroups)
{
    simDefaults().assignBuiltIn(true);
    auto dates = [](const char* level, const QString& date, const QString& name) {
        return QString::fromLatin1(level).leftJustified(14) + date.rightJustified(22) + QString(34, QLatin1Char(' '))
            + name;
    };
    // The date loses its leading zeros; the name keeps its blanks and has no
    // negative test.
    AutoSimdatesRead(dates(" 1 SI", QStringLiteral("0025100"), QStringLiteral("-5.WTH   ")));
    AutoSimdatesRead(dates(" 2 SI", QStringLiteral("-99"), QString()) + QStringLiteral(" "));
    AutoSimdatesRead(dates(" 3 SI", QStringLiteral(""), QStringLiteral(" X")));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM AutoManagementSimdates ORDER BY rowid")),
        QStringList({ QStringLiteral("1|SI|25100|-5.WTH   "), QStringLiteral("2|SI|-99|NULL"),
            QStringLiteral("3|SI|-99| X") }));

    // Irrigation, nitrogen and residues test one position past each start.
    AutoIrrigationRead(groupLine(" 1 IR", { "-99", "", "100", "GS001", "IR004", "10", "0.5" }));
    AutoIrrigationRead(groupLine(" 2 IR", { "5" }).left(16));
    AutoResiduesRead(groupLine(" 1 RE", { "50", "-1", "10" }));
    AutoResiduesRead(groupLine(" 2 RE", { "50", "2", "10" }).left(28));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM AutoManagementIrrigation ORDER BY rowid")),
        QStringList({ QStringLiteral("1|IR|30|50|100|GS001|IR004|10|0.5"),
            QStringLiteral("2|IR|NULL|NULL|NULL|NULL|NULL|NULL|NULL") }));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM AutoManagementResidues ORDER BY rowid")),
        QStringList({ QStringLiteral("1|RE|50|1|10"), QStringLiteral("2|RE|50|2|NULL") }));
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
}
