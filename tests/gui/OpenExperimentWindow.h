#pragma once

#include "app/AppState.h"
#include "app/gui/frmMain.h"
#include "support/SampleSuiteFixture.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QTest>

#include <gtest/gtest.h>

namespace quillon::test {

// The main window on screen with the sample maize experiment open, for the
// tests that drive an editor as a user does.
class OpenExperimentWindowTest : public SampleSuiteTest {
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

    // Windows closed by the editors go.
    static void settle() { QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    // Alt+E opens the Edit menu and `mnemonic` one of its entries; the editor
    // window it opened, or null.
    template <typename Form> Form* openByEditMenu(Qt::Key mnemonic)
    {
        QTest::keyClick(&m_window, Qt::Key_E, Qt::AltModifier);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
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

    frmMain m_window;
};

} // namespace quillon::test
