// Opening an editor and pressing OK must not change what Save writes: for
// every sample experiment, listed from disk, each editor whose factor the
// file has is opened and closed with OK, then the treatment table with
// Save, and the file written afterwards is the file a plain open and save
// writes.

#include "app/AppState.h"
#include "database/Sql.h"
#include "editors/CultivarEditor.h"
#include "editors/EditorFixture.h"
#include "editors/EventEditor.h"
#include "editors/FieldEditor.h"
#include "editors/InitialConditionsEditor.h"
#include "editors/PlantingEditor.h"
#include "editors/SimEditor.h"
#include "editors/SoilAnalysisEditor.h"
#include "editors/TreatmentEditor.h"
#include "format/FileWriter.h"
#include "format/WriteFile.h"
#include "support/FakeCultivarScreen.h"
#include "support/FakeEventScreen.h"
#include "support/FakeFieldScreen.h"
#include "support/FakeInitialConditionsScreen.h"
#include "support/FakePlantingScreen.h"
#include "support/FakeSimScreen.h"
#include "support/FakeSoilAnalysisScreen.h"
#include "support/FakeTreatmentScreen.h"

#include <QDirIterator>
#include <QFileInfo>

#include <functional>

#include <gtest/gtest.h>

namespace quillon::test {
namespace {

using namespace editors;

QStringList sampleExperiments()
{
    const QString suite = QStringLiteral(QUILLON_SAMPLE_SUITE_DIR);
    QStringList files;
    QDirIterator it(suite, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QFileInfo info(it.next());
        if (info.suffix().size() == 3
            && info.suffix().endsWith(QLatin1Char('X'), Qt::CaseInsensitive))
            files << QDir(suite).relativeFilePath(info.absoluteFilePath());
    }
    files.sort();
    return files;
}

// An event editor opened on a factor the file has, closed with OK. False
// when the file lacks the factor: the editor would make its level 1.
bool openAndOk(const char* form)
{
    const EventMember& member = *eventMember(QLatin1String(form));
    if (database::rowCount(member.levelTable) == 0)
        return false;
    FakeEventScreen screen(member);
    EventEditor editor(member, screen);
    screen.attach(editor);
    EXPECT_TRUE(EventEditor::openEditor(member)) << form;
    editor.Form_Load();
    editor.cmdOK_Click();
    EXPECT_TRUE(screen.closed) << form;
    return true;
}

// Fakes hold their editor in one of two ways; attach() wins where a fake
// has both.
template <typename Screen, typename Editor>
auto bindScreen(Screen& screen, Editor& editor, int) -> decltype(screen.attach(editor), void())
{
    screen.attach(editor);
}
template <typename Screen, typename Editor> void bindScreen(Screen& screen, Editor& editor, long)
{
    screen.editor = &editor;
}

// An editor opened by its menu handler and closed by `ok`. With a level
// table, a file without levels is passed over (the editor would make level
// 1); without one, the menu handler decides whether the editor opens.
template <typename Editor, typename Screen>
bool openAndPress(const char* levelTable, bool (*menuHandler)(), void (Editor::*ok)())
{
    if (levelTable && database::rowCount(QLatin1String(levelTable)) == 0)
        return false;
    Screen screen;
    Editor editor(screen);
    bindScreen(screen, editor, 0);
    const bool opened = menuHandler();
    if (levelTable)
        EXPECT_TRUE(opened) << levelTable;
    if (!opened)
        return false;
    editor.Form_Load();
    (editor.*ok)();
    EXPECT_TRUE(screen.closed);
    return true;
}

// Every editor, in the order a user might open them: each opens on the
// document and closes by its OK (or Save), and says whether it opened.
const std::vector<std::pair<const char*, std::function<bool()>>> editorsInTurn = {
    { "frmCult1",
        [] {
            return openAndPress<CultivarEditor, FakeCultivarScreen>(
                "Cultivars", mnuEditCultivar_Click, &CultivarEditor::cmdOK_Click);
        } },
    { "frmPlantingEd",
        [] {
            return openAndPress<PlantingEditor, FakePlantingScreen>(
                "Planting", mnuEditPlanting_Click, &PlantingEditor::cmdOK_Click);
        } },
    { "frmFertEdit", [] { return openAndOk("frmFertEdit"); } },
    { "frmResidueEdit", [] { return openAndOk("frmResidueEdit"); } },
    { "frmChemEdit", [] { return openAndOk("frmChemEdit"); } },
    { "frmTillEdit", [] { return openAndOk("frmTillEdit"); } },
    { "frmIrrigation", [] { return openAndOk("frmIrrigation"); } },
    { "frmHarvest", [] { return openAndOk("frmHarvest"); } },
    { "frmEnvMod", [] { return openAndOk("frmEnvMod"); } },
    { "frmFields",
        [] {
            return openAndPress<FieldEditor, FakeFieldScreen>(
                "Fields", mnuEditField_Click, &FieldEditor::cmdOK_Click);
        } },
    { "frmSoilAnalysis",
        [] {
            return openAndPress<SoilAnalysisEditor, FakeSoilAnalysisScreen>(
                "SoilAnalysis", mnuEditSoil_Click, &SoilAnalysisEditor::cmdOK_Click);
        } },
    { "frmViewTreatments",
        [] {
            return openAndPress<TreatmentEditor, FakeTreatmentScreen>(
                nullptr, mnuViewTreatments_Click, &TreatmentEditor::cmdSave_Click);
        } },
    { "frmInitCond",
        [] {
            return openAndPress<InitialConditionsEditor, FakeInitialConditionsScreen>(
                "InitialConditions", mnuEditInitCond_Click, &InitialConditionsEditor::cmdSave);
        } },
    { "frmSim",
        [] {
            return openAndPress<SimEditor, FakeSimScreen>(
                nullptr, EditSimOptGeneral_Click, &SimEditor::cmdOK_Click);
        } },
};

class EditorsLeaveFilesAlone : public EditorTest, public ::testing::WithParamInterface<QString> {
protected:
    QByteArray written()
    {
        format::FileWriter w;
        format::writeExperiment(w, QFileInfo(state().ExpFilePath).fileName());
        return w.bytes();
    }
};

TEST_P(EditorsLeaveFilesAlone, OpeningEachEditorAndPressingOkWritesTheSameFile)
{
    open(GetParam());
    const QByteArray plain = written();
    QStringList opened;
    for (const auto& [form, openAndClose] : editorsInTurn) {
        if (openAndClose())
            opened << QLatin1String(form);
    }
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
    const QByteArray afterEditors = written();
    EXPECT_EQ(afterEditors.count('\n'), plain.count('\n'));
    EXPECT_TRUE(afterEditors == plain)
        << GetParam().toStdString() << " after " << opened.join(", ").toStdString();
}

INSTANTIATE_TEST_SUITE_P(SampleSuite, EditorsLeaveFilesAlone,
    ::testing::ValuesIn(sampleExperiments()), [](const ::testing::TestParamInfo<QString>& info) {
        return QFileInfo(info.param).completeBaseName().toStdString();
    });

} // namespace
} // namespace quillon::test
