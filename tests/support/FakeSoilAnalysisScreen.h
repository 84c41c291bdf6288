#pragma once

#include "editors/SoilAnalysisEditor.h"
#include "support/FakeGrid.h"

#include <map>

namespace quillon::test {

// The soil analysis window without widgets: its two grids are the record
// sources alone, with a current row each; what the routines show is kept
// for the test to look at.
class FakeSoilAnalysisScreen final : public editors::SoilAnalysisScreen {
public:
    void attach(editors::SoilAnalysisEditor& e)
    {
        editor = &e;
        levels.records.setHooks(e.levelGridHooks());
        layers.records.setHooks(e.layerGridHooks());
    }

    QString levelCellText() const override { return levels.text(0); }
    QVariant layerValue(int column) const override { return layers.value(column); }
    qint64 currentLayerRow() const override { return layers.id(); }
    RuntimeError commitLayerEdit() override { return pending; }
    void showLevels(const QString& statement, editors::LevelRow row) override
    {
        levels.bind(statement, QStringLiteral("SoilAnalysis"), row);
    }
    void showLayers(const QString& statement, int level) override
    {
        layers.bind(statement, QStringLiteral("SoilLayers"), editors::LevelRow::First);
        layers.records.setNewRows(true, { { QStringLiteral("LNSA"), level } });
    }
    void goToLayer(qint64 row) override { layers.goToId(row); }
    void goToLastLayer() override { layers.goToLast(); }
    void setLevelCaptions(const QStringList& captions) override { levelCaptions = captions; }
    void setLayerCaptions(const QStringList& captions) override { layerCaptions = captions; }
    void setCaption(const QString& text) override { caption = text; }
    void setLevelNumberText(const QString& text) override { levelNumber = text; }
    void showYears(const QStringList& shown) override { years = shown; }
    QString dateText() const override { return date; }
    void showDate(const QString& text) override { date = text; }
    void setMethodChoices(const QString& field, const QStringList& descriptions) override
    {
        methodChoices[field] = descriptions;
    }
    void showMethod(const QString& field, const QString& description) override
    {
        methods[field] = description;
    }
    void closeWindow() override
    {
        if (closed)
            return;
        closed = true;
        editor->Form_Unload();
    }

    // The user's moves: a level chosen in DBGrid1, the date typed and left,
    // a cell typed in.
    void selectLevel(int level)
    {
        if (levels.goToValue(0, level))
            editor->DBGrid1_RowColChange();
    }
    bool typeDate(const QString& text)
    {
        date = text;
        return editor->txtDate_Validate();
    }
    RuntimeError typeLevel(int column, const QString& text)
    {
        return levels.records.store(levels.row, column, text);
    }
    RuntimeError typeLayer(int column, const QString& text)
    {
        return layers.records.store(layers.row, column, text);
    }

    editors::SoilAnalysisEditor* editor = nullptr;
    FakeGrid levels;
    FakeGrid layers;
    RuntimeError pending { 0, {} };
    bool closed = false;
    QStringList levelCaptions;
    QStringList layerCaptions;
    QString caption;
    QString levelNumber;
    QStringList years;
    QString date;
    std::map<QString, QStringList> methodChoices;
    std::map<QString, QString> methods;
};

} // namespace quillon::test
