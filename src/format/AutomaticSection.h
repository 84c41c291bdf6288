#pragma once

#include "format/FileWriter.h"

#include <QList>
#include <QString>
#include <QVariantMap>

namespace quillon::format {

// Readers of the data lines of the automatic management groups. Each takes
// one line and adds one row to its table: AutoManagementPlanting,
// …Irrigation, …Nitrogen, …Residues, …Harvest, …Simdates. A comment line goes
// to the simulation comments instead.
//
// The planting window (PWDINF, PWDINL) and the last harvest date (HLATE) may
// be a day alone; they are completed with the year of the level's start date
// in SimulationControl, which must have been read before.
//
// A line that fails is reported and replaced by a row of defaults for its
// level; if that row fails too, the error is thrown on to the caller.
void AutoPlantingRead(const QString& line);
void AutoIrrigationRead(const QString& line);
void AutoNitrogenRead(const QString& line);
void AutoResiduesRead(const QString& line);
void AutoHarvestRead(const QString& line);
void AutoSimdatesRead(const QString& line);

// Whether a line opens the automatic management groups of a level: its
// first eight characters are one of the marker's accepted spellings.
bool isAutomaticManagementMarker(const QString& line);

// Writes the automatic management block of level `i` of the output: the
// marker line, the planting, irrigation, nitrogen, residues and harvest
// groups, and in forecast mode the forecast dates. `groups` are the rows of
// every group as printSimData() gives them.
void writeAutomaticManagementLevel(FileWriter& w, const QVariant& level,
    const QList<QList<QVariantMap>>& groups, int i);

} // namespace quillon::format
