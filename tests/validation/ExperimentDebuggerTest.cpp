#include "validation/ExperimentDebugger.h"

#include "app/AppState.h"
#include "database/Sql.h"
#include "support/QtPrinters.h"
#include "support/WorkDbFixture.h"

#include <QDir>
#include <QFile>

using namespace quillon;
using namespace quillon::database;
using namespace quillon::validation;
using quillon::test::rowsOf;

namespace {

// Every table the debugger reads; none of them may change.
const QStringList experimentTables = QStringLiteral(
    "Treatments Fields Planting IrrigApplications Fertilization Residue Harvest InitialConditions "
    "Chemicals Tillage EnvironMod SimulationControl SimulationControlMethods "
    "SimulationControlManagement TotalWeatherLookup")
                                         .split(' ');

const QString noWeatherYear = QStringLiteral(
    "Applications year does not correspond to available years. Check Fields section Level #");

QStringList snapshot()
{
    QStringList all;
    for (const QString& table : experimentTables) {
        all << QStringLiteral("[%1]").arg(table);
        all << rowsOf(QStringLiteral("SELECT * FROM %1 ORDER BY rowid").arg(table));
    }
    return all;
}

QByteArray fileBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

class ExperimentDebugger : public test::WorkDbTest {
protected:
    void SetUp() override
    {
        WorkDbTest::SetUp();
        QDir(m_dir.path()).mkdir(QStringLiteral("Weather"));
        // The profile's location text, found inside the suite folder.
        state().WeatherFolder = QStringLiteral("C:\\TERVA48\\Weather");
    }

    QString errorsPath() const { return path(QStringLiteral("Errors.txt")); }

    void weatherFile(
        const QString& name, const QByteArray& text = "*WEATHER DATA : Test\r\n@DATE  SRAD\r\n")
    {
        QFile file(path(QStringLiteral("Weather/") + name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    // An observed weather code in the lookup, as the profile step leaves it.
    static void observed(const QString& code)
    {
        insertRow("TotalWeatherLookup", { { "Code", code }, { "Observed", "X" } });
    }

    static void treatment(int trtno, Values levels)
    {
        levels.insert(levels.begin(), { "TRTNO", trtno });
        insertRow("Treatments", levels);
    }

    static void field(int level, const QVariant& station)
    {
        insertRow("Fields",
            { { "LNFLD", level }, { "FLDNAM", QStringLiteral("FLD%1").arg(level) },
                { "WSTA", station } });
    }

    // A simulation level: weather kind, start, and the management codes of
    // irrigation, fertilizer, residue and harvest.
    static void simulation(
        int level, const QString& mewth, const QVariant& start, const QStringList& management)
    {
        insertRow("SimulationControl", { { "LNSIM", level }, { "YRSIM", start } });
        insertRow("SimulationControlMethods", { { "LNSIM", level }, { "MEWTH", mewth } });
        insertRow("SimulationControlManagement",
            { { "LNSIM", level }, { "IIRRI", management.value(0) },
                { "IFERI", management.value(1) }, { "IRESI", management.value(2) },
                { "IHARI", management.value(3) } });
    }

    static void planting(int level, const QVariant& day)
    {
        insertRow("Planting", { { "LNPLT", level }, { "YRPLT", day } });
    }

    static void fertilizer(int level, const QVariant& day)
    {
        insertRow("Fertilization", { { "LNFER", level }, { "FDAY", day } });
    }

    // One treatment on one observed weather file of 1982, planted after the
    // start, with one fertilizer application in that year.
    void cleanExperiment()
    {
        observed("UFGA8201");
        weatherFile("UFGA8201.WTH");
        field(1, "UFGA8201");
        simulation(1, "M", "82001", { "R", "R", "R", "M" });
        planting(1, "82060");
        fertilizer(1, "82070");
        treatment(1, { { "LNFLD", 1 }, { "LNSIM", 1 }, { "LNPLT", 1 }, { "LNFER", 1 } });
    }
};

TEST_F(ExperimentDebugger, RefusesWithoutTreatmentsOrWithoutSimulationAndFieldLevels)
{
    DebugResult result = DebugFile();
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].text, "No treatments in this file.");
    EXPECT_EQ(m_ui.messages[0].title, "Error");

    // The first treatment lacking a level ends the run; no file is written.
    cleanExperiment();
    treatment(2, { { "LNFLD", 1 }, { "LNPLT", 1 } });
    treatment(3, { { "LNSIM", 1 } });
    m_ui.clear();
    result = DebugFile();
    EXPECT_EQ(m_ui.texts(),
        QStringList { "Cannot debug. Simulation Control factor level is missing in Treatments." });

    exec("UPDATE Treatments SET LNSIM = 1 WHERE TRTNO = 2");
    m_ui.clear();
    result = DebugFile();
    EXPECT_EQ(m_ui.texts(),
        QStringList { "Cannot debug. Fields factor level is missing in Treatments." });
    EXPECT_EQ(result.outcome, DebugResult::Outcome::Refused);
    EXPECT_FALSE(QFile::exists(errorsPath()));
}

TEST_F(ExperimentDebugger, CleanExperimentLeavesOldErrorsFileAlone)
{
    cleanExperiment();
    {
        QFile old(errorsPath());
        ASSERT_TRUE(old.open(QIODevice::WriteOnly));
        old.write("old findings\r\n");
    }
    const QStringList before = snapshot();

    const DebugResult result = DebugFile();

    EXPECT_EQ(result.outcome, DebugResult::Outcome::Clean);
    EXPECT_EQ(m_ui.texts(), QStringList { "No errors has been found." });
    EXPECT_EQ(fileBytes(errorsPath()), QByteArray("old findings\r\n"));
    EXPECT_EQ(findingsReport(result), QStringList { "No errors has been found." });
    EXPECT_EQ(rowsOf("SELECT LNFLD, Year FROM Years"), QStringList { "1|1982" });
    EXPECT_EQ(snapshot(), before);

    // A second run remakes Years rather than adding to it.
    DebugFile();
    EXPECT_EQ(rowsOf("SELECT LNFLD, Year FROM Years"), QStringList { "1|1982" });
}

TEST_F(ExperimentDebugger, WeatherStationsAndYearsAreCheckedPerTreatment)
{
    // Field 1: the 1982 file. Field 2: no station. Field 3: a file the
    // suite doesn't have. Field 4: a station of four letters whose files
    // give 1990 by name and 1984 by the year under "@START".
    observed("UFGA8201");
    observed("UFGA");
    observed("KSAS9001");
    observed("KSAS9101");
    observed("KSAS");
    weatherFile("ufga8201.wth");
    weatherFile("KSAS9001.WTH");
    weatherFile("KSAS9101.WTH", "*WEATHER\r\n@START\r\n  1984 other\r\n@DATE\r\n");
    field(1, "UFGA8201");
    field(2, QVariant());
    field(3, "XXXX8201");
    field(4, " KSAS ");
    simulation(1, "M", "82001", { "R", "R", "R", "R" });
    simulation(2, "M", "84001", { "R", "R", "R", "R" });
    planting(1, "82060");
    planting(2, "84060");
    // 82365 is a day past the end of 1982 to TheDate, which takes the day
    // as an offset: it counts as 1983.
    fertilizer(1, "82070");
    fertilizer(1, "83070");
    fertilizer(1, "82365");
    fertilizer(1, QVariant());
    insertRow("Chemicals", { { "LNCHE", 1 }, { "CDATE", "84100" } });
    insertRow("Tillage", { { "LNTIL", 1 }, { "TDATE", "90100" } });
    insertRow("Harvest", { { "LNHAR", 1 }, { "HDATE", "84200" } });
    treatment(1, { { "LNFLD", 1 }, { "LNSIM", 1 }, { "LNPLT", 1 }, { "LNFER", 1 } });
    treatment(2, { { "LNFLD", 2 }, { "LNSIM", 1 }, { "LNPLT", 1 } });
    treatment(3, { { "LNFLD", 3 }, { "LNSIM", 1 }, { "LNPLT", 1 } });
    treatment(4,
        { { "LNFLD", 4 }, { "LNSIM", 2 }, { "LNPLT", 2 }, { "LNCHE", 1 }, { "LNTIL", 1 },
            { "LNHAR", 1 } });
    QFile::remove(errorsPath());
    const QStringList before = snapshot();

    const DebugResult result = DebugFile();

    EXPECT_TRUE(m_ui.texts().isEmpty()) << m_ui.texts().join('\n').toStdString();
    const QStringList expected {
        "(1)  Treatment #2/Fields: Missing data: Weather station code.",
        "(2)  Treatment #3/Fields: Weather file XXXX8201.WTH.was not found.",
        "(3)  Treatment #1/Fertilization " + noWeatherYear + "1",
        "(4)  Treatment #1/Fertilization " + noWeatherYear + "1",
        "(5)  Treatment #1/Fertilization Application date is missing.",
    };
    EXPECT_EQ(result.findings, expected);
    // The station row of a four-letter code has no year digits and gives
    // the bare century, which no date ever matches.
    EXPECT_EQ(rowsOf("SELECT LNFLD, Year FROM Years ORDER BY LNFLD, Year"),
        (QStringList { "1|1982", "4|20", "4|1984", "4|1990" }));

    ASSERT_TRUE(result.errorsFileWritten);
    EXPECT_EQ(result.errorsFilePath, errorsPath());
    QByteArray bytes = "\r\n\r\n";
    for (const QString& line : expected)
        bytes += "     " + line.toLatin1() + "\r\n";
    EXPECT_EQ(fileBytes(errorsPath()), bytes);
    EXPECT_EQ(findingsReport(result).join("\r\n").toLatin1() + "\r\n", bytes);
    EXPECT_EQ(snapshot(), before);
}

TEST_F(ExperimentDebugger, ApplicationDatesMustFitTheirManagement)
{
    cleanExperiment();
    // Days after planting for irrigation and residue: dates there are
    // wrong, day counts are right and have no year to check.
    simulation(2, "M", "82001", { "D", "R", "D", "M" });
    insertRow("IrrigApplications", { { "LNIR", 1 }, { "IDLAPL", "82100" } });
    insertRow("IrrigApplications", { { "LNIR", 1 }, { "IDLAPL", "  10 " } });
    insertRow("Residue", { { "LNRES", 1 }, { "RESDAY", "0" } });
    // Harvest at maturity and no irrigation take day counts too; the year
    // check still reads them as dates of 2010 and 2012.
    insertRow("Harvest", { { "LNHAR", 1 }, { "HDATE", "100" } });
    insertRow("Harvest", { { "LNHAR", 2 }, { "HDATE", "82200" } });
    treatment(2,
        { { "LNFLD", 1 }, { "LNSIM", 2 }, { "LNPLT", 1 }, { "LNIR", 1 }, { "LNRES", 1 },
            { "LNHAR", 1 } });
    simulation(3, "M", "82001", { "N", "R", "R", "R" });
    insertRow("IrrigApplications", { { "LNIR", 2 }, { "IDLAPL", "120" } });
    treatment(3, { { "LNFLD", 1 }, { "LNSIM", 3 }, { "LNPLT", 1 }, { "LNIR", 2 }, { "LNHAR", 2 } });

    DebugResult result = DebugFile();
    EXPECT_EQ(result.findings,
        (QStringList {
            "(1)  Treatment #2/Irrigation: Date Inconsistancy with Simulation Control Management.",
            "(2)  Treatment #2/Harvest " + noWeatherYear + "1",
            "(3)  Treatment #3/Irrigation " + noWeatherYear + "1" }));

    // A day count under dated fertilizer: the management check finds it,
    // and the year check, which can't make a date of it, reports and stops.
    fertilizer(1, "25");
    m_ui.clear();
    result = DebugFile();
    EXPECT_EQ(result.findings,
        (QStringList { "(1)  Treatment #1/Fertilization: Date Inconsistancy with Simulation "
                       "Control Management.",
            "(2)  Treatment #2/Irrigation: Date Inconsistancy with Simulation Control "
            "Management." }));
    EXPECT_EQ(m_ui.texts(),
        (QStringList { "Invalid procedure call or argument in TheDate.",
            "Type mismatch in CheckAllYears/frmMain." }));
}

TEST_F(ExperimentDebugger, PlantingLevelAndDaysAreChecked)
{
    cleanExperiment();
    simulation(2, "M", QStringLiteral("  "), { "R", "R", "R", "R" });
    simulation(3, "M", "82100", { "R", "R", "R", "R" });
    planting(2, QVariant());
    planting(3, "82099");
    planting(4, "82100");
    treatment(2, { { "LNFLD", 1 }, { "LNSIM", 2 } });
    treatment(3, { { "LNFLD", 1 }, { "LNSIM", 2 }, { "LNPLT", 2 } });
    treatment(4, { { "LNFLD", 1 }, { "LNSIM", 3 }, { "LNPLT", 3 } });
    treatment(5, { { "LNFLD", 1 }, { "LNSIM", 3 }, { "LNPLT", 4 } });

    const DebugResult result = DebugFile();

    EXPECT_TRUE(m_ui.texts().isEmpty()) << m_ui.texts().join('\n').toStdString();
    EXPECT_EQ(result.findings,
        (QStringList {
            "(1)  Treatment #2/ Planting Factor level is missing.",
            "(2)  Treatment #2/Simulation Control No Simulation start day.",
            "(3)  Treatment #3/Simulation Control No Simulation start day.",
            "(4)  Treatment #3/Planting No Planting day.",
            "(5)  Treatment #4/Planting Planting day cannot be before Simulation start.",
        }));
}

TEST_F(ExperimentDebugger, UnlistedWeatherKindsAreReportedAndTheRunGoesOn)
{
    cleanExperiment();
    simulation(2, "G", "82001", { "R", "R", "R", "R" });
    treatment(2, { { "LNFLD", 1 }, { "LNSIM", 2 }, { "LNPLT", 1 }, { "LNFER", 1 } });
    // Reached only if the weather check went on after treatment 2.
    field(2, QVariant());
    treatment(3, { { "LNFLD", 2 }, { "LNSIM", 1 }, { "LNPLT", 1 } });

    const DebugResult result = DebugFile();

    // The lookup has no "Generated" mark column: the weather check stops
    // at treatment 2, after filling the years of treatment 1, and the
    // other checks run.
    EXPECT_EQ(m_ui.texts(),
        (QStringList { "no such column: Generated in CheckWeatherFileExistence/frmMain.",
            "No errors has been found." }));
    EXPECT_EQ(rowsOf("SELECT LNFLD, Year FROM Years"), QStringList { "1|1982" });
    EXPECT_TRUE(result.findings.isEmpty());

    // A climate kind fails the same way; the year check then has no years
    // for the field that follows.
    exec("DELETE FROM Treatments WHERE TRTNO <> 2");
    exec("UPDATE SimulationControlMethods SET MEWTH = 'S' WHERE LNSIM = 2");
    m_ui.clear();
    const DebugResult climate = DebugFile();
    EXPECT_EQ(
        m_ui.texts().value(0), "no such column: Climate in CheckWeatherFileExistence/frmMain.");
    EXPECT_EQ(
        climate.findings, QStringList { "(1)  Treatment #2/Fertilization " + noWeatherYear + "1" });
}

TEST(CheckPlantingDate, WarnsWhenTheYearHasNoWeather)
{
    test::ScriptedUserInterface ui;
    const QStringList years { "1982", "2001 " };
    EXPECT_TRUE(CheckPlantingDate("82100", years));
    EXPECT_TRUE(CheckPlantingDate("01001", years));
    EXPECT_TRUE(ui.messages.empty());

    EXPECT_FALSE(CheckPlantingDate("83100", years));
    EXPECT_FALSE(CheckPlantingDate("1982100", years));
    ASSERT_EQ(ui.messages.size(), 2u);
    EXPECT_EQ(ui.messages[0].icon, MsgIcon::Exclamation);
    EXPECT_TRUE(ui.messages[0].text.endsWith(" 2")) << ui.messages[0].text.toStdString();
}

} // namespace
