#pragma once

namespace quillon::editors {

// Whether the irrigation editor's third value, IIRV, is in use for a level:
// some of its events in the scratch table hold a value that is not NULL, 0
// or -99. The event grid shows the column only then. A failure is reported
// and leaves the column hidden.
bool FindIIRV(int level);

} // namespace quillon::editors
