#pragma once

#include "database/Schema.h"

#include <QString>

namespace quillon::database {

// Turns a field's validation rule, written the way the program writes them
// ("BETWEEN 0 AND 99 or -99", "(> 0 AND < 0.9) or = -99 or = 0"), into an SQL
// condition on `column`: comparisons without a left side compare the column,
// and a bare value means equality. A date literal #1/31/1999# compares as
// ISO date text ('1999-01-31').
QString ruleCondition(const QString& rule, const QString& column);

// The message for a refused value when the rule has no text of its own.
QString defaultRuleText(const QString& rule, const QString& table, const QString& field);

// Puts the checks of a schema table on it: text that is too long, a
// zero-length text where the table doesn't allow it, an Integer out of its
// 16-bit range, and each field's validation rule with its text.
void installFieldChecks(const TableDef& table);

// Puts a validation rule on a field of any table, also one already filled
// (rows in it are not checked). A second rule on the same field replaces the
// first; an empty rule removes it.
void setValidationRule(const QString& table, const QString& field, const QString& rule,
    const QString& ruleText);

} // namespace quillon::database
