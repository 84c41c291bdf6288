#pragma once

#include "database/Sql.h"
#include "editors/EditorFixture.h"
#include "editors/EventEditor.h"
#include "support/FakeEventScreen.h"

#include <memory>

namespace quillon::test {

// An event editor on the sample maize experiment, through a window without
// widgets.
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
        const editors::EventMember* member = editors::eventMember(form);
        EXPECT_NE(member, nullptr) << form.toStdString();
        m_screen = std::make_unique<FakeEventScreen>(*member);
        m_editor = std::make_unique<editors::EventEditor>(*member, *m_screen);
        m_screen->attach(*m_editor);
        if (!editors::EventEditor::openEditor(*member))
            return false;
        m_editor->Form_Load();
        return true;
    }

    std::unique_ptr<FakeEventScreen> m_screen;
    std::unique_ptr<editors::EventEditor> m_editor;
};

// Takes every level of a factor away, as a file without the section has it.
inline void dropLevels(const QString& form)
{
    const editors::EventMember& m = *editors::eventMember(form);
    database::exec(QStringLiteral("UPDATE Treatments SET %1 = NULL").arg(m.levelField));
    database::exec(QStringLiteral("DELETE FROM [%1]").arg(m.eventTable));
    database::exec(QStringLiteral("DELETE FROM [%1]").arg(m.levelTable));
}

} // namespace quillon::test
