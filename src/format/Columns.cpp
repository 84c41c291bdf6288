#include "format/Columns.h"

#include "format/NumberText.h"

namespace quillon::format {

QString levelColumn(const QVariant& level)
{
    const QString t = NumText(level);
    if (t.isEmpty())
        return QStringLiteral("  ");
    if (t.size() == 1)
        return QLatin1Char(' ') + t + QLatin1Char(' ');
    if (t.size() == 2)
        return t + QLatin1Char(' ');
    return t;
}

QString twoWide(const QVariant& number)
{
    const QString t = NumText(number);
    return t.size() < 2 ? QLatin1Char(' ') + t : t;
}

QString rightJustified(const QString& text, int width)
{
    const QString t = text.trimmed();
    return t.size() >= width ? t : QString(width - t.size(), QLatin1Char(' ')) + t;
}

QString afterGap(const QString& text, int gap) { return QString(gap, QLatin1Char(' ')) + text; }

QString mid(const QString& line, int start, int length)
{
    if (start < 1 || start > line.size())
        return QString();
    return line.mid(start - 1, length);
}

QString CaptionStem(const QString& caption)
{
    const QString head = caption.left(caption.size() - 1);
    if (!head.contains(QLatin1Char('-')) && !head.contains(QLatin1Char('.')))
        return caption;
    int read = 0;
    for (int i = caption.size() - 2; i >= 0; --i) {
        ++read;
        if (caption.at(i) == QLatin1Char('-'))
            break;
    }
    // The walk began at the last-but-one character, so cutting as many
    // characters as were read keeps the hyphen.
    if (read < 2)
        return caption;
    return caption.left(caption.size() - read).trimmed();
}

} // namespace quillon::format
