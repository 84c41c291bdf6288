#include "app/AppState.h"
#include "database/Sql.h"
#include "reference/SimDefaults.h"
#include "support/WorkDbFixture.h"

#include "support/QtPrinters.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace quillon;
using namespace quillon::reference;
using quillon::test::rowsOf;

namespace {

// A data line of the simulation groups: level and label in 14 positions,
// then each cell right-aligned in 6.
QString groupLine(const char* head, std::initializer_list<const char*> cells)
{
    QString line = QString::fromLatin1(head).leftJustified(14);
    for (const char* cell : cells)
        line += QString::fromLatin1(cell).rightJustified(6);
    return line;
}

// A defaults file of one level in the section's own form. The model code of
// a defaults file is read untrimmed from position 71, so it stands there.
QStringList defaultsLines()
{
    return {
        QStringLiteral("*SIMULATION CONTROLS"),
        QStringLiteral("@N GENERAL     NYERS NREPS START SDATE RSEED SNAME.................... SMODEL"),
        groupLine(" 1 GE", { "3", "2", "P", "98150", "1234" }) + QStringLiteral(" ")
            + QStringLiteral("My defaults title").leftJustified(25) + QStringLiteral("KESTRAL"),
        QStringLiteral("@N OPTIONS     WATER NITRO SYMBI PHOSP POTAS DISES  CHEM  TILL   CO2"),
        groupLine(" 1 OP", { "N", "Y", "N", "Y", "N", "Y", "N", "Y", "M" }),
        QStringLiteral("@N METHODS     WTHER INCON LIGHT EVAPO INFIL PHOTO HYDRO NSWIT MESOM MESEV MESOL"),
        groupLine(" 1 ME", { "W", "I", "L", "E", "F", "P", "H", "2", "S", "V", "3" }),
        QStringLiteral("@N MANAGEMENT  PLANT IRRIG FERTI RESID HARVS"),
        groupLine(" 1 MA", { "A", "B", "C", "D", "E" }),
        QStringLiteral("@N OUTPUTS     FNAME OVVEW SUMRY FROPT GROUT CAOUT WAOUT NIOUT MIOUT DIOUT VBOSE CHOUT OPOUT FMOPT"),
        groupLine(" 1 OU", { "Y", "N", "N", "7", "N", "Y", "N", "N", "N", "Y", "N", "Y", "N", "C" }),
        QString(),
        QStringLiteral("@  AUTOMATIC MANAGEMENT"),
        QStringLiteral("@N PLANTING    PFRST PLAST PH2OL PH2OU PH2OD PSTMX PSTMN"),
        groupLine(" 1 PL", { "98100", "98200", "41", "101", "31", "41", "11" }),
        QStringLiteral("@N IRRIGATION  IMDEP ITHRL ITHRU IROFF IMETH IRAMT IREFF"),
        groupLine(" 1 IR", { "31", "51", "101", "GS001", "IR002", "11", "0.9" }),
        QStringLiteral("@N NITROGEN    NMDEP NMTHR NAMNT NCODE NAOFF"),
        groupLine(" 1 NI", { "31", "51", "26", "FE002", "GS001" }) + QStringLiteral(" tail"),
        QStringLiteral("@N RESIDUES    RIPCN RTIME RIDEP"),
        groupLine(" 1 RE", { "101", "2", "21" }),
        QStringLiteral("@N HARVEST     HFRST HLAST HPCNP HPCNR"),
        groupLine(" 1 HA", { "31", "98300", "101", "31" }),
    };
}

QStringList simdatesLines()
{
    return { QStringLiteral("@N SIMDATES    ENDAT    SDUR   FODAT  FSTRYR  FENDYR FWFILE           FONAME"),
        QStringLiteral(" 1 SI").leftJustified(14) + QStringLiteral("2025100").rightJustified(22) + QString(34, QLatin1Char(' '))
            + QStringLiteral("FORECAST.WTH") };
}

class SimDefaultsTest : public test::WorkDbTest {
protected:
    void SetUp() override
    {
        WorkDbTest::SetUp();
        state().setExperimental();
        simDefaults() = SimDefaults();
        database::exec(QStringLiteral(
            "CREATE TABLE SimLookUp (Code TEXT COLLATE NOCASE, Description TEXT COLLATE NOCASE, Type INTEGER)"));
        database::insertRow(QStringLiteral("SimLookUp"),
            { { QStringLiteral("Code"), QStringLiteral("KESTRAL") },
                { QStringLiteral("Description"), QStringLiteral("Kestral models") }, { QStringLiteral("Type"), 19 } });
        database::insertRow(QStringLiteral("SimLookUp"),
            { { QStringLiteral("Code"), QStringLiteral("M") },
                { QStringLiteral("Description"), QStringLiteral("Measured weather") }, { QStringLiteral("Type"), 4 } });
    }

    void writeDefaults(const QString& name, const QStringList& lines)
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(lines.join(QStringLiteral("\r\n")).toLatin1() + "\r\n");
    }

    // A few members from every line of the file, enough to tell which
    // source filled the record.
    static QString fingerprint(const SimDefaults& d)
    {
        return QStringList { QString::number(d.NYRS), d.TITSIM, d.Crop_Model, d.ISCO2, QString::number(d.NSWIT),
            d.IHARI, QString::number(d.FROP), d.FMOPT, QString::number(d.SWPLTL), d.IOFF, d.NEND,
            QString::number(d.RIP), QString::number(d.HDLAY), QString::number(d.HRP) }
            .join(QLatin1Char('|'));
    }
    const QString builtIn = QStringLiteral("1|Default Simulation Control.||W|1|M|1|A|40|GS000|GS000|100|30|30");
};

} // namespace

TEST_F(SimDefaultsTest, ReadsEveryLineByItsIndexFromTheGeneralHeader)
{
    QStringList lines = defaultsLines();
    // Lines before the marker only count; an empty line behind the marker
    // moves the first stored line, and every index with it.
    lines.prepend(QStringLiteral("Defaults for experiments"));
    lines.insert(2, QString());
    writeDefaults(QStringLiteral("Simulate.def"), lines);
    LoadSimDefaults();
    const SimDefaults& d = simDefaults();

    auto join = [](const QStringList& l) { return l.join(QLatin1Char('|')); };
    auto numbers = [](std::initializer_list<float> l) {
        QStringList out;
        for (float v : l)
            out << QString::number(v);
        return out.join(QLatin1Char('|'));
    };
    // Text as it stands: the title keeps its 24 positions.
    EXPECT_EQ(join({ QString::number(d.NYRS), QString::number(d.NREPSQ), d.ISIMI, d.YRSIM, QString::number(d.RSEED),
                  d.TITSIM, d.Crop_Model }),
        QStringLiteral("3|2|P|98150|1234|My defaults title       |KESTRAL"));
    EXPECT_EQ(d.ISWWAT + d.ISWNIT + d.ISWSYM + d.ISWPHO + d.ISWPOT + d.ISWDIS + d.ISCHEM + d.ISTILL + d.ISCO2,
        QStringLiteral("NYNYNYNYM"));
    EXPECT_EQ(d.MEWTH + d.MESIC + d.MELI + d.MEEVP + d.MEINF + d.MEPHO + d.HYDRO + QString::number(d.NSWIT) + d.MESOM
            + d.MESEV + d.MESOL,
        QStringLiteral("WILEFPH2SV3"));
    EXPECT_EQ(d.IPLTI + d.IIRRI + d.IFERI + d.IRESI + d.IHARI, QStringLiteral("ABCDE"));
    EXPECT_EQ(d.IOX + d.IDETO + d.IDETS + QString::number(d.FROP) + d.IDETG + d.IDETC + d.IDETW + d.IDETN + d.IDETP
            + d.IDETD + d.VBOSE + d.CHOUT + d.OPOUT + d.FMOPT,
        QStringLiteral("YNN7NYNNNYNYNC"));
    // The window dates are never read.
    EXPECT_EQ(join({ d.PWDINF, d.PWDINL, d.HLATE }), QStringLiteral("-99  |-99  |-99  "));
    EXPECT_EQ(numbers({ d.SWPLTL, d.SWPLTH, d.SWPLTD, d.PTX, d.PTTN }), QStringLiteral("41|101|31|41|11"));
    EXPECT_EQ(numbers({ d.DSOIL, d.THETAC, d.IEPT, d.AIRAMT, d.EFFIRR }) + d.IOFF + d.IAME,
        QStringLiteral("31|51|101|11|0.9GS001IR002"));
    // The stage code takes five positions here, whatever follows.
    EXPECT_EQ(numbers({ d.DSOILN, d.SOILNC, d.SOILNX }) + d.NCODE + d.NEND, QStringLiteral("31|51|26FE002GS001"));
    EXPECT_EQ(numbers({ d.RIP, d.NRESDL, d.DRESMG, d.HDLAY, d.HPP, d.HRP }), QStringLiteral("101|2|21|31|101|31"));
    // Outside forecast mode the forecast members aren't touched.
    EXPECT_EQ(d.FODAT, QString());
    EXPECT_EQ(d.FONAME, QString());
    EXPECT_TRUE(m_ui.messages.empty());
}

TEST_F(SimDefaultsTest, TheFileFollowsTheExperimentType)
{
    writeDefaults(QStringLiteral("Simulate.def"), defaultsLines());
    writeDefaults(QStringLiteral("Simulate_Forecast.def"), defaultsLines() + simdatesLines());

    state().IsExperimental = false;
    state().IsSeasonal = true; // no Simulate_Seasonal.def: built-in values
    LoadSimDefaults();
    EXPECT_EQ(fingerprint(simDefaults()), builtIn);
    EXPECT_EQ(simDefaults().FODAT, QString());

    state().IsSeasonal = false;
    state().IsForecast = true;
    LoadSimDefaults();
    EXPECT_EQ(simDefaults().NYRS, 3);
    EXPECT_EQ(simDefaults().FODAT, QStringLiteral("2025100"));
    EXPECT_EQ(simDefaults().FONAME, QStringLiteral("FORECAST.WTH"));

    // Two flags at once name no file at all.
    state().IsExperimental = true;
    LoadSimDefaults();
    EXPECT_EQ(fingerprint(simDefaults()), builtIn);
    EXPECT_EQ(simDefaults().FODAT, QStringLiteral("-99"));
    EXPECT_EQ(simDefaults().FONAME, QStringLiteral("-99"));
    EXPECT_TRUE(m_ui.messages.empty());
}

TEST_F(SimDefaultsTest, AnyFailureFallsBackCompletelyAndSilently)
{
    const QString fileName = QStringLiteral("Simulate.def");
    auto loads = [&](const QStringList& lines) {
        simDefaults() = SimDefaults();
        writeDefaults(fileName, lines);
        LoadSimDefaults();
        return fingerprint(simDefaults());
    };
    const QString fromFile = QStringLiteral("3|My defaults title       |KESTRAL|M|2|E|7|C|41|GS001|GS001|101|31|31");
    ASSERT_EQ(loads(defaultsLines()), fromFile);

    // A blank residues cell: a strict number, so the whole record falls back,
    // also the general line that was read before it.
    QStringList lines = defaultsLines();
    lines[20] = groupLine(" 1 RE", { "", "2", "21" });
    EXPECT_EQ(loads(lines), builtIn);
    // Letters where a strict number stands, in methods and outputs.
    lines = defaultsLines();
    lines[6] = groupLine(" 1 ME", { "W", "I", "L", "E", "F", "P", "H", "x", "S", "V", "3" });
    EXPECT_EQ(loads(lines), builtIn);
    lines = defaultsLines();
    lines[22] = groupLine(" 1 HA", { "abc", "98300", "101", "31" });
    EXPECT_EQ(loads(lines), builtIn);
    // Lenient numbers take text as 0.
    lines = defaultsLines();
    lines[14] = groupLine(" 1 PL", { "98100", "98200", "abc", "101", "31", "41", "11" });
    EXPECT_EQ(loads(lines), QString(fromFile).replace(QStringLiteral("|41|GS001"), QStringLiteral("|0|GS001")));

    // Thirty lines are the limit, counting blank ones at the end.
    lines = defaultsLines();
    while (lines.size() < 30)
        lines << QStringLiteral("text after the last needed line");
    EXPECT_EQ(loads(lines), QStringLiteral("3|My defaults title       |KESTRAL|M|2|E|7|C|41|GS001|GS001|101|31|31"));
    lines << QString();
    EXPECT_EQ(loads(lines), builtIn);

    // No marker line: nothing is stored.
    lines = defaultsLines();
    lines.removeFirst();
    EXPECT_EQ(loads(lines), builtIn);
    // Seven blank lines behind the marker still leave room for the harvest
    // line at the thirtieth; eight put it past the last entry.
    lines = defaultsLines();
    for (int i = 0; i < 7; ++i)
        lines.insert(1, QString());
    EXPECT_EQ(loads(lines), fromFile);
    lines = defaultsLines().mid(0, 11);
    for (int i = 0; i < 8; ++i)
        lines.insert(1, QString());
    EXPECT_EQ(loads(lines), builtIn);
    EXPECT_TRUE(m_ui.messages.empty());
}

TEST_F(SimDefaultsTest, ForecastWithoutDatesLineLeavesTheDatesEmpty)
{
    state().IsExperimental = false;
    state().IsForecast = true;
    writeDefaults(QStringLiteral("Simulate_Forecast.def"), defaultsLines());
    simDefaults().FODAT = QStringLiteral("old");
    LoadSimDefaults();
    EXPECT_EQ(simDefaults().NYRS, 3);
    EXPECT_EQ(simDefaults().FODAT, QString());
    EXPECT_EQ(simDefaults().FONAME, QString());
}

TEST_F(SimDefaultsTest, VerifySimModelLooksOnlyAtCropModels)
{
    EXPECT_EQ(VerifySim_Model(QStringLiteral("KESTRAL")), QStringLiteral("KESTRAL"));
    EXPECT_EQ(VerifySim_Model(QStringLiteral("kestral")), QStringLiteral("kestral")); // the code given comes back
    EXPECT_EQ(VerifySim_Model(QStringLiteral("M")), QString()); // another type
    EXPECT_EQ(VerifySim_Model(QStringLiteral(" KESTRAL")), QString());
    EXPECT_EQ(VerifySim_Model(QStringLiteral("O'Brien")), QString());
    EXPECT_TRUE(m_ui.messages.empty());

    database::exec(QStringLiteral("DROP TABLE SimLookUp"));
    EXPECT_EQ(VerifySim_Model(QStringLiteral("KESTRAL")), QString());
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_TRUE(m_ui.messages[0].text.endsWith(QStringLiteral(" in VerifySim_Model."))) << m_ui.messages[0].text.toStdString();
}

TEST_F(SimDefaultsTest, FillDefaltSimStartsANewExperiment)
{
    simDefaults().assignBuiltIn(false);
    simDefaults().Crop_Model = QStringLiteral("KESTRAL");
    simDefaults().YRSIM = QStringLiteral("98150");
    database::insertRow(QStringLiteral("Treatments"), { { QStringLiteral("TRTNO"), 7 } });
    database::insertRow(QStringLiteral("SimulationControl"), { { QStringLiteral("LNSIM"), 1 } });
    database::insertRow(QStringLiteral("AutoManagementHarvest"), { { QStringLiteral("LNSIM"), 4 } });

    FillDefaltSim();
    EXPECT_TRUE(m_ui.messages.empty());
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM SimulationControl")),
        QStringList { QStringLiteral("1|GE|1|1|S|NULL|2150|Default Simulation Control.|KESTRAL") });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM SimulationControlOptions")),
        QStringList { QStringLiteral("1|OP|Y|Y|Y|N|N|N|N|N|W") });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM SimulationControlMethods")),
        QStringList { QStringLiteral("1|ME|M|M|E|R|S|C|R|1|G|S|2") });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM SimulationControlManagement")),
        QStringList { QStringLiteral("1|MA|R|R|R|N|M") });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM SimulationControlOutputs")),
        QStringList { QStringLiteral("1|OU|N|Y|Y|1|Y|N|Y|Y|Y|N|Y|N|Y|A") });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM AutoManagementPlanting")),
        QStringList { QStringLiteral("1|PL|-99  |-99  |40|100|30|40|10") });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM AutoManagementIrrigation")),
        QStringList { QStringLiteral("1|IR|30|50|100|GS000|IR001|10|1") });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM AutoManagementNitrogen")),
        QStringList { QStringLiteral("1|NI|30|50|25|FE001|GS000") });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM AutoManagementResidues")),
        QStringList { QStringLiteral("1|RE|100|1|20") });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM AutoManagementHarvest")),
        QStringList { QStringLiteral("1|HA|30|-99  |100|30") });
    // Added whatever the type; outside forecast mode the members are empty.
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM AutoManagementSimdates")), QStringList { QStringLiteral("1|SI||") });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT TRTNO, ROTNO, ROTOPT, CRPNO, TITLET, LNCU, LNFLD, LNSA, LNPLT, LNSIM "
                                    "FROM Treatments")),
        QStringList { QStringLiteral("1|1|1|NULL|Sim1|1|1|NULL|1|1") });
}

TEST_F(SimDefaultsTest, FillDefaltSimReportsAndStopsWhereItFailed)
{
    simDefaults().assignBuiltIn(false);
    simDefaults().TITSIM = QString(31, QLatin1Char('x')); // wider than the title column
    database::insertRow(QStringLiteral("Treatments"), { { QStringLiteral("TRTNO"), 7 } });
    FillDefaltSim();
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].text,
        QStringLiteral("The field is too small to accept the amount of data you attempted to add.  Try inserting or "
                       "pasting less data. in FillDefaltSim."));
    EXPECT_EQ(database::rowCount(QStringLiteral("Treatments")), 0);
    EXPECT_EQ(database::rowCount(QStringLiteral("SimulationControlOptions")), 0);
}
