#include "editors/MainWindowCrop.h"

#include "app/DocumentCommands.h"

namespace quillon::editors {

QString mainWindowCrop()
{
    const std::optional<Identification> shown = documentHost().identification();
    // The tables keep the code in lower case, as the file's name has it.
    return (shown ? *shown : storedIdentification()).cropCode.toUpper();
}

} // namespace quillon::editors
