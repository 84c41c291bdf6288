#include "editors/EventMember.h"

namespace quillon::editors {

namespace {

const char* routineName(Routine routine)
{
    switch (routine) {
    case Routine::MenuHandler:
        return "";
    case Routine::Form_Load:
        return "Form_Load";
    case Routine::CreateDateTable:
        return "CreateDateTable";
    case Routine::CreateBackUp:
        return "CreateBackUp";
    case Routine::EditEntry:
        return "EditEntry";
    case Routine::SetUpData2:
        return "SetUpData2";
    case Routine::ColumnNames:
        return "ColumnNames";
    case Routine::cmdAdd1_Click:
        return "cmdAdd1_Click";
    case Routine::cmdAdd2_Click:
        return "cmdAdd2_Click";
    case Routine::cmdDelete1_Click:
        return "cmdDelete1_Click";
    case Routine::cmdDelete2_Click:
        return "cmdDelete2_Click";
    case Routine::cmdOK_Click:
        return "cmdOK_Click";
    case Routine::cmdCancel_Click:
        return "cmdCancel_Click";
    case Routine::DBGrid1_BeforeColUpdate:
        return "DBGrid1_BeforeColUpdate";
    case Routine::DBGrid1_RowColChange:
        return "DBGrid1_RowColChange";
    case Routine::DBGrid2_RowColChange:
        return "DBGrid2_RowColChange";
    case Routine::DBGrid2_ButtonClick:
        return "DBGrid2_ButtonClick";
    case Routine::ListDescription_Click:
        return "ListDescription_Click";
    case Routine::DBComboManagement_Click:
        return "DBComboManagement_Click";
    case Routine::MyIRRCode:
        return "MyIRRCode";
    case Routine::MyIRRDescription:
        return "MyIRRDescription";
    case Routine::Check_Dates:
        return "Check_Dates";
    }
    return "";
}

} // namespace

QString EventMember::tail(Routine routine) const
{
    const auto it = tails.find(routine);
    if (it != tails.end())
        return QStringLiteral(" in ") + it->second + QLatin1Char('.');
    // The menu handlers belong to the main window.
    if (routine == Routine::MenuHandler)
        return QStringLiteral(" in ") + menuHandler + QStringLiteral("/frmMain.");
    return QStringLiteral(" in ") + QLatin1String(routineName(routine)) + QLatin1Char('/')
        + formName + QLatin1Char('.');
}

const ScratchColumn* EventMember::scratchColumn(const QString& name) const
{
    for (const ScratchColumn& column : scratch) {
        if (column.name.compare(name, Qt::CaseInsensitive) == 0)
            return &column;
    }
    return nullptr;
}

} // namespace quillon::editors
