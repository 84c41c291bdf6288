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

// The cultivar editor on a file with cultivars, closed with OK.
bool cultivarsOk()
{
    if (database::rowCount(QStringLiteral("Cultivars")) == 0)
        return false;
    FakeCultivarScreen screen;
    CultivarEditor editor(screen);
    screen.editor = &editor;
    EXPECT_TRUE(mnuEditCultivar_Click());
    editor.Form_Load();
    editor.cmdOK_Click();
    EXPECT_TRUE(screen.closed);
    return true;
}

// The planting editor on a file with planting levels, closed with OK: the
// dates it shows go back as the codes they came from.
bool plantingOk()
{
    if (database::rowCount(QStringLiteral("Planting")) == 0)
        return false;
    FakePlantingScreen screen;
    PlantingEditor editor(screen);
    screen.editor = &editor;
    EXPECT_TRUE(mnuEditPlanting_Click());
    editor.Form_Load();
    editor.cmdOK_Click();
    EXPECT_TRUE(screen.closed);
    return true;
}

bool treatmentTableSaved()
{
    FakeTreatmentScreen screen;
    TreatmentEditor treatments(screen);
    screen.editor = &treatments;
    EXPECT_TRUE(mnuViewTreatments_Click());
    treatments.Form_Load();
    treatments.cmdSave_Click();
    EXPECT_TRUE(screen.closed);
    return true;
}

// The field editor on the document's fields, closed with OK. A file without
// fields has no page to show.
bool fieldsOk()
{
    if (database::rowCount(QStringLiteral("Fields")) == 0)
        return false;
    FakeFieldScreen screen;
    FieldEditor editor(screen);
    screen.attach(editor);
    EXPECT_TRUE(mnuEditField_Click());
    editor.Form_Load();
    editor.cmdOK_Click();
    EXPECT_TRUE(screen.closed);
    return true;
}

// The soil analysis editor on a file that has soil analysis, closed with OK.
bool soilAnalysisOk()
{
    if (database::rowCount(QStringLiteral("SoilAnalysis")) == 0)
        return false;
    FakeSoilAnalysisScreen screen;
    SoilAnalysisEditor editor(screen);
    screen.attach(editor);
    EXPECT_TRUE(mnuEditSoil_Click());
    editor.Form_Load();
    editor.cmdOK_Click();
    EXPECT_TRUE(screen.closed);
    return true;
}

bool initialConditionsOk()
{
    if (database::rowCount(QStringLiteral("InitialConditions")) == 0)
        return false;
    FakeInitialConditionsScreen screen;
    InitialConditionsEditor editor(screen);
    screen.attach(editor);
    EXPECT_TRUE(mnuEditInitCond_Click());
    editor.Form_Load();
    editor.cmdSave();
    EXPECT_TRUE(screen.closed);
    return true;
}

// The simulation controls, opened from the View menu and closed with OK.
bool simulationControlsOk()
{
    FakeSimScreen screen;
    SimEditor editor(screen);
    screen.editor = &editor;
    if (!EditSimOptGeneral_Click())
        return false;
    editor.Form_Load();
    editor.cmdOK_Click();
    EXPECT_TRUE(screen.closed);
    return true;
}

// Every editor, in the order a user might open them: each opens on the
// document and closes by its OK (or Save), and says whether it opened.
const std::vector<std::pair<const char*, std::function<bool()>>> editorsInTurn = {
    { "frmCult1", cultivarsOk },
    { "frmPlantingEd", plantingOk },
    { "frmFertEdit", [] { return openAndOk("frmFertEdit"); } },
    { "frmResidueEdit", [] { return openAndOk("frmResidueEdit"); } },
    { "frmChemEdit", [] { return openAndOk("frmChemEdit"); } },
    { "frmTillEdit", [] { return openAndOk("frmTillEdit"); } },
    { "frmIrrigation", [] { return openAndOk("frmIrrigation"); } },
    { "frmHarvest", [] { return openAndOk("frmHarvest"); } },
    { "frmEnvMod", [] { return openAndOk("frmEnvMod"); } },
    { "frmFields", fieldsOk },
    { "frmSoilAnalysis", soilAnalysisOk },
    { "frmViewTreatments", treatmentTableSaved },
    { "frmInitCond", initialConditionsOk },
    { "frmSim", simulationControlsOk },
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
