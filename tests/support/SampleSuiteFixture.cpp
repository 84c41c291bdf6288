#include "support/SampleSuiteFixture.h"

#include "app/AppState.h"
#include "database/WorkDatabase.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace quillon::test {

bool copyFolder(const QString& from, const QString& to)
{
    const QDir source(from);
    QDirIterator it(from, QDir::Files | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString file = it.next();
        const QString target = QDir(to).filePath(source.relativeFilePath(file));
        if (!QDir().mkpath(QFileInfo(target).path()) || !QFile::copy(file, target))
            return false;
    }
    return true;
}

void SampleSuiteTest::SetUp()
{
    const QString sample = QStringLiteral(QUILLON_SAMPLE_SUITE_DIR);
    if (!QFileInfo::exists(sample + QStringLiteral("/TERVAPRO.V48")))
        GTEST_SKIP() << "no sample suite";
    ASSERT_TRUE(m_dir.isValid());
    const QString suite = m_dir.filePath(QStringLiteral("TERVA48"));
    const QString program = m_dir.filePath(QStringLiteral("program"));
    ASSERT_TRUE(copyFolder(sample, suite));
    ASSERT_TRUE(QDir().mkpath(program));
    const QDir tools(suite + QStringLiteral("/TOOLS/Quillon"));
    for (const QString& def : tools.entryList({ QStringLiteral("*.def") }, QDir::Files))
        ASSERT_TRUE(QFile::copy(tools.filePath(def), QDir(program).filePath(def)));

    AppState& s = state();
    s = AppState();
    s.AppFolder = QDir::toNativeSeparators(program) + QDir::separator();
    s.DataFolder = QDir::toNativeSeparators(suite);
    s.WorkDBPath = s.AppFolder + QStringLiteral("QUILLONTEMP2.mdb");
    s.DateTextFormat = QStringLiteral("M/d/yyyy");
    s.FileTypeLabel = QStringLiteral("(experimental)");
    m_ui.clear();
}

void SampleSuiteTest::TearDown()
{
    database::closeWorkDB();
}

QString SampleSuiteTest::suitePath(const QString& relative) const
{
    return QDir::toNativeSeparators(m_dir.filePath(QStringLiteral("TERVA48/") + relative));
}

} // namespace quillon::test
