#include "database/Schema.h"

namespace quillon::database {

namespace {

constexpr auto Text = FieldType::Text;
constexpr auto Integer = FieldType::Integer;
constexpr auto Long = FieldType::Long;
constexpr auto Single = FieldType::Single;

const QString invalidEntry = QStringLiteral("Invalid entry.");

FieldDef f(const char* name, FieldType type, int size = 0)
{
    return { QLatin1String(name), type, size, {}, {} };
}

FieldDef r(const char* name, FieldType type, int size, const char* rule, const QString& text = {})
{
    return { QLatin1String(name), type, size, QLatin1String(rule), text };
}

IndexDef unique(const char* name, QStringList fields) { return { QLatin1String(name), fields, true }; }
IndexDef plain(const char* name, QStringList fields) { return { QLatin1String(name), fields, false }; }

SchemaStep table(int stage, const char* name, bool zeroLength, std::vector<FieldDef> fields,
    std::vector<IndexDef> indexes = {})
{
    SchemaStep step { SchemaStep::Table,
        { QLatin1String(name), std::move(fields), std::move(indexes), zeroLength, stage }, {}, stage, 0 };
    return step;
}

SchemaStep progress(int percent) { return { SchemaStep::Progress, {}, {}, 0, percent }; }

SchemaStep statement(int stage, const char* sql) { return { SchemaStep::Statement, {}, QLatin1String(sql), stage, 0 }; }

// Level-name tables share one shape: the level and its name.
SchemaStep levelNames(const char* name, const char* level, const char* label, const char* index)
{
    return table(6, name, true, { f(level, Integer, 2), f(label, Text, 60) }, { unique(index, { QLatin1String(level) }) });
}

SchemaStep management(const char* name, const char* level, const char* code, const char* index)
{
    return table(7, name, true, { f(level, Integer, 2), f(code, Text) }, { unique(index, { QLatin1String(level) }) });
}

std::vector<SchemaStep> buildSteps()
{
    const bool zl = true;
    std::vector<SchemaStep> s;

    // Reference tables
    s.push_back(table(2, "SoilLookup", false,
        { f("Code", Text, 10), f("Depth", Text, 5), f("Description", Text, 60),
            f("SoilFileNumber", Integer), f("SoilFile", Text, 30) },
        { unique("SoilIndex", { "Code" }) }));
    s.push_back(table(2, "TERVAPRO", false, { f("Code", Text, 10), f("Path", Text, 110) }));
    s.push_back(table(2, "WeatherLookup", false,
        { f("Code", Text, 10), f("Description", Text, 50), f("Station", Text, 4) }));
    s.push_back(table(2, "TotalWeatherLookup", false,
        { f("Code", Text, 10), f("Description", Text, 50), f("Observed", Text, 20) }));
    s.push_back(table(2, "CodeLookup", false,
        { f("Type", Text, 25), f("Code", Text, 9), f("Description", Text, 70) }));
    s.push_back(table(2, "CropLookup", false,
        { f("CODE", Text, 2), f("Name", Text, 60), f("TERVA_Folder", Text, 20), f("CultivarFile", Text, 25) },
        { unique("CropIndex", { "CODE" }) }));
    s.push_back(table(2, "CropCodesLookup", false,
        { f("CODE", Text, 2), f("CROP", Text, 6), f("Description", Text, 20) },
        { unique("CropCodesIndex", { "CODE", "CROP" }) }));
    s.push_back(table(2, "CodeStageLookup", false,
        { f("Name", Text, 60), f("Code", Text, 5), f("Label", Text, 5), f("Description", Text, 58) }));
    s.push_back(table(2, "IC_Water_Nitrogen", false,
        { f("LNIC", Integer), f("SLNO", Text), f("Water", Long), f("Nitrogen", Long) },
        { unique("LNICIndex", { "LNIC" }) }));
    s.push_back(progress(6));

    s.push_back(progress(35));
    s.push_back(table(3, "Treatments", false,
        { f("TRTNO", Integer, 3), f("ROTNO", Integer, 1), f("ROTOPT", Integer, 1), f("CRPNO", Integer, 1),
            f("TITLET", Text), f("LNCU", Integer, 3), f("LNFLD", Integer, 3), f("LNSA", Integer, 3),
            f("LNIC", Integer, 3), f("LNPLT", Integer, 3), f("LNIR", Integer, 3), f("LNFER", Integer, 3),
            f("LNRES", Integer, 3), f("LNCHE", Integer, 3), f("LNTIL", Integer, 3), f("LNENV", Integer, 3),
            f("LNHAR", Integer, 3), f("LNSIM", Integer, 3) },
        { unique("TRNOIndex", { "TRTNO", "ROTNO" }) }));
    s.push_back(progress(37));
    s.push_back(table(3, "Cultivars", zl,
        { f("LNCU", Integer, 3), f("CODE", Text, 2), f("VARNO", Text, 6), f("CNAME", Text) },
        { unique("LNCU1Index", { "LNCU" }) }));

    // Factor levels
    s.push_back(table(4, "Fields", zl,
        { f("LNFLD", Integer, 3), f("FLDNAM", Text, 8), f("WSTA", Text, 8), f("SLOPE", Single, 5),
            f("FLOB", Single, 5), f("DFDRN", Text, 5), f("FLDD", Single, 5), f("SFDRN", Single, 5),
            f("FLST", Text, 5), f("SLTX", Text, 5), r("SLDP", Single, 5, "BETWEEN 0 and 9999  or -99"),
            f("SLNO", Text, 10), f("XCRD", Single, 12), f("YCRD", Single, 12), f("ELEV", Single, 9),
            f("AREA", Single, 17), f("SLEN", Single, 5), f("FLWR", Single, 5), f("SLAS", Single, 5),
            f("FHDUR", Single, 5), f("FLHST", Text, 10), f("FLNAME", Text, 60) },
        { unique("LNFLDIndex", { "LNFLD" }), unique("FLDNAMIndex", { "FLDNAM" }) }));
    s.push_back(progress(39));
    s.push_back(table(4, "SoilAnalysis", zl,
        { f("LNSA", Integer, 3), f("SADAT", Text, 5), f("SMHB", Text, 5), f("SMPX", Text, 5),
            f("SMKE", Text, 5), f("SANAME", Text, 60) },
        { unique("LNSAIndex", { "LNSA" }) }));
    s.push_back(table(4, "SoilLayers", zl,
        { f("LNSA", Integer, 3),
            r("SABL", Single, 5, "BETWEEN 0 AND 9999  or -99", invalidEntry),
            r("SADM", Single, 5, "BETWEEN 0 AND 999 or -99", invalidEntry),
            r("SAOC", Single, 5, "BETWEEN 0 AND 99 or -99", invalidEntry),
            r("SANI", Single, 5, "BETWEEN 0 AND 99 or -99", invalidEntry),
            r("SAPHW", Single, 5, "BETWEEN 0 AND 999 or -99", invalidEntry),
            r("SAPHB", Single, 5, "BETWEEN 0 AND 999 or -99", invalidEntry),
            r("SAPX", Single, 5, "BETWEEN 0 AND 999 or -99", invalidEntry),
            r("SAKE", Single, 5, "BETWEEN 0 AND 999 or -99", invalidEntry),
            r("SASC", Single, 5, "BETWEEN 0 AND 100 or -99", invalidEntry) },
        { plain("SLIndex", { "LNSA" }) }));
    s.push_back(progress(42));
    s.push_back(table(4, "InitialConditions", zl,
        { f("LNIC", Integer, 3), f("PRCROP", Text, 5), f("IDAYIC", Text, 5), f("WRESR", Single, 5),
            f("WRESND", Single, 5), f("EFINOC", Single, 5), f("EFNFIX", Single, 5), f("ICWD", Single, 5),
            f("ICRES", Single, 5), f("ICREN", Single, 5), f("ICREP", Single, 5), f("ICRIP", Single, 5),
            f("ICRID", Single, 5), f("ICNAME", Text, 60) },
        { unique("LNICIndex", { "LNIC" }) }));
    s.push_back(table(4, "ICLayers", zl,
        { f("LNIC", Integer, 3),
            r("DLAYRI", Single, 5, "BETWEEN 0 AND 9999  or -99", invalidEntry),
            r("SWINIT", Single, 5, "(> 0 AND < 0.9) or = -99 or = 0 or = 0.9", invalidEntry),
            r("INH4", Single, 5, "(> 0 AND < 99999) or = -99 or = 0", invalidEntry),
            r("INO3", Single, 5, "(> 0 AND < 99999) or = -99 or = 0", invalidEntry) },
        { plain("ICIndex", { "LNIC" }) }));
    s.push_back(progress(46));
    s.push_back(table(4, "Planting", zl,
        { f("LNPLT", Integer, 3), f("YRPLT", Text, 5), f("IEMRG", Text, 5), f("PLANTS", Single, 5),
            f("PLTPOP", Single, 5), f("PLME", Text, 5), f("PLDS", Text, 5), f("ROWSPC", Single, 5),
            f("AZIR", Single, 5), f("SDEPTH", Single, 5), f("SDWTPL", Single, 5), f("SDAGE", Single, 5),
            f("ATEMP", Single, 5), f("PLPH", Single, 5), f("SPRLAP", Single, 5), f("PLNAME", Text, 60) },
        { unique("LNPLTIndex", { "LNPLT" }) }));
    s.push_back(table(4, "Irrigation", zl,
        { f("LNIR", Integer, 3), f("EFFIRX", Single, 5), f("DSOILX", Single, 5), f("THETCX", Single, 5),
            f("IEPTX", Single, 5), f("IOFFX", Text, 5), f("IAMEX", Text, 5), f("AIRAMX", Single, 5),
            f("IRNAME", Text, 60) },
        { unique("LNIRIndex", { "LNIR" }) }));
    s.push_back(table(4, "IrrigApplications", zl,
        { f("LNIR", Integer, 3), f("IDLAPL", Text, 5), f("IRRCOD", Text, 5), f("AMT", Single, 5),
            f("IIRV", Single, 5) },
        { plain("IrrAppIndex", { "LNIR" }) }));
    s.push_back(progress(50));
    s.push_back(table(4, "Fertilization", zl,
        { f("LNFER", Integer, 3), f("FDAY", Text, 5), f("IFTYPE", Text, 5), f("FERCOD", Text, 5),
            f("DFERT", Single, 5), f("ANFER", Single, 5), f("APFER", Single, 5), f("AKFER", Single, 5),
            f("ACFER", Single, 5), f("AOFER", Single, 5), f("FOCOD", Text, 5) },
        { plain("FERIndex", { "LNFER" }) }));
    s.push_back(table(4, "Residue", zl,
        { f("LNRES", Integer, 3), f("RESDAY", Text, 5), f("RESCOD", Text, 5), f("RESIDUE", Single, 5),
            f("RESN", Single, 5), f("RESP", Single, 5), f("RESK", Single, 5), f("RINP", Single, 5),
            f("DEPRES", Single, 5), f("RMET", Text, 5) },
        { plain("RESIndex", { "LNRES" }) }));
    s.push_back(progress(53));
    s.push_back(table(4, "Chemicals", zl,
        { f("LNCHE", Integer, 3), f("CDATE", Text, 5), f("CHCOD", Text, 5), f("CHAMT", Single, 5),
            f("CHMET", Text, 5), f("CHDEP", Single, 5), f("CHT", Text, 5) },
        { plain("CHEMIndex", { "LNCHE" }) }));
    s.push_back(table(4, "Tillage", zl,
        { f("LNTIL", Integer, 3), f("TDATE", Text, 5), f("TIMPL", Text, 5), f("TDEP", Single, 5) },
        { plain("TILIndex", { "LNTIL" }) }));
    s.push_back(table(4, "EnvironMod", zl,
        { f("LNENV", Integer, 3), f("WMDATE", Text, 5), f("DAYFAC", Text, 1), f("DAYADJ", Single, 4),
            f("RADFAC", Text, 1), f("RADADJ", Single, 4), f("TXFAC", Text, 1), f("TXADJ", Single, 4),
            f("TMFAC", Text, 1), f("TMADJ", Single, 4), f("PRCFAC", Text, 1), f("PRCADJ", Single, 4),
            f("CO2FAC", Text, 1), f("CO2ADJ", Single, 4), f("DPTFAC", Text, 1), f("DPTADJ", Single, 4),
            f("WNDFAC", Text, 1), f("WNDADJ", Single, 4) },
        { plain("ENVIndex", { "LNENV" }) }));
    s.push_back(progress(57));
    s.push_back(table(4, "Harvest", zl,
        { f("LNHAR", Integer, 3), f("HDATE", Text, 5), f("HSTG", Text, 5), f("HCOM", Text, 5),
            f("HSIZ", Text, 5), f("HPC", Single, 5), f("HBPC", Single, 5) },
        { plain("HARIndex", { "LNHAR" }) }));

    // Simulation controls
    s.push_back(table(5, "SimulationControl", zl,
        { f("LNSIM", Integer, 3), f("TITCOM", Text, 11), f("NYRS", Integer, 3), f("NREPSQ", Integer, 2),
            f("ISIMI", Text, 3), f("YRSIM", Text, 5), f("RSEED", Single, 5), f("TITSIM", Text, 30),
            f("Crop_Model", Text, 20) },
        { unique("LNSIMIndex", { "LNSIM" }) }));
    s.push_back(progress(62));
    s.push_back(table(5, "SimulationControlOptions", zl,
        { f("LNSIM", Integer, 3), f("TITOPT", Text, 11), f("ISWWAT", Text, 1), f("ISWNIT", Text, 1),
            f("ISWSYM", Text, 1), f("ISWPHO", Text, 1), f("ISWPOT", Text, 1), f("ISWDIS", Text, 1),
            f("ISCHEM", Text, 1), f("ISTILL", Text, 1), f("ISCO2", Text, 1) }));
    s.push_back(table(5, "SimulationControlMethods", zl,
        { f("LNSIM", Integer, 3), f("TITMET", Text, 11), f("MEWTH", Text, 1), f("MESIC", Text, 1),
            f("MELI", Text, 1), f("MEEVP", Text, 1), f("MEINF", Text, 1), f("MEPHO", Text, 1),
            f("HYDRO", Text, 1), f("NSWIT", Integer, 2), f("MESOM", Text, 1), f("MESEV", Text, 1),
            f("MESOL", Text, 1) }));
    s.push_back(table(5, "SimulationControlManagement", zl,
        { f("LNSIM", Integer, 3), f("TITMAT", Text, 11), f("IPLTI", Text, 1), f("IIRRI", Text, 1),
            f("IFERI", Text, 1), f("IRESI", Text, 1), f("IHARI", Text, 1) }));
    s.push_back(progress(64));
    s.push_back(table(5, "SimulationControlOutputs", zl,
        { f("LNSIM", Integer, 3), f("TITOUT", Text, 11), f("IOX", Text, 1), f("IDETO", Text, 1),
            f("IDETS", Text, 1), f("FROP", Integer, 2), f("IDETG", Text, 1), f("IDETC", Text, 1),
            f("IDETW", Text, 1), f("IDETN", Text, 1), f("IDETP", Text, 1), f("IDETD", Text, 1),
            f("VBOSE", Text, 1), f("CHOUT", Text, 1), f("OPOUT", Text, 1), f("FMOPT", Text, 1) }));
    s.push_back(table(5, "AutoManagementPlanting", zl,
        { f("LNSIM", Integer, 3), f("TITPLA", Text, 11), f("PWDINF", Text, 5), f("PWDINL", Text, 5),
            f("SWPLTL", Single, 5), f("SWPLTH", Single, 5), f("SWPLTD", Single, 5), f("PTX", Single, 5),
            f("PTTN", Single, 5) }));
    s.push_back(table(5, "AutoManagementIrrigation", zl,
        { f("LNSIM", Integer, 3), f("TITIRR", Text, 11), f("DSOIL", Single, 5), f("THETAC", Single, 5),
            f("IEPT", Single, 5), f("IOFF", Text, 5), f("IAME", Text, 5), f("AIRAMT", Single, 5),
            f("EFFIRR", Single, 5) }));
    s.push_back(progress(70));
    s.push_back(table(5, "AutoManagementNitrogen", zl,
        { f("LNSIM", Integer, 3), f("TITNIT", Text, 11), f("DSOILN", Single, 5), f("SOILNC", Single, 5),
            f("SOILNX", Single, 5), f("NCODE", Text, 5), f("NEND", Text, 5) }));
    s.push_back(table(5, "AutoManagementResidues", zl,
        { f("LNSIM", Integer, 3), f("TITRES", Text, 11), f("RIP", Single, 5), f("NRESDL", Single, 5),
            f("DRESMG", Single, 5) }));
    s.push_back(progress(73));
    s.push_back(table(5, "AutoManagementHarvest", zl,
        { f("LNSIM", Integer, 3), f("TITHAR", Text, 11), f("HDLAY", Single, 5), f("HLATE", Text, 5),
            f("HPP", Single, 5), f("HRP", Single, 5) }));
    s.push_back(table(5, "AutoManagementSimdates", zl,
        { f("LNSIM", Integer, 3), f("TITSI", Text, 11), f("FODAT", Text, 7), f("FONAME", Text, 25) }));

    // Experiment header and level names
    s.push_back(table(6, "GeneralInfo", zl,
        { f("PEOPLE", Text, 200), f("ADDRESS", Text, 200), f("SITE", Text, 75) }));
    s.push_back(table(6, "PlotInfo", zl,
        { f("PAREA", Single, 6), f("PRNO", Integer, 5), f("PLEN", Single, 5), f("PLDR", Integer, 5),
            f("PLSP", Integer, 5), f("PLAY", Text, 5), f("HAREA", Single, 5), f("HRNO", Integer, 5),
            f("HLEN", Single, 5), f("HARM", Text, 15) }));
    s.push_back(progress(76));
    s.push_back(table(6, "ExpDetails", zl,
        { f("INSTE", Text, 2), f("SITEE", Text, 2), f("EXPTNO", Text, 4), f("CODE", Text, 2),
            f("ENAME", Text, 70) }));
    s.push_back(levelNames("FerLevelNames", "LNFER", "FERNAME", "FERIndex"));
    s.push_back(progress(79));
    s.push_back(levelNames("ChemLevelNames", "LNCHE", "CHNAME", "ChemIndex"));
    s.push_back(levelNames("HarLevelNames", "LNHAR", "HNAME", "HARIndex"));
    s.push_back(levelNames("ResLevelNames", "LNRES", "RENAME", "LNRESIndex"));
    s.push_back(levelNames("TillLevelNames", "LNTIL", "TNAME", "LNTILIndex"));
    s.push_back(progress(82));
    s.push_back(levelNames("EnvLevelNames", "LNENV", "ENVNAME", "LNENVIndex"));

    // Soil data and management maps
    s.push_back(table(7, "SoilData", zl,
        { f("SLB", Single, 5), f("SLLL", Single, 5), f("SDUL", Single, 5), f("SBDM", Single, 5) }));
    s.push_back(statement(7, "CREATE TABLE FieldYears (Year TEXT COLLATE NOCASE)"));
    s.push_back(management("IrrManagement", "LNIR", "IIRRI", "IrrManIndex"));
    s.push_back(progress(84));
    s.push_back(management("FerManagement", "LNFER", "IFERI", "FerManIndex"));
    s.push_back(management("ResManagement", "LNRES", "IRESI", "ResManIndex"));
    s.push_back(management("HarManagement", "LNHAR", "IHARI", "HarManIndex"));
    s.push_back(table(7, "ICSoil", false, { f("SLNO", Text) }));
    s.push_back(progress(86));
    return s;
}

} // namespace

const std::vector<SchemaStep>& schemaSteps()
{
    static const std::vector<SchemaStep> steps = buildSteps();
    return steps;
}

const TableDef* findTable(const QString& name)
{
    for (const SchemaStep& step : schemaSteps()) {
        if (step.kind == SchemaStep::Table && step.table.name.compare(name, Qt::CaseInsensitive) == 0)
            return &step.table;
    }
    return nullptr;
}

QString columnDeclaration(const FieldDef& field)
{
    switch (field.type) {
    case FieldType::Text:
        return QStringLiteral("TEXT(%1) COLLATE NOCASE").arg(field.size > 0 ? field.size : DefaultTextSize);
    case FieldType::Integer:
        return field.size > 0 ? QStringLiteral("SMALLINT(%1)").arg(field.size) : QStringLiteral("SMALLINT");
    case FieldType::Long:
        return field.size > 0 ? QStringLiteral("INTEGER(%1)").arg(field.size) : QStringLiteral("INTEGER");
    case FieldType::Single:
        return field.size > 0 ? QStringLiteral("FLOAT(%1)").arg(field.size) : QStringLiteral("FLOAT");
    }
    return {};
}

} // namespace quillon::database
