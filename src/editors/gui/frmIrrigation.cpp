#include "editors/gui/frmIrrigation.h"

namespace quillon {

frmIrrigation::frmIrrigation(QWidget* parent)
    : EventEditorWindow(*editors::eventMember(QStringLiteral("frmIrrigation")), parent)
{
}

} // namespace quillon
