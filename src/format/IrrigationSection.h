#pragma once

#include "format/FileWriter.h"
#include "format/TextLines.h"

#include <QString>

namespace quillon::format {

// Reads one level line of *IRRIGATION AND WATER MANAGEMENT into `Irrigation`.
// A comment line goes to the irrigation comments instead. A failure (a
// repeated level among them) shows the error's text with
// " in IrrigationRead/frmMain." and loses the line.
void IrrigationRead(const QString& line);

// Reads one application line into `IrrigApplications`. A line whose date is
// blank or negative adds nothing. Failures show " in IrrigDatesRead.".
void IrrigDatesRead(const QString& line);

// Whether any application in the whole table has a further value (`IIRV`)
// other than NULL, blank or -99: then every level is written with the long
// application header.
bool FindIIRV();

// Reads the section from its "*IRR" line. Each level line may be followed by
// an "@I IDATE" group of application lines of the same level; a level
// without one gets a single application row with only its level. Returns
// with the cursor at the next section line or at the end.
void readIrrigationSection(LineCursor& c);

// Writes the section (blank line, head, per level its header, level line
// and application lines) and its comments; nothing when `Irrigation` is
// empty.
void writeIrrigationSection(FileWriter& w);

} // namespace quillon::format
