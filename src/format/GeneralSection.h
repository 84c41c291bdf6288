#pragma once

#include "format/FileWriter.h"
#include "format/TextLines.h"

#include <QString>

namespace quillon::format {

// The general block of the experiment file: *GENERAL with its groups
// @PEOPLE, @ADDRESS, @SITE, the plot line and @NOTES. People, Address and
// Site go to the one row of GeneralInfo, the plot line to PlotInfo, the
// notes to state().comments.Notes.

// Reads one line of the block. An "@" line selects the group (its first
// eight characters become `header`); a data line is taken by the group in
// force. Of @PEOPLE, @ADDRESS and @SITE only the first line counts (the
// header is emptied behind it); each plot line adds a PlotInfo row; each
// notes line is added to the notes. Every call also stores People, Address
// and Site in GeneralInfo and cleans the notes. A line too long for its
// field is cut with a warning. Failures are reported and cost the line.
void GeneralRead(const QString& line, QString& header, int lineNumber);

// Reads the block with `c.i` at its first line. With an empty `fixedHeader`
// (the *GENERAL line) the header comes from the "@" lines; "@SITE" (a site
// group outside *GENERAL) also ends at the next "@" line; "@ PAREA " (a
// plot group outside *GENERAL) reads plot lines. Stops at a line beginning
// with "*" (or "@" for the site), or at the end, without passing it.
void readGeneralSection(LineCursor& c, const QString& fixedHeader);

// Writes the empty line before the block, the block and CommentsGeneral.
void writeGeneralSection(FileWriter& w);

} // namespace quillon::format
