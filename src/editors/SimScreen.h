#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace quillon::editors {

// An entry of a code combo: the code it stores and the text it shows.
struct CodeChoice {
    QString code;
    QString text;
};

// The window of the simulation control editor as its routines see it: the
// current row of the level list DBGrid1 (whose rows are the editor's record
// source Data1), the boxes and combos of the level page by their control
// names, and what the routines tell the window to show. The window
// implements it; tests fake it.
class SimScreen {
public:
    virtual ~SimScreen() = default;

    // DBGrid1's current row; -1 when the list has no rows.
    virtual int levelRow() const = 0;
    // Moves DBGrid1 to a row of Data1. A move made by a routine runs no
    // DBGrid1_RowColChange.
    virtual void goToLevelRow(int row) = 0;

    virtual void setCaption(const QString& caption) = 0;
    // The Forecast tab of TabRTF, shown in forecast files only.
    virtual void setForecastTab(bool shown) = 0;
    // The pictures of the two tab strips; a path is empty when its file is
    // missing.
    virtual void showPictures(const QString& first, const QString& second) = 0;
    // List1: the years of the fields' weather.
    virtual void setYears(const QStringList& years) = 0;

    // A code combo's entries.
    virtual void setChoices(const QString& combo, const std::vector<CodeChoice>& choices) = 0;
    // Shows the entry of a code in a combo; a code the list lacks shows as
    // it stands, and an empty one leaves the combo blank.
    virtual void showCode(const QString& combo, const QString& code) = 0;
    // The code of the combo's entry; "" when it is blank.
    virtual QString code(const QString& combo) const = 0;

    // A box's text. Date boxes take and give date text in the editors'
    // format ("" for an empty box).
    virtual void setText(const QString& box, const QString& text) = 0;
    virtual QString text(const QString& box) const = 0;
    // A field's enabled state; its label goes with it.
    virtual void setFieldEnabled(const QString& control, bool enabled) = 0;

    // Closes the window; its unload handler runs.
    virtual void closeWindow() = 0;
};

} // namespace quillon::editors
