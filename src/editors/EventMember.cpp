#include "editors/EventMember.h"

#include <algorithm>

namespace quillon::editors {

namespace {

// A routine's own name; the routines of a control carry the member's name of
// the control.
QString routineName(const EventMember& m, Routine routine, const QString& control)
{
    const FrameControls& c = m.controls;
    switch (routine) {
    case Routine::MenuHandler:
        return m.menuHandler;
    case Routine::Form_Load:
        return QStringLiteral("Form_Load");
    case Routine::CreateDateTable:
        return QStringLiteral("CreateDateTable");
    case Routine::CreateBackUp:
        return QStringLiteral("CreateBackUp");
    case Routine::EditEntry:
        return QStringLiteral("EditEntry");
    case Routine::SetUpData2:
        return QStringLiteral("SetUpData2");
    case Routine::ColumnNames:
        return QStringLiteral("ColumnNames");
    case Routine::cmdAdd1_Click:
        return c.addLevel + QStringLiteral("_Click");
    case Routine::cmdAdd2_Click:
        return c.addEvent + QStringLiteral("_Click");
    case Routine::cmdDelete1_Click:
        return c.deleteLevel + QStringLiteral("_Click");
    case Routine::cmdDelete2_Click:
        return c.deleteEvent + QStringLiteral("_Click");
    case Routine::cmdOK_Click:
        return QStringLiteral("cmdOK_Click");
    case Routine::cmdCancel_Click:
        return QStringLiteral("cmdCancel_Click");
    case Routine::DBGrid1_BeforeColUpdate:
        return c.levelGrid + QStringLiteral("_BeforeColUpdate");
    case Routine::DBGrid1_RowColChange:
        return c.levelGrid + QStringLiteral("_RowColChange");
    case Routine::DBGrid2_RowColChange:
        return c.eventGrid + QStringLiteral("_RowColChange");
    case Routine::DBGrid2_ButtonClick:
        return c.eventGrid + QStringLiteral("_ButtonClick");
    case Routine::ListDescription_Click:
        return QStringLiteral("ListDescription_Click");
    case Routine::DBComboManagement_Click:
        return QStringLiteral("DBComboManagement_Click");
    case Routine::ComboCrop_Change:
        return QStringLiteral("ComboCrop_Change");
    case Routine::LevelPage_Validate:
        return control + QStringLiteral("_Validate");
    case Routine::LevelPage_Click:
        return control + QStringLiteral("_Click");
    case Routine::FindIIRV:
        return QStringLiteral("FindIIRV");
    case Routine::MyIRRCode:
        return QStringLiteral("MyIRRCode");
    case Routine::MyIRRDescription:
        return QStringLiteral("MyIRRDescription");
    case Routine::Check_Dates:
        return QStringLiteral("Check_Dates");
    }
    return {};
}

} // namespace

QString EventMember::tail(Routine routine, const QString& control) const
{
    const auto it = tails.find(routine);
    if (it != tails.end()) {
        QString spelt = it->second;
        spelt.replace(QLatin1String("%1"), control);
        return QStringLiteral(" in ") + spelt + QLatin1Char('.');
    }
    // The menu handlers belong to the main window.
    const QString form = routine == Routine::MenuHandler ? QStringLiteral("frmMain") : formName;
    return QStringLiteral(" in ") + routineName(*this, routine, control) + QLatin1Char('/') + form
        + QLatin1Char('.');
}

bool EventMember::has(Addition addition) const
{
    return std::find(additions.begin(), additions.end(), addition) != additions.end();
}

int EventMember::listFrom(ListSource source) const
{
    for (size_t i = 0; i < lists.size(); ++i) {
        if (lists[i].source == source)
            return int(i);
    }
    return -1;
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
