#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

class QIODevice;

namespace quillon::format {

// Trim as the file formats mean it: blanks (spaces) only, at both ends.
// Tabs and other characters stay.
QString trimSpaces(const QString& text);

// Splits file bytes (code page 1252) into lines. CR LF, a lone CR and a lone
// LF all end a line; a last line without an ending counts. Bytes stay as
// they are: NULs, tabs and other control characters stay in the line.
QStringList splitLines(const QByteArray& bytes);

// Reads a whole text file into lines. Returns false if it can't be opened.
bool readLines(const QString& path, QStringList& lines);

// Whether a line is a comment: its trimmed form begins with "!".
inline bool isComment(const QString& line) { return trimSpaces(line).startsWith(QLatin1Char('!')); }

// The lines of an experiment file as the reader keeps them: only lines whose
// trim is longer than one character (blank lines, lines of one character
// and the closing 0x1A vanish), each stored untrimmed; and an index into
// them, which the dispatch and the section loops advance.
struct LineCursor {
    QStringList lines;
    int i = 0;

    int n() const { return int(lines.size()); }
    bool atEnd() const { return i >= n(); }
    // The line at the index; "" past the end.
    QString line() const { return atEnd() ? QString() : lines.at(i); }

    // Keeps from `raw` the lines the reader stores.
    static LineCursor fromLines(const QStringList& raw);

    // Comment lines from the index on go to `buffer` (Mid(line, 2) with CR LF
    // in front), and the index stops at the first line that isn't one.
    void takeComments(QString& buffer);
};

// Appends a comment line to a buffer: the line less its first character,
// preceded by CR LF.
void appendComment(QString& buffer, const QString& line);

// The section loop most sections take. With the index at the section line:
//  1. advance; comment lines go to the buffer;
//  2. advance: the line stepped over is the header, whatever it holds;
//  3. hand line i to the reader;
//  4. advance; comment lines go to the buffer;
//  5. stop at a line beginning with "*" or at the end, without advancing;
//     otherwise go on at 3.
// An "@" line inside the section is handed to the reader like data.
template <typename Reader>
void sectionLoop(LineCursor& c, QString& comments, Reader&& reader)
{
    ++c.i;
    c.takeComments(comments);
    ++c.i;
    while (!c.atEnd()) {
        reader(c.line());
        ++c.i;
        c.takeComments(comments);
        if (c.atEnd() || c.line().startsWith(QLatin1Char('*')))
            return;
    }
}

} // namespace quillon::format
