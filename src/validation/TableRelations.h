#pragma once

#include "database/Relations.h"

#include <vector>

namespace quillon::validation {

// The relations that tie the level tables to Treatments and to their own
// detail rows, in the order they are made and removed. Each cascades a
// renumbered level into its dependent table.
const std::vector<database::Relation>& relationTable();

// Makes every relation of the table, in order. A relation that can't be made
// (it exists already, or rows of the dependent table name a level that
// doesn't exist) is skipped without a word; the others are made all the same.
void SetRelations();
// Removes the relations by name, in the same order, skipping any that
// doesn't exist.
void DeleteRelations();

// The same for the one relation of the forecast dates, Sim10.
void SetRelationsForecast();
void DeleteRelationsForecast();

} // namespace quillon::validation
