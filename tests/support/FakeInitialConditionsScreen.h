#pragma once

#include "editors/InitialConditionsEditor.h"
#include "editors/SqlGridModel.h"

#include <map>

namespace quillon::test {

// The initial conditions window without widgets: its grids are the record
// sources alone with a current row each, its boxes plain texts, and what the
// routines ask to be shown is kept for the test to look at.
class FakeInitialConditionsScreen final : public editors::InitialConditionsScreen {
public:
    void attach(editors::InitialConditionsEditor& e)
    {
        editor = &e;
        levels.setHooks(e.levelGridHooks());
        layers.setHooks(e.layerGridHooks());
    }

    QString levelCellText() const override { return levels.text(levelRow, 0); }
    QString layerDepthText() const override { return layers.text(layerRow, 0); }
    qint64 currentLayerRow() const override { return layers.rowId(layerRow); }
    RuntimeError commitLayerEdit() override { return pending; }
    void showLevels(const QString& statement, editors::LevelRow row) override
    {
        levels.setQuery(statement, QStringLiteral("InitialConditions"));
        const int count = levels.rowCount();
        levelRow = count == 0                 ? -1
            : row == editors::LevelRow::First ? 0
            : row == editors::LevelRow::Last  ? count - 1
                                              : std::min(levelRow, count - 1);
    }
    void showLayers(const QString& statement, int level) override
    {
        layers.setQuery(statement, QStringLiteral("ICLayers"));
        layers.setNewRows(true, { { QStringLiteral("LNIC"), level } });
        layerRow = 0;
    }
    void goToLayer(qint64 row) override
    {
        layerRow = row == 0 ? 0 : std::max(0, layers.rowOf(row));
    }
    void setLevelCaptions(const QStringList& captions) override { levelCaptions = captions; }
    void setLayerCaptions(const QStringList& captions) override { layerCaptions = captions; }
    void setCaption(const QString& text) override { caption = text; }
    void setLevelNumberText(const QString& text) override { levelNumber = text; }
    void setBoxText(const QString& field, const QString& text) override { boxes[field] = text; }
    void setCropChoices(const std::vector<Crop>& choices) override { crops = choices; }
    void showPreviousCrop(const QString& code) override { previousCrop = code; }
    void setDateText(const QString& text) override { date = text; }
    QString dateText() const override { return date; }
    void showYears(const QStringList& shown) override { years = shown; }
    void setSoilChoices(const QStringList& choices) override { soils = choices; }
    void showSoil(const QString& shown) override { soil = shown; }
    void showWaterNitrogen(const QString& w, const QString& n) override
    {
        water = w;
        nitrogen = n;
    }
    QString soilText() const override { return soil; }
    QString waterText() const override { return water; }
    QString nitrogenText() const override { return nitrogen; }
    void focusWater() override { waterFocused = true; }
    void closeWindow() override
    {
        if (closed)
            return;
        closed = true;
        editor->Form_Unload();
    }

    // The user's moves: a level chosen in DBGridIC, a cell typed in.
    void selectLevel(int level)
    {
        for (int row = 0; row < levels.rowCount(); ++row) {
            if (levels.value(row, 0).toInt() == level)
                levelRow = row;
        }
        editor->DBGridIC_RowColChange();
    }
    RuntimeError typeLayer(int row, int column, const QString& text)
    {
        layerRow = row;
        return layers.store(row, column, text);
    }
    // The layers shown, "depth|water|NH4|NO3" each.
    QStringList layerRows() const
    {
        QStringList rows;
        for (int row = 0; row < layers.rowCount(); ++row) {
            if (layers.isNewRow(row))
                continue;
            QStringList cells;
            for (int column = 0; column < layers.columnCount(); ++column)
                cells << layers.text(row, column);
            rows << cells.join(QLatin1Char('|'));
        }
        return rows;
    }

    editors::InitialConditionsEditor* editor = nullptr;
    editors::SqlGridModel levels;
    editors::SqlGridModel layers;
    int levelRow = -1;
    int layerRow = -1;
    bool closed = false;
    bool waterFocused = false;
    RuntimeError pending { 0, {} };
    QStringList levelCaptions;
    QStringList layerCaptions;
    QString caption;
    QString levelNumber;
    std::map<QString, QString> boxes;
    std::vector<Crop> crops;
    QString previousCrop;
    QString date;
    QStringList years;
    QStringList soils;
    QString soil;
    QString water;
    QString nitrogen;
};

} // namespace quillon::test
