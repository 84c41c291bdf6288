#pragma once

#include "format/HeaderColumns.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace quillon::format {

// An experiment file's text taken apart the way the format reads it:
// sections opened by "*" lines, groups opened by "@" header lines, data
// lines cut into cells by the columns of the header above them, and the
// comment lines apart. Blank lines and the closing 0x1A line hold nothing.
// Any bytes give a layout; lines that fit no rule are data lines of no group.

struct LayoutSection {
    QString key; // the first four characters, as the reader dispatches on them
    QString title; // the section line up to its first run of blanks
    int number = 0; // line number in the text, from 1
};

struct LayoutHeader {
    GroupHeader group;
    QString text; // the header line as it stands
    int number = 0;
};

// One cell of a data line.
struct LayoutCell {
    const HeaderColumn* column; // null for a line that is one text
    QString name; // the column's name; the group's for a text line
    QString text; // the positions of the column, blanks included
};

struct LayoutLine {
    int number = 0;
    QString text;
    int section = -1; // index in sections, -1 before the first
    int header = -1; // index in headers, -1 for a line under no header
};

struct LayoutComment {
    int number = 0;
    QString text;
    // Where it stands: the key of its section ("" before the first), and
    // whether lines of that section follow it.
    QString section;
    bool inside = false;
};

class FileLayout {
public:
    // Takes apart file bytes (code page 1252; CR LF, CR or LF line ends).
    explicit FileLayout(const QByteArray& bytes);

    const std::vector<LayoutSection>& sections() const { return m_sections; }
    const std::vector<LayoutHeader>& headers() const { return m_headers; }
    const std::vector<LayoutLine>& lines() const { return m_lines; }
    const std::vector<LayoutComment>& comments() const { return m_comments; }
    // Every line ends in CR LF.
    bool crLf() const { return m_crLf; }
    // The text closes with the line of 0x1A.
    bool endMark() const { return m_endMark; }

    // The group a data line belongs to: its header's key, "*EXP.DETAILS:"
    // for the experiment line, or the section's key and "|" for a line
    // under no header.
    QString groupKey(const LayoutLine& line) const;
    // The section line's title, "" before the first section.
    QString sectionTitle(const LayoutLine& line) const;
    // The cells of a data line, in order. The experiment line has two, the
    // identity and the title; a line of a text group, or under no header,
    // is one cell.
    std::vector<LayoutCell> cells(const LayoutLine& line) const;

private:
    std::vector<LayoutSection> m_sections;
    std::vector<LayoutHeader> m_headers;
    std::vector<LayoutLine> m_lines;
    std::vector<LayoutComment> m_comments;
    bool m_crLf = true;
    bool m_endMark = false;
};

} // namespace quillon::format
