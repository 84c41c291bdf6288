#pragma once

// Helpers for the section tests: feeding crafted lines to a
// section reader and taking apart what a section writer wrote.

#include "app/AppState.h"
#include "database/Sql.h"
#include "format/FileWriter.h"
#include "format/TextLines.h"

#include <QStringList>

#include <functional>
#include <utility>

namespace quillon::test {

using SectionReader = std::function<void(format::LineCursor&)>;
using SectionWriter = std::function<void(format::FileWriter&)>;

// The written text split at CR LF, without the empty piece after the last.
inline QStringList linesOf(const format::FileWriter& w)
{
    QStringList lines = QString::fromLatin1(w.bytes()).split(QStringLiteral("\r\n"));
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

inline QStringList written(const SectionWriter& write)
{
    format::FileWriter w;
    write(w);
    return linesOf(w);
}

// Runs a section reader on `lines` from their first line (the section line)
// and returns the index at which it stopped.
inline int readSection(const QStringList& lines, const SectionReader& read)
{
    format::LineCursor c = format::LineCursor::fromLines(lines);
    read(c);
    return c.i;
}

// Empties the given tables and all comment buffers.
inline void clearSection(const QStringList& tables)
{
    for (const QString& table : tables)
        database::exec(QStringLiteral("DELETE FROM [%1]").arg(table));
    state().comments.clear();
}

// Reads `input`, writes, reads that output into emptied tables and writes
// again, as a save followed by a fresh open would. Comment buffers lose their
// leading CR LF after each read, as File Open does. Returns both outputs.
inline std::pair<QStringList, QStringList> saveAndReload(const QStringList& input, const QStringList& tables,
    const SectionReader& read, const SectionWriter& write)
{
    clearSection(tables);
    readSection(input, read);
    state().comments.stripLeadingLineBreaks();
    const QStringList first = written(write);

    clearSection(tables);
    readSection(first, read);
    state().comments.stripLeadingLineBreaks();
    const QStringList second = written(write);
    return { first, second };
}

} // namespace quillon::test
