#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace quillon::editors {

// The eleven tables of a simulation control level in the order the editor
// handles them throughout: the five groups of the controls, then the
// automatic management (nitrogen before irrigation, unlike in the file) and
// the forecast dates.
const QStringList& simTables();

// How a field of the level page shows and stores its column.
enum class SimKind {
    Text, // a text box, the column's text
    Number, // a text box, the number as the file writes it
    Code, // a combo that shows descriptions and stores the code
    Date, // a date box over a five-digit code
    LongDate, // a date box over a seven-digit code
};

// A box or combo of the level page, bound to a column of a group table. The
// control's name is the program's: txtNYRS, DBCombo1(2), txtMaskEdBoxPlant1.
struct SimField {
    QString control;
    QString table;
    QString column;
    SimKind kind;
    QString label;
    // A code combo lists SimLookUp under `simType`, or, when `codeType` is
    // set, CodeLookup under that type with "description (code)" items.
    int simType = 0;
    QString codeType;
    // A validated number: the bounds, both inclusive, and whether a value
    // outside them is "Invalid percentage." rather than "Invalid entry.".
    bool bounded = false;
    double low = 0;
    double high = 0;
    bool percentage = false;
    // A text box's length.
    int maxLength = 0;
};

// Every field, tab by tab in the order the page shows them.
const std::vector<SimField>& simFields();
// The field of a control (case-blind); nullptr if none.
const SimField* simField(const QString& control);

// A row of the table by which a management code of DBCombo4 (index 0
// planting, 1 irrigation, 2 fertilizer, 3 residue, 4 harvest) sets the
// enabled state of its tab's fields: a code among `codes` (any code when
// empty) enables `enabled` and disables `disabled`. Rows are tested in
// order; the first that fits applies.
struct ManagementRule {
    int index;
    QStringList codes;
    QStringList enabled;
    QStringList disabled;
};
const std::vector<ManagementRule>& managementRules();

} // namespace quillon::editors
