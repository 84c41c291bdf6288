#pragma once

#include <QString>

#include <optional>

namespace quillon::editors {

// The date the first level of a factor takes when its editor has to create
// it: the simulation start when one is set, else the first planting date.
// With a planting row that has no date while the field has no weather
// station, `enterFieldInformation` is shown and the field editor opens
// instead; with no date at all, "Please enter planting date or date to start
// simulation." Nothing in those two cases. Throws RuntimeError.
std::optional<QString> levelOneDate(const QString& enterFieldInformation);

// The first planting date there is, as a date code, unless a simulation
// start is set or there is no planting, when it is the simulation start;
// "-99" for none.
// Throws RuntimeError.
QString plantingOrStartDate();

} // namespace quillon::editors
