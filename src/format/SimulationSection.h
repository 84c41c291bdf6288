#pragma once

#include "format/FileWriter.h"
#include "format/TextLines.h"

#include <QList>
#include <QString>
#include <QVariantMap>

namespace quillon::format {

// Readers of the data lines of the simulation control groups. Each takes one
// line and adds one row to its table: SimulationControl, …Options, …Methods,
// …Management, …Outputs. A comment line goes to the simulation comments
// instead.
//
// A line that the table refuses is reported and replaced by a row of
// defaults for its level; the general reader reports a second line of a
// level as a duplicate and keeps the first. When the row of defaults fails
// as well (always so for the options reader, which offers it to the general
// table) the error is thrown on to the caller.
void SimGeneralRead(const QString& line);
void SimOptionsRead(const QString& line);
void SimMethodsRead(const QString& line);
void SimManagementRead(const QString& line);
void SimOutputsRead(const QString& line);

// Reads one level of simulation controls. `c.i` stands at a line beginning
// with "@N G"; the five control groups are read, then the automatic
// management groups if a marker line follows them. Returns with `c.i` at the
// first line not taken (or at the end), for the dispatch to look at. A
// failure that no group reader absorbs replaces all simulation control and
// automatic management rows by one level of defaults, and reading goes on
// with the next line; should that reset fail too, its error is thrown to the
// caller. Comment lines go to CommentsSimulation.
void readSimulationControls(LineCursor& c);

// The group tables in level order, for the writer: one list of rows per
// group, in the order of reference::simGroups(). The forecast dates are only
// fetched in forecast mode. Row i of every list belongs to level i of the
// output, whatever level the row itself holds.
struct SimData {
    QList<QList<QVariantMap>> groups;
    int levels() const { return groups.isEmpty() ? 0 : int(groups.front().size()); }
};
SimData printSimData();

// Writes an empty line, "*SIMULATION CONTROLS" and every level: its five
// control groups, an empty line, its automatic management block and another
// empty line. Nothing at all when SimulationControl has no row. Database
// errors are thrown to the caller. The automatic management blocks stand
// inside each level, so they have no writer of their own.
void writeSimulationSection(FileWriter& w);

} // namespace quillon::format
