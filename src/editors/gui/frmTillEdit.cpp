#include "editors/gui/frmTillEdit.h"

namespace quillon {

frmTillEdit::frmTillEdit(QWidget* parent)
    : EventEditorWindow(*editors::eventMember(QStringLiteral("frmTillEdit")), parent)
{
}

} // namespace quillon
