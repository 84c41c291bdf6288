#include "editors/EventMember.h"

#include <algorithm>
#include <climits>
#include <vector>

namespace quillon::editors {

namespace {

// The members of the event-editor family, as tables: one row per member for
// its names, one row per scratch column for its events. Whatever differs
// between the members is here; what they share is the frame's.

using Text = const char*;

// One row per member: its window and words, then its tables. The level word
// is the word of the deletion warning; a member without management has ""
// for its management table.
struct MemberRow {
    Text form, menuHandler, captionStem, heading, levelWord, relation;
    bool okDropsBackups;
    Text levelTable, levelField, nameField, eventTable, dateField;
    Text managementTable, managementField;
    int managementType;
};

// clang-format off
const MemberRow membersTable[] = {
    // form             menu handler                 caption stem                       heading        level word    relation         OK drops backups
    //                  level table       level    name       event table      date      management       code     type
    { "frmFertEdit",    "mnuEditFertilizer_Click",   "Fertilizers",                     "Fertilizers", "Fertilizer", "FERTreatment",  true,
                        "FerLevelNames",  "LNFER", "FERNAME", "Fertilization", "FDAY",   "FerManagement", "IFERI", 13 },
    { "frmResidueEdit", "mnuEditResidue_Click",      "Residues and Organic Fertilizer", "Residues",    "Residue",    "RESTreatment",  false,
                        "ResLevelNames",  "LNRES", "RENAME",  "Residue",       "RESDAY", "ResManagement", "IRESI", 14 },
    { "frmChemEdit",    "mnuEditChemicalApp_Click",  "Chemical Applications",           "Chemicals",   "Chemical",   "ChemTreatment", false,
                        "ChemLevelNames", "LNCHE", "CHNAME",  "Chemicals",     "CDate",  "",              "",      0 },
    { "frmTillEdit",    "mnuEditTillage_Click",      "Tillage",                         "Tillage",     "Tillage",    "TILTreatment",  false,
                        "TillLevelNames", "LNTIL", "TNAME",   "Tillage",       "TDATE",  "",              "",      0 },
};

// The columns of the scratch table behind the level and date columns, and
// where each stands in the event grid (0 is the date column; -1 not shown).
// Value columns hold the event column's value as it is; list columns the
// description of its code, chosen from one of the drop-down lists.
// A value column's event field is "" when nothing fills it: the residue
// editor keeps the fertilizer's FERCODDescription that way.
struct ValueColumnRow {
    Text form, name, type, eventField, rule;
    int gridColumn;
    Text caption;
};

const ValueColumnRow valueColumnsTable[] = {
    // form             scratch column       type      event      rule                           grid caption
    { "frmFertEdit",    "DFERT",             "Single", "DFERT",   "Between 0 and 999 or -99",     3, "Depth, cm" },
    { "frmFertEdit",    "ANFER",             "Single", "ANFER",   "Between 0 and 9999 or -99",    4, "N, kg ha-1" },
    { "frmFertEdit",    "APFER",             "Single", "APFER",   "Between 0 and 9999 or -99",    5, "P, kg ha-1" },
    { "frmFertEdit",    "AKFER",             "Single", "AKFER",   "Between 0 and 9999 or -99",    6, "K, kg ha-1" },
    { "frmFertEdit",    "ACFER",             "Single", "ACFER",   "Between 0 and 9999 or -99",    7, "Ca, kg ha-1" },
    { "frmFertEdit",    "AOFER",             "Single", "AOFER",   "Between 0 and 9999 or -99",    8, "Other elements, kg ha-1" },
    { "frmResidueEdit", "RESIDUE",           "Single", "RESIDUE", "Between 0 and 99999  or -99",  2, "Amount, kg/ha" },
    { "frmResidueEdit", "RESN",              "Single", "RESN",    "Between 0 and 100  or -99",    3, "Nitrogen concent- ration, %" },
    { "frmResidueEdit", "RESP",              "Single", "RESP",    "Between 0 and 100  or -99",    4, "Phosph. concent- ration, %" },
    { "frmResidueEdit", "RESK",              "Single", "RESK",    "Between 0 and 100  or -99",    5, "Potass. concent- ration, %" },
    { "frmResidueEdit", "RINP",              "Single", "RINP",    "Between 0 and 100  or -99",    6, "Incorpo- ration, %" },
    { "frmResidueEdit", "DEPRES",            "Single", "DEPRES",  "Between 0 and 999  or -99",    7, "Incorpo- ration depth, cm" },
    { "frmChemEdit",    "CHAMT",             "Single", "CHAMT",   "Between 0 and 999  or -99",    2, "Application amount, kg/ha" },
    { "frmChemEdit",    "CHDEP",             "Single", "CHDEP",   "Between 0 and 999  or -99",    4, "Chemical application depth, cm" },
    { "frmTillEdit",    "TDEP",              "Single", "TDEP",    "Between 0 and 999  or -99",    2, "Tillage depth" },
    { "frmFertEdit",    "FOCOD",             "Text",   "FOCOD",   "",                             9, "Other element code" },
    { "frmResidueEdit", "FERCODDescription", "Text",   "",        "",                            -1, "" },
    { "frmChemEdit",    "CHT",               "Text",   "CHT",     "",                             5, "Chemical targets" },
};

// List1 is list 0.
struct ListColumnRow {
    Text form, name, eventField;
    int list, gridColumn;
    Text caption;
};

const ListColumnRow listColumnsTable[] = {
    // form             scratch column       event     list grid caption
    { "frmFertEdit",    "IFTYPEDescription", "IFTYPE", 0,   1, "Fertilizer material" },
    { "frmFertEdit",    "FERCODDescription", "FERCOD", 1,   2, "Fertilizer applications" },
    { "frmResidueEdit", "RESCODDescription", "RESCOD", 0,   1, "Residue material" },
    { "frmResidueEdit", "RMETDescription",   "RMET",   1,   8, "Method of incorp. code" },
    { "frmChemEdit",    "CHCODDescription",  "CHCOD",  0,   1, "Chemical material" },
    { "frmChemEdit",    "CHMETDescription",  "CHMET",  1,   3, "Chemical application method" },
    { "frmTillEdit",    "TIMPLDescription",  "TIMPL",  0,   1, "Tillage implement" },
};

// The drop-down lists of the event grid and the CodeLookup type of each,
// List1 first.
struct ListRow {
    Text form, type;
};

const ListRow listsTable[] = {
    { "frmFertEdit",    "Fertilizers, Inoculants" },
    { "frmFertEdit",    "Methods - Fertilizer and" },
    { "frmResidueEdit", "Residues and Organic Fer" },
    { "frmResidueEdit", "Methods - Fertilizer and" },
    { "frmChemEdit",    "Chemicals (Herbicides, I" },
    { "frmChemEdit",    "Methods - Fertilizer and" },
    { "frmTillEdit",    "Tillage Implements" },
};

// Wordings of the shared messages where a member has its own.
struct WordingRow {
    Text form;
    QString EventMember::*message;
    Text text;
};

const WordingRow wordingsTable[] = {
    { "frmFertEdit",    &EventMember::pleaseEnterDay,        "Please enter day." },
    { "frmResidueEdit", &EventMember::ruleRefused,           "Invalid number." },
    { "frmChemEdit",    &EventMember::enterFieldInformation, "Please enter Fields information." },
};

// Failure tails that don't follow the routine's and form's own names.
struct TailRow {
    Text form;
    Routine routine;
    Text tail;
};

const TailRow tailsTable[] = {
    { "frmFertEdit", Routine::cmdAdd1_Click, "CmdAdd1_Click/frmFertEdit" },
    { "frmFertEdit", Routine::SetUpData2,    "SetUpData2/frmFert" },
};
// clang-format on

bool sameForm(Text row, const QString& form)
{
    return form == QLatin1String(row);
}

EventMember build(const MemberRow& row)
{
    const QString form = QLatin1String(row.form);
    EventMember m;
    const std::pair<QString EventMember::*, Text> names[] = { { &EventMember::formName, row.form },
        { &EventMember::menuHandler, row.menuHandler },
        { &EventMember::captionStem, row.captionStem }, { &EventMember::heading, row.heading },
        { &EventMember::levelWord, row.levelWord }, { &EventMember::relationName, row.relation },
        { &EventMember::levelTable, row.levelTable }, { &EventMember::levelField, row.levelField },
        { &EventMember::nameField, row.nameField }, { &EventMember::eventTable, row.eventTable },
        { &EventMember::dateField, row.dateField },
        { &EventMember::managementTable, row.managementTable },
        { &EventMember::managementField, row.managementField } };
    for (const auto& [field, text] : names)
        m.*field = QLatin1String(text);
    m.managementType = row.managementType;
    m.okDropsBackups = row.okDropsBackups;
    // The scratch table takes the columns in the order of the grid, those not
    // shown last.
    struct Placed {
        int gridColumn;
        ScratchColumn column;
        GridColumn shown;
    };
    std::vector<Placed> placed;
    for (const ValueColumnRow& c : valueColumnsTable) {
        if (sameForm(c.form, form))
            placed.push_back({ c.gridColumn,
                { QLatin1String(c.name), QLatin1String(c.type), QLatin1String(c.eventField), -1,
                    QLatin1String(c.rule) },
                { QLatin1String(c.name), QLatin1String(c.caption), Entry::Typed, -1 } });
    }
    for (const ListColumnRow& c : listColumnsTable) {
        if (sameForm(c.form, form))
            placed.push_back({ c.gridColumn,
                { QLatin1String(c.name), QStringLiteral("Text"), QLatin1String(c.eventField),
                    c.list, {} },
                { QLatin1String(c.name), QLatin1String(c.caption), Entry::List, c.list } });
    }
    std::stable_sort(placed.begin(), placed.end(), [](const Placed& a, const Placed& b) {
        return (a.gridColumn < 0 ? INT_MAX : a.gridColumn)
            < (b.gridColumn < 0 ? INT_MAX : b.gridColumn);
    });
    for (const Placed& p : placed) {
        m.scratch.push_back(p.column);
        if (p.gridColumn > 0)
            m.grid.push_back(p.shown);
    }
    for (const ListRow& l : listsTable) {
        if (sameForm(l.form, form))
            m.lists.push_back({ QLatin1String(l.type) });
    }
    for (const WordingRow& w : wordingsTable) {
        if (sameForm(w.form, form))
            m.*w.message = QLatin1String(w.text);
    }
    for (const TailRow& t : tailsTable) {
        if (sameForm(t.form, form))
            m.tails[t.routine] = QLatin1String(t.tail);
    }
    return m;
}

} // namespace

const EventMember* eventMember(const QString& formName)
{
    static const std::vector<EventMember> members = [] {
        std::vector<EventMember> all;
        for (const MemberRow& row : membersTable)
            all.push_back(build(row));
        return all;
    }();
    for (const EventMember& member : members) {
        if (member.formName.compare(formName, Qt::CaseInsensitive) == 0)
            return &member;
    }
    return nullptr;
}

} // namespace quillon::editors
