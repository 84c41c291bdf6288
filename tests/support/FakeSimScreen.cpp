#include "support/FakeSimScreen.h"

namespace quillon::test {

void FakeSimScreen::goToLevelRow(int target)
{
    if (editor && target >= 0 && target < editor->Data1().rowCount())
        row = target;
}

QString FakeSimScreen::code(const QString& combo) const
{
    const auto it = codes.find(combo);
    return it == codes.end() ? QString() : it->second;
}

QString FakeSimScreen::text(const QString& box) const
{
    const auto it = texts.find(box);
    return it == texts.end() ? QString() : it->second;
}

void FakeSimScreen::closeWindow()
{
    if (closed)
        return;
    closed = true;
    if (editor)
        editor->Form_Unload();
}

void FakeSimScreen::selectLevel(int level)
{
    for (int r = 0; r < editor->Data1().rowCount(); ++r) {
        if (editor->Data1().value(r, 0).toInt() == level)
            row = r;
    }
    editor->DBGrid1_RowColChange();
}

bool FakeSimScreen::type(const QString& box, const QString& typed)
{
    texts[box] = typed;
    return editor->Validate(box);
}

void FakeSimScreen::choose(const QString& combo, const QString& chosen)
{
    codes[combo] = chosen;
    const QString index = combo.section(QLatin1Char('('), 1).chopped(1);
    if (combo.startsWith(QLatin1String("DBCombo1(")))
        editor->DBCombo1_Click(index.toInt());
    if (combo.startsWith(QLatin1String("DBCombo4(")))
        editor->DBCombo4_Change(index.toInt());
}

} // namespace quillon::test
