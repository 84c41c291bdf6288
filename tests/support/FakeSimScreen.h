#pragma once

#include "editors/SimEditor.h"

#include <map>

namespace quillon::test {

// The window of the simulation control editor without widgets: the level
// list is the record source alone with a current row, the boxes and combos
// are texts and codes by control name, and what the routines ask to be
// shown is kept for the test to look at.
class FakeSimScreen final : public editors::SimScreen {
public:
    int levelRow() const override { return row; }
    void goToLevelRow(int target) override;
    void setCaption(const QString& text) override { caption = text; }
    void setForecastTab(bool shown) override { forecastTab = shown; }
    void showPictures(const QString&, const QString&) override { }
    void setYears(const QStringList& shown) override { years = shown; }
    void setChoices(const QString& combo, const std::vector<editors::CodeChoice>& list) override
    {
        choices[combo] = list;
    }
    void showCode(const QString& combo, const QString& shown) override { codes[combo] = shown; }
    QString code(const QString& combo) const override;
    void setText(const QString& box, const QString& shown) override { texts[box] = shown; }
    QString text(const QString& box) const override;
    void setFieldEnabled(const QString& control, bool on) override { enabled[control] = on; }
    void closeWindow() override;

    // The user's moves: a level chosen in the list; a text typed into a box
    // and the box left (its check's verdict); a code chosen in a combo.
    void selectLevel(int level);
    bool type(const QString& box, const QString& typed);
    void choose(const QString& combo, const QString& chosen);

    editors::SimEditor* editor = nullptr;
    int row = -1;
    bool closed = false;
    QString caption;
    bool forecastTab = false;
    QStringList years;
    std::map<QString, std::vector<editors::CodeChoice>> choices;
    std::map<QString, QString> codes;
    std::map<QString, QString> texts;
    std::map<QString, bool> enabled;
};

} // namespace quillon::test
