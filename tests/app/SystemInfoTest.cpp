#include "app/SystemInfo.h"

#include "app/AppState.h"
#include "database/Sql.h"
#include "database/WorkDatabase.h"
#include "reference/FillAllLookups.h"
#include "support/SampleSuiteFixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace quillon::test {
namespace {

class SystemInfoTest : public SampleSuiteTest {
protected:
    // The values shown under `label`, in order.
    static QStringList valuesOf(const QString& label)
    {
        QStringList values;
        for (const SystemInfoLine& line : systemInformation()) {
            if (line.label == label)
                values << line.value;
        }
        return values;
    }
    static QString valueOf(const char* label)
    {
        const QStringList values = valuesOf(QLatin1String(label));
        return values.size() == 1 ? values.first()
                                  : QStringLiteral("<%1 lines>").arg(values.size());
    }
};

TEST_F(SystemInfoTest, BeforeAnyDocumentTheFoldersAndFilesAreTold)
{
    const AppState& s = state();
    ASSERT_TRUE(QFile::remove(s.AppFolder + QStringLiteral("Simulate_Spatial.def")));

    EXPECT_EQ(valueOf("Program folder (AppFolder)"), s.AppFolder);
    EXPECT_EQ(valueOf("Suite folder (DataFolder)"), s.DataFolder);
    EXPECT_EQ(valueOf("Working database"), s.WorkDBPath);
    EXPECT_EQ(
        valueOf("Working database size"), QStringLiteral("not built yet: New or Open builds it"));
    EXPECT_EQ(valueOf("Profile"), suitePath(QStringLiteral("TERVAPRO.V48")));
    EXPECT_EQ(valueOf("Profile as read"), QStringLiteral("not read yet: New or Open reads it"));
    EXPECT_EQ(valueOf("Weather folder"), QStringLiteral("<0 lines>"));
    EXPECT_EQ(valuesOf(QStringLiteral("Defaults file")),
        (QStringList { s.AppFolder + QStringLiteral("Simulate.def"),
            s.AppFolder + QStringLiteral("Simulate_Sequence.def"),
            s.AppFolder + QStringLiteral("Simulate_Seasonal.def"),
            QStringLiteral("Simulate_Spatial.def not found: built-in values are used"),
            s.AppFolder + QStringLiteral("Simulate_Forecast.def") }));
}

TEST_F(SystemInfoTest, AfterTheLookupsTheProfileAsReadIsTold)
{
    AppState& s = state();
    database::CreateDataBaseX();
    reference::Fill_All_Lookups();
    ASSERT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
    s.DocumentOpen = true;
    s.IsSequence = true;
    database::exec(QStringLiteral("DELETE FROM TERVAPRO WHERE Code = 'SLD'"));

    QString size = valueOf("Working database size");
    size.remove(QRegularExpression(QStringLiteral("[^0-9]")));
    EXPECT_EQ(size, QString::number(QFileInfo(s.WorkDBPath).size()));
    EXPECT_EQ(valueOf("Profile as read"),
        QStringLiteral("%1 lines, kept in the working database until Refresh")
            .arg(database::rowCount(QStringLiteral("TERVAPRO"))));
    EXPECT_EQ(valueOf("Weather folder"),
        suitePath(QStringLiteral("Weather")) + QStringLiteral(" (profile: C:\\TERVA48\\Weather)"));
    EXPECT_EQ(valueOf("Genotype folder"),
        suitePath(QStringLiteral("Genotype"))
            + QStringLiteral(" (profile: C:\\TERVA48\\GENOTYPE)"));
    EXPECT_EQ(valueOf("Soil folder"), QStringLiteral("no SLD line in the profile"));
    EXPECT_EQ(valuesOf(QStringLiteral("Defaults file")).at(1),
        s.AppFolder + QStringLiteral("Simulate_Sequence.def (for the open file)"));

    // A damaged working database is told, not opened.
    database::closeWorkDB();
    QFile damaged(s.WorkDBPath);
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly | QIODevice::Truncate));
    damaged.write("not a database");
    damaged.close();
    EXPECT_TRUE(valueOf("Profile as read")
                    .startsWith(QStringLiteral("the working database could not be read: ")))
        << valueOf("Profile as read").toStdString();
}

} // namespace
} // namespace quillon::test
