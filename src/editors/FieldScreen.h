#pragma once

#include "app/RuntimeError.h"
#include "editors/EventScreen.h"

#include <QString>
#include <QStringList>

namespace quillon::editors {

// The window of the field editor as its routines see it: the level grid
// DBGrid1 over DatField, and the page of text boxes and combos of the
// current level, each known by its control name ("txtSLOPE", "ComboWSTA").
// The window implements it; tests fake it.
class FieldScreen {
public:
    virtual ~FieldScreen() = default;

    // DBGrid1: the text of the level cell of the current row; "" when the
    // grid has no rows.
    virtual QString levelCellText() const = 0;
    // Stores what the user is still typing in DBGrid1. Returns the failure
    // (number 0 when it was stored or nothing was pending); the grid's
    // error event has told the user.
    virtual RuntimeError commitLevelEdit() = 0;
    // DatField bound to its statement again, and the grid moved.
    virtual void showLevels(const QString& statement, LevelRow row) = 0;
    // ColumnNames: the captions of the grid's first columns; the columns
    // behind them don't show.
    virtual void setLevelCaptions(const QStringList& captions) = 0;

    virtual void setCaption(const QString& caption) = 0;
    // LblLevelNumber and LblLevelNumber2.
    virtual void setLevelNumberText(const QString& text) = 0;

    // A text box of the page.
    virtual QString boxText(const QString& control) const = 0;
    virtual void showBoxText(const QString& control, const QString& text) = 0;
    // A combo of the page: its entries, the entry it shows ("" for none),
    // and whether it shows at all.
    virtual void setComboItems(const QString& control, const QStringList& items) = 0;
    virtual void showComboText(const QString& control, const QString& text) = 0;
    virtual QString comboText(const QString& control) const = 0;
    virtual void setComboVisible(const QString& control, bool visible) = 0;
    // Gives a control the keyboard.
    virtual void focusControl(const QString& control) = 0;

    // Closes the window; its unload handler runs.
    virtual void closeWindow() = 0;
};

} // namespace quillon::editors
