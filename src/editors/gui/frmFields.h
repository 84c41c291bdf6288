#pragma once

#include "editors/FieldEditor.h"
#include "editors/gui/EditorWindow.h"

#include <map>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTabWidget;

namespace quillon {

class EditorGrid;
class FocusValidation;

// The field editor window: the level grid DBGrid1 over Fields and a tabbed
// page of the current level's text boxes and combos, with the buttons Add,
// Delete, OK, Next > and Cancel. The boxes are loaded and stored by the
// editor's routines, not by a widget mapper, because their validate events
// decide what is stored (-99 for an empty box, a value kept out of range
// never reaches the row) and the combos store codes and stations the
// routines look up. The routines are the editor's; the window shows what
// they say and passes on what the user does.
class frmFields final : public EditorWindow, public editors::FieldScreen {
    Q_OBJECT
public:
    explicit frmFields(QWidget* parent = nullptr);
    ~frmFields() override;

    void Form_Load() override { m_editor.Form_Load(); }
    editors::FieldEditor& editor() { return m_editor; }

    // FieldScreen
    QString levelCellText() const override;
    RuntimeError commitLevelEdit() override;
    void showLevels(const QString& statement, editors::LevelRow row) override;
    void setLevelCaptions(const QStringList& captions) override;
    void setCaption(const QString& caption) override { setWindowTitle(caption); }
    void setLevelNumberText(const QString& text) override;
    QString boxText(const QString& control) const override;
    void showBoxText(const QString& control, const QString& text) override;
    void setComboItems(const QString& control, const QStringList& items) override;
    void showComboText(const QString& control, const QString& text) override;
    QString comboText(const QString& control) const override;
    void setComboVisible(const QString& control, bool visible) override;
    void focusControl(const QString& control) override;
    void closeWindow() override { closeFromEditor(); }

protected:
    void keyCommand(Key key) override;
    void unload() override { m_editor.Form_Unload(); }
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLineEdit* addBox(const QString& control, int maxLength);
    QComboBox* addCombo(const QString& control);
    QWidget* page(const std::vector<std::pair<QString, QStringList>>& rows);
    void buildLayout();
    // Runs a button's routine once the box that had the focus passed its check.
    void settled(void (editors::FieldEditor::*routine)());

    editors::FieldEditor m_editor;
    EditorGrid* m_DBGrid1;
    FocusValidation* m_validation;
    QLabel* m_LblLevelNumber;
    QTabWidget* m_tabs;
    std::map<QString, QLineEdit*> m_boxes;
    std::map<QString, QComboBox*> m_combos;
    std::map<QString, QStringList> m_comboItems;
    QPushButton* m_CmdAddField;
    QPushButton* m_CmdRemoveField;
    QPushButton* m_cmdOK;
    QPushButton* m_cmdNext;
    QPushButton* m_Command1;
};

} // namespace quillon
