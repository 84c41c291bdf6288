#pragma once

// Generated suites for the benchmarks: our own data, written at run time
// into a scratch folder, never committed.

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace bench {

// Writes `bytes` to `path`, making its folder; throws on failure.
void writeFile(const QString& path, const QByteArray& bytes);

// `value` with `decimals` places, right-justified in `width`.
QByteArray number(double value, int width, int decimals);

// `count` capital letters that spell `index` in base 26 ("AA", "AB", ...).
QByteArray letters(int index, int count);

// A soil profile in the soil-file format: the header with `code`, the site
// lines, and two layer blocks of `layers` layers each.
QByteArray soilProfile(const QByteArray& code, int layers);

// The size of an installed suite as a modeller has it.
struct InstallationSize {
    int soilFiles = 40; // SOIL.SOL and two-letter files
    int profiles = 430;
    int sharedTitles = 6; // soil files whose title line begins "*SOILS: General"
    int repeatedIds = 4; // profile ids found in two files
    int stations = 120;
    int weatherYears = 10; // weather files = stations x years
    int crops = 40;
    int modelsPerCrop = 4; // cultivar files = crops x models
    int cultivarsPerFile = 150;
    int experiments = 280;
};

// What the generator laid out.
struct Installation {
    QString suite; // the TERVA48 folder
    QStringList experiments; // absolute paths, in a fixed order
    int soilProfiles = 0;
    int weatherFiles = 0;
    int cultivarFiles = 0;
};

// Lays out an installed suite under `root`/TERVA48: the profile, code files
// built on those of `sampleSuite`, soil, weather and cultivar files, the
// defaults files of the sample suite's tools folder, and experiment files
// of every type in the crop folders. Several soil files share a title line
// and a few profile ids stand in two files, as in real soil folders, so
// every Open meets the duplicate-id messages. Deterministic.
Installation generateInstallation(
    const QString& root, const QString& sampleSuite, const InstallationSize& size = {});

} // namespace bench
