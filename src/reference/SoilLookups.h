#pragma once

#include <QString>
#include <QStringList>

namespace quillon::reference {

// The soil folder's location text, set by CreateSoilLookup from the
// profile's SLD row.
QString& SoilFolder();

// Every line of every soil file read by the last CreateSoilLookup whose first
// character isn't "!" and which isn't blank, in reading order. FillSoilTable
// takes its layers from here.
QStringList& SoilLines();

// Lists the profiles of SOIL.SOL and the two-letter soil files ("AB.SOL") of
// the soil folder in SoilLookup and keeps their lines in SoilLines. No SLD
// row, or a soil file that can't be opened or read, ends the program; a
// soil identifier found twice is told to the user and read once. When no
// soil file was added, removed or written since the last call on the same
// open database, the rows, lines and messages of that call are given again
// without reading the files; SoilLookup is then expected empty, or left
// with those rows (see SoilLookupStands).
void CreateSoilLookup();

// Whether SoilLookup holds the rows of the last CreateSoilLookup and the
// soil folder is as that call found it: the next CreateSoilLookup would
// give the same rows again, so the table may stay when a document is
// cleared instead of being emptied and filled anew.
bool SoilLookupStands();

// Fills SoilData with the layers of the soil `code` as SoilLines holds
// them: the first layer block of its profile. An unknown soil leaves
// SoilData empty. Failures are shown (" in FillSoilTable.").
void FillSoilTable(const QString& code);

// Rebuilds ICSoil from the soils the fields name and brings it in line with
// the soils available (AdjustToAvailableSoils).
void CheckOn_ICSoil_Empty();

// Turns each soil identifier in ICSoil into the form the editor shows,
// description and identifier in brackets; identifiers without a soil go.
void AdjustToAvailableSoils();

// Clears the soil, water and nitrogen of each IC_Water_Nitrogen row whose
// soil is no longer in ICSoil.
void CheckIC_WaterNitrogen();

} // namespace quillon::reference
