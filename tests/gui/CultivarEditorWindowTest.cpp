// The cultivar editor in the main window, driven as a user drives it: Alt+E
// and C, the two lists, typing a level number, the keys, OK, Esc and Cancel.

#include "app/AppState.h"
#include "database/Sql.h"
#include "editors/EditorForms.h"
#include "editors/gui/frmCult1.h"
#include "gui/MaizeWindowFixture.h"
#include "support/WorkDbFixture.h"

#include <QApplication>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

namespace quillon::test {
namespace {

class CultivarEditorWindowTest : public MaizeWindowTest {
protected:
    void SetUp() override
    {
        MaizeWindowTest::SetUp();
        if (HasFatalFailure() || IsSkipped())
            return;
        m_before = cultivars();
        m_treatments = rowsOf(QStringLiteral("SELECT TRTNO, LNCU FROM Treatments ORDER BY rowid"));

        // Alt+E opens the Edit menu, C its Cultivars.
        m_editor = openByEditMenu<frmCult1>(Qt::Key_C);
        ASSERT_NE(m_editor, nullptr);
        m_grid = m_editor->findChild<QTableView*>(QStringLiteral("DBGrid1"));
        m_crops = m_editor->findChild<QListWidget*>(QStringLiteral("ListCrop"));
        m_cultivars = m_editor->findChild<QListWidget*>(QStringLiteral("ListDescription"));
        ASSERT_TRUE(m_grid && m_crops && m_cultivars);
        m_grid->setFocus();
    }

    static QStringList cultivars()
    {
        return rowsOf(QStringLiteral("SELECT * FROM Cultivars ORDER BY rowid"));
    }
    QString cell(int row, int column) const
    {
        return m_grid->model()->index(row, column).data().toString();
    }
    static void click(QListWidget* list, const QString& text)
    {
        QListWidgetItem* item = list->findItems(text, Qt::MatchExactly).value(0);
        ASSERT_NE(item, nullptr) << text.toStdString();
        QTest::mouseClick(
            list->viewport(), Qt::LeftButton, {}, list->visualItemRect(item).center());
    }
    bool closed() { return MaizeWindowTest::closed<frmCult1>(); }

    frmCult1* m_editor = nullptr;
    QTableView* m_grid = nullptr;
    QListWidget* m_crops = nullptr;
    QListWidget* m_cultivars = nullptr;
    QStringList m_before;
    QStringList m_treatments;
};

TEST_F(CultivarEditorWindowTest, ListsChooseCropAndCultivarAndCancelPutsAllBack)
{
    EXPECT_EQ(m_editor->objectName(), "frmCult1");
    EXPECT_EQ(m_window.mdiArea()->activeSubWindow()->widget(), m_editor);
    EXPECT_EQ(m_editor->windowTitle(), "Cultivars (experimental) - QLNV2101.MZX");
    EXPECT_EQ(m_crops->currentItem()->text(), "Maize");
    EXPECT_EQ(m_cultivars->currentItem()->text(), "Northfield 105");
    if (const QByteArray dir = qgetenv("QUILLON_SCREENSHOT_DIR"); !dir.isEmpty())
        m_editor->window()->grab().save(QString::fromLocal8Bit(dir) + "/frmCult1.png");

    // A click on a crop gives it to the level and empties the cultivar; a
    // click on a cultivar of that crop fills it.
    click(m_crops, QStringLiteral("Soybean"));
    EXPECT_EQ(cell(0, 1) + '|' + cell(0, 2), "Soybean|");
    EXPECT_EQ(m_cultivars->count(), 4);
    click(m_cultivars, QStringLiteral("Meadowlark 3.2"));
    EXPECT_EQ(cultivars().value(0), "1|SB|QL2003|Meadowlark 3.2");

    // A letter in the crop list moves to the first crop with it and
    // chooses nothing; Enter there chooses.
    QTest::keyClick(m_crops, Qt::Key_W);
    EXPECT_EQ(m_crops->currentItem()->text(), "Wheat");
    EXPECT_EQ(cultivars().value(0), "1|SB|QL2003|Meadowlark 3.2");
    QTest::keyClick(m_crops, Qt::Key_Return);
    EXPECT_NE(m_window.findChild<frmCult1*>(), nullptr);
    EXPECT_EQ(cell(0, 1), "Wheat");

    // A level number typed in the grid renumbers the level; the treatments
    // follow.
    m_grid->setFocus();
    m_grid->setCurrentIndex(m_grid->model()->index(1, 0));
    QTest::keyClick(m_grid, Qt::Key_9);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(cell(1, 0), "9");
    EXPECT_EQ(
        rowsOf(QStringLiteral("SELECT TRTNO FROM Treatments WHERE LNCU = 9")), QStringList { "7" });
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();

    // Cancel puts every change back (Esc's warning before it is the
    // planting editor's test: the windows share it).
    m_editor->findChild<QPushButton*>(QStringLiteral("cmdCancel"))->click();
    EXPECT_TRUE(closed());
    EXPECT_EQ(cultivars(), m_before);
    EXPECT_EQ(
        rowsOf(QStringLiteral("SELECT TRTNO, LNCU FROM Treatments ORDER BY rowid")), m_treatments);
    EXPECT_FALSE(editors::isOpen(editors::EditorForm::frmCult1));
}

TEST_F(CultivarEditorWindowTest, CtrlKeysAddAndDeleteAndEnterKeeps)
{
    state().FileSaved = true;
    QTest::keyClick(m_grid, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(m_grid->model()->rowCount(), 3);
    EXPECT_EQ(m_grid->currentIndex().row(), 2);
    EXPECT_EQ(cell(2, 2), "Northfield 105");

    // Level 1 is used by treatments: the warning, and nothing goes.
    m_grid->setCurrentIndex(m_grid->model()->index(0, 0));
    QTest::keyClick(m_grid, Qt::Key_D, Qt::ControlModifier);
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].title, "Deletion Warning");
    m_ui.clear();
    m_grid->setCurrentIndex(m_grid->model()->index(2, 0));
    m_ui.answers = { MsgAnswer::Yes };
    QTest::keyClick(m_grid, Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(m_ui.texts(), QStringList { "Are you sure you want to delete level 3?" });
    EXPECT_EQ(m_grid->model()->rowCount(), 2);

    QTest::keyClick(m_grid, Qt::Key_Return);
    EXPECT_TRUE(closed());
    EXPECT_FALSE(state().FileSaved);
    EXPECT_EQ(cultivars(), m_before);
}

} // namespace
} // namespace quillon::test
