// The initial conditions editor, run headless on the sample maize
// experiment: the menu handler's preparation, each routine's steps and
// messages, and Cancel, through a window without widgets.

#include "editors/InitialConditionsEditor.h"

#include "app/AppState.h"
#include "database/Relations.h"
#include "database/Sql.h"
#include "editors/EditorFixture.h"
#include "editors/EditorForms.h"
#include "support/FakeInitialConditionsScreen.h"

#include <gtest/gtest.h>

#include <memory>

namespace quillon::test {
namespace {

using namespace editors;
using database::exec;

class InitialConditionsEditorTest : public EditorTest {
protected:
    void SetUp() override
    {
        EditorTest::SetUp();
        open(QStringLiteral("Maize/QLNV2101.MZX"));
    }

    // Runs the menu handler and, when it lets the editor open, Form_Load.
    bool load()
    {
        m_screen = std::make_unique<FakeInitialConditionsScreen>();
        m_editor = std::make_unique<InitialConditionsEditor>(*m_screen);
        m_screen->attach(*m_editor);
        if (!mnuEditInitCond_Click())
            return false;
        m_editor->Form_Load();
        return true;
    }
    static void run(const QString& statements)
    {
        for (const QString& sql : statements.split(QLatin1Char(';'), Qt::SkipEmptyParts))
            exec(sql);
    }
    // Everything the editor works on, as text.
    static QStringList tables()
    {
        QStringList all;
        for (const char* sql : { "SELECT * FROM InitialConditions ORDER BY rowid",
                 "SELECT * FROM ICLayers ORDER BY rowid",
                 "SELECT * FROM IC_Water_Nitrogen ORDER BY rowid",
                 "SELECT * FROM ICSoil ORDER BY rowid",
                 "SELECT TRTNO, LNIC FROM Treatments ORDER BY rowid" })
            all << rowsOf(QLatin1String(sql)) << QStringLiteral("--");
        return all;
    }
    QString messages() const { return m_ui.texts().join('\n'); }

    std::unique_ptr<FakeInitialConditionsScreen> m_screen;
    std::unique_ptr<InitialConditionsEditor> m_editor;
};

TEST_F(InitialConditionsEditorTest, OpensOnTheFileAndOkLeavesItsTablesAsTheyWere)
{
    const QStringList before = tables();
    ASSERT_TRUE(load());
    EXPECT_TRUE(isOpen(EditorForm::frmInitCond));
    EXPECT_EQ(
        m_screen->caption, QStringLiteral("Initial Conditions (experimental) - QLNV2101.MZX"));
    EXPECT_EQ(m_screen->levelCaptions, (QStringList { "Level", "Description" }));
    EXPECT_EQ(
        m_screen->layerCaptions.value(2), QStringLiteral("Ammonium  (NH4)      g[N] Mg-1 [soil]"));
    EXPECT_EQ(m_screen->levelNumber, QStringLiteral("Level 1"));
    EXPECT_EQ(m_screen->previousCrop, QStringLiteral("SB"));
    EXPECT_EQ(m_screen->date, QStringLiteral("4/10/2021"));
    EXPECT_EQ(m_screen->boxes["ICRES"], QStringLiteral("1500"));
    EXPECT_EQ(m_screen->boxes["ICREN"], QStringLiteral("0.8"));
    EXPECT_EQ(m_screen->boxes["ICREP"], QStringLiteral(""));
    EXPECT_EQ(m_screen->soils,
        (QStringList { "Deep silt loam, upland prairie (QLGEN00001)",
            "North Valley silt loam (QLNV000001)" }));
    EXPECT_TRUE(m_screen->years.contains(QStringLiteral("2021")));
    EXPECT_EQ(m_screen->layerRows().value(0), QStringLiteral("15|0.28|0.8|8.2"));
    EXPECT_EQ(m_screen->layerRows().size(), 7);

    m_screen->selectLevel(2);
    EXPECT_EQ(m_screen->levelNumber, QStringLiteral("Level 2"));
    EXPECT_EQ(m_screen->layerRows().value(0), QStringLiteral("5|0.3|1.1|9.5"));

    m_editor->cmdSave();
    EXPECT_TRUE(m_screen->closed);
    EXPECT_FALSE(isOpen(EditorForm::frmInitCond));
    EXPECT_FALSE(state().FileSaved);
    EXPECT_FALSE(database::tableExists(QStringLiteral("BackUp_Layers")));
    EXPECT_EQ(tables(), before);
    EXPECT_TRUE(m_ui.messages.empty()) << messages().toStdString();
}

TEST_F(InitialConditionsEditorTest, MenuHandlerMakesLevelOneDatesItAndBringsTheSoilsUpToDate)
{
    struct Case {
        const char* setup;
        const char* simulationDate;
        bool experimental;
        bool opens;
        const char* message;
        const char* level; // PRCROP|IDAYIC|EFNFIX|EFINOC of the one level
        bool cropChosen = true; // in the identification window
    };
    const char* withoutLevels
        = "UPDATE Treatments SET LNIC = NULL; DELETE FROM ICLayers; DELETE FROM InitialConditions;";
    const Case cases[] = {
        { "", "-99", true, true, nullptr, "MZ|21121|1|1" },
        { "UPDATE Planting SET YRPLT = NULL; UPDATE Fields SET WSTA = NULL", "-99", true, false,
            "Please enter the Field information.", "NULL|NULL|1|1" },
        { "UPDATE Treatments SET LNPLT = NULL; DELETE FROM Planting", "-99", true, false,
            "Please enter planting date or date to start simulation.", "NULL|NULL|1|1" },
        { "", "4/30/2021", true, true, nullptr, "MZ|21120|1|1" },
        { "", "-99", false, true, nullptr, "NULL|21121|1|1" },
        { "", "-99", true, true, "You must specify crop first.", "NULL|NULL|1|1", false },
    };
    for (const Case& c : cases) {
        open(QStringLiteral("Maize/QLNV2101.MZX"));
        m_host.calls.clear();
        run(QLatin1String(withoutLevels) + QLatin1String(c.setup));
        if (!c.cropChosen)
            m_host.window->cropCode.clear();
        state().SimulationDate = QLatin1String(c.simulationDate);
        if (!c.experimental)
            setFileType(state(), FileType::Sequence);
        EXPECT_EQ(load(), c.opens) << c.setup;
        const QString message = c.message ? QLatin1String(c.message) : QString();
        EXPECT_EQ(messages(), message) << c.setup;
        EXPECT_TRUE(state().NewLevelCreated);
        EXPECT_EQ(
            rowsOf(QStringLiteral("SELECT PRCROP, IDAYIC, EFNFIX, EFINOC FROM InitialConditions")),
            QStringList { QLatin1String(c.level) })
            << c.setup;
        EXPECT_EQ(
            rowsOf(QStringLiteral("SELECT LNIC, DLAYRI FROM ICLayers")), QStringList { "1|NULL" });
        EXPECT_EQ(m_host.calls.contains(QStringLiteral("reopen:frmFields")),
            message == QLatin1String("Please enter the Field information."));
    }
    state().SimulationDate = QStringLiteral("-99");
    open(QStringLiteral("Maize/QLNV2101.MZX"));

    // A soil no field names any more leaves the list and the levels' rows.
    run("UPDATE IC_Water_Nitrogen SET SLNO = 'Gone (GONE000001)', Water = 50, Nitrogen = 20 WHERE "
        "LNIC = 1;"
        "INSERT INTO ICSoil (SLNO) VALUES ('Gone (GONE000001)'); INSERT INTO SoilData (SLB) VALUES "
        "(10)");
    ASSERT_TRUE(load());
    EXPECT_FALSE(state().NewLevelCreated);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM IC_Water_Nitrogen WHERE LNIC = 1")),
        QStringList { "1|NULL|NULL|NULL" });
    EXPECT_EQ(m_screen->soils.size(), 2);
    EXPECT_EQ(database::rowCount(QStringLiteral("SoilData")), 0);
}

TEST_F(InitialConditionsEditorTest, BoxesAndDateStoreWhatTheirRulesAccept)
{
    ASSERT_TRUE(load());
    struct Case {
        const char* field;
        const char* typed;
        const char* shown; // nullptr: refused
        const char* stored;
    };
    const Case cases[] = {
        { "ICREN", "101", nullptr, "0.8" },
        { "ICREN", " 12.5 ", "12.5", "12.5" },
        { "ICREN", "", "-99", "-99" },
        { "EFNFIX", "1.5", nullptr, "1" },
        { "EFNFIX", "-99", "-99", "-99" },
        { "WRESND", "10000", nullptr, "1000" },
        { "ICRES", "99999", "99999", "99999" },
        { "ICWD", "abc", nullptr, "NULL" },
    };
    for (const Case& c : cases) {
        m_ui.clear();
        const QString field = QLatin1String(c.field);
        EXPECT_EQ(m_editor->txtBox_Validate(field, QLatin1String(c.typed)), c.shown != nullptr)
            << c.typed;
        EXPECT_EQ(messages(), c.shown ? QString() : QStringLiteral("Invalid entry.")) << c.typed;
        if (c.shown) {
            EXPECT_EQ(m_screen->boxes[field], QLatin1String(c.shown));
        }
        EXPECT_EQ(
            rowsOf(QStringLiteral("SELECT %1 FROM InitialConditions WHERE LNIC = 1").arg(field)),
            QStringList { QLatin1String(c.stored) })
            << c.field << " " << c.typed;
    }

    m_ui.clear();
    EXPECT_FALSE(m_editor->txtDate_Validate(QStringLiteral("13/45/2021")));
    EXPECT_TRUE(m_editor->txtDate_Validate(QStringLiteral("5/1/2021")));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT IDAYIC FROM InitialConditions WHERE LNIC = 1")),
        QStringList { "21121" });
    m_editor->PRCROP_Click(QStringLiteral("WH"));

    // OK refuses a year before 1921 and takes 1921.
    m_screen->date = QStringLiteral("12/31/1920");
    m_editor->cmdSave();
    EXPECT_FALSE(m_screen->closed);
    m_screen->date = QStringLiteral("1/1/1921");
    m_editor->cmdSave();
    EXPECT_TRUE(m_screen->closed);
    EXPECT_EQ(messages(), QStringLiteral("Invalid date.\nInvalid date."));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT PRCROP, IDAYIC FROM InitialConditions WHERE LNIC = 1")),
        QStringList { "WH|21001" });
}

TEST_F(InitialConditionsEditorTest, LevelsAreCopiedRenumberedAndDeletedWithTheirLayersAndSoil)
{
    run("UPDATE IC_Water_Nitrogen SET SLNO = 'North Valley silt loam (QLNV000001)', Water = 40, "
        "Nitrogen = 25 "
        "WHERE LNIC = 2; INSERT INTO ICLayers (LNIC, DLAYRI) VALUES (1, 200)");
    ASSERT_TRUE(load());
    m_screen->selectLevel(2);
    m_editor->cmdAdd_Click();
    EXPECT_EQ(m_screen->levelNumber, QStringLiteral("Level 3"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT PRCROP, ICNAME FROM InitialConditions WHERE LNIC = 3")),
        QStringList { "MZ|Block B after maize, no-till" });
    EXPECT_EQ(m_screen->layerRows().size(), 8);
    EXPECT_EQ(m_screen->soil, QStringLiteral("North Valley silt loam (QLNV000001)"));
    EXPECT_EQ(m_screen->water, QStringLiteral("40"));
    // Layers without ammonium go whatever their level.
    EXPECT_EQ(database::scalar(
                  QStringLiteral("SELECT COUNT(*) FROM ICLayers WHERE LNIC = 1 AND DLAYRI = 200"))
                  .toInt(),
        0);

    // A number in use is refused; a free one carries the level's layers,
    // soil and treatments.
    m_screen->selectLevel(1);
    m_ui.clear();
    m_screen->levels.store(m_screen->levelRow, 0, QStringLiteral("3"));
    EXPECT_EQ(messages(), QStringLiteral("This level already exists. Please change the level."));
    m_screen->levels.store(m_screen->levelRow, 0, QStringLiteral("7"));
    EXPECT_EQ(m_screen->levelNumber, QStringLiteral("Level 7"));
    EXPECT_EQ(
        database::scalar(QStringLiteral("SELECT COUNT(*) FROM ICLayers WHERE LNIC = 7")).toInt(),
        7);
    EXPECT_EQ(
        database::scalar(QStringLiteral("SELECT COUNT(*) FROM Treatments WHERE LNIC = 7")).toInt(),
        10);
    EXPECT_EQ(database::rowCount(QStringLiteral("IC_Water_Nitrogen")), 3);

    // A level in use shows the deletion warning; a free one asks first.
    m_ui.clear();
    m_editor->CmdDelete_Click();
    EXPECT_EQ(m_ui.messages.front().title, QStringLiteral("Deletion Warning"));
    m_screen->selectLevel(3);
    m_ui.clear();
    m_ui.answers.push_back(MsgAnswer::Yes);
    m_editor->CmdDelete_Click();
    EXPECT_EQ(messages(),
        QStringLiteral("There is soil layers information available for the level 3.\nDo you still "
                       "want to delete the level?"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNIC FROM InitialConditions ORDER BY LNIC")),
        (QStringList { "2", "7" }));
    EXPECT_EQ(
        database::scalar(QStringLiteral("SELECT COUNT(*) FROM IC_Water_Nitrogen WHERE LNIC = 3"))
            .toInt(),
        0);
}

TEST_F(InitialConditionsEditorTest, LayersAreCopiedKeptUniqueAndDeletedToTheLast)
{
    ASSERT_TRUE(load());
    m_screen->layerRow = 1;
    m_editor->cmdAddLayers();
    EXPECT_EQ(
        m_screen->layerRows().mid(1, 2), (QStringList { "30|0.27|0.6|6.5", "30|0.27|0.6|6.5" }));
    // The user is on the copy, whose depth must be one the level hasn't got.
    const int copy = m_screen->layerRow;
    EXPECT_EQ(m_screen->currentLayerRow(),
        database::scalar(QStringLiteral("SELECT MAX(rowid) FROM ICLayers")).toLongLong());
    m_screen->typeLayer(copy, 0, QStringLiteral("60"));
    EXPECT_EQ(messages(), QStringLiteral("Depth has to be unique. Change depth"));
    m_screen->typeLayer(copy, 0, QStringLiteral("45"));
    EXPECT_EQ(m_screen->layerRows().value(copy), QStringLiteral("45|0.27|0.6|6.5"));

    // No more than 20 layers.
    run("INSERT INTO ICLayers (LNIC, DLAYRI) SELECT 1, DLAYRI + 1000 FROM ICLayers WHERE LNIC = 1;"
        "INSERT INTO ICLayers (LNIC, DLAYRI) SELECT 1, DLAYRI + 2000 FROM ICLayers WHERE LNIC = 1 "
        "AND DLAYRI BETWEEN 1000 AND 1060");
    ASSERT_EQ(
        database::scalar(QStringLiteral("SELECT COUNT(*) FROM ICLayers WHERE LNIC = 1")).toInt(),
        20);
    m_ui.clear();
    m_editor->cmdAddLayers();
    EXPECT_EQ(
        messages(), QStringLiteral("The number of Initial Condition layers should not exceed 20."));

    m_ui.clear();
    m_screen->selectLevel(1);
    m_screen->layerRow = 0;
    m_ui.answers.push_back(MsgAnswer::No);
    m_editor->cmdDeleteLayers();
    EXPECT_EQ(messages(), QStringLiteral("Are you sure you want to delete a layer with depth 15?"));
    EXPECT_EQ(m_ui.messages.front().buttons, MsgButtons::YesNoDefaultNo);
    m_ui.clear();
    m_screen->layerRow = 20; // the new row
    m_editor->cmdDeleteLayers();
    EXPECT_EQ(messages(), QStringLiteral("Depth is not valid."));

    // The only layer of a level stays, without a word.
    m_ui.clear();
    run("DELETE FROM ICLayers WHERE LNIC = 2 AND DLAYRI > 5");
    m_screen->selectLevel(2);
    m_editor->cmdDeleteLayers();
    EXPECT_TRUE(m_ui.messages.empty());
    EXPECT_EQ(m_screen->layerRows(), QStringList { "5|0.3|1.1|9.5" });
}

TEST_F(InitialConditionsEditorTest, RecalculateChecksTheSoilAndBoxesItNeeds)
{
    ASSERT_TRUE(load());
    const QString soil = QStringLiteral("North Valley silt loam (QLNV000001)");
    struct Case {
        Recalculation which;
        const char* soil;
        const char* water;
        const char* nitrogen;
        const char* message;
    };
    const Case cases[] = {
        { Recalculation::All, "", "50", "30", "Please select a soil." },
        { Recalculation::All, "North Valley silt loam (QLNV000001)", "", "30",
            "Please enter Water and Nitrogen into the corresponding text boxes." },
        { Recalculation::Nitrogen, "North Valley silt loam (QLNV000001)", "50", "",
            "Please enter Water and Nitrogen into the corresponding text boxes." },
        { Recalculation::Water, "North Valley silt loam (QLNV000001)", "abc", "",
            "Invalid entry." },
        { Recalculation::All, "North Valley silt loam (QLNV000001)", "150", "30",
            "Invalid entry." },
        { Recalculation::All, "Unknown (NOSUCH0001)", "50", "30",
            "No data available for this soil profile. Please select another profile." },
    };
    const QStringList layers = m_screen->layerRows();
    for (const Case& c : cases) {
        m_ui.clear();
        m_screen->soil = QLatin1String(c.soil);
        m_screen->showWaterNitrogen(QLatin1String(c.water), QLatin1String(c.nitrogen));
        m_editor->cmdRecalculate_Click(c.which);
        EXPECT_EQ(messages(), QLatin1String(c.message)) << c.water;
        EXPECT_EQ(m_screen->layerRows(), layers);
    }
    EXPECT_TRUE(m_screen->waterFocused);

    // The water alone needs no nitrogen; the profile has 7 layers like the level.
    m_ui.clear();
    m_screen->soil = soil;
    m_screen->showWaterNitrogen(QStringLiteral("50"), QString());
    m_editor->cmdRecalculate_Click(Recalculation::Water);
    EXPECT_EQ(m_screen->layerRows().value(0), QStringLiteral("15|0.22|0.8|8.2"));
    m_screen->showWaterNitrogen(QStringLiteral("100"), QStringLiteral("45"));
    m_editor->cmdRecalculate_Click(Recalculation::All);
    EXPECT_EQ(m_screen->layerRows().value(6), QStringLiteral("180|0.31|0.2|1.5"));
    EXPECT_TRUE(m_ui.messages.empty()) << messages().toStdString();

    // Choosing a soil shows the level's stored numbers again.
    m_screen->showWaterNitrogen(QStringLiteral("1"), QStringLiteral("2"));
    m_editor->DBComboSLNO_Change();
    EXPECT_EQ(m_screen->water + '|' + m_screen->nitrogen, QStringLiteral("100|45"));
}

TEST_F(InitialConditionsEditorTest, CancelRestoresEveryTableTheEditorTouched)
{
    // The soils as the menu handler leaves them, taken before it runs.
    ASSERT_TRUE(load());
    m_editor->cmdSave();
    const QStringList before = tables();
    ASSERT_TRUE(load());
    m_screen->soil = QStringLiteral("North Valley silt loam (QLNV000001)");
    m_screen->showWaterNitrogen(QStringLiteral("70"), QStringLiteral("60"));
    m_editor->cmdRecalculate_Click(Recalculation::All);
    m_editor->cmdAdd_Click();
    m_screen->selectLevel(1);
    m_screen->levels.store(m_screen->levelRow, 0, QStringLiteral("9"));
    m_editor->txtBox_Validate(QStringLiteral("ICRES"), QStringLiteral("10"));
    exec(QStringLiteral("DELETE FROM ICSoil"));
    ASSERT_NE(tables(), before);

    m_editor->cmdCancel_Click();
    EXPECT_TRUE(m_screen->closed);
    EXPECT_EQ(tables(), before);
    EXPECT_TRUE(database::relationExists(QStringLiteral("ICTreatment")));
    EXPECT_FALSE(database::tableExists(QStringLiteral("BackUp2")));
    EXPECT_TRUE(m_ui.messages.empty()) << messages().toStdString();
}

} // namespace
} // namespace quillon::test
