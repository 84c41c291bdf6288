#pragma once

#include <QString>
#include <QVariant>

namespace quillon::format {

// The writer's column idioms.

// Level column: the level trimmed, in three characters: one digit as blank,
// digit, blank; two digits and a blank; three digits alone; longer as is.
// No level at all (NULL) gives two blanks.
QString levelColumn(const QVariant& level);

// Two-wide number: one leading blank when the text is shorter than two.
QString twoWide(const QVariant& number);

// Right-justified in `width`: width - length blanks, then the trimmed text.
// Wider text is written whole, with no blank in front.
QString rightJustified(const QString& text, int width);

// Text after a gap: `gap` blanks, then the text as it stands.
QString afterGap(const QString& text, int gap);

// The reader's view of a line: Mid(line, start, length) with start counted
// from 1; positions past the end give "".
QString mid(const QString& line, int start, int length = -1);

// The editors' captions are a title, a hyphen and the file name: the caption
// with the file name after its last hyphen cut off (the hyphen stays).
QString CaptionStem(const QString& caption);

} // namespace quillon::format
