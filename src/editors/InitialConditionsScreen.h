#pragma once

#include "app/ExpIdentity.h"
#include "app/RuntimeError.h"
#include "editors/EventScreen.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace quillon::editors {

// The window of the initial conditions editor as its routines see it: the
// level grid DBGridIC, the layer grid dbgICLayers, the level's page of
// boxes, and what the routines tell it to show. The window implements it;
// tests fake it.
class InitialConditionsScreen {
public:
    virtual ~InitialConditionsScreen() = default;

    // DBGridIC: the text of the level-number cell of the current row; ""
    // when the grid has no rows.
    virtual QString levelCellText() const = 0;
    // dbgICLayers: the depth cell of the current row and its row id in
    // ICLayers; "" and 0 when the grid has no rows or the new row is current.
    virtual QString layerDepthText() const = 0;
    virtual qint64 currentLayerRow() const = 0;
    // Stores what the user is still typing in dbgICLayers. Returns the
    // failure (number 0 when it was stored or nothing was pending).
    virtual RuntimeError commitLayerEdit() = 0;

    // DBGridIC bound to its statement again and moved.
    virtual void showLevels(const QString& statement, LevelRow row) = 0;
    // dbgICLayers bound to a statement over ICLayers; new rows take the level.
    virtual void showLayers(const QString& statement, int level) = 0;
    // Moves dbgICLayers to a row (0: the first row).
    virtual void goToLayer(qint64 row) = 0;
    virtual void setLevelCaptions(const QStringList& captions) = 0;
    virtual void setLayerCaptions(const QStringList& captions) = 0;
    virtual void setCaption(const QString& caption) = 0;
    virtual void setLevelNumberText(const QString& text) = 0;

    // The level's page: a validated box's text by its field, the previous
    // crop's code (PRCROP, "" for none), the measurement date as date text,
    // and the years the fields' weather offers.
    virtual void setBoxText(const QString& field, const QString& text) = 0;
    virtual void setCropChoices(const std::vector<Crop>& crops) = 0;
    virtual void showPreviousCrop(const QString& code) = 0;
    virtual void setDateText(const QString& text) = 0;
    virtual QString dateText() const = 0;
    virtual void showYears(const QStringList& years) = 0;

    // DBComboSLNO, txtWater and txtNitrogen.
    virtual void setSoilChoices(const QStringList& soils) = 0;
    virtual void showSoil(const QString& soil) = 0;
    virtual void showWaterNitrogen(const QString& water, const QString& nitrogen) = 0;
    virtual QString soilText() const = 0;
    virtual QString waterText() const = 0;
    virtual QString nitrogenText() const = 0;
    virtual void focusWater() = 0;

    // Closes the window; its unload handler runs.
    virtual void closeWindow() = 0;
};

} // namespace quillon::editors
