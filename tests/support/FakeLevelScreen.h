#pragma once

#include <QString>

#include <utility>

namespace quillon::test {

// What the fakes of the cultivar and planting windows share: a current row,
// the caption, and closing, which runs the editor's unload handler once.
template <typename Screen, typename Editor> class FakeLevelScreen : public Screen {
public:
    int currentRow() const override { return row; }
    void goToRow(int r) override { row = r; }
    void commitEdit() override { }
    void setCaption(const QString& text) override { caption = text; }
    void closeWindow() override
    {
        if (!std::exchange(closed, true))
            editor->Form_Unload();
    }

    // The user moves to a row.
    void moveTo(int r)
    {
        row = r;
        editor->DBGrid1_RowColChange();
    }

    Editor* editor = nullptr;
    int row = -1;
    QString caption;
    bool closed = false;
};

} // namespace quillon::test
