#pragma once

#include "editors/gui/EventEditorWindow.h"

namespace quillon {

// The tillage editor: the event-editor frame on its row of the member table.
class frmTillEdit final : public EventEditorWindow {
    Q_OBJECT
public:
    explicit frmTillEdit(QWidget* parent = nullptr);
};

} // namespace quillon
