// Every experiment file of the sample suite, opened as File Open does and
// written as Save does, comes back byte for byte; and a file written by us
// reads and writes back to itself. The files are listed from disk, so a file
// added to the suite is tested without touching this test.

#include "app/AppState.h"
#include "app/OpenExperiment.h"
#include "database/WorkDatabase.h"
#include "format/Cp1252.h"
#include "format/FileWriter.h"
#include "format/WriteFile.h"
#include "support/QtPrinters.h"
#include "support/WorkDbFixture.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <set>

using namespace quillon;
using namespace quillon::test;

namespace {

const QString suiteDir = QStringLiteral(QUILLON_SAMPLE_SUITE_DIR);

// Experiment files carry a three-letter extension ending in X: two letters
// of crop or file type, then X.
std::vector<QString> sampleExperimentFiles()
{
    std::vector<QString> files;
    QDirIterator it(suiteDir, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QFileInfo info(it.next());
        const QString suffix = info.suffix();
        if (suffix.size() == 3 && suffix.endsWith(QLatin1Char('X'), Qt::CaseInsensitive))
            files.push_back(info.absoluteFilePath());
    }
    std::sort(files.begin(), files.end());
    return files;
}

QByteArray contents(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// A readable account of where two texts part: line counts, then the first
// line that differs.
std::string difference(const QByteArray& expected, const QByteArray& actual)
{
    const QStringList a = format::fromCp1252(expected).split(QStringLiteral("\r\n"));
    const QStringList b = format::fromCp1252(actual).split(QStringLiteral("\r\n"));
    std::string out = "lines: " + std::to_string(a.size()) + " expected, "
        + std::to_string(b.size()) + " written";
    for (int i = 0; i < std::min(a.size(), b.size()); ++i) {
        if (a.at(i) != b.at(i)) {
            out += "\nfirst difference at line " + std::to_string(i + 1) + ":\n  expected \""
                + a.at(i).toStdString() + "\"\n  written  \"" + b.at(i).toStdString() + '"';
            break;
        }
    }
    return out;
}

class SampleRoundTrip : public WorkDbTest, public ::testing::WithParamInterface<QString> {
protected:
    void SetUp() override
    {
        WorkDbTest::SetUp();
        // The program folder gets the suite's defaults files; the data
        // folder is the sample suite itself, which is only read.
        QDir defaults(suiteDir + QStringLiteral("/TOOLS/Quillon"));
        for (const QString& def : defaults.entryList({ QStringLiteral("*.def") }, QDir::Files))
            ASSERT_TRUE(QFile::copy(defaults.filePath(def), path(def)));
        state().DataFolder = QDir::toNativeSeparators(QDir(suiteDir).absolutePath());
    }

    // Opens the file as File Open does and gives what Save would write.
    QByteArray openAndWrite(const QString& file)
    {
        state().ExpFilePath = QDir::toNativeSeparators(file);
        openExperiment(state().ExpFilePath);
        format::FileWriter w;
        format::writeExperiment(w, QFileInfo(file).fileName());
        return w.bytes();
    }

    // Puts `bytes` in a file of the same name in the test's folder.
    QString saved(const QString& name, const QByteArray& bytes, int round)
    {
        const QString folder = path(QStringLiteral("round%1").arg(round));
        QDir().mkpath(folder);
        const QString file = folder + QLatin1Char('/') + name;
        QFile f(file);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
        return file;
    }
};

} // namespace

TEST(SampleSuite, HoldsExperimentFilesOfEveryType)
{
    std::set<QString> kinds;
    for (const QString& file : sampleExperimentFiles()) {
        const QString kind = QFileInfo(file).suffix().left(2).toUpper();
        const bool crop = kind != QLatin1String("SQ") && kind != QLatin1String("SN")
            && kind != QLatin1String("GS") && kind != QLatin1String("FC");
        kinds.insert(crop ? QStringLiteral("crop") : kind);
    }
    EXPECT_EQ(kinds,
        (std::set<QString> { QStringLiteral("crop"), QStringLiteral("SQ"), QStringLiteral("SN"),
            QStringLiteral("GS"), QStringLiteral("FC") }));
}

TEST_P(SampleRoundTrip, ReadsAndWritesBackByteForByte)
{
    const QString original = GetParam();
    const QString name = QFileInfo(original).fileName();
    const QByteArray input = contents(original);
    ASSERT_FALSE(input.isEmpty());

    const QByteArray first = openAndWrite(original);
    EXPECT_EQ(first.count('\n'), input.count('\n')) << "line counts differ";
    EXPECT_TRUE(first == input) << difference(input, first);

    // What we wrote is read the same way: a second and a third save agree,
    // also for a file that didn't come back whole the first time.
    const QByteArray second = openAndWrite(saved(name, first, 2));
    const QByteArray third = openAndWrite(saved(name, second, 3));
    EXPECT_TRUE(third == second) << difference(second, third);

    for (const QString& text : m_ui.texts())
        EXPECT_FALSE(text.contains(QStringLiteral(" in ")))
            << "a trapped error: " << text.toStdString();
}

INSTANTIATE_TEST_SUITE_P(SampleSuite, SampleRoundTrip, ::testing::ValuesIn(sampleExperimentFiles()),
    [](const ::testing::TestParamInfo<QString>& info) {
        return QFileInfo(info.param)
            .fileName()
            .replace(QLatin1Char('.'), QLatin1Char('_'))
            .toStdString();
    });
