// The recalculations of the initial conditions: their arithmetic and
// rounding, and what each routine writes to ICLayers and IC_Water_Nitrogen.

#include "editors/InitialConditionsFill.h"

#include "database/Sql.h"
#include "support/WorkDbFixture.h"

#include <gtest/gtest.h>

namespace quillon::test {
namespace {

using namespace editors;
using database::exec;

TEST(InitialConditionsArithmetic, WaterDensityAndNitrogenAsTheProgramRoundsThem)
{
    struct WaterCase {
        SoilLayer layer;
        double water;
        double SWINIT;
    };
    const WaterCase water[] = {
        { { 30, 0.10, 0.30, 1.3 }, 50, 0.2 }, { { 30, 0.13, 0.31, 1.3 }, 50, 0.22 },
        { { 30, 0.13, 0.31, 1.3 }, 0, 0.13 }, { { 30, 0.13, 0.31, 1.3 }, 100, 0.31 },
        { { 30, 0.10, 0.333, 1.3 }, 33, 0.177 }, // 0.17689 to 3 decimals
    };
    for (const WaterCase& c : water)
        EXPECT_DOUBLE_EQ(initialWater(c.layer, c.water), c.SWINIT) << c.water;

    struct DensityCase {
        std::vector<SoilLayer> layers;
        double density;
    };
    const DensityCase densities[] = {
        { { { 10, 0, 0, 1.0 }, { 30, 0, 0, 1.6 } }, 1.4 }, // 10 cm of 1.0, 20 cm of 1.6
        { { { 50, 0, 0, 1.3 } }, 1.3 },
        // A layer without its density: exactly 1.2, not a mean of the others.
        { { { 10, 0, 0, 1.5 }, { 30, 0, 0, -99 }, { 60, 0, 0, 1.5 } }, 1.2 },
        { { { 10, 0, 0, 0 }, { 30, 0, 0, 1.7 } }, 1.2 },
    };
    for (const DensityCase& c : densities)
        EXPECT_DOUBLE_EQ(meanBulkDensity(c.layers), c.density);

    // 20 kg/ha in 100 cm at 1.2: 18/12 and 2/12, in every layer.
    const std::vector<SoilLayer> profile { { 40, 0, 0, 1.2 }, { 100, 0, 0, 1.2 } };
    const NitrogenContents n = nitrogenContents(profile, 20);
    EXPECT_DOUBLE_EQ(n.INO3, 1.5);
    EXPECT_DOUBLE_EQ(n.INH4, 0.2);

    // A tie goes to the even neighbour.
    EXPECT_DOUBLE_EQ(roundTo(0.125, 2), 0.12);
    EXPECT_DOUBLE_EQ(roundTo(0.375, 2), 0.38);
    EXPECT_DOUBLE_EQ(roundTo(2.5, 0), 2);

    EXPECT_THROW(meanBulkDensity({}), RuntimeError);
    EXPECT_THROW(nitrogenContents({ { 0, 0, 0, 1.2 } }, 20), RuntimeError);
}

class InitialConditionsFill : public WorkDbTest {
protected:
    void SetUp() override
    {
        WorkDbTest::SetUp();
        exec(QStringLiteral("INSERT INTO InitialConditions (LNIC) VALUES (1), (2)"));
        // Level 1 has three layers, level 2 one that no routine may touch.
        exec(QStringLiteral("INSERT INTO ICLayers (LNIC, DLAYRI, SWINIT, INH4, INO3) VALUES "
                            "(1, 15, 0.1, 0.5, 5), (1, 30, 0.1, 0.5, 5), (1, 60, 0.1, 0.5, 5), "
                            "(2, 20, 0.3, 1, 9)"));
        exec(QStringLiteral("INSERT INTO IC_Water_Nitrogen (LNIC, SLNO, Water, Nitrogen) "
                            "VALUES (1, 'Old soil (OLD0000001)', 10, 70)"));
    }

    // A profile in SoilData: depth, lower limit, upper limit, density.
    static void profile(const std::vector<SoilLayer>& layers)
    {
        exec(QStringLiteral("DELETE FROM SoilData"));
        for (const SoilLayer& l : layers)
            database::insertRow(QStringLiteral("SoilData"),
                { { QStringLiteral("SLB"), l.SLB }, { QStringLiteral("SLLL"), l.SLLL },
                    { QStringLiteral("SDUL"), l.SDUL }, { QStringLiteral("SBDM"), l.SBDM } });
    }
    static QStringList layers(int level)
    {
        return rowsOf(
            QStringLiteral("SELECT DLAYRI, SWINIT, INH4, INO3 FROM ICLayers WHERE LNIC = %1 "
                           "ORDER BY DLAYRI")
                .arg(level));
    }
    static QStringList summary()
    {
        return rowsOf(QStringLiteral(
            "SELECT LNIC, SLNO, Water, Nitrogen FROM IC_Water_Nitrogen ORDER BY LNIC"));
    }

    const QString soil = QStringLiteral("Silt loam (QL00000001)");
    const std::vector<SoilLayer> twoLayers { { 40, 0.10, 0.30, 1.2 }, { 100, 0.20, 0.40, -99 } };
};

TEST_F(InitialConditionsFill, EachRoutineReplacesWhatItComputesAndStoresItsNumbers)
{
    profile(twoLayers);
    ASSERT_TRUE(ICFillAll(50, 20, 1, soil));
    EXPECT_EQ(layers(1), (QStringList { "40|0.2|0.2|1.5", "100|0.3|0.2|1.5" }));
    EXPECT_EQ(layers(2), (QStringList { "20|0.3|1|9" }));
    EXPECT_EQ(summary(), (QStringList { "1|" + soil + "|50|20" }));

    // Water alone, as many layers as the profile: SWINIT in place, the rest
    // kept; the summary keeps its nitrogen. The numbers are whole.
    ASSERT_TRUE(ICFillWater(62.5, 1, soil));
    EXPECT_EQ(layers(1), (QStringList { "40|0.225|0.2|1.5", "100|0.325|0.2|1.5" }));
    EXPECT_EQ(summary(), (QStringList { "1|" + soil + "|62|20" }));

    // Nitrogen alone sets the two contents in the level's layers.
    ASSERT_TRUE(ICFillNitrogen(40, 1, soil));
    EXPECT_EQ(layers(1), (QStringList { "40|0.225|0.3|3", "100|0.325|0.3|3" }));
    EXPECT_EQ(summary(), (QStringList { "1|" + soil + "|62|40" }));

    // Water alone on a level of another shape: the layers anew, depth and
    // water only; a level without a summary row gets one.
    exec(QStringLiteral("INSERT INTO InitialConditions (LNIC) VALUES (3)"));
    ASSERT_TRUE(ICFillWater(0, 3, soil));
    EXPECT_EQ(layers(3), (QStringList { "40|0.1|NULL|NULL", "100|0.2|NULL|NULL" }));
    EXPECT_EQ(summary().value(1), "3|" + soil + "|0|NULL");

    // A profile without rows leaves one layer of depth 5 with no values.
    profile({});
    ASSERT_TRUE(ICFillAll(50, 20, 1, soil));
    EXPECT_EQ(layers(1), (QStringList { "5|NULL|NULL|NULL" }));
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();

    // An empty soil does nothing.
    profile(twoLayers);
    EXPECT_FALSE(ICFillAll(50, 20, 1, QString()));
    EXPECT_EQ(layers(1), (QStringList { "5|NULL|NULL|NULL" }));
}

TEST_F(InitialConditionsFill, AFailureIsToldAndLeavesTheTablesAsTheyWere)
{
    const QStringList before = layers(1);
    const QStringList kept = summary();
    struct Case {
        std::vector<SoilLayer> profile;
        bool (*routine)(const QString& soil);
        const char* message;
    };
    const Case cases[] = {
        // 0.95 of water is more than a layer can hold.
        { { { 30, 0.5, 0.95, 1.2 } }, [](const QString& s) { return ICFillAll(100, 20, 1, s); },
            "Invalid entry. in Old_Command1_Click/frmInitCond." },
        { { { 0, 0.1, 0.3, 1.2 } }, [](const QString& s) { return ICFillNitrogen(20, 1, s); },
            "Division by zero in Old_Command1_Click/frmInitCond." },
        { {}, [](const QString& s) { return ICFillNitrogen(20, 1, s); },
            "Subscript out of range in Old_Command1_Click/frmInitCond." },
    };
    for (const Case& c : cases) {
        profile(c.profile);
        m_ui.clear();
        EXPECT_FALSE(c.routine(soil));
        EXPECT_EQ(m_ui.texts(), QStringList { QLatin1String(c.message) });
        EXPECT_EQ(layers(1), before);
        EXPECT_EQ(summary(), kept);
    }
}

} // namespace
} // namespace quillon::test
