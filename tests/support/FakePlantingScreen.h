#pragma once

#include "editors/PlantingEditor.h"
#include "support/FakeLevelScreen.h"

namespace quillon::test {

// The planting editor's window as its routines see it: a current row and
// the page as it was last shown, whose date boxes a test may type into.
class FakePlantingScreen final
    : public FakeLevelScreen<editors::PlantingScreen, editors::PlantingEditor> {
public:
    void setChoices(const QStringList& m, const QStringList& d) override
    {
        methods = m;
        distributions = d;
    }
    void showPage(const editors::PlantingPage& shown) override { page = shown; }
    QString dateText(editors::PlantingDate box) const override
    {
        return box == editors::PlantingDate::Planting ? page.plantingDate : page.emergenceDate;
    }
    void setDatesInError(bool inError) override { datesRed = inError; }

    QStringList methods;
    QStringList distributions;
    editors::PlantingPage page;
    bool datesRed = false;
};

} // namespace quillon::test
