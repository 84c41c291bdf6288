#include "editors/EditorFixture.h"

#include "app/AppState.h"
#include "app/OpenExperiment.h"

#include <QDir>
#include <QFile>

namespace quillon::test {

void EditorTest::SetUp()
{
    WorkDbTest::SetUp();
    const QString suite = QStringLiteral(QUILLON_SAMPLE_SUITE_DIR);
    const QDir defaults(suite + QStringLiteral("/TOOLS/Quillon"));
    for (const QString& def : defaults.entryList({ QStringLiteral("*.def") }, QDir::Files))
        ASSERT_TRUE(QFile::copy(defaults.filePath(def), path(def)));
    state().DataFolder = QDir::toNativeSeparators(QDir(suite).absolutePath());
    state().FileTypeLabel = QStringLiteral("(experimental)");
}

void EditorTest::open(const QString& relative)
{
    AppState& s = state();
    s.ExpFilePath = QDir::toNativeSeparators(s.DataFolder + QLatin1Char('/') + relative);
    openExperiment(s.ExpFilePath);
    s.DocumentOpen = true;
    m_ui.clear();
}

} // namespace quillon::test
