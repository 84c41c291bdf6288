#pragma once

// Helpers for the tests of the head sections of the experiment file
// (general block to planting): a small dispatch that hands crafted lines to
// section readers by the first four characters of a line, and two saves in
// a row through it.

#include "EventSectionSupport.h"

#include <map>

namespace quillon::test::sections {

using Reader = SectionReader;
using Writer = SectionWriter;

// Walks the lines as the file's dispatch does: a line whose first four
// characters are a key goes to that key's reader, which leaves the index at
// the next line to look at; any other line is passed by. Comment buffers
// then lose their leading CR LF, as after opening a file.
inline void dispatch(const QStringList& lines, const std::map<QString, Reader>& readers)
{
    format::LineCursor c = format::LineCursor::fromLines(lines);
    while (!c.atEnd()) {
        const auto it = readers.find(c.line().left(4));
        if (it == readers.end()) {
            ++c.i;
            continue;
        }
        const int before = c.i;
        it->second(c);
        if (c.i == before) // a reader must move on; guard the test against a hang
            ++c.i;
    }
    state().comments.stripLeadingLineBreaks();
}

// Reads `input`, writes, empties the tables and reads that output back, and
// writes again: what a save followed by the re-read does. Returns both
// outputs.
struct TwoSaves {
    QStringList first;
    QStringList second;
};
inline TwoSaves saveTwice(const QStringList& input, const QStringList& tables,
    const std::map<QString, Reader>& readers, const Writer& write)
{
    clearSection(tables);
    dispatch(input, readers);
    TwoSaves out;
    out.first = written(write);
    clearSection(tables);
    dispatch(out.first, readers);
    out.second = written(write);
    return out;
}

} // namespace quillon::test::sections
