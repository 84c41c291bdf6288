#pragma once

#include "editors/CultivarScreen.h"
#include "editors/LevelTableBackup.h"
#include "editors/SqlGridModel.h"

#include <optional>

namespace quillon::editors {

// Edit > Cultivars: closes the open editor (which commits it). A document
// without cultivars gets level 1, with the crop chosen in the identification
// window in an experimental file ("Please select Crop." and false when there
// is none) and without a crop in the other kinds. Says whether the window is
// to be shown. Failures are reported (" in mnuEditCultivar_Click.") and give
// false.
bool mnuEditCultivar_Click();

// The cultivar editor frmCult1: one row of Cultivars per level, whose crop
// and cultivar come from two lists, ListCrop (the crops) and ListDescription
// (the cultivars of the level's crop), never from typing. It works on
// Cultivars itself; BackUp, taken at opening, is Cancel's undo. The routines
// trap their own failures: a message with the error's text and the routine's
// tail, and the window stays open.
class CultivarEditor {
public:
    explicit CultivarEditor(CultivarScreen& screen);

    // Data1, DBGrid1's record source: level, crop name and cultivar name.
    SqlGridModel& Data1() { return m_grid; }

    void Form_Load();
    void CreateBackUp();
    void ColumnNames();
    // The lists for a level: its crop selected in ListCrop, the crop's
    // cultivars in ListDescription.
    void FillListBox(int level);

    // The user moved to another row of DBGrid1.
    void DBGrid1_RowColChange();
    // A crop chosen in ListCrop: the level takes it, and loses its cultivar.
    void ListCrop_Click(const QString& name);
    // A cultivar chosen in ListDescription: the level takes its name and
    // number.
    void ListDescription_Click(const QString& description);
    // A letter typed in ListCrop: the row of the first crop whose name
    // begins with it (any case), -1 for none. The highlight moves there.
    int FindNameByLetter(const QString& letter);

    void CmdAddCultivar_Click();
    // Delete.
    void Command2_Click();
    // A level number typed in DBGrid1, before it is stored: a whole number
    // other than the old renumbers the level (Treatments follow through the
    // relation). False refuses the value.
    bool DBGrid1_BeforeColUpdate(int column, const QVariant& oldValue, QVariant& value);
    // The grid's error event, for a value the database refused.
    void DBGrid1_Error(const RuntimeError& error);

    void cmdOK_Click();
    void cmdCancel_Click();
    // The unload handler: a close that didn't come from OK or Cancel commits
    // as OK does.
    void Form_Unload();
    // Esc: the warning, then Cancel.
    void escapePressed();

    // The level DBGrid1's current row holds, if its text is a number.
    std::optional<int> currentLevel() const;
    // The crops of ListCrop and their codes, in the list's order.
    const QStringList& cropNames() const { return m_cropNames; }
    // The code of the crop whose cultivars ListDescription lists.
    const QString& listedCrop() const { return m_listedCrop; }

private:
    QString cropCodeOf(const QString& name) const;
    // Reads Data1 again and goes to the row of a level (-1: the last row),
    // with the lists and the picture of that level.
    void showLevel(int level);
    void showListsAndPicture(int row);

    CultivarScreen& m_screen;
    SqlGridModel m_grid;
    LevelTableBackup m_backup;
    QStringList m_cropNames;
    QStringList m_cropCodes;
    QString m_listedCrop;
    bool m_closedByButton = false;
};

} // namespace quillon::editors
