#pragma once

#include <QByteArray>

namespace bench {

// Builds the large experiment from the sample maize file: every factor
// section is repeated with its levels renumbered up to 99, each event row is
// repeated `repeat` times with its date moved on a day at a time, and the
// treatments run to 99, as many as the two-column treatment number holds.
// Returns the text and counts the event rows.
QByteArray generateLarge(const QByteArray& sample, int repeat, int& eventRows);

} // namespace bench
