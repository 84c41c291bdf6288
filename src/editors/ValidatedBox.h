#pragma once

#include <QString>

#include <limits>
#include <optional>

namespace quillon::editors {

// The range a numeric text box of a level page accepts. A box without a
// lower bound takes any number up to the upper one.
struct BoxRange {
    double low = -std::numeric_limits<double>::infinity();
    double high = 0;
};

// The check of a numeric text box as the focus leaves it: the text is
// trimmed; -99, the file's missing value, always passes, and an empty box
// takes it; anything else must be a number within the range. Returns the
// text the box keeps, or nothing after "Invalid entry." (title "Error") has
// been shown, when the focus is to stay in the box.
std::optional<QString> checkedBoxText(const QString& text, const BoxRange& range);

} // namespace quillon::editors
