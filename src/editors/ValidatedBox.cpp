#include "editors/ValidatedBox.h"

#include "app/UserInterface.h"
#include "editors/EditorTexts.h"
#include "format/NumberText.h"

namespace quillon::editors {

std::optional<QString> checkedBoxText(const QString& text, const BoxRange& range)
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return QStringLiteral("-99");
    if (format::isNumeric(trimmed)) {
        const double value = trimmed.toDouble();
        if (value == -99 || (value >= range.low && value <= range.high))
            return trimmed;
    }
    msgBox(text::invalidEntry, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
    return std::nullopt;
}

} // namespace quillon::editors
