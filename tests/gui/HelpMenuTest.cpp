#include "app/AppState.h"
#include "app/gui/AboutDialog.h"
#include "app/gui/HelpWindow.h"
#include "app/gui/frmMain.h"
#include "support/SampleSuiteFixture.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeWidget>

#include <gtest/gtest.h>

namespace quillon::test {
namespace {

HelpWindow* visibleHelp()
{
    for (QWidget* w : QApplication::topLevelWidgets()) {
        if (auto* help = qobject_cast<HelpWindow*>(w); help && help->isVisible())
            return help;
    }
    return nullptr;
}

// A menu caption as the manual writes it: no accelerator, no dots.
QString plainCaption(QString caption)
{
    caption.remove(QLatin1Char('&'));
    if (caption.endsWith(QLatin1String("...")))
        caption.chop(3);
    return caption;
}

class HelpMenuTest : public SampleSuiteTest {
protected:
    void SetUp() override
    {
        SampleSuiteTest::SetUp();
        ASSERT_TRUE(QFile::copy(QStringLiteral(QUILLON_MANUAL),
            state().AppFolder + QStringLiteral("Manual_Quillon.md")));
        m_window.show();
        m_window.Form_Load();
        m_window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
    }
    void TearDown() override
    {
        while (HelpWindow* help = visibleHelp())
            help->close();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        SampleSuiteTest::TearDown();
    }
    QAction* entry(const char* name) const
    {
        return m_window.findChild<QAction*>(QLatin1String(name));
    }

    frmMain m_window;
};

TEST_F(HelpMenuTest, ContentsOpensByF1AndByTheMenuAndFinds)
{
    const QString heading = QStringLiteral("Starting a new experiment, step by step");
    QTest::keyClick(&m_window, Qt::Key_F1);
    for (const char* how : { "F1", "menu" }) {
        HelpWindow* help = visibleHelp();
        ASSERT_NE(help, nullptr) << how;
        const QList<QTreeWidgetItem*> items
            = help->contents()->findItems(heading, Qt::MatchExactly | Qt::MatchRecursive);
        ASSERT_EQ(items.size(), 1) << how;
        emit help->contents()->itemClicked(items.first(), 0);
        EXPECT_EQ(help->browser()->textCursor().block().text(), heading) << how;
        if (how == std::string("F1")) {
            help->close();
            QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            ASSERT_NE(entry("mnuHelpContents"), nullptr);
            entry("mnuHelpContents")->trigger();
        }
    }

    // Ctrl+F opens the find bar; typing finds, F3 goes round, a text the
    // manual lacks is told and keeps the last match.
    HelpWindow* help = visibleHelp();
    help->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(help));
    auto* findText = help->findChild<QLineEdit*>(QStringLiteral("findText"));
    ASSERT_NE(findText, nullptr);
    EXPECT_FALSE(findText->isVisible());
    QTest::keyClick(help, Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(findText->isVisible());
    EXPECT_TRUE(findText->hasFocus());
    QTest::keyClicks(findText, QStringLiteral("Subtruct"));
    EXPECT_EQ(help->browser()->textCursor().selectedText(), QStringLiteral("Subtruct"));
    const int first = help->browser()->textCursor().position();
    QTest::keyClick(findText, Qt::Key_F3);
    EXPECT_EQ(help->browser()->textCursor().position(), first) << "one place only: F3 comes round";
    findText->setText(QStringLiteral("no such words in the manual"));
    EXPECT_FALSE(help->find());
    EXPECT_EQ(help->browser()->textCursor().position(), first);
}

// Every entry of the menus has its row in the manual's table of menus, so
// an entry added without a word in the manual fails here.
TEST_F(HelpMenuTest, TheManualCoversEveryMenuEntry)
{
    QFile manual(QStringLiteral(QUILLON_MANUAL));
    ASSERT_TRUE(manual.open(QIODevice::ReadOnly | QIODevice::Text));
    const QString text = QString::fromUtf8(manual.readAll());
    QStringList missing;
    for (QAction* top : m_window.menuBar()->actions()) {
        const QString menu = plainCaption(top->text());
        const QList<QAction*> entries
            = top->menu() ? top->menu()->actions() : QList<QAction*> { top };
        for (QAction* action : entries) {
            const QString row
                = QStringLiteral("\n| %1 | %2").arg(menu, plainCaption(action->text()));
            if (!action->isSeparator() && !text.contains(row))
                missing << row.mid(1);
        }
    }
    EXPECT_TRUE(missing.isEmpty()) << missing.join(QLatin1Char('\n')).toStdString();
}

TEST_F(HelpMenuTest, AboutShowsTheFoldersInUseAndCopiesThem)
{
    ASSERT_NE(entry("mnuHelpAbout"), nullptr);
    entry("mnuHelpAbout")->trigger();
    auto* about = m_window.findChild<AboutDialog*>();
    ASSERT_NE(about, nullptr);
    EXPECT_TRUE(about->isVisible());
    EXPECT_TRUE(about->isModal());

    const AppState& s = state();
    for (const auto& [label, inUse] : { std::pair { "Program folder (AppFolder)", s.AppFolder },
             std::pair { "Suite folder (DataFolder)", s.DataFolder },
             std::pair { "Working database", s.WorkDBPath },
             std::pair { "User manual", s.AppFolder + QStringLiteral("Manual_Quillon.md") } }) {
        auto* value = about->findChild<QLabel*>(QLatin1String(label));
        ASSERT_NE(value, nullptr) << label;
        EXPECT_EQ(value->text(), inUse) << label;
        EXPECT_TRUE(value->textInteractionFlags() & Qt::TextSelectableByMouse) << label;
    }

    QApplication::clipboard()->clear();
    QTest::mouseClick(about->findChild<QPushButton*>(QStringLiteral("cmdCopy")), Qt::LeftButton);
    const QString copied = QApplication::clipboard()->text();
    EXPECT_EQ(copied, about->informationText());
    EXPECT_TRUE(copied.contains(
        QStringLiteral("\nProgram folder (AppFolder): ") + s.AppFolder + QLatin1Char('\n')));
    about->close();
}

} // namespace
} // namespace quillon::test
