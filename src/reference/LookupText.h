#pragma once

#include <QString>
#include <QVariant>

namespace quillon::reference {

// The reference tables refuse zero-length text (their fields aren't made to
// allow it): an empty cell is stored as NULL, which every reader of these
// tables takes as the empty text.
inline QVariant textOrNull(const QString& text)
{
    return text.isEmpty() ? QVariant(QString()) : QVariant(text);
}

// Descriptions lose their apostrophes so that they can stand inside the
// quoted statements that look them up later.
inline QString withoutApostrophes(QString text)
{
    text.remove(QLatin1Char('\''));
    return text;
}

} // namespace quillon::reference
