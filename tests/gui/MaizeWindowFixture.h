#pragma once

// The main window on screen with the sample maize experiment open, for
// tests that drive an editor as a user does.

#include "app/AppState.h"
#include "app/gui/frmMain.h"
#include "database/Sql.h"
#include "support/SampleSuiteFixture.h"

#include <QAction>
#include <QApplication>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

namespace quillon::test {

class MaizeWindowTest : public SampleSuiteTest {
protected:
    void SetUp() override
    {
        SampleSuiteTest::SetUp();
        m_window.show();
        m_window.Form_Load();
        m_window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
        m_ui.fileAnswers.push_back(maizeFile());
        m_window.menuAction(QStringLiteral("mnuFileOpen"))->trigger();
        ASSERT_TRUE(state().DocumentOpen);
        m_ui.clear();
    }

    // Opens an editor from its Edit menu entry; the editor's window or null.
    template <typename Form> Form* openFromMenu(const char* entry)
    {
        m_window.menuAction(QLatin1String(entry))->trigger();
        settle();
        return m_window.findChild<Form*>();
    }
    // Lets the closed windows go.
    static void settle() { QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
    static QString cell(QTableView* view, int row, int column)
    {
        return view->model()->index(row, column).data().toString();
    }

    // The control keys of an editor whose factor has two levels, level 1
    // used by treatments: Ctrl+A adds a copy of level 1, Ctrl+D shows the
    // deletion warning, Ctrl+O is OK and Ctrl+N Cancel without the warning.
    // The editor opens afresh for each key, which is pressed on its view;
    // what is left open is cancelled.
    template <typename Form>
    void checkControlKeys(const char* entry, const char* view, const QString& levelTable)
    {
        struct Case {
            Qt::Key key;
            const char* message; // the first message's title, if any
            bool closes;
            int levels; // afterwards
        };
        const Case cases[] = {
            { Qt::Key_A, nullptr, false, 3 },
            { Qt::Key_D, "Deletion Warning", false, 2 },
            { Qt::Key_O, nullptr, true, 2 },
            { Qt::Key_N, nullptr, true, 2 },
        };
        for (const Case& c : cases) {
            SCOPED_TRACE(int(c.key));
            Form* editor = openFromMenu<Form>(entry);
            ASSERT_NE(editor, nullptr);
            m_ui.clear();
            auto* target = editor->template findChild<QTableView*>(QLatin1String(view));
            target->setFocus();
            QTest::keyClick(target, c.key, Qt::ControlModifier);
            settle();
            EXPECT_EQ(m_ui.messages.empty() ? QString() : m_ui.messages[0].title,
                c.message ? QLatin1String(c.message) : QString());
            EXPECT_EQ(m_window.findChild<Form*>() == nullptr, c.closes);
            EXPECT_EQ(database::rowCount(levelTable), c.levels);
            if (auto* open = m_window.findChild<Form*>())
                open->editor().cmdCancel_Click();
            settle();
        }
    }

    frmMain m_window;
};

} // namespace quillon::test
