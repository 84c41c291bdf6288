// A new file from start to a saved, checked file, walked through the main
// window as a user walks it: File › New, the identification window and its
// Next, the cultivar, field, planting and initial conditions editors, File ›
// Save, the checker, and the saved file opened again.

#include "app/AppState.h"
#include "database/Sql.h"
#include "editors/gui/frmInitCond.h"
#include "editors/gui/frmViewTreatments.h"
#include "gui/MaizeWindowFixture.h"
#include "support/WorkDbFixture.h"
#include "validation/ExperimentDebugger.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

namespace quillon::test {
namespace {

class GuidedStartTest : public OnScreenWindowTest {
protected:
    void trigger(const char* entry)
    {
        QAction* action = m_window.menuAction(QLatin1String(entry));
        ASSERT_TRUE(action && action->isEnabled()) << entry;
        action->trigger();
        settle();
    }

    // The window in front of the frame, which must be `form`.
    QWidget* active(const char* form)
    {
        settle();
        QMdiSubWindow* child = m_window.mdiArea()->activeSubWindow();
        QWidget* window = child ? child->widget() : nullptr;
        EXPECT_TRUE(window && window->objectName() == QLatin1String(form))
            << form << " is not in front but "
            << (window ? window->objectName().toStdString() : std::string("nothing"));
        return window && window->objectName() == QLatin1String(form) ? window : nullptr;
    }
    // No message came up since the last look.
    void expectQuiet(const char* step)
    {
        EXPECT_TRUE(m_ui.messages.empty())
            << step << ": " << m_ui.texts().join(QLatin1Char('\n')).toStdString();
        m_ui.clear();
    }

    template <typename Widget> static Widget* control(QWidget* window, const char* name)
    {
        auto* widget = window ? window->findChild<Widget*>(QLatin1String(name)) : nullptr;
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    // Replaces a box's text as typed and leaves it with Tab.
    static void type(QWidget* window, const char* box, const QString& text)
    {
        auto* edit = control<QLineEdit>(window, box);
        if (!edit)
            return;
        edit->setFocus();
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, text);
        QTest::keyClick(edit, Qt::Key_Tab);
    }
    // What a user puts into a window: text typed into a box, or an entry
    // chosen from a combo.
    struct Entry {
        enum { Box, Combo } kind;
        const char* control;
        const char* text;
    };
    static void fill(QWidget* window, std::initializer_list<Entry> entries)
    {
        for (const Entry& e : entries) {
            if (e.kind == Entry::Box)
                type(window, e.control, QLatin1String(e.text));
            else
                choose(window, e.control, QLatin1String(e.text));
        }
    }
    // Chooses an entry as a pick in the drop-down does: the combo moves to it
    // and says it was activated (the popup itself is left closed).
    static void choose(QWidget* window, const char* combo, const QString& entry)
    {
        auto* box = control<QComboBox>(window, combo);
        const int index = box ? box->findText(entry) : -1;
        ASSERT_GE(index, 0) << combo << ": " << entry.toStdString();
        box->setCurrentIndex(index);
        emit box->activated(index);
    }
    static void pick(QWidget* window, const char* list, const QString& text)
    {
        auto* view = control<QListWidget>(window, list);
        QListWidgetItem* item = view ? view->findItems(text, Qt::MatchExactly).value(0) : nullptr;
        ASSERT_NE(item, nullptr) << list << ": " << text.toStdString();
        QTest::mouseClick(
            view->viewport(), Qt::LeftButton, {}, view->visualItemRect(item).center());
    }
    static void click(QWidget* window, const char* button)
    {
        if (auto* b = control<QPushButton>(window, button))
            QTest::mouseClick(b, Qt::LeftButton);
    }
};

// The treatment grid's column of the initial conditions level.
constexpr int initialConditionsColumn = 5;

TEST_F(GuidedStartTest, NewFileWalksFromIdentificationToASavedFileTheCheckerAccepts)
{
    // File › New: the identification window, no message.
    trigger("mnuFileNew");
    QWidget* identification = active("frmExpidentify");
    ASSERT_NE(identification, nullptr);
    expectQuiet("New");

    fill(identification,
        { { Entry::Combo, "DBCombo1", "Maize" }, { Entry::Box, "txtINSTE", "QL" },
            { Entry::Box, "TxtSitee", "NV" }, { Entry::Box, "txtYear", "2021" },
            { Entry::Box, "txtNumber", "2" }, { Entry::Box, "TxtENAME", "A guided maize trial" } });
    EXPECT_EQ(control<QLineEdit>(identification, "TxtEXPTNO")->text(), QStringLiteral("2102"));
    EXPECT_EQ(QFileInfo(state().ExpFilePath).fileName().toUpper(), QStringLiteral("QLNV2102.MZX"));
    expectQuiet("identification");

    // Next without a cultivar: the treatments wait for one, and the
    // identification window stays in front.
    click(identification, "cmdNext");
    EXPECT_EQ(m_ui.texts(), QStringList { "Please select Cultivar." });
    m_ui.clear();
    EXPECT_EQ(m_window.findChild<frmViewTreatments*>(), nullptr);
    active("frmExpidentify");

    // Edit › Cultivars gives level 1 the crop chosen; the list gives the
    // cultivar.
    trigger("mnuEditCultivar");
    QWidget* cultivars = active("frmCult1");
    ASSERT_NE(cultivars, nullptr);
    EXPECT_EQ(control<QListWidget>(cultivars, "ListCrop")->currentItem()->text(),
        QStringLiteral("Maize"));
    pick(cultivars, "ListDescription", QStringLiteral("Northfield 105"));
    click(cultivars, "cmdOK");
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNCU, CODE, VARNO, CNAME FROM Cultivars")),
        QStringList { "1|MZ|QL0003|Northfield 105" });
    expectQuiet("cultivar");

    // A click brings the identification window forward; its Next now opens
    // the treatment table, treatment 1 on cultivar 1.
    QTest::mouseClick(identification, Qt::LeftButton);
    ASSERT_EQ(active("frmExpidentify"), identification);
    click(identification, "cmdNext");
    QWidget* treatments = active("frmViewTreatments");
    ASSERT_NE(treatments, nullptr);
    EXPECT_EQ(
        rowsOf(QStringLiteral("SELECT TRTNO, LNCU, LNFLD, LNPLT, LNIC, LNSIM FROM Treatments")),
        QStringList { "1|1|1|1|NULL|1" });
    // New made initial conditions level 1 but no treatment names it: a
    // click on the treatment's cell drops the list of levels down.
    auto* grid = control<QTableView>(treatments, "DBGrdTreatment");
    ASSERT_EQ(grid->model()->headerData(initialConditionsColumn, Qt::Horizontal).toString(),
        QStringLiteral("Init. Cond."));
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
        grid->visualRect(grid->model()->index(0, initialConditionsColumn)).center());
    pick(treatments, "List1", QStringLiteral("1 - "));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNIC FROM Treatments")), QStringList { "1" });
    click(treatments, "cmdSave");
    expectQuiet("treatments");

    // Edit › Fields: an ID, a station and a soil; Next goes on to planting.
    trigger("mnuEditField");
    QWidget* fields = active("frmFields");
    ASSERT_NE(fields, nullptr);
    fill(fields,
        { { Entry::Box, "txtFLDNAM", "QLNV0001" },
            { Entry::Combo, "ComboWSTA", "Quillon Valley Research Farm, North Valley" },
            { Entry::Combo, "ComboSoil", "North Valley silt loam(QL.SOL)" },
            { Entry::Combo, "Combo2", "QLNV000001" } });
    click(fields, "cmdNext");
    expectQuiet("fields");

    // Planting: the date, the stand and how it is sown; Next readies the initial
    // conditions and opens their editor, OK closes it.
    QWidget* planting = active("frmPlantingEd");
    ASSERT_NE(planting, nullptr);
    fill(planting,
        { { Entry::Box, "txtPlantingDate", "5/1/2021" }, { Entry::Box, "txtPLANTS", "7.5" },
            { Entry::Box, "txtPLTPOP", "7" }, { Entry::Combo, "DBComboPLME", "Dry seed" },
            { Entry::Combo, "DBComboPLDS", "Rows" } });
    click(planting, "cmdNext");
    expectQuiet("planting");
    QWidget* initial = active("frmInitCond");
    ASSERT_NE(initial, nullptr);
    click(initial, "cmdSave");
    EXPECT_TRUE(closed<frmInitCond>());
    expectQuiet("initial conditions");

    // File › Save writes the name the identification made, into the
    // suite's copy, with no question for a new file.
    trigger("mnuFileSave");
    const QString saved = state().ExpFilePath;
    ASSERT_TRUE(QFileInfo::exists(saved)) << saved.toStdString();
    EXPECT_TRUE(m_ui.fileDialogs.isEmpty()) << m_ui.fileDialogs.join('\n').toStdString();
    EXPECT_EQ(QFileInfo(saved).absoluteDir(), QFileInfo(maizeFile()).absoluteDir());
    expectQuiet("save");

    const validation::DebugResult result = validation::DebugFile();
    EXPECT_EQ(result.outcome, validation::DebugResult::Outcome::Clean)
        << result.findings.join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(m_ui.texts(), QStringList { "No errors has been found." });
    m_ui.clear();

    // Closed and opened again, the file holds what was chosen.
    trigger("mnuFileClose");
    m_ui.fileAnswers.push_back(saved);
    trigger("mnuFileOpen");
    ASSERT_TRUE(state().DocumentOpen);
    expectQuiet("open");
    const std::pair<const char*, QStringList> tables[] = {
        { "SELECT TRTNO, LNCU, LNFLD, LNPLT, LNIC, LNSIM FROM Treatments", { "1|1|1|1|1|1" } },
        { "SELECT LNCU, CODE, VARNO, CNAME FROM Cultivars", { "1|MZ|QL0003|Northfield 105" } },
        { "SELECT LNFLD, FLDNAM, WSTA, SLNO FROM Fields", { "1|QLNV0001|QUIL|QLNV000001" } },
        { "SELECT LNPLT, YRPLT, PLANTS, PLTPOP, PLME, PLDS FROM Planting",
            { "1|21121|7.5|7|S|R" } },
        { "SELECT LNIC, PRCROP, IDAYIC FROM InitialConditions", { "1|MZ|21121" } },
        { "SELECT LNSIM, YRSIM FROM SimulationControl", { "1|21121" } },
    };
    for (const auto& [sql, rows] : tables)
        EXPECT_EQ(rowsOf(QLatin1String(sql)), rows) << sql;
}

} // namespace
} // namespace quillon::test
