// The event editors in the main window, driven as a user drives them: the
// Edit menu, the keys, typing in the grids, the lists, OK, Esc and Cancel.

#include "app/AppState.h"
#include "app/gui/frmMain.h"
#include "database/Sql.h"
#include "editors/EditorForms.h"
#include "editors/gui/frmEnvMod.h"
#include "editors/gui/frmFertEdit.h"
#include "editors/gui/frmHarvest.h"
#include "editors/gui/frmIrrigation.h"
#include "editors/gui/frmResidueEdit.h"
#include "gui/MaizeWindowFixture.h"
#include "support/SampleSuiteFixture.h"
#include "support/WorkDbFixture.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

namespace quillon::test {
namespace {

class EventEditorWindowTest : public MaizeWindowTest {
protected:
    QTableView* grid(QWidget* editor, const char* name)
    {
        auto* view = editor->findChild<QTableView*>(QLatin1String(name));
        view->setFocus();
        return view;
    }
    static void goTo(QTableView* view, int row, int column)
    {
        view->setCurrentIndex(view->model()->index(row, column));
    }
    // Clicks an entry of a drop-down list.
    static void pick(QListWidget* list, const QString& entry)
    {
        QListWidgetItem* item = list->findItems(entry, Qt::MatchExactly).value(0);
        ASSERT_NE(item, nullptr) << entry.toStdString();
        QTest::mouseClick(
            list->viewport(), Qt::LeftButton, {}, list->visualItemRect(item).center());
    }
    // Types into the current cell: the first key opens its editor, which
    // takes the rest; Enter stores it and closes the editor.
    static void type(QTableView* view, const QString& text)
    {
        QTest::keyClick(view, text.at(0).toLatin1());
        QTest::keyClicks(QApplication::focusWidget(), text.mid(1));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        // The cell is stored by a queued call.
        QApplication::processEvents();
    }
};

TEST_F(EventEditorWindowTest, MenuKeysTypingAndOkWorkOnTheEditorsTables)
{
    auto* editor = openFromMenu<frmFertEdit>("mnuEditFertilizer");
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->objectName(), QStringLiteral("frmFertEdit"));
    EXPECT_EQ(m_window.mdiArea()->activeSubWindow()->widget(), editor);
    EXPECT_EQ(editor->windowTitle(), QStringLiteral("Fertilizers (experimental) - QLNV2101.MZX"));
    QTableView* events = grid(editor, "DBGrid2");
    EXPECT_EQ(cell(events, 0, 0), QStringLiteral("4/28/2021"));
    // While the editor is active Ctrl+P is its Add Application, not Print.
    EXPECT_TRUE(m_window.menuAction(QStringLiteral("mnuPrint"))->shortcut().isEmpty());

    QTest::keyClick(events, Qt::Key_P, Qt::ControlModifier);
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
    EXPECT_EQ(cell(events, 1, 0), QStringLiteral("4/28/2021"));
    EXPECT_EQ(events->currentIndex().row(), 1);

    // Typing in a cell stores the value; a value the rule refuses says so
    // and changes nothing.
    goTo(events, 1, 4);
    type(events, QStringLiteral("45"));
    EXPECT_EQ(cell(events, 1, 4), QStringLiteral("45"));
    goTo(events, 1, 3);
    type(events, QStringLiteral("1000"));
    EXPECT_EQ(m_ui.texts(), QStringList { QStringLiteral("Invalid entry.") });
    EXPECT_EQ(cell(events, 1, 3), QStringLiteral("10"));
    m_ui.clear();

    // Ctrl+L asks before it deletes the event (No is the default).
    m_ui.answers.push_back(MsgAnswer::No);
    QTest::keyClick(events, Qt::Key_L, Qt::ControlModifier);
    EXPECT_EQ(m_ui.texts(),
        QStringList {
            QStringLiteral("Are you sure you want to delete application on  4/28/2021?") });
    EXPECT_EQ(m_ui.messages.front().buttons, MsgButtons::YesNoDefaultNo);
    m_ui.clear();

    // Enter outside a cell is OK: the events go back to the file's tables.
    QTest::keyClick(events, Qt::Key_Return);
    settle();
    EXPECT_EQ(m_window.findChild<frmFertEdit*>(), nullptr);
    EXPECT_EQ(
        rowsOf(QStringLiteral("SELECT FDAY, FERCOD, ANFER FROM Fertilization WHERE LNFER = 1")),
        (QStringList { QStringLiteral("21118|AP002|90"), QStringLiteral("21118|AP002|45") }));
    EXPECT_FALSE(state().FileSaved);
    EXPECT_FALSE(m_window.menuAction(QStringLiteral("mnuPrint"))->shortcut().isEmpty());
}

TEST_F(EventEditorWindowTest, ControlKeysDoTheEditorsJobs)
{
    checkControlKeys<frmFertEdit>("mnuEditFertilizer", "DBGrid1", QStringLiteral("FerLevelNames"));
}

TEST_F(EventEditorWindowTest, ListColumnsTakeOnlyTheListsChoice)
{
    auto* editor = openFromMenu<frmFertEdit>("mnuEditFertilizer");
    ASSERT_NE(editor, nullptr);
    QTableView* events = grid(editor, "DBGrid2");
    auto* list = editor->findChild<QListWidget*>(QStringLiteral("List1"));
    goTo(events, 0, 1);
    ASSERT_TRUE(list->isVisible());
    EXPECT_EQ(list->currentItem()->text(), cell(events, 0, 1));
    pick(list, QStringLiteral("Ammonium nitrate"));
    EXPECT_FALSE(list->isVisible());
    EXPECT_EQ(cell(events, 0, 1), QStringLiteral("Ammonium nitrate"));

    // Typing in a list column blanks it; moving on closes the list.
    QTest::keyClicks(events, QStringLiteral("x"));
    EXPECT_EQ(cell(events, 0, 1), QString());
    goTo(events, 0, 3);
    EXPECT_FALSE(list->isVisible());
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(EventEditorWindowTest, EscWarnsAndCancelPutsTheTablesBack)
{
    const QStringList before = rowsOf(QStringLiteral("SELECT * FROM FerLevelNames"));
    auto* editor = openFromMenu<frmFertEdit>("mnuEditFertilizer");
    ASSERT_NE(editor, nullptr);
    QTableView* levels = grid(editor, "DBGrid1");
    goTo(levels, 0, 1);
    type(levels, QStringLiteral("Renamed"));
    EXPECT_EQ(cell(levels, 0, 1), QStringLiteral("Renamed"));

    m_ui.answers.push_back(MsgAnswer::Cancel);
    QTest::keyClick(levels, Qt::Key_Escape);
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].text, QStringLiteral("New data will not be saved."));
    EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Warning"));
    EXPECT_NE(m_window.findChild<frmFertEdit*>(), nullptr);

    QTest::keyClick(levels, Qt::Key_Escape);
    settle();
    EXPECT_EQ(m_window.findChild<frmFertEdit*>(), nullptr);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM FerLevelNames")), before);
    EXPECT_TRUE(state().FileSaved);
}

TEST_F(EventEditorWindowTest, OneEditorAtATimeAndSaveOpensItAgain)
{
    auto* fertilizer = openFromMenu<frmFertEdit>("mnuEditFertilizer");
    ASSERT_NE(fertilizer, nullptr);
    QTableView* levels = grid(fertilizer, "DBGrid1");
    goTo(levels, 1, 1);
    type(levels, QStringLiteral("Split dressing"));

    // Opening another editor commits the open one.
    auto* residue = openFromMenu<frmResidueEdit>("mnuEditResidue");
    ASSERT_NE(residue, nullptr);
    EXPECT_EQ(m_window.findChild<frmFertEdit*>(), nullptr);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT FERNAME FROM FerLevelNames WHERE LNFER = 2")),
        QStringList { QStringLiteral("Split dressing") });

    // Save writes the file and opens the editor that was open again.
    m_window.menuAction(QStringLiteral("mnuFileSave"))->trigger();
    settle();
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
    EXPECT_NE(m_window.findChild<frmResidueEdit*>(), nullptr);
    EXPECT_TRUE(editors::isOpen(editors::EditorForm::frmResidueEdit));
    EXPECT_TRUE(
        bytesOf(maizeFile())
            .contains(
                " 2 21118 FE006 AP002    10    18    20   -99   -99   -99   -99 Split dressing"));
}

TEST_F(EventEditorWindowTest, IrrigationHasItsOwnControlsAndALevelPage)
{
    auto* editor = openFromMenu<frmIrrigation>("mnuEditIrrigation");
    ASSERT_NE(editor, nullptr);
    for (const char* name : { "DBGIrrigation", "DBGdTheDate", "CmdAddIrrigation", "CmdIrrigdelete",
             "cmdIrrAppAdd", "cmdLayersDelete", "txtEFFIRX", "DBCmbIAMEX" })
        EXPECT_NE(editor->findChild<QWidget*>(QLatin1String(name)), nullptr) << name;
    QTableView* events = grid(editor, "DBGdTheDate");
    EXPECT_EQ(cell(events, 0, 2), QStringLiteral("Sprinkler, mm"));
    // No event uses the third value.
    EXPECT_TRUE(events->isColumnHidden(3));

    // A percentage over 100 keeps the focus in its box.
    auto* threshold = editor->findChild<QLineEdit*>(QStringLiteral("txtTHETCX"));
    EXPECT_EQ(threshold->text(), QStringLiteral("50"));
    threshold->setFocus();
    threshold->selectAll();
    QTest::keyClicks(threshold, QStringLiteral("101"));
    QTest::keyClick(threshold, Qt::Key_Tab);
    EXPECT_EQ(m_ui.texts(), QStringList { QStringLiteral("Invalid percentage.") });
    EXPECT_EQ(QApplication::focusWidget(), threshold);
    m_ui.clear();
    threshold->selectAll();
    QTest::keyClicks(threshold, QStringLiteral("60"));
    auto* method = editor->findChild<QComboBox*>(QStringLiteral("DBCmbIAMEX"));
    EXPECT_EQ(method->currentText(), QStringLiteral("Sprinkler, mm"));
    method->setFocus();
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
    emit method->activated(method->findText(QStringLiteral("Flood, mm")));

    // Another level shows its own values.
    QTableView* levels = grid(editor, "DBGIrrigation");
    goTo(levels, 1, 0);
    EXPECT_EQ(threshold->text(), QStringLiteral("40"));

    QTest::keyClick(levels, Qt::Key_O, Qt::ControlModifier);
    settle();
    EXPECT_EQ(m_window.findChild<frmIrrigation*>(), nullptr);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT THETCX, IAMEX FROM Irrigation WHERE LNIR = 1")),
        QStringList { QStringLiteral("60|IR003") });
}

TEST_F(EventEditorWindowTest, HarvestOffersTheStagesOfTheCropAndKeepsTheirCode)
{
    auto* editor = openFromMenu<frmHarvest>("mnuHarvest");
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->findChild<QComboBox*>(QStringLiteral("ComboCrop"))->currentText(),
        QStringLiteral("Maize"));
    QTableView* events = grid(editor, "DBGrid2");
    auto* stages = editor->findChild<QListWidget*>(QStringLiteral("List3"));
    goTo(events, 0, 1);
    ASSERT_TRUE(stages->isVisible());
    pick(stages, QStringLiteral("Silking, 75 percent of plants"));
    EXPECT_EQ(cell(events, 0, 1), QStringLiteral("GS006"));
    QTest::keyClick(events, Qt::Key_O, Qt::ControlModifier);
    settle();
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT HSTG FROM Harvest WHERE LNHAR = 1")),
        QStringList { QStringLiteral("GS006") });
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(EventEditorWindowTest, EnvironmentFactorsTakeTheirLettersAndCancelDropsThem)
{
    const QStringList before = rowsOf(QStringLiteral("SELECT * FROM EnvironMod"));
    auto* editor = openFromMenu<frmEnvMod>("mnuEditEnvMod");
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->findChildren<QListWidget*>().size(), 8);
    QTableView* events = grid(editor, "DBGrid2");
    goTo(events, 0, 2);
    EXPECT_TRUE(editor->findChild<QListWidget*>(QStringLiteral("List1"))->isVisible());
    QTest::keyClicks(events, QStringLiteral("m"));
    EXPECT_EQ(cell(events, 0, 2), QStringLiteral("Multiply"));
    goTo(events, 0, 1);
    type(events, QStringLiteral("25"));
    EXPECT_EQ(m_ui.texts(), QStringList { QStringLiteral("Invalid entry.") });
    m_ui.clear();

    QTest::keyClick(events, Qt::Key_Escape);
    settle();
    EXPECT_EQ(m_ui.texts(), QStringList { QStringLiteral("New data will not be saved.") });
    EXPECT_EQ(m_window.findChild<frmEnvMod*>(), nullptr);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM EnvironMod")), before);
}

} // namespace
} // namespace quillon::test
