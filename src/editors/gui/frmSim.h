#pragma once

#include "editors/SimEditor.h"
#include "editors/gui/EditorWindow.h"

#include <map>

class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTabWidget;
class QTableView;

namespace quillon {

class FocusValidation;
class GridDelegate;

// The simulation control editor: the level list DBGrid1 over
// SimulationControl, the tab strip TabRTF (General, Options, Methods,
// Management, Outputs, and Forecast in forecast files) with the automatic
// management's strip TabRTF2 (Planting, Irrigation, Nitrogen, Residue,
// Harvest) on the Management tab, and the buttons. Every box and combo is
// named as the program names it. The routines are the editor's; the window
// shows what they say and passes on what the user does.
class frmSim final : public EditorWindow, public editors::SimScreen {
    Q_OBJECT
public:
    // The tab of TabRTF the window opens on.
    enum class Tab { General, Options, Methods, Management, Outputs };

    explicit frmSim(Tab first = Tab::General, QWidget* parent = nullptr);
    ~frmSim() override;

    void Form_Load() override;
    editors::SimEditor& editor() { return m_editor; }

    int levelRow() const override;
    void goToLevelRow(int row) override;
    void setCaption(const QString& caption) override;
    void setForecastTab(bool shown) override;
    void showPictures(const QString& first, const QString& second) override;
    void setYears(const QStringList& years) override;
    void setChoices(const QString& combo, const std::vector<editors::CodeChoice>& choices) override;
    void showCode(const QString& combo, const QString& code) override;
    QString code(const QString& combo) const override;
    void setText(const QString& box, const QString& text) override;
    QString text(const QString& box) const override;
    void setFieldEnabled(const QString& control, bool enabled) override;
    void closeWindow() override;

protected:
    void keyCommand(Key key) override;
    void unload() override;
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* buildPage(const QString& table);
    QWidget* buildManagementPage();
    QWidget* buildForecastPage();
    void addField(const editors::SimField& field, QFormLayout* form);
    void levelChanged();
    // Runs a routine once the box the focus left has passed its check.
    void afterCheck(void (editors::SimEditor::*routine)());

    editors::SimEditor m_editor { *this };
    FocusValidation* m_validation = nullptr;
    QTableView* m_DBGrid1 = nullptr;
    GridDelegate* m_levelDelegate = nullptr;
    QTabWidget* m_TabRTF = nullptr;
    QTabWidget* m_TabRTF2 = nullptr;
    QWidget* m_forecastPage = nullptr;
    QListWidget* m_List1 = nullptr;
    QLabel* m_picture1 = nullptr;
    QLabel* m_picture2 = nullptr;
    std::map<QString, QLineEdit*> m_boxes;
    std::map<QString, QComboBox*> m_combos;
    std::map<QString, QLabel*> m_labels;
    Tab m_firstTab;
    // Set while a routine moves the level list: that is not the user's move.
    bool m_moving = false;
    // The box whose check refused its text last, while it keeps the focus.
    QLineEdit* m_refused = nullptr;
    // Set while a mouse gesture on the window's frame is handled: a close in
    // that moment is the user's (the frame's close button).
    bool m_frameGesture = false;
};

} // namespace quillon
