#include "reference/SoilLookups.h"

#include "app/AppState.h"
#include "database/Sql.h"
#include "database/WorkDatabase.h"
#include "reference/Profile.h"
#include "reference/SuiteFixture.h"
#include "support/QtPrinters.h"

#include <QFile>

namespace quillon::test {
namespace {

using namespace quillon::reference;

class SoilLookupsTest : public SuiteTest {
protected:
    void SetUp() override
    {
        SuiteTest::SetUp();
        writeProfile();
        LocateAvailableData();
    }

    QString layer(const char* base, const char* lower, const char* upper, const char* density)
    {
        return soilLayer(QLatin1String(base), QLatin1String(lower), QLatin1String(upper),
            QLatin1String(density));
    }

    void addField(int level, const QVariant& soil)
    {
        database::insertRow(QStringLiteral("Fields"),
            { { QStringLiteral("LNFLD"), level },
                { QStringLiteral("FLDNAM"), QStringLiteral("FLD0000") + QString::number(level) },
                { QStringLiteral("SLNO"), soil } });
    }
};

TEST_F(SoilLookupsTest, SoilFilesSelectedAndNumbered)
{
    write(QStringLiteral("SOIL/AB.SOL"),
        QStringList { QStringLiteral("*SOILS: AB file") }
            + soilProfile(QStringLiteral("IBAB000001"), QStringLiteral("Alpha's soil"),
                { layer("10", ".1", ".2", "1.3") }));
    write(QStringLiteral("SOIL/ABCD.SOL"),
        soilProfile(QStringLiteral("IBCD000001"), QStringLiteral("never read"), {}));
    write(QStringLiteral("SOIL/soil.sol"),
        QStringList { QStringLiteral("!comment"), QStringLiteral("*SOILS: General") }
            + soilProfile(QStringLiteral("IBGN000001"), QString(), {})
            + soilProfile(QStringLiteral("IBAB000001"), QStringLiteral("Alpha again"), {}));
    write(QStringLiteral("SOIL/zz.sol"),
        soilProfile(QStringLiteral("IBZZ000001"), QStringLiteral("Zed"), {}));

    CreateSoilLookup();

    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].text,
        QStringLiteral("Soil ID is not unique. Soil 'IBAB000001' is read once."));
    EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Error"));
    // SOIL.SOL is always 1, and the file after it counts on from 1.
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT Code, Depth, Description, SoilFileNumber, SoilFile "
                                    "FROM SoilLookup ORDER BY rowid")),
        (QStringList { QStringLiteral("SOILS: AB|NULL|SOILS: AB|2|AB.SOL"),
            QStringLiteral("IBAB000001|150|Alphas soil|2|AB.SOL"),
            QStringLiteral("SOILS: Gen|NULL|SOILS: Gen|1|SOIL.SOL"),
            QStringLiteral("IBGN000001|150|IBGN000001|1|SOIL.SOL"),
            QStringLiteral("IBZZ000001|150|Zed|2|ZZ.SOL") }));
    EXPECT_EQ(SoilFolder(), QStringLiteral("C:\\TERVA48\\Soil"));
    // Comment lines are not kept; the profile lines of the skipped file neither.
    EXPECT_EQ(SoilLines().size(), 8 + 13 + 6);
}

TEST_F(SoilLookupsTest, EveryListingGivesTheSameRowsAndMessagesUntilASoilFileChanges)
{
    write(QStringLiteral("SOIL/SOIL.SOL"),
        QStringList { QStringLiteral("*SOILS: General soil file") }
            + soilProfile(QStringLiteral("IBGN000001"), QStringLiteral("General"),
                { layer("10", ".1", ".2", "1.3") }));
    const QStringList shared = QStringList { QStringLiteral("*SOILS: General soils of AB") }
        + soilProfile(QStringLiteral("IBGN000001"), QStringLiteral("Again"), {})
        + soilProfile(QStringLiteral("IBAB000001"), QStringLiteral("Alpha"), {});
    write(QStringLiteral("SOIL/AB.SOL"), shared);
    // As every Open after the first: the table is emptied (as a Close does),
    // or kept when it stands, then listed.
    bool close = true;
    const auto listing = [this, &close] {
        m_ui.clear();
        database::CleanDataBase_Partially(!close && SoilLookupStands()
                ? QStringList { QStringLiteral("SoilLookup") }
                : QStringList());
        close = !close;
        CreateSoilLookup();
        return QStringList { rowsOf(QStringLiteral("SELECT * FROM SoilLookup ORDER BY rowid"))
                                 .join(QLatin1Char(';')),
            m_ui.texts().join(QLatin1Char(';')), SoilLines().join(QLatin1Char(';')) };
    };

    const QStringList first = listing();
    EXPECT_EQ(m_ui.texts(),
        (QStringList { QStringLiteral("Soil ID is not unique. Soil 'SOILS: Gen' is read once."),
            QStringLiteral("Soil ID is not unique. Soil 'IBGN000001' is read once.") }));
    EXPECT_EQ(listing(), first);
    EXPECT_EQ(listing(), first);
    EXPECT_TRUE(SoilLookupStands());

    // A row changed behind the listing's back: the table no longer stands.
    database::exec(
        QStringLiteral("UPDATE SoilLookup SET Description = 'x' WHERE Code = 'IBAB000001'"));
    EXPECT_FALSE(SoilLookupStands());
    EXPECT_EQ(listing(), first);

    // A soil file written with a new profile is read again.
    write(QStringLiteral("SOIL/AB.SOL"),
        shared + soilProfile(QStringLiteral("IBAB000002"), QStringLiteral("Beta"), {}));
    const QStringList changed = listing();
    EXPECT_EQ(changed.at(1), first.at(1));
    EXPECT_TRUE(changed.at(0).endsWith(QStringLiteral("IBAB000002|150|Beta|2|AB.SOL")));
    EXPECT_EQ(database::rowCount(QStringLiteral("SoilLookup")), 4);
    EXPECT_EQ(listing(), changed);
}

TEST_F(SoilLookupsTest, NoSoilLocationEndsTheProgram)
{
    database::exec(QStringLiteral("DELETE FROM TERVAPRO WHERE Code = 'SLD'"));
    EXPECT_THROW(CreateSoilLookup(), ProgramEnded);
    EXPECT_EQ(m_ui.texts(), QStringList { QStringLiteral("Cannot locate Soil files.") });
}

TEST_F(SoilLookupsTest, SoilFileThatCantBeOpenedEndsTheProgram)
{
    write(QStringLiteral("Soil/SOIL.SOL"),
        soilProfile(QStringLiteral("IBGN000001"), QStringLiteral("First"), {}));
    ASSERT_TRUE(QFile::link(path(QStringLiteral("gone.txt")), path(QStringLiteral("Soil/AB.SOL"))));

    EXPECT_THROW(CreateSoilLookup(), ProgramEnded);
    EXPECT_EQ(m_ui.texts(),
        QStringList { QStringLiteral("Cannot open file ") + path(QStringLiteral("Soil/AB.SOL"))
            + QStringLiteral(". File not found") });
}

TEST_F(SoilLookupsTest, LayersOfTheFirstBlockOfTheChosenSoil)
{
    write(QStringLiteral("Soil/SOIL.SOL"),
        QStringList { QStringLiteral("*SOILS: General") }
            + soilProfile(QStringLiteral("IBGN000001"), QStringLiteral("First"),
                { layer("15", ".125", ".250", "1.30"), layer("30", ".130", ".260", ""),
                    layer("60", ".140", ".270", "1.45"), QStringLiteral("@  SLB  SLPX  SLPT"),
                    QStringLiteral("    15   -99   -99") })
            + soilProfile(QStringLiteral("IBGN000002"), QStringLiteral("Last"),
                { layer("20", ".2", ".3", "1.1") }));
    CreateSoilLookup();
    ASSERT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();

    FillSoilTable(QStringLiteral("IBGN000001"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT round(SLB, 3), round(SLLL, 3), round(SDUL, 3), "
                                    "round(SBDM, 3) FROM SoilData ORDER BY rowid")),
        (QStringList { QStringLiteral("15|0.125|0.25|1.3"), QStringLiteral("30|0.13|0.26|-99"),
            QStringLiteral("60|0.14|0.27|1.45") }));

    // The last profile reads up to the end of the lines.
    FillSoilTable(QStringLiteral("IBGN000002"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT round(SLB, 3), round(SBDM, 3) FROM SoilData")),
        QStringList { QStringLiteral("20|1.1") });

    FillSoilTable(QStringLiteral("NOSUCHSOIL"));
    EXPECT_EQ(database::rowCount(QStringLiteral("SoilData")), 0);
    EXPECT_TRUE(m_ui.messages.empty());
}

TEST_F(SoilLookupsTest, InitialConditionSoilsFollowTheFieldsAndTheSoilFiles)
{
    write(QStringLiteral("Soil/SOIL.SOL"),
        soilProfile(QStringLiteral("IBAB0001"), QStringLiteral("Alpha soil"), {}));
    CreateSoilLookup();
    addField(1, QStringLiteral(" ibab0001"));
    addField(2, QStringLiteral("MISSING001"));
    addField(3, QStringLiteral("Soil (X1)"));
    addField(4, QVariant(QString()));

    // The table is made anew each time: a second run gives the same list.
    CheckOn_ICSoil_Empty();
    CheckOn_ICSoil_Empty();

    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT SLNO FROM ICSoil ORDER BY SLNO")),
        (QStringList { QStringLiteral("Alpha soil (IBAB0001)"), QStringLiteral("Soil (X1)") }));

    database::exec(QStringLiteral(
        "INSERT INTO IC_Water_Nitrogen (LNIC, SLNO, Water, Nitrogen) VALUES "
        "(1, 'Alpha soil (IBAB0001)', 50, 20), (2, 'Gone (X9)', 10, 5), (3, NULL, 7, 3)"));
    CheckIC_WaterNitrogen();
    EXPECT_EQ(rowsOf(QStringLiteral(
                  "SELECT LNIC, SLNO, Water, Nitrogen FROM IC_Water_Nitrogen ORDER BY LNIC")),
        (QStringList { QStringLiteral("1|Alpha soil (IBAB0001)|50|20"),
            QStringLiteral("2|NULL|NULL|NULL"), QStringLiteral("3|NULL|NULL|NULL") }));
}

} // namespace
} // namespace quillon::test
