#pragma once

#include <QByteArray>
#include <QString>

namespace bench {

// What a generated suite offers the timings: the last soil profile of its
// SOIL.SOL and the station that has the most weather files.
struct LargeSuite {
    QByteArray lastSoil;
    QByteArray busyStation;
};

// Writes a suite of the size of an installed one below `root`: the profile,
// the code files, 40 crops of 300 cultivars, 3,000 weather files over 300
// stations (the first with 30), and 5,000 soil profiles in SOIL.SOL besides
// 20 two-letter soil files of 20. Throws std::runtime_error when a file
// can't be written.
LargeSuite generateLargeSuite(const QString& root);

} // namespace bench
