#pragma once

#include "editors/gui/EventEditorWindow.h"

namespace quillon {

// The chemical application editor: the event-editor frame on its row of the member table.
class frmChemEdit final : public EventEditorWindow {
    Q_OBJECT
public:
    explicit frmChemEdit(QWidget* parent = nullptr);
};

} // namespace quillon
