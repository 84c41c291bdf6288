// The soil analysis editor, run headless on the sample maize experiment: the
// method codes, the date, levels and layers edited in place, and Cancel.

#include "editors/SoilAnalysisEditor.h"
#include "app/AppState.h"
#include "database/Relations.h"
#include "database/Sql.h"
#include "editors/EditorFixture.h"
#include "editors/EditorForms.h"
#include "support/FakeSoilAnalysisScreen.h"

#include <gtest/gtest.h>

namespace quillon::test {
namespace {

using namespace editors;
using database::exec;

class SoilAnalysisEditorTest : public EditorTest {
protected:
    void SetUp() override
    {
        EditorTest::SetUp();
        open(QStringLiteral("Maize/QLNV2101.MZX"));
        m_screen.attach(m_editor);
    }

    bool load()
    {
        if (!mnuEditSoil_Click())
            return false;
        m_editor.Form_Load();
        return true;
    }
    static QStringList analyses()
    {
        return rowsOf(QStringLiteral("SELECT * FROM SoilAnalysis ORDER BY LNSA"));
    }
    static QStringList layers()
    {
        return rowsOf(QStringLiteral("SELECT * FROM SoilLayers ORDER BY rowid"));
    }

    FakeSoilAnalysisScreen m_screen;
    SoilAnalysisEditor m_editor { m_screen };
};

TEST_F(SoilAnalysisEditorTest, OpensWithTheMethodsSplitInThreeAndOkKeepsTheTables)
{
    const QStringList before = analyses();
    const QStringList layersBefore = layers();
    ASSERT_TRUE(load());
    EXPECT_TRUE(isOpen(EditorForm::frmSoilAnalysis));
    EXPECT_EQ(m_screen.caption, QStringLiteral("Soil Analysis (experimental) - QLNV2101.MZX"));
    EXPECT_EQ(m_screen.levelCaptions, (QStringList { "Level", "Description" }));
    EXPECT_EQ(
        m_screen.layerCaptions.value(7), QStringLiteral("Potassium, exchange- able, cmol kg-1"));
    EXPECT_EQ(m_screen.methodChoices["SMHB"],
        (QStringList { "pH in 0.01 M calcium chloride", "pH in water, 1:1" }));
    EXPECT_EQ(m_screen.methodChoices["SMPX"].size(), 10);
    EXPECT_EQ(m_screen.methodChoices["SMKE"].size(), 3);
    EXPECT_EQ(m_screen.methods["SMHB"], QStringLiteral("pH in water, 1:1"));
    EXPECT_EQ(m_screen.methods["SMPX"], QStringLiteral("Phosphorus, Bray no. 1 extract"));
    EXPECT_EQ(m_screen.methods["SMKE"], QStringLiteral("Potassium, ammonium acetate exchangeable"));
    EXPECT_EQ(m_screen.date, QStringLiteral("4/5/2021"));
    EXPECT_EQ(m_screen.levelNumber, QStringLiteral("Level 1"));
    EXPECT_EQ(m_screen.layers.rows().value(0), QStringLiteral("15|1.3|2.1|0.18|6.4||28.5|0.4|1.1"));
    EXPECT_TRUE(m_screen.years.contains(QStringLiteral("2021")));
    m_screen.selectLevel(2);
    EXPECT_EQ(m_screen.layers.rows().size(), 3);
    EXPECT_EQ(m_screen.methods["SMKE"], QStringLiteral("Potassium, Mehlich 3 extract"));

    m_editor.cmdOK_Click();
    EXPECT_TRUE(m_screen.closed);
    EXPECT_FALSE(state().FileSaved);
    EXPECT_EQ(analyses(), before);
    EXPECT_EQ(layers(), layersBefore);
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();

    // Opening again finds the code table split already; the split stays.
    const QStringList codes = rowsOf(
        QStringLiteral("SELECT Code, Type FROM CodeLookup WHERE Code LIKE 'SA%' ORDER BY Code"));
    m_screen.closed = false;
    ASSERT_TRUE(load());
    EXPECT_EQ(rowsOf(QStringLiteral(
                  "SELECT Code, Type FROM CodeLookup WHERE Code LIKE 'SA%' ORDER BY Code")),
        codes);
    EXPECT_EQ(codes.value(10), QStringLiteral("SA011|Methods - Soil Analysis2"));
    EXPECT_EQ(codes.value(14), QStringLiteral("SA015|Methods - Soil Analysis3"));
    EXPECT_TRUE(
        rowsOf(QStringLiteral("SELECT 1 FROM CodeLookup WHERE Type = 'Methods - Soil Analysis'"))
            .isEmpty());
}

TEST_F(SoilAnalysisEditorTest, TheAnalysisDateIsADateOfTheYears1921To3000OrNone)
{
    ASSERT_TRUE(load());
    struct Case {
        const char* typed;
        bool accepted;
        const char* stored;
    };
    const Case cases[] = {
        { "5/1/2022", true, "22121" },
        { "13/45/2021", false, "22121" },
        { "12/31/1920", false, "22121" },
        { "1/1/1921", true, "21001" },
        { "", true, "NULL" },
    };
    for (const Case& c : cases) {
        m_ui.clear();
        EXPECT_EQ(m_screen.typeDate(QLatin1String(c.typed)), c.accepted) << c.typed;
        EXPECT_EQ(m_ui.texts(), c.accepted ? QStringList() : QStringList { "Invalid date." })
            << c.typed;
        EXPECT_EQ(
            rowsOf(QStringLiteral("SELECT IFNULL(SADAT, 'NULL') FROM SoilAnalysis WHERE LNSA = 1")),
            QStringList { QLatin1String(c.stored) })
            << c.typed;
    }
    // OK checks the date once more and stays open on a bad one.
    m_ui.clear();
    m_screen.date = QStringLiteral("2/30/2021");
    m_editor.cmdOK_Click();
    EXPECT_EQ(m_ui.texts(), QStringList { "Invalid date." });
    EXPECT_EQ(m_ui.messages.at(0).title, QStringLiteral("Error"));
    EXPECT_FALSE(m_screen.closed);

    m_editor.MethodCombo_Click(
        QStringLiteral("SMPX"), QStringLiteral("Phosphorus, Mehlich 3 extract"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT SMPX FROM SoilAnalysis WHERE LNSA = 1")),
        QStringList { "SA005" });
}

TEST_F(SoilAnalysisEditorTest, AddCopiesALevelWithItsLayersOrALayerBesideItself)
{
    ASSERT_TRUE(load());
    m_editor.cmdAdd1_Click();
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM SoilAnalysis WHERE LNSA = 3")),
        QStringList { "3|21095|SA011|SA001|SA013|Spring sampling, block A" });
    EXPECT_EQ(m_screen.levelNumber, QStringLiteral("Level 3"));
    EXPECT_EQ(m_screen.layers.rows(),
        rowsOf(QStringLiteral("SELECT SABL, SADM, SAOC, SANI, SAPHW, IFNULL(SAPHB, ''), "
                              "SAPX, SAKE, SASC FROM SoilLayers WHERE LNSA = 1 ORDER BY SABL")));

    // A copy of a layer, found through an empty density as well.
    exec(QStringLiteral("UPDATE SoilLayers SET SADM = NULL WHERE LNSA = 3 AND SABL = 30"));
    m_screen.selectLevel(3);
    m_screen.layers.row = 1;
    m_editor.cmdAdd2_Click();
    EXPECT_EQ(m_screen.layers.rows().value(2), m_screen.layers.rows().value(1));
    EXPECT_EQ(m_screen.layers.rows().value(2), QStringLiteral("30||1.6|0.14|6.5||14|0.3|0.95"));
    EXPECT_EQ(m_screen.layers.rows().size(), 5);
    EXPECT_EQ(m_screen.layers.value(0).toInt(), 30);

    // A level without layers can't be copied.
    exec(QStringLiteral("DELETE FROM SoilLayers WHERE LNSA = 3"));
    m_editor.cmdAdd1_Click();
    EXPECT_EQ(m_ui.texts(), QStringList { "Please add soil layers." });
    EXPECT_EQ(database::rowCount(QStringLiteral("SoilAnalysis")), 3);
    // Its first layer is added empty.
    m_ui.clear();
    m_screen.selectLevel(3);
    m_editor.cmdAdd2_Click();
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT COUNT(*) FROM SoilLayers WHERE LNSA = 3")),
        QStringList { "1" });
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(SoilAnalysisEditorTest, DeletingAsksAndKeepsWhatATreatmentUses)
{
    ASSERT_TRUE(load());
    m_editor.cmdDelete1_Click();
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_TRUE(m_ui.messages[0].text.endsWith(QStringLiteral(
        "Treatment 1, 2, 3, 4, 5, 6, 7, 8, 10, 11 is currently using this Harvest level")))
        << m_ui.messages[0].text.toStdString();

    m_ui.clear();
    m_ui.answers = { MsgAnswer::No, MsgAnswer::Yes };
    for (int i = 0; i < 2; ++i) {
        m_screen.layers.row = 0;
        m_editor.cmdDelete2_Click();
    }
    EXPECT_EQ(m_ui.texts(),
        QStringList(2, QStringLiteral("Are you sure you want to delete a layer with depth 15?")));
    EXPECT_EQ(m_ui.messages[0].buttons, MsgButtons::YesNoDefaultNo);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT SABL FROM SoilLayers WHERE LNSA = 1 ORDER BY SABL")),
        (QStringList { "30", "60", "90" }));

    // The grid's new row has no depth to name.
    m_ui.clear();
    m_screen.layers.goToLast();
    m_screen.layers.row += 1;
    m_editor.cmdDelete2_Click();
    EXPECT_EQ(m_ui.texts(), QStringList { "Invalid date." });
    EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Error"));

    m_ui.clear();
    exec(QStringLiteral("UPDATE Treatments SET LNSA = 1"));
    m_screen.selectLevel(2);
    m_ui.answers = { MsgAnswer::Yes };
    m_editor.cmdDelete1_Click();
    EXPECT_EQ(m_ui.texts(), QStringList { "Are you sure you want to delete level 2?" });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT DISTINCT LNSA FROM SoilLayers")), QStringList { "1" });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNSA FROM SoilAnalysis")), QStringList { "1" });
    EXPECT_EQ(m_screen.levelNumber, QStringLiteral("Level 1"));
}

TEST_F(SoilAnalysisEditorTest, AFileWithoutSoilAnalysisGetsLevelOneThatCancelTakesAway)
{
    struct Case {
        const char* setup;
        const char* simulationDate;
        const char* message; // nullptr: the editor opens
        const char* date;
    };
    const Case cases[] = {
        { "UPDATE Planting SET YRPLT = NULL; UPDATE Fields SET WSTA = NULL", "-99",
            "Please enter the Field information.", nullptr },
        { "UPDATE Planting SET YRPLT = NULL", "-99",
            "Please enter planting date or date to start simulation.", nullptr },
        { "", "21090", nullptr, "21090" },
        { "", "-99", nullptr, "21121" },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.setup);
        open(QStringLiteral("Maize/QLNV2101.MZX"));
        m_host.calls.clear();
        m_screen.closed = false;
        exec(QStringLiteral("UPDATE Treatments SET LNSA = NULL"));
        exec(QStringLiteral("DELETE FROM SoilLayers"));
        exec(QStringLiteral("DELETE FROM SoilAnalysis"));
        for (const QString& sql : QString::fromLatin1(c.setup).split(';', Qt::SkipEmptyParts))
            exec(sql);
        state().SimulationDate = QLatin1String(c.simulationDate);
        EXPECT_EQ(load(), !c.message);
        EXPECT_EQ(
            m_ui.texts(), c.message ? QStringList { QLatin1String(c.message) } : QStringList());
        EXPECT_EQ(m_host.calls.contains(QStringLiteral("reopen:frmFields")),
            c.message && QLatin1String(c.message).contains(QLatin1String("Field")));
        if (!c.message) {
            EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNSA, SADAT FROM SoilAnalysis")),
                QStringList { QStringLiteral("1|") + QLatin1String(c.date) });
            EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNSA, IFNULL(SABL, 'NULL') FROM SoilLayers")),
                QStringList { "1|NULL" });
            m_editor.cmdCancel_Click();
            EXPECT_EQ(database::rowCount(QStringLiteral("SoilAnalysis")), 0);
            EXPECT_EQ(database::rowCount(QStringLiteral("SoilLayers")), 0);
        }
        m_ui.clear();
    }
}

TEST_F(SoilAnalysisEditorTest, CancelPutsLevelsLayersAndRenumberedTreatmentsBack)
{
    const QStringList before = analyses();
    const QStringList layersBefore = layers();
    const QStringList treatments
        = rowsOf(QStringLiteral("SELECT LNSA FROM Treatments ORDER BY rowid"));
    ASSERT_TRUE(load());
    EXPECT_EQ(m_screen.typeLevel(0, QStringLiteral("6")).number(), 0);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT DISTINCT LNSA FROM SoilLayers ORDER BY 1")),
        (QStringList { "2", "6" }));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT DISTINCT LNSA FROM Treatments ORDER BY 1")),
        (QStringList { "2", "6" }));
    EXPECT_EQ(m_screen.levelNumber, QStringLiteral("Level 6"));
    // A level number in use, or no number, is refused.
    for (const char* typed : { "2", "x" }) {
        m_ui.clear();
        m_screen.typeLevel(0, QLatin1String(typed));
        EXPECT_EQ(m_ui.texts(), QStringList { "Invalid entry." }) << typed;
    }
    // So is a layer value out of its rule.
    m_ui.clear();
    m_screen.typeLayer(1, QStringLiteral("1000"));
    EXPECT_EQ(m_ui.texts(), QStringList { "Invalid entry." });
    m_screen.typeLayer(2, QStringLiteral("3.5"));
    m_screen.typeDate(QStringLiteral("6/1/2021"));
    m_editor.cmdAdd1_Click();

    m_ui.clear();
    m_editor.cmdCancel_Click();
    EXPECT_TRUE(m_screen.closed);
    EXPECT_EQ(analyses(), before);
    EXPECT_EQ(layers(), layersBefore);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNSA FROM Treatments ORDER BY rowid")), treatments);
    EXPECT_TRUE(database::relationExists(QStringLiteral("SATreatment")));
    EXPECT_FALSE(database::tableExists(QStringLiteral("BackUp_Applications")));
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(SoilAnalysisEditorTest, ALayerThatCantBeStoredKeepsOkFromClosing)
{
    ASSERT_TRUE(load());
    m_screen.pending = RuntimeError(err::RowNotStored, QStringLiteral("Invalid entry."));
    m_editor.cmdOK_Click();
    EXPECT_EQ(m_ui.texts(), QStringList { "Invalid entry in SA Layers table." });
    EXPECT_FALSE(m_screen.closed);
}

} // namespace
} // namespace quillon::test
