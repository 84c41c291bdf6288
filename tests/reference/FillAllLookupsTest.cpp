#include "reference/FillAllLookups.h"

#include "app/AppState.h"
#include "database/Sql.h"
#include "database/WorkDatabase.h"
#include "reference/CodeTables.h"
#include "reference/SoilLookups.h"
#include "reference/SuiteFixture.h"
#include "support/QtPrinters.h"

#include <QDir>
#include <QFileInfo>

namespace quillon::test {
namespace {

using namespace quillon::reference;

class FillAllLookupsTest : public SuiteTest { };

TEST_F(FillAllLookupsTest, LoadsEveryTableInOrderWithProgress)
{
    writeSmallSuite();

    Fill_All_Lookups();
    CreateSIMLookUp();

    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(m_ui.progressSteps, (std::vector<int> { 10, 15, 20, 25, 30 }));
    for (const char* table : { "TERVAPRO", "WeatherLookup", "TotalWeatherLookup", "SoilLookup",
             "CodeLookup", "CodeStageLookup", "CropLookup", "CropCodesLookup", "SimLookUp" })
        EXPECT_GT(database::rowCount(QLatin1String(table)), 0) << table;
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT CODE, CROP FROM CropCodesLookup ORDER BY rowid")),
        (QStringList { QStringLiteral("AB|IB0001"), QStringLiteral("FA|IB0001") }));
}

// The sample suite that ships with the program loads without a message.
TEST_F(FillAllLookupsTest, SampleSuiteLoadsQuietly)
{
    const QString suite = QStringLiteral(QUILLON_SAMPLE_SUITE_DIR);
    if (!QFileInfo::exists(suite + QStringLiteral("/TERVAPRO.V48")))
        GTEST_SKIP() << "no sample suite";
    state().DataFolder = QDir::toNativeSeparators(suite);

    Fill_All_Lookups();
    CreateSIMLookUp();

    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
    for (const char* table : { "TERVAPRO", "WeatherLookup", "SoilLookup", "CodeLookup",
             "CodeStageLookup", "CropLookup", "SimLookUp" })
        EXPECT_GT(database::rowCount(QLatin1String(table)), 0) << table;
    EXPECT_GT(database::rowCount(QStringLiteral("CropCodesLookup")), 1);
}

} // namespace
} // namespace quillon::test
