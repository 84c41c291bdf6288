// Opening an editor and pressing OK must not change what Save writes: for
// every sample experiment, listed from disk, each editor whose factor the
// file has is opened and closed with OK, then the treatment table with
// Save, and the file written afterwards is the file a plain open and save
// writes.

#include "app/AppState.h"
#include "database/Sql.h"
#include "editors/EditorFixture.h"
#include "editors/EventEditor.h"
#include "support/FakeEventScreen.h"
#include "support/FakeTreatmentScreen.h"
#include "editors/TreatmentEditor.h"
#include "format/FileWriter.h"
#include "format/WriteFile.h"

#include <QDirIterator>
#include <QFileInfo>

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
    int opened = 0;
    for (const char* form : { "frmFertEdit", "frmResidueEdit", "frmChemEdit", "frmTillEdit" }) {
        const EventMember& member = *eventMember(QLatin1String(form));
        if (database::rowCount(member.levelTable) == 0)
            continue;
        FakeEventScreen screen(member);
        EventEditor editor(member, screen);
        screen.attach(editor);
        ASSERT_TRUE(EventEditor::openEditor(member)) << form;
        editor.Form_Load();
        editor.cmdOK_Click();
        EXPECT_TRUE(screen.closed) << form;
        ++opened;
    }
    // The treatment table last, saved as it stands.
    FakeTreatmentScreen screen;
    TreatmentEditor treatments(screen);
    screen.editor = &treatments;
    ASSERT_TRUE(mnuViewTreatments_Click());
    treatments.Form_Load();
    treatments.cmdSave_Click();
    EXPECT_TRUE(screen.closed);

    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();
    const QByteArray afterEditors = written();
    EXPECT_EQ(afterEditors.count('\n'), plain.count('\n'));
    EXPECT_TRUE(afterEditors == plain)
        << GetParam().toStdString() << " after " << opened << " editors";
}

INSTANTIATE_TEST_SUITE_P(SampleSuite, EditorsLeaveFilesAlone,
    ::testing::ValuesIn(sampleExperiments()), [](const ::testing::TestParamInfo<QString>& info) {
        return QFileInfo(info.param).completeBaseName().toStdString();
    });

} // namespace
} // namespace quillon::test
