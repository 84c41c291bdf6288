#include "editors/EditorSteps.h"

#include "app/UserInterface.h"
#include "editors/EditorTexts.h"
#include "format/NumberText.h"

namespace quillon::editors {

void errorBox(const QString& text)
{
    msgBox(text, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
}

std::optional<int> levelOf(const QString& text)
{
    if (!format::isNumeric(text))
        return std::nullopt;
    return qRound(text.trimmed().toDouble());
}

void invalidEntry()
{
    errorBox(text::invalidEntry);
}

void unloadEditor(bool& closedByButton, EditorForm form, const std::function<void()>& ok)
{
    if (!closedByButton) {
        closedByButton = true;
        ok();
    }
    markClosed(form);
}

} // namespace quillon::editors
