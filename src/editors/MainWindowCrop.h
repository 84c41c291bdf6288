#pragma once

#include <QString>

namespace quillon::editors {

// The crop chosen for the document in the identification window (its
// CropLookup code, in capitals), or the one the tables hold when the window isn't loaded;
// "" when none is chosen or the file is not an experimental one.
QString mainWindowCrop();

} // namespace quillon::editors
