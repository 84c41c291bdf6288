#pragma once

namespace quillon::editors {

// Level 1 of the initial conditions, as a factor without levels gets it:
// LNIC 1 with inoculation and fixation effectiveness 1, and one empty layer.
void addInitialConditionsLevelOne();

// What has to be in place before the initial conditions editor opens, from
// its menu handler or from the planting editor's Next:
//  1. a factor without levels gets level 1 (NewLevelCreated says so);
//  2. ICSoil lists the fields' soils as "description (ID)", and
//     IC_Water_Nitrogen forgets a soil that is no longer among them;
//  3. a single level with neither previous crop nor date, as a new file has
//     it, takes the planting date (the simulation start wins when there is
//     one) and, in an experimental file, the identification's crop;
//  4. SoilData is emptied.
// Returns false when the editor is not to open: the fields lack their
// information (the field editor opens instead) or no date can be found; the
// user has been told. A missing crop is told and leaves the level as it is.
// Database failures throw RuntimeError.
bool prepareInitialConditions();

} // namespace quillon::editors
