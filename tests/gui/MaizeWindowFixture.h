#pragma once

// The main window on screen with the sample maize experiment open, for
// tests that drive an editor as a user does.

#include "app/AppState.h"
#include "app/gui/frmMain.h"
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

    frmMain m_window;
};

} // namespace quillon::test
