// The event-editor frame, run headless on the sample maize experiment: each
// routine's steps and messages, through a window without widgets.

#include "editors/EventEditor.h"
#include "app/AppState.h"
#include "database/Relations.h"
#include "database/Sql.h"
#include "editors/EditorFixture.h"
#include "editors/EditorForms.h"
#include "support/FakeEventScreen.h"

#include <gtest/gtest.h>

#include <memory>

namespace quillon::test {
namespace {

using namespace editors;
using database::exec;

class EventEditorTest : public EditorTest {
protected:
    void SetUp() override
    {
        EditorTest::SetUp();
        open(QStringLiteral("Maize/QLNV2101.MZX"));
    }

    // Runs the menu handler and, when it lets the editor open, Form_Load.
    bool load(const QString& form)
    {
        const EventMember* member = eventMember(form);
        EXPECT_NE(member, nullptr) << form.toStdString();
        m_screen = std::make_unique<FakeEventScreen>(*member);
        m_editor = std::make_unique<EventEditor>(*member, *m_screen);
        m_screen->attach(*m_editor);
        if (!EventEditor::openEditor(*member))
            return false;
        m_editor->Form_Load();
        return true;
    }

    std::unique_ptr<FakeEventScreen> m_screen;
    std::unique_ptr<EventEditor> m_editor;
};

QStringList fertilization()
{
    return rowsOf(QStringLiteral("SELECT LNFER, FDAY, IFTYPE, FERCOD, DFERT, ANFER, APFER, AKFER, "
                                 "ACFER, AOFER, FOCOD FROM Fertilization ORDER BY rowid"));
}

TEST_F(EventEditorTest, OpensOnTheFileAndOkWritesTheSameEventsBack)
{
    const QStringList before = fertilization();
    ASSERT_TRUE(load(QStringLiteral("frmFertEdit")));
    EXPECT_TRUE(isOpen(EditorForm::frmFertEdit));
    EXPECT_EQ(m_screen->caption, QStringLiteral("Fertilizers (experimental) - QLNV2101.MZX"));
    EXPECT_EQ(m_screen->levelCaptions, (QStringList { "Level", "Description" }));
    EXPECT_EQ(m_screen->eventCaptions.value(0), QStringLiteral("Date (M/d/yyyy)"));
    EXPECT_EQ(m_screen->eventCaptions.value(1), QStringLiteral("Fertilizer material"));
    EXPECT_EQ(m_screen->levelNumber, QStringLiteral("Level 1"));
    EXPECT_FALSE(m_editor->DaysMode());
    // Codes are spelt out, dates are dates; the year is the first event's.
    EXPECT_EQ(m_screen->eventRows().value(0).section(QLatin1Char('|'), 0, 0),
        QStringLiteral("4/28/2021"));
    EXPECT_EQ(m_screen->years.txtYear, QStringLiteral("2021"));
    EXPECT_TRUE(m_screen->years.years.contains(QStringLiteral("2021")));
    EXPECT_FALSE(m_screen->lists.at(0).isEmpty());
    EXPECT_EQ(m_screen->management, QStringLiteral("On reported dates"));

    m_screen->selectLevel(2);
    EXPECT_EQ(m_screen->levelNumber, QStringLiteral("Level 2"));
    EXPECT_EQ(m_screen->eventRows().size(), 3);

    m_editor->cmdOK_Click();
    EXPECT_TRUE(m_screen->closed);
    EXPECT_FALSE(isOpen(EditorForm::frmFertEdit));
    EXPECT_FALSE(state().FileSaved);
    EXPECT_EQ(fertilization(), before);
    EXPECT_FALSE(database::tableExists(QStringLiteral("BackUp")));
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

// Takes every level of a factor away, as a file without the section has it.
void dropLevels(const EditorForm form)
{
    const EventMember& m = *eventMember(formName(form));
    exec(QStringLiteral("UPDATE Treatments SET %1 = NULL").arg(m.levelField));
    exec(QStringLiteral("DELETE FROM [%1]").arg(m.eventTable));
    exec(QStringLiteral("DELETE FROM [%1]").arg(m.levelTable));
}

TEST_F(EventEditorTest, AFactorWithoutLevelsGetsLevelOneThatCancelTakesAway)
{
    dropLevels(EditorForm::frmFertEdit);
    ASSERT_TRUE(load(QStringLiteral("frmFertEdit")));
    EXPECT_TRUE(state().NewLevelCreated);
    EXPECT_EQ(
        rowsOf(QStringLiteral("SELECT LNFER, FDAY FROM Fertilization")), QStringList { "1|21121" });
    EXPECT_EQ(m_screen->eventRows().value(0).section('|', 0, 0), QStringLiteral("5/1/2021"));
    const QStringList management = rowsOf(QStringLiteral("SELECT * FROM FerManagement"));
    EXPECT_EQ(management.value(0), QStringLiteral("1|R"));

    m_editor->cmdCancel_Click();
    EXPECT_TRUE(m_screen->closed);
    EXPECT_EQ(database::rowCount(QStringLiteral("FerLevelNames")), 0);
    EXPECT_EQ(database::rowCount(QStringLiteral("Fertilization")), 0);
    // The management row made for level 1 was in the backup: it stays.
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM FerManagement")), management);
    EXPECT_TRUE(database::relationExists(QStringLiteral("FERTreatment")));
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(EventEditorTest, LevelOneIsDatedByThePlantingOrTheSimulationStart)
{
    struct Case {
        const char* form;
        const char* setup; // statements run first
        const char* simulationDate;
        bool opens;
        const char* message;
        const char* firstDate; // the new level's date field
    };
    const Case cases[] = {
        { "frmFertEdit", "UPDATE Planting SET YRPLT = NULL; UPDATE Fields SET WSTA = NULL", "-99",
            false, "Please enter the Field information.", nullptr },
        { "frmChemEdit", "UPDATE Planting SET YRPLT = NULL; UPDATE Fields SET WSTA = NULL", "-99",
            false, "Please enter Fields information.", nullptr },
        { "frmFertEdit", "UPDATE Treatments SET LNPLT = NULL; DELETE FROM Planting", "-99", false,
            "Please enter planting date or date to start simulation.", nullptr },
        { "frmFertEdit", "UPDATE Planting SET YRPLT = NULL", "-99", false,
            "Please enter planting date or date to start simulation.", nullptr },
        { "frmFertEdit", "UPDATE Treatments SET LNPLT = NULL; DELETE FROM Planting", "21100", true,
            nullptr, "21100" },
        { "frmTillEdit", "", "21090", true, nullptr, "21090" },
        { "frmResidueEdit", "UPDATE SimulationControlManagement SET IRESI = 'D'", "-99", true,
            nullptr, "1" },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.form) + " after " + c.setup);
        open(QStringLiteral("Maize/QLNV2101.MZX"));
        m_host.calls.clear();
        const EditorForm form = *formNamed(QLatin1String(c.form));
        dropLevels(form);
        for (const QString& sql : QString::fromLatin1(c.setup).split(';', Qt::SkipEmptyParts))
            exec(sql);
        state().SimulationDate = QLatin1String(c.simulationDate);
        EXPECT_EQ(load(QLatin1String(c.form)), c.opens);
        EXPECT_EQ(
            m_ui.texts(), c.message ? QStringList { QLatin1String(c.message) } : QStringList());
        EXPECT_EQ(m_host.calls.contains(QStringLiteral("reopen:frmFields")),
            QLatin1String(c.message ? c.message : "").contains(QLatin1String("Field")));
        const EventMember& m = *eventMember(QLatin1String(c.form));
        const QStringList dates
            = rowsOf(QStringLiteral("SELECT %1 FROM %2").arg(m.dateField, m.eventTable));
        EXPECT_EQ(dates, c.firstDate ? QStringList { QLatin1String(c.firstDate) } : QStringList());
        if (c.opens) {
            EXPECT_EQ(m_editor->DaysMode(), QLatin1String(c.firstDate) == QLatin1String("1"));
        }
        m_ui.clear();
    }
}

TEST_F(EventEditorTest, TheFirstEventDecidesBetweenDatesAndDays)
{
    struct Case {
        const char* form;
        const char* firstDay;
        bool days;
        const char* firstCell;
        const char* caption;
    };
    // Only codes of more than three characters are dates: "1200" is the
    // 200th day of 2001.
    const Case cases[] = {
        { "frmFertEdit", "1200", false, "7/19/2001", "Date (M/d/yyyy)" },
        { "frmFertEdit", "120", true, "120", "Day" },
        { "frmResidueEdit", "35", true, "35", "Day" },
        // Without management there are no days: 35 is a date code.
        { "frmTillEdit", "35", false, "2/4/2000", "Date (M/d/yyyy)" },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.form) + " " + c.firstDay);
        open(QStringLiteral("Maize/QLNV2101.MZX"));
        const EventMember& m = *eventMember(QLatin1String(c.form));
        exec(QStringLiteral("UPDATE [%1] SET %2 = ? WHERE rowid = (SELECT MIN(rowid) FROM [%1])")
                 .arg(m.eventTable, m.dateField),
            { QLatin1String(c.firstDay) });
        ASSERT_TRUE(load(QLatin1String(c.form)));
        EXPECT_EQ(m_editor->DaysMode(), c.days);
        EXPECT_EQ(m_screen->eventRows().value(0).section('|', 0, 0), QLatin1String(c.firstCell));
        EXPECT_EQ(m_screen->eventCaptions.value(0), QLatin1String(c.caption));
        EXPECT_EQ(m_screen->years.comboVisible, !c.days);
    }
}

TEST_F(EventEditorTest, SwitchingToDaysShowsNoDaysAndOkWritesThemEmpty)
{
    ASSERT_TRUE(load(QStringLiteral("frmFertEdit")));
    EXPECT_EQ(m_screen->managementChoices,
        (QStringList { "On reported days after planting", "On reported dates" }));
    m_editor->DBComboManagement_Click(QStringLiteral("On reported days after planting"));
    EXPECT_TRUE(m_editor->DaysMode());
    EXPECT_EQ(m_screen->eventRows(), QStringList { "|Urea|Broadcast, incorporated|10|90|||||" });
    EXPECT_FALSE(m_screen->years.comboVisible);
    // The mode is the editor's: another level shows days too.
    m_screen->selectLevel(2);
    EXPECT_TRUE(m_editor->DaysMode());
    m_editor->cmdOK_Click();
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT DISTINCT IFNULL(FDAY, 'NULL') FROM Fertilization")),
        QStringList { "NULL" });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT IFERI FROM FerManagement WHERE LNFER = 1")),
        QStringList { "D" });
}

QStringList treatmentLevels()
{
    return rowsOf(QStringLiteral("SELECT IFNULL(LNFER, 'NULL') FROM Treatments ORDER BY rowid"));
}

TEST_F(EventEditorTest, RenumberingCarriesTheLevelAndCancelPutsEverythingBack)
{
    const QStringList treatments = treatmentLevels();
    const QStringList levels = rowsOf(QStringLiteral("SELECT * FROM FerLevelNames"));
    const QStringList management = rowsOf(QStringLiteral("SELECT * FROM FerManagement"));
    ASSERT_TRUE(load(QStringLiteral("frmFertEdit")));
    m_screen->selectLevel(2);
    EXPECT_EQ(m_screen->typeLevel(0, QStringLiteral("7")).number(), 0);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNFER FROM FerLevelNames ORDER BY LNFER")),
        (QStringList { "1", "7" }));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT COUNT(*) FROM Applications WHERE LNFER = 7")),
        QStringList { "3" });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT COUNT(*) FROM FerManagement WHERE LNFER = 7")),
        QStringList { "1" });
    QStringList renumbered = treatments;
    renumbered.replaceInStrings(QStringLiteral("2"), QStringLiteral("7"));
    EXPECT_EQ(treatmentLevels(), renumbered);
    EXPECT_EQ(m_screen->levelNumber, QStringLiteral("Level 7"));
    EXPECT_EQ(m_screen->eventRows().size(), 3);

    // A number in use, or not a whole number, changes nothing.
    for (const char* typed : { "1", "2.5", "x" }) {
        m_ui.clear();
        m_screen->typeLevel(0, QLatin1String(typed));
        EXPECT_EQ(m_ui.texts(), QStringList { "Invalid entry." }) << typed;
        EXPECT_EQ(m_ui.messages.at(0).title, QStringLiteral("Error"));
    }
    EXPECT_EQ(treatmentLevels(), renumbered);

    m_ui.clear();
    m_editor->cmdCancel_Click();
    EXPECT_EQ(treatmentLevels(), treatments);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM FerLevelNames")), levels);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM FerManagement")), management);
    EXPECT_TRUE(database::relationExists(QStringLiteral("FERTreatment")));
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(EventEditorTest, AddCopiesTheLevelAndAddApplicationCopiesTheEventBesideIt)
{
    ASSERT_TRUE(load(QStringLiteral("frmFertEdit")));
    m_screen->selectLevel(2);
    m_editor->cmdAdd1_Click();
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM FerLevelNames WHERE LNFER = 3")),
        QStringList { "3|180 kg N/ha, split with UAN sidedress" });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT IFERI FROM FerManagement WHERE LNFER = 3")),
        QStringList { "R" });
    EXPECT_EQ(m_screen->levelNumber, QStringLiteral("Level 3"));
    const QStringList copied = m_screen->eventRows();
    ASSERT_EQ(copied.size(), 3);

    // The copy of the second event comes right after it. The grid then goes
    // one row past the first event of that date, which is the second event
    // itself when two share the date.
    m_screen->eventRow = 1;
    m_editor->cmdAdd2_Click();
    QStringList expected = copied;
    expected.insert(2, copied.at(1));
    EXPECT_EQ(m_screen->eventRows(), expected);
    EXPECT_EQ(m_screen->eventRow, 1);

    // An event typed without a date can't be copied.
    m_screen->typeEvent(4, 4, QStringLiteral("12"));
    m_screen->eventRow = 4;
    m_editor->cmdAdd2_Click();
    EXPECT_EQ(m_ui.texts(), QStringList { "Please enter date." });

    // A level without events can't be copied.
    m_ui.clear();
    exec(QStringLiteral("DELETE FROM Applications WHERE LNFER = 3"));
    m_editor->cmdAdd1_Click();
    EXPECT_EQ(m_ui.texts(), QStringList { "Please add applications." });
    EXPECT_EQ(database::rowCount(QStringLiteral("FerLevelNames")), 3);
}

TEST_F(EventEditorTest, DeletingAskesAndNeverTakesALevelATreatmentUses)
{
    ASSERT_TRUE(load(QStringLiteral("frmFertEdit")));
    const QStringList applications = rowsOf(QStringLiteral("SELECT * FROM Applications"));
    // Level 1 has one event: deleting it is deleting the level.
    for (auto routine : { &EventEditor::cmdDelete1_Click, &EventEditor::cmdDelete2_Click }) {
        m_ui.clear();
        (m_editor.get()->*routine)();
        ASSERT_EQ(m_ui.messages.size(), 1u);
        EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Deletion Warning"));
        EXPECT_TRUE(m_ui.messages[0].text.endsWith(
            QStringLiteral("Treatment 2, 5 is currently using this Fertilizer level")))
            << m_ui.messages[0].text.toStdString();
    }
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM Applications")), applications);

    // A level no treatment uses goes after the question, if the answer is Yes.
    m_screen->selectLevel(2);
    m_editor->cmdAdd1_Click();
    m_ui.clear();
    m_ui.answers = { MsgAnswer::No, MsgAnswer::Yes, MsgAnswer::Yes };
    m_editor->cmdDelete1_Click();
    EXPECT_EQ(m_ui.texts(), QStringList { "Are you sure you want to delete level 3?" });
    EXPECT_EQ(m_ui.messages[0].buttons, MsgButtons::YesNoDefaultNo);
    EXPECT_EQ(database::rowCount(QStringLiteral("FerLevelNames")), 3);
    m_screen->eventRow = 0;
    m_editor->cmdDelete2_Click();
    EXPECT_EQ(m_ui.texts().last(),
        QStringLiteral("Are you sure you want to delete application on  4/28/2021?"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT COUNT(*) FROM Applications WHERE LNFER = 3")),
        QStringList { "2" });
    m_editor->cmdDelete1_Click();
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT COUNT(*) FROM Applications WHERE LNFER = 3")),
        QStringList { "0" });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT COUNT(*) FROM FerManagement WHERE LNFER = 3")),
        QStringList { "0" });
    EXPECT_EQ(m_screen->levelNumber, QStringLiteral("Level 2"));
}

TEST_F(EventEditorTest, TypedCellsFollowTheirRules)
{
    ASSERT_TRUE(load(QStringLiteral("frmFertEdit")));
    const QString longName(70, QLatin1Char('n'));
    m_screen->typeLevel(1, longName);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT FERNAME FROM FerLevelNames WHERE LNFER = 1")),
        QStringList { longName.left(60) });

    struct Case {
        int column;
        const char* typed;
        const char* shown; // the cell afterwards
        bool refused;
    };
    const Case cases[] = {
        { 1, "Urea", "", false }, // typed into a list column: blank
        { 4, "120", "120", false },
        { 4, "-99", "-99", false },
        { 4, "abc", "-99", true },
        { 4, "10000", "-99", true },
        { 3, "999", "999", false },
        { 0, "5/3/2021", "5/3/2021", false },
        { 0, "2/30/2021", "5/3/2021", true },
        { 0, "1/1/1900", "5/3/2021", true },
    };
    for (const Case& c : cases) {
        m_ui.clear();
        m_screen->typeEvent(0, c.column, QLatin1String(c.typed));
        EXPECT_EQ(m_screen->events.text(0, c.column), QLatin1String(c.shown)) << c.typed;
        EXPECT_EQ(m_ui.texts(), c.refused ? QStringList { "Invalid entry." } : QStringList())
            << c.typed;
        EXPECT_EQ(m_editor->RowInError(), c.refused) << c.typed;
        m_editor->DBGrid1_GotFocus();
    }

    // A value typed on the new row adds an event to the level.
    m_screen->typeEvent(1, 0, QStringLiteral("6/1/2021"));
    EXPECT_EQ(rowsOf(QStringLiteral(
                  "SELECT LNFER, TheDate FROM Applications WHERE TheDate = '2021-06-01'")),
        QStringList { "1|2021-06-01" });
}

TEST_F(EventEditorTest, AFailedOkLeavesTheWindowOpenAndTheTablesAsTheyWere)
{
    const QStringList before = fertilization();
    ASSERT_TRUE(load(QStringLiteral("frmFertEdit")));
    // The file's column holds five characters.
    m_screen->typeEvent(0, 9, QStringLiteral("TOOLONG"));
    m_editor->cmdOK_Click();
    ASSERT_EQ(m_ui.messages.size(), 2u);
    EXPECT_EQ(m_ui.messages[0].text, QStringLiteral("Invalid entry."));
    EXPECT_TRUE(m_ui.messages[1].text.endsWith(QStringLiteral(" in cmdOK_Click/frmFertEdit.")));
    EXPECT_FALSE(m_screen->closed);
    EXPECT_EQ(fertilization(), before);

    // Other routines end their failures with their own tails.
    m_ui.clear();
    exec(QStringLiteral("DROP TABLE FerManagement"));
    m_editor->cmdAdd1_Click();
    EXPECT_TRUE(m_ui.texts().last().endsWith(QStringLiteral(" in CmdAdd1_Click/frmFertEdit.")));
}

TEST_F(EventEditorTest, CheckDatesSaysWhenALevelRepeatsADate)
{
    ASSERT_TRUE(load(QStringLiteral("frmFertEdit")));
    m_editor->Check_Dates(1);
    EXPECT_EQ(m_editor->datesMessage(), QString());
    m_editor->Check_Dates(2);
    EXPECT_EQ(m_editor->datesMessage(), QStringLiteral("Dates should be different."));
}

} // namespace
} // namespace quillon::test
