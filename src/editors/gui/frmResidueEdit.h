#pragma once

#include "editors/gui/EventEditorWindow.h"

namespace quillon {

// The residue and organic fertilizer editor: the event-editor frame on its row of the member table.
class frmResidueEdit final : public EventEditorWindow {
    Q_OBJECT
public:
    explicit frmResidueEdit(QWidget* parent = nullptr);
};

} // namespace quillon
