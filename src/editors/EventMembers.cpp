#include "editors/EventMember.h"

#include "editors/FindIIRV.h"

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
// for its management table. The key column is the grid column whose text,
// with the level and date, finds the event that Add Application copies.
struct MemberRow {
    Text form, menuHandler, captionStem, heading, levelWord, relation;
    bool okDropsBackups;
    int keyColumn;
    Text levelTable, levelField, nameField, eventTable, dateField;
    Text managementTable, managementField;
    int managementType;
};

// clang-format off
const MemberRow membersTable[] = {
    // form             menu handler                 caption stem                       heading        level word    relation         OK drops backups, key column
    //                  level table       level    name       event table          date      management       code     type
    { "frmFertEdit",    "mnuEditFertilizer_Click",   "Fertilizers",                     "Fertilizers", "Fertilizer", "FERTreatment",  true,  1,
                        "FerLevelNames",  "LNFER", "FERNAME", "Fertilization",     "FDAY",   "FerManagement", "IFERI", 13 },
    { "frmResidueEdit", "mnuEditResidue_Click",      "Residues and Organic Fertilizer", "Residues",    "Residue",    "RESTreatment",  false, 1,
                        "ResLevelNames",  "LNRES", "RENAME",  "Residue",           "RESDAY", "ResManagement", "IRESI", 14 },
    { "frmChemEdit",    "mnuEditChemicalApp_Click",  "Chemical Applications",           "Chemicals",   "Chemical",   "ChemTreatment", false, 1,
                        "ChemLevelNames", "LNCHE", "CHNAME",  "Chemicals",         "CDate",  "",              "",      0 },
    { "frmTillEdit",    "mnuEditTillage_Click",      "Tillage",                         "Tillage",     "Tillage",    "TILTreatment",  false, 1,
                        "TillLevelNames", "LNTIL", "TNAME",   "Tillage",           "TDATE",  "",              "",      0 },
    { "frmIrrigation",  "mnuEditIrrigation_Click",   "Irrigation and Water Management", "Irrigation",  "Irrigation", "IRTreatment",   true,  2,
                        "Irrigation",     "LNIR",  "IRNAME",  "IrrigApplications", "IDLAPL", "IrrManagement", "IIRRI", 12 },
    { "frmHarvest",     "mnuHarvest_Click",          "Harvest Details",                 "Harvest",     "Harvest",    "HARTreatment",  false, 2,
                        "HarLevelNames",  "LNHAR", "HNAME",   "Harvest",           "HDATE",  "HarManagement", "IHARI", 15 },
    { "frmEnvMod",      "mnuEditEnvMod_Click",       "Environment Modifications",       "Environment Modifications", "env. modifications", "ENVTreatment", false, 2,
                        "EnvLevelNames",  "LNENV", "ENVNAME", "EnvironMod",        "WMDATE", "",              "",      0 },
};

// What each member does beyond the frame's common steps.
struct AdditionRow {
    Text form;
    Addition addition;
};

const AdditionRow additionsTable[] = {
    { "frmChemEdit",   Addition::FirstLevelFromPlanting },
    { "frmTillEdit",   Addition::FirstLevelFromPlanting },
    { "frmIrrigation", Addition::FillsNullFirstDate },
    { "frmIrrigation", Addition::ListWritesRow },
    { "frmIrrigation", Addition::CancelEmptiesAllFirst },
    { "frmHarvest",    Addition::FirstLevelFromPlanting },
    { "frmHarvest",    Addition::DayCopyUnderWrongName },
    { "frmHarvest",    Addition::OnlyLevelKeepsManagement },
    { "frmEnvMod",     Addition::FirstLevelFromPlanting },
    { "frmEnvMod",     Addition::FirstEventFromPlanting },
};

// The columns of the scratch table behind the level and date columns, and
// where each stands in the event grid (0 is the date column; -1 not shown).
// Value columns hold the event column's value as it is; list columns the
// description of its code, chosen from one of the drop-down lists.
// A value column's event field is "" when nothing fills it: the residue
// editor keeps the fertilizer's FERCODDescription that way. A column shown
// only for some levels names the routine that decides.
struct ValueColumnRow {
    Text form, name, type, eventField, rule;
    int gridColumn;
    Text caption;
    bool (*shownFor)(int level) = nullptr;
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
    { "frmIrrigation",  "AMT",               "Single", "AMT",     "Between 0 and 999.9  or -99",  1, "Amount of water, mm" },
    { "frmIrrigation",  "IIRV",              "Single", "IIRV",    "Between 0 and 100  or -99",    3, " Amount, depth of water, mm", FindIIRV },
    { "frmHarvest",     "HPC",               "Single", "HPC",     "Between 0 and 100  or -99",    4, "Grain Harvest, %" },
    { "frmHarvest",     "HBPC",              "Single", "HBPC",    "Between 0 and 100  or -99",    5, "Byproduct takeoff, %" },
    // The environment's rules have no -99.
    { "frmEnvMod",      "DAYADJ",            "Single", "DAYADJ",  "Between 0 and 24",             1, "Daylength (hours)" },
    { "frmEnvMod",      "RADADJ",            "Single", "RADADJ",  "Between 0 and 99",             3, "Radiation (MJ/m2/d)" },
    { "frmEnvMod",      "TXADJ",             "Single", "TXADJ",   "Between 0 and 99",             5, "Max Temp (oC)" },
    { "frmEnvMod",      "TMADJ",             "Single", "TMADJ",   "Between 0 and 99",             7, "Min Temp (oC)" },
    { "frmEnvMod",      "PRCADJ",            "Single", "PRCADJ",  "Between 0 and 99",             9, "Precipitation (mm)" },
    { "frmEnvMod",      "CO2ADJ",            "Single", "CO2ADJ",  "Between 0 and 1500",          11, "CO2 (vpm)" },
    { "frmEnvMod",      "DPTADJ",            "Single", "DPTADJ",  "Between 0 and 99",            13, "Dewpoint Temp (oC)" },
    { "frmEnvMod",      "WNDADJ",            "Single", "WNDADJ",  "Between 0 and 99",            15, "Wind (km/hour)" },
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
    { "frmIrrigation",  "Description",       "IRRCOD", 0,   2, "Irrigation Type" },
    // The stage column holds the stage's code.
    { "frmHarvest",     "HSTG",              "HSTG",   2,   1, "Stage" },
    { "frmHarvest",     "HCOMDescription",   "HCOM",   0,   2, "Component" },
    { "frmHarvest",     "HSIZDescription",   "HSIZ",   1,   3, "Size Group" },
    { "frmEnvMod",      "DAYFACDescription", "DAYFAC", 0,   2, "Factor" },
    { "frmEnvMod",      "RADFACDescription", "RADFAC", 1,   4, "Factor" },
    { "frmEnvMod",      "TXFACDescription",  "TXFAC",  2,   6, "Factor" },
    { "frmEnvMod",      "TMFACDescription",  "TMFAC",  3,   8, "Factor" },
    { "frmEnvMod",      "PRCFACDescription", "PRCFAC", 4,  10, "Factor" },
    { "frmEnvMod",      "CO2FACDescription", "CO2FAC", 5,  12, "Factor" },
    { "frmEnvMod",      "DPTFACDescription", "DPTFAC", 6,  14, "Factor" },
    { "frmEnvMod",      "WNDFACDescription", "WNDFAC", 7,  16, "Factor" },
};

// The drop-down lists of the event grid, List1 first: the control and the
// CodeLookup type of each, or the crop's stages.
struct ListRow {
    Text form, control, type;
    ListSource source = ListSource::CodeLookup;
};

const ListRow listsTable[] = {
    { "frmFertEdit",    "List1",  "Fertilizers, Inoculants" },
    { "frmFertEdit",    "List2",  "Methods - Fertilizer and" },
    { "frmResidueEdit", "List1",  "Residues and Organic Fer" },
    { "frmResidueEdit", "List2",  "Methods - Fertilizer and" },
    { "frmChemEdit",    "List1",  "Chemicals (Herbicides, I" },
    { "frmChemEdit",    "List2",  "Methods - Fertilizer and" },
    { "frmTillEdit",    "List1",  "Tillage Implements" },
    { "frmIrrigation",  "List1",  "Methods - Irrigation and" },
    { "frmHarvest",     "List1",  "Harvest components" },
    { "frmHarvest",     "List2",  "Harvest size categories" },
    { "frmHarvest",     "List3",  "",                         ListSource::CropStages },
    { "frmEnvMod",      "List1",  "Environment Modification" },
    { "frmEnvMod",      "List3",  "Environment Modification" },
    { "frmEnvMod",      "List5",  "Environment Modification" },
    { "frmEnvMod",      "List7",  "Environment Modification" },
    { "frmEnvMod",      "List9",  "Environment Modification" },
    { "frmEnvMod",      "List11", "Environment Modification" },
    { "frmEnvMod",      "List13", "Environment Modification" },
    { "frmEnvMod",      "List15", "Environment Modification" },
};

// The boxes of a level page: a range to check, with the message for a
// number out of it, or none; a combo names its CodeLookup type.
struct LevelPageRow {
    Text form, control, field, caption, listType;
    bool checked;
    double low, high;
    Text rangeMessage;
    int maxLength;
};

const LevelPageRow levelPagesTable[] = {
    // form            control       field     caption                              list type                   checked low high range message       width
    { "frmIrrigation", "txtEFFIRX",  "EFFIRX", "Efficiency fraction",               "",                         true,  0, 999, "Invalid entry.",      0 },
    { "frmIrrigation", "txtDSOILX",  "DSOILX", "Management depth, cm",              "",                         true,  0, 999, "Invalid entry.",      0 },
    { "frmIrrigation", "txtTHETCX",  "THETCX", "Threshold, % of max available",     "",                         true,  0, 100, "Invalid percentage.", 0 },
    { "frmIrrigation", "txtIEPTX",   "IEPTX",  "End point, % of max. available",    "",                         true,  0, 100, "Invalid percentage.", 0 },
    { "frmIrrigation", "txtIOFFX",   "IOFFX",  "End of application, growth stage",  "",                         false, 0, 0,   "",                    5 },
    { "frmIrrigation", "DBCmbIAMEX", "IAMEX",  "Method",                            "Methods - Irrigation and", false, 0, 0,   "",                    0 },
    { "frmIrrigation", "txtAIRAMX",  "AIRAMX", "Amount, mm",                        "",                         true,  0, 999, "Invalid entry.",      0 },
};

// Controls a member names its own way.
struct ControlsRow {
    Text form, levelGrid, eventGrid, addLevel, deleteLevel, addEvent, deleteEvent;
};

const ControlsRow controlsTable[] = {
    { "frmIrrigation", "DBGIrrigation", "DBGdTheDate", "CmdAddIrrigation", "CmdIrrigdelete",
        "cmdIrrAppAdd", "cmdLayersDelete" },
};

// Level 1 that the menu handler makes takes these columns from the first
// row of a table of defaults: level column, default column.
struct NewLevelDefaultRow {
    Text form, table, field, defaultField;
};

const NewLevelDefaultRow newLevelDefaultsTable[] = {
    { "frmIrrigation", "AutoManagementIrrigation", "DSOILX", "DSOIL" },
    { "frmIrrigation", "AutoManagementIrrigation", "THETCX", "THETAC" },
    { "frmIrrigation", "AutoManagementIrrigation", "IEPTX",  "IEPT" },
    { "frmIrrigation", "AutoManagementIrrigation", "IOFFX",  "IOFF" },
    { "frmIrrigation", "AutoManagementIrrigation", "IAMEX",  "IAME" },
    { "frmIrrigation", "AutoManagementIrrigation", "AIRAMX", "AIRAMT" },
    { "frmIrrigation", "AutoManagementIrrigation", "EFFIRX", "EFFIRR" },
};

// Letters that, typed into a list column, give an entry of the list.
// "Subtruct" is the code table's own spelling.
struct TypedEntryRow {
    Text form, letter, entry;
};

const TypedEntryRow typedEntriesTable[] = {
    { "frmEnvMod", "A", "Add" },
    { "frmEnvMod", "S", "Subtruct" },
    { "frmEnvMod", "R", "Replace" },
    { "frmEnvMod", "M", "Multiply" },
};

// Wordings of the shared messages where a member has its own.
struct WordingRow {
    Text form;
    QString EventMember::*message;
    Text text;
};

const WordingRow wordingsTable[] = {
    { "frmFertEdit",    &EventMember::pleaseEnterDay,         "Please enter day." },
    { "frmResidueEdit", &EventMember::ruleRefused,            "Invalid number." },
    { "frmChemEdit",    &EventMember::enterFieldInformation,  "Please enter Fields information." },
    { "frmHarvest",     &EventMember::applicationsTableError, "Invalid entry in Harvest Numbers table." },
};

// Failure tails that don't follow the routine's and form's own names.
struct TailRow {
    Text form;
    Routine routine;
    Text tail;
};

const TailRow tailsTable[] = {
    { "frmFertEdit",   Routine::cmdAdd1_Click,           "CmdAdd1_Click/frmFertEdit" },
    { "frmFertEdit",   Routine::SetUpData2,              "SetUpData2/frmFert" },
    { "frmIrrigation", Routine::cmdDelete2_Click,        "cmdDeleteLayers/frmIrrigation" },
    { "frmIrrigation", Routine::DBGrid2_ButtonClick,     "DBGdTheDate_ButtonClick/frmIrrig" },
    { "frmIrrigation", Routine::SetUpData2,              "SetUpData2/frmIrr" },
    { "frmIrrigation", Routine::CreateDateTable,         "CreateDateTable" },
    { "frmHarvest",    Routine::cmdAdd2_Click,           "CmdAdd2_Click/frmHarvest" },
    { "frmHarvest",    Routine::ListDescription_Click,   "%1_Click/frmHarvest" },
    { "frmHarvest",    Routine::DBGrid2_ButtonClick,     "DBGrid2_ButtonClick/frmHar" },
    { "frmHarvest",    Routine::SetUpData2,              "SetUpData2/frmHAR" },
    // The harvest form has the irrigation form's tail here.
    { "frmHarvest",    Routine::DBComboManagement_Click, "DBComboManagement_Click/frmIrr" },
    { "frmEnvMod",     Routine::ListDescription_Click,   "%1_Click/frmEnvMod" },
};
// clang-format on

bool sameForm(Text row, const QString& form)
{
    return form == QLatin1String(row);
}

template <typename Row, size_t N, typename Add>
void forRowsOf(const Row (&table)[N], const QString& form, Add add)
{
    for (const Row& row : table) {
        if (sameForm(row.form, form))
            add(row);
    }
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
    m.keyColumn = row.keyColumn;
    forRowsOf(listsTable, form, [&](const ListRow& l) {
        m.lists.push_back({ QLatin1String(l.type), QLatin1String(l.control), l.source });
    });
    // The scratch table takes the columns in the order of the grid, those not
    // shown last.
    struct Placed {
        int gridColumn;
        ScratchColumn column;
        GridColumn shown;
    };
    std::vector<Placed> placed;
    forRowsOf(valueColumnsTable, form, [&](const ValueColumnRow& c) {
        GridColumn shown { QLatin1String(c.name), QLatin1String(c.caption), Entry::Typed, -1 };
        if (c.shownFor)
            shown.shownFor = c.shownFor;
        placed.push_back({ c.gridColumn,
            { QLatin1String(c.name), QLatin1String(c.type), QLatin1String(c.eventField), -1,
                QLatin1String(c.rule) },
            shown });
    });
    forRowsOf(listColumnsTable, form, [&](const ListColumnRow& c) {
        // Only a code table's list translates; a stage list's column holds
        // the code itself.
        const bool coded = m.lists.at(size_t(c.list)).source == ListSource::CodeLookup;
        placed.push_back({ c.gridColumn,
            { QLatin1String(c.name), QStringLiteral("Text"), QLatin1String(c.eventField),
                coded ? c.list : -1, {} },
            { QLatin1String(c.name), QLatin1String(c.caption), Entry::List, c.list } });
    });
    std::stable_sort(placed.begin(), placed.end(), [](const Placed& a, const Placed& b) {
        return (a.gridColumn < 0 ? INT_MAX : a.gridColumn)
            < (b.gridColumn < 0 ? INT_MAX : b.gridColumn);
    });
    for (const Placed& p : placed) {
        m.scratch.push_back(p.column);
        if (p.gridColumn > 0)
            m.grid.push_back(p.shown);
    }
    forRowsOf(levelPagesTable, form, [&](const LevelPageRow& f) {
        m.levelPage.push_back({ QLatin1String(f.control), QLatin1String(f.field),
            QLatin1String(f.caption), QLatin1String(f.listType), f.checked, f.low, f.high,
            QLatin1String(f.rangeMessage), f.maxLength });
    });
    forRowsOf(controlsTable, form, [&](const ControlsRow& c) {
        m.controls = { QLatin1String(c.levelGrid), QLatin1String(c.eventGrid),
            QLatin1String(c.addLevel), QLatin1String(c.deleteLevel), QLatin1String(c.addEvent),
            QLatin1String(c.deleteEvent) };
    });
    forRowsOf(newLevelDefaultsTable, form, [&](const NewLevelDefaultRow& d) {
        m.newLevelDefaultsTable = QLatin1String(d.table);
        m.newLevelDefaults.push_back({ QLatin1String(d.field), QLatin1String(d.defaultField) });
    });
    forRowsOf(typedEntriesTable, form, [&](const TypedEntryRow& t) {
        m.typedEntries[QLatin1String(t.letter)] = QLatin1String(t.entry);
    });
    forRowsOf(
        additionsTable, form, [&](const AdditionRow& a) { m.additions.push_back(a.addition); });
    forRowsOf(
        wordingsTable, form, [&](const WordingRow& w) { m.*w.message = QLatin1String(w.text); });
    forRowsOf(
        tailsTable, form, [&](const TailRow& t) { m.tails[t.routine] = QLatin1String(t.tail); });
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
