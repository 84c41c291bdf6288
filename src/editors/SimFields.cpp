#include "editors/SimFields.h"

namespace quillon::editors {

namespace {

const char* const general = "SimulationControl";
const char* const options = "SimulationControlOptions";
const char* const methods = "SimulationControlMethods";
const char* const management = "SimulationControlManagement";
const char* const outputs = "SimulationControlOutputs";
const char* const planting = "AutoManagementPlanting";
const char* const nitrogen = "AutoManagementNitrogen";
const char* const irrigation = "AutoManagementIrrigation";
const char* const residues = "AutoManagementResidues";
const char* const harvest = "AutoManagementHarvest";
const char* const simdates = "AutoManagementSimdates";

SimField field(
    const char* control, const char* table, const char* column, SimKind kind, const char* label)
{
    SimField f;
    f.control = QLatin1String(control);
    f.table = QLatin1String(table);
    f.column = QLatin1String(column);
    f.kind = kind;
    f.label = QString::fromUtf8(label);
    return f;
}

SimField number(const char* control, const char* table, const char* column, const char* label,
    double low, double high, bool percentage = false)
{
    SimField f = field(control, table, column, SimKind::Number, label);
    f.bounded = true;
    f.low = low;
    f.high = high;
    f.percentage = percentage;
    return f;
}

SimField percent(const char* control, const char* table, const char* column, const char* label)
{
    return number(control, table, column, label, 0, 100, true);
}

SimField text(
    const char* control, const char* table, const char* column, const char* label, int length)
{
    SimField f = field(control, table, column, SimKind::Text, label);
    f.maxLength = length;
    return f;
}

// A combo of a control array, "DBCombo1(2)", listing SimLookUp's `type`.
SimField code(const char* array, int index, const char* table, const char* column,
    const char* label, int type)
{
    SimField f = field("", table, column, SimKind::Code, label);
    f.control = QStringLiteral("%1(%2)").arg(QLatin1String(array)).arg(index);
    f.simType = type;
    return f;
}

SimField named(
    const char* control, const char* table, const char* column, const char* label, int type)
{
    SimField f = field(control, table, column, SimKind::Code, label);
    f.simType = type;
    return f;
}

SimField listed(
    const char* control, const char* table, const char* column, const char* label, const char* type)
{
    SimField f = field(control, table, column, SimKind::Code, label);
    f.codeType = QLatin1String(type);
    return f;
}

std::vector<SimField> buildFields()
{
    const SimKind date = SimKind::Date;
    // The yes/no switches of the options all list the water switch's codes.
    const int yesNo = 2;
    // The output switches share one list; FNAME and VBOSE have their own.
    const int output = 17;
    return {
        // General
        number("txtNYRS", general, "NYRS", "Number of years", 0, 999),
        number("txtNREPSQ", general, "NREPSQ", "Number of replications", 0, 99),
        named("DBComboISIMI", general, "ISIMI", "Start of simulation", 1),
        field("txtYRSIMDate", general, "YRSIM", date, "Simulation start date"),
        number("txtRSEED", general, "RSEED", "Random number seed", 0, 9999),
        named("DBComboModel", general, "Crop_Model", "Crop module", 19),
        // Options
        code("DBCombo2", 0, options, "ISWWAT", "Water", yesNo),
        code("DBCombo2", 1, options, "ISWNIT", "Nitrogen", yesNo),
        code("DBCombo2", 2, options, "ISWSYM", "Symbiosis", 3),
        code("DBCombo2", 3, options, "ISWPHO", "Phosphorus", yesNo),
        code("DBCombo2", 4, options, "ISWPOT", "Potassium", yesNo),
        code("DBCombo2", 5, options, "ISWDIS", "Diseases", yesNo),
        code("DBCombo2", 6, options, "ISCHEM", "Chemicals", yesNo),
        code("DBCombo2", 7, options, "ISTILL", "Tillage", yesNo),
        code("DBCombo2", 8, options, "ISCO2", "CO2", 22),
        // Methods
        code("DBCombo1", 0, methods, "MEWTH", "Weather", 4),
        code("DBCombo1", 1, methods, "MESIC", "Initial soil conditions", 5),
        text("txtMELI", methods, "MELI", "Light", 1),
        code("DBCombo1", 2, methods, "MEEVP", "Evapotranspiration", 6),
        code("DBCombo1", 3, methods, "MEINF", "Infiltration", 7),
        code("DBCombo1", 4, methods, "MEPHO", "Photosynthesis", 8),
        code("DBCombo1", 5, methods, "HYDRO", "Hydrology", 9),
        number("txtNSWIT", methods, "NSWIT", "Nitrogen switch", 0, 99),
        code("DBCombo1", 6, methods, "MESOM", "Soil organic matter", 10),
        code("DBCombo1", 7, methods, "MESEV", "Soil evaporation", 18),
        code("DBCombo1", 8, methods, "MESOL", "Soil layer distribution", 20),
        // Management
        code("DBCombo4", 0, management, "IPLTI", "Planting", 11),
        code("DBCombo4", 1, management, "IIRRI", "Irrigation", 12),
        code("DBCombo4", 2, management, "IFERI", "Fertilization", 13),
        code("DBCombo4", 3, management, "IRESI", "Residue", 14),
        code("DBCombo4", 4, management, "IHARI", "Harvest", 15),
        // Outputs
        code("DBCombo3", 0, outputs, "IOX", "Output files", 16),
        code("DBCombo3", 1, outputs, "IDETO", "Overview", output),
        code("DBCombo3", 2, outputs, "IDETS", "Summary", output),
        number("txtFROP", outputs, "FROP", "Frequency of output (days)", 0, 99),
        code("DBCombo3", 3, outputs, "IDETG", "Growth", output),
        code("DBCombo3", 4, outputs, "IDETC", "Carbon", output),
        code("DBCombo3", 5, outputs, "IDETW", "Water", output),
        code("DBCombo3", 6, outputs, "IDETN", "Nitrogen", output),
        code("DBCombo3", 7, outputs, "IDETP", "Phosphorus", output),
        code("DBCombo3", 8, outputs, "IDETD", "Diseases", output),
        code("DBCombo3", 9, outputs, "VBOSE", "Verbose", 21),
        code("DBCombo3", 10, outputs, "CHOUT", "Chemicals", output),
        code("DBCombo3", 11, outputs, "OPOUT", "Operations", output),
        code("DBCombo3", 12, outputs, "FMOPT", "File format", 23),
        // Automatic planting
        field("txtMaskEdBoxPlant1", planting, "PWDINF", date, "First day of the planting window"),
        field("txtMaskEdBoxPlant2", planting, "PWDINL", date, "Last day of the planting window"),
        number("txt6SWPLTL", planting, "SWPLTL", "Lower soil water limit, %", 0, 100),
        number("txt6SWPLTH", planting, "SWPLTH", "Upper soil water limit, %", 0, 100),
        number("txt6SWPLTD", planting, "SWPLTD", "Depth of the soil water test, cm", 0, 9999),
        number("txt6PTX", planting, "PTX", "Maximum soil temperature, °C", 0, 9999),
        number("txt6PTTN", planting, "PTTN", "Minimum soil temperature, °C", 0, 9999),
        // Automatic irrigation
        number("txt7DSOIL", irrigation, "DSOIL", "Management depth", 0, 9999),
        percent("txt7THETAC", irrigation, "THETAC", "Threshold, % of max available"),
        percent("txt7IEPT", irrigation, "IEPT", "End point, % of max. available"),
        text("txt7IOFF", irrigation, "IOFF", "End of application, growth stage", 5),
        listed("DBCmb7IAME", irrigation, "IAME", "Method", "Methods - Irrigation and"),
        number("txt7AIRAMT", irrigation, "AIRAMT", "Amount per application, mm", 0, 9999),
        number("txt7EFFIRR", irrigation, "EFFIRR", "Efficiency fraction", 0, 1),
        // Automatic nitrogen
        number("txt8DSOILN", nitrogen, "DSOILN", "Management depth", 0, 9999),
        number("txt8SOILNC", nitrogen, "SOILNC", "Threshold, % of max. available", 0, 9999),
        number("txt8SOILNX", nitrogen, "SOILNX", "Amount per application, kg/ha", 0, 9999),
        listed("DBCmb8NCODE", nitrogen, "NCODE", "Material", "Fertilizers, Inoculants"),
        text("txt8NEND", nitrogen, "NEND", "End of application, growth stage", 5),
        // Automatic residues
        percent("txt9RIP", residues, "RIP", "Percentage incorporated"),
        number("txt9NRESDL", residues, "NRESDL", "Time after harvesting", 0, 9999),
        number("txt9DRESMG", residues, "DRESMG", "Incorporation depth, cm", 0, 9999),
        // Automatic harvest
        number("txt9HDLAY", harvest, "HDLAY", "Days after maturity", 0, 9999),
        field("txtMaskEdBoxHar2", harvest, "HLATE", date, "Last harvest date"),
        percent("txt9HPP", harvest, "HPP", "Percentage of product harvested"),
        percent("txt9HRP", harvest, "HRP", "Percentage of residue harvested"),
        // Forecast
        field("txtYRFRCDate", simdates, "FODAT", SimKind::LongDate, "Forecast Date"),
        text("txtFONAME", simdates, "FONAME", "Yield Forecast Name", 25),
    };
}

QStringList names(std::initializer_list<const char*> list)
{
    QStringList result;
    for (const char* name : list)
        result << QLatin1String(name);
    return result;
}

} // namespace

const QStringList& simTables()
{
    static const QStringList tables = names({ general, options, methods, management, outputs,
        planting, nitrogen, irrigation, residues, harvest, simdates });
    return tables;
}

const std::vector<SimField>& simFields()
{
    static const std::vector<SimField> fields = buildFields();
    return fields;
}

const SimField* simField(const QString& control)
{
    for (const SimField& f : simFields()) {
        if (f.control.compare(control, Qt::CaseInsensitive) == 0)
            return &f;
    }
    return nullptr;
}

const std::vector<ManagementRule>& managementRules()
{
    // The planting window's dates are the boxes txtMaskEdBoxPlant1 and 2,
    // which also stand for the code fields behind them.
    static const QStringList plantingFields = names({ "txt6PTTN", "txt6PTX", "txt6SWPLTD",
        "txt6SWPLTH", "txt6SWPLTL", "txtMaskEdBoxPlant1", "txtMaskEdBoxPlant2" });
    static const QStringList irrigationFields
        = names({ "txt7AIRAMT", "txt7DSOIL", "txt7EFFIRR", "txt7IEPT", "txt7IOFF", "txt7THETAC" });
    static const QStringList automaticIrrigation
        = names({ "txt7DSOIL", "txt7EFFIRR", "txt7IEPT", "txt7IOFF", "txt7THETAC" });
    static const QStringList notEfficiency
        = names({ "txt7AIRAMT", "txt7DSOIL", "txt7IEPT", "txt7IOFF", "txt7THETAC" });
    static const QStringList nitrogenFields
        = names({ "txt8DSOILN", "txt8NEND", "txt8SOILNX", "txt8SOILNC" });
    static const QStringList residueFields = names({ "txt9RIP", "txt9NRESDL", "txt9DRESMG" });
    static const QStringList harvestFields
        = names({ "txtMaskEdBoxHar2", "txt9HDLAY", "txt9HPP", "txt9HRP" });
    static const std::vector<ManagementRule> rules {
        { 0, names({ "R" }), {}, plantingFields },
        { 0, {}, plantingFields, {} },
        { 1, names({ "A" }), automaticIrrigation, names({ "txt7AIRAMT" }) },
        { 1, names({ "N" }), {}, irrigationFields },
        { 1, names({ "F" }), irrigationFields, {} },
        { 1, names({ "R", "D" }), names({ "txt7EFFIRR" }), notEfficiency },
        { 2, names({ "A", "F" }), nitrogenFields, {} },
        { 2, names({ "N", "R", "D" }), {}, nitrogenFields },
        // Whatever the residue code is, its fields go off.
        { 3, {}, {}, residueFields },
        { 4, names({ "A" }), harvestFields, {} },
        { 4, names({ "R", "M", "D" }), {}, harvestFields },
    };
    return rules;
}

} // namespace quillon::editors
