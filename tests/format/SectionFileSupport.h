#pragma once

// Helpers for the tests of the head sections of the experiment file
// (general block to planting): a small dispatch that hands crafted lines to
// section readers by the first four characters of a line, and the written
// text taken apart at CR LF.

#include "app/AppState.h"
#include "database/Sql.h"
#include "format/FileWriter.h"
#include "format/TextLines.h"

#include <QStringList>

#include <functional>
#include <map>

namespace quillon::test::sections {

using Reader = std::function<void(format::LineCursor&)>;
using Writer = std::function<void(format::FileWriter&)>;

inline QStringList linesOf(const format::FileWriter& w)
{
    QStringList lines = QString::fromLatin1(w.bytes()).split(QStringLiteral("\r\n"));
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

inline QStringList writtenBy(const Writer& write)
{
    format::FileWriter w;
    write(w);
    return linesOf(w);
}

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

inline void emptyTables(const QStringList& tables)
{
    for (const QString& table : tables)
        database::exec(QStringLiteral("DELETE FROM [%1]").arg(table));
    state().comments.clear();
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
    emptyTables(tables);
    dispatch(input, readers);
    TwoSaves out;
    out.first = writtenBy(write);
    emptyTables(tables);
    dispatch(out.first, readers);
    out.second = writtenBy(write);
    return out;
}

} // namespace quillon::test::sections
