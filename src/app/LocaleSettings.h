#pragma once

#include <QString>

namespace quillon {

// The user's short date format and decimal separator, kept at start in
// state().SavedShortDate and SavedDecimal and put back when the main window
// closes. The program changes neither setting, so putting them back only
// undoes what a change of the process locale might have done; a crash
// leaves the user's settings as they were.
void saveLocaleSettings();
void restoreLocaleSettings();

// A short date format with its year widened to four digits, so that date
// text reads back without a century guess ("M/d/yy" -> "M/d/yyyy").
QString fourDigitYearFormat(const QString& shortDateFormat);

} // namespace quillon
