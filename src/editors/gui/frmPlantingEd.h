#pragma once

#include "editors/PlantingEditor.h"
#include "editors/PlantingScreen.h"
#include "editors/gui/LevelGridWindow.h"

#include <vector>

class QComboBox;
class QLabel;
class QLineEdit;

namespace quillon {

class FocusValidation;

// The planting editor's window: the level grid DBGrid1 and the page of the
// level's boxes (the two dates, the method and distribution combos, the
// validated numbers), with Add, Delete, OK, Cancel and Next. A box is
// checked when the user leaves it and keeps the focus when its entry is
// refused; a box that passes is stored. Every routine is the editor's.
class frmPlantingEd final : public LevelGridWindow, public editors::PlantingScreen {
    Q_OBJECT
public:
    explicit frmPlantingEd(QWidget* parent = nullptr);
    ~frmPlantingEd() override;

    void Form_Load() override;
    editors::PlantingEditor& editor() { return m_editor; }

    int currentRow() const override { return gridRow(); }
    void goToRow(int row) override { moveGrid(row); }
    void commitEdit() override { commitGridEdit(); }
    void setCaption(const QString& caption) override { setWindowTitle(caption); }
    void closeWindow() override { closeFromEditor(); }
    void setChoices(const QStringList& methods, const QStringList& distributions) override;
    void showPage(const editors::PlantingPage& page) override;
    QString dateText(editors::PlantingDate box) const override;
    void setDatesInError(bool inError) override;

protected:
    void escapePressed() override { m_editor.escapePressed(); }
    void unload() override { m_editor.Form_Unload(); }
    void levelRowChanged() override { m_editor.DBGrid1_RowColChange(); }

private:
    void buildLayout();
    // Runs a routine once the box being left has passed its check.
    void afterChecks(void (editors::PlantingEditor::*routine)());

    editors::PlantingEditor m_editor { *this };
    FocusValidation* m_validation;
    QLabel* m_LblLevelNumber;
    QLineEdit* m_txtPlantingDate;
    QLineEdit* m_txtEmergenceDate;
    QComboBox* m_ComboYear;
    QComboBox* m_DBComboPLME;
    QComboBox* m_DBComboPLDS;
    std::vector<QLineEdit*> m_boxes;
    QPushButton* m_cmdNext;
};

} // namespace quillon
