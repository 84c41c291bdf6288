#pragma once

#include "editors/TreatmentEditor.h"
#include "editors/gui/EditorWindow.h"

class QPushButton;

namespace quillon {

class DropDownList;
class TreatmentGrid;

// The treatment table window: the grid DBGrdTreatment over Treatments, the
// level list List1 that opens under a factor's cell, and the buttons Add,
// Delete, Save and Cancel. The routines are the editor's; the window shows
// what they say and passes on what the user does.
class frmViewTreatments final : public EditorWindow, public editors::TreatmentScreen {
public:
    explicit frmViewTreatments(QWidget* parent = nullptr);
    ~frmViewTreatments() override;

    // Loads the table: run after mnuViewTreatments_Click said to show it.
    void Form_Load() override;
    editors::TreatmentEditor& editor() { return m_editor; }

    int currentRow() const override;
    int currentColumn() const override;
    void commitEdit() override;
    void goToRow(int row) override;
    void setCaption(const QString& caption) override;
    void setButtonsEnabled(bool enabled) override;
    void showList(const QStringList& items, int selected) override;
    void hideList() override;
    void closeWindow() override;

protected:
    void keyCommand(Key key) override;
    void unload() override;

private:
    void fitColumns();
    void cellChanged(const QModelIndex& current, const QModelIndex& previous);

    editors::TreatmentEditor m_editor { *this };
    TreatmentGrid* m_grid = nullptr;
    DropDownList* m_list = nullptr;
    QPushButton* m_add = nullptr;
    QPushButton* m_delete = nullptr;
    QPushButton* m_save = nullptr;
    QPushButton* m_cancel = nullptr;
    // Set while a routine moves the grid: that is not the user's move.
    bool m_moving = false;
};

} // namespace quillon
