#pragma once

#include "editors/gui/EventEditorWindow.h"

namespace quillon {

// The harvest editor: the event-editor frame on its row of the member table.
class frmHarvest final : public EventEditorWindow {
    Q_OBJECT
public:
    explicit frmHarvest(QWidget* parent = nullptr);
};

} // namespace quillon
