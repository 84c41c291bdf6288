#pragma once

#include "app/ExpIdentity.h"

namespace quillon {

// The guided start of a new file: New, then the identification's Next, then
// each editor's Next opening the following one.

// The levels a new experiment starts with, made by New before the
// relations: level 1 of the fields, of the planting and of the initial
// conditions. Treatment 1, which the identification's Next makes, names
// field 1 and planting 1, so they must be there for it to hold them; and
// each is in the state the editors of the guided start look for in a new
// file: a field without a weather station and a planting without a date
// (the planting and event editors send the user to the fields first), and an
// initial-conditions level with neither previous crop nor date, which the
// initial conditions editor dates by the planting and gives the crop when it
// opens. The initial-conditions level is the one that editor makes for a
// factor without levels, with its row of soil, water and nitrogen as Open
// gives every level. No cultivar is made: the crop isn't chosen yet, and the
// treatment table sends the user to choose one. Throws RuntimeError.
void Add_IC_Fld_Planting();

// The identification's Next on the tables, once its boxes have passed their
// checks. A document with cultivars or treatments reloads the simulation
// defaults of its type and goes on. Otherwise the experiment is accepted:
// an experimental file must have its crop ("Please select Crop." and false
// without one), whose code, or an empty code for the other types, goes to
// ExpDetails; and a new file then takes the simulation defaults of its type
// and, from them, its simulation controls level 1 and treatment 1. Returns
// whether the treatment editor is to open; failures are reported
// (" in cmdNext/frmExpIdentify.") and give false.
bool identificationNext(const ExperimentDetails& details, FileType type, const QString& cropCode);

} // namespace quillon
