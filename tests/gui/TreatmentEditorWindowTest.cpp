// The treatment table's window on the sample maize experiment, driven with
// keys and clicks.

#include "app/AppState.h"
#include "database/Sql.h"
#include "editors/EditorFixture.h"
#include "editors/EditorForms.h"
#include "editors/gui/frmViewTreatments.h"

#include <QApplication>
#include <QHeaderView>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

namespace quillon::test {
namespace {

QStringList treatments()
{
    return rowsOf(QStringLiteral("SELECT * FROM Treatments ORDER BY rowid"));
}

QString titleOf(int number)
{
    return database::scalar(
        QStringLiteral("SELECT TITLET FROM Treatments WHERE TRTNO = ?"), { number })
        .toString();
}

class TreatmentEditorWindowTest : public EditorTest {
protected:
    void SetUp() override
    {
        EditorTest::SetUp();
        open(QStringLiteral("Maize/QLNV2101.MZX"));
        ASSERT_TRUE(editors::mnuViewTreatments_Click());
        m_window = new frmViewTreatments;
        m_window->Form_Load();
        m_window->show();
        m_window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_window));
        m_grid = m_window->findChild<QTableView*>(QStringLiteral("DBGrdTreatment"));
        m_list = m_window->findChild<QListWidget*>(QStringLiteral("List1"));
        ASSERT_TRUE(m_grid && m_list);
        m_grid->setFocus();
    }
    void TearDown() override
    {
        delete m_window.data();
        EditorTest::TearDown();
    }
    bool closed()
    {
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return m_window.isNull();
    }
    QPoint cellCenter(int row, int column)
    {
        return m_grid->visualRect(m_grid->model()->index(row, column)).center();
    }
    // Starts typing in a cell and goes on in its editor.
    void typeInto(int row, int column, const QString& text)
    {
        m_grid->setCurrentIndex(m_grid->model()->index(row, column));
        QTest::keyClick(m_grid, text.at(0).toLatin1());
        QTest::keyClicks(QApplication::focusWidget(), text.mid(1));
    }

    QPointer<frmViewTreatments> m_window;
    QTableView* m_grid = nullptr;
    QListWidget* m_list = nullptr;
};

TEST_F(TreatmentEditorWindowTest, ShowsEveryCaptionWholeTypesPicksAndCancels)
{
    const QStringList before = treatments();
    EXPECT_EQ(m_window->objectName(), "frmViewTreatments");
    EXPECT_EQ(m_window->windowTitle(), "Treatments (experimental) - QLNV2101.MZX");
    const QHeaderView* header = m_grid->horizontalHeader();
    for (int column = 0; column < m_grid->model()->columnCount(); ++column) {
        const QString caption = m_grid->model()->headerData(column, Qt::Horizontal).toString();
        EXPECT_GE(header->sectionSize(column), header->fontMetrics().horizontalAdvance(caption))
            << caption.toStdString();
    }
    // The buttons, in order, with their hints.
    const QStringList hints { "Add Treatment (Ctrl + A).",
        "Delete the selected Treatment (Ctrl + D).",
        "Save the changes to the Treatments and close the screen (Ctrl + O).",
        "Cancel all changes to the Treatments and close the screen (Ctrl + N or Esc)." };
    QStringList shown;
    for (const char* name : { "CmdAdd", "cmdDelete", "cmdSave", "Command1" }) {
        auto* button = m_window->findChild<QPushButton*>(QLatin1String(name));
        shown << (button && button->isEnabled() ? button->toolTip() : QString());
    }
    EXPECT_EQ(shown, hints);
    if (const QByteArray dir = qgetenv("QUILLON_SCREENSHOT_DIR"); !dir.isEmpty())
        m_window->grab().save(
            QString::fromLocal8Bit(dir) + QStringLiteral("/frmViewTreatments.png"));

    // The description stops at 25 characters; Tab stores it and moves on to
    // the cultivar, whose list opens.
    typeInto(0, 1, QStringLiteral("A description of thirty chars"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(titleOf(1), "A description of thirty c");
    EXPECT_TRUE(m_list->isVisible());
    QTest::keyClick(m_list, Qt::Key_Escape);
    EXPECT_FALSE(m_list->isVisible());

    // A click on treatment 2's fertilizer opens the list under the cell.
    QTest::mouseClick(m_grid->viewport(), Qt::LeftButton, {}, cellCenter(1, 8));
    ASSERT_TRUE(m_list->isVisible());
    const QRect cell = m_grid->visualRect(m_grid->model()->index(1, 8));
    EXPECT_NEAR(
        m_list->geometry().top(), m_grid->viewport()->mapToGlobal(cell.bottomLeft()).y(), 2);
    EXPECT_EQ(m_list->currentItem()->text(), "1 - 90 kg N/ha as urea before planting");
    QListWidgetItem* second = m_list->item(1);
    QTest::mouseClick(
        m_list->viewport(), Qt::LeftButton, {}, m_list->visualItemRect(second).center());
    EXPECT_FALSE(m_list->isVisible());
    EXPECT_EQ(database::scalar(QStringLiteral("SELECT LNFER FROM Treatments WHERE TRTNO = 2")), 2);
    EXPECT_EQ(m_grid->currentIndex().row(), 1);
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();

    m_window->findChild<QPushButton*>(QStringLiteral("Command1"))->click();
    EXPECT_TRUE(closed());
    EXPECT_EQ(treatments(), before);
}

TEST_F(TreatmentEditorWindowTest, CtrlAAddsAndEscWarnsThenCancels)
{
    const QStringList before = treatments();
    QTest::keyClick(m_grid, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(m_grid->model()->rowCount(), 12);

    m_ui.answers = { MsgAnswer::Cancel, MsgAnswer::OK };
    QTest::keyClick(m_grid, Qt::Key_Escape);
    ASSERT_EQ(m_ui.texts(), QStringList { "New data will not be saved." });
    EXPECT_FALSE(closed());
    QTest::keyClick(m_grid, Qt::Key_Escape);
    EXPECT_TRUE(closed());
    EXPECT_EQ(treatments(), before);
    EXPECT_FALSE(editors::isOpen(editors::EditorForm::frmViewTreatments));
}

TEST_F(TreatmentEditorWindowTest, EnterSavesWhatIsBeingTyped)
{
    state().FileSaved = true;
    typeInto(2, 1, QStringLiteral("Typed"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(closed());
    EXPECT_EQ(titleOf(3), "Typed");
    EXPECT_FALSE(state().FileSaved);
    EXPECT_FALSE(database::tableExists(QStringLiteral("BackUp")));
}

} // namespace
} // namespace quillon::test
