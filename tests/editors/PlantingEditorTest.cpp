// The planting editor, run headless on the sample maize experiment: the
// page and its rules, the dates as codes, OK's steps in a new file, Next's
// preparation of the initial conditions, and Cancel.

#include "editors/PlantingEditor.h"
#include "app/AppState.h"
#include "database/Relations.h"
#include "database/Sql.h"
#include "editors/EditorFixture.h"
#include "editors/EditorForms.h"
#include "support/FakePlantingScreen.h"

#include <gtest/gtest.h>

#include <memory>

namespace quillon::test {
namespace {

using namespace editors;
using database::exec;

QStringList planting()
{
    return rowsOf(QStringLiteral("SELECT * FROM Planting ORDER BY rowid"));
}

QString level(int number)
{
    return rowsOf(QStringLiteral("SELECT * FROM Planting WHERE LNPLT = %1").arg(number)).value(0);
}

// The simulation defaults a new file's planting date fills.
QString simulationDates()
{
    return rowsOf(
        QStringLiteral(
            "SELECT (SELECT YRSIM FROM SimulationControl ORDER BY rowid LIMIT 1), PWDINF, PWDINL, "
            "(SELECT HLATE FROM AutoManagementHarvest ORDER BY rowid LIMIT 1) "
            "FROM AutoManagementPlanting ORDER BY rowid LIMIT 1"))
        .value(0);
}

int boxNamed(const char* field)
{
    const std::vector<PlantingBox>& boxes = PlantingEditor::boxes();
    for (size_t i = 0; i < boxes.size(); ++i) {
        if (boxes[i].field == QLatin1String(field))
            return int(i);
    }
    return -1;
}

class PlantingEditorTest : public EditorTest {
protected:
    void load()
    {
        open(QStringLiteral("Maize/QLNV2101.MZX"));
        start();
    }
    // Edit > Planting on the experiment as it stands.
    void start()
    {
        m_editor = std::make_unique<PlantingEditor>(m_screen);
        m_screen.editor = m_editor.get();
        m_screen.closed = false;
        ASSERT_TRUE(mnuEditPlanting_Click());
        m_editor->Form_Load();
    }
    // A new file whose simulation controls have no dates yet.
    void makeNew()
    {
        state().IsNewFile = true;
        exec(QStringLiteral("UPDATE SimulationControl SET YRSIM = NULL"));
        exec(QStringLiteral("UPDATE AutoManagementPlanting SET PWDINF = NULL, PWDINL = NULL"));
        exec(QStringLiteral("UPDATE AutoManagementHarvest SET HLATE = NULL"));
    }

    FakePlantingScreen m_screen;
    std::unique_ptr<PlantingEditor> m_editor;
};

TEST_F(PlantingEditorTest, OpensOnTheFirstLevelWithItsDatesAsDates)
{
    load();
    EXPECT_TRUE(m_host.calls.contains(QStringLiteral("closeEditors")));
    EXPECT_TRUE(isOpen(EditorForm::frmPlantingEd));
    EXPECT_EQ(m_screen.caption, "Planting (experimental) - QLNV2101.MZX");
    SqlGridModel& grid = m_editor->Data1();
    EXPECT_EQ(grid.headerData(0, Qt::Horizontal).toString() + '|'
            + grid.headerData(1, Qt::Horizontal).toString(),
        "Level|Description");
    EXPECT_EQ(grid.text(1, 1), "Late May planting");
    EXPECT_EQ(m_screen.row, 0);
    const PlantingPage& page = m_screen.page;
    EXPECT_EQ(page.levelNumber, "Level 1");
    EXPECT_EQ(page.plantingDate, "5/1/2021");
    EXPECT_EQ(page.emergenceDate, "");
    EXPECT_EQ(QStringList(page.boxes.begin(), page.boxes.end()).join('|'), "7.5|7.2|76|0|5|||||");
    EXPECT_EQ(page.method, "Dry seed");
    EXPECT_EQ(page.distribution, "Rows");
    EXPECT_TRUE(m_screen.methods.contains("Transplants"));
    EXPECT_TRUE(m_screen.distributions.contains("Hills"));
    ASSERT_GE(page.year, 0);
    EXPECT_EQ(page.years.at(page.year), "2021");

    m_screen.moveTo(1);
    EXPECT_EQ(m_screen.page.emergenceDate, "5/26/2021");
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(PlantingEditorTest, AnUndatedFirstLevelWithoutAStationLeadsToTheFields)
{
    open(QStringLiteral("Maize/QLNV2101.MZX"));
    exec(QStringLiteral("UPDATE Planting SET YRPLT = NULL WHERE LNPLT = 1"));
    EXPECT_TRUE(mnuEditPlanting_Click());
    exec(QStringLiteral("UPDATE Fields SET WSTA = NULL WHERE LNFLD = 1"));
    EXPECT_FALSE(mnuEditPlanting_Click());
    EXPECT_EQ(m_ui.texts(), QStringList { "Please select weather station in Fields." });
    EXPECT_TRUE(m_host.calls.contains("reopen:frmFields"));
}

TEST_F(PlantingEditorTest, EachBoxKeepsItsRangeAndStoresWhatPasses)
{
    load();
    struct Case {
        const char* field;
        const char* typed;
        const char* shown; // nullptr: refused
    };
    const Case cases[] = {
        { "PLANTS", "", "-99" },
        { "PLANTS", "12.5", "12.5" },
        { "PLTPOP", "10000", nullptr },
        { "AZIR", "360", "360" },
        { "AZIR", "361", nullptr },
        { "AZIR", "-99", "-99" },
        { "SDAGE", "99999", "99999" },
        { "ROWSPC", "wide", nullptr },
        // The transplant's temperature passes both ranges or neither.
        { "ATEMP", "-5", nullptr },
        { "ATEMP", "100", nullptr },
        { "ATEMP", "50", "50" },
    };
    for (const Case& c : cases) {
        m_ui.clear();
        const QString before = level(1);
        QString text = QLatin1String(c.typed);
        const bool passed = m_editor->BoxValidate(boxNamed(c.field), text);
        const QString stored = database::scalar(
            QStringLiteral("SELECT %1 FROM Planting WHERE LNPLT = 1").arg(QLatin1String(c.field)))
                                   .toString();
        if (c.shown) {
            EXPECT_TRUE(passed) << c.field << ' ' << c.typed;
            EXPECT_EQ(text, QLatin1String(c.shown));
            EXPECT_EQ(stored.toDouble(), text.toDouble()) << c.field;
            EXPECT_TRUE(m_ui.messages.empty()) << c.field << ' ' << c.typed;
        } else {
            EXPECT_FALSE(passed) << c.field << ' ' << c.typed;
            EXPECT_EQ(level(1), before) << c.field;
            ASSERT_EQ(m_ui.messages.size(), 1u) << c.field << ' ' << c.typed;
            EXPECT_EQ(m_ui.messages[0].text, "Invalid entry.");
            EXPECT_EQ(m_ui.messages[0].title, "Error");
        }
    }

    m_editor->ComboClick(QStringLiteral("PLME"), QStringLiteral("Transplants"));
    m_editor->ComboClick(QStringLiteral("PLDS"), QStringLiteral("Hills"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT PLME, PLDS FROM Planting WHERE LNPLT = 1")),
        QStringList { "T|H" });
}

TEST_F(PlantingEditorTest, DateBoxesTakeDatesTheFileCanHold)
{
    load();
    const std::pair<PlantingDate, const char*> refused[]
        = { { PlantingDate::Planting, "13/45/2021" }, { PlantingDate::Planting, "5/3/1925" },
              { PlantingDate::Emergence, "soon" } };
    for (const auto& [box, typed] : refused) {
        m_ui.clear();
        EXPECT_FALSE(m_editor->DateValidate(box, QLatin1String(typed))) << typed;
        EXPECT_EQ(m_ui.texts(), QStringList { "Invalid date." });
        EXPECT_EQ(m_ui.messages[0].title, "Error");
    }
    EXPECT_TRUE(m_editor->DateValidate(PlantingDate::Planting, QStringLiteral("5.3.2021")));
    EXPECT_TRUE(m_editor->DateValidate(PlantingDate::Emergence, QStringLiteral("5/10/2021")));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT YRPLT, IEMRG FROM Planting WHERE LNPLT = 1")),
        QStringList { "21123|21130" });
    // An empty emergence box takes the date away; an empty planting box
    // leaves it.
    EXPECT_TRUE(m_editor->DateValidate(PlantingDate::Emergence, QString()));
    EXPECT_TRUE(m_editor->DateValidate(PlantingDate::Planting, QString()));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT YRPLT, IEMRG FROM Planting WHERE LNPLT = 1")),
        QStringList { "21123|NULL" });
}

TEST_F(PlantingEditorTest, OkChecksTheDatesAndStoresThemAsCodes)
{
    load();
    struct Case {
        const char* sown;
        const char* emerged;
        QStringList messages;
        bool closes;
    };
    const Case cases[] = {
        { "May first", "", { "Please enter Planting date." }, false },
        { "5/1/1925", "", { "Invalid date." }, false },
        { "5/1/2021", "later", { "Please enter Emergence date." }, false },
        { "5/1/2021", "5/1/3001", { "Invalid date." }, false },
        // Emergence before planting is told, and the window closes all the
        // same; on the same day it passes.
        { "5/10/2021", "5/8/2021",
            { "Emergence date should be AFTER Planting date. Please correct the dates." }, true },
        { "5/10/2021", "5/10/2021", {}, true },
    };
    for (const Case& c : cases) {
        start();
        m_ui.clear();
        m_screen.page.plantingDate = QLatin1String(c.sown);
        m_screen.page.emergenceDate = QLatin1String(c.emerged);
        m_editor->cmdOK_Click();
        EXPECT_EQ(m_ui.texts(), c.messages) << c.sown << ' ' << c.emerged;
        EXPECT_EQ(m_screen.closed, c.closes) << c.sown << ' ' << c.emerged;
        EXPECT_EQ(m_screen.datesRed, c.messages.size() == 1 && c.closes);
    }
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT YRPLT, IEMRG FROM Planting WHERE LNPLT = 1")),
        QStringList { "21130|21130" });
    EXPECT_EQ(m_ui.messages.size(), 0u);
    EXPECT_FALSE(state().FileSaved);
    EXPECT_FALSE(database::tableExists(QStringLiteral("BackUp")));
}

TEST_F(PlantingEditorTest, ANewFilesPlantingDateFillsTheEmptySimulationDates)
{
    load();
    makeNew();
    state().IsForecast = true;
    exec(QStringLiteral("INSERT INTO AutoManagementSimdates (LNSIM) VALUES (1)"));
    m_editor->cmdOK_Click();
    EXPECT_EQ(simulationDates(), "21121|21121|21121|21121");
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT FODAT FROM AutoManagementSimdates")),
        QStringList { "21121" });

    // A second OK fills nothing that has a value.
    start();
    m_screen.page.plantingDate = QStringLiteral("6/1/2021");
    m_editor->cmdOK_Click();
    EXPECT_EQ(level(1).section('|', 1, 1), "21152");
    EXPECT_EQ(simulationDates(), "21121|21121|21121|21121");
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();

    // Without any planting date the user is asked (Cancel stays, the
    // default); OK goes on with no date.
    makeNew();
    exec(QStringLiteral("UPDATE Planting SET YRPLT = NULL"));
    start();
    m_editor->cmdOK_Click();
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].text,
        "You have not entered a planting date,\nso you must enter a date to start simulation "
        "under Simulation Control.");
    EXPECT_EQ(m_ui.messages[0].title, "Note");
    EXPECT_EQ(m_ui.messages[0].buttons, MsgButtons::OKCancelDefaultCancel);
    EXPECT_FALSE(m_screen.closed);
    m_ui.answers = { MsgAnswer::OK };
    m_editor->cmdOK_Click();
    EXPECT_TRUE(m_screen.closed);
    EXPECT_EQ(simulationDates(), "-99|-99|-99|-99");
}

TEST_F(PlantingEditorTest, AddDeleteRenumberThenCancelPutsPlantingAndTreatmentsBack)
{
    load();
    const QStringList before = planting();
    const QStringList treatments
        = rowsOf(QStringLiteral("SELECT TRTNO, LNPLT FROM Treatments ORDER BY rowid"));

    m_screen.moveTo(1);
    m_editor->cmdAdd();
    EXPECT_EQ(level(3), QString(level(2)).replace(0, 1, QLatin1Char('3')));
    EXPECT_EQ(m_screen.row, 2);
    EXPECT_EQ(m_screen.page.levelNumber, "Level 3");

    m_screen.moveTo(1);
    m_editor->cmdDelete_Click();
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_TRUE(
        m_ui.messages[0].text.endsWith("Treatment 7 is currently using this Planting level"));
    m_ui.clear();
    m_screen.moveTo(2);
    m_ui.answers = { MsgAnswer::Yes };
    m_editor->cmdDelete_Click();
    EXPECT_EQ(m_ui.texts(), QStringList { "Are you sure you want to delete level 3?" });
    EXPECT_EQ(planting(), before);
    m_ui.clear();

    // The grid: a free number renumbers the level, and the treatments
    // follow; a number in use or text says "Invalid entry.".
    SqlGridModel& grid = m_editor->Data1();
    m_screen.row = 1;
    grid.store(1, 0, QStringLiteral("5"));
    EXPECT_EQ(m_screen.page.levelNumber, "Level 5");
    grid.store(1, 0, QStringLiteral("1"));
    grid.store(1, 0, QStringLiteral("2.5"));
    EXPECT_EQ(m_ui.texts(), QStringList({ "Invalid entry.", "Invalid entry." }));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT TRTNO FROM Treatments WHERE LNPLT = 5")),
        QStringList { "7" });
    grid.store(1, 1, QString(70, QLatin1Char('x')));
    EXPECT_EQ(level(5).section('|', -1), QString(60, QLatin1Char('x')));

    m_editor->Command1_Click();
    EXPECT_TRUE(m_screen.closed);
    EXPECT_EQ(planting(), before);
    EXPECT_EQ(
        rowsOf(QStringLiteral("SELECT TRTNO, LNPLT FROM Treatments ORDER BY rowid")), treatments);
    EXPECT_TRUE(database::relationExists(QStringLiteral("PLTTreatment")));
    EXPECT_FALSE(isOpen(EditorForm::frmPlantingEd));
}

TEST_F(PlantingEditorTest, NextReadiesTheInitialConditionsAndOpensTheirEditor)
{
    load();
    makeNew();
    // A new file's single level of initial conditions, still undated.
    exec(QStringLiteral("UPDATE Treatments SET LNIC = 1"));
    exec(QStringLiteral("DELETE FROM ICLayers WHERE LNIC <> 1"));
    exec(QStringLiteral("DELETE FROM InitialConditions WHERE LNIC <> 1"));
    exec(QStringLiteral("UPDATE InitialConditions SET PRCROP = NULL, IDAYIC = NULL"));
    exec(QStringLiteral("DELETE FROM ICSoil"));
    exec(QStringLiteral("INSERT INTO SoilData (SLB) VALUES (5)"));
    m_screen.page.plantingDate = QStringLiteral("not a date");
    m_editor->cmdNext();
    EXPECT_EQ(m_ui.texts(), QStringList { "Please enter Planting date." });
    EXPECT_EQ(m_ui.messages[0].title, "Note");
    EXPECT_FALSE(m_screen.closed);
    m_ui.clear();

    m_screen.page.plantingDate = QStringLiteral("5/2/2021");
    m_editor->cmdNext();
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
    EXPECT_TRUE(m_screen.closed);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNIC, PRCROP, IDAYIC FROM InitialConditions")),
        QStringList { "1|MZ|21122" });
    EXPECT_EQ(database::rowCount(QStringLiteral("SoilData")), 0);
    // ICSoil lists the soil of every field, as the editor shows them.
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT SLNO FROM ICSoil ORDER BY SLNO")),
        QStringList({ "Deep silt loam, upland prairie (QLGEN00001)",
            "North Valley silt loam (QLNV000001)" }));
    EXPECT_EQ(simulationDates(), "21122|21122|21122|21122");
    EXPECT_TRUE(m_host.calls.contains("reopen:frmInitCond"));
}

} // namespace
} // namespace quillon::test
