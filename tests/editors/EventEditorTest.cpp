// The event-editor frame, run headless on the sample maize experiment: each
// routine's steps and messages, through a window without widgets.

#include "editors/EventEditor.h"
#include "app/AppState.h"
#include "database/Relations.h"
#include "database/Sql.h"
#include "editors/EditorFixture.h"
#include "editors/EditorForms.h"
#include "editors/FakeEventScreen.h"

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

} // namespace
} // namespace quillon::test
