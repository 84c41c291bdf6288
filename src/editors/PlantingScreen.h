#pragma once

#include "editors/LevelScreen.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace quillon::editors {

// The two date boxes of the planting page.
enum class PlantingDate { Planting, Emergence };

// What the bound page of a planting level shows: the dates as date text, the
// numbers of the validated boxes (in the order of PlantingEditor::boxes()),
// the descriptions of the two coded columns, and the years of the fields'
// weather.
struct PlantingPage {
    QString levelNumber; // LblLevelNumber
    QString plantingDate;
    QString emergenceDate;
    std::vector<QString> boxes;
    QString method; // PLME's description
    QString distribution; // PLDS's description
    QStringList years;
    int year = -1; // the entry of the planting date's year, -1 for none
};

// The window of the planting editor as its routines see it: where the level
// grid DBGrid1 stands, the page of the level's boxes, and what the routines
// tell the window to show. The grid's rows are the editor's record source
// Data1; the window implements this, tests fake it.
class PlantingScreen : public LevelScreen {
public:
    // The descriptions the method and distribution combos offer.
    virtual void setChoices(const QStringList& methods, const QStringList& distributions) = 0;
    // The page of a level; an empty page when the grid has no rows.
    virtual void showPage(const PlantingPage& page) = 0;
    // The text of a date box as it stands.
    virtual QString dateText(PlantingDate box) const = 0;
    // Both date boxes red, or back to normal.
    virtual void setDatesInError(bool inError) = 0;
};

} // namespace quillon::editors
