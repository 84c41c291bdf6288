#pragma once

namespace quillon::validation {

// Sets the harvest management code of the simulation level of every
// treatment that has a harvest level: "R" when that harvest level has rows
// in Harvest, "M" when it has none. A treatment whose simulation level has
// no management row is passed over. Errors are reported with
// " in ChangeManagementHarvest.".
void ChangeManagementHarvest();

// Replaces planting methods and distributions that the code table doesn't
// know by "S" and "R", and warns once for each of the two that was changed.
// Empty, NULL and "-99" cells are left alone. Errors are reported with
// " in ChangePlantingMethod.".
void ChangePlantingMethod();

} // namespace quillon::validation
