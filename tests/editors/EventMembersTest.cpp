// The irrigation, harvest and environment modification editors on the sample
// maize experiment: what each adds to the event-editor frame.

#include "app/AppState.h"
#include "editors/EventEditorFixture.h"

#include <gtest/gtest.h>

namespace quillon::test {
namespace {

using namespace editors;
using database::exec;

using EventMembersTest = EventEditorTest;

QStringList irrigationTables()
{
    return rowsOf(QStringLiteral("SELECT * FROM Irrigation ORDER BY rowid"))
        + rowsOf(QStringLiteral("SELECT * FROM IrrigApplications ORDER BY rowid"))
        + rowsOf(QStringLiteral("SELECT * FROM IrrManagement ORDER BY rowid"))
        + rowsOf(QStringLiteral("SELECT LNIR FROM Treatments ORDER BY rowid"));
}

TEST_F(EventMembersTest, IrrigationShowsItsLevelPageAndTheThirdValueOnlyWhenUsed)
{
    const QStringList before = irrigationTables();
    ASSERT_TRUE(load(QStringLiteral("frmIrrigation")));
    EXPECT_EQ(m_screen->eventCaptions,
        (QStringList { "Date (M/d/yyyy)", "Amount of water, mm", "Irrigation Type",
            " Amount, depth of water, mm" }));
    EXPECT_EQ(m_screen->eventRows().value(0), QStringLiteral("6/9/2021|25|Sprinkler, mm|"));
    EXPECT_EQ(m_screen->levelPage,
        (QStringList { "0.85", "30", "50", "100", "GS000", "Sprinkler, mm", "25" }));
    EXPECT_TRUE(m_screen->levelPageChoices[5].contains(QStringLiteral("Drip or trickle, mm")));
    m_screen->selectLevel(3);
    EXPECT_EQ(m_screen->levelPage,
        (QStringList { "0.9", "40", "50", "100", "GS008", "Drip or trickle, mm", "10" }));
    m_editor->cmdOK_Click();
    EXPECT_EQ(irrigationTables(), before);
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();

    // IIRV shows when an event of the level holds a value other than 0 or
    // -99.
    struct Case {
        const char* iirv;
        bool shown;
    };
    for (const Case& c : { Case { "NULL", false }, Case { "0", false }, Case { "-99", false },
             Case { "5", true } }) {
        exec(QStringLiteral("UPDATE IrrigApplications SET IIRV = %1 WHERE LNIR = 1 AND IDLAPL = "
                            "'21175'")
                 .arg(QLatin1String(c.iirv)));
        ASSERT_TRUE(load(QStringLiteral("frmIrrigation")));
        ASSERT_EQ(m_screen->eventColumnsShown.size(), 4u);
        EXPECT_EQ(m_screen->eventColumnsShown[3], c.shown) << c.iirv;
        // The choice is the level's.
        m_screen->selectLevel(2);
        EXPECT_FALSE(m_screen->eventColumnsShown[3]) << c.iirv;
        m_editor->cmdOK_Click();
    }
}

TEST_F(EventMembersTest, IrrigationValuesFollowTheirRules)
{
    ASSERT_TRUE(load(QStringLiteral("frmIrrigation")));
    struct Cell {
        int column;
        const char* typed;
        bool refused;
    };
    const Cell cells[] = { { 1, "999.9", false }, { 1, "1000", true }, { 3, "100", false },
        { 3, "101", true }, { 3, "-99", false } };
    for (const Cell& c : cells) {
        m_ui.clear();
        m_screen->typeEvent(0, c.column, QLatin1String(c.typed));
        EXPECT_EQ(m_ui.texts(), c.refused ? QStringList { "Invalid entry." } : QStringList())
            << c.typed;
        m_editor->DBGrid1_GotFocus();
    }

    // The boxes of the level page: an empty box becomes -99, the threshold
    // and end point are percentages.
    struct Box {
        int field;
        const char* typed;
        const char* message; // nullptr: accepted
        const char* stored;
    };
    const Box boxes[] = {
        { 2, "101", "Invalid percentage.", "50" },
        { 2, "abc", "Invalid entry.", "50" },
        { 2, "60", nullptr, "60" },
        { 3, "-1", "Invalid percentage.", "100" },
        { 0, "1000", "Invalid entry.", "0.85" },
        { 0, "", nullptr, "-99" },
        { 4, "GS006", nullptr, "GS006" },
        { 6, "999", nullptr, "999" },
    };
    const EventMember& irrigation = m_editor->member();
    for (const Box& b : boxes) {
        m_ui.clear();
        EXPECT_EQ(m_editor->LevelPage_Validate(b.field, QLatin1String(b.typed)), !b.message)
            << b.typed;
        EXPECT_EQ(m_ui.texts(), b.message ? QStringList { b.message } : QStringList()) << b.typed;
        if (b.message) {
            EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Error"));
        }
        EXPECT_EQ(rowsOf(QStringLiteral("SELECT %1 FROM Irrigation WHERE LNIR = 1")
                             .arg(irrigation.levelPage[size_t(b.field)].field)),
            QStringList { QLatin1String(b.stored) })
            << b.typed;
    }
    EXPECT_EQ(m_screen->levelPage.value(0), QStringLiteral("-99"));
    m_editor->LevelPage_Click(5, QStringLiteral("Drip or trickle, mm"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT IAMEX FROM Irrigation WHERE LNIR = 1")),
        QStringList { "IR005" });
}

TEST_F(EventMembersTest, ANewIrrigationLevelStartsWithTheAutomaticDefaultsAndCancelKeepsIt)
{
    dropLevels(QStringLiteral("frmIrrigation"));
    state().SimulationDate = QStringLiteral("-99");
    ASSERT_TRUE(load(QStringLiteral("frmIrrigation")));
    const QStringList level = { "1|1|30|50|100|GS000|IR001|10|NULL" };
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM Irrigation")), level);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNIR, IDLAPL FROM IrrigApplications")),
        QStringList { "1|21121" });
    EXPECT_EQ(
        m_screen->levelPage, (QStringList { "1", "30", "50", "100", "GS000", "Furrow, mm", "10" }));
    // Unlike the other editors, Cancel keeps what the menu handler made.
    m_editor->cmdCancel_Click();
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM Irrigation")), level);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNIR, IDLAPL FROM IrrigApplications")),
        QStringList { "1|21121" });
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(EventMembersTest, AnIrrigationWhoseFirstEventHasNoDateGetsOne)
{
    struct Case {
        const char* management; // IIRRI of the simulation
        const char* simulationDate;
        const char* date;
    };
    const Case cases[]
        = { { "R", "-99", "21121" }, { "R", "21100", "21100" }, { "D", "-99", "1" } };
    for (const Case& c : cases) {
        open(QStringLiteral("Maize/QLNV2101.MZX"));
        exec(QStringLiteral("UPDATE IrrigApplications SET IDLAPL = NULL WHERE rowid = "
                            "(SELECT MIN(rowid) FROM IrrigApplications)"));
        exec(QStringLiteral("UPDATE SimulationControlManagement SET IIRRI = ?"),
            { QLatin1String(c.management) });
        state().SimulationDate = QLatin1String(c.simulationDate);
        ASSERT_TRUE(load(QStringLiteral("frmIrrigation")));
        EXPECT_FALSE(state().NewLevelCreated);
        EXPECT_EQ(rowsOf(QStringLiteral("SELECT IDLAPL FROM IrrigApplications ORDER BY rowid "
                                        "LIMIT 1")),
            QStringList { QLatin1String(c.date) })
            << c.management << " " << c.simulationDate;
        m_editor->cmdOK_Click();
    }
}

TEST_F(EventMembersTest, IrrigationCopiesWholeLevelsAndWritesListChoicesToTheRow)
{
    const QStringList before = irrigationTables();
    ASSERT_TRUE(load(QStringLiteral("frmIrrigation")));
    m_screen->selectLevel(2);
    m_editor->cmdAdd1_Click();
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM Irrigation WHERE LNIR = 4")),
        QStringList { "4|0.85|30|40|80|GS000|IR004|15|Deficit sprinkler irrigation" });
    EXPECT_EQ(m_screen->levelNumber, QStringLiteral("Level 4"));
    EXPECT_EQ(m_screen->eventRows().size(), 3);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT COUNT(*) FROM IrrManagement WHERE LNIR = 4")),
        QStringList { "1" });

    // Add Application finds its source by the irrigation type.
    m_screen->eventRow = 2;
    m_editor->cmdAdd2_Click();
    EXPECT_EQ(m_screen->eventRows().value(3), QStringLiteral("8/3/2021|15.5|Sprinkler, mm|"));

    // A list's choice goes straight to the event's row; the grid's new row
    // has none.
    m_screen->eventRow = 0;
    m_editor->ListDescription_Click(0, QStringLiteral("Furrow, mm"));
    EXPECT_EQ(m_screen->eventRows().value(0), QStringLiteral("6/24/2021|15|Furrow, mm|"));
    m_screen->eventRow = m_screen->events.rowCount() - 1;
    m_editor->ListDescription_Click(0, QStringLiteral("Furrow, mm"));
    EXPECT_EQ(
        m_ui.texts(), QStringList { "No current record. in ListDescription_Click/frmIrrigation." });
    EXPECT_EQ(m_screen->eventRows().size(), 4);

    m_ui.clear();
    m_editor->cmdCancel_Click();
    EXPECT_EQ(irrigationTables(), before);
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(EventMembersTest, HarvestStagesComeFromTheCropAndTheCellHoldsTheCode)
{
    ASSERT_TRUE(load(QStringLiteral("frmHarvest")));
    EXPECT_EQ(m_screen->crops, QStringList { "Maize" });
    ASSERT_EQ(m_screen->lists.size(), 3u);
    EXPECT_EQ(m_screen->lists[2].size(), 10);
    EXPECT_EQ(m_screen->lists[2].value(5), QStringLiteral("Silking, 75 percent of plants"));
    EXPECT_EQ(m_screen->eventRows().value(0),
        QStringLiteral("10/7/2021|GS009|Harvest product|All sizes|100|0"));

    m_screen->eventRow = 0;
    m_editor->DBGrid2_ButtonClick(1);
    EXPECT_EQ(m_screen->listShown, 2);
    m_editor->ListDescription_Click(2, QStringLiteral("Silking, 75 percent of plants"));
    EXPECT_EQ(m_screen->events.text(0, 1), QStringLiteral("GS006"));
    // A crop without stages leaves the list empty; the code stays.
    m_editor->ComboCrop_Change(QStringLiteral("Peanut"));
    EXPECT_TRUE(m_screen->lists[2].isEmpty());
    EXPECT_EQ(m_screen->events.text(0, 1), QStringLiteral("GS006"));

    m_editor->cmdOK_Click();
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT HSTG, HCOM, HSIZ FROM Harvest ORDER BY rowid")),
        (QStringList { "GS006|H|A", "GS009|H|A" }));
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(EventMembersTest, HarvestKeepsItsOwnWordsAndQuirks)
{
    exec(QStringLiteral("UPDATE Harvest SET HDATE = '120' WHERE rowid = (SELECT MIN(rowid) FROM "
                        "Harvest)"));
    exec(QStringLiteral("UPDATE Treatments SET LNHAR = NULL"));
    ASSERT_TRUE(load(QStringLiteral("frmHarvest")));
    ASSERT_TRUE(m_editor->DaysMode());

    // A day can't be copied: the copy names a column the table lacks.
    m_screen->eventRow = 0;
    m_editor->cmdAdd2_Click();
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_TRUE(m_ui.texts()[0].endsWith(QStringLiteral(" in CmdAdd2_Click/frmHarvest.")))
        << m_ui.texts()[0].toStdString();
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT COUNT(*) FROM Applications WHERE LNHAR = 1")),
        QStringList { "1" });

    m_ui.clear();
    m_screen->pending = RuntimeError(err::RowNotStored, QStringLiteral("refused"));
    m_editor->DBGrid1_GotFocus();
    EXPECT_EQ(m_ui.texts(), QStringList { "Invalid entry in Harvest Numbers table." });
    m_screen->pending = RuntimeError(0, {});

    // The last level goes without its management rows, which stay.
    const QStringList management
        = rowsOf(QStringLiteral("SELECT * FROM HarManagement WHERE LNHAR = 1"));
    ASSERT_FALSE(management.isEmpty());
    m_ui.clear();
    m_ui.answers = { MsgAnswer::Yes, MsgAnswer::Yes };
    m_screen->selectLevel(2);
    m_editor->cmdDelete1_Click();
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT COUNT(*) FROM HarManagement WHERE LNHAR = 2")),
        QStringList { "0" });
    m_editor->cmdDelete1_Click();
    EXPECT_TRUE(m_screen->closed);
    EXPECT_EQ(database::rowCount(QStringLiteral("HarLevelNames")), 0);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM HarManagement")), management);
}

TEST_F(EventMembersTest, EnvironmentFactorsAreTypedLettersAndValuesHaveNoMissingValue)
{
    ASSERT_TRUE(load(QStringLiteral("frmEnvMod")));
    EXPECT_EQ(m_screen->eventCaptions.size(), 17);
    EXPECT_EQ(m_screen->eventCaptions.value(11), QStringLiteral("CO2 (vpm)"));
    EXPECT_EQ(m_screen->lists.size(), 8u);
    EXPECT_EQ(m_screen->eventRows().value(0),
        QStringLiteral("5/1/2021|0|Add|0|Add|0|Add|0|Add|0|Add|550|Replace|0|Add|0|Add"));

    struct Cell {
        int column;
        const char* typed;
        const char* shown;
        bool refused;
    };
    const Cell cells[] = {
        { 2, "m", "Multiply", false },
        { 4, "s", "Subtruct", false },
        { 6, "x", "", false },
        { 1, "-99", "0", true },
        { 1, "24", "24", false },
        { 1, "25", "24", true },
        { 11, "1500", "1500", false },
        { 11, "1501", "1500", true },
    };
    for (const Cell& c : cells) {
        m_ui.clear();
        m_screen->typeEvent(0, c.column, QLatin1String(c.typed));
        EXPECT_EQ(m_screen->events.text(0, c.column), QLatin1String(c.shown)) << c.typed;
        EXPECT_EQ(m_ui.texts(), c.refused ? QStringList { "Invalid entry." } : QStringList())
            << c.typed;
        m_editor->DBGrid1_GotFocus();
    }
    m_editor->cmdOK_Click();
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT DAYFAC, DAYADJ, RADFAC, TXFAC, CO2ADJ FROM "
                                    "EnvironMod WHERE LNENV = 1")),
        QStringList { "M|24|S|NULL|1500" });
}

TEST_F(EventMembersTest, EnvironmentAddsTheFirstEventOfALevelOnThePlantingDate)
{
    ASSERT_TRUE(load(QStringLiteral("frmEnvMod")));
    exec(QStringLiteral("DELETE FROM Applications WHERE LNENV = 2"));
    m_screen->selectLevel(2);
    m_editor->cmdAdd2_Click();
    EXPECT_EQ(m_screen->eventRows(), QStringList { QStringLiteral("5/1/2021") + QString(16, '|') });

    exec(QStringLiteral("DELETE FROM Applications WHERE LNENV = 2"));
    exec(QStringLiteral("UPDATE Planting SET YRPLT = NULL"));
    m_screen->selectLevel(2);
    m_editor->cmdAdd2_Click();
    EXPECT_EQ(m_ui.texts(), QStringList { "Please enter the planting date." });
    EXPECT_TRUE(m_screen->eventRows().isEmpty());
}

// Tails not spelt out in the member's table: the routine named after the
// member's control, a list's own name.
TEST_F(EventMembersTest, FailureTailsUseTheMembersNames)
{
    struct Case {
        const char* form;
        Routine routine;
        const char* control;
        const char* tail;
    };
    const Case cases[] = {
        { "frmIrrigation", Routine::cmdAdd1_Click, "",
            " in CmdAddIrrigation_Click/frmIrrigation." },
        { "frmIrrigation", Routine::DBGrid1_RowColChange, "",
            " in DBGIrrigation_RowColChange/frmIrrigation." },
        { "frmIrrigation", Routine::LevelPage_Validate, "txtTHETCX",
            " in txtTHETCX_Validate/frmIrrigation." },
        { "frmIrrigation", Routine::MenuHandler, "", " in mnuEditIrrigation_Click/frmMain." },
        { "frmHarvest", Routine::ListDescription_Click, "List3", " in List3_Click/frmHarvest." },
        { "frmEnvMod", Routine::ListDescription_Click, "List15", " in List15_Click/frmEnvMod." },
        { "frmFertEdit", Routine::ListDescription_Click, "List1",
            " in ListDescription_Click/frmFertEdit." },
    };
    for (const Case& c : cases)
        EXPECT_EQ(eventMember(QLatin1String(c.form))->tail(c.routine, QLatin1String(c.control)),
            QLatin1String(c.tail));
}

} // namespace
} // namespace quillon::test
