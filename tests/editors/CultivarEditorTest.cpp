// The cultivar editor, run headless on the sample maize experiment: its
// routines, the two lists, renumbering and Cancel, with their exact
// messages.

#include "editors/CultivarEditor.h"
#include "app/AppState.h"
#include "database/Relations.h"
#include "database/Sql.h"
#include "editors/EditorFixture.h"
#include "editors/EditorForms.h"
#include "support/FakeCultivarScreen.h"

#include <QFile>

#include <gtest/gtest.h>

#include <memory>

namespace quillon::test {
namespace {

using namespace editors;
using database::exec;

QStringList cultivars()
{
    return rowsOf(QStringLiteral("SELECT * FROM Cultivars ORDER BY rowid"));
}

QStringList cultivarLevels()
{
    return rowsOf(QStringLiteral("SELECT TRTNO, LNCU FROM Treatments ORDER BY rowid"));
}

class CultivarEditorTest : public EditorTest {
protected:
    void load()
    {
        open(QStringLiteral("Maize/QLNV2101.MZX"));
        start();
    }
    // Edit > Cultivars on the experiment as it stands.
    void start()
    {
        m_editor = std::make_unique<CultivarEditor>(m_screen);
        m_screen.editor = m_editor.get();
        ASSERT_TRUE(mnuEditCultivar_Click());
        m_editor->Form_Load();
    }
    QString row(int r)
    {
        SqlGridModel& grid = m_editor->Data1();
        return grid.text(r, 0) + '|' + grid.text(r, 1) + '|' + grid.text(r, 2);
    }
    RuntimeError typeLevel(int r, const QString& typed)
    {
        m_screen.row = r;
        return m_editor->Data1().store(r, 0, typed);
    }

    FakeCultivarScreen m_screen;
    std::unique_ptr<CultivarEditor> m_editor;
};

TEST_F(CultivarEditorTest, OpensOnTheLevelsWithTheirCropAndCultivarChosen)
{
    // The picture of a crop is its code and "2.jpg" in the program's folder.
    QFile picture(path(QStringLiteral("MZ2.jpg")));
    ASSERT_TRUE(picture.open(QIODevice::WriteOnly));
    picture.close();
    load();
    EXPECT_TRUE(m_host.calls.contains(QStringLiteral("closeEditors")));
    EXPECT_FALSE(state().NewLevelCreated);
    EXPECT_TRUE(isOpen(EditorForm::frmCult1));
    EXPECT_EQ(m_screen.caption, "Cultivars (experimental) - QLNV2101.MZX");
    QStringList captions;
    for (int column = 0; column < 3; ++column)
        captions << m_editor->Data1().headerData(column, Qt::Horizontal).toString();
    EXPECT_EQ(captions.join('|'), "Level|Crop|Cultivar");
    EXPECT_EQ(row(0), "1|Maize|Northfield 105");
    EXPECT_EQ(row(1), "2|Maize|Prairie 115");
    EXPECT_EQ(m_screen.crops.join('|'), "Barley|Maize|Sorghum|Soybean|Wheat");
    EXPECT_EQ(m_screen.row, 0);
    EXPECT_EQ(m_screen.selectedCrop(), "Maize");
    EXPECT_EQ(m_screen.cultivars.first(), "Early Flint 85");
    EXPECT_EQ(m_screen.selectedCultivar(), "Northfield 105");
    EXPECT_EQ(m_screen.picture, path(QStringLiteral("MZ2.jpg")));
    EXPECT_TRUE(database::tableExists(QStringLiteral("BackUp")));

    m_screen.moveTo(1);
    EXPECT_EQ(m_screen.selectedCultivar(), "Prairie 115");

    // A level whose crop code is unknown shows with an empty crop, no crop
    // chosen, no cultivars, and the default picture.
    exec(QStringLiteral("UPDATE Cultivars SET CODE = 'ZZ' WHERE LNCU = 2"));
    m_editor->Data1().requery();
    m_screen.moveTo(1);
    EXPECT_EQ(row(1), "2||Prairie 115");
    EXPECT_EQ(m_screen.crop, -1);
    EXPECT_TRUE(m_screen.cultivars.isEmpty());
    EXPECT_EQ(m_screen.picture, path(QStringLiteral("Green.jpg")));
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(CultivarEditorTest, ACropChangeDropsTheCultivarUntilOneIsChosen)
{
    load();
    m_screen.moveTo(1);
    m_editor->ListCrop_Click(QStringLiteral("Soybean"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM Cultivars WHERE LNCU = 2")),
        QStringList { "2|SB|NULL|NULL" });
    EXPECT_EQ(m_screen.row, 1);
    EXPECT_EQ(row(1), "2|Soybean|");
    EXPECT_EQ(m_screen.selectedCrop(), "Soybean");
    EXPECT_EQ(m_screen.cultivars.join('|'), "Bluestem 2.8|Delta Run 4.5|Meadowlark 3.2|Plainsman 1.9");
    EXPECT_EQ(m_screen.cultivar, -1);

    m_editor->ListDescription_Click(QStringLiteral("Meadowlark 3.2"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM Cultivars WHERE LNCU = 2")),
        QStringList { "2|SB|QL2003|Meadowlark 3.2" });
    EXPECT_EQ(m_screen.selectedCultivar(), "Meadowlark 3.2");

    // Choosing the crop the level has changes nothing.
    m_editor->ListCrop_Click(QStringLiteral("Soybean"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT VARNO FROM Cultivars WHERE LNCU = 2")),
        QStringList { "QL2003" });

    // A crop without cultivars leaves the cultivar list empty.
    m_editor->ListCrop_Click(QStringLiteral("Barley"));
    EXPECT_EQ(row(1), "2|Barley|");
    EXPECT_TRUE(m_screen.cultivars.isEmpty());
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();

    // A typed letter goes to the first crop that begins with it, in any
    // case; a letter no crop begins with moves nothing.
    const std::pair<const char*, int> letters[]
        = { { "s", 2 }, { "W", 4 }, { "m", 1 }, { "q", -1 } };
    for (const auto& [letter, found] : letters) {
        const int before = m_screen.crop;
        EXPECT_EQ(m_editor->FindNameByLetter(QLatin1String(letter)), found) << letter;
        EXPECT_EQ(m_screen.crop, found < 0 ? before : found) << letter;
    }
    EXPECT_EQ(row(1), "2|Barley|");
}

TEST_F(CultivarEditorTest, AddDeleteAndRenumberLevelsThenCancelPutsAllBack)
{
    load();
    const QStringList before = cultivars();
    const QStringList treatmentsBefore = cultivarLevels();

    // Add copies the current level under the next number.
    m_screen.moveTo(1);
    m_editor->CmdAddCultivar_Click();
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM Cultivars WHERE LNCU = 3")),
        QStringList { "3|MZ|QL0004|Prairie 115" });
    EXPECT_EQ(m_screen.row, 2);

    // A level a treatment uses is not deleted: the warning lists the
    // treatments. An unused one goes after Yes only.
    m_screen.moveTo(1);
    m_editor->Command2_Click();
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].title, "Deletion Warning");
    EXPECT_TRUE(
        m_ui.messages[0].text.endsWith("Treatment 7 is currently using this Cultivar level"));
    m_ui.clear();
    m_screen.moveTo(2);
    m_ui.answers = { MsgAnswer::No, MsgAnswer::Yes };
    m_editor->Command2_Click();
    EXPECT_EQ(cultivars().size(), 3);
    m_editor->Command2_Click();
    EXPECT_EQ(m_ui.texts(),
        QStringList({ "Are you sure you want to delete level 3?",
            "Are you sure you want to delete level 3?" }));
    EXPECT_EQ(m_ui.messages[0].buttons, MsgButtons::YesNoDefaultNo);
    EXPECT_EQ(cultivars(), before);
    m_ui.clear();

    // Typing a free number renumbers the level and the treatments follow;
    // a number in use, or text, is refused.
    EXPECT_EQ(typeLevel(1, QStringLiteral("7")).number(), 0);
    EXPECT_EQ(
        rowsOf(QStringLiteral("SELECT TRTNO FROM Treatments WHERE LNCU = 7")), QStringList { "7" });
    typeLevel(1, QStringLiteral("1"));
    typeLevel(1, QStringLiteral("two"));
    ASSERT_EQ(m_ui.messages.size(), 2u);
    EXPECT_TRUE(m_ui.messages[0].text.endsWith(" in DBGrid1_BeforeColUpdate/frmClut1."));
    EXPECT_EQ(m_ui.messages[1].text, "Invalid entry.");
    EXPECT_EQ(m_ui.messages[1].title, "Error");
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNCU FROM Cultivars ORDER BY rowid")),
        QStringList({ "1", "7" }));
    m_editor->ListCrop_Click(QStringLiteral("Wheat"));

    state().FileSaved = true;
    m_editor->cmdCancel_Click();
    EXPECT_TRUE(m_screen.closed);
    EXPECT_FALSE(isOpen(EditorForm::frmCult1));
    EXPECT_EQ(cultivars(), before);
    EXPECT_EQ(cultivarLevels(), treatmentsBefore);
    EXPECT_TRUE(database::relationExists(QStringLiteral("CuTreatment")));
    EXPECT_FALSE(database::tableExists(QStringLiteral("BackUp")));
    EXPECT_TRUE(state().FileSaved);
}

TEST_F(CultivarEditorTest, OkAndClosingCommit)
{
    load();
    m_editor->ListCrop_Click(QStringLiteral("Sorghum"));
    state().FileSaved = true;
    // Closing the window other than by its buttons is OK.
    m_screen.closeWindow();
    EXPECT_FALSE(state().FileSaved);
    EXPECT_FALSE(isOpen(EditorForm::frmCult1));
    EXPECT_EQ(
        rowsOf(QStringLiteral("SELECT CODE FROM Cultivars WHERE LNCU = 1")), QStringList { "SG" });
}

TEST_F(CultivarEditorTest, AFileWithoutCultivarsGetsLevel1WithTheCropOfTheExperiment)
{
    open(QStringLiteral("Maize/QLNV2101.MZX"));
    database::deleteRelation(QStringLiteral("CuTreatment"));
    exec(QStringLiteral("DELETE FROM Cultivars"));
    Identification id = storedIdentification();
    id.cropCode.clear();
    m_host.window = id;

    // An experimental file needs its crop first.
    EXPECT_FALSE(mnuEditCultivar_Click());
    EXPECT_EQ(m_ui.texts(), QStringList { "Please select Crop." });
    EXPECT_TRUE(cultivars().isEmpty());
    m_ui.clear();

    m_host.window->cropCode = QStringLiteral("MZ");
    start();
    EXPECT_TRUE(state().NewLevelCreated);
    EXPECT_EQ(cultivars(), QStringList { "1|MZ|NULL|NULL" });
    EXPECT_EQ(m_screen.selectedCrop(), "Maize");
    EXPECT_EQ(m_screen.cultivars.size(), 6);
    m_editor->cmdOK_Click();

    // The other kinds of file have no crop.
    exec(QStringLiteral("DELETE FROM Cultivars"));
    state().IsExperimental = false;
    state().IsSequence = true;
    m_screen.closed = false;
    start();
    EXPECT_EQ(cultivars(), QStringList { "1|NULL|NULL|NULL" });
    EXPECT_EQ(m_screen.crop, -1);
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

} // namespace
} // namespace quillon::test
