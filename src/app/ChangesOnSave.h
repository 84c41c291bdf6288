#pragma once

#include <QStringList>

namespace quillon {

// View › Changes on Save: the open document's file on disk compared with the
// text Save would write now (the identification stored first, as Save does).
// The report is the file's path and then the lines of the comparison, value
// changes and drops only. A new document that was never saved, a file that
// isn't on disk or can't be read, and a writer that fails each give a line
// saying so in place of the comparison.
QStringList changesOnSave();

} // namespace quillon
