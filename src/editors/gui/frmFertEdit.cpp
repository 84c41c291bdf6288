#include "editors/gui/frmFertEdit.h"

namespace quillon {

frmFertEdit::frmFertEdit(QWidget* parent)
    : EventEditorWindow(*editors::eventMember(QStringLiteral("frmFertEdit")), parent)
{
}

} // namespace quillon
