#pragma once

#include "editors/gui/EventEditorWindow.h"

namespace quillon {

// The environment modification editor: the event-editor frame on its row of the member table.
class frmEnvMod final : public EventEditorWindow {
    Q_OBJECT
public:
    explicit frmEnvMod(QWidget* parent = nullptr);
};

} // namespace quillon
