#include "editors/gui/frmEnvMod.h"

namespace quillon {

frmEnvMod::frmEnvMod(QWidget* parent)
    : EventEditorWindow(*editors::eventMember(QStringLiteral("frmEnvMod")), parent)
{
}

} // namespace quillon
