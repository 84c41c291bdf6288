#pragma once

#include "editors/SimFields.h"

#include <QVariant>

#include <optional>

namespace quillon::editors {

// How a box of the simulation control page shows its column's value: a
// number as the file writes it, a date code as date text, text as it
// stands.
QString shownText(const SimField& field, const QVariant& value);

// What a box's text refuses, as its validating event says it: "" when the
// text passes. An empty text and exactly -99 pass every number; a date box
// takes an empty text or a date.
QString refusalOf(const SimField& field, const QString& text);

// The value a box's text stores in its column, or nothing when the text is
// refused. An empty box stores NULL, but for a date, which takes the
// column's default (the missing date), and for the number of years, which
// takes its default; a whole-number column takes the number rounded.
std::optional<QVariant> storedValue(const SimField& field, const QString& text);

} // namespace quillon::editors
