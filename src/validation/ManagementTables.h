#pragma once

namespace quillon::validation {

// The management tables carry, per level of irrigation, fertilizer, residue
// and harvest, how that level's dates are given: "R" calendar dates, "D" day
// numbers (harvest also "M"). They are derived from the treatments, their
// simulation levels' management codes and the first application date of each
// level, and rebuilt from scratch on every call.
//
// Errors in the first half (emptying the table, one row per treatment) are
// ignored row by row. Later errors are reported with " in FillIrrManagement."
// and so on; when the working database isn't there at all the program shows
// "Error with file: " and the file's name, and ends. What was done stays.
void FillIrrManagement();
void FillFerManagement();
void FillResManagement();
void FillHarManagement();

} // namespace quillon::validation
