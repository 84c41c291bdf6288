#pragma once

#include "editors/gui/EventEditorWindow.h"

namespace quillon {

// The irrigation editor: the event-editor frame on its row of the member table.
class frmIrrigation final : public EventEditorWindow {
    Q_OBJECT
public:
    explicit frmIrrigation(QWidget* parent = nullptr);
};

} // namespace quillon
