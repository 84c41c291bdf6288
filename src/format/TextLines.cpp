#include "format/TextLines.h"

#include "format/Cp1252.h"

#include <QFile>

namespace quillon::format {

QString trimSpaces(const QString& text)
{
    int start = 0;
    int end = int(text.size());
    while (start < end && text.at(start) == QLatin1Char(' '))
        ++start;
    while (end > start && text.at(end - 1) == QLatin1Char(' '))
        --end;
    return text.mid(start, end - start);
}

QStringList splitLines(const QByteArray& bytes)
{
    QStringList lines;
    qsizetype start = 0;
    const qsizetype size = bytes.size();
    for (qsizetype i = 0; i < size; ++i) {
        const char c = bytes.at(i);
        if (c != '\r' && c != '\n')
            continue;
        lines << fromCp1252(bytes.mid(start, i - start));
        if (c == '\r' && i + 1 < size && bytes.at(i + 1) == '\n')
            ++i;
        start = i + 1;
    }
    if (start < size)
        lines << fromCp1252(bytes.mid(start));
    return lines;
}

bool readLines(const QString& path, QStringList& lines)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    lines = splitLines(file.readAll());
    return true;
}

LineCursor LineCursor::fromLines(const QStringList& raw)
{
    LineCursor c;
    c.lines.reserve(raw.size());
    for (const QString& line : raw) {
        if (trimSpaces(line).size() > 1)
            c.lines << line;
    }
    return c;
}

void LineCursor::takeComments(QString& buffer)
{
    while (!atEnd() && isComment(lines.at(i))) {
        appendComment(buffer, lines.at(i));
        ++i;
    }
}

void appendComment(QString& buffer, const QString& line)
{
    buffer += QStringLiteral("\r\n") + line.mid(1);
}

} // namespace quillon::format
