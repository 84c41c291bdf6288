// The guided start of a new file on the sample suite: New, the
// identification's Next, and a file the checker accepts once the planting
// date, the field and the cultivar are in.

#include "app/NewExperiment.h"

#include "app/AppState.h"
#include "app/DocumentCommands.h"
#include "database/Relations.h"
#include "database/Sql.h"
#include "editors/InitialConditionsEditor.h"
#include "editors/TreatmentEditor.h"
#include "reference/SimDefaults.h"
#include "support/FakeDocumentHost.h"
#include "support/SampleSuiteFixture.h"
#include "support/WorkDbFixture.h"
#include "validation/ExperimentDebugger.h"
#include "validation/TableRelations.h"

#include <QFileInfo>

#include <gtest/gtest.h>

namespace quillon::test {
namespace {

using database::exec;

class NewExperimentTest : public SampleSuiteTest {
protected:
    FakeHost m_host;
};

TEST_F(NewExperimentTest, NewAndNextGiveWhatTheEditorsNeedAndASavedFileTheCheckerAccepts)
{
    mnuFileNew_Click();
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNFLD, WSTA FROM Fields")), QStringList { "1|NULL" });
    EXPECT_EQ(
        rowsOf(QStringLiteral("SELECT LNPLT, YRPLT FROM Planting")), QStringList { "1|NULL" });
    EXPECT_EQ(rowsOf(QStringLiteral(
                  "SELECT LNIC, PRCROP, IDAYIC, EFNFIX, EFINOC FROM InitialConditions")),
        QStringList { "1|NULL|NULL|1|1" });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNIC FROM ICLayers")), QStringList { "1" });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNIC, SLNO FROM IC_Water_Nitrogen")),
        QStringList { "1|NULL" });
    EXPECT_EQ(database::rowCount(QStringLiteral("Treatments")), 0);

    // Next wants the crop of an experimental file first.
    const ExperimentDetails details { QStringLiteral("QL"), QStringLiteral("NV"),
        QStringLiteral("2101"), QString(), QStringLiteral("A new maize trial") };
    EXPECT_FALSE(identificationNext(details, FileType::Experimental, QString()));
    EXPECT_EQ(m_ui.texts(), QStringList { "Please select Crop." });
    EXPECT_EQ(database::rowCount(QStringLiteral("SimulationControl")), 0);

    // Accepted: treatment 1 and simulation controls level 1 from the
    // defaults; cultivar 1 isn't there yet, so the treatment names none.
    m_ui.clear();
    m_host.window
        = Identification { details, QStringLiteral("MZ"), FileType::Experimental, {}, {} };
    ASSERT_TRUE(identificationNext(details, FileType::Experimental, QStringLiteral("MZ")));
    const QStringList treatment { "1|1|1|Sim1|NULL|1|1|1" };
    const QString treatmentSql = QStringLiteral(
        "SELECT TRTNO, ROTNO, ROTOPT, TITLET, LNCU, LNFLD, LNPLT, LNSIM FROM Treatments");
    EXPECT_EQ(rowsOf(treatmentSql), treatment);
    for (const reference::SimGroup& group : reference::simGroups())
        EXPECT_EQ(
            rowsOf(QStringLiteral("SELECT LNSIM FROM [%1]").arg(group.table)), QStringList { "1" })
            << group.table.toStdString();
    EXPECT_EQ(
        rowsOf(QStringLiteral("SELECT YRSIM FROM SimulationControl")), QStringList { "NULL" });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT CODE FROM ExpDetails")), QStringList { "MZ" });
    EXPECT_EQ(database::relationNames().size(), int(validation::relationTable().size()));
    // A second Next keeps what the document has.
    ASSERT_TRUE(identificationNext(details, FileType::Experimental, QStringLiteral("MZ")));
    EXPECT_EQ(rowsOf(treatmentSql), treatment);
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();

    // The editors' part: the field, the planting date (which the planting
    // editor carries into the simulation start), the cultivar; the treatment
    // table takes the cultivar, the initial conditions editor the crop and
    // the date.
    exec(QStringLiteral(
        "UPDATE Fields SET FLDNAM = 'QLNV0001', WSTA = 'QUIL', SLNO = 'QLNV000001'"));
    exec(QStringLiteral("UPDATE Planting SET YRPLT = '21121', PLME = 'S', PLDS = 'R', PLTPOP = 7"));
    exec(QStringLiteral("UPDATE SimulationControl SET YRSIM = '21121'"));
    exec(QStringLiteral("INSERT INTO Cultivars (LNCU, CODE, VARNO, CNAME) VALUES (1, 'MZ', "
                        "'QL0003', 'Northfield 105')"));
    ASSERT_TRUE(editors::mnuViewTreatments_Click());
    ASSERT_TRUE(editors::mnuEditInitCond_Click());
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT PRCROP, IDAYIC FROM InitialConditions")),
        QStringList { "MZ|21121" });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT SLNO FROM ICSoil")),
        QStringList { "North Valley silt loam (QLNV000001)" });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNCU FROM Treatments")), QStringList { "1" });
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join('\n').toStdString();

    AppState& s = state();
    s.ExpFilePath = suitePath(QStringLiteral("Maize/QLNV2101.MZX"));
    QFile::remove(s.ExpFilePath);
    mnuFileSave_Click();
    ASSERT_TRUE(QFileInfo::exists(s.ExpFilePath));
    // Read back, the tables hold the same document.
    EXPECT_EQ(
        rowsOf(QStringLiteral("SELECT TRTNO, LNCU, LNFLD, LNIC, LNPLT, LNSIM FROM Treatments")),
        QStringList { "1|1|1|NULL|1|1" });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNIC, PRCROP, IDAYIC FROM InitialConditions")),
        QStringList { "1|MZ|21121" });
    m_ui.clear();
    const validation::DebugResult result = validation::DebugFile();
    EXPECT_EQ(result.outcome, validation::DebugResult::Outcome::Clean)
        << result.findings.join('\n').toStdString();
    EXPECT_EQ(m_ui.texts(), QStringList { "No errors has been found." });
}

} // namespace
} // namespace quillon::test
