#pragma once

// The main window on screen, for tests that drive an editor as a user does.

#include "app/AppState.h"
#include "app/gui/frmMain.h"
#include "database/Sql.h"
#include "support/SampleSuiteFixture.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

namespace quillon::test {

// The main window on screen, for tests that drive the editors as a user does.
class OnScreenWindowTest : public SampleSuiteTest {
protected:
    void SetUp() override
    {
        SampleSuiteTest::SetUp();
        m_window.show();
        m_window.Form_Load();
        m_window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
    }
    // File > Open of a file of the sample suite.
    void openFile(const QString& relative)
    {
        m_ui.fileAnswers.push_back(suitePath(relative));
        m_window.menuAction(QStringLiteral("mnuFileOpen"))->trigger();
        ASSERT_TRUE(state().DocumentOpen);
        m_ui.clear();
    }

    // Alt+E opens the Edit menu and `mnemonic` one of its entries; the editor
    // window it opened, or null.
    template <typename Form> Form* openByEditMenu(Qt::Key mnemonic)
    {
        QTest::keyClick(&m_window, Qt::Key_E, Qt::AltModifier);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        EXPECT_NE(menu, nullptr);
        if (!menu)
            return nullptr;
        QTest::keyClick(menu, mnemonic);
        settle();
        return m_window.findChild<Form*>();
    }
    template <typename Form> bool closed()
    {
        settle();
        return m_window.findChild<Form*>() == nullptr;
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

// The same with the sample maize experiment open.
class MaizeWindowTest : public OnScreenWindowTest {
protected:
    void SetUp() override
    {
        OnScreenWindowTest::SetUp();
        openFile(QStringLiteral("Maize/QLNV2101.MZX"));
    }
};

} // namespace quillon::test
