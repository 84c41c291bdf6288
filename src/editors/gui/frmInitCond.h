#pragma once

#include "editors/InitialConditionsEditor.h"
#include "editors/InitialConditionsScreen.h"
#include "editors/SqlGridModel.h"
#include "editors/gui/EditorWindow.h"

#include <map>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace quillon {

class FocusValidation;
class GridDelegate;

// The initial conditions editor: the level grid DBGridIC, the level's page
// of validated boxes, the previous crop and the measurement date, the layer
// grid dbgICLayers, and the soil with its water and nitrogen from which the
// recalculations work out the layers. It only shows and forwards: every
// routine is the editor's. The boxes are loaded and stored by the editor
// (the page holds one level's row, and a box the user leaves unchanged
// stores nothing), so no widget mapper stands between them and the table.
class frmInitCond final : public EditorWindow, public editors::InitialConditionsScreen {
    Q_OBJECT
public:
    explicit frmInitCond(QWidget* parent = nullptr);
    ~frmInitCond() override;

    void Form_Load() override { m_editor.Form_Load(); }
    editors::InitialConditionsEditor& editor() { return m_editor; }

    QString levelCellText() const override;
    QString layerDepthText() const override;
    qint64 currentLayerRow() const override;
    RuntimeError commitLayerEdit() override;
    void showLevels(const QString& statement, editors::LevelRow row) override;
    void showLayers(const QString& statement, int level) override;
    void goToLayer(qint64 row) override;
    void setLevelCaptions(const QStringList& captions) override;
    void setLayerCaptions(const QStringList& captions) override;
    void setCaption(const QString& caption) override;
    void setLevelNumberText(const QString& text) override;
    void setBoxText(const QString& field, const QString& text) override;
    void setCropChoices(const std::vector<Crop>& crops) override;
    void showPreviousCrop(const QString& code) override;
    void setDateText(const QString& text) override;
    QString dateText() const override;
    void showYears(const QStringList& years) override;
    void setSoilChoices(const QStringList& soils) override;
    void showSoil(const QString& soil) override;
    void showWaterNitrogen(const QString& water, const QString& nitrogen) override;
    QString soilText() const override;
    QString waterText() const override;
    QString nitrogenText() const override;
    void focusWater() override;
    void closeWindow() override { closeFromEditor(); }

protected:
    void keyCommand(Key key) override;
    void unload() override { m_editor.Form_Unload(); }

private:
    QWidget* buildPage();
    QWidget* buildSoilBox();
    void buildLayout();
    void connectWidgets();
    // Runs a routine once the box being left has passed its check.
    void afterChecks(void (editors::InitialConditionsEditor::*routine)());
    QPushButton* button(const char* name, const QString& caption, const QString& hint,
        void (editors::InitialConditionsEditor::*routine)());
    QLineEdit* box(const char* name);

    editors::InitialConditionsEditor m_editor { *this };
    editors::SqlGridModel m_levels;
    editors::SqlGridModel m_layers;
    QTableView* m_DBGridIC;
    QTableView* m_dbgICLayers;
    GridDelegate* m_levelDelegate;
    GridDelegate* m_layerDelegate;
    FocusValidation* m_validation;
    QLabel* m_LblLevelNumber;
    QLineEdit* m_txtDate;
    QComboBox* m_ComboYear;
    QComboBox* m_DBComboPRCROP;
    QComboBox* m_DBComboSLNO;
    QLineEdit* m_txtWater;
    QLineEdit* m_txtNitrogen;
    std::map<QString, QLineEdit*> m_boxes; // by field
    // Programmatic moves of the grids don't run the editor's row handler.
    bool m_moving = false;
    // A commit asked for by a routine reports its failure to the routine,
    // not through the grid's error event.
    bool m_committing = false;
};

} // namespace quillon
