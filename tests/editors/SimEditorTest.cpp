// The simulation control editor's routines on the sample experiments: the
// menu handler, the page's values, Add, Remove, renumbering, the validators,
// the combo rules, OK and Cancel.

#include "editors/SimEditor.h"
#include "app/AppState.h"
#include "database/Relations.h"
#include "database/Sql.h"
#include "editors/EditorFixture.h"
#include "editors/EditorForms.h"
#include "support/FakeSimScreen.h"

#include <gtest/gtest.h>

namespace quillon::test {
namespace {

using namespace editors;

class SimEditorTest : public EditorTest {
protected:
    // Opens a sample experiment and the editor on it, as the menu does.
    void openEditor(const QString& file)
    {
        open(file);
        m_screen.editor = &m_editor;
        ASSERT_TRUE(EditSimOptGeneral_Click());
        m_editor.Form_Load();
    }
    // Every row of the group tables and the treatments' levels.
    static QStringList everything()
    {
        QStringList all;
        for (const QString& table : simTables())
            all << table << rowsOf(QStringLiteral("SELECT * FROM [%1] ORDER BY rowid").arg(table));
        return all << rowsOf(QStringLiteral("SELECT TRTNO, LNSIM FROM Treatments ORDER BY rowid"));
    }
    static QStringList levelsOf(const QString& table)
    {
        return rowsOf(QStringLiteral("SELECT LNSIM FROM [%1] ORDER BY LNSIM").arg(table));
    }

    FakeSimScreen m_screen;
    SimEditor m_editor { m_screen };
};

TEST_F(SimEditorTest, OpensOnTheFirstLevelWithCodesDatesAndNumbersShown)
{
    openEditor(QStringLiteral("Maize/QLNV2101.MZX"));
    EXPECT_TRUE(isOpen(EditorForm::frmSim));
    EXPECT_EQ(
        m_screen.caption, QStringLiteral("Simulation Controls (experimental) - QLNV2101.MZX"));
    EXPECT_FALSE(m_screen.forecastTab);
    EXPECT_EQ(m_editor.Data1().text(0, 1), QStringLiteral("REPORTED MANAGEMENT"));
    EXPECT_EQ(m_screen.texts[QStringLiteral("txtYRSIMDate")], QStringLiteral("4/10/2021"));
    EXPECT_EQ(m_screen.texts[QStringLiteral("txtMaskEdBoxPlant1")], QStringLiteral("4/20/2021"));
    EXPECT_EQ(m_screen.texts[QStringLiteral("txtRSEED")], QStringLiteral("2150"));
    EXPECT_EQ(m_screen.texts[QStringLiteral("txt7EFFIRR")], QStringLiteral("1"));
    EXPECT_EQ(m_screen.texts[QStringLiteral("txt7IOFF")], QStringLiteral("GS000"));
    EXPECT_EQ(m_screen.codes[QStringLiteral("DBComboModel")], QStringLiteral("MZKES"));
    EXPECT_EQ(m_screen.codes[QStringLiteral("DBCmb7IAME")], QStringLiteral("IR001"));
    // Code combos read descriptions; the code table's own read "description (code)".
    const auto& methods = m_screen.choices[QStringLiteral("DBCombo1(2)")];
    ASSERT_FALSE(methods.empty());
    EXPECT_EQ(methods.front().text, QStringLiteral("Penman-Monteith, reference crop form"));
    for (const CodeChoice& c : m_screen.choices[QStringLiteral("DBCmb7IAME")])
        EXPECT_TRUE(c.text.endsWith(QStringLiteral(" (") + c.code + QLatin1Char(')')));
    // Level 1 irrigates as reported: the efficiency alone stays on.
    EXPECT_TRUE(m_screen.enabled[QStringLiteral("txt7EFFIRR")]);
    EXPECT_FALSE(m_screen.enabled[QStringLiteral("txt7AIRAMT")]);
    EXPECT_FALSE(m_screen.enabled[QStringLiteral("txt7DSOIL")]);

    // Level 2 manages irrigation automatically: the amount goes off.
    m_screen.selectLevel(2);
    EXPECT_EQ(m_editor.shownLevel(), 2);
    EXPECT_EQ(m_screen.codes[QStringLiteral("DBCombo4(1)")], QStringLiteral("A"));
    EXPECT_FALSE(m_screen.enabled[QStringLiteral("txt7AIRAMT")]);
    EXPECT_TRUE(m_screen.enabled[QStringLiteral("txt7DSOIL")]);
    EXPECT_EQ(m_screen.texts[QStringLiteral("txt7EFFIRR")], QStringLiteral("0.9"));
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(SimEditorTest, MenuGivesAMissingStartDateThePlantingDateOrAsksForOne)
{
    open(QStringLiteral("Maize/QLNV2101.MZX"));
    state().NewLevelCreated = true;
    database::exec(QStringLiteral("UPDATE SimulationControl SET YRSIM = NULL"));
    EXPECT_TRUE(EditSimOptGeneral_Click());
    EXPECT_FALSE(state().NewLevelCreated);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT YRSIM FROM SimulationControl ORDER BY rowid")),
        (QStringList { QStringLiteral("21121"), QStringLiteral("NULL") }));

    database::exec(QStringLiteral("UPDATE SimulationControl SET YRSIM = NULL"));
    database::exec(QStringLiteral("UPDATE Planting SET YRPLT = NULL"));
    m_host.calls.clear();
    EXPECT_FALSE(EditSimOptGeneral_Click());
    EXPECT_EQ(m_ui.texts(), QStringList { QStringLiteral("Please enter the planting date.") });
    EXPECT_EQ(m_host.calls.mid(0, 2),
        (QStringList { QStringLiteral("closeEditors"), QStringLiteral("reopen:frmPlantingEd") }));
}

TEST_F(SimEditorTest, RenumberAddAndCancelKeepTheGroupsAndTreatmentsTogether)
{
    openEditor(QStringLiteral("Maize/QLNV2101.MZX"));
    const QStringList before = everything();
    // Level 2 becomes 5: every group and treatment 8 follow.
    m_screen.selectLevel(2);
    EXPECT_EQ(m_editor.Data1().store(1, 0, QStringLiteral("5")).number(), 0);
    EXPECT_EQ(levelsOf(QStringLiteral("AutoManagementHarvest")),
        (QStringList { QStringLiteral("1"), QStringLiteral("5") }));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNSIM FROM Treatments WHERE TRTNO = 8")),
        QStringList { QStringLiteral("5") });
    // A number in use, or no number, is refused.
    m_editor.Data1().store(1, 0, QStringLiteral("1"));
    m_editor.Data1().store(1, 0, QStringLiteral("x"));
    EXPECT_EQ(m_ui.texts(),
        (QStringList { QStringLiteral("Invalid entry."), QStringLiteral("Invalid entry.") }));
    m_ui.clear();

    // After levels 1, 2 (now 5) the new level is 6, a copy of the one shown.
    m_editor.CmdAdd_Click();
    EXPECT_EQ(m_editor.shownLevel(), 6);
    for (const QString& table : simTables()) {
        if (table != QLatin1String("AutoManagementSimdates")) {
            EXPECT_EQ(levelsOf(table).last(), QStringLiteral("6")) << table.toStdString();
        }
    }
    EXPECT_EQ(rowsOf(QStringLiteral(
                  "SELECT IIRRI, TITMAT FROM SimulationControlManagement WHERE LNSIM = 6")),
        QStringList { QStringLiteral("A|MA") });
    EXPECT_FALSE(database::tableExists(QStringLiteral("SimulationControl_Add")));

    m_editor.cmdCancel_Click();
    EXPECT_TRUE(m_screen.closed);
    EXPECT_EQ(everything(), before);
    EXPECT_TRUE(database::relationExists(QStringLiteral("SimTreatment")));
    EXPECT_FALSE(isOpen(EditorForm::frmSim));
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(SimEditorTest, RemoveRefusesALevelInUseAndAsksForAnother)
{
    openEditor(QStringLiteral("Maize/QLNV2101.MZX"));
    m_editor.CmdRemove_Click();
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Deletion Warning"));
    EXPECT_TRUE(m_ui.messages[0].text.endsWith(QStringLiteral(
        "Treatment 1, 2, 3, 4, 5, 6, 7, 9, 10, 11 is currently using this Simulation level")));
    m_ui.clear();

    m_editor.CmdAdd_Click();
    m_ui.answers = { MsgAnswer::No, MsgAnswer::Yes };
    m_editor.CmdRemove_Click();
    EXPECT_EQ(levelsOf(QStringLiteral("SimulationControl")).size(), 3);
    m_editor.CmdRemove_Click();
    EXPECT_EQ(m_ui.texts(),
        (QStringList { QStringLiteral("Are you sure you want to delete level 3?"),
            QStringLiteral("Are you sure you want to delete level 3?") }));
    for (const QString& table : simTables())
        EXPECT_FALSE(levelsOf(table).contains(QStringLiteral("3"))) << table.toStdString();
    EXPECT_EQ(m_editor.shownLevel(), 2);
}

TEST_F(SimEditorTest, ValidatorsKeepTheirBoundsAndMessages)
{
    openEditor(QStringLiteral("Maize/QLNV2101.MZX"));
    const QString entry = QStringLiteral("Invalid entry.");
    const QString percentage = QStringLiteral("Invalid percentage.");
    const QString date = QStringLiteral("Invalid date.");
    const struct {
        const char* box;
        const char* typed;
        QString message;
    } cases[] = {
        { "txt7EFFIRR", "0", {} },
        { "txt7EFFIRR", "1", {} },
        { "txt7EFFIRR", "1.1", entry },
        { "txt7EFFIRR", "-99", {} },
        { "txt7EFFIRR", "-1", entry },
        { "txt7EFFIRR", "a", entry },
        { "txt7IEPT", "100", {} },
        { "txt7IEPT", "101", percentage },
        { "txt7THETAC", "x", entry },
        { "txt9HRP", "-0.5", percentage },
        { "txt9RIP", " -99 ", {} },
        { "txt6SWPLTL", "100.5", entry },
        { "txt6PTX", "9999", {} },
        { "txt8SOILNX", "10000", entry },
        { "txtRSEED", "10000", entry },
        { "txtFROP", "99", {} },
        { "txtNREPSQ", "100", entry },
        { "txtNREPSQ", "", {} },
        { "txtYRSIMDate", "2/30/2021", date },
        { "txtMaskEdBoxHar2", "", {} },
        { "txtMaskEdBoxPlant2", "5/31/2021", {} },
    };
    for (const auto& c : cases) {
        m_ui.clear();
        const bool passed = m_screen.type(QLatin1String(c.box), QLatin1String(c.typed));
        EXPECT_EQ(passed, c.message.isEmpty()) << c.box << " " << c.typed;
        EXPECT_EQ(m_ui.texts().join(QString()), c.message) << c.box << " " << c.typed;
        if (!m_ui.messages.empty()) {
            EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Error"));
            EXPECT_EQ(m_ui.messages[0].icon, MsgIcon::Critical);
        }
    }
    // The number of years alone warns about emptiness, and takes its default.
    m_ui.clear();
    EXPECT_TRUE(m_screen.type(QStringLiteral("txtNYRS"), QString()));
    EXPECT_EQ(m_ui.texts(),
        QStringList { QStringLiteral("Invalid entry. Default value 1 will be assigned!") });
    EXPECT_EQ(m_screen.texts[QStringLiteral("txtNYRS")], QStringLiteral("1"));
}

TEST_F(SimEditorTest, ChangesGoToTheTablesOnALevelChangeAndOnOk)
{
    openEditor(QStringLiteral("Maize/QLNV2101.MZX"));
    m_screen.texts[QStringLiteral("txt6PTX")] = QStringLiteral("35.5");
    m_screen.texts[QStringLiteral("txtYRSIMDate")] = QStringLiteral("5/1/2021");
    m_screen.texts[QStringLiteral("txtMaskEdBoxPlant1")] = QString();
    m_screen.texts[QStringLiteral("txtNREPSQ")] = QStringLiteral("2.6");
    m_screen.codes[QStringLiteral("DBCombo2(0)")] = QStringLiteral("N");
    m_screen.selectLevel(2);
    EXPECT_EQ(
        rowsOf(QStringLiteral("SELECT PTX, PWDINF FROM AutoManagementPlanting WHERE LNSIM = 1")),
        QStringList { QStringLiteral("35.5|-99  ") });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT YRSIM, NREPSQ FROM SimulationControl WHERE LNSIM = 1")),
        QStringList { QStringLiteral("21121|3") });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT ISWWAT FROM SimulationControlOptions WHERE LNSIM = 1")),
        QStringList { QStringLiteral("N") });

    // OK checks the date boxes first and stays on a bad one.
    state().FileSaved = true;
    m_screen.texts[QStringLiteral("txt9HPP")] = QStringLiteral("-99");
    m_screen.texts[QStringLiteral("txtMaskEdBoxHar2")] = QStringLiteral("13/1/2021");
    m_editor.cmdOK_Click();
    EXPECT_EQ(m_ui.texts(), QStringList { QStringLiteral("Invalid date.") });
    EXPECT_FALSE(m_screen.closed);
    m_screen.texts[QStringLiteral("txtMaskEdBoxHar2")] = QStringLiteral("10/1/2021");
    m_editor.cmdOK_Click();
    EXPECT_TRUE(m_screen.closed);
    EXPECT_FALSE(state().FileSaved);
    EXPECT_EQ(
        rowsOf(QStringLiteral("SELECT HLATE, HPP FROM AutoManagementHarvest WHERE LNSIM = 2")),
        QStringList { QStringLiteral("21274|-99") });
}

TEST_F(SimEditorTest, CanopyEvaporationForcesLeafPhotosynthesisAndCodesSetTheTabs)
{
    openEditor(QStringLiteral("Maize/QLNV2101.MZX"));
    const QString photosynthesis = QStringLiteral("DBCombo1(4)");
    m_screen.choose(photosynthesis, QStringLiteral("C"));
    EXPECT_EQ(m_screen.codes[photosynthesis], QStringLiteral("C"));
    m_screen.choose(QStringLiteral("DBCombo1(2)"), QStringLiteral("z"));
    EXPECT_EQ(m_screen.codes[photosynthesis], QStringLiteral("L"));
    m_screen.choose(photosynthesis, QStringLiteral("R"));
    EXPECT_EQ(m_screen.codes[photosynthesis], QStringLiteral("L"));

    const struct {
        int index;
        const char* code;
        const char* field;
        bool enabled;
    } cases[] = {
        { 0, "R", "txtMaskEdBoxPlant1", false },
        { 0, "A", "txt6PTX", true },
        { 1, "N", "txt7EFFIRR", false },
        { 1, "F", "txt7AIRAMT", true },
        { 1, "R", "txt7EFFIRR", true },
        { 1, "d", "txt7DSOIL", false },
        { 1, "P", "txt7DSOIL", false },
        { 2, "N", "txt8NEND", false },
        { 2, "A", "txt8NEND", true },
        { 3, "A", "txt9RIP", false },
        { 3, "N", "txt9DRESMG", false },
        { 4, "A", "txt9HPP", true },
        { 4, "M", "txtMaskEdBoxHar2", false },
    };
    for (const auto& c : cases) {
        m_screen.choose(QStringLiteral("DBCombo4(%1)").arg(c.index), QLatin1String(c.code));
        EXPECT_EQ(m_screen.enabled[QLatin1String(c.field)], c.enabled) << c.index << " " << c.code;
    }
    EXPECT_TRUE(m_ui.messages.empty());
}

TEST_F(SimEditorTest, ClosingOtherThanByTheButtons)
{
    openEditor(QStringLiteral("Maize/QLNV2101.MZX"));
    m_screen.texts[QStringLiteral("txtRSEED")] = QStringLiteral("77");
    m_ui.answers = { MsgAnswer::Cancel, MsgAnswer::Cancel };
    m_editor.escapePressed();
    EXPECT_FALSE(m_screen.closed);
    EXPECT_FALSE(m_editor.Form_QueryUnload());
    EXPECT_EQ(m_ui.texts(), (QStringList(2, QStringLiteral("New data will not be saved."))));
    EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Warning"));

    // Another editor opening closes it: the changes stay, as OK keeps them.
    m_screen.closeWindow();
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT RSEED FROM SimulationControl WHERE LNSIM = 1")),
        QStringList { QStringLiteral("77") });

    // The user's own close, answered OK, puts everything back.
    FakeSimScreen screen;
    SimEditor editor(screen);
    screen.editor = &editor;
    editor.Form_Load();
    const QStringList committed = everything();
    editor.CmdAdd_Click();
    EXPECT_TRUE(editor.Form_QueryUnload());
    EXPECT_EQ(everything(), committed);
}

TEST_F(SimEditorTest, ForecastFilesShowTheForecastDatesAndCancelRestoresThem)
{
    state().FileTypeLabel = QStringLiteral("(forecast)");
    openEditor(QStringLiteral("YieldForecast/QLNV2201.FCX"));
    const QStringList before = everything();
    EXPECT_TRUE(m_screen.forecastTab);
    EXPECT_EQ(m_screen.texts[QStringLiteral("txtYRFRCDate")], QStringLiteral("7/15/2022"));
    EXPECT_EQ(m_screen.texts[QStringLiteral("txtFONAME")], QStringLiteral("July outlook 2022"));
    m_screen.texts[QStringLiteral("txtYRFRCDate")] = QStringLiteral("8/1/2022");
    m_editor.CmdAdd_Click();
    EXPECT_EQ(
        rowsOf(QStringLiteral("SELECT LNSIM, FODAT FROM AutoManagementSimdates ORDER BY LNSIM")),
        (QStringList { QStringLiteral("1|2022213"), QStringLiteral("2|2022213") }));
    m_editor.cmdCancel_Click();
    EXPECT_TRUE(m_screen.closed);
    EXPECT_EQ(everything(), before);
    EXPECT_TRUE(database::relationExists(QStringLiteral("Sim10")));
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

} // namespace
} // namespace quillon::test
