#pragma once

#include "editors/EditorSteps.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace quillon::editors {

// What the editors of a factor whose level is one row of one table (cultivars,
// planting) do with their levels.

// The number a new level takes: one more than the highest, 1 for the first.
// Throws RuntimeError.
int nextLevel(const QString& table, const QString& levelField);

// The treatments whose column `levelField` holds `level`: their TRTNO, in the
// order of the table. Throws RuntimeError.
QStringList treatmentsUsing(const QString& levelField, int level);

// Deletes a level the user confirms. A level that treatments use is not
// deleted: the deletion warning lists them under `levelWord`. Otherwise the
// question "Are you sure you want to delete level N?" (Yes and No, No the
// default) and, on Yes, the level's row goes. Returns whether it went.
// Throws RuntimeError.
bool deleteUnusedLevel(
    const QString& table, const QString& levelField, int level, const QString& levelWord);

} // namespace quillon::editors
