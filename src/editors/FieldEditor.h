#pragma once

#include "app/ExpIdentity.h"
#include "editors/FieldScreen.h"
#include "editors/SqlGridModel.h"
#include "editors/TreatmentLevels.h"

#include <QVariant>

#include <optional>
#include <vector>

namespace quillon::editors {

// A text box of the field editor's page and the column of Fields it is
// bound to. Numeric boxes have a range; the others take any text.
struct FieldBox {
    QString control; // "txtSLOPE"
    QString field; // "SLOPE"
    std::optional<RangeRule> range;
};
// The page's text boxes, field ID first.
const std::vector<FieldBox>& fieldBoxes();

// A combo of the page that shows a code's description and stores the code.
struct CodeCombo {
    QString control; // "DBComboSLTX"
    QString field; // "SLTX"
    QString type; // the CodeLookup type: "Soil Texture"
};
const std::vector<CodeCombo>& fieldCodeCombos();

// The field ID a new level takes after the last level's ID: the number in
// its last four characters plus one, zero-padded to four digits behind the
// rest ("ABCD0009" gives "ABCD0010"); when those characters are no number,
// or the next would take five digits, X's and the new level number, eight
// characters in all ("XXXXXXX7").
QString newFieldId(const QString& lastId, int newLevel);

// Edit > Fields: marks the field editor open, closes the other editors
// (they commit) and says to show it. Unlike the other editors it prepares
// nothing: the editor opens on whatever levels there are.
bool mnuEditField_Click();

// The field editor frmFields. A field level is one row of Fields with no
// events, edited in place: the level grid DBGrid1, and a page of bound boxes
// and combos for the current row, among them the weather station and the
// soil profile chosen from the lookup tables. BackUp (Fields) and BackUp3
// (ICSoil), taken at opening, are Cancel's undo. The routines trap their
// own failures: a message with the error's text and the routine's tail, and
// the window stays open.
class FieldEditor {
public:
    explicit FieldEditor(FieldScreen& screen);

    // The events of DatField, the level grid's record source.
    SqlGridModel::Hooks levelGridHooks();

    void Form_Load();
    void CreateBackUp();
    void EditEntry(int level);
    void ColumnNames();

    void CmdAddField();
    void CmdRemoveField();
    void cmdOK_Click();
    // Next >, in the guided road of a new file: OK, then the planting editor.
    void cmdNext();
    // Cancel.
    void Command1_Click();

    // The weather source, station description and station ID combos.
    void DBComboMethod_Click(const QString& text);
    void ComboWSTA_Click(const QString& description);
    void ComboWSTA_ID_Change(const QString& code);
    // Lists the station IDs that begin with `prefix` in ComboWSTA_ID, and
    // says how many there are.
    int SetWeatherData(const QString& column, const QString& prefix);
    void SetupComboWeatherDescript(const QString& code);
    void DisplayMethods();
    // The soil description and soil ID combos.
    void FillSLNOCombo(const QString& soilId);
    void ComboSoil_Click(const QString& entry);
    void FillSoilIst(const QString& entry);
    void Combo2_Click(const QString& soilId);
    // A code combo's choice (SLTX, DFDRN, FLHST).
    void CodeCombo_Click(const QString& control, const QString& description);

    // The validate event of a text box, as the focus leaves it: the box's
    // rule, then its value stored in the row. False keeps the focus there.
    bool Validate(const QString& control);

    void DBGrid1_RowColChange();

    // The unload handler: a close that didn't come from OK or Cancel
    // commits as OK does.
    void Form_Unload();
    // Esc: the warning, then Cancel.
    void escapePressed();

    // The level DBGrid1's current row holds, if its text is a number.
    std::optional<int> currentLevel() const;
    // The column of TotalWeatherLookup the weather searches use.
    const QString& weatherColumn() const { return m_weatherColumn; }

private:
    bool DBGrid1_BeforeColUpdate(int column, QVariant& value);
    void DBGrid1_AfterColUpdate();
    void DBGrid1_Error(const RuntimeError& error);
    void showStation(const QString& station);
    void listStations(const QVariant& shown);
    void listSoilIds(const QString& description, const QString& current);
    void clearPage();
    void store(const QString& field, const QVariant& value);
    QVariant rowValue(const QString& field) const;
    bool pageComplete();
    // The current level, when it is a number and the page has a field ID;
    // otherwise the message says which is missing.
    std::optional<int> levelWithFieldId();
    void goToLevel(LevelRow row);

    FieldScreen& m_screen;
    TreatmentLevels m_treatmentLevels;
    // The row of Fields the page shows; 0 for none.
    qint64 m_rowId = 0;
    QString m_weatherColumn;
    // The entries of ComboSoil: the soil lookup doesn't change while the
    // editor is open.
    QStringList m_soilEntries;
    bool m_closedByButton = false;
};

} // namespace quillon::editors
