#include "LargeSuite.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <stdexcept>

namespace bench {

namespace {

void writeFile(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        throw std::runtime_error("can't write " + path.toStdString());
    file.write(bytes);
}

QByteArray number(double value, int width, int decimals)
{
    return QByteArray::number(value, 'f', decimals).rightJustified(width, ' ');
}

QByteArray letters(int index, int count)
{
    QByteArray text(count, 'A');
    for (int i = count - 1; i >= 0; --i) {
        text[i] = char('A' + index % 26);
        index /= 26;
    }
    return text;
}

QByteArray soilProfile(const QByteArray& code, int layers)
{
    QByteArray text;
    text += "*" + code.leftJustified(10) + "  SCS         SIC     150 Generated soil " + code
        + "\r\n";
    text += "@SITE        COUNTRY          LAT     LONG SCS FAMILY\r\n";
    text += " Generated   Nowhere        10.000   20.000 Fine, mixed, isohyperthermic Typic "
            "Haplustox, generated for timing\r\n";
    text += "@ SCOM  SALB  SLU1  SLDR  SLRO  SLNF  SLPF  SMHB  SMPX  SMKE\r\n";
    text += "    BN  0.13   6.0  0.30  85.0  1.00  1.00 IB001 IB001 IB001\r\n";
    text += "@  SLB  SLMH  SLLL  SDUL  SSAT  SRGF  SSKS  SBDM  SLOC  SLCL  SLSI  SLCF  SLNI  SLHW  "
            "SLHB  SCEC  SADC\r\n";
    for (int i = 1; i <= layers; ++i) {
        text += " " + number(i * 20, 5, 0) + "   -99  " + number(0.1 + i * 0.01, 5, 3) + " "
            + number(0.25 + i * 0.01, 5, 3) + "  0.40  1.00  0.23 " + number(1.2 + i * 0.02, 5, 2)
            + "  1.20  30.0  40.0   -99  0.10   6.5   -99  10.0   -99   -99   -99   -99   -99   "
              "-99   -99   -99\r\n";
    }
    text += "@  SLB  SLPX  SLPT  SLPO CACO3  SLAL  SLFE  SLMN  SLBS  SLPA  SLPB  SLKE  SLMG  SLNA  "
            "SLSU  SLEC  SLCA\r\n";
    for (int i = 1; i <= layers; ++i)
        text += " " + number(i * 20, 5, 0)
            + "   -99   -99   -99   -99   -99   -99   -99   -99   -99   -99   -99   -99   -99   "
              "-99   -99   -99   -99   -99   -99   -99   -99\r\n";
    return text;
}

} // namespace

LargeSuite generateLargeSuite(const QString& root)
{
    LargeSuite suite;
    const int crops = 40;

    QByteArray profile = "*TERVA PROFILE\r\n! locations of the suite's data\r\n";
    profile
        += "WED C: \\TERVA48\\Weather\r\nCRD C: \\TERVA48\\Genotype\r\nSLD C: \\TERVA48\\Soil\r\n";
    QByteArray detail
        = "*EXP.DETAILS: codes of the experiment details\r\n\r\n*Crop and Weed Species\r\n";
    QByteArray stages = "*Growth and Development Stage References\r\n";
    for (int c = 0; c < crops; ++c) {
        const QByteArray code = letters(c + 26, 2);
        profile += code + "D C: \\TERVA48\\Crop" + code + "\r\n";
        profile
            += "M" + code + " C: \\TERVA48\\MODELS\\" + code + "MOD048.EXE " + code + "MOD048\r\n";
        detail += code.leftJustified(9) + "Crop " + code + "\r\n";
        stages += (c % 4 == 0
                ? "*Growth and Development Codes - Crop" + code + ", Other" + code + " (shared)\r\n"
                : "*Growth and Development Codes - Crop" + code + " (Genus species)\r\n");
        for (int s = 1; s <= 15; ++s)
            stages += number(s, 5, 0) + ("S" + QByteArray::number(s)).leftJustified(5) + "  Stage "
                + QByteArray::number(s) + " of crop " + code + "\r\n";

        QByteArray cultivars = "*CULTIVARS: " + code
            + "MOD048\r\n@VAR#  VAR-NAME........ EXPNO   ECO#    P1    P2\r\n";
        for (int v = 0; v < 300; ++v) {
            cultivars += "IB" + QByteArray::number(v).rightJustified(4, '0') + " "
                + ("Cultivar " + QByteArray::number(v)).leftJustified(16)
                + " . IB0001 200.0 0.300 800.0 700.0  8.50 38.90\r\n";
        }
        writeFile(root + "/Genotype/" + QString::fromLatin1(code) + "MOD048.CUL", cultivars);
    }
    for (int t = 0; t < 30; ++t) {
        detail += "*Section number " + QByteArray::number(t)
            + " of the details\r\n@CODE     DESCRIPTION\r\n";
        for (int k = 0; k < 30; ++k)
            detail += ("C" + QByteArray::number(k)).leftJustified(9) + "   Description "
                + QByteArray::number(k) + "\r\n";
    }
    detail += "*Methods - Fertilizer and Organic Amendments\r\n";
    detail += "AP011       Broadcast on flooded/saturated soil\r\nAP012       Broadcast on "
              "flooded/saturated soil\r\n";
    writeFile(root + "/TERVAPRO.V48", profile);
    writeFile(root + "/DETAIL.CDE", detail);
    writeFile(root + "/GRSTAGE.CDE", stages);

    QByteArray simulation = "*Codes for Simulations Options\r\n";
    const char* headings[] = { "Start Simulation", "Simulation/Options/Water",
        "Simulation/Methods/Weather", "Simulation/Management/Planting",
        "Simulation/Management/Irrigation", "Simulation/Outputs" };
    for (const char* heading : headings) {
        simulation += QByteArray("*") + heading + "\r\n";
        for (int k = 0; k < 6; ++k)
            simulation += letters(k, 1) + "        Option " + QByteArray::number(k) + "\r\n";
    }
    simulation += "*Simulation/Crop Models\r\n";
    for (int c = 0; c < crops; ++c)
        simulation += letters(c + 26, 2) + "MOD      Model of crop " + letters(c + 26, 2) + "\r\n";
    writeFile(root + "/Simulation.cde", simulation);

    // 3,000 weather files over 300 stations; the first station has 30.
    suite.busyStation = letters(0, 4);
    auto weather = [&](const QByteArray& station, int year) {
        const QByteArray code
            = station + QByteArray::number(year % 100).rightJustified(2, '0') + "01";
        QByteArray text = "*WEATHER DATA : Station " + station
            + ", generated\r\n\r\n@ INSI      LAT     LONG  ELEV   TAV   AMP REFHT WNDHT\r\n  "
            + station
            + "   10.000   20.000   100  25.0   5.0   2.0   3.0\r\n@DATE  SRAD  TMAX  TMIN  "
              "RAIN\r\n";
        for (int d = 1; d <= 30; ++d)
            text += QByteArray::number(year % 100).rightJustified(2, '0')
                + number(d, 3, 0).replace(' ', '0') + "  15.0  30.0  20.0   0.0\r\n";
        writeFile(root + "/Weather/" + QString::fromLatin1(code) + ".WTH", text);
    };
    for (int y = 0; y < 30; ++y)
        weather(suite.busyStation, 1970 + y);
    for (int i = 0; i < 2970; ++i)
        weather(letters(1 + i % 299, 4), 1980 + i / 299);

    // SOIL.SOL of 5,000 profiles and 20 two-letter files.
    QByteArray soil = "*SOILS: General soil file\r\n\r\n";
    for (int p = 0; p < 5000; ++p) {
        const QByteArray code = "IB" + QByteArray::number(p).rightJustified(8, '0');
        soil += soilProfile(code, 8) + "\r\n";
        suite.lastSoil = code;
    }
    writeFile(root + "/Soil/SOIL.SOL", soil);
    for (int f = 0; f < 20; ++f) {
        const QByteArray prefix = letters(f + 26, 2);
        QByteArray text = "*SOILS: " + prefix + " soils\r\n\r\n";
        for (int p = 0; p < 20; ++p)
            text += soilProfile(prefix + QByteArray::number(p).rightJustified(8, '0'), 6) + "\r\n";
        writeFile(root + "/Soil/" + QString::fromLatin1(prefix) + ".SOL", text);
    }
    return suite;
}

} // namespace bench
