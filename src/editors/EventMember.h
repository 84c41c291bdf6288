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

// Where a drop-down list of the event grid takes its entries from, and how an
// entry becomes the file's code and back.
struct CodeList {
    QString type; // the CodeLookup type, as the code table holds it (24 characters at most)
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
    MyIRRCode,
    MyIRRDescription,
    Check_Dates,
};

// One member of the event-editor family: the tables, columns, lists, words
// and message tails that make the shared frame a fertilizer, residue,
// chemical or tillage editor. Everything a member does is the frame's; a
// member only names its own things.
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
    // The grid column whose text, with the level and date, finds the event
    // that Add Application copies.
    int keyColumn = 1;

    QString relationName; // "FERTreatment"
    bool okDropsBackups = true;

    // Member wordings of the shared messages.
    QString pleaseEnterDay = QStringLiteral("Please enter a day.");
    QString ruleRefused = QStringLiteral("Invalid entry.");
    QString enterFieldInformation = QStringLiteral("Please enter the Field information.");
    QString applicationsTableError = QStringLiteral("Invalid entry in Applications table.");

    // The tail of a routine's failure message, " in Routine/form.". Routines
    // missing here use their own name and formName.
    std::map<Routine, QString> tails;

    bool hasManagement() const { return !managementTable.isEmpty(); }
    QString tail(Routine routine) const;
    // The scratch column of a grid column (0 is the date column).
    const ScratchColumn* scratchColumn(const QString& name) const;
};

// The members of the family by their form; nullptr for a form that isn't
// one.
const EventMember* eventMember(const QString& formName);

} // namespace quillon::editors
