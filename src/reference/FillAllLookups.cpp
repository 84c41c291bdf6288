#include "reference/FillAllLookups.h"

#include "app/UserInterface.h"
#include "database/Sql.h"
#include "reference/CodeTables.h"
#include "reference/CropLookups.h"
#include "reference/Profile.h"
#include "reference/SoilLookups.h"
#include "reference/SuiteFiles.h"

namespace quillon::reference {

void Fill_All_Lookups()
{
    // One transaction and one listing of each folder for the whole load:
    // suites hold thousands of weather files.
    ListingCache listings;
    database::Transaction transaction;
    LocateAvailableData();
    ui().progress(10);
    CreateSoilLookup();
    ui().progress(15);
    CreateCodeLookup();
    ui().progress(20);
    CreateCodeStageLookup();
    ui().progress(25);
    CreateCropLookup();
    ui().progress(30);
    CropCodesLookup();
    transaction.commit();
}

} // namespace quillon::reference
