#pragma once

#include <QString>

namespace quillon::reference {

// The location text of the first row of TERVAPRO with `code` ("WED", "CRD",
// "SLD" …). Without such a row, `missing` is shown and the program ends.
QString requiredProfileLocation(const char* code, const QString& missing);

// Reads the suite's profile TERVAPRO.V48 from DataFolder into the table
// TERVAPRO, sets WeatherFolder from its WED row, lists the weather folder
// into WeatherLookup, sets GenotypeFolder from its CRD row, and copies the
// weather rows to TotalWeatherLookup. Expects the three tables empty.
//
// A missing profile, or a profile without WED or CRD, is told to the user
// and ends the program. Any other failure is shown with its text and the
// routine stops where it was; what it had stored stays.
void LocateAvailableData();

} // namespace quillon::reference
