#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace quillon::editors {

// The recalculations of the initial conditions: a level's soil layers worked
// out from a soil profile (the one FillSoilTable left in SoilData) and two
// numbers, the available water in percent and the total nitrogen in kg/ha.

// One layer of a profile as SoilData holds it.
struct SoilLayer {
    double SLB = 0; // base of the layer, cm
    double SLLL = 0; // lower limit of the water
    double SDUL = 0; // drained upper limit
    double SBDM = 0; // bulk density, -99 when the file has none
};

// The layers of SoilData, in the order FillSoilTable wrote them.
std::vector<SoilLayer> soilDataLayers();

// Rounds as the program does: the value times 10^decimals to the nearest
// whole number, a tie to the even one.
double roundTo(double value, int decimals);

// SWINIT of a layer at `water` percent of its available water, to 3
// decimals: (SDUL - SLLL) x water / 100 + SLLL.
double initialWater(const SoilLayer& layer, double water);

// The profile's mean bulk density: exactly 1.2 when any layer lacks its
// density (0 or -99), else the mean weighted by each layer's thickness.
// Throws RuntimeError for a profile without layers or without depth.
double meanBulkDensity(const std::vector<SoilLayer>& layers);

// `nitrogen` kg/ha spread evenly over the profile, 90% as nitrate and 10%
// as ammonium, as g[N] per Mg of soil to 1 decimal; every layer gets the
// same two values. Throws as meanBulkDensity().
struct NitrogenContents {
    double INH4 = 0;
    double INO3 = 0;
};
NitrogenContents nitrogenContents(const std::vector<SoilLayer>& layers, double nitrogen);

// The three routines. `soil` is the soil as the editor's list shows it,
// "description (ID)", and goes to IC_Water_Nitrogen with the numbers the
// routine stores; an empty soil does nothing. Each replaces what it
// computes without asking, and reports its own failure
// (" in Old_Command1_Click/frmInitCond.") and returns false, leaving the
// tables as they were.

// All of a level's layers from the profile: depth, water and nitrogen. With
// SoilData empty the level keeps one layer of depth 5 and no values.
bool ICFillAll(double water, double nitrogen, int level, const QString& soil);
// Only the water: SWINIT in place when the level has as many layers as the
// profile, else the layers anew with depth and water alone.
bool ICFillWater(double water, int level, const QString& soil);
// Only the nitrogen, in the level's existing layers.
bool ICFillNitrogen(double nitrogen, int level, const QString& soil);

} // namespace quillon::editors
