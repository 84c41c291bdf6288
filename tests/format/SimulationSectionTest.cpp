#include "format/AutomaticSection.h"
#include "format/SimulationSection.h"
#include "format/SimulationTestSupport.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

using namespace quillon;
using namespace quillon::format;
using quillon::reference::simDefaults;
using quillon::test::generalLine;
using quillon::test::groupLine;
using quillon::test::rowsOf;

namespace {

const QString GeneralHeader
    = QStringLiteral("@N GENERAL     NYERS NREPS START SDATE RSEED SNAME.................... SMODEL");
const QString OptionsHeader = QStringLiteral("@N OPTIONS     WATER NITRO SYMBI PHOSP POTAS DISES  CHEM  TILL   CO2");
const QString MethodsHeader
    = QStringLiteral("@N METHODS     WTHER INCON LIGHT EVAPO INFIL PHOTO HYDRO NSWIT MESOM MESEV MESOL");
const QString ManagementHeader = QStringLiteral("@N MANAGEMENT  PLANT IRRIG FERTI RESID HARVS");
const QString OutputsHeader = QStringLiteral(
    "@N OUTPUTS     FNAME OVVEW SUMRY FROPT GROUT CAOUT WAOUT NIOUT MIOUT DIOUT VBOSE CHOUT OPOUT FMOPT");

// One level as the writer lays it out, with the planting window and the last
// harvest given as days alone.
QStringList levelOne()
{
    return {
        GeneralHeader,
        QStringLiteral(" 1 GE              1     1     S 98001  2150 Rainfed wheat             KESTRAL"),
        OptionsHeader,
        QStringLiteral(" 1 OP              Y     Y     N     N     N     N     N     N     M"),
        MethodsHeader,
        QStringLiteral(" 1 ME              M     M     E     R     S     L     R     1     G     S     2"),
        ManagementHeader,
        QStringLiteral(" 1 MA              R     R     R     N     M"),
        OutputsHeader,
        QStringLiteral(" 1 OU              N     Y     Y     1     Y     N     Y     Y     N     N     Y     N     Y     A"),
        QString(),
        QStringLiteral("@  AUTOMATIC MANAGEMENT"),
        QStringLiteral("@N PLANTING    PFRST PLAST PH2OL PH2OU PH2OD PSTMX PSTMN"),
        QStringLiteral(" 1 PL            150 98200    40   100    30    40    10"),
        QStringLiteral("@N IRRIGATION  IMDEP ITHRL ITHRU IROFF IMETH IRAMT IREFF"),
        QStringLiteral(" 1 IR             30    50   100 GS000 IR001    10  0.75"),
        QStringLiteral("@N NITROGEN    NMDEP NMTHR NAMNT NCODE NAOFF"),
        QStringLiteral(" 1 NI             30    50    25 FE001 GS000"),
        QStringLiteral("@N RESIDUES    RIPCN RTIME RIDEP"),
        QStringLiteral(" 1 RE            100     1    20"),
        QStringLiteral("@N HARVEST     HFRST HLAST HPCNP HPCNR"),
        QStringLiteral(" 1 HA              0   300   100     0"),
        QString(),
    };
}

class SimulationSectionTest : public test::SimulationTest {
protected:
    // Reads from the first line on, which must be a general header; returns
    // the line the dispatch would look at next ("<end>" at the end).
    QString read(const QStringList& raw)
    {
        LineCursor c = LineCursor::fromLines(raw);
        readSimulationControls(c);
        EXPECT_LE(c.i, c.n());
        return c.atEnd() ? QStringLiteral("<end>") : c.line();
    }

    static QStringList written()
    {
        FileWriter w;
        writeSimulationSection(w);
        return QString::fromLatin1(w.bytes()).split(QStringLiteral("\r\n"));
    }
};

} // namespace

TEST_F(SimulationSectionTest, ReadsALevelWithItsAutomaticManagement)
{
    EXPECT_EQ(read(levelOne() << QStringLiteral("*TREATMENTS")), QStringLiteral("*TREATMENTS"));
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(rows("SimulationControl"), QStringList { QStringLiteral("1|GE|1|1|S|98001|2150|Rainfed wheat|KESTRAL") });
    EXPECT_EQ(rows("SimulationControlOptions"), QStringList { QStringLiteral("1|OP|Y|Y|N|N|N|N|N|N|M") });
    EXPECT_EQ(rows("SimulationControlMethods"), QStringList { QStringLiteral("1|ME|M|M|E|R|S|L|R|1|G|S|2") });
    EXPECT_EQ(rows("SimulationControlManagement"), QStringList { QStringLiteral("1|MA|R|R|R|N|M") });
    EXPECT_EQ(rows("SimulationControlOutputs"), QStringList { QStringLiteral("1|OU|N|Y|Y|1|Y|N|Y|Y|N|N|Y|N|Y|A") });
    // Day 150 follows the start (98001), so it moves to the next year.
    EXPECT_EQ(rows("AutoManagementPlanting"), QStringList { QStringLiteral("1|PL|99150|98200|40|100|30|40|10") });
    EXPECT_EQ(rows("AutoManagementIrrigation"), QStringList { QStringLiteral("1|IR|30|50|100|GS000|IR001|10|0.75") });
    EXPECT_EQ(rows("AutoManagementNitrogen"), QStringList { QStringLiteral("1|NI|30|50|25|FE001|GS000") });
    EXPECT_EQ(rows("AutoManagementResidues"), QStringList { QStringLiteral("1|RE|100|1|20") });
    EXPECT_EQ(rows("AutoManagementHarvest"), QStringList { QStringLiteral("1|HA|0|98300|100|0") });
    EXPECT_TRUE(rows("AutoManagementSimdates").isEmpty());
}

TEST_F(SimulationSectionTest, CellRulesOfTheControlGroups)
{
    // A line that ends after the label leaves every cell NULL; without the
    // label even that is NULL. The harvest management is read on every line.
    SimGeneralRead(QStringLiteral(" 2 GE"));
    SimGeneralRead(QStringLiteral(" 3"));
    SimManagementRead(QStringLiteral(" 2 MA"));
    EXPECT_EQ(rows("SimulationControl"),
        QStringList({ QStringLiteral("2|GE|NULL|NULL|NULL|NULL|NULL|NULL|NULL"),
            QStringLiteral("3|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL") }));
    EXPECT_EQ(rows("SimulationControlManagement"), QStringList { QStringLiteral("2|MA|NULL|NULL|NULL|NULL|M") });

    // Blank and negative cells take the defaults, a blank label its letters;
    // a short start date is padded; a title of 25 keeps 24; an unknown model
    // becomes empty.
    simDefaults().TITSIM = QStringLiteral("Default title");
    SimGeneralRead(generalLine(" 4", { "-99", "", "S", "150", "-5" }, QString(), QStringLiteral("KESTRAL")));
    SimGeneralRead(generalLine(" 5 GE", { "2", "3", "P", "-99", "7" },
        QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXY"), QStringLiteral("NOMODEL")));
    SimGeneralRead(generalLine(" 6 GE", { "2", "3", "P", "8001", "7" }, QStringLiteral("Short"), QStringLiteral("mirta")));
    // Position 71 belongs to the model's eight positions, so a nine-letter
    // code loses its last letter and isn't found.
    SimGeneralRead(generalLine(" 7 GE", { "2", "3", "P", "1", "7" }, QStringLiteral("T"), QStringLiteral("LUMEN-ALT")));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM SimulationControl WHERE LNSIM >= 4")),
        QStringList({ QStringLiteral("4|GE|1|1|S|00150|2150|Default title|KESTRAL"),
            QStringLiteral("5|GE|2|3|P|-99|7|ABCDEFGHIJKLMNOPQRSTUVWX|"),
            QStringLiteral("6|GE|2|3|P|08001|7|Short|mirta"), QStringLiteral("7|GE|2|3|P|00001|7|T|") }));

    // One position wide, -99 reads as 9 in the options; the methods look at
    // three positions and take the default.
    SimOptionsRead(groupLine(" 1 OP", { "-99", "N", "", "N", "N", "N", "N", "N", "C" }));
    // The last method tests its own position only, so there -99 reads as 9
    // too.
    SimMethodsRead(groupLine(" 1 ME", { "-99", "M", "E", "R", "S", "L", "R", "-99", "G", "S", "-99" }));
    EXPECT_EQ(rows("SimulationControlOptions"), QStringList { QStringLiteral("1|OP|9|N|Y|N|N|N|N|N|C") });
    EXPECT_EQ(rows("SimulationControlMethods"), QStringList { QStringLiteral("1|ME|M|M|E|R|S|L|R|1|G|S|9") });

    // The end-of-line tests: CO2 needs 68 characters; the photosynthesis
    // test passes a line of 46 whose cell is then blank; the last outputs
    // are tested before their columns.
    const QString options = groupLine(" 2 OP", { "N", "N", "N", "N", "N", "N", "N", "N", "Z" });
    SimOptionsRead(options.left(67));
    SimOptionsRead(QStringLiteral(" 3 OP") + options.mid(5));
    SimMethodsRead(groupLine(" 2 ME", { "A", "B", "C", "D", "F" }) + QStringLiteral("xx"));
    const QString outputs = groupLine(" 2 OU", { "N", "N", "N", "5", "N", "N", "N", "N", "N", "N", "N", "Q", "Q", "Q" });
    SimOutputsRead(outputs.left(83));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNSIM, ISCO2 FROM SimulationControlOptions WHERE LNSIM > 1")),
        QStringList({ QStringLiteral("2|NULL"), QStringLiteral("3|Z") }));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT MEINF, MEPHO, HYDRO FROM SimulationControlMethods WHERE LNSIM = 2")),
        QStringList { QStringLiteral("F|C|NULL") });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT FROP, VBOSE, CHOUT, OPOUT FROM SimulationControlOutputs")),
        QStringList { QStringLiteral("5|N|N|NULL") });
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
}

TEST_F(SimulationSectionTest, GroupReadersReplaceABadLineByDefaults)
{
    SimGeneralRead(generalLine(" 1 GE", { "1", "1", "S", "98001", "2150" }, QStringLiteral("First"), QString()));
    SimGeneralRead(generalLine(" 1 GE", { "2", "2", "S", "98001", "2150" }, QStringLiteral("Second"), QString()));
    SimGeneralRead(generalLine(" 2 GE", { "abc", "1", "S", "98001", "2150" }, QStringLiteral("Bad"), QString()));
    SimMethodsRead(groupLine(" 2 ME", { "M", "M", "E", "R", "S", "L", "R", "x", "G", "S", "2" }));
    ASSERT_EQ(m_ui.messages.size(), 3u);
    EXPECT_EQ(m_ui.texts(),
        QStringList({ QStringLiteral("duplicate levels in 'Simulation Control'. Level 1 is read only once."),
            QStringLiteral("Error was found in Simulation Control/General. Default information is read for level 2"),
            QStringLiteral("Error was found in Simulation Control/Methods. Default information is read for level 2") }));
    for (const auto& m : m_ui.messages) {
        EXPECT_EQ(m.title, QStringLiteral("Error"));
        EXPECT_EQ(m.icon, MsgIcon::Critical);
    }
    EXPECT_EQ(rows("SimulationControl"),
        QStringList({ QStringLiteral("1|GE|1|1|S|98001|2150|First|NULL"),
            QStringLiteral("2|GE|1|1|S|-99|2150|Default Simulation Control.|") }));
    EXPECT_EQ(rows("SimulationControlMethods"), QStringList { QStringLiteral("2|ME|M|M|E|R|S|C|R|1|G|S|2") });

    // The options reader offers its row of defaults to the general table,
    // which can't take it: the failure goes on to the caller.
    SimOptionsRead(groupLine(" 1 OP", { "Y" }));
    EXPECT_THROW(SimOptionsRead(groupLine(" 1 OP", { "N" })), RuntimeError);
    // A second line of a level in another group fails twice over.
    EXPECT_THROW(SimMethodsRead(groupLine(" 2 ME", { "W" })), RuntimeError);
    EXPECT_EQ(m_ui.texts().mid(3),
        QStringList({ QStringLiteral("Error was found in Simulation Control/Options. Default information is read for level 1"),
            QStringLiteral("Error was found in Simulation Control/Methods. Default information is read for level 2") }));
}

TEST_F(SimulationSectionTest, AnUnabsorbedFailureResetsTheSectionAndReadingGoesOn)
{
    database::insertRow(QStringLiteral("Planting"),
        { { QStringLiteral("LNPLT"), 1 }, { QStringLiteral("YRPLT"), QStringLiteral("99120") } });
    QStringList lines = levelOne();
    lines.insert(4, QStringLiteral(" 1 OP              N     N     N     N     N     N     N     N     N"));
    lines << GeneralHeader << generalLine(" 2 GE", { "3", "1", "S", "98001", "2150" }, QStringLiteral("Two"), QString())
          << OptionsHeader << groupLine(" 2 OP", { "N", "N" }) << MethodsHeader << ManagementHeader << OutputsHeader;
    LineCursor c = LineCursor::fromLines(lines);
    readSimulationControls(c);
    EXPECT_EQ(c.line(), GeneralHeader);
    readSimulationControls(c);
    EXPECT_TRUE(c.atEnd());

    // Each later group of level 1 then meets the reset's rows as a second
    // line of its level: its own message, and the reset once more.
    const QString reset
        = QStringLiteral("There is an error in Simulation Control section. Simulation Control will be changed to default.");
    QStringList expected;
    for (const char* group : { "Simulation Control/Options", "Simulation Control/Methods",
             "Simulation Control/Management", "Simulation Control/Outputs", "Auto Management/Planting",
             "Auto Management/Irrigation", "Auto Management/Nitrogen", "Auto Management/Residues",
             "Auto Management/Harvest" })
        expected << QStringLiteral("Error was found in %1. Default information is read for level 1").arg(QLatin1String(group))
                 << reset;
    EXPECT_EQ(m_ui.texts(), expected);
    EXPECT_EQ(m_ui.messages[1].icon, MsgIcon::Exclamation);
    EXPECT_EQ(m_ui.messages[1].title, QStringLiteral("Quillon"));

    // The last reset left level 1 of defaults in every table, with the
    // planting date as start; level 2 was read behind it.
    EXPECT_EQ(rows("SimulationControl"),
        QStringList({ QStringLiteral("1|GE|1|1|S|99120|2150|Default Simulation Control.|"),
            QStringLiteral("2|GE|3|1|S|98001|2150|Two|NULL") }));
    EXPECT_EQ(rows("SimulationControlOptions"),
        QStringList({ QStringLiteral("1|OP|Y|Y|Y|N|N|N|N|N|W"), QStringLiteral("2|OP|N|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL") }));
    EXPECT_EQ(rows("AutoManagementPlanting"), QStringList { QStringLiteral("1|PL|-99  |-99  |40|100|30|40|10") });
    EXPECT_EQ(rows("AutoManagementSimdates"), QStringList { QStringLiteral("1|SI||") });
}

TEST_F(SimulationSectionTest, CommentsGoToTheSimulationBuffer)
{
    QStringList lines = levelOne();
    lines.insert(2, QStringLiteral("! after general"));
    lines.insert(12, QStringLiteral("  ! before the marker"));
    lines.insert(15, QStringLiteral("!in planting"));
    EXPECT_EQ(read(lines), QStringLiteral("<end>"));
    EXPECT_EQ(state().comments.CommentsSimulation,
        QStringLiteral("\r\n after general\r\n ! before the marker\r\nin planting"));
    EXPECT_EQ(database::rowCount(QStringLiteral("AutoManagementHarvest")), 1);

    // A comment handed to a group reader costs the buffer its first two
    // characters.
    SimOutputsRead(QStringLiteral("!x"));
    EXPECT_EQ(state().comments.CommentsSimulation,
        QStringLiteral(" after general\r\n ! before the marker\r\nin planting\r\nx"));
}

TEST_F(SimulationSectionTest, WhereReadingStops)
{
    // Without a marker line the level ends after its outputs.
    QStringList lines = levelOne().mid(0, 10);
    lines << QStringLiteral("@N PLANTING    PFRST PLAST") << QStringLiteral(" 1 PL            150");
    EXPECT_EQ(read(lines), QStringLiteral("@N PLANTING    PFRST PLAST"));
    EXPECT_EQ(database::rowCount(QStringLiteral("AutoManagementPlanting")), 0);
    EXPECT_EQ(database::rowCount(QStringLiteral("SimulationControlOutputs")), 1);

    // Any of the marker's spellings opens the automatic groups; harvest
    // takes one line, and outside forecast mode a dates group is left to the
    // dispatch.
    for (const char* marker : { "@ AUTOMATA", "@AUTOMATIC", "@   AUTOMATIC", "@    AUT" }) {
        clearControls();
        lines = levelOne();
        lines[11] = QString::fromLatin1(marker);
        lines << QStringLiteral("@N SIMDATES    ENDAT    SDUR   FODAT") << QStringLiteral(" 1 SI          2025100");
        EXPECT_EQ(read(lines), QStringLiteral("@N SIMDATES    ENDAT    SDUR   FODAT")) << marker;
        EXPECT_EQ(database::rowCount(QStringLiteral("AutoManagementHarvest")), 1) << marker;
    }
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
}

TEST_F(SimulationSectionTest, ForecastModeReadsTheDatesBehindHarvest)
{
    state().IsExperimental = false;
    state().IsForecast = true;
    simDefaults().assignBuiltIn(true);
    QStringList lines = levelOne();
    lines.removeLast();
    lines << QStringLiteral("! between") << QStringLiteral("@N SIMDATES    ENDAT    SDUR   FODAT  FSTRYR  FENDYR FWFILE           FONAME")
          << QStringLiteral(" 1 SI").leftJustified(14) + QStringLiteral("0025100").rightJustified(22)
            + QString(34, QLatin1Char(' ')) + QStringLiteral("FCST0001.WTH")
          << QStringLiteral("*NEXT");
    EXPECT_EQ(read(lines), QStringLiteral("*NEXT"));
    EXPECT_EQ(rows("AutoManagementSimdates"), QStringList { QStringLiteral("1|SI|25100|FCST0001.WTH") });
    EXPECT_EQ(state().comments.CommentsSimulation, QStringLiteral("\r\n between"));
}

TEST_F(SimulationSectionTest, WritesEveryLevelInColumns)
{
    EXPECT_EQ(written(), QStringList { QString() }); // no general row: nothing at all

    read(levelOne());
    // A second level with NULL cells and no automatic rows prints defaults;
    // its options label is zero-length text, which isn't NULL.
    database::insertRow(QStringLiteral("SimulationControl"),
        { { QStringLiteral("LNSIM"), 123 }, { QStringLiteral("TITSIM"), QStringLiteral("A title that is much longer") } });
    database::insertRow(QStringLiteral("SimulationControlOptions"),
        { { QStringLiteral("LNSIM"), 123 }, { QStringLiteral("TITOPT"), QStringLiteral("") },
            { QStringLiteral("ISWWAT"), QStringLiteral("N") } });
    database::exec(QStringLiteral("UPDATE AutoManagementIrrigation SET EFFIRR = 0.5, IOFF = NULL"));

    // Level 1 comes back as it was read, with its completed dates and the
    // efficiency through its mask.
    QStringList expected = QStringList { QString(), QStringLiteral("*SIMULATION CONTROLS") } + levelOne();
    expected[2 + 13] = QStringLiteral(" 1 PL          99150 98200    40   100    30    40    10");
    expected[2 + 15] = QStringLiteral(" 1 IR             30    50   100 GS000 IR001    10  0.50");
    expected[2 + 21] = QStringLiteral(" 1 HA              0 98300   100     0");
    expected += {
        GeneralHeader,
        QStringLiteral("123GE              1     1     S   -99  2150 A title that is much long"),
        OptionsHeader,
        QStringLiteral("123                N     Y     Y     N     N     N     N     N     W"),
        MethodsHeader,
        QStringLiteral("123ME              M     M     E     R     S     C     R     1     G     S     2"),
        ManagementHeader,
        QStringLiteral("123MA              R     R     R     N     M"),
        OutputsHeader,
        QStringLiteral("123OU              N     Y     Y     1     Y     N     Y     Y     Y     N     Y     N     Y     A"),
        QString(),
        QStringLiteral("@  AUTOMATIC MANAGEMENT"),
        QStringLiteral("@N PLANTING    PFRST PLAST PH2OL PH2OU PH2OD PSTMX PSTMN"),
        QStringLiteral("123PL            -99   -99    40   100    30    40    10"),
        QStringLiteral("@N IRRIGATION  IMDEP ITHRL ITHRU IROFF IMETH IRAMT IREFF"),
        QStringLiteral("123IR             30    50   100 GS000 IR001    10     1"),
        QStringLiteral("@N NITROGEN    NMDEP NMTHR NAMNT NCODE NAOFF"),
        QStringLiteral("123NI             30    50    25 FE001 GS000"),
        QStringLiteral("@N RESIDUES    RIPCN RTIME RIDEP"),
        QStringLiteral("123RE            100     1    20"),
        QStringLiteral("@N HARVEST     HFRST HLAST HPCNP HPCNR"),
        QStringLiteral("123HA             30   -99   100    30"),
        QString(),
        QString(),
    };
    EXPECT_EQ(written(), expected);
}

TEST_F(SimulationSectionTest, WriterWalksTheTablesByPosition)
{
    // Rows are matched by position, not by level: the only options row,
    // of level 5, prints under level 1, and level 2 gets the defaults.
    state().IsExperimental = false;
    state().IsForecast = true;
    simDefaults().assignBuiltIn(true);
    for (int level : { 1, 2 })
        database::insertRow(QStringLiteral("SimulationControl"),
            { { QStringLiteral("LNSIM"), level }, { QStringLiteral("TITCOM"), QStringLiteral("GE") },
                { QStringLiteral("Crop_Model"), QStringLiteral("") } });
    database::insertRow(QStringLiteral("SimulationControlOptions"),
        { { QStringLiteral("LNSIM"), 5 }, { QStringLiteral("TITOPT"), QStringLiteral("OP") },
            { QStringLiteral("ISCO2"), QStringLiteral("D") } });
    database::insertRow(QStringLiteral("AutoManagementSimdates"),
        { { QStringLiteral("LNSIM"), 1 }, { QStringLiteral("FODAT"), QStringLiteral("2025100") },
            { QStringLiteral("FONAME"), QStringLiteral("  FCST.WTH") } });
    const QStringList out = written();
    ASSERT_EQ(out.size(), 2 + 2 * 25 + 1);
    EXPECT_EQ(out.at(3), QStringLiteral(" 1 GE              1     1     S   -99  2150 Default Simulation Contro"));
    EXPECT_EQ(out.at(5), QStringLiteral(" 1 OP              Y     Y     Y     N     N     N     N     N     D"));
    EXPECT_EQ(out.at(25 + 5), QStringLiteral(" 2 OP              Y     Y     Y     N     N     N     N     N     W"));
    EXPECT_EQ(out.at(24), QStringLiteral("@N SIMDATES    ENDAT    SDUR   FODAT  FSTRYR  FENDYR FWFILE           FONAME"));
    EXPECT_EQ(out.at(25), QStringLiteral(" 1 SI                        2025100                                  FCST.WTH"));
    EXPECT_EQ(out.at(25 + 25), QStringLiteral(" 2 SI                            -99                                  -99"));
    EXPECT_EQ(out.at(25).indexOf(QStringLiteral("FCST")), 70);
}

TEST_F(SimulationSectionTest, WrittenTextReadsBackToTheSameText)
{
    // Some quirks change the text on the first pass (the title of 25, the
    // window dates, the alternative marker); after that it must be stable.
    QStringList lines = levelOne();
    lines[1] = generalLine(" 1 GE", { "1", "1", "S", "98001", "2150" }, QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXY"),
        QStringLiteral("KESTRAL"));
    lines[11] = QStringLiteral("@AUTOMATIC MANAGEMENT");
    lines << GeneralHeader << generalLine(" 2 GE", { "2", "1", "S", "99001", "1" }, QStringLiteral("Two"), QString())
          << OptionsHeader << groupLine(" 2 OP", { "N" }) << MethodsHeader << groupLine(" 2 ME", {}) << ManagementHeader
          << groupLine(" 2", {}) << OutputsHeader << groupLine(" 2 OU", { "Y", "N", "N", "-99" });
    LineCursor c = LineCursor::fromLines(lines);
    while (!c.atEnd())
        readSimulationControls(c);
    const QStringList first = written();
    ASSERT_EQ(first.size(), 2 + 2 * 23 + 1);

    auto again = [](const QStringList& text) {
        clearControls();
        LineCursor c = LineCursor::fromLines(text);
        ++c.i; // the section line
        while (!c.atEnd())
            readSimulationControls(c);
        return written();
    };
    const QStringList second = again(first);
    const QStringList third = again(second);
    EXPECT_EQ(second, third);
    EXPECT_EQ(second.size(), 2 + 2 * 23 + 1);
    EXPECT_EQ(second.at(3), QStringLiteral(" 1 GE              1     1     S 98001  2150 ABCDEFGHIJKLMNOPQRSTUVWX  KESTRAL"));
    EXPECT_EQ(second.at(13), QStringLiteral("@  AUTOMATIC MANAGEMENT"));
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
}
