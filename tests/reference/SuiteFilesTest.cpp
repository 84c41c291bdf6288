#include "reference/SuiteFiles.h"

#include "app/AppState.h"
#include "reference/SuiteFixture.h"
#include "support/QtPrinters.h"

#include <QDir>

namespace quillon::test {
namespace {

using namespace quillon::reference;

class SuiteFilesTest : public SuiteTest { };

TEST_F(SuiteFilesTest, FindsFilesAndFoldersWhateverTheirCase)
{
    write(QStringLiteral("Genotype/ABMOD048.CUL"), { QStringLiteral("x") });
    write(QStringLiteral("DETAIL.CDE"), { QStringLiteral("x") });
    const QString root = QDir::fromNativeSeparators(m_dir.path());

    EXPECT_EQ(findPath(root + QStringLiteral("/GENOTYPE/abmod048.cul")),
        root + QStringLiteral("/Genotype/ABMOD048.CUL"));
    EXPECT_EQ(findIn(state().DataFolder, QStringLiteral("Detail.cde")),
        root + QStringLiteral("/DETAIL.CDE"));
    // Backslashes separate as well: the profile writes them.
    EXPECT_EQ(findIn(root, QStringLiteral("genotype\\AbMod048.Cul")),
        root + QStringLiteral("/Genotype/ABMOD048.CUL"));
    EXPECT_EQ(findPath(root + QStringLiteral("/Genotype/")), root + QStringLiteral("/Genotype"));

    EXPECT_TRUE(findPath(root + QStringLiteral("/Genotype/MISSING.CUL")).isEmpty());
    EXPECT_TRUE(findPath(root + QStringLiteral("/Nowhere/ABMOD048.CUL")).isEmpty());
    EXPECT_TRUE(findIn(QString(), QStringLiteral("Detail.cde")).isEmpty());
}

TEST_F(SuiteFilesTest, ListsByPatternWithoutRegardToCase)
{
    for (const char* name :
        { "ABCD9901.WTH", "efgh0101.wth", "Ijkl.Wth", "ABCD.WTHX", "notes.txt" })
        write(QStringLiteral("Weather/") + QLatin1String(name), { QStringLiteral("x") });
    QDir().mkpath(path(QStringLiteral("Weather/folder.wth")));

    EXPECT_EQ(listMatching(path(QStringLiteral("WEATHER")), QStringLiteral("*.wth")),
        (QStringList { QStringLiteral("ABCD9901.WTH"), QStringLiteral("efgh0101.wth"),
            QStringLiteral("Ijkl.Wth") }));
    EXPECT_EQ(listMatching(path(QStringLiteral("Weather")), QStringLiteral("e???01*")),
        QStringList { QStringLiteral("efgh0101.wth") });
    EXPECT_TRUE(listMatching(path(QStringLiteral("Climate")), QStringLiteral("*.wth")).isEmpty());
}

TEST_F(SuiteFilesTest, ListingsAreRememberedOnlyWhileACacheLives)
{
    write(QStringLiteral("Weather/AAAA0101.WTH"), { QStringLiteral("x") });
    const QString folder = path(QStringLiteral("Weather"));
    {
        ListingCache cache;
        EXPECT_EQ(listMatching(folder, QStringLiteral("*.wth")).size(), 1);
        write(QStringLiteral("Weather/BBBB0101.WTH"), { QStringLiteral("x") });
        EXPECT_EQ(listMatching(folder, QStringLiteral("*.wth")).size(), 1);
    }
    EXPECT_EQ(listMatching(folder, QStringLiteral("*.wth")).size(), 2);
}

TEST_F(SuiteFilesTest, LocationTextTakesTheDriveAndTheRestTrimmed)
{
    EXPECT_EQ(locationText(QStringLiteral("C: \\TERVA48\\Weather")),
        QStringLiteral("C:\\TERVA48\\Weather"));
    EXPECT_EQ(locationText(QStringLiteral("C:  \\TERVA48\\Weather")),
        QStringLiteral("C:\\TERVA48\\Weather"));
    EXPECT_EQ(locationText(QStringLiteral("D \\DATA")), QStringLiteral("D:\\DATA"));
    EXPECT_EQ(locationText(QStringLiteral("C")), QStringLiteral("C:"));
    EXPECT_EQ(
        locationText(QStringLiteral("/srv/terva/Weather")), QStringLiteral("/srv/terva/Weather"));
    EXPECT_EQ(locationText(QStringLiteral("Weather")), QStringLiteral("Weather"));
    EXPECT_EQ(locationText(QString()), QString());
}

TEST_F(SuiteFilesTest, LocationsMapIntoTheSuiteOrUnderTheDriveRoot)
{
    QDir().mkpath(path(QStringLiteral("Weather")));
    QDir().mkpath(path(QStringLiteral("drive/Data/Soil")));
    const QString root = QDir::fromNativeSeparators(m_dir.path());

    // The part from the suite folder's name on lies in DataFolder.
    EXPECT_EQ(
        locationFolder(QStringLiteral("C:\\TERVA48\\WEATHER")), root + QStringLiteral("/Weather"));
    EXPECT_EQ(locationFolder(QStringLiteral("C:\\terva48")), root);
    // A relative location is relative to DataFolder; a POSIX one stands.
    EXPECT_EQ(locationFolder(QStringLiteral("weather")), root + QStringLiteral("/Weather"));
    EXPECT_EQ(
        locationFolder(root + QStringLiteral("/drive/data")), root + QStringLiteral("/drive/Data"));
    EXPECT_TRUE(locationFolder(QString()).isEmpty());

    // Outside the suite: the path as written under the drive root.
    qputenv("QUILLON_DRIVE_ROOT", (root + QStringLiteral("/drive")).toLocal8Bit());
    EXPECT_EQ(locationFolder(QStringLiteral("D:\\DATA\\soil")),
        root + QStringLiteral("/drive/Data/Soil"));
    // Where neither place exists, the place in the suite is given.
    EXPECT_EQ(
        locationFolder(QStringLiteral("C:\\Data\\TERVA48\\Soil")), root + QStringLiteral("/Soil"));
    qunsetenv("QUILLON_DRIVE_ROOT");
}

} // namespace
} // namespace quillon::test
