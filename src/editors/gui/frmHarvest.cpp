#include "editors/gui/frmHarvest.h"

namespace quillon {

frmHarvest::frmHarvest(QWidget* parent)
    : EventEditorWindow(*editors::eventMember(QStringLiteral("frmHarvest")), parent)
{
}

} // namespace quillon
