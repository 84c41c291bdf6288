#include "editors/gui/frmChemEdit.h"

namespace quillon {

frmChemEdit::frmChemEdit(QWidget* parent)
    : EventEditorWindow(*editors::eventMember(QStringLiteral("frmChemEdit")), parent)
{
}

} // namespace quillon
