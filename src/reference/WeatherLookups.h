#pragma once

#include <QString>

namespace quillon::reference {

// The weather step of LocateAvailableData: one WeatherLookup row per weather
// file ("*.wth", names of 12 characters or fewer) in WeatherFolder, its
// description from the file's first line, then one row per station and
// description. Throws RuntimeError on a file it can't read.
void fillWeatherLookup();

// Copies the weather rows to TotalWeatherLookup and marks them observed.
void fillTotalWeatherLookup();

// The description a weather file's first line gives: up to 50 characters
// after its first ":" (from the first column when it has none), trimmed,
// without "'", tabs turned into blanks; "" for an empty text or " -99".
QString weatherDescription(const QString& firstLine);

// The four-digit year of an observed weather file's code (SSSSYYNN): "00"
// is 2000, above 25 is 19xx, 25 or less 20xx.
QString yearOfWeatherCode(const QString& code);

// Fills FieldYears with the years for which the stations of the fields have
// weather: a four-letter station takes all its files, an eight-character
// one its file alone. A failure is shown (" in FindFieldDate/Module.") and
// FieldYears keeps what it had.
void FindFieldDate();

} // namespace quillon::reference
