// The treatment table, run headless on the sample maize and sequence
// experiments: its routines, typing rules and exact messages, through a
// window without widgets.

#include "editors/TreatmentEditor.h"
#include "app/AppState.h"
#include "database/Sql.h"
#include "editors/EditorFixture.h"
#include "editors/EditorForms.h"
#include "support/FakeTreatmentScreen.h"

#include <gtest/gtest.h>

#include <memory>

namespace quillon::test {
namespace {

using namespace editors;
using database::exec;

const QString allColumns = QStringLiteral("TRTNO, ROTNO, ROTOPT, CRPNO, TITLET, LNCU, LNFLD, LNSA, "
                                          "LNIC, LNPLT, LNIR, LNFER, LNRES, LNCHE, LNTIL, LNENV, "
                                          "LNHAR, LNSIM");

QStringList treatments()
{
    return rowsOf(QStringLiteral("SELECT %1 FROM Treatments ORDER BY rowid").arg(allColumns));
}

QString treatment(int number, int rotation = 1)
{
    return rowsOf(QStringLiteral("SELECT %1 FROM Treatments WHERE TRTNO = %2 AND ROTNO = %3")
                      .arg(allColumns)
                      .arg(number)
                      .arg(rotation))
        .value(0);
}

class TreatmentEditorTest : public EditorTest {
protected:
    void load(const QString& file = QStringLiteral("Maize/QLNV2101.MZX"))
    {
        open(file);
        start();
    }
    // View > Treatments on the experiment as it stands.
    void start()
    {
        m_editor = std::make_unique<TreatmentEditor>(m_screen);
        m_screen.editor = m_editor.get();
        ASSERT_TRUE(mnuViewTreatments_Click());
        m_editor->Form_Load();
    }
    SqlGridModel& grid() { return m_editor->DatTreatment(); }
    int columnOf(const char* field)
    {
        for (int column = 0; column < grid().columnCount(); ++column) {
            if (grid().columnName(column) == QLatin1String(field))
                return column;
        }
        return -1;
    }

    FakeTreatmentScreen m_screen;
    std::unique_ptr<TreatmentEditor> m_editor;
};

TEST_F(TreatmentEditorTest, OpensOnTheTableAndClosingCommits)
{
    load();
    EXPECT_TRUE(m_host.calls.contains(QStringLiteral("closeEditors")));
    EXPECT_TRUE(isOpen(EditorForm::frmViewTreatments));
    EXPECT_EQ(m_screen.caption, QStringLiteral("Treatments (experimental) - QLNV2101.MZX"));
    EXPECT_TRUE(m_screen.buttons);
    EXPECT_EQ(m_screen.row, 0);
    QStringList captions;
    for (int column = 0; column < grid().columnCount(); ++column)
        captions << grid().headerData(column, Qt::Horizontal).toString();
    EXPECT_EQ(captions.join('|'),
        "Level|Description|Cultivar|Field|Soil. Anal.|Init. Cond.|Plant.|Irrigat.|Fertil.|"
        "Resid.|Chem. App.|Tillage|Env. Mod.|Harv.|Sim. Contr.");
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT %1 FROM BackUp").arg(allColumns)), treatments());

    // The close box saves.
    state().FileSaved = true;
    m_screen.closeWindow();
    EXPECT_FALSE(state().FileSaved);
    EXPECT_FALSE(isOpen(EditorForm::frmViewTreatments));
    EXPECT_FALSE(database::tableExists(QStringLiteral("BackUp")));
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(TreatmentEditorTest, NewFileNeedsACultivarAndGivesItToTheFirstTreatment)
{
    open(QStringLiteral("Maize/QLNV2101.MZX"));
    exec(QStringLiteral("UPDATE Treatments SET LNCU = NULL"));
    exec(QStringLiteral("DELETE FROM Cultivars"));
    state().IsNewFile = true;
    EXPECT_FALSE(mnuViewTreatments_Click());
    EXPECT_EQ(m_ui.texts(), QStringList { "Please select Cultivar." });
    EXPECT_FALSE(m_host.calls.contains(QStringLiteral("closeEditors")));

    exec(QStringLiteral("INSERT INTO Cultivars (LNCU, CNAME) VALUES (2, 'Late')"));
    EXPECT_TRUE(mnuViewTreatments_Click());
    // Only the first treatment gets the cultivar.
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT IFNULL(LNCU, 0) FROM Treatments ORDER BY rowid"))
                  .mid(0, 3)
                  .join(','),
        "2,0,0");
}

TEST_F(TreatmentEditorTest, AddCopiesTheCurrentTreatmentAndDeleteKeepsTheLastOne)
{
    open(QStringLiteral("Maize/QLNV2101.MZX"));
    exec(QStringLiteral("DELETE FROM Treatments WHERE TRTNO > 2"));
    start();
    m_screen.row = 1; // treatment 2, without irrigation
    const QString source = treatment(2);
    ASSERT_TRUE(source.contains("|NULL|")) << source.toStdString();
    m_editor->cmdAdd_Click();
    EXPECT_EQ(m_screen.row, 2);
    EXPECT_EQ(treatment(3), source.section('|', 1).prepend("3|"));
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();

    m_ui.answers = { MsgAnswer::No, MsgAnswer::Yes, MsgAnswer::Yes };
    for (int i = 0; i < 3; ++i)
        m_editor->cmdDelete();
    EXPECT_EQ(m_ui.texts().join('|'),
        "Are you sure you want to delete level 3?|Are you sure you want to delete level 3?|"
        "Are you sure you want to delete level 2?");
    m_ui.clear();
    m_editor->cmdDelete();
    EXPECT_EQ(rowsOf("SELECT TRTNO FROM Treatments"), QStringList { "1" });
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(TreatmentEditorTest, SequenceFileAddsTheNextRotationAndDeletesOneStep)
{
    open(QStringLiteral("Sequence/QLNV1901.SQX"));
    exec(QStringLiteral("DELETE FROM Treatments WHERE ROTNO = 3"));
    start();
    EXPECT_EQ(grid().headerData(1, Qt::Horizontal).toString(), "Rot. Num.");
    EXPECT_EQ(grid().headerData(3, Qt::Horizontal).toString(), "Crop Comp. Number");
    EXPECT_EQ(grid().headerData(4, Qt::Horizontal).toString(), "Description");

    // Adding from rotation 1 of rotations 1 and 2 copies it as rotation 3.
    m_screen.row = 0;
    const QString first = treatment(1, 1);
    m_editor->cmdAdd_Click();
    EXPECT_EQ(
        rowsOf("SELECT TRTNO, ROTNO FROM Treatments ORDER BY rowid").join(','), "1|1,1|2,1|3");
    EXPECT_EQ(treatment(1, 3).section('|', 2), first.section('|', 2));

    m_ui.answers = { MsgAnswer::Yes };
    m_screen.row = 1;
    m_editor->cmdDelete();
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].text, "Are you sure you want to delete Level 1,Rotation Number 2?");
    EXPECT_EQ(m_ui.messages[0].buttons, MsgButtons::YesNoDefaultNo);
    EXPECT_EQ(rowsOf("SELECT ROTNO FROM Treatments ORDER BY rowid").join(','), "1,3");

    // The button of the residue column opens no list; a move there does.
    m_screen.column = 12;
    m_editor->DBGrdTreatment_ButtonClick();
    EXPECT_FALSE(m_screen.listShown);
    m_screen.moveTo(0, 12);
    EXPECT_TRUE(m_screen.listShown);
    EXPECT_EQ(m_editor->CurrentColumnField(), "LNRES");

    // Rotation columns take whole numbers; a rotation in use puts the old
    // one back.
    m_ui.clear();
    m_editor->DBGrdTreatment_Change(0, 1, "3");
    m_editor->DBGrdTreatment_Change(0, 2, "2.6");
    m_editor->DBGrdTreatment_Change(0, 3, "1.4");
    EXPECT_EQ(treatment(1, 1).section('|', 0, 3), "1|1|3|1");
    m_editor->DBGrdTreatment_Change(0, 2, "99999");
    EXPECT_EQ(m_ui.texts(), QStringList { "Overflow in Treatment table." });
}

TEST_F(TreatmentEditorTest, TypingRules)
{
    struct Case {
        const char* field;
        const char* typed;
        const char* stored; // in treatment 1's row afterwards
        const char* message; // "" for none
    };
    const Case cases[] = {
        { "TITLET", "A description of thirty chars", "A description of thirty c", "" },
        { "TRTNO", "20", "20", "" },
        { "TRTNO", " 20.0 ", "20", "" },
        // A number in use puts the old one back, silently.
        { "TRTNO", "2", "1", "" },
        { "TRTNO", "abc", "1", "Invalid entry." },
        { "TRTNO", "2.5", "1", "Invalid entry." },
        { "TRTNO", "99999", "1", "Invalid treatment level." },
        // Only the list sets a level: typing blanks the cell.
        { "LNCU", "2", "NULL", "" },
        { "LNSIM", "", "NULL", "" },
    };
    load();
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.field) + " <- " + c.typed);
        m_ui.clear();
        const qint64 id = grid().rowId(0);
        m_editor->DBGrdTreatment_Change(0, columnOf(c.field), QLatin1String(c.typed));
        EXPECT_EQ(
            rowsOf(QStringLiteral("SELECT IFNULL(%1, 'NULL') FROM Treatments WHERE rowid = %2")
                       .arg(QLatin1String(c.field))
                       .arg(id)),
            QStringList { QLatin1String(c.stored) });
        EXPECT_EQ(m_ui.texts().join('|'), QLatin1String(c.message));
        exec(QStringLiteral("DELETE FROM Treatments"));
        exec(QStringLiteral("INSERT INTO Treatments (%1) SELECT %1 FROM BackUp").arg(allColumns));
        grid().requery();
    }
}

TEST_F(TreatmentEditorTest, ListsOfferTheLevelsAndNoneWhereAFactorMayBeMissingAndAPickStoresIt)
{
    load();
    struct Case {
        const char* field;
        const char* first;
        int levels;
        bool none;
    };
    const Case cases[] = {
        { "LNCU", "1 - Northfield 105", 2, false },
        { "LNSIM", "1 - REPORTED MANAGEMENT", 2, false },
        { "LNIR", "1 - Full sprinkler irrigation", 3, true },
        { "LNENV", "1 - CO2 enriched to 550 vpm", 2, true },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.field);
        const QStringList items = m_editor->FillListBox(3, columnOf(c.field));
        EXPECT_EQ(items.value(0), QLatin1String(c.first));
        EXPECT_EQ(items.size(), c.levels + (c.none ? 1 : 0));
        EXPECT_EQ(items.contains("NONE"), c.none);
        EXPECT_EQ(m_editor->CurrentColumnField(), QLatin1String(c.field));
    }
    EXPECT_EQ(m_editor->CurrentTRTNO(), 4);
    EXPECT_EQ(m_editor->CurrentROTNO(), QVariant(1));

    // A move onto a factor opens its list with the row's level chosen; the
    // cell's button closes and opens it; a pick stores the level.
    const int fertilizer = columnOf("LNFER");
    m_screen.moveTo(1, fertilizer); // treatment 2 has fertilizer level 1
    ASSERT_TRUE(m_screen.listShown);
    EXPECT_EQ(m_screen.list.value(m_screen.selected), "1 - 90 kg N/ha as urea before planting");
    m_editor->DBGrdTreatment_ButtonClick();
    EXPECT_FALSE(m_screen.listShown);
    m_editor->DBGrdTreatment_ButtonClick();
    ASSERT_TRUE(m_screen.listShown);

    m_editor->List1_Click(m_screen.list.value(1));
    EXPECT_FALSE(m_screen.listShown);
    EXPECT_EQ(m_screen.row, 1);
    EXPECT_EQ(treatment(2).section('|', 11, 11), "2");
    m_editor->List1_Click("NONE");
    EXPECT_EQ(treatment(2).section('|', 11, 11), "NULL");
    EXPECT_EQ(grid().text(1, fertilizer), "");

    m_screen.moveTo(1, 1);
    EXPECT_FALSE(m_screen.listShown);
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
}

TEST_F(TreatmentEditorTest, CancelAndEscPutTheTableBackExactly)
{
    load();
    const QStringList before = treatments();
    m_screen.row = 2;
    m_editor->cmdAdd_Click();
    m_ui.answers = { MsgAnswer::Yes };
    m_screen.row = 0;
    m_editor->cmdDelete();
    m_editor->DBGrdTreatment_Change(0, 1, "Changed");
    m_screen.moveTo(0, columnOf("LNCHE"));
    m_editor->List1_Click("NONE");
    ASSERT_NE(treatments(), before);

    // A failed restore leaves the window open and the table as it was.
    m_ui.clear();
    exec(QStringLiteral("ALTER TABLE BackUp RENAME TO Kept"));
    const QStringList edited = treatments();
    m_editor->Command1_Click();
    EXPECT_TRUE(m_ui.texts().value(0).endsWith(" in Command1_Click/frmFields."));
    EXPECT_FALSE(m_screen.closed);
    EXPECT_EQ(treatments(), edited);
    exec(QStringLiteral("ALTER TABLE Kept RENAME TO BackUp"));

    // Esc warns; Cancel of the warning keeps the window.
    m_ui.clear();
    m_ui.answers = { MsgAnswer::Cancel, MsgAnswer::OK };
    m_editor->escapePressed();
    EXPECT_FALSE(m_screen.closed);
    m_editor->escapePressed();
    ASSERT_EQ(m_ui.messages.size(), 2u);
    EXPECT_EQ(m_ui.messages[1].text, "New data will not be saved.");
    EXPECT_EQ(m_ui.messages[1].title, "Warning");
    EXPECT_EQ(m_ui.messages[1].buttons, MsgButtons::OKCancel);
    EXPECT_TRUE(m_screen.closed);
    EXPECT_EQ(treatments(), before);
    EXPECT_FALSE(isOpen(EditorForm::frmViewTreatments));
    EXPECT_FALSE(database::tableExists(QStringLiteral("BackUp")));
}

} // namespace
} // namespace quillon::test
