// The event editors in the main window, driven as a user drives them: the
// Edit menu, the keys, typing in the grids, the lists, OK, Esc and Cancel.

#include "app/AppState.h"
#include "app/gui/frmMain.h"
#include "database/Sql.h"
#include "editors/EditorForms.h"
#include "editors/gui/frmFertEdit.h"
#include "editors/gui/frmResidueEdit.h"
#include "support/SampleSuiteFixture.h"
#include "support/WorkDbFixture.h"

#include <QAction>
#include <QApplication>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

namespace quillon::test {
namespace {

class EventEditorWindowTest : public SampleSuiteTest {
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
    static void settle() { QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    QTableView* grid(QWidget* editor, const char* name)
    {
        auto* view = editor->findChild<QTableView*>(QLatin1String(name));
        view->setFocus();
        return view;
    }
    static QString cell(QTableView* view, int row, int column)
    {
        return view->model()->index(row, column).data().toString();
    }
    static void goTo(QTableView* view, int row, int column)
    {
        view->setCurrentIndex(view->model()->index(row, column));
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

    frmMain m_window;
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
    struct Case {
        Qt::Key key;
        const char* message; // the first message, if any
        bool closes;
        int levels; // fertilizer levels afterwards
    };
    const Case cases[] = {
        { Qt::Key_A, nullptr, false, 3 }, // Add: a copy of level 1
        { Qt::Key_D, "Deletion Warning", false, 2 }, // level 1 is used by treatments
        { Qt::Key_O, nullptr, true, 2 }, // OK
        { Qt::Key_N, nullptr, true, 2 }, // Cancel, without the warning
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(int(c.key));
        auto* editor = openFromMenu<frmFertEdit>("mnuEditFertilizer");
        ASSERT_NE(editor, nullptr);
        m_ui.clear();
        QTest::keyClick(grid(editor, "DBGrid1"), c.key, Qt::ControlModifier);
        settle();
        EXPECT_EQ(m_ui.messages.empty() ? QString() : m_ui.messages[0].title,
            c.message ? QLatin1String(c.message) : QString());
        EXPECT_EQ(m_window.findChild<frmFertEdit*>() == nullptr, c.closes);
        EXPECT_EQ(database::rowCount(QStringLiteral("FerLevelNames")), c.levels);
        // Cancel whatever is left, so that the next key starts afresh.
        if (auto* open = m_window.findChild<frmFertEdit*>())
            open->editor().cmdCancel_Click();
        settle();
    }
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
    QListWidgetItem* pick
        = list->findItems(QStringLiteral("Ammonium nitrate"), Qt::MatchExactly).value(0);
    ASSERT_NE(pick, nullptr);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(pick).center());
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

} // namespace
} // namespace quillon::test
