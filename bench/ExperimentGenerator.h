#pragma once

// Experiment files of realistic size and variety for the benchmarks.

#include <QByteArray>
#include <QList>

namespace bench {

// How many levels and events an experiment has, and what of the suite it
// names. Counts of zero leave a section out (cultivars, fields, initial
// conditions, planting, harvest and simulation controls always have one).
struct ExperimentShape {
    QByteArray name; // eight characters, "QABC2101"
    QByteArray typeCode; // the two letters after the name in the title: crop or "SQ", "SN", ...
    QByteArray crop; // the crop of the cultivars
    int year = 21; // two digits
    int treatments = 2;
    bool rotations = false; // sequence files: one treatment, many rotations
    int cultivars = 1;
    int fields = 1;
    int soilAnalyses = 0;
    int initialConditions = 1;
    int plantings = 1;
    int irrigations = 0;
    int irrigationEvents = 0; // per level
    int fertilizers = 0;
    int fertilizerEvents = 0; // per level
    int residues = 0;
    int chemicals = 0;
    int tillages = 0;
    int environments = 0;
    int harvests = 1;
    int simulations = 1;
    bool dayNumbers = false; // fertilizer dates as days after planting
    bool missingLevel = false; // the last treatment names a harvest level the file lacks
    QList<QByteArray> stations; // four letters
    QList<QByteArray> soils; // profile ids
    QList<QByteArray> cultivarIds; // six characters
};

// The file's bytes: every section in the order the writer uses, comment
// lines in several of them, closed by the end-of-file line.
QByteArray experimentText(const ExperimentShape& shape);

} // namespace bench
