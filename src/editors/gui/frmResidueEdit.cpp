#include "editors/gui/frmResidueEdit.h"

namespace quillon {

frmResidueEdit::frmResidueEdit(QWidget* parent)
    : EventEditorWindow(*editors::eventMember(QStringLiteral("frmResidueEdit")), parent)
{
}

} // namespace quillon
