#pragma once

namespace quillon::reference {

// Loads the reference tables of an empty working database, moving the wait
// window's bar after each step: the profile and weather (10), the soils
// (15), Detail.cde (20), GRSTAGE.CDE (25), the crops (30), the cultivars.
// SimLookUp is left to the caller (CreateSIMLookUp). The steps end the
// program on the failures that they name.
void Fill_All_Lookups();

} // namespace quillon::reference
