#pragma once

#include "editors/SqlGridModel.h"
#include "editors/TreatmentScreen.h"

#include <QVariant>

namespace quillon::editors {

// View > Treatments: in a new file, makes sure the treatments have a
// cultivar ("Please select Cultivar." and false when there is none to
// give), closes the open editor (which commits it) and says whether the
// treatment table is to be shown. Failures are reported with
// " Error is in Menu Treatments." and give false.
bool mnuViewTreatments_Click();

// The treatment table frmViewTreatments: one row of Treatments per
// treatment, one column per factor holding a level number. It works on
// Treatments itself; BackUp, taken at opening, is Cancel's undo. Sequence
// files show the rotation columns ROTNO, ROTOPT and CRPNO as well. The
// routines trap their own failures: a message with the error's text and
// the routine's tail, and the window stays open.
class TreatmentEditor {
public:
    // A treatment's description is cut to the width the file gives it.
    static constexpr int titleLength = 25;

    explicit TreatmentEditor(TreatmentScreen& screen);

    // DatTreatment, the grid's record source; the window shows it.
    SqlGridModel& DatTreatment() { return m_grid; }

    void Form_Load();
    void CreateBackUp();
    void ColumnNames();
    // The entries of List1 for a factor cell: each level of the factor's
    // table as "number - name", and "NONE" last except for cultivar, field
    // and simulation controls, which a treatment can't do without. Sets
    // CurrentTRTNO, CurrentROTNO and CurrentColumnField for List1_Click.
    // Empty when it failed (reported).
    QStringList FillListBox(int row, int column);

    void cmdAdd_Click();
    void cmdDelete();
    void cmdSave_Click();
    // Cancel: Treatments back from BackUp.
    void Command1_Click();

    // The grid's moves: a click on the current cell, and a change of the
    // current cell (rowChanged: to another row). On a factor column both
    // open List1; a second click closes it.
    void DBGrdTreatment_ButtonClick();
    void DBGrdTreatment_RowColChange(bool rowChanged);
    // An entry of List1 chosen: the level goes into the treatment's cell.
    void List1_Click(const QString& entry);
    // List1 closed by itself (the user clicked elsewhere or pressed Esc).
    void List1_Hidden() { m_listShown = false; }

    // Text typed into a cell of the grid, stored by the typing rules.
    // Returns the failure (number 0 when stored, refused or put back).
    RuntimeError DBGrdTreatment_Change(int row, int column, const QString& typed);
    // The grid's error event, for a value the database refused.
    void DBGrdTreatment_Error(const RuntimeError& error);

    // The unload handler: a close that didn't come from Save or Cancel
    // saves.
    void Form_Unload();
    // Esc: the warning, then Cancel.
    void escapePressed();

    bool sequenceFile() const { return m_sequence; }
    // Whether a grid column holds a factor's level, chosen from List1.
    bool isFactorColumn(int column) const;
    int CurrentTRTNO() const { return m_currentTRTNO; }
    const QVariant& CurrentROTNO() const { return m_currentROTNO; }
    const QString& CurrentColumnField() const { return m_currentColumnField; }
    bool ListShown() const { return m_listShown; }

private:
    bool beforeUpdate(int column, QVariant& value);
    void showTreatments(int row);
    void openList(bool toggle);
    int firstFactorColumn() const;
    QVariant rowValue(const QString& field) const;

    TreatmentScreen& m_screen;
    SqlGridModel m_grid;
    bool m_sequence = false;
    bool m_closedByButton = false;
    bool m_listShown = false;
    int m_currentTRTNO = 0;
    QVariant m_currentROTNO;
    QString m_currentColumnField;
    // The row and column being typed in, for the typing rules and the error
    // event.
    int m_editRow = -1;
    int m_editColumn = -1;
};

} // namespace quillon::editors
