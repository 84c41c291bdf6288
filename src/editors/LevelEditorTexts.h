#pragma once

#include <QString>

// The buttons of the editors whose level is one row of one table (cultivars,
// planting), with their hints.
namespace quillon::editors::level_text {

inline const QString add = QStringLiteral("Add");
inline const QString remove = QStringLiteral("Delete");
inline const QString ok = QStringLiteral("OK");
inline const QString cancel = QStringLiteral("Cancel");
inline const QString addHint = QStringLiteral("Add a level, a copy of the selected one (Ctrl+A)");
inline const QString deleteHint = QStringLiteral("Delete the selected level (Ctrl+D)");
inline const QString okHint = QStringLiteral("Keep the changes and close (Enter or Ctrl+O)");
inline const QString cancelHint = QStringLiteral("Drop the changes and close (Esc or Ctrl+N)");

} // namespace quillon::editors::level_text
