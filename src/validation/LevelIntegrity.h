#pragma once

namespace quillon::validation {

// Repairs the treatment table after a file has been read: a factor level
// that names a level its factor table doesn't have is set to NULL, silently.
// Levels that are NULL or 0 are left alone.
//
// Errors are trapped and shown with " in CheckLevels/Module."; repairs made
// before the error stay.
void CheckLevels();

} // namespace quillon::validation
