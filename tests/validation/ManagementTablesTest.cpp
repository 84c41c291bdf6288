#include "validation/ManagementTables.h"
#include "app/AppState.h"
#include "database/Sql.h"
#include "database/WorkDatabase.h"
#include "support/WorkDbFixture.h"
#include "validation/ManagementRepairs.h"

using namespace quillon;
using namespace quillon::database;
using namespace quillon::validation;
using quillon::test::rowsOf;

namespace {

class ManagementTables : public test::WorkDbTest { };

void addManagement(int simulation, const char* column, const QVariant& code)
{
    insertRow(QStringLiteral("SimulationControlManagement"),
        { { "LNSIM", simulation }, { column, code } });
}

void addTreatment(
    int number, const char* levelColumn, const QVariant& level, const QVariant& simulation)
{
    insertRow(QStringLiteral("Treatments"),
        { { "TRTNO", number }, { levelColumn, level }, { "LNSIM", simulation } });
}

void addApplication(
    const char* table, const char* levelColumn, int level, const char* dateColumn, const char* date)
{
    insertRow(
        QLatin1String(table), { { levelColumn, level }, { dateColumn, QLatin1String(date) } });
}

} // namespace

TEST_F(ManagementTables, IrrigationCodesFollowTreatmentsAndFirstDates)
{
    addManagement(1, "IIRRI", QStringLiteral("R"));
    addManagement(2, "IIRRI", QStringLiteral("N"));
    addManagement(3, "IIRRI", QStringLiteral("D"));
    addManagement(3, "IIRRI", QStringLiteral("R")); // only the first row of a level counts

    addTreatment(1, "LNIR", 1, 1);
    addTreatment(2, "LNIR", 2, 2); // "N" isn't stored
    addTreatment(3, "LNIR", QVariant(), 1); // no irrigation: no row
    addTreatment(4, "LNIR", 3, 3); // day numbers, but a full first date
    addTreatment(6, "LNIR", 1, 3); // second user of level 1: its row is refused
    addTreatment(8, "LNIR", 6, 9); // simulation level without management

    // The first row in table order decides, not the smallest text.
    addApplication("IrrigApplications", "LNIR", 3, "IDLAPL", "99001");
    addApplication("IrrigApplications", "LNIR", 3, "IDLAPL", "5");
    addApplication("IrrigApplications", "LNIR", 7, "IDLAPL", "3"); // used by no treatment

    // A leftover of an earlier file goes.
    insertRow(QStringLiteral("IrrManagement"), { { "LNIR", 8 }, { "IIRRI", QStringLiteral("R") } });

    FillIrrManagement();

    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNIR, IIRRI FROM IrrManagement ORDER BY LNIR")),
        QStringList({ "1|R", "2|NULL", "3|R", "6|NULL" }));
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
}

TEST_F(ManagementTables, ARowTheTableRefusesLosesOnlyItself)
{
    addManagement(1, "IIRRI", QStringLiteral("R"));
    for (int level : { 1, 2, 3 })
        addTreatment(level, "LNIR", level, 1);
    exec(QStringLiteral("CREATE TRIGGER RefuseTwo BEFORE INSERT ON IrrManagement "
                        "WHEN NEW.LNIR = 2 BEGIN SELECT RAISE(ABORT, 'refused'); END"));

    FillIrrManagement();

    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNIR, IIRRI FROM IrrManagement ORDER BY LNIR")),
        QStringList({ "1|R", "3|R" }));
}

TEST_F(ManagementTables, EachFactorReadsItsOwnCodeAndDates)
{
    struct Factor {
        void (*fill)();
        const char* table;
        const char* level;
        const char* code;
        const char* applications;
        const char* date;
    };
    const Factor factors[] = {
        { FillIrrManagement, "IrrManagement", "LNIR", "IIRRI", "IrrigApplications", "IDLAPL" },
        { FillFerManagement, "FerManagement", "LNFER", "IFERI", "Fertilization", "FDAY" },
        { FillResManagement, "ResManagement", "LNRES", "IRESI", "Residue", "RESDAY" },
        { FillHarManagement, "HarManagement", "LNHAR", "IHARI", "Harvest", "HDATE" },
    };
    for (const Factor& f : factors) {
        SCOPED_TRACE(f.table);
        exec(QStringLiteral("DELETE FROM Treatments"));
        exec(QStringLiteral("DELETE FROM SimulationControlManagement"));
        // Every code column holds "X" but the factor's own: a routine that
        // reads another factor's column stores "X".
        insertRow(QStringLiteral("SimulationControlManagement"),
            { { "LNSIM", 1 }, { "IIRRI", QStringLiteral("X") }, { "IFERI", QStringLiteral("X") },
                { "IRESI", QStringLiteral("X") }, { "IHARI", QStringLiteral("X") } });
        exec(QStringLiteral("UPDATE SimulationControlManagement SET [%1] = 'D'")
                 .arg(QLatin1String(f.code)));
        insertRow(QStringLiteral("SimulationControlManagement"),
            { { "LNSIM", 2 }, { f.code, QStringLiteral("R") } });
        addTreatment(1, f.level, 1, 1);
        addTreatment(2, f.level, 2, 2);
        addTreatment(3, f.level, 3, 1);
        addApplication(f.applications, f.level, 1, f.date, "89123"); // D becomes R
        addApplication(f.applications, f.level, 2, f.date, " 12  "); // R becomes D

        f.fill();

        EXPECT_EQ(
            rowsOf(QStringLiteral("SELECT [%1], [%2] FROM [%3] ORDER BY 1")
                       .arg(QLatin1String(f.level), QLatin1String(f.code), QLatin1String(f.table))),
            QStringList({ "1|R", "2|D", "3|D" }));
    }
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
}

TEST_F(ManagementTables, FailuresAfterTheTreatmentRowsAreReportedAndWhatWasDoneStays)
{
    addManagement(1, "IFERI", QStringLiteral("R"));
    addTreatment(1, "LNFER", 1, 1);
    addTreatment(2, "LNFER", QVariant(), 1);
    exec(QStringLiteral("DROP TABLE Fertilization"));

    FillFerManagement();

    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_TRUE(m_ui.messages[0].text.endsWith(QLatin1String(" in FillFerManagement.")))
        << m_ui.messages[0].text.toStdString();
    EXPECT_TRUE(
        m_ui.messages[0].text.contains(QLatin1String("Fertilization"), Qt::CaseInsensitive));
    EXPECT_EQ(
        rowsOf(QStringLiteral("SELECT LNFER, IFERI FROM FerManagement")), QStringList { "1|R" });
}

TEST_F(ManagementTables, WithoutTheWorkingDatabaseTheProgramEnds)
{
    state().ExpFilePath = QStringLiteral("C:\\TERVA48\\MAIZE\\ABCD0101.MZX");
    closeWorkDB();

    EXPECT_THROW(FillHarManagement(), test::ProgramEnded);

    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].text, QStringLiteral("Error with file: ABCD0101.MZX"));
    EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Error"));
}

TEST_F(ManagementTables, HarvestCodeTellsWhetherTheLevelHasRows)
{
    addManagement(1, "IHARI", QStringLiteral("M"));
    addManagement(1, "IHARI", QStringLiteral("A")); // not the first row: untouched
    addManagement(2, "IHARI", QStringLiteral("R"));
    addManagement(3, "IHARI", QStringLiteral("A"));
    insertRow(QStringLiteral("Harvest"), { { "LNHAR", 1 }, { "HDATE", QStringLiteral("99200") } });

    addTreatment(1, "LNHAR", 1, 1); // harvested
    addTreatment(2, "LNHAR", 2, 2); // level without rows
    addTreatment(3, "LNHAR", QVariant(), 3); // no harvest level
    addTreatment(4, "LNHAR", 0, 3);
    addTreatment(5, "LNHAR", 1, 7); // no management row: passed over

    ChangeManagementHarvest();

    EXPECT_EQ(rowsOf(QStringLiteral(
                  "SELECT LNSIM, IHARI FROM SimulationControlManagement ORDER BY rowid")),
        QStringList({ "1|R", "1|A", "2|M", "3|A" }));
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
}

TEST_F(ManagementTables, UnknownPlantingCodesAreReplacedWithOneWarningEach)
{
    insertRow(QStringLiteral("CodeLookup"),
        { { "Type", QStringLiteral("Planting Material/Method") },
            { "Code", QStringLiteral("S") } });
    insertRow(QStringLiteral("CodeLookup"),
        { { "Type", QStringLiteral("Planting Material/Method") },
            { "Code", QStringLiteral("T") } });
    insertRow(QStringLiteral("CodeLookup"),
        { { "Type", QStringLiteral("Plant Distribution") }, { "Code", QStringLiteral("R") } });
    insertRow(QStringLiteral("CodeLookup"),
        { { "Type", QStringLiteral("Plant Distribution") }, { "Code", QStringLiteral("H") } });

    const auto addPlanting = [](int level, const QVariant& method, const QVariant& distribution) {
        insertRow(QStringLiteral("Planting"),
            { { "LNPLT", level }, { "PLME", method }, { "PLDS", distribution } });
    };
    addPlanting(1, QStringLiteral(" T "), QStringLiteral("H")); // known, padded
    addPlanting(2, QStringLiteral("Q"), QStringLiteral("-99")); // unknown method
    addPlanting(3, QStringLiteral("H"), QVariant()); // a distribution code isn't a method
    addPlanting(4, QStringLiteral("-99"), QStringLiteral("T")); // nor the other way round
    addPlanting(5, QStringLiteral(""), QStringLiteral("")); // nothing to test

    ChangePlantingMethod();

    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNPLT, PLME, PLDS FROM Planting ORDER BY LNPLT")),
        QStringList({ "1| T |H", "2|S|-99", "3|S|NULL", "4|-99|R", "5||" }));
    ASSERT_EQ(m_ui.messages.size(), 2u);
    EXPECT_EQ(m_ui.messages[0].text,
        QStringLiteral("An unrecognized code was found in Planting Method. It has been changed to "
                       "'S' for 'Dry Seed'."));
    EXPECT_EQ(m_ui.messages[1].text,
        QStringLiteral("An unrecognized code was found in Plant Distribution. It has been changed "
                       "to 'R' for 'Rows'."));
    EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Warning"));
    EXPECT_EQ(m_ui.messages[1].title, QStringLiteral("Warning"));

    // All codes known now: nothing changes, nothing is said.
    m_ui.clear();
    ChangePlantingMethod();
    EXPECT_TRUE(m_ui.messages.empty());
}
