#pragma once

#include "editors/SoilAnalysisEditor.h"
#include "editors/gui/EditorWindow.h"

#include <map>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace quillon {

class EditorGrid;
class FocusValidation;

// The soil analysis window: the level grid DBGrid1 over SoilAnalysis, the
// layer grid DBGrid2 over the level's SoilLayers, the analysis date and the
// three method combos, and the frame's buttons. The routines are the
// editor's; the window shows what they say and passes on what the user does.
class frmSoilAnalysis final : public EditorWindow, public editors::SoilAnalysisScreen {
    Q_OBJECT
public:
    explicit frmSoilAnalysis(QWidget* parent = nullptr);
    ~frmSoilAnalysis() override;

    void Form_Load() override { m_editor.Form_Load(); }
    editors::SoilAnalysisEditor& editor() { return m_editor; }

    // SoilAnalysisScreen
    QString levelCellText() const override;
    QVariant layerValue(int column) const override;
    qint64 currentLayerRow() const override;
    RuntimeError commitLayerEdit() override;
    void showLevels(const QString& statement, editors::LevelRow row) override;
    void showLayers(const QString& statement, int level) override;
    void goToLayer(qint64 row) override;
    void goToLastLayer() override;
    void setLevelCaptions(const QStringList& captions) override;
    void setLayerCaptions(const QStringList& captions) override;
    void setCaption(const QString& caption) override { setWindowTitle(caption); }
    void setLevelNumberText(const QString& text) override;
    void showYears(const QStringList& years) override;
    QString dateText() const override;
    void showDate(const QString& text) override;
    void setMethodChoices(const QString& field, const QStringList& descriptions) override;
    void showMethod(const QString& field, const QString& description) override;
    void closeWindow() override { closeFromEditor(); }

protected:
    void keyCommand(Key key) override;
    void unload() override { m_editor.Form_Unload(); }
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildLayout();
    void settled(void (editors::SoilAnalysisEditor::*routine)());

    editors::SoilAnalysisEditor m_editor;
    EditorGrid* m_DBGrid1;
    EditorGrid* m_DBGrid2;
    FocusValidation* m_validation;
    QLabel* m_LblLevelNumber;
    QLineEdit* m_txtDate;
    QComboBox* m_ComboYear;
    std::map<QString, QComboBox*> m_methods;
    QPushButton* m_cmdAdd1;
    QPushButton* m_cmdDelete1;
    QPushButton* m_cmdAdd2;
    QPushButton* m_cmdDelete2;
    QPushButton* m_cmdOK;
    QPushButton* m_cmdCancel;
};

} // namespace quillon
