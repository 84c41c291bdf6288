#include "reference/CodeTables.h"

#include "app/AppState.h"
#include "database/Sql.h"
#include "reference/SuiteFixture.h"
#include "support/QtPrinters.h"

namespace quillon::test {
namespace {

using namespace quillon::reference;

class CodeTablesTest : public SuiteTest { };

// A Detail.cde line: code in columns 1-9, description from column 10.
QString code(const char* code, const QString& description)
{
    return QString::fromLatin1(code).leftJustified(9) + description;
}

TEST_F(CodeTablesTest, DetailCodesByTypeWithTheirQuirks)
{
    const QString seventy = QStringLiteral("1234567890").repeated(7);
    write(QStringLiteral("DETAIL.CDE"),
        { QStringLiteral("*EXP.DETAILS: title of the file"),
            QStringLiteral("ZZ       read over the title"), QStringLiteral("! comment"),
            QStringLiteral("@CODE    DESCRIPTION"), QString(),
            QStringLiteral("*Crop and Weed Species"), code("AB", QStringLiteral("Alpha bean")),
            code("CD", QStringLiteral("Corn'dog")), code("", QStringLiteral("   Blank code")),
            code("LONG", seventy), code("NO", QStringLiteral("    ")),
            QStringLiteral("*Methods - Fertilizer and Organic Amendments"),
            code("FE001", QStringLiteral("   Broadcast on flooded/saturated soil")),
            code("FE002", QStringLiteral("   Broadcast on flooded/saturated soil")),
            code("FE003", QStringLiteral("   Deeply placed urea super granules/p")),
            code("FE004", QStringLiteral("   Broadcast on flooded/saturated soils")) });

    CreateCodeLookup();

    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(
        rowsOf(QStringLiteral("SELECT Type, Code, Description FROM CodeLookup ORDER BY rowid")),
        (QStringList { QStringLiteral("Crop and Weed Species|AB|Alpha bean"),
            QStringLiteral("Crop and Weed Species|CD|Corndog"),
            QStringLiteral("Crop and Weed Species|NULL|   Blank code"),
            QStringLiteral("Crop and Weed Species|LONG|") + seventy.left(68),
            QStringLiteral("Crop and Weed Species|NO|No description"),
            QStringLiteral(
                "Methods - Fertilizer and|FE001|   Broadcast on flooded/saturated soil (FE001)"),
            QStringLiteral(
                "Methods - Fertilizer and|FE002|   Broadcast on flooded/saturated soil (FE002)"),
            QStringLiteral(
                "Methods - Fertilizer and|FE003|   Deeply placed urea super granules/p (FE003)"),
            QStringLiteral(
                "Methods - Fertilizer and|FE004|   Broadcast on flooded/saturated soils") }));
}

TEST_F(CodeTablesTest, MissingCodeFilesEndTheProgram)
{
    EXPECT_THROW(CreateCodeLookup(), ProgramEnded);
    EXPECT_EQ(m_ui.texts(),
        QStringList { QStringLiteral("Cannot open the file.") + state().DataFolder
            + QStringLiteral("/Detail.cde. File not found") });

    m_ui.clear();
    EXPECT_THROW(CreateCodeStageLookup(), ProgramEnded);
    EXPECT_EQ(m_ui.texts(),
        QStringList { QStringLiteral("Cannot open the file.") + state().DataFolder
            + QStringLiteral("/GRSTAGE.CDE. File not found") });

    m_ui.clear();
    EXPECT_THROW(CreateSIMLookUp(), ProgramEnded);
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].text,
        QStringLiteral("Cannot find file ") + state().DataFolder
            + QStringLiteral("/Simulation.cde"));
    EXPECT_EQ(m_ui.messages[0].icon, MsgIcon::Critical);
}

// A GRSTAGE.CDE line: code 1-5, label 6-10, description from 13.
QString stage(const char* code, const char* label, const char* description)
{
    return QString::fromLatin1(code).rightJustified(5) + QString::fromLatin1(label).leftJustified(5)
        + QStringLiteral("  ") + QString::fromLatin1(description);
}

TEST_F(CodeTablesTest, StagesByCropNameAndSharedSections)
{
    write(QStringLiteral("grstage.cde"),
        { QStringLiteral("*EXP stage codes"), stage("99", "LOST", "read over the title"),
            QStringLiteral("*Growth and Development Stage References"),
            stage("98", "NONE", "no crop yet"),
            QStringLiteral("*Growth and Development Codes - Maize (Zea mays)"),
            stage("1", " GE", "Germination"), stage("", "BL", "blank code goes"),
            QStringLiteral("@CDE  LABEL DESCRIPTION"), QStringLiteral("*PHENOLOGY notes"),
            stage("9", "PH", "never stored"), QStringLiteral("*Sweet corn, Sorghum,Millet"),
            stage("2", "EM", "Emergence's start"),
            QStringLiteral("*Phenological/Growth Stage Codes"), stage("3", "NO", "no crop name"),
            QStringLiteral("*Wheat"), stage("4", "AN", "") });

    CreateCodeStageLookup();

    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(rowsOf(QStringLiteral(
                  "SELECT Name, Code, Label, Description FROM CodeStageLookup ORDER BY rowid")),
        (QStringList { QStringLiteral("MAIZE|1|GE|Germination"),
            QStringLiteral("WHEAT|4|AN|No description"),
            QStringLiteral("SWEETCORN|2|EM|Emergences start"),
            QStringLiteral("SORGHUM|2|EM|Emergences start"),
            QStringLiteral("MILLET|2|EM|Emergences start") }));
}

TEST_F(CodeTablesTest, SimulationCodesByHeadingWithoutRepetitions)
{
    write(QStringLiteral("Simulation.cde"),
        { QStringLiteral("*Codes for Simulations Options"),
            QStringLiteral("X        title lines are not taken"),
            QStringLiteral("*Simulation/Crop Models"), QStringLiteral("KESTA      Kestral model"),
            QStringLiteral("LUMEN      Lumen's model"), QStringLiteral("XXXXX      Unknown model"),
            QStringLiteral("MIRTA      Mirta"), QStringLiteral("*Start Simulation"),
            QStringLiteral("S        Sowing date"), QStringLiteral("! a comment"),
            QStringLiteral("S        Sowing date"), QStringLiteral("E        "),
            QStringLiteral("*A heading of its own"), QStringLiteral("T        Tab\tbed"),
            QStringLiteral("*Simulation/Methods/Evapotransportation"),
            QStringLiteral("R        Priestley-Taylor") });

    CreateSIMLookUp();

    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(
        rowsOf(QStringLiteral("SELECT Type, Code, Description FROM SimLookUp ORDER BY rowid")),
        (QStringList { QStringLiteral("1|S|Sowing date"), QStringLiteral("1|T|Tabbed"),
            QStringLiteral("6|R|Priestley-Taylor"), QStringLiteral("19|KESTRAL|Kestral model"),
            QStringLiteral("19|LUMEN-ALT|Lumens model"), QStringLiteral("19|MIRTA|Mirta"),
            QStringLiteral("19|XXXXX|Unknown model") }));

    // Each load makes the table anew.
    CreateSIMLookUp();
    EXPECT_EQ(database::rowCount(QStringLiteral("SimLookUp")), 7);
}

} // namespace
} // namespace quillon::test
