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

// Two year digits with the century of the date codes: above 25 is 19xx, 25
// or less (and "00") 20xx.
QString fullYear(const QString& digits);

// The four-digit year of an observed weather file's code (SSSSYYNN).
QString yearOfWeatherCode(const QString& code);

// The codes of TotalWeatherLookup marked "X" in `markColumn` that a station
// stands for, in table order: a four-letter station all its files ("%" and
// "_" in it are plain letters), an eight-character one itself, any other
// nothing. A mark column the table lacks makes the statement fail.
QStringList stationCodes(const QString& station, const QString& markColumn);

// Fills FieldYears with the years for which the stations of the fields have
// weather: a four-letter station takes all its files, an eight-character
// one its file alone. A failure is shown (" in FindFieldDate/Module.") and
// FieldYears keeps what it had.
void FindFieldDate();

} // namespace quillon::reference
