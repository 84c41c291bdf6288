#include "SuiteGenerator.h"

#include "ExperimentGenerator.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <random>
#include <stdexcept>

namespace bench {

void writeFile(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
        throw std::runtime_error("can't write " + path.toStdString());
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

namespace {

QByteArray contents(const QString& path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        throw std::runtime_error("can't read " + path.toStdString());
    return f.readAll();
}

// The crops of the suite: those of the sample suite's code file and
// generated ones, each with a folder of its own.
struct Crop {
    QByteArray code;
    QByteArray folder;
};

QList<Crop> cropsOf(int count)
{
    QList<Crop> crops { { "MZ", "Maize" }, { "SB", "Soybean" }, { "SG", "Sorghum" },
        { "WH", "Wheat" }, { "BA", "Barley" }, { "PN", "Peanut" }, { "RI", "Rice" } };
    for (int c = 0; crops.size() < count; ++c) {
        const QByteArray code = letters(16 * 26 + c, 2); // "QA", "QB", ... "RA", ...
        crops.push_back({ code, "Crop" + code });
    }
    return crops;
}

// The sample suite's code files with the generated crops added, and as many
// further code sections as an installed detail file has.
void codeFiles(const QString& suite, const QString& sampleSuite, const QList<Crop>& crops)
{
    QByteArray detail = contents(sampleSuite + QStringLiteral("/Detail.cde"));
    QByteArray more;
    for (const Crop& crop : crops) {
        if (!detail.contains("\n" + crop.code + "       "))
            more += crop.code.leftJustified(9) + "Generated crop " + crop.code + "\r\n";
    }
    const int weeds = detail.indexOf("WE       Mixed annual weeds");
    detail.insert(weeds, more);
    for (int t = 0; t < 25; ++t) {
        detail += "\r\n*Generated code section " + QByteArray::number(t)
            + "\r\n@CDE     DESCRIPTION\r\n";
        for (int k = 0; k < 30; ++k)
            detail += ("G" + letters(t, 1) + QByteArray::number(k)).leftJustified(9)
                + "Generated code " + QByteArray::number(k) + "\r\n";
    }
    writeFile(suite + QStringLiteral("/Detail.cde"), detail);

    QByteArray stages = contents(sampleSuite + QStringLiteral("/GRSTAGE.CDE"));
    for (const Crop& crop : crops.mid(7)) {
        stages += "\r\n*Growth and Development Codes - " + crop.folder
            + " (Generated species)\r\n@CDE  LABL  "
              "DESCRIPTION\r\n";
        for (int s = 1; s <= 12; ++s)
            stages += "GS" + QByteArray::number(s).rightJustified(3, '0') + " S"
                + QByteArray::number(s).leftJustified(4) + "  Stage " + QByteArray::number(s)
                + "\r\n";
    }
    writeFile(suite + QStringLiteral("/GRSTAGE.CDE"), stages);
    QFile::copy(
        sampleSuite + QStringLiteral("/Simulation.cde"), suite + QStringLiteral("/Simulation.cde"));
}

void profile(const QString& suite, const QList<Crop>& crops)
{
    QByteArray text
        = "! Generated installation profile\r\nWED C: \\TERVA48\\Weather\r\nCRD C: "
          "\\TERVA48\\Genotype\r\n"
          "SLD C: \\TERVA48\\Soil\r\nCLD C: \\TERVA48\\Weather\r\nWGD C: \\TERVA48\\Weather\r\n"
          "PSD C: \\TERVA48\\Genotype\r\nTOD C: \\TERVA48\\TOOLS\r\nVER 4.8.1 generated\r\n\r\n";
    for (const Crop& crop : crops) {
        text += crop.code + "D C: \\TERVA48\\" + crop.folder + "\r\n";
        text += "M" + crop.code + " C: \\TERVA48 TERVA048.EXE " + crop.code + "MOD048\r\n";
    }
    writeFile(suite + QStringLiteral("/TERVAPRO.V48"), text);
}

// The cultivar ids of a crop's files: the crop's letters and four digits.
QByteArray cultivarId(const QByteArray& crop, int n)
{
    return crop + QByteArray::number(n).rightJustified(4, '0');
}

int cultivarFiles(const QString& suite, const QList<Crop>& crops, const InstallationSize& size)
{
    static const char* models[] = { "MOD", "ALT", "GEN", "OLD", "NEW", "EXP" };
    int files = 0;
    for (const Crop& crop : crops) {
        for (int m = 0; m < std::min(size.modelsPerCrop, 6); ++m) {
            QByteArray text = "*CULTIVARS: " + crop.code + models[m]
                + "048\r\n! Generated cultivars\r\n"
                  "@VAR#  VAR-NAME........ EXPNO   ECO#    P1    P2    P5    G2    G3 PHINT\r\n";
            for (int v = 1; v <= size.cultivarsPerFile; ++v)
                text += cultivarId(crop.code, v) + " "
                    + ("Cultivar " + QByteArray::number(v)).leftJustified(16)
                    + " . IB0001 200.0 0.300 800.0 700.0  8.50 38.90\r\n";
            writeFile(suite + QStringLiteral("/Genotype/")
                    + QString::fromLatin1(crop.code + models[m]) + QStringLiteral("048.CUL"),
                text);
            ++files;
        }
    }
    return files;
}

QList<QByteArray> weatherFiles(const QString& suite, const InstallationSize& size)
{
    QList<QByteArray> stations;
    for (int s = 0; s < size.stations; ++s) {
        const QByteArray station = "W" + letters(s, 3);
        stations << station;
        for (int y = 0; y < size.weatherYears; ++y) {
            const QByteArray yy = QByteArray::number(21 - y).rightJustified(2, '0');
            QByteArray text = "*WEATHER DATA : Station " + station
                + ", generated\r\n\r\n@ INSI      LAT     LONG  "
                  "ELEV   TAV   AMP REFHT WNDHT\r\n  "
                + station
                + "   10.000   20.000   100  25.0   5.0   2.0   3.0\r\n@DATE  SRAD  TMAX  TMIN  "
                  "RAIN\r\n";
            for (int d = 1; d <= 5; ++d)
                text += yy + QByteArray::number(d).rightJustified(3, '0')
                    + "  15.0  30.0  20.0   0.0\r\n";
            writeFile(
                suite + QStringLiteral("/Weather/") + QString::fromLatin1(station + yy + "01.WTH"),
                text);
        }
    }
    return stations;
}

// SOIL.SOL and two-letter soil files. The first files after SOIL.SOL share
// its "*SOILS: General" title, and the last ones each repeat a profile id
// of SOIL.SOL.
QList<QByteArray> soilFiles(const QString& suite, const InstallationSize& size)
{
    QList<QByteArray> ids;
    const int others = size.soilFiles - 1;
    const int general = size.profiles - others * (size.profiles / size.soilFiles);
    QByteArray soil = "*SOILS: General soil file\r\n!\r\n! Generated profiles\r\n\r\n";
    QList<QByteArray> generalIds;
    for (int p = 0; p < general; ++p) {
        const QByteArray code = "IB" + QByteArray::number(p + 1).rightJustified(8, '0');
        soil += soilProfile(code, 6 + p % 4) + "\r\n";
        generalIds << code;
    }
    ids << generalIds;
    writeFile(suite + QStringLiteral("/Soil/SOIL.SOL"), soil);
    for (int f = 0; f < others; ++f) {
        const QByteArray prefix = letters(f + 1, 2);
        QByteArray text = f < size.sharedTitles
            ? "*SOILS: General soil profiles of region " + prefix + "\r\n\r\n"
            : "*SOILS: " + prefix + " farm profiles\r\n\r\n";
        for (int p = 0; p < size.profiles / size.soilFiles; ++p) {
            const QByteArray code = prefix + QByteArray::number(p + 1).rightJustified(8, '0');
            text += soilProfile(code, 5 + p % 5) + "\r\n";
            ids << code;
        }
        if (f >= others - size.repeatedIds)
            text += soilProfile(generalIds.at(f % generalIds.size()), 4) + "\r\n";
        writeFile(
            suite + QStringLiteral("/Soil/") + QString::fromLatin1(prefix) + QStringLiteral(".SOL"),
            text);
    }
    return ids;
}

// The experiments: most experimental, spread over the crops, and some of
// every other type; sizes from a few levels to event-heavy files.
QStringList experiments(const QString& suite, const QList<Crop>& crops,
    const QList<QByteArray>& stations, const QList<QByteArray>& soils, const InstallationSize& size)
{
    struct Type {
        const char* code;
        const char* extension;
        const char* folder;
    };
    const Type others[] = { { "SQ", "SQX", "Sequence" }, { "SN", "SNX", "Seasonal" },
        { "GS", "GSX", "Spatial" }, { "FC", "FCX", "YieldForecast" } };
    std::mt19937 random(20240611);
    auto uniform
        = [&](int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); };
    QStringList paths;
    for (int i = 0; i < size.experiments; ++i) {
        ExperimentShape s;
        const Crop& crop = crops.at(i % 5 == 4 ? uniform(4, crops.size() - 1) : i % 4);
        const bool experimental = i % 8 != 7;
        const Type& type = others[(i / 8) % 4];
        s.name = "Q" + letters(i / 26, 1) + letters(i, 2) + QByteArray::number(1000 + i);
        s.crop = crop.code;
        s.typeCode = experimental ? crop.code : QByteArray(type.code);
        s.year = uniform(21 - size.weatherYears + 1, 21);
        const double scale = std::pow(std::uniform_real_distribution<double>(0, 1)(random), 2);
        const bool heavy = uniform(0, 99) < 15;
        s.rotations = !experimental && QByteArray(type.code) == "SQ";
        // A sequence's rotations are numbered in one column.
        s.treatments = s.rotations ? 2 + int(7 * scale) : 2 + int(38 * scale);
        s.cultivars = std::min(4, 1 + s.treatments / 10);
        s.fields = 1 + (scale > 0.3) + (scale > 0.7);
        s.soilAnalyses = uniform(0, 2);
        s.initialConditions = 1 + (s.treatments > 10);
        s.plantings = 1 + s.treatments / 12;
        s.irrigations = heavy ? uniform(4, 6) : uniform(0, 4);
        s.irrigationEvents = heavy ? uniform(25, 40) : uniform(3, 20);
        s.fertilizers = heavy ? uniform(8, 12) : uniform(0, 6);
        s.fertilizerEvents = heavy ? uniform(10, 15) : uniform(1, 6);
        s.residues = uniform(0, 2);
        s.chemicals = uniform(0, 2);
        s.tillages = uniform(0, 2);
        s.environments = uniform(0, 5) == 0 ? uniform(1, 2) : 0;
        s.harvests = uniform(1, 2);
        s.simulations = uniform(1, 2);
        s.dayNumbers = i % 6 == 1;
        s.missingLevel = i % 13 == 5;
        for (int k = 0; k < 3; ++k) {
            s.stations << stations.at(uniform(0, stations.size() - 1));
            s.soils << soils.at(uniform(0, soils.size() - 1));
        }
        for (int k = 0; k < 4; ++k)
            s.cultivarIds << cultivarId(crop.code, uniform(1, 150));
        const QString folder
            = QString::fromLatin1(experimental ? crop.folder : QByteArray(type.folder));
        const QString path = suite + QLatin1Char('/') + folder + QLatin1Char('/')
            + QString::fromLatin1(s.name) + QLatin1Char('.')
            + QString::fromLatin1(experimental ? crop.code + "X" : QByteArray(type.extension));
        writeFile(path, experimentText(s));
        paths << QDir::toNativeSeparators(path);
    }
    return paths;
}

} // namespace

Installation generateInstallation(
    const QString& root, const QString& sampleSuite, const InstallationSize& size)
{
    Installation installation;
    installation.suite = QDir(root).absoluteFilePath(QStringLiteral("TERVA48"));
    const QString suite = installation.suite;
    const QList<Crop> crops = cropsOf(size.crops);
    profile(suite, crops);
    codeFiles(suite, sampleSuite, crops);
    const QDir tools(sampleSuite + QStringLiteral("/TOOLS/Quillon"));
    QDir().mkpath(suite + QStringLiteral("/TOOLS/Quillon"));
    for (const QString& def : tools.entryList({ QStringLiteral("*.def") }, QDir::Files))
        QFile::copy(tools.filePath(def), suite + QStringLiteral("/TOOLS/Quillon/") + def);
    installation.cultivarFiles = cultivarFiles(suite, crops, size);
    const QList<QByteArray> stations = weatherFiles(suite, size);
    installation.weatherFiles = size.stations * size.weatherYears;
    const QList<QByteArray> soils = soilFiles(suite, size);
    installation.soilProfiles = soils.size() + size.repeatedIds;
    installation.experiments = experiments(suite, crops, stations, soils, size);
    return installation;
}

} // namespace bench
