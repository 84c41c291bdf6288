// The field and soil analysis editors in the main window, driven as a user
// drives them: the Edit menu and its keys, the boxes and their checks, a
// combo's choice, typing in the grids, the Ctrl keys, Esc, OK and Cancel.

#include "app/AppState.h"
#include "app/gui/frmMain.h"
#include "database/Sql.h"
#include "editors/EditorForms.h"
#include "editors/gui/frmFields.h"
#include "editors/gui/frmSoilAnalysis.h"
#include "gui/MaizeWindowFixture.h"
#include "support/WorkDbFixture.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

namespace quillon::test {
namespace {

class FieldEditorsWindowTest : public MaizeWindowTest {
protected:
    template <typename Widget> static Widget* control(QWidget* editor, const char* name)
    {
        return editor->findChild<Widget*>(QLatin1String(name));
    }
    // Types into a box and leaves it with Tab, as the user does.
    static void typeInBox(QLineEdit* box, const QString& text)
    {
        box->setFocus();
        box->selectAll();
        QTest::keyClick(box, Qt::Key_Delete);
        QTest::keyClicks(box, text);
        QTest::keyClick(box, Qt::Key_Tab);
    }
    // Types into the current cell of a grid and stores it with Enter.
    static void typeInCell(QTableView* view, const QString& text)
    {
        view->setFocus();
        QTest::keyClick(view, text.at(0).toLatin1());
        QTest::keyClicks(QApplication::focusWidget(), text.mid(1));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QApplication::processEvents();
    }
    static void choose(QComboBox* combo, const QString& entry)
    {
        const int index = combo->findText(entry);
        ASSERT_GE(index, 0) << entry.toStdString();
        combo->setCurrentIndex(index);
        emit combo->activated(index);
    }
};

TEST_F(FieldEditorsWindowTest, TheEditMenuKeysOpenBothEditors)
{
    EXPECT_NE(openByEditMenu<frmFields>(Qt::Key_F), nullptr);
    EXPECT_NE(openByEditMenu<frmSoilAnalysis>(Qt::Key_S), nullptr);
    // Opening one closed the other.
    EXPECT_EQ(m_window.findChild<frmFields*>(), nullptr);
}

TEST_F(FieldEditorsWindowTest, FieldEditorBoxesCombosKeysAndOk)
{
    auto* editor = openFromMenu<frmFields>("mnuEditField");
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->windowTitle(), QStringLiteral("Fields (experimental) - QLNV2101.MZX"));
    auto* grid = control<QTableView>(editor, "DBGrid1");
    EXPECT_EQ(grid->model()->index(0, 1).data().toString(), QStringLiteral("QLNV0001"));
    EXPECT_TRUE(grid->isColumnHidden(21));

    // A refused entry says so and keeps the focus; an accepted one is stored.
    auto* slope = control<QLineEdit>(editor, "txtSLOPE");
    typeInBox(slope, QStringLiteral("abc"));
    EXPECT_EQ(m_ui.texts(), QStringList { "Invalid entry." });
    EXPECT_EQ(QApplication::focusWidget(), slope);
    m_ui.clear();
    typeInBox(slope, QStringLiteral("2.5"));
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
    EXPECT_EQ(
        rowsOf(QStringLiteral("SELECT SLOPE FROM Fields WHERE LNFLD = 1")), QStringList { "2.5" });
    auto* area = control<QLineEdit>(editor, "txtAREA");
    typeInBox(area, QString());
    EXPECT_EQ(area->text(), QStringLiteral("-99"));

    // A station chosen by its description, and the ID combo that comes with it.
    choose(control<QComboBox>(editor, "ComboWSTA"),
        QStringLiteral("Marsh Hollow Field Station, Quillon Valley"));
    EXPECT_EQ(control<QLineEdit>(editor, "txtWSTA")->text(), QStringLiteral("MRSH"));
    EXPECT_TRUE(control<QComboBox>(editor, "ComboWSTA_ID")->isVisible());
    EXPECT_EQ(grid->model()->index(0, 2).data().toString(), QStringLiteral("MRSH"));

    // Ctrl+A adds a field under the next ID.
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(grid->model()->rowCount(), 3);
    EXPECT_EQ(control<QLineEdit>(editor, "txtFLDNAM")->text(), QStringLiteral("QLNV0003"));

    // Enter is OK.
    QTest::keyClick(grid, Qt::Key_Return);
    settle();
    EXPECT_EQ(m_window.findChild<frmFields*>(), nullptr);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT FLDNAM, WSTA FROM Fields WHERE LNFLD = 3")),
        QStringList { "QLNV0003|MRSH" });
    EXPECT_FALSE(state().FileSaved);
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(FieldEditorsWindowTest, FieldEditorGridAndCancel)
{
    const QStringList fields = rowsOf(QStringLiteral("SELECT * FROM Fields ORDER BY LNFLD"));
    auto* editor = openFromMenu<frmFields>("mnuEditField");
    ASSERT_NE(editor, nullptr);
    auto* grid = control<QTableView>(editor, "DBGrid1");
    grid->setCurrentIndex(grid->model()->index(0, 1));
    typeInCell(grid, QStringLiteral("QLNV0002"));
    EXPECT_EQ(m_ui.texts(), QStringList { "Level numbers and FieldID cannot be repeated." });
    EXPECT_EQ(QApplication::focusWidget(), control<QLineEdit>(editor, "txtFLDNAM"));
    m_ui.clear();
    grid->setCurrentIndex(grid->model()->index(1, 0));
    typeInCell(grid, QStringLiteral("8"));
    EXPECT_EQ(control<QLineEdit>(editor, "txtFLDNAM")->text(), QStringLiteral("QLNV0002"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNFLD FROM Treatments WHERE TRTNO = 9")),
        QStringList { "8" });

    // Esc warns first; Cancel at the warning keeps the editor.
    m_ui.answers = { MsgAnswer::Cancel };
    QTest::keyClick(grid, Qt::Key_Escape);
    EXPECT_EQ(m_ui.texts(), QStringList { "New data will not be saved." });
    EXPECT_NE(m_window.findChild<frmFields*>(), nullptr);
    QTest::keyClick(grid, Qt::Key_Escape);
    settle();
    EXPECT_EQ(m_window.findChild<frmFields*>(), nullptr);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM Fields ORDER BY LNFLD")), fields);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNFLD FROM Treatments WHERE TRTNO = 9")),
        QStringList { "2" });
}

TEST_F(FieldEditorsWindowTest, SoilAnalysisLayersDateKeysAndCancel)
{
    const QStringList layers = rowsOf(QStringLiteral("SELECT * FROM SoilLayers ORDER BY rowid"));
    auto* editor = openFromMenu<frmSoilAnalysis>("mnuEditSoil");
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->windowTitle(), QStringLiteral("Soil Analysis (experimental) - QLNV2101.MZX"));
    EXPECT_EQ(control<QLineEdit>(editor, "txtDate")->text(), QStringLiteral("4/5/2021"));
    EXPECT_EQ(
        control<QComboBox>(editor, "DBCmbSMHB")->currentText(), QStringLiteral("pH in water, 1:1"));
    auto* layerGrid = control<QTableView>(editor, "DBGrid2");
    EXPECT_EQ(layerGrid->model()->index(0, 0).data().toString(), QStringLiteral("15"));

    // Ctrl+P copies the layer beside it; a typed value out of its rule is refused.
    layerGrid->setFocus();
    layerGrid->setCurrentIndex(layerGrid->model()->index(0, 2));
    QTest::keyClick(layerGrid, Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(layerGrid->model()->index(1, 0).data().toString(), QStringLiteral("15"));
    EXPECT_EQ(layerGrid->currentIndex().row(), 1);
    typeInCell(layerGrid, QStringLiteral("150"));
    EXPECT_EQ(m_ui.texts(), QStringList { "Invalid entry." });
    m_ui.clear();
    typeInCell(layerGrid, QStringLiteral("2.5"));
    EXPECT_EQ(layerGrid->model()->index(1, 2).data().toString(), QStringLiteral("2.5"));

    // Ctrl+L asks, No the default.
    m_ui.answers = { MsgAnswer::No };
    QTest::keyClick(layerGrid, Qt::Key_L, Qt::ControlModifier);
    EXPECT_EQ(
        m_ui.texts(), QStringList { "Are you sure you want to delete a layer with depth 15?" });
    EXPECT_EQ(m_ui.messages[0].buttons, MsgButtons::YesNoDefaultNo);
    m_ui.clear();

    auto* date = control<QLineEdit>(editor, "txtDate");
    typeInBox(date, QStringLiteral("1/1/1900"));
    EXPECT_EQ(m_ui.texts(), QStringList { "Invalid date." });
    EXPECT_EQ(QApplication::focusWidget(), date);
    m_ui.clear();

    // Ctrl+N cancels without a warning.
    QTest::keyClick(date, Qt::Key_N, Qt::ControlModifier);
    settle();
    EXPECT_EQ(m_window.findChild<frmSoilAnalysis*>(), nullptr);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM SoilLayers ORDER BY rowid")), layers);
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(FieldEditorsWindowTest, SoilAnalysisOkStoresTheDateAndAMethod)
{
    auto* editor = openFromMenu<frmSoilAnalysis>("mnuEditSoil");
    ASSERT_NE(editor, nullptr);
    choose(control<QComboBox>(editor, "DBCmbSMKE"), QStringLiteral("Potassium, Mehlich 3 extract"));
    auto* date = control<QLineEdit>(editor, "txtDate");
    date->setFocus();
    date->selectAll();
    QTest::keyClicks(date, QStringLiteral("5/1/2021"));
    // Ctrl+O checks the box it leaves and keeps what it holds.
    QTest::keyClick(date, Qt::Key_O, Qt::ControlModifier);
    settle();
    EXPECT_EQ(m_window.findChild<frmSoilAnalysis*>(), nullptr);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT SADAT, SMKE FROM SoilAnalysis WHERE LNSA = 1")),
        QStringList { "21121|SA014" });
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

} // namespace
} // namespace quillon::test
