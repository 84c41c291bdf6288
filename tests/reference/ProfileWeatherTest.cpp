#include "reference/Profile.h"
#include "reference/WeatherLookups.h"

#include "app/AppState.h"
#include "database/Sql.h"
#include "reference/SuiteFixture.h"
#include "support/QtPrinters.h"

#include <QFile>

namespace quillon::test {
namespace {

using namespace quillon::reference;

class ProfileWeatherTest : public SuiteTest { };

TEST_F(ProfileWeatherTest, ProfileRowsKeepCodeAndTrimmedPath)
{
    const QString longPath = QStringLiteral("C: \\") + QString(120, QLatin1Char('x'));
    write(QStringLiteral("terVAPro.v48"),
        { QStringLiteral("! comment"), QStringLiteral("   ! indented comment"), QString(),
            QStringLiteral("   "), QStringLiteral("WED C: \\TERVA48\\Weather"),
            QStringLiteral("WED C: \\Elsewhere"), QStringLiteral("CRD C:  \\TERVA48\\Genotype   "),
            QStringLiteral("AB  C: \\TERVA48\\Alpha"), QStringLiteral("XYZ") + longPath,
            QStringLiteral("Q") });

    LocateAvailableData();

    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT Code, Path FROM TERVAPRO ORDER BY rowid")),
        (QStringList { QStringLiteral("WED|C: \\TERVA48\\Weather"),
            QStringLiteral("WED|C: \\Elsewhere"), QStringLiteral("CRD|C:  \\TERVA48\\Genotype"),
            QStringLiteral("AB |C: \\TERVA48\\Alpha"), QStringLiteral("XYZ|") + longPath.left(100),
            QStringLiteral("Q|NULL") }));
    // The first WED row decides.
    EXPECT_EQ(state().WeatherFolder, QStringLiteral("C:\\TERVA48\\Weather"));
    EXPECT_EQ(state().GenotypeFolder, QStringLiteral("C:\\TERVA48\\Genotype"));
}

TEST_F(ProfileWeatherTest, MissingProfileOrLocationsEndTheProgram)
{
    EXPECT_THROW(LocateAvailableData(), ProgramEnded);
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].text,
        QStringLiteral("File ") + state().DataFolder
            + QStringLiteral("/TERVAPRO.V48 was not found."));
    EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Error"));
    EXPECT_EQ(m_ui.messages[0].icon, MsgIcon::Critical);

    m_ui.clear();
    write(QStringLiteral("TERVAPRO.V48"), { QStringLiteral("CRD C: \\TERVA48\\Genotype") });
    EXPECT_THROW(LocateAvailableData(), ProgramEnded);
    EXPECT_EQ(m_ui.texts(), QStringList { QStringLiteral("Cannot locate Weather files.") });

    m_ui.clear();
    write(QStringLiteral("TERVAPRO.V48"), { QStringLiteral("WED C: \\TERVA48\\Weather") });
    EXPECT_THROW(LocateAvailableData(), ProgramEnded);
    EXPECT_EQ(m_ui.texts(), QStringList { QStringLiteral("Cannot locate Genotype files.") });
}

TEST_F(ProfileWeatherTest, WeatherFilesGiveFileAndStationRows)
{
    writeProfile();
    write(QStringLiteral("WEATHER/ABCD9901.WTH"),
        { QStringLiteral("*WEATHER DATA : Alpha 'station'\tnorth"), QStringLiteral("@ INSI") });
    writeBytes(QStringLiteral("WEATHER/abcd0001.wth"), "$WEATHER: Alpha 'station'\tnorth");
    writeBytes(QStringLiteral("WEATHER/ABCD2501.WTH"), "\r\n*WEATHER DATA : never read\r\n");
    write(QStringLiteral("WEATHER/EFGH.WTH"), { QStringLiteral("No colon in this line at all") });
    write(QStringLiteral("WEATHER/IJKL0101.WTH"), { QStringLiteral("*WEATHER:\t-99") });
    write(QStringLiteral("WEATHER/MNOP0101.WTH"),
        { QStringLiteral("*W:") + QStringLiteral("  ") + QString(60, QLatin1Char('d')) });
    write(QStringLiteral("WEATHER/LONGNAME1.WTH"), { QStringLiteral("*WEATHER: too long a name") });

    LocateAvailableData();

    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
    const QString fifty = QString(48, QLatin1Char('d'));
    // Which case a station row takes of two file names that differ only in
    // case is the engine's choice: compare in upper case.
    EXPECT_EQ(
        rowsOf(QStringLiteral(
            "SELECT upper(Code), Description, upper(Station) FROM WeatherLookup ORDER BY rowid")),
        (QStringList { QStringLiteral("ABCD0001|Alpha station north|ABCD"),
            QStringLiteral("ABCD2501|NULL|ABCD"),
            QStringLiteral("ABCD9901|Alpha station north|ABCD"),
            QStringLiteral("EFGH|No colon in this line at all|EFGH"),
            QStringLiteral("IJKL0101|NULL|IJKL"),
            QStringLiteral("MNOP0101|") + fifty + QStringLiteral("|MNOP"),
            // One row per station and description.
            QStringLiteral("ABCD|NULL|ABCD"), QStringLiteral("ABCD|Alpha station north|ABCD"),
            QStringLiteral("EFGH|No colon in this line at all|EFGH"),
            QStringLiteral("IJKL|NULL|IJKL"),
            QStringLiteral("MNOP|") + fifty + QStringLiteral("|MNOP") }));
    EXPECT_EQ(database::scalar(QStringLiteral("SELECT Code FROM WeatherLookup ORDER BY rowid"))
                  .toString(),
        QStringLiteral("abcd0001"));
    EXPECT_EQ(database::rowCount(QStringLiteral("TotalWeatherLookup")), 11);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT DISTINCT Observed FROM TotalWeatherLookup")),
        QStringList { QStringLiteral("X") });
}

TEST_F(ProfileWeatherTest, UnreadableWeatherFileStopsTheRoutine)
{
    writeProfile();
    write(QStringLiteral("Weather/ABCD9901.WTH"), { QStringLiteral("*WEATHER DATA : Alpha") });
    // A link whose target is gone is listed but can't be opened.
    ASSERT_TRUE(QFile::link(
        path(QStringLiteral("gone.txt")), path(QStringLiteral("Weather/EFGH9901.WTH"))));

    LocateAvailableData();

    EXPECT_EQ(
        m_ui.texts(), QStringList { QStringLiteral("File not foundin LocateAvailableData.") });
    // What was stored stays; the genotype step never came.
    EXPECT_EQ(database::rowCount(QStringLiteral("WeatherLookup")), 1);
    EXPECT_EQ(database::rowCount(QStringLiteral("TotalWeatherLookup")), 0);
    EXPECT_TRUE(state().GenotypeFolder.isEmpty());
}

TEST_F(ProfileWeatherTest, FieldYearsFromTheStationsOfTheFields)
{
    writeProfile();
    write(QStringLiteral("Weather/ABCD2601.WTH"), { QStringLiteral("*WEATHER: Alpha") });
    write(QStringLiteral("Weather/ABCD2501.WTH"), { QStringLiteral("*WEATHER: Alpha") });
    write(QStringLiteral("Weather/ABCD0001.WTH"), { QStringLiteral("*WEATHER: Alpha") });
    write(QStringLiteral("Weather/efgh.wth"),
        { QStringLiteral("*WEATHER: Generated"), QStringLiteral("@START  DUR"),
            QStringLiteral("  1987   10"), QStringLiteral("@START  DUR"),
            QStringLiteral("  2001   10") });
    LocateAvailableData();

    int level = 0;
    for (const char* station : { "ABCD", "abcd0001", "EFGH", "XY", "" }) {
        ++level;
        database::insertRow(QStringLiteral("Fields"),
            { { QStringLiteral("LNFLD"), level },
                { QStringLiteral("FLDNAM"), QStringLiteral("FLD0000") + QString::number(level) },
                { QStringLiteral("WSTA"), QString::fromLatin1(station) } });
    }
    database::exec(QStringLiteral("INSERT INTO FieldYears (Year) VALUES ('1800')"));

    FindFieldDate();

    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
    // Station rows ("ABCD") have no file of their own; the generated file
    // of a four-letter code states its first year, once per row.
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT Year FROM FieldYears ORDER BY rowid")),
        (QStringList { QStringLiteral("2000"), QStringLiteral("2025"), QStringLiteral("1926"),
            QStringLiteral("2000"), QStringLiteral("1987"), QStringLiteral("1987") }));
}

TEST_F(ProfileWeatherTest, WithoutAWeatherFolderOnlyObservedCodesGiveYears)
{
    writeProfile();
    write(QStringLiteral("Weather/efgh.wth"),
        { QStringLiteral("*WEATHER: Generated"), QStringLiteral("@START"),
            QStringLiteral("1987") });
    write(QStringLiteral("Weather/EFGH9901.WTH"), { QStringLiteral("*WEATHER: Observed") });
    LocateAvailableData();
    database::insertRow(QStringLiteral("Fields"),
        { { QStringLiteral("LNFLD"), 1 }, { QStringLiteral("FLDNAM"), QStringLiteral("FLD00001") },
            { QStringLiteral("WSTA"), QStringLiteral("EFGH") } });

    // The folder is set only when the profile is read in this process.
    state().WeatherFolder.clear();
    FindFieldDate();
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT Year FROM FieldYears")),
        QStringList { QStringLiteral("1999") });
}

} // namespace
} // namespace quillon::test
