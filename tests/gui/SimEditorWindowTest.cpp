// The simulation control editor in the main window, driven as a user drives
// it: the View menu's three entries, typing in the boxes, a combo's list,
// the keys, OK, Esc and the frame's close button.

#include "app/AppState.h"
#include "app/gui/frmMain.h"
#include "database/Sql.h"
#include "editors/gui/frmSim.h"
#include "gui/MaizeWindowFixture.h"
#include "support/WorkDbFixture.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStyleOptionTitleBar>
#include <QTabWidget>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

namespace quillon::test {
namespace {

class SimEditorWindowTest : public OnScreenWindowTest {
protected:
    frmSim* openFromMenu(const char* entry)
    {
        return OnScreenWindowTest::openFromMenu<frmSim>(entry);
    }
    template <typename Widget> static Widget* child(QWidget* form, const char* name)
    {
        auto* widget = form->findChild<Widget*>(QLatin1String(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    // Types a box's text anew and leaves it with Tab.
    static void retype(QLineEdit* box, const QString& text)
    {
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, text);
        QTest::keyClick(box, Qt::Key_Tab);
    }
    // Picks the entry of a code from the combo's open list.
    static void pick(QComboBox* combo, const QString& code)
    {
        combo->showPopup();
        QAbstractItemView* list = combo->view();
        const QModelIndex item = list->model()->index(combo->findData(code), 0);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(item).center());
    }
    // Clicks the close button of the editor's frame.
    void clickCloseButton()
    {
        QMdiSubWindow* frame = m_window.mdiArea()->activeSubWindow();
        QStyleOptionTitleBar option;
        option.initFrom(frame);
        option.subControls = QStyle::SC_All;
        option.titleBarFlags = frame->windowFlags();
        option.titleBarState = frame->windowState();
        option.rect = QRect(0, 0, frame->width(),
            frame->style()->pixelMetric(QStyle::PM_TitleBarHeight, &option, frame));
        const QPoint button = frame->style()
                                  ->subControlRect(QStyle::CC_TitleBar, &option,
                                      QStyle::SC_TitleBarCloseButton, frame)
                                  .center();
        QTest::mouseMove(frame, button);
        QTest::mouseClick(frame, Qt::LeftButton, {}, button);
        settle();
    }
};

TEST_F(SimEditorWindowTest, ViewMenuOpensTheControlsThatKeepWhatIsTyped)
{
    openFile(QStringLiteral("Maize/QLNV2101.MZX"));
    frmSim* editor = openFromMenu("EditSimOptGeneral");
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(
        editor->windowTitle(), QStringLiteral("Simulation Controls (experimental) - QLNV2101.MZX"));
    auto* tabs = child<QTabWidget>(editor, "TabRTF");
    EXPECT_EQ(tabs->count(), 5);
    EXPECT_EQ(tabs->currentIndex(), 0);
    EXPECT_EQ(child<QTableView>(editor, "DBGrid1")->model()->rowCount(), 2);
    EXPECT_EQ(child<QLineEdit>(editor, "txtYRSIMDate")->text(), QStringLiteral("04/10/2021"));

    // A refused number keeps the focus; a good one passes.
    auto* seed = child<QLineEdit>(editor, "txtRSEED");
    retype(seed, QStringLiteral("10000"));
    EXPECT_EQ(m_ui.texts(), QStringList { QStringLiteral("Invalid entry.") });
    EXPECT_TRUE(seed->hasFocus());
    m_ui.clear();
    retype(seed, QStringLiteral("1234"));
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();

    // Canopy evapotranspiration picked from the list brings leaf
    // photosynthesis along.
    tabs->setCurrentIndex(2);
    pick(child<QComboBox>(editor, "DBCombo1(2)"), QStringLiteral("Z"));
    EXPECT_EQ(
        child<QComboBox>(editor, "DBCombo1(4)")->currentData().toString(), QStringLiteral("L"));

    // Ctrl+A copies the level; Enter is OK.
    auto* levels = child<QTableView>(editor, "DBGrid1");
    QTest::keyClick(levels, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(levels->model()->rowCount(), 3);
    QTest::keyClick(levels, Qt::Key_Return);
    settle();
    EXPECT_EQ(m_window.findChild<frmSim*>(), nullptr);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNSIM, RSEED FROM SimulationControl ORDER BY LNSIM")),
        (QStringList {
            QStringLiteral("1|1234"), QStringLiteral("2|2150"), QStringLiteral("3|1234") }));
    EXPECT_EQ(
        rowsOf(QStringLiteral("SELECT MEEVP, MEPHO FROM SimulationControlMethods WHERE LNSIM = 3")),
        QStringList { QStringLiteral("Z|L") });
    EXPECT_FALSE(state().FileSaved);
}

TEST_F(SimEditorWindowTest, ControlKeysDoTheEditorsJobs)
{
    openFile(QStringLiteral("Maize/QLNV2101.MZX"));
    struct Case {
        Qt::Key key;
        const char* message; // the first message, if any
        bool closes;
        int levels; // simulation levels afterwards
    };
    const Case cases[] = {
        { Qt::Key_A, nullptr, false, 3 }, // Add: a copy of level 1
        { Qt::Key_D, "Deletion Warning", false, 2 }, // level 1 is used by treatments
        { Qt::Key_O, nullptr, true, 2 }, // OK
        { Qt::Key_N, nullptr, true, 2 }, // Cancel, without the warning
        { Qt::Key_P, nullptr, false, 2 }, // no events here: nothing happens
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(int(c.key));
        frmSim* editor = openFromMenu("EditSimOptGeneral");
        ASSERT_NE(editor, nullptr);
        m_ui.clear();
        QTest::keyClick(child<QTableView>(editor, "DBGrid1"), c.key, Qt::ControlModifier);
        settle();
        EXPECT_EQ(m_ui.messages.empty() ? QString() : m_ui.messages[0].title,
            c.message ? QLatin1String(c.message) : QString());
        EXPECT_EQ(m_window.findChild<frmSim*>() == nullptr, c.closes);
        EXPECT_EQ(database::rowCount(QStringLiteral("SimulationControl")), c.levels);
        // Cancel whatever is left, so that the next key starts afresh.
        if (frmSim* open = m_window.findChild<frmSim*>())
            open->editor().cmdCancel_Click();
        settle();
    }
}

TEST_F(SimEditorWindowTest, ManagementAndEnvironmentEntriesOpenTheirTabsAndEscapeDropsChanges)
{
    openFile(QStringLiteral("Maize/QLNV2101.MZX"));
    frmSim* editor = openFromMenu("mnuManageEdit");
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(child<QTabWidget>(editor, "TabRTF")->currentIndex(), 3);
    EXPECT_TRUE(child<QLabel>(editor, "lblManagementCaution")->isVisible());
    auto* incorporated = child<QLineEdit>(editor, "txt9RIP");
    EXPECT_TRUE(incorporated->isEnabled());
    pick(child<QComboBox>(editor, "DBCombo4(3)"), QStringLiteral("A"));
    EXPECT_FALSE(incorporated->isEnabled());

    // Esc warns, and OK to the warning drops the change.
    QTest::keyClick(child<QTableView>(editor, "DBGrid1"), Qt::Key_Escape);
    settle();
    EXPECT_EQ(m_ui.texts(), QStringList { QStringLiteral("New data will not be saved.") });
    EXPECT_EQ(m_window.findChild<frmSim*>(), nullptr);
    EXPECT_EQ(
        rowsOf(QStringLiteral("SELECT IRESI FROM SimulationControlManagement WHERE LNSIM = 1")),
        QStringList { QStringLiteral("R") });

    editor = openFromMenu("mnuEnvironEdit");
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(child<QTabWidget>(editor, "TabRTF")->currentIndex(), 2);
    EXPECT_TRUE(child<QLabel>(editor, "lblWeatherCaution")->isVisible());
}

TEST_F(SimEditorWindowTest, TheFramesCloseButtonWarnsBeforeItDropsChanges)
{
    openFile(QStringLiteral("Maize/QLNV2101.MZX"));
    frmSim* editor = openFromMenu("EditSimOptGeneral");
    ASSERT_NE(editor, nullptr);
    retype(child<QLineEdit>(editor, "txtNREPSQ"), QStringLiteral("4"));
    m_ui.answers = { MsgAnswer::Cancel };
    clickCloseButton();
    EXPECT_EQ(m_ui.texts(), QStringList { QStringLiteral("New data will not be saved.") });
    ASSERT_EQ(m_window.findChild<frmSim*>(), editor);
    clickCloseButton();
    EXPECT_EQ(m_window.findChild<frmSim*>(), nullptr);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT NREPSQ FROM SimulationControl WHERE LNSIM = 1")),
        QStringList { QStringLiteral("1") });
}

TEST_F(SimEditorWindowTest, ForecastFilesHaveTheForecastTab)
{
    openFile(QStringLiteral("YieldForecast/QLNV2201.FCX"));
    frmSim* editor = openFromMenu("EditSimOptGeneral");
    ASSERT_NE(editor, nullptr);
    auto* tabs = child<QTabWidget>(editor, "TabRTF");
    ASSERT_EQ(tabs->count(), 6);
    EXPECT_EQ(tabs->tabText(5), QStringLiteral("Forecast"));
    EXPECT_EQ(child<QLineEdit>(editor, "txtYRFRCDate")->text(), QStringLiteral("07/15/2022"));
    EXPECT_EQ(child<QLineEdit>(editor, "txtFONAME")->text(), QStringLiteral("July outlook 2022"));
}

} // namespace
} // namespace quillon::test
