#pragma once

#include "editors/TreatmentEditor.h"

#include <utility>

namespace quillon::test {

// The window as the routines see it: a current cell, the list, and what
// they asked to be shown.
class FakeTreatmentScreen final : public editors::TreatmentScreen {
public:
    int currentRow() const override { return row; }
    int currentColumn() const override { return column; }
    void commitEdit() override { }
    void goToRow(int r) override { row = r; }
    void setCaption(const QString& text) override { caption = text; }
    void setButtonsEnabled(bool enabled) override { buttons = enabled; }
    void showList(const QStringList& items, int chosen) override
    {
        list = items;
        selected = chosen;
        listShown = true;
    }
    void hideList() override { listShown = false; }
    void closeWindow() override
    {
        if (!std::exchange(closed, true))
            editor->Form_Unload();
    }

    // The user's moves.
    void moveTo(int r, int c)
    {
        const bool rowChanged = r != row;
        row = r;
        column = c;
        editor->DBGrdTreatment_RowColChange(rowChanged);
    }

    editors::TreatmentEditor* editor = nullptr;
    int row = -1;
    int column = 0;
    QString caption;
    bool buttons = false;
    QStringList list;
    int selected = -1;
    bool listShown = false;
    bool closed = false;
};

} // namespace quillon::test
