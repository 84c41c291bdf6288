#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <map>
#include <vector>

namespace quillon::editors {

// How a cell of the event grid is entered.
enum class Entry {
    Typed, // typed by the user
    List, // chosen from one of the drop-down lists only; typing blanks it
};

// A column of the scratch table Applications, behind the level and the date
// columns. Values of a column with a list hold the description of the
// event table's code; the others hold the event table's value as it is.
struct ScratchColumn {
    QString name; // "IFTYPEDescription", "DFERT"
    QString type; // its declaration: "Text", "Single"
    QString eventField; // the event table's column it is filled from and written to; "" for none
    int list = -1; // the list whose code table translates it; -1 for a plain value
    QString rule; // validation rule, switched on after the table is filled
};

// A column of the event grid DBGrid2, behind the date column.
struct GridColumn {
    QString field; // the scratch column shown
    QString caption;
    Entry entry = Entry::Typed;
    int list = -1; // for Entry::List: the list it opens (List1 is 0)
    // Whether the column shows for a level; empty: always. A member whose
    // column is only there when some event uses it decides here.
    std::function<bool(int level)> shownFor = {};
};

// Where a drop-down list of the event grid takes its entries from.
enum class ListSource {
    // The descriptions of a CodeLookup type; the scratch table holds the
    // description and the event table its code.
    CodeLookup,
    // The growth stages of the crop chosen in ComboCrop; the choice puts the
    // stage's code in the cell, and the code goes to the event table as it
    // is.
    CropStages,
};

// A drop-down list of the event grid.
struct CodeList {
    QString type; // the CodeLookup type, as the code table holds it (24 characters at most)
    QString control; // "List1"
    ListSource source = ListSource::CodeLookup;
};

// A box or combo of a level page: a control bound to a column of the level
// table, for the level chosen in the level grid.
struct LevelPageField {
    QString control; // "txtEFFIRX", "DBCmbIAMEX"
    QString field; // "EFFIRX"
    QString caption;
    // A combo lists the descriptions of this CodeLookup type and stores the
    // code; "" for a box.
    QString listType;
    // A box with a range checks it on leaving: not numeric gives
    // "Invalid entry.", out of range `rangeMessage`; -99 always passes and an
    // empty box becomes -99. A box without a range takes any text.
    bool checked = false;
    double low = 0;
    double high = 0;
    QString rangeMessage;
    int maxLength = 0; // the column's width; 0 for none
};

// The controls of the frame; a member may name them its own way.
struct FrameControls {
    QString levelGrid = QStringLiteral("DBGrid1");
    QString eventGrid = QStringLiteral("DBGrid2");
    QString addLevel = QStringLiteral("cmdAdd1");
    QString deleteLevel = QStringLiteral("cmdDelete1");
    QString addEvent = QStringLiteral("cmdAdd2");
    QString deleteEvent = QStringLiteral("cmdDelete2");
};

// What a member does beyond the frame's common steps, where that is a
// difference of behaviour rather than of names.
enum class Addition {
    // Add on a grid without a level (or at level 0) makes level 1 with one
    // event dated by the first planting; a member with management adds the
    // new level's management row as well.
    FirstLevelFromPlanting,
    // Add Application on a level without events makes one, dated by the
    // first planting.
    FirstEventFromPlanting,
    // Add Application in days mode stores the day under DaysAfterPlanting,
    // a column the scratch table lacks: the copy fails with the engine's
    // message.
    DayCopyUnderWrongName,
    // Deleting the only level leaves its management row.
    OnlyLevelKeepsManagement,
    // A choice from a list is written straight to the event's row, not
    // through the grid's cell: on the grid's new row there is no row.
    ListWritesRow,
    // The menu handler gives the factor's first event its day or date when
    // the event has none.
    FillsNullFirstDate,
    // Cancel empties the event, level and management tables first and then
    // restores them; level 1 that the menu handler made stays, as it was in
    // the backup.
    CancelEmptiesAllFirst,
};

// The routines whose failure messages name them; each member spells the
// routine and form of each tail in its own way.
enum class Routine {
    MenuHandler,
    Form_Load,
    CreateDateTable,
    CreateBackUp,
    EditEntry,
    SetUpData2,
    ColumnNames,
    cmdAdd1_Click,
    cmdAdd2_Click,
    cmdDelete1_Click,
    cmdDelete2_Click,
    cmdOK_Click,
    cmdCancel_Click,
    DBGrid1_BeforeColUpdate,
    DBGrid1_RowColChange,
    DBGrid2_RowColChange,
    DBGrid2_ButtonClick,
    ListDescription_Click,
    DBComboManagement_Click,
    ComboCrop_Change,
    LevelPage_Validate,
    LevelPage_Click,
    FindIIRV,
    MyIRRCode,
    MyIRRDescription,
    Check_Dates,
};

// One member of the event-editor family: the tables, columns, lists, words
// and message tails that make the shared frame a fertilizer, residue,
// chemical, tillage, irrigation, harvest or environment modification
// editor. Everything a member does is the frame's; a member names its own
// things and lists its additions, which the frame's routines look up.
struct EventMember {
    QString formName; // "frmFertEdit"
    QString menuHandler; // "mnuEditFertilizer_Click"
    QString captionStem; // the window's caption before the file-type label
    QString heading; // the section heading over the grids
    QString levelWord; // the word of the deletion warning: "Fertilizer"

    QString levelTable; // "FerLevelNames"
    QString levelField; // "LNFER"
    QString nameField; // "FERNAME"
    QString eventTable; // "Fertilization"
    QString dateField; // "FDAY"

    // The management table, its code column and the SimLookUp type of its
    // codes. An empty table means no management: no days mode, no
    // management combo, no BackUp2.
    QString managementTable; // "FerManagement"
    QString managementField; // "IFERI"
    int managementType = 0; // 13

    std::vector<ScratchColumn> scratch;
    std::vector<GridColumn> grid;
    std::vector<CodeList> lists;
    // The boxes of the level page, empty for a member without one.
    std::vector<LevelPageField> levelPage;
    FrameControls controls;
    // The grid column whose text, with the level and date, finds the event
    // that Add Application copies.
    int keyColumn = 1;

    QString relationName; // "FERTreatment"
    bool okDropsBackups = true;

    // Level 1 made by the menu handler takes these columns from the first
    // row of a table of defaults: pairs of level column and default column.
    QString newLevelDefaultsTable; // "AutoManagementIrrigation"
    std::vector<std::pair<QString, QString>> newLevelDefaults; // { "DSOILX", "DSOIL" }
    // Letters that typed into a list column give an entry of the list
    // ("M" gives "Multiply"); any other typing blanks the cell.
    std::map<QString, QString> typedEntries;
    std::vector<Addition> additions;

    // Member wordings of the shared messages.
    QString pleaseEnterDay = QStringLiteral("Please enter a day.");
    QString ruleRefused = QStringLiteral("Invalid entry.");
    QString enterFieldInformation = QStringLiteral("Please enter the Field information.");
    QString applicationsTableError = QStringLiteral("Invalid entry in Applications table.");

    // The tail of a routine's failure message, " in Routine/form.". Routines
    // missing here use their own name (the member's control names for the
    // routines of a control) and formName. A "%1" stands for the control the
    // routine ran for: a list, a box of the level page.
    std::map<Routine, QString> tails;

    bool hasManagement() const { return !managementTable.isEmpty(); }
    bool has(Addition addition) const;
    // The list of a source, if the member has one; -1 for none.
    int listFrom(ListSource source) const;
    QString tail(Routine routine, const QString& control = {}) const;
    // The scratch column of a grid column (0 is the date column).
    const ScratchColumn* scratchColumn(const QString& name) const;
};

// The members of the family by their form; nullptr for a form that isn't
// one.
const EventMember* eventMember(const QString& formName);

} // namespace quillon::editors
