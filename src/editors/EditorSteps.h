#pragma once

#include "editors/EditorForms.h"

#include <QString>

#include <functional>
#include <optional>

// Small steps the editors share.
namespace quillon::editors {

// A message with the title "Error" and the critical icon.
void errorBox(const QString& text);

// The level a grid's level cell holds, if its text is a number.
std::optional<int> levelOf(const QString& text);

// "Invalid entry." titled "Error", the answer to a cell or box that names no
// level or holds no valid value.
void invalidEntry();

// The unload rule of an editor whose grids are bound in place: a close that
// came from neither OK nor Cancel commits as OK does; the form's open flag
// goes either way.
void unloadEditor(bool& closedByButton, EditorForm form, const std::function<void()>& ok);

} // namespace quillon::editors
