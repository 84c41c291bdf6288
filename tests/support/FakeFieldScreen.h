#pragma once

#include "editors/FieldEditor.h"
#include "support/FakeGrid.h"

#include <map>

namespace quillon::test {

// The field editor's window without widgets: the level grid is the record
// source alone, with a current row; the page's boxes and combos are texts
// by control name, kept for the test to look at and type into.
class FakeFieldScreen final : public editors::FieldScreen {
public:
    // Ties the grid to the editor's routines.
    void attach(editors::FieldEditor& e)
    {
        editor = &e;
        levels.records.setHooks(e.levelGridHooks());
    }

    QString levelCellText() const override { return levels.text(0); }
    RuntimeError commitLevelEdit() override { return pending; }
    void showLevels(const QString& statement, editors::LevelRow row) override
    {
        levels.bind(statement, QStringLiteral("Fields"), row);
    }
    void setLevelCaptions(const QStringList& captions) override { levelCaptions = captions; }
    void setCaption(const QString& text) override { caption = text; }
    void setLevelNumberText(const QString& text) override { levelNumber = text; }
    QString boxText(const QString& control) const override { return value(boxes, control); }
    void showBoxText(const QString& control, const QString& text) override
    {
        boxes[control] = text;
    }
    void setComboItems(const QString& control, const QStringList& items) override
    {
        comboItems[control] = items;
        combos[control].clear();
    }
    // A combo shows only an entry of its list, as a combo without typing does.
    void showComboText(const QString& control, const QString& text) override
    {
        const QStringList& items = comboItems[control];
        combos[control] = items.contains(text, Qt::CaseInsensitive) ? text : QString();
    }
    QString comboText(const QString& control) const override { return value(combos, control); }
    void setComboVisible(const QString& control, bool visible) override
    {
        comboVisible[control] = visible;
    }
    void focusControl(const QString& control) override { focused = control; }
    void closeWindow() override
    {
        if (closed)
            return;
        closed = true;
        editor->Form_Unload();
    }

    // The user's moves: a level chosen in the grid, a box typed in and left
    // (true when the box let the focus go), a cell of the grid typed in.
    void selectLevel(int level)
    {
        if (levels.goToValue(0, level))
            editor->DBGrid1_RowColChange();
    }
    bool type(const QString& control, const QString& text)
    {
        boxes[control] = text;
        return editor->Validate(control);
    }
    RuntimeError typeLevel(int column, const QString& text)
    {
        return levels.records.store(levels.row, column, text);
    }

    editors::FieldEditor* editor = nullptr;
    FakeGrid levels;
    RuntimeError pending { 0, {} };
    bool closed = false;
    QStringList levelCaptions;
    QString caption;
    QString levelNumber;
    QString focused;
    std::map<QString, QString> boxes;
    std::map<QString, QString> combos;
    std::map<QString, QStringList> comboItems;
    std::map<QString, bool> comboVisible;

private:
    static QString value(const std::map<QString, QString>& texts, const QString& control)
    {
        const auto it = texts.find(control);
        return it == texts.end() ? QString() : it->second;
    }
};

} // namespace quillon::test
