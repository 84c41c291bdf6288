#include "validation/LevelIntegrity.h"
#include "database/Relations.h"
#include "database/Sql.h"
#include "support/WorkDbFixture.h"
#include "validation/TableRelations.h"

#include <algorithm>

using namespace quillon;
using namespace quillon::database;
using namespace quillon::validation;
using quillon::test::rowsOf;

namespace {

class LevelIntegrity : public test::WorkDbTest { };

// The factor tables in the order of the treatment columns.
const std::vector<std::pair<QString, QString>> factorTables {
    { "Cultivars", "LNCU" },
    { "Fields", "LNFLD" },
    { "SoilAnalysis", "LNSA" },
    { "InitialConditions", "LNIC" },
    { "Planting", "LNPLT" },
    { "Irrigation", "LNIR" },
    { "Fertilization", "LNFER" },
    { "Residue", "LNRES" },
    { "Chemicals", "LNCHE" },
    { "Tillage", "LNTIL" },
    { "EnvironMod", "LNENV" },
    { "Harvest", "LNHAR" },
    { "SimulationControl", "LNSIM" },
};

void addTreatment(int number, const QVariant& everyLevel)
{
    Values values { { "TRTNO", number } };
    for (const auto& [table, column] : factorTables)
        values.push_back({ column, everyLevel });
    insertRow(QStringLiteral("Treatments"), values);
}

QString levelsOf(int treatment)
{
    return rowsOf(
        QStringLiteral("SELECT LNCU, LNFLD, LNSA, LNIC, LNPLT, LNIR, LNFER, LNRES, LNCHE, LNTIL, "
                       "LNENV, LNHAR, LNSIM FROM Treatments WHERE TRTNO = %1")
            .arg(treatment))
        .value(0);
}

QStringList sorted(QStringList list)
{
    list.sort(Qt::CaseInsensitive);
    return list;
}

QStringList relationTableNames()
{
    QStringList names;
    for (const Relation& r : relationTable())
        names << r.name;
    return names;
}

} // namespace

TEST_F(LevelIntegrity, CheckLevelsClearsLevelsThatNameNothingSilently)
{
    // Each factor table has a level of its own number (1 for cultivars, 2
    // for fields, ...), so that a level checked in the wrong table is lost.
    Values ownLevels { { "TRTNO", 1 } };
    for (size_t i = 0; i < factorTables.size(); ++i) {
        const auto& [table, column] = factorTables[i];
        insertRow(table, { { column, int(i) + 1 } });
        ownLevels.push_back({ column, int(i) + 1 });
    }
    insertRow(QStringLiteral("Fertilization"), { { "LNFER", 7 } }); // events: two rows of a level
    insertRow(QStringLiteral("Treatments"), ownLevels);
    exec(QStringLiteral("UPDATE Treatments SET LNCU = 9 WHERE TRTNO = 1")); // no cultivar 9

    addTreatment(2, 20); // no level exists
    addTreatment(3, QVariant()); // no factor at all
    addTreatment(4, 0); // 0 means "no level" too

    CheckLevels();

    EXPECT_EQ(levelsOf(1), QStringLiteral("NULL|2|3|4|5|6|7|8|9|10|11|12|13"));
    EXPECT_EQ(levelsOf(2),
        QStringLiteral("NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL"));
    EXPECT_EQ(levelsOf(3),
        QStringLiteral("NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL"));
    EXPECT_EQ(levelsOf(4), QStringLiteral("0|0|0|0|0|0|0|0|0|0|0|0|0"));
    EXPECT_EQ(rowCount(QStringLiteral("Treatments")), 4);
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
}

TEST_F(LevelIntegrity, CheckLevelsReportsAFailureWithItsTail)
{
    addTreatment(1, 1);
    exec(QStringLiteral("DROP TABLE Harvest"));

    CheckLevels();

    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_TRUE(m_ui.messages[0].text.endsWith(QLatin1String(" in CheckLevels/Module.")))
        << m_ui.messages[0].text.toStdString();
    EXPECT_TRUE(m_ui.messages[0].text.contains(QLatin1String("HARVEST"), Qt::CaseInsensitive));
}

TEST_F(LevelIntegrity, SetAndDeleteRelationsByName)
{
    SetRelations();
    EXPECT_EQ(sorted(relationNames()), sorted(relationTableNames()));
    EXPECT_EQ(relationNames().size(), 32);

    // Made twice: the second run finds them all there and says nothing.
    SetRelations();
    EXPECT_EQ(relationNames().size(), 32);

    DeleteRelations();
    EXPECT_TRUE(relationNames().isEmpty());
    DeleteRelations(); // nothing left to remove

    SetRelationsForecast();
    EXPECT_EQ(relationNames(), QStringList { QStringLiteral("Sim10") });
    DeleteRelationsForecast();
    EXPECT_TRUE(relationNames().isEmpty());
    EXPECT_TRUE(m_ui.messages.empty());
}

TEST_F(LevelIntegrity, RenumberedLevelsFollowIntoDependentTables)
{
    insertRow(QStringLiteral("Fields"), { { "LNFLD", 1 }, { "FLDNAM", QStringLiteral("FLD1") } });
    insertRow(QStringLiteral("InitialConditions"), { { "LNIC", 1 } });
    insertRow(QStringLiteral("ICLayers"), { { "LNIC", 1 }, { "DLAYRI", 5 } });
    insertRow(QStringLiteral("ICLayers"), { { "LNIC", 1 }, { "DLAYRI", 15 } });
    insertRow(QStringLiteral("Treatments"), { { "TRTNO", 1 }, { "LNFLD", 1 }, { "LNIC", 1 } });
    insertRow(QStringLiteral("Treatments"), { { "TRTNO", 2 }, { "LNFLD", 1 } });
    SetRelations();

    exec(QStringLiteral("UPDATE Fields SET LNFLD = 5 WHERE LNFLD = 1"));
    exec(QStringLiteral("UPDATE InitialConditions SET LNIC = 3 WHERE LNIC = 1"));

    EXPECT_EQ(rowsOf(QStringLiteral("SELECT TRTNO, LNFLD, LNIC FROM Treatments ORDER BY TRTNO")),
        QStringList({ "1|5|3", "2|5|NULL" }));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNIC FROM ICLayers")), QStringList({ "3", "3" }));
}

TEST_F(LevelIntegrity, RelationsBrokenByTheDataAreLeftOutQuietly)
{
    insertRow(QStringLiteral("Treatments"), { { "TRTNO", 1 }, { "LNFLD", 3 } });
    insertRow(QStringLiteral("Chemicals"), { { "LNCHE", 2 } });

    SetRelations();

    const QStringList made = relationNames();
    EXPECT_EQ(made.size(), 30);
    EXPECT_FALSE(made.contains(QStringLiteral("FieldTreatment"), Qt::CaseInsensitive));
    EXPECT_FALSE(made.contains(QStringLiteral("Chem_Applications"), Qt::CaseInsensitive));
    EXPECT_TRUE(made.contains(QStringLiteral("ChemTreatment"), Qt::CaseInsensitive));
    EXPECT_TRUE(m_ui.messages.empty());
    // The data stays as it was.
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNFLD FROM Treatments")), QStringList { "3" });

    // Made again after a removal, as every Open does: the same ones.
    DeleteRelations();
    SetRelations();
    EXPECT_EQ(sorted(relationNames()), sorted(made));
    exec(QStringLiteral("DELETE FROM Chemicals"));
    DeleteRelations();
    SetRelations();
    EXPECT_TRUE(relationNames().contains(QStringLiteral("Chem_Applications"), Qt::CaseInsensitive));
}
