// The planting editor in the main window, driven as a user drives it: Alt+E
// and P, the boxes and their checks on leaving, a combo, the keys, OK, Next,
// Esc and Cancel.

#include "app/AppState.h"
#include "database/Sql.h"
#include "editors/EditorForms.h"
#include "editors/gui/frmPlantingEd.h"
#include "gui/MaizeWindowFixture.h"
#include "support/WorkDbFixture.h"

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

class PlantingEditorWindowTest : public MaizeWindowTest {
protected:
    void SetUp() override
    {
        MaizeWindowTest::SetUp();
        if (HasFatalFailure() || IsSkipped())
            return;
        m_before = planting();

        // Alt+E opens the Edit menu, P its Planting.
        m_editor = openByEditMenu<frmPlantingEd>(Qt::Key_P);
        ASSERT_NE(m_editor, nullptr);
        m_grid = m_editor->findChild<QTableView*>(QStringLiteral("DBGrid1"));
        ASSERT_NE(m_grid, nullptr);
    }

    static QStringList planting()
    {
        return rowsOf(QStringLiteral("SELECT * FROM Planting ORDER BY rowid"));
    }
    static QString firstLevel(const char* columns)
    {
        return rowsOf(
            QStringLiteral("SELECT %1 FROM Planting WHERE LNPLT = 1").arg(QLatin1String(columns)))
            .value(0);
    }
    QLineEdit* box(const char* name) const
    {
        return m_editor->findChild<QLineEdit*>(QLatin1String(name));
    }
    // Replaces a box's text as typed, then leaves it with Tab.
    static void typeAndLeave(QLineEdit* edit, const QString& text)
    {
        edit->setFocus();
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, text);
        QTest::keyClick(edit, Qt::Key_Tab);
    }
    bool closed() { return MaizeWindowTest::closed<frmPlantingEd>(); }

    frmPlantingEd* m_editor = nullptr;
    QTableView* m_grid = nullptr;
    QStringList m_before;
};

TEST_F(PlantingEditorWindowTest, BoxesKeepTheFocusOnBadEntriesAndStoreGoodOnes)
{
    EXPECT_EQ(m_editor->objectName(), "frmPlantingEd");
    EXPECT_EQ(m_window.mdiArea()->activeSubWindow()->widget(), m_editor);
    EXPECT_EQ(m_editor->windowTitle(), "Planting (experimental) - QLNV2101.MZX");
    EXPECT_EQ(box("txtPlantingDate")->text(), "5/1/2021");
    EXPECT_EQ(box("txtPLANTS")->text(), "7.5");
    auto* method = m_editor->findChild<QComboBox*>(QStringLiteral("DBComboPLME"));
    ASSERT_NE(method, nullptr);
    EXPECT_EQ(method->currentText(), "Dry seed");
    if (const QByteArray dir = qgetenv("QUILLON_SCREENSHOT_DIR"); !dir.isEmpty())
        m_editor->window()->grab().save(QString::fromLocal8Bit(dir) + "/frmPlantingEd.png");

    QLineEdit* azimuth = box("txtAZIR");
    typeAndLeave(azimuth, QStringLiteral("400"));
    EXPECT_EQ(m_ui.texts(), QStringList { "Invalid entry." });
    EXPECT_EQ(QApplication::focusWidget(), azimuth);
    EXPECT_EQ(firstLevel("AZIR"), "0");
    m_ui.clear();
    typeAndLeave(azimuth, QStringLiteral("90"));
    EXPECT_NE(QApplication::focusWidget(), azimuth);
    EXPECT_EQ(firstLevel("AZIR"), "90");

    // An emptied box shows and stores -99.
    typeAndLeave(box("txtPLTPOP"), QString());
    EXPECT_EQ(box("txtPLTPOP")->text(), "-99");
    EXPECT_EQ(firstLevel("PLTPOP"), "-99");

    QLineEdit* sown = box("txtPlantingDate");
    typeAndLeave(sown, QStringLiteral("13/45/2021"));
    EXPECT_EQ(m_ui.texts(), QStringList { "Invalid date." });
    EXPECT_EQ(QApplication::focusWidget(), sown);
    m_ui.clear();
    typeAndLeave(sown, QStringLiteral("5/3/2021"));
    EXPECT_EQ(firstLevel("YRPLT"), "21123");

    // A choice in the method combo stores its code.
    method->setFocus();
    while (method->currentText() != QLatin1String("Transplants")
        && method->currentIndex() < method->count() - 1)
        QTest::keyClick(method, Qt::Key_Down);
    EXPECT_EQ(firstLevel("PLME"), "T");

    // Another level shows its own page.
    m_grid->setFocus();
    QTest::keyClick(m_grid, Qt::Key_Down);
    EXPECT_EQ(box("txtEmergenceDate")->text(), "5/26/2021");
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();

    // Esc warns, then Cancel puts every level back.
    m_ui.answers = { MsgAnswer::OK };
    QTest::keyClick(m_grid, Qt::Key_Escape);
    EXPECT_EQ(m_ui.texts(), QStringList { "New data will not be saved." });
    EXPECT_TRUE(closed());
    EXPECT_EQ(planting(), m_before);
    EXPECT_FALSE(editors::isOpen(editors::EditorForm::frmPlantingEd));
}

TEST_F(PlantingEditorWindowTest, CtrlAAddsAndEnterChecksTheBoxAndKeeps)
{
    state().FileSaved = true;
    m_grid->setFocus();
    QTest::keyClick(m_grid, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(m_grid->model()->rowCount(), 3);
    EXPECT_EQ(box("txtPlantingDate")->text(), "5/1/2021");

    // Enter in a box with a bad entry refuses it and stays open.
    QLineEdit* depth = box("txtSDEPTH");
    depth->setFocus();
    depth->selectAll();
    QTest::keyClicks(depth, QStringLiteral("deep"));
    QTest::keyClick(depth, Qt::Key_Return);
    EXPECT_EQ(m_ui.texts(), QStringList { "Invalid entry." });
    EXPECT_FALSE(closed());
    m_ui.clear();
    depth->selectAll();
    QTest::keyClicks(depth, QStringLiteral("4"));
    QTest::keyClick(depth, Qt::Key_Return);
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
    EXPECT_TRUE(closed());
    EXPECT_FALSE(state().FileSaved);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNPLT, SDEPTH FROM Planting ORDER BY rowid")),
        QStringList({ "1|5", "2|5", "3|4" }));
}

TEST_F(PlantingEditorWindowTest, CtrlNCancelsWithoutTheWarningAndCtrlOKeeps)
{
    struct Case {
        Qt::Key key;
        int levels; // planting levels after Ctrl+A and the key
    };
    const Case cases[] = { { Qt::Key_N, 2 }, { Qt::Key_O, 3 } };
    for (const Case& c : cases) {
        SCOPED_TRACE(int(c.key));
        if (!m_editor)
            m_editor = openByEditMenu<frmPlantingEd>(Qt::Key_P);
        ASSERT_NE(m_editor, nullptr);
        auto* grid = m_editor->findChild<QTableView*>(QStringLiteral("DBGrid1"));
        grid->setFocus();
        QTest::keyClick(grid, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(grid, c.key, Qt::ControlModifier);
        EXPECT_TRUE(closed());
        m_editor = nullptr;
        EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
        EXPECT_EQ(database::rowCount(QStringLiteral("Planting")), c.levels);
    }
}

TEST_F(PlantingEditorWindowTest, NextClosesTheEditorForTheInitialConditions)
{
    m_editor->findChild<QPushButton*>(QStringLiteral("cmdNext"))->click();
    EXPECT_TRUE(closed());
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
    EXPECT_FALSE(editors::isOpen(editors::EditorForm::frmPlantingEd));
}

} // namespace
} // namespace quillon::test
