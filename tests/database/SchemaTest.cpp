#include "app/AppState.h"
#include "database/Relations.h"
#include "database/Rules.h"
#include "database/Schema.h"
#include "database/Sql.h"
#include "database/WorkDatabase.h"
#include "support/WorkDbFixture.h"

#include <QFile>

using namespace quillon;
using namespace quillon::database;
using quillon::test::rowsOf;

namespace {

class Schema : public test::WorkDbTest { };

// Inserts one value into a column of a new row and gives back the refusal
// message, or "" when the row was taken.
QString refusal(const QString& table, const QString& column, const QVariant& value)
{
    try {
        insertRow(table, { { column, value } });
        return QString();
    } catch (const RuntimeError& e) {
        return e.text();
    }
}

} // namespace

TEST_F(Schema, CreatesEveryTableInOrderWithProgressAndIndexes)
{
    for (const SchemaStep& step : schemaSteps()) {
        if (step.kind == SchemaStep::Table) {
            EXPECT_TRUE(tableExists(step.table.name)) << step.table.name.toStdString();
        }
    }
    EXPECT_TRUE(tableExists(QStringLiteral("FieldYears")));
    EXPECT_TRUE(tableExists(QStringLiteral("icsoil"))); // names are case-blind
    EXPECT_TRUE(tableExists(QStringLiteral("WeatherLookUp")));

    // A second build from scratch reports the progress steps in order.
    closeWorkDB();
    QFile::remove(quillon::state().WorkDBPath);
    CreateDataBaseX();
    const std::vector<int> expected { 6, 35, 37, 39, 42, 46, 50, 53, 57, 62, 64, 70, 73, 76, 79, 82, 84, 86 };
    EXPECT_EQ(m_ui.progressSteps, expected);
    EXPECT_TRUE(m_ui.messages.empty());
}

TEST_F(Schema, ValidationRulesRefuseWithTheirText)
{
    const QString invalid = QStringLiteral("Invalid entry.");
    struct Case {
        const char* table;
        const char* column;
        double value;
        bool accepted;
    };
    const Case cases[] = {
        { "ICLayers", "SWINIT", 0, true }, { "ICLayers", "SWINIT", -99, true },
        { "ICLayers", "SWINIT", 0.9, true }, { "ICLayers", "SWINIT", 0.5, true },
        { "ICLayers", "SWINIT", 0.95, false }, { "ICLayers", "SWINIT", -1, false },
        { "ICLayers", "INH4", 99999, false }, { "ICLayers", "INH4", 0, true },
        { "ICLayers", "INO3", -99, true }, { "ICLayers", "INO3", 99998.5, true },
        { "ICLayers", "DLAYRI", 9999, true }, { "ICLayers", "DLAYRI", 10000, false },
        { "SoilLayers", "SASC", 100, true }, { "SoilLayers", "SAOC", 100, false },
        { "SoilLayers", "SANI", 99, true }, { "SoilLayers", "SANI", 100, false },
        { "SoilLayers", "SADM", 999, true }, { "SoilLayers", "SAPHW", -5, false },
        { "SoilLayers", "SABL", -99, true }, { "SoilLayers", "SAKE", 1000, false },
    };
    for (const Case& c : cases) {
        const QString got = refusal(QLatin1String(c.table), QLatin1String(c.column), c.value);
        EXPECT_EQ(got, c.accepted ? QString() : invalid) << c.table << "." << c.column << "=" << c.value;
    }
    // NULL passes every rule.
    EXPECT_EQ(refusal(QStringLiteral("SoilLayers"), QStringLiteral("SAOC"), QVariant()), QString());
    // A rule without text of its own gives the engine's message with the rule.
    EXPECT_EQ(refusal(QStringLiteral("Fields"), QStringLiteral("SLDP"), 10000),
        QStringLiteral("One or more values are prohibited by the validation rule 'BETWEEN 0 and 9999  or -99' "
                       "set for 'Fields.SLDP'. Enter a value that the expression for this field can accept."));
    EXPECT_EQ(refusal(QStringLiteral("Fields"), QStringLiteral("SLDP"), -99), QString());

    // Updates are checked as inserts are.
    const RuntimeError e = tryExec(QStringLiteral("UPDATE ICLayers SET SWINIT = 2"));
    EXPECT_EQ(e.number(), err::ValidationRule);
    EXPECT_EQ(e.text(), invalid);
}

TEST_F(Schema, SizesZeroLengthAndOverflow)
{
    // Text longer than its size is refused; Fields allow "", TERVAPRO not.
    try {
        insertRow(QStringLiteral("Fields"), { { QStringLiteral("LNFLD"), 1 }, { QStringLiteral("FLDNAM"), QStringLiteral("ABCDEFGHI") } });
        FAIL() << "a nine-character FLDNAM was taken";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::FieldTooSmall);
    }
    insertRow(QStringLiteral("Fields"), { { QStringLiteral("LNFLD"), 1 }, { QStringLiteral("FLDNAM"), QStringLiteral("") } });
    insertRow(QStringLiteral("Fields"), { { QStringLiteral("LNFLD"), 2 }, { QStringLiteral("WSTA"), QStringLiteral("ABCDEFGH") } });
    try {
        insertRow(QStringLiteral("TERVAPRO"), { { QStringLiteral("Code"), QStringLiteral("") } });
        FAIL() << "a zero-length Code was taken";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::ZeroLengthString);
        EXPECT_EQ(e.text(), QStringLiteral("Field 'TERVAPRO.Code' cannot be a zero-length string."));
    }
    // Level-name fields have 60 characters; TITLET and CNAME the default.
    insertRow(QStringLiteral("FerLevelNames"), { { QStringLiteral("LNFER"), 1 }, { QStringLiteral("FERNAME"), QString(60, QLatin1Char('x')) } });
    EXPECT_EQ(refusal(QStringLiteral("FerLevelNames"), QStringLiteral("FERNAME"), QString(61, QLatin1Char('x'))),
        QStringLiteral("The field is too small to accept the amount of data you attempted to add.  Try inserting or pasting less data."));
    EXPECT_EQ(refusal(QStringLiteral("Cultivars"), QStringLiteral("CNAME"), QString(100, QLatin1Char('x'))), QString());
    // Integer fields are 16-bit.
    EXPECT_EQ(refusal(QStringLiteral("Treatments"), QStringLiteral("LNFER"), 40000), QStringLiteral("Numeric field overflow."));
}

TEST_F(Schema, UniqueIndexesAndCaseBlindComparison)
{
    insertRow(QStringLiteral("Fields"), { { QStringLiteral("LNFLD"), 1 }, { QStringLiteral("FLDNAM"), QStringLiteral("abcd0001") } });
    try {
        insertRow(QStringLiteral("Fields"), { { QStringLiteral("LNFLD"), 2 }, { QStringLiteral("FLDNAM"), QStringLiteral("ABCD0001") } });
        FAIL() << "a field name differing only in case was taken";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::DuplicateKey);
    }
    // Tables that share an index name keep their own indexes.
    insertRow(QStringLiteral("Fertilization"), { { QStringLiteral("LNFER"), 1 } });
    insertRow(QStringLiteral("Fertilization"), { { QStringLiteral("LNFER"), 1 } });
    insertRow(QStringLiteral("FerLevelNames"), { { QStringLiteral("LNFER"), 1 } });
    EXPECT_EQ(refusal(QStringLiteral("FerLevelNames"), QStringLiteral("LNFER"), 1).isEmpty(), false);
    // Treatments are unique on TRTNO and ROTNO together.
    insertRow(QStringLiteral("Treatments"), { { QStringLiteral("TRTNO"), 1 }, { QStringLiteral("ROTNO"), 1 } });
    insertRow(QStringLiteral("Treatments"), { { QStringLiteral("TRTNO"), 1 }, { QStringLiteral("ROTNO"), 2 } });
    EXPECT_EQ(rowCount(QStringLiteral("treatments")), 2);
    // Text compares without regard to case.
    EXPECT_EQ(scalar(QStringLiteral("SELECT COUNT(*) FROM Fields WHERE FLDNAM = 'ABCD0001'")).toInt(), 1);
}

TEST_F(Schema, CleanRoutinesEmptyTheirTablesInOrder)
{
    for (const QString& table : { QStringLiteral("Treatments"), QStringLiteral("CodeLookup"), QStringLiteral("TERVAPRO"),
             QStringLiteral("SoilLookup"), QStringLiteral("ICSoil"), QStringLiteral("FieldYears"),
             QStringLiteral("SimulationControl"), QStringLiteral("IC_Water_Nitrogen") }) {
        exec(QStringLiteral("INSERT INTO [%1] DEFAULT VALUES").arg(table));
    }
    exec(QStringLiteral("CREATE TABLE SimLookUp (Code TEXT, Description TEXT, Type INTEGER)"));
    exec(QStringLiteral("INSERT INTO SimLookUp DEFAULT VALUES"));

    CleanDataBase_Partially();
    EXPECT_TRUE(m_ui.messages.empty());
    for (const char* emptied : { "Treatments", "SoilLookup", "ICSoil", "SimulationControl", "IC_Water_Nitrogen" })
        EXPECT_EQ(rowCount(QLatin1String(emptied)), 0) << emptied;
    for (const char* kept : { "CodeLookup", "TERVAPRO", "SimLookUp", "FieldYears" })
        EXPECT_EQ(rowCount(QLatin1String(kept)), 1) << kept;
    // A table its caller keeps is passed over.
    exec(QStringLiteral("INSERT INTO SoilLookup DEFAULT VALUES"));
    CleanDataBase_Partially({ QStringLiteral("soillookup") });
    EXPECT_EQ(rowCount(QStringLiteral("SoilLookup")), 1);

    exec(QStringLiteral("INSERT INTO ICSoil DEFAULT VALUES"));
    CleanDataBase();
    for (const char* emptied : { "CodeLookup", "TERVAPRO", "SimLookUp" })
        EXPECT_EQ(rowCount(QLatin1String(emptied)), 0) << emptied;
    EXPECT_EQ(rowCount(QStringLiteral("ICSoil")), 1);
    EXPECT_EQ(rowCount(QStringLiteral("FieldYears")), 1);

    // A failure stops the list and names the routine.
    exec(QStringLiteral("DROP TABLE SimLookUp"));
    exec(QStringLiteral("INSERT INTO TERVAPRO (Code) VALUES ('WED')"));
    CleanDataBase();
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_TRUE(m_ui.messages[0].text.endsWith(QStringLiteral(" in CleanDatabase/frmMain.")));
    EXPECT_EQ(rowCount(QStringLiteral("TERVAPRO")), 1); // after SimLookUp in the list: not reached
}

TEST_F(Schema, RelationsCascadeAndRefuseOrphans)
{
    insertRow(QStringLiteral("FerLevelNames"), { { QStringLiteral("LNFER"), 1 } });
    insertRow(QStringLiteral("Treatments"), { { QStringLiteral("TRTNO"), 1 }, { QStringLiteral("LNFER"), 1 } });
    createRelation({ QStringLiteral("FerTreat"), QStringLiteral("FerLevelNames"), QStringLiteral("LNFER"),
        QStringLiteral("Treatments"), QStringLiteral("LNFER") });
    EXPECT_TRUE(relationExists(QStringLiteral("FerTreat")));
    EXPECT_EQ(relationNames(), QStringList { QStringLiteral("FerTreat") });

    exec(QStringLiteral("UPDATE FerLevelNames SET LNFER = 5 WHERE LNFER = 1"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT TRTNO, LNFER FROM Treatments")), QStringList { QStringLiteral("1|5") });

    const RuntimeError orphan = tryExec(QStringLiteral("INSERT INTO Treatments (TRTNO, LNFER) VALUES (2, 7)"));
    EXPECT_EQ(orphan.number(), err::RelatedRecordRequired);
    EXPECT_EQ(tryExec(QStringLiteral("INSERT INTO Treatments (TRTNO, LNFER) VALUES (3, NULL)")).number(), 0);
    EXPECT_EQ(tryExec(QStringLiteral("DELETE FROM FerLevelNames")).number(), err::RelatedRecordsExist);

    deleteRelation(QStringLiteral("FerTreat"));
    EXPECT_FALSE(relationExists(QStringLiteral("FerTreat")));
    EXPECT_EQ(tryExec(QStringLiteral("INSERT INTO Treatments (TRTNO, LNFER) VALUES (4, 7)")).number(), 0);
    // Rows that already break it keep the relation from being made.
    EXPECT_THROW(createRelation({ QStringLiteral("FerTreat"), QStringLiteral("FerLevelNames"), QStringLiteral("LNFER"),
                     QStringLiteral("Treatments"), QStringLiteral("LNFER") }),
        RuntimeError);
    EXPECT_FALSE(relationExists(QStringLiteral("FerTreat")));
    try {
        deleteRelation(QStringLiteral("FerTreat"));
        FAIL() << "deleting a missing relation succeeded";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::ItemNotFound);
    }
}

TEST_F(Schema, RulesOnAFilledScratchTable)
{
    exec(QStringLiteral("CREATE TABLE Applications (LNFER INTEGER, DFERT REAL)"));
    exec(QStringLiteral("INSERT INTO Applications VALUES (1, 500)"));
    setValidationRule(QStringLiteral("Applications"), QStringLiteral("DFERT"), QStringLiteral("BETWEEN 0 AND 99 or -99"),
        QStringLiteral("Invalid entry."));
    EXPECT_EQ(rowCount(QStringLiteral("Applications")), 1); // the row already there stays
    EXPECT_EQ(tryExec(QStringLiteral("INSERT INTO Applications VALUES (1, 100)")).text(), QStringLiteral("Invalid entry."));
    EXPECT_EQ(tryExec(QStringLiteral("INSERT INTO Applications VALUES (1, ?)"), { -99 }).number(), 0);
    setValidationRule(QStringLiteral("Applications"), QStringLiteral("DFERT"), QString(), QString());
    EXPECT_EQ(tryExec(QStringLiteral("INSERT INTO Applications VALUES (1, 100)")).number(), 0);
}

TEST(RuleCondition, TranslatesTheProgramsRuleNotation)
{
    EXPECT_EQ(ruleCondition(QStringLiteral("BETWEEN 0 AND 99 or -99"), QStringLiteral("X")),
        QStringLiteral("(X BETWEEN 0 AND 99 or X = -99)"));
    EXPECT_EQ(ruleCondition(QStringLiteral("(> 0 AND < 0.9) or = -99 or = 0"), QStringLiteral("X")),
        QStringLiteral("(( X > 0 AND X < 0.9 ) or X = -99 or X = 0)"));
    EXPECT_EQ(ruleCondition(QStringLiteral(">= 1 And <= 5"), QStringLiteral("X")), QStringLiteral("(X >= 1 And X <= 5)"));
}

TEST_F(Schema, FailureWhileBuildingEndsTheProgramWithItsStage)
{
    closeWorkDB();
    QFile::remove(quillon::state().WorkDBPath);
    // A folder in the file's place can't be opened as a database.
    quillon::state().WorkDBPath = path(QStringLiteral("missing/deeper/QUILLONTEMP2.mdb"));
    EXPECT_THROW(CreateDataBaseX(), test::ProgramEnded);
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_TRUE(m_ui.messages[0].text.endsWith(QStringLiteral(" in CreateDataBaseX(2)")));
}

TEST_F(Schema, ScratchTablesRemadeOrEmptiedInPlace)
{
    const QString create = QStringLiteral("Create Table [Years] (LNFLD Integer, Year Integer)");
    remakeTable(QStringLiteral("Years"), create);
    exec(QStringLiteral("INSERT INTO Years VALUES (1, 2001)"));
    const int version = scalar(QStringLiteral("PRAGMA schema_version")).toInt();
    remakeTable(QStringLiteral("YEARS"), create);
    EXPECT_EQ(rowCount(QStringLiteral("Years")), 0);
    EXPECT_EQ(scalar(QStringLiteral("PRAGMA schema_version")).toInt(), version); // emptied, not remade

    // Another definition makes it anew.
    remakeTable(QStringLiteral("Years"), QStringLiteral("CREATE TABLE [Years] (LNFLD Integer, Year Integer, Extra Text)"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT name FROM pragma_table_info('Years')")).size(), 3);

    // A relation whose table was remade gets its triggers back when it is
    // made again.
    createRelation({ QStringLiteral("SoilIC"), QStringLiteral("Fields"), QStringLiteral("SLNO"),
        QStringLiteral("ICSoil"), QStringLiteral("SLNO") });
    deleteRelation(QStringLiteral("SoilIC"));
    remakeTable(QStringLiteral("ICSoil"), QStringLiteral("CREATE TABLE ICSoil (SLNO TEXT COLLATE NOCASE)"));
    createRelation({ QStringLiteral("SoilIC"), QStringLiteral("Fields"), QStringLiteral("SLNO"),
        QStringLiteral("ICSoil"), QStringLiteral("SLNO") });
    EXPECT_EQ(tryExec(QStringLiteral("INSERT INTO ICSoil VALUES ('NOSUCH')")).number(), err::RelatedRecordRequired);
}

TEST_F(Schema, KeptStatementsServeNestedAndRepeatedQueries)
{
    for (int level : { 1, 2, 3 })
        insertRow(QStringLiteral("Tillage"), { { "LNTIL", level }, { "TDEP", level * 10 } });
    const QString sql = QStringLiteral("SELECT TDEP FROM Tillage WHERE LNTIL >= ? ORDER BY LNTIL");
    // A loop inside a loop over the same text has its own statement.
    QStringList seen;
    {
        Rows outer(sql, { 2 });
        while (outer.next()) {
            Rows inner(sql, { 1 });
            int count = 0;
            while (inner.next())
                ++count;
            seen << outer.value(QStringLiteral("tdep")).toString() + QLatin1Char(':')
                    + QString::number(count);
        }
    }
    EXPECT_EQ(seen, (QStringList { QStringLiteral("20:3"), QStringLiteral("30:3") }));
    // Run again, a kept statement sees the table as it is now.
    exec(QStringLiteral("DELETE FROM Tillage WHERE LNTIL = 3"));
    Rows again(sql, { 2 });
    ASSERT_TRUE(again.next());
    EXPECT_EQ(again.value(0).toInt(), 20);
    EXPECT_FALSE(again.next());
}
