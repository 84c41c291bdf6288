#pragma once

#include "app/RuntimeError.h"
#include "editors/EventScreen.h"

#include <QString>
#include <QStringList>
#include <QVariant>

namespace quillon::editors {

// The window of the soil analysis editor as its routines see it: the level
// grid DBGrid1 over SoilAnalysis, the layer grid DBGrid2 over the level's
// rows of SoilLayers, the analysis date and the three method combos. The
// window implements it; tests fake it.
class SoilAnalysisScreen {
public:
    virtual ~SoilAnalysisScreen() = default;

    // DBGrid1: the text of the level cell of the current row; "" when the
    // grid has no rows.
    virtual QString levelCellText() const = 0;
    // DBGrid2: a value of the current row (0 is the depth); NULL when the
    // grid has no rows or its new row is current.
    virtual QVariant layerValue(int column) const = 0;
    // DBGrid2: the row id in SoilLayers of the current row; 0 for none.
    virtual qint64 currentLayerRow() const = 0;
    // Stores what the user is still typing in DBGrid2. Returns the failure
    // (number 0 when it was stored or nothing was pending).
    virtual RuntimeError commitLayerEdit() = 0;

    // Data1 bound to its statement again, and DBGrid1 moved.
    virtual void showLevels(const QString& statement, LevelRow row) = 0;
    // Data2 bound to the layers of a level; a row typed into the grid's new
    // row belongs to that level.
    virtual void showLayers(const QString& statement, int level) = 0;
    // Moves DBGrid2 to a row (0: the first row), or to its last row.
    virtual void goToLayer(qint64 row) = 0;
    virtual void goToLastLayer() = 0;

    virtual void setLevelCaptions(const QStringList& captions) = 0;
    virtual void setLayerCaptions(const QStringList& captions) = 0;
    virtual void setCaption(const QString& caption) = 0;
    // LblLevelNumber.
    virtual void setLevelNumberText(const QString& text) = 0;
    // The years the fields' weather covers; they inform only.
    virtual void showYears(const QStringList& years) = 0;

    // txtDate, the analysis date as date text.
    virtual QString dateText() const = 0;
    virtual void showDate(const QString& text) = 0;
    // A method combo by the field it stores ("SMHB", "SMPX", "SMKE"): its
    // descriptions, and the one it shows ("" for none).
    virtual void setMethodChoices(const QString& field, const QStringList& descriptions) = 0;
    virtual void showMethod(const QString& field, const QString& description) = 0;

    // Closes the window; its unload handler runs.
    virtual void closeWindow() = 0;
};

} // namespace quillon::editors
