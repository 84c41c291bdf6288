#include "ExperimentGenerator.h"

#include <algorithm>

namespace bench {

namespace {

QByteArray rj(const QByteArray& text, int width)
{
    return text.rightJustified(width, ' ');
}
QByteArray rj(int value, int width)
{
    return rj(QByteArray::number(value), width);
}

// The level column: " 1 ", "12 ".
QByteArray level(int n)
{
    return n < 10 ? " " + QByteArray::number(n) + " " : QByteArray::number(n) + " ";
}

// A five-digit date of the experiment's year.
QByteArray date(int year, int day)
{
    return QByteArray::number(year).rightJustified(2, '0')
        + QByteArray::number(std::clamp(day, 1, 365)).rightJustified(3, '0');
}

// The level a treatment takes of a factor with `count` levels: they turn
// over at different rates so that the treatments combine them variously.
int levelFor(int treatment, int count, int rate)
{
    return count == 0 ? 0 : 1 + (treatment / rate) % count;
}

class Text {
public:
    void line(const QByteArray& l) { m_bytes += l + "\r\n"; }
    void blank() { m_bytes += "\r\n"; }
    QByteArray bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
};

void general(Text& t, const ExperimentShape& s)
{
    t.line("*EXP.DETAILS: " + s.name + s.typeCode + " GENERATED EXPERIMENT " + s.name
        + ", NITROGEN BY WATER");
    t.blank();
    t.line("*GENERAL");
    t.line("@PEOPLE");
    t.line("Generated R., Bench M., Quillon timing team");
    t.line("@ADDRESS");
    t.line("Generated Research Farm, 1 Bench Road, Quillon Valley");
    t.line("@SITE");
    t.line("Generated Research Farm, block " + s.name.right(2));
    t.line("@ PAREA  PRNO  PLEN  PLDR  PLSP  PLAY HAREA  HRNO  HLEN  HARM.........");
    t.line("   54.7     6  12.0    90   0.0   -99  18.2     2  12.0  Hand");
    t.line("@NOTES");
    t.line(" Generated for timing Quillon on a suite of real size. The values are");
    t.line(" plausible and describe no real experiment.");
    t.blank();
    t.line("! Plot sizes in m2 and m.");
    t.blank();
}

void treatments(Text& t, const ExperimentShape& s)
{
    t.line("*TREATMENTS                        -------------FACTOR LEVELS------------");
    t.line("@N R O C TNAME.................... CU FL SA IC MP MI MF MR MC MT ME MH SM");
    for (int i = 0; i < s.treatments; ++i) {
        const int trt = s.rotations ? 1 : i + 1;
        const int rot = s.rotations ? i + 1 : 1;
        const int levels[] = { levelFor(i, s.cultivars, 1), levelFor(i, s.fields, 3),
            levelFor(i, s.soilAnalyses, 3), levelFor(i, s.initialConditions, 2),
            levelFor(i, s.plantings, 2), levelFor(i, s.irrigations, 1),
            levelFor(i, s.fertilizers, 2), levelFor(i, s.residues, 4), levelFor(i, s.chemicals, 3),
            levelFor(i, s.tillages, 5), levelFor(i, s.environments, 6),
            s.missingLevel && i == s.treatments - 1 ? s.harvests + 1 : levelFor(i, s.harvests, 2),
            levelFor(i, s.simulations, 7) };
        QByteArray row = rj(trt, 2) + " " + QByteArray::number(rot) + " 1 0 "
            + ("Treatment " + QByteArray::number(i + 1) + ", generated")
                  .leftJustified(25, ' ', true);
        for (int l : levels)
            row += rj(l, 3);
        t.line(row);
    }
    t.line("! Treatments combine every factor's levels at different rates.");
    t.blank();
}

void cultivars(Text& t, const ExperimentShape& s)
{
    t.line("*CULTIVARS");
    t.line("@C CR INGENO CNAME");
    for (int l = 1; l <= s.cultivars; ++l)
        t.line(level(l) + s.crop + " " + s.cultivarIds.at((l - 1) % s.cultivarIds.size())
            + " Cultivar " + QByteArray::number(l));
    t.blank();
}

void fields(Text& t, const ExperimentShape& s)
{
    t.line("*FIELDS");
    t.line(
        "@L ID_FIELD WSTA....  FLSA  FLOB  FLDT  FLDD  FLDS  FLST SLTX  SLDP  ID_SOIL    FLNAME");
    for (int l = 1; l <= s.fields; ++l) {
        const QByteArray id = s.name.left(4) + QByteArray::number(l).rightJustified(4, '0');
        t.line(level(l) + id + " " + s.stations.at((l - 1) % s.stations.size()).leftJustified(8)
            + "   1.5     0 DR001   100    20     0 SIL    180  "
            + s.soils.at((l - 1) % s.soils.size()).leftJustified(10) + " Generated field "
            + QByteArray::number(l));
    }
    t.line("@L ...........XCRD ...........YCRD .....ELEV .............AREA .SLEN .FLWR .SLAS FLHST "
           "FHDUR");
    for (int l = 1; l <= s.fields; ++l)
        t.line(level(l)
            + "        -88.214          40.105       221             12000   120   1.5   180 FH202 "
              "   25");
    t.line("! The fields name stations and soils of the suite.");
    t.blank();
}

void soilAnalyses(Text& t, const ExperimentShape& s)
{
    if (s.soilAnalyses == 0)
        return;
    t.line("*SOIL ANALYSIS");
    for (int l = 1; l <= s.soilAnalyses; ++l) {
        t.line("@A SADAT  SMHB  SMPX  SMKE  SANAME");
        t.line(level(l) + date(s.year, 95) + " SA011 SA001 SA013  Spring sampling "
            + QByteArray::number(l));
        t.line("@A  SABL  SADM  SAOC  SANI SAPHW SAPHB  SAPX  SAKE  SASC");
        for (int layer = 1; layer <= 4; ++layer)
            t.line(
                level(l) + rj(layer * 15, 5) + "   1.3  2.10  0.18   6.4 -99.0  28.5   0.4  1.10");
    }
    t.blank();
}

void initialConditions(Text& t, const ExperimentShape& s)
{
    t.line("*INITIAL CONDITIONS");
    for (int l = 1; l <= s.initialConditions; ++l) {
        t.line("@C   PCR ICDAT  ICRT  ICND  ICRN  ICRE  ICWD ICRES ICREN ICREP ICRIP ICRID ICNAME");
        t.line(level(l) + "   SB " + date(s.year, 100)
            + "  1200  1000     1     1 -99.0  1500   0.8   -99    50    10 Initial state "
            + QByteArray::number(l));
        t.line("@C  ICBL  SH2O  SNH4  SNO3");
        for (int layer = 1; layer <= 6; ++layer)
            t.line(level(l) + rj(layer * 20, 5) + "  .280    .8   8.2");
    }
    t.line("! Soil water in cm3/cm3, mineral nitrogen in g N per tonne of soil.");
    t.blank();
}

void plantings(Text& t, const ExperimentShape& s)
{
    t.line("*PLANTING DETAILS");
    t.line("@P PDATE EDATE  PPOP  PPOE  PLME  PLDS  PLRS  PLRD  PLDP  PLWT  PAGE  PENV  PLPH  SPRL "
           "                       "
           "PLNAME");
    for (int l = 1; l <= s.plantings; ++l)
        t.line(level(l) + date(s.year, 115 + 7 * l)
            + "   -99   7.5   7.2     S     R    76     0     5   -99   -99 -99.0 -99.0 -99.0      "
              "                  "
              "Planting "
            + QByteArray::number(l));
    t.blank();
}

// An amount with one decimal in five columns.
QByteArray amount(double value)
{
    return QByteArray::number(value, 'f', 1).rightJustified(5, ' ');
}

void irrigations(Text& t, const ExperimentShape& s)
{
    if (s.irrigations == 0)
        return;
    t.line("*IRRIGATION AND WATER MANAGEMENT");
    for (int l = 1; l <= s.irrigations; ++l) {
        t.line("@I  EFIR  IDEP  ITHR  IEPT  IOFF  IAME  IAMT IRNAME");
        t.line(level(l) + " 0.85    30    50   100 GS000 IR004    25 Sprinkler schedule "
            + QByteArray::number(l));
        t.line("@I IDATE  IROP IRVAL");
        for (int e = 0; e < s.irrigationEvents; ++e)
            t.line(
                level(l) + date(s.year, 150 + 5 * e + l) + " IR004 " + amount(20 + (e % 4) * 2.5));
    }
    t.line("! Amounts in mm.");
    t.blank();
}

void fertilizers(Text& t, const ExperimentShape& s)
{
    if (s.fertilizers == 0)
        return;
    t.line("*FERTILIZERS (INORGANIC)");
    t.line("@F FDATE  FMCD  FACD  FDEP  FAMN  FAMP  FAMK  FAMC  FAMO  FOCD FERNAME");
    for (int l = 1; l <= s.fertilizers; ++l) {
        for (int e = 0; e < s.fertilizerEvents; ++e)
            t.line(level(l) + (s.dayNumbers ? rj(6 * e, 5) : date(s.year, 110 + 6 * e))
                + (e % 2 ? " FE005" : " FE010") + " AP002    10" + rj(20 + 10 * (l % 5) + e, 6)
                + "   -99   -99   -99   -99   -99 Nitrogen schedule " + QByteArray::number(l));
    }
    t.line("! The sidedress dates follow the leaf stages.");
    t.blank();
}

void namedEvents(Text& t, const ExperimentShape& s)
{
    if (s.residues > 0) {
        t.line("*RESIDUES AND ORGANIC FERTILIZER");
        t.line("@R RDATE  RCOD  RAMT  RESN  RESP  RESK  RINP  RDEP  RMET RENAME");
        for (int l = 1; l <= s.residues; ++l)
            t.line(level(l) + date(s.year, 95)
                + " RE103  2800  0.90  0.10  0.85    50    20 AP002 Stover "
                + QByteArray::number(l));
        t.blank();
    }
    if (s.chemicals > 0) {
        t.line("*CHEMICAL APPLICATIONS");
        t.line("@C CDATE CHCOD CHAMT  CHME CHDEP   CHT..CHNAME");
        for (int l = 1; l <= s.chemicals; ++l) {
            t.line(level(l) + date(s.year, 120) + " CH003  1.40 AP002     5 WEEDS  Herbicides "
                + QByteArray::number(l));
            t.line(level(l) + date(s.year, 175) + " CH022  0.02 AP008   -99 INSCT  Herbicides "
                + QByteArray::number(l));
        }
        t.blank();
    }
    if (s.tillages > 0) {
        t.line("*TILLAGE AND ROTATIONS");
        t.line("@T TDATE TIMPL  TDEP TNAME");
        for (int l = 1; l <= s.tillages; ++l) {
            t.line(level(l) + date(s.year, 100) + " TI002    20 Spring tillage "
                + QByteArray::number(l));
            t.line(level(l) + date(s.year, 110) + " TI003    10 Spring tillage "
                + QByteArray::number(l));
        }
        t.blank();
    }
    if (s.environments > 0) {
        t.line("*ENVIRONMENT MODIFICATIONS");
        t.line("@E ODATE EDAY  ERAD  EMAX  EMIN  ERAIN ECO2  EDEW  EWIND ENVNAME  ");
        for (int l = 1; l <= s.environments; ++l)
            t.line(level(l) + date(s.year, 121)
                + " A 0.0 A 0.0 A   2 A   2 M0.90 R 550 A   0 A   0 Scenario "
                + QByteArray::number(l));
        t.blank();
    }
    t.line("*HARVEST DETAILS");
    t.line("@H HDATE  HSTG  HCOM HSIZE   HPC  HBPC HNAME");
    for (int l = 1; l <= s.harvests; ++l)
        t.line(level(l) + date(s.year, 280) + " GS009     H     A 100.0  "
            + (l % 2 ? " 0.0" : "75.0") + " Harvest " + QByteArray::number(l));
    t.blank();
}

void simulations(Text& t, const ExperimentShape& s)
{
    t.line("*SIMULATION CONTROLS");
    for (int l = 1; l <= s.simulations; ++l) {
        const QByteArray L = level(l);
        t.line("@N GENERAL     NYERS NREPS START SDATE RSEED SNAME.................... SMODEL");
        t.line(L + "GE              1     1     S " + date(s.year, 100)
            + "  2150 GENERATED CONTROLS " + QByteArray::number(l).leftJustified(7) + "MZKES");
        t.line("@N OPTIONS     WATER NITRO SYMBI PHOSP POTAS DISES  CHEM  TILL   CO2");
        t.line(L + "OP              Y     Y     N     N     N     N     Y     Y     W");
        t.line("@N METHODS     WTHER INCON LIGHT EVAPO INFIL PHOTO HYDRO NSWIT MESOM MESEV MESOL");
        t.line(L + "ME              M     M     E     R     S     C     R     1     G     S     2");
        t.line("@N MANAGEMENT  PLANT IRRIG FERTI RESID HARVS");
        t.line(L + "MA              R     " + (l % 2 ? "R" : "A") + "     "
            + (s.dayNumbers && l % 2 == 1 ? "D" : "R") + "     R     R");
        t.line("@N OUTPUTS     FNAME OVVEW SUMRY FROPT GROUT CAOUT WAOUT NIOUT MIOUT DIOUT VBOSE "
               "CHOUT OPOUT FMOPT");
        t.line(L
            + "OU              N     Y     Y     1     Y     N     Y     Y     N     N     Y     N "
              "    Y     A");
        t.blank();
        t.line("@  AUTOMATIC MANAGEMENT");
        t.line("@N PLANTING    PFRST PLAST PH2OL PH2OU PH2OD PSTMX PSTMN");
        t.line(L + "PL          " + date(s.year, 110) + " " + date(s.year, 145)
            + "    40   100    30    40    10");
        t.line("@N IRRIGATION  IMDEP ITHRL ITHRU IROFF IMETH IRAMT IREFF");
        t.line(L + "IR             30    50   100 GS000 IR001    10  1.00");
        t.line("@N NITROGEN    NMDEP NMTHR NAMNT NCODE NAOFF");
        t.line(L + "NI             30    50    25 FE001 GS000");
        t.line("@N RESIDUES    RIPCN RTIME RIDEP");
        t.line(L + "RE            100     1    20");
        t.line("@N HARVEST     HFRST HLAST HPCNP HPCNR");
        t.line(L + "HA              0 " + date(s.year, 330) + "   100     0");
        if (s.typeCode == "FC") {
            t.line("@N SIMDATES    ENDAT    SDUR   FODAT  FSTRYR  FENDYR FWFILE           FONAME");
            t.line(L + "SI                        20" + date(s.year, 196)
                + "                                  Outlook " + QByteArray::number(l));
        }
        t.blank();
    }
    t.blank();
    t.blank();
    t.line("! Generated controls: the even levels irrigate automatically.");
}

} // namespace

QByteArray experimentText(const ExperimentShape& s)
{
    Text t;
    general(t, s);
    treatments(t, s);
    cultivars(t, s);
    fields(t, s);
    soilAnalyses(t, s);
    initialConditions(t, s);
    plantings(t, s);
    irrigations(t, s);
    fertilizers(t, s);
    namedEvents(t, s);
    simulations(t, s);
    return t.bytes() + "\x1A\r\n";
}

} // namespace bench
