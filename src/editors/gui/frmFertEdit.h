#pragma once

#include "editors/gui/EventEditorWindow.h"

namespace quillon {

// The fertilizer editor: the event-editor frame on its row of the member table.
class frmFertEdit final : public EventEditorWindow {
    Q_OBJECT
public:
    explicit frmFertEdit(QWidget* parent = nullptr);
};

} // namespace quillon
