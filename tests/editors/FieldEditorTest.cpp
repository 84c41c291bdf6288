// The field editor, run headless on the sample maize experiment: each
// routine's steps and messages, the field ID rules, the soils of ICSoil and
// Cancel, through a window without widgets.

#include "editors/FieldEditor.h"
#include "app/AppState.h"
#include "database/Relations.h"
#include "database/Sql.h"
#include "editors/EditorFixture.h"
#include "editors/EditorForms.h"
#include "support/FakeFieldScreen.h"

#include <gtest/gtest.h>

namespace quillon::test {
namespace {

using namespace editors;
using database::exec;

class FieldEditorTest : public EditorTest {
protected:
    void SetUp() override
    {
        EditorTest::SetUp();
        open(QStringLiteral("Maize/QLNV2101.MZX"));
        m_screen.attach(m_editor);
    }

    void load()
    {
        ASSERT_TRUE(mnuEditField_Click());
        m_editor.Form_Load();
    }
    // One column of Fields by level, "level|value" a row.
    static QStringList column(const char* field)
    {
        return rowsOf(QStringLiteral("SELECT LNFLD, IFNULL(%1, 'NULL') FROM Fields ORDER BY LNFLD")
                          .arg(QLatin1String(field)));
    }

    FakeFieldScreen m_screen;
    FieldEditor m_editor { m_screen };
};

TEST(NewFieldId, CountsOnInTheLastFourCharactersOrPadsTheLevelWithX)
{
    struct Case {
        const char* lastId;
        int newLevel;
        const char* expected;
    };
    const Case cases[] = {
        { "ABCD0009", 10, "ABCD0010" },
        { "ABCD0001", 2, "ABCD0002" },
        { "ABCD0099", 3, "ABCD0100" },
        // Four digits would follow: the level decides.
        { "ABCD0999", 12, "XXXXXX12" },
        { "ABCDEFGH", 7, "XXXXXXX7" },
        { "FIELD", 150, "XXXXX150" },
        { "AB12WXYZ", 1234, "XXXX1234" },
        { "", 1, "XXXXXXX1" },
        { "12", 5, "0013" },
    };
    for (const Case& c : cases)
        EXPECT_EQ(newFieldId(QLatin1String(c.lastId), c.newLevel), QLatin1String(c.expected))
            << c.lastId;
}

TEST_F(FieldEditorTest, OpensOnTheFirstFieldAndOkKeepsTheTables)
{
    const QStringList before = rowsOf(QStringLiteral("SELECT * FROM Fields"));
    load();
    EXPECT_TRUE(isOpen(EditorForm::frmFields));
    EXPECT_TRUE(m_host.calls.contains(QStringLiteral("closeEditors")));
    EXPECT_EQ(m_screen.caption, QStringLiteral("Fields (experimental) - QLNV2101.MZX"));
    EXPECT_EQ(m_screen.levelCaptions.size(), 19);
    EXPECT_EQ(m_screen.levelCaptions.value(12), QStringLiteral("X - coordinate in a field "));
    EXPECT_EQ(m_screen.levelNumber, QStringLiteral("Level 1"));
    const std::map<QString, QString> boxes { { "txtFLDNAM", "QLNV0001" }, { "txtWSTA", "QUIL" },
        { "txtSLOPE", "1.5" }, { "TxtSLDP", "180" }, { "txtXCRD", "-88.214" },
        { "txtYCRD", "40.105" }, { "txtAREA", "12000" }, { "txtFHDUR", "25" },
        { "txtFLNAME", "North Valley block A" } };
    for (const auto& [control, text] : boxes)
        EXPECT_EQ(m_screen.boxText(control), text) << control.toStdString();
    const std::map<QString, QString> combos { { "DBComboSLTX", "Silt loam" },
        { "DBComboDFDRN", "Tile drains" }, { "DBComboFLHST", "Row crops for 20 years or more" },
        { "DBComboMethod", "Measured daily data" },
        { "ComboWSTA", "Quillon Valley Research Farm, North Valley" }, { "ComboWSTA_ID", "QUIL" },
        { "ComboSoil", "North Valley silt loam(QL.SOL)" }, { "Combo2", "QLNV000001" } };
    for (const auto& [control, text] : combos)
        EXPECT_EQ(m_screen.comboText(control), text) << control.toStdString();
    EXPECT_EQ(m_screen.comboItems["ComboWSTA_ID"],
        (QStringList { "QUIL", "QUIL1901", "QUIL2001", "QUIL2101", "QUIL2201" }));
    EXPECT_TRUE(m_screen.comboVisible["ComboWSTA_ID"]);
    EXPECT_EQ(m_editor.weatherColumn(), QStringLiteral("Observed"));

    m_screen.selectLevel(2);
    EXPECT_EQ(m_screen.boxText("txtWSTA"), QStringLiteral("QUIL2101"));
    EXPECT_EQ(m_screen.comboText("ComboWSTA_ID"), QStringLiteral("QUIL2101"));
    EXPECT_EQ(m_screen.comboText("ComboSoil"),
        QStringLiteral("Deep silt loam, upland prairie(SOIL.SOL)"));
    EXPECT_EQ(m_screen.comboText("Combo2"), QStringLiteral("QLGEN00001"));
    EXPECT_EQ(m_screen.boxText("txtAREA"), QString());

    m_editor.cmdOK_Click();
    EXPECT_TRUE(m_screen.closed);
    EXPECT_FALSE(isOpen(EditorForm::frmFields));
    EXPECT_FALSE(state().FileSaved);
    EXPECT_FALSE(database::tableExists(QStringLiteral("BackUp")));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM Fields")), before);
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(FieldEditorTest, EachBoxKeepsItsRuleAndARefusedEntryChangesNothing)
{
    load();
    struct Case {
        const char* control;
        const char* typed;
        const char* message; // nullptr: accepted
        const char* shown; // the box afterwards, when accepted
        const char* stored; // the row's value afterwards
    };
    const Case cases[] = {
        { "txtSLOPE", "", nullptr, "-99", "-99" },
        { "txtSLOPE", " 2.5 ", nullptr, "2.5", "2.5" },
        { "txtFHDUR", "-99", nullptr, "-99", "-99" },
        { "txtFHDUR", "201", "Invalid entry.", nullptr, "-99" },
        { "txtFHDUR", "200", nullptr, "200", "200" },
        // X takes the latitude's bound and Y the longitude's.
        { "txtXCRD", "120", "Invalid entry.", nullptr, "-88.214" },
        { "txtXCRD", "-90", nullptr, "-90", "-90" },
        { "txtYCRD", "120", nullptr, "120", "120" },
        { "txtYCRD", "-181", "Invalid entry.", nullptr, "120" },
        { "txtELEV", "-500", nullptr, "-500", "-500" },
        { "txtELEV", "10000000", "Invalid entry.", nullptr, "-500" },
        { "txtAREA", "abc", "Invalid entry.", nullptr, "12000" },
        { "TxtFLST", "12", nullptr, "12", "12" },
        { "txtFLDNAM", "ABC", "FieldID must be 8 characters long.", nullptr, "QLNV0001" },
        { "txtFLDNAM", "QLNV0002", "This field ID is not unique.", nullptr, "QLNV0001" },
        { "txtFLDNAM", "QLNV0009", nullptr, "QLNV0009", "QLNV0009" },
        { "txtFLNAME", "Upper terrace", nullptr, "Upper terrace", "Upper terrace" },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.control) + " '" + c.typed + "'");
        m_ui.clear();
        const FieldBox& box = *std::find_if(fieldBoxes().begin(), fieldBoxes().end(),
            [&](const FieldBox& b) { return b.control == QLatin1String(c.control); });
        EXPECT_EQ(m_screen.type(QLatin1String(c.control), QLatin1String(c.typed)), !c.message);
        if (c.message) {
            EXPECT_EQ(m_ui.texts(), QStringList { QLatin1String(c.message) });
            EXPECT_EQ(m_ui.messages.at(0).title, QStringLiteral("Error"));
        } else {
            EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
            EXPECT_EQ(m_screen.boxText(QLatin1String(c.control)), QLatin1String(c.shown));
        }
        EXPECT_EQ(rowsOf(QStringLiteral("SELECT %1 FROM Fields WHERE LNFLD = 1").arg(box.field)),
            QStringList { QLatin1String(c.stored) });
    }
    // The grid shows what the boxes stored.
    EXPECT_EQ(m_screen.levels.text(1), QStringLiteral("QLNV0009"));
}

TEST_F(FieldEditorTest, StationsAreChosenByDescriptionAndById)
{
    load();
    m_editor.ComboWSTA_Click(QStringLiteral("Marsh Hollow Field Station, Quillon Valley"));
    EXPECT_EQ(m_screen.boxText("txtWSTA"), QStringLiteral("MRSH"));
    EXPECT_EQ(column("WSTA").value(0), QStringLiteral("1|MRSH"));
    EXPECT_TRUE(m_screen.comboVisible["ComboWSTA_ID"]);
    EXPECT_EQ(m_screen.comboItems["ComboWSTA_ID"],
        (QStringList { "MRSH", "MRSH1901", "MRSH2001", "MRSH2101" }));

    m_editor.ComboWSTA_ID_Change(QStringLiteral("MRSH2001"));
    EXPECT_EQ(column("WSTA").value(0), QStringLiteral("1|MRSH2001"));
    EXPECT_EQ(m_screen.comboText("ComboWSTA"),
        QStringLiteral("Marsh Hollow Field Station, Quillon Valley"));

    // A description of one station ID hides the ID combo.
    exec(QStringLiteral("INSERT INTO TotalWeatherLookup (Code, Description, Observed) "
                        "VALUES ('ZZZZ', 'Lone station', 'X')"));
    m_editor.ComboWSTA_Click(QStringLiteral("Lone station"));
    EXPECT_EQ(column("WSTA").value(0), QStringLiteral("1|ZZZZ"));
    EXPECT_FALSE(m_screen.comboVisible["ComboWSTA_ID"]);

    // Whatever source is chosen, the stations are the observed ones.
    m_editor.DBComboMethod_Click(QStringLiteral("Generated from stored parameters"));
    EXPECT_EQ(m_editor.weatherColumn(), QStringLiteral("Observed"));
    EXPECT_EQ(m_screen.comboText("ComboWSTA"), QStringLiteral("Lone station"));
    EXPECT_EQ(column("WSTA").value(0), QStringLiteral("1|ZZZZ"));

    // A field without a station shows none.
    m_screen.type(QStringLiteral("txtWSTA"), QString());
    EXPECT_EQ(column("WSTA").value(0), QStringLiteral("1|NULL"));
    EXPECT_EQ(m_screen.comboText("ComboWSTA"), QString());
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(FieldEditorTest, ASoilIsChosenByDescriptionThenById)
{
    load();
    m_editor.ComboSoil_Click(QStringLiteral("Sandy loam, outwash plain(SOIL.SOL)"));
    EXPECT_EQ(m_screen.comboItems["Combo2"], QStringList { "QLGEN00002" });
    // The row keeps its soil until an ID is chosen, and OK asks for one.
    EXPECT_EQ(m_screen.comboText("Combo2"), QString());
    m_editor.cmdOK_Click();
    EXPECT_EQ(m_ui.texts(), QStringList { "Please select soil profile." });
    EXPECT_FALSE(m_screen.closed);
    m_editor.Combo2_Click(QStringLiteral("QLGEN00002"));
    EXPECT_EQ(column("SLNO").value(0), QStringLiteral("1|QLGEN00002"));

    m_editor.CodeCombo_Click(QStringLiteral("DBComboSLTX"), QStringLiteral("Clay"));
    m_editor.CodeCombo_Click(QStringLiteral("DBComboDFDRN"), QStringLiteral("Open ditches"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT SLTX, DFDRN FROM Fields WHERE LNFLD = 1")),
        QStringList { "C|DR002" });
}

TEST_F(FieldEditorTest, AddCopiesTheLevelUnderTheNextFieldId)
{
    load();
    m_editor.CmdAddField();
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNFLD, FLDNAM, WSTA, SLOPE, SLNO, XCRD, FLNAME FROM "
                                    "Fields WHERE LNFLD = 3")),
        QStringList { "3|QLNV0003|QUIL|1.5|QLNV000001|-88.214|North Valley block A" });
    EXPECT_EQ(m_screen.levelNumber, QStringLiteral("Level 3"));
    EXPECT_EQ(m_screen.boxText("txtFLDNAM"), QStringLiteral("QLNV0003"));

    // Without a field ID on the page nothing is added.
    m_screen.boxes["txtFLDNAM"].clear();
    m_editor.CmdAddField();
    EXPECT_EQ(m_ui.texts(), QStringList { "Please enter Field ID." });
    EXPECT_EQ(database::rowCount(QStringLiteral("Fields")), 3);

    // With no field at all the first one starts empty.
    m_ui.clear();
    exec(QStringLiteral("UPDATE Treatments SET LNFLD = NULL"));
    exec(QStringLiteral("DELETE FROM Fields"));
    m_screen.showLevels(QStringLiteral("SELECT * FROM Fields"), LevelRow::First);
    m_editor.CmdAddField();
    EXPECT_EQ(column("FLDNAM"), QStringList { "1|NULL" });
    EXPECT_EQ(m_screen.levelNumber, QStringLiteral("Level 1"));
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(FieldEditorTest, RemovingAFieldTakesItsSoilOutOfICSoilUnlessAnotherFieldUsesIt)
{
    const QStringList soils = rowsOf(QStringLiteral("SELECT SLNO FROM ICSoil ORDER BY SLNO"));
    ASSERT_EQ(soils,
        (QStringList { "Deep silt loam, upland prairie (QLGEN00001)",
            "North Valley silt loam (QLNV000001)" }));
    load();
    // A field a treatment uses stays.
    m_screen.selectLevel(2);
    m_editor.CmdRemoveField();
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Deletion Warning"));
    EXPECT_TRUE(m_ui.messages[0].text.endsWith(
        QStringLiteral("Treatment 9 is currently using this Field level")));

    exec(QStringLiteral("UPDATE Treatments SET LNFLD = 1"));
    // No keeps it; Yes removes it, and its soil with it.
    m_ui.clear();
    m_ui.answers = { MsgAnswer::No };
    m_editor.CmdRemoveField();
    EXPECT_EQ(m_ui.texts(), QStringList { "Are you sure you want to delete level 2?" });
    EXPECT_EQ(m_ui.messages[0].buttons, MsgButtons::YesNoDefaultNo);
    EXPECT_EQ(database::rowCount(QStringLiteral("Fields")), 2);
    m_ui.answers = { MsgAnswer::Yes };
    m_editor.CmdRemoveField();
    EXPECT_EQ(column("FLDNAM"), QStringList { "1|QLNV0001" });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT SLNO FROM ICSoil")), QStringList { soils.at(1) });
    EXPECT_EQ(m_screen.levelNumber, QStringLiteral("Level 1"));

    // A soil another field still uses stays.
    m_editor.CmdAddField();
    m_ui.answers = { MsgAnswer::Yes };
    m_editor.CmdRemoveField();
    EXPECT_EQ(database::rowCount(QStringLiteral("Fields")), 1);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT SLNO FROM ICSoil")), QStringList { soils.at(1) });
}

TEST_F(FieldEditorTest, TheGridRefusesRepeatedLevelsAndIds)
{
    load();
    struct Case {
        int column;
        const char* typed;
        const char* message;
    };
    const Case cases[] = {
        { 0, "2", "Level numbers and FieldID cannot be repeated." },
        { 1, "QLNV0002", "Level numbers and FieldID cannot be repeated." },
        { 0, "x", "Invalid entry." },
    };
    for (const Case& c : cases) {
        m_ui.clear();
        m_screen.focused.clear();
        m_screen.typeLevel(c.column, QLatin1String(c.typed));
        EXPECT_EQ(m_ui.texts(), QStringList { QLatin1String(c.message) }) << c.typed;
        EXPECT_EQ(m_ui.messages.at(0).title, QStringLiteral("Error"));
        EXPECT_EQ(m_screen.focused.isEmpty(), c.column == 0 && QLatin1String(c.typed) == "x");
    }
    EXPECT_EQ(column("FLDNAM"), (QStringList { "1|QLNV0001", "2|QLNV0002" }));

    // A free number renumbers the level, and the treatments follow.
    m_ui.clear();
    m_screen.typeLevel(0, QStringLiteral("5"));
    EXPECT_EQ(column("FLDNAM"), (QStringList { "2|QLNV0002", "5|QLNV0001" }));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT DISTINCT LNFLD FROM Treatments ORDER BY 1")),
        (QStringList { "2", "5" }));
    EXPECT_EQ(m_screen.levelNumber, QStringLiteral("Level 5"));
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(FieldEditorTest, OkAndNextWantAFieldIdAStationAndASoil)
{
    load();
    struct Case {
        const char* control;
        const char* message;
    };
    const Case cases[] = {
        { "txtFLDNAM", "Please enter Field ID." },
        { "txtWSTA", "Please select weather station." },
        { "Combo2", "Please select soil profile." },
    };
    for (const Case& c : cases) {
        for (auto routine : { &FieldEditor::cmdOK_Click, &FieldEditor::cmdNext }) {
            m_editor.EditEntry(1);
            m_ui.clear();
            m_screen.boxes[QLatin1String(c.control)].clear();
            m_screen.combos[QLatin1String(c.control)].clear();
            (m_editor.*routine)();
            EXPECT_EQ(m_ui.texts(), QStringList { QLatin1String(c.message) });
            EXPECT_FALSE(m_screen.closed);
        }
    }
    m_ui.clear();
    m_editor.EditEntry(1);
    m_host.calls.clear();
    m_editor.cmdNext();
    EXPECT_TRUE(m_screen.closed);
    EXPECT_EQ(m_host.calls.value(0), QStringLiteral("reopen:frmPlantingEd"));
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(FieldEditorTest, CancelPutsFieldsTreatmentsAndSoilsBack)
{
    const QStringList fields = rowsOf(QStringLiteral("SELECT * FROM Fields ORDER BY LNFLD"));
    const QStringList treatments
        = rowsOf(QStringLiteral("SELECT TRTNO, LNFLD FROM Treatments ORDER BY rowid"));
    const QStringList soils = rowsOf(QStringLiteral("SELECT SLNO FROM ICSoil ORDER BY rowid"));
    load();
    m_screen.typeLevel(0, QStringLiteral("4"));
    m_screen.type(QStringLiteral("txtSLOPE"), QStringLiteral("7"));
    m_editor.ComboWSTA_Click(QStringLiteral("Marsh Hollow Field Station, Quillon Valley"));
    m_editor.CmdAddField();
    exec(QStringLiteral("UPDATE Treatments SET LNFLD = 4 WHERE LNFLD = 2"));
    m_screen.selectLevel(2);
    m_ui.answers = { MsgAnswer::Yes };
    m_editor.CmdRemoveField();
    ASSERT_NE(rowsOf(QStringLiteral("SELECT SLNO FROM ICSoil ORDER BY rowid")), soils);

    m_ui.clear();
    m_ui.answers = { MsgAnswer::OK };
    m_editor.escapePressed();
    EXPECT_EQ(m_ui.texts(), QStringList { "New data will not be saved." });
    EXPECT_TRUE(m_screen.closed);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM Fields ORDER BY LNFLD")), fields);
    EXPECT_EQ(
        rowsOf(QStringLiteral("SELECT TRTNO, LNFLD FROM Treatments ORDER BY rowid")), treatments);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT SLNO FROM ICSoil ORDER BY rowid")), soils);
    EXPECT_TRUE(database::relationExists(QStringLiteral("FieldTreatment")));
    EXPECT_FALSE(database::tableExists(QStringLiteral("BackUp3")));
    EXPECT_TRUE(state().FileSaved);
}

TEST_F(FieldEditorTest, FailuresEndWithTheRoutinesTail)
{
    load();
    exec(QStringLiteral("DROP TABLE ICSoil"));
    exec(QStringLiteral("UPDATE Treatments SET LNFLD = 1"));
    m_screen.selectLevel(2);
    m_ui.answers = { MsgAnswer::Yes };
    m_editor.CmdRemoveField();
    ASSERT_EQ(m_ui.messages.size(), 2u);
    EXPECT_TRUE(m_ui.texts().last().endsWith(QStringLiteral(" in cmdRemoveField/frmFields.")));
    EXPECT_EQ(database::rowCount(QStringLiteral("Fields")), 2);

    m_ui.clear();
    m_editor.Command1_Click();
    EXPECT_TRUE(m_ui.texts().last().endsWith(QStringLiteral(" in Command1_Click/frmFields.")));
}

} // namespace
} // namespace quillon::test
