// The initial conditions editor in the main window, driven as a user drives
// it: the Edit menu, the boxes, the soil list and a recalculation, the
// layer keys, Esc and its warning, Cancel and OK.

#include "app/AppState.h"
#include "app/gui/frmMain.h"
#include "database/Sql.h"
#include "editors/gui/frmInitCond.h"
#include "gui/MaizeWindowFixture.h"
#include "support/SampleSuiteFixture.h"
#include "support/WorkDbFixture.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

namespace quillon::test {
namespace {

class InitialConditionsWindowTest : public MaizeWindowTest {
protected:
    frmInitCond* openEditor()
    {
        EXPECT_EQ(m_window.menuAction(QStringLiteral("mnuEditInitCond"))->text(),
            QStringLiteral("&Initial Conditions"));
        return openFromMenu<frmInitCond>("mnuEditInitCond");
    }
    template <typename W> static W* child(QWidget* editor, const char* name)
    {
        return editor->findChild<W*>(QLatin1String(name));
    }
    // Types into a box and leaves it with Tab.
    static void typeIn(QLineEdit* box, const QString& text)
    {
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, text);
        QTest::keyClick(box, Qt::Key_Tab);
    }
};

TEST_F(InitialConditionsWindowTest, MenuBoxesSoilRecalculationAndOk)
{
    frmInitCond* editor = openEditor();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->objectName(), QStringLiteral("frmInitCond"));
    EXPECT_EQ(m_window.mdiArea()->activeSubWindow()->widget(), editor);
    EXPECT_EQ(
        editor->windowTitle(), QStringLiteral("Initial Conditions (experimental) - QLNV2101.MZX"));
    auto* layers = child<QTableView>(editor, "dbgICLayers");
    EXPECT_EQ(cell(layers, 0, 0), QStringLiteral("15"));
    EXPECT_EQ(child<QLineEdit>(editor, "txtDate")->text(), QStringLiteral("4/10/2021"));

    // A box stores what its rule takes and keeps the focus on a refusal.
    auto* residue = child<QLineEdit>(editor, "txtICRES");
    typeIn(residue, QStringLiteral("2500"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT ICRES FROM InitialConditions WHERE LNIC = 1")),
        QStringList { "2500" });
    auto* nitrogenShare = child<QLineEdit>(editor, "txtICREN");
    typeIn(nitrogenShare, QStringLiteral("200"));
    EXPECT_EQ(m_ui.texts(), QStringList { "Invalid entry." });
    EXPECT_TRUE(nitrogenShare->hasFocus());
    typeIn(nitrogenShare, QStringLiteral("1.5"));
    m_ui.clear();

    // A soil from the list, water and nitrogen, and the recalculation.
    auto* soils = child<QComboBox>(editor, "DBComboSLNO");
    soils->setFocus();
    QTest::keyClick(soils, Qt::Key_End);
    EXPECT_EQ(soils->currentText(), QStringLiteral("North Valley silt loam (QLNV000001)"));
    typeIn(child<QLineEdit>(editor, "txtWater"), QStringLiteral("50"));
    typeIn(child<QLineEdit>(editor, "txtNitrogen"), QStringLiteral("30"));
    QTest::mouseClick(child<QPushButton>(editor, "cmdRecalculate"), Qt::LeftButton);
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
    EXPECT_EQ(cell(layers, 0, 1), QStringLiteral("0.22"));
    EXPECT_EQ(cell(layers, 6, 0), QStringLiteral("180"));

    // Ctrl+P copies the layer; Ctrl+L asks before it deletes one.
    layers->setFocus();
    layers->setCurrentIndex(layers->model()->index(0, 0));
    QTest::keyClick(layers, Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(cell(layers, 1, 0), QStringLiteral("15"));
    m_ui.answers.push_back(MsgAnswer::Yes);
    QTest::keyClick(layers, Qt::Key_L, Qt::ControlModifier);
    EXPECT_EQ(
        m_ui.texts(), QStringList { "Are you sure you want to delete a layer with depth 15?" });
    EXPECT_EQ(cell(layers, 1, 0), QStringLiteral("30"));
    m_ui.clear();

    // Enter is OK.
    QTest::keyClick(layers, Qt::Key_Return);
    settle();
    EXPECT_EQ(m_window.findChild<frmInitCond*>(), nullptr);
    EXPECT_EQ(rowsOf(QStringLiteral(
                  "SELECT SLNO, Water, Nitrogen FROM IC_Water_Nitrogen WHERE LNIC = 1")),
        QStringList { "North Valley silt loam (QLNV000001)|50|30" });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT ICREN FROM InitialConditions WHERE LNIC = 1")),
        QStringList { "1.5" });
    EXPECT_FALSE(state().FileSaved);
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(InitialConditionsWindowTest, EscWarnsAndCancelPutsEverythingBack)
{
    const QStringList before = rowsOf(QStringLiteral("SELECT * FROM ICLayers ORDER BY rowid"))
        + rowsOf(QStringLiteral("SELECT * FROM InitialConditions ORDER BY rowid"));
    frmInitCond* editor = openEditor();
    ASSERT_NE(editor, nullptr);
    auto* levels = child<QTableView>(editor, "DBGridIC");
    levels->setFocus();
    QTest::keyClick(levels, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(levels->model()->rowCount(), 3);
    typeIn(child<QLineEdit>(editor, "txtICWD"), QStringLiteral("150"));

    m_ui.answers.push_back(MsgAnswer::Cancel);
    QTest::keyClick(levels, Qt::Key_Escape);
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].text, QStringLiteral("New data will not be saved."));
    EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Warning"));
    EXPECT_NE(m_window.findChild<frmInitCond*>(), nullptr);

    QTest::keyClick(levels, Qt::Key_Escape);
    settle();
    EXPECT_EQ(m_window.findChild<frmInitCond*>(), nullptr);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM ICLayers ORDER BY rowid"))
            + rowsOf(QStringLiteral("SELECT * FROM InitialConditions ORDER BY rowid")),
        before);
    EXPECT_TRUE(state().FileSaved);
}

TEST_F(InitialConditionsWindowTest, ControlKeysDoTheEditorsJobs)
{
    checkControlKeys<frmInitCond>(
        "mnuEditInitCond", "DBGridIC", QStringLiteral("InitialConditions"));
}

} // namespace
} // namespace quillon::test
