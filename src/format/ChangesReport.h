#pragma once

#include "format/SaveChanges.h"

#include <QStringList>

#include <vector>

namespace quillon::format {

// One line for a change: what it is, where (section, group, level, column),
// the old and the new text, and the line numbers in both texts, as in
//   value changed: *SOIL ANALYSIS, @A SABL, level 1, SASC: "-99" -> "-99.00",
//   now touches SAKE (line 25 -> 25)
QString changeLine(const SaveChange& change);

// The report of a comparison: a line for each change that alters or drops
// a value (and with `withLayout` for the layout ones too), then "No values
// change." when none does. Layout changes left out are counted in a last
// line.
QStringList changesReport(const std::vector<SaveChange>& changes, bool withLayout);

// How many of the changes alter or drop a value.
int valueChangeCount(const std::vector<SaveChange>& changes);

} // namespace quillon::format
