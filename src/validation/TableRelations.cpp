#include "validation/TableRelations.h"

#include "app/RuntimeError.h"

namespace quillon::validation {

namespace {

database::Relation relation(
    const char* name, const char* table, const char* foreignTable, const char* field)
{
    return { QLatin1String(name), QLatin1String(table), QLatin1String(field),
        QLatin1String(foreignTable), QLatin1String(field) };
}

const QString forecastRelation = QStringLiteral("Sim10");

void createIgnoringErrors(const database::Relation& r)
{
    try {
        database::createRelation(r);
    } catch (const RuntimeError&) {
        // A relation that can't be made is simply not in force.
    }
}

void deleteIgnoringErrors(const QString& name)
{
    try {
        database::deleteRelation(name);
    } catch (const RuntimeError&) {
        // Not there: nothing to remove.
    }
}

} // namespace

const std::vector<database::Relation>& relationTable()
{
    static const std::vector<database::Relation> relations {
        relation("FieldTreatment", "Fields", "Treatments", "LNFLD"),
        relation("ICTreatment", "InitialConditions", "Treatments", "LNIC"),
        relation("IC_Layers", "InitialConditions", "ICLayers", "LNIC"),
        relation("CuTreatment", "Cultivars", "Treatments", "LNCU"),
        relation("PLTTreatment", "Planting", "Treatments", "LNPLT"),
        relation("IRR_Applications", "Irrigation", "IrrigApplications", "LNIR"),
        relation("IRTreatment", "Irrigation", "Treatments", "LNIR"),
        relation("ChemTreatment", "ChemLevelNames", "Treatments", "LNCHE"),
        relation("ENVTreatment", "EnvLevelNames", "Treatments", "LNENV"),
        relation("FERTreatment", "FerLevelNames", "Treatments", "LNFER"),
        relation("HARTreatment", "HarLevelNames", "Treatments", "LNHAR"),
        relation("RESTreatment", "ResLevelNames", "Treatments", "LNRES"),
        relation("SATreatment", "SoilAnalysis", "Treatments", "LNSA"),
        relation("TILTreatment", "TillLevelNames", "Treatments", "LNTIL"),
        relation("SimTreatment", "SimulationControl", "Treatments", "LNSIM"),
        relation("Chem_Applications", "ChemLevelNames", "Chemicals", "LNCHE"),
        relation("ENV_Applications", "EnvLevelNames", "EnvironMod", "LNENV"),
        relation("FER_Applications", "FerLevelNames", "Fertilization", "LNFER"),
        relation("HAR_Applications", "HarLevelNames", "Harvest", "LNHAR"),
        relation("RES_Applications", "ResLevelNames", "Residue", "LNRES"),
        relation("SA_Applications", "SoilAnalysis", "SoilLayers", "LNSA"),
        relation("Till_Applications", "TillLevelNames", "Tillage", "LNTIL"),
        relation("Sim1", "SimulationControl", "SimulationControlManagement", "LNSIM"),
        relation("Sim2", "SimulationControl", "SimulationControlMethods", "LNSIM"),
        relation("Sim3", "SimulationControl", "SimulationControlOptions", "LNSIM"),
        relation("Sim4", "SimulationControl", "SimulationControlOutputs", "LNSIM"),
        relation("Sim5", "SimulationControl", "AutoManagementHarvest", "LNSIM"),
        relation("Sim6", "SimulationControl", "AutoManagementIrrigation", "LNSIM"),
        relation("Sim7", "SimulationControl", "AutoManagementNitrogen", "LNSIM"),
        relation("Sim8", "SimulationControl", "AutoManagementPlanting", "LNSIM"),
        relation("Sim9", "SimulationControl", "AutoManagementResidues", "LNSIM"),
        relation("Sim10", "SimulationControl", "AutoManagementSimdates", "LNSIM"),
    };
    return relations;
}

void SetRelations()
{
    database::createRelations(relationTable());
}

void DeleteRelations()
{
    QStringList names;
    for (const database::Relation& r : relationTable())
        names << r.name;
    database::deleteRelations(names);
}

void SetRelationsForecast()
{
    for (const database::Relation& r : relationTable()) {
        if (r.name == forecastRelation)
            createIgnoringErrors(r);
    }
}

void DeleteRelationsForecast()
{
    deleteIgnoringErrors(forecastRelation);
}

} // namespace quillon::validation
