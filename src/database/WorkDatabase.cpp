#include "database/WorkDatabase.h"

#include "app/AppState.h"
#include "app/UserInterface.h"
#include "database/Rules.h"
#include "database/Schema.h"
#include "database/Sql.h"

#include <QFile>
#include <QSqlError>

namespace quillon::database {

namespace {

QString createStatement(const TableDef& table)
{
    QStringList columns;
    for (const FieldDef& field : table.fields)
        columns << QStringLiteral("[%1] %2").arg(field.name, columnDeclaration(field));
    return QStringLiteral("CREATE TABLE [%1] (%2)").arg(table.name, columns.join(QStringLiteral(", ")));
}

void createTable(const TableDef& table)
{
    exec(createStatement(table));
    for (const IndexDef& index : table.indexes) {
        QStringList fields;
        for (const QString& f : index.fields)
            fields << QLatin1Char('[') + f + QLatin1Char(']');
        // Index names belong to their table, as several tables share one.
        exec(QStringLiteral("CREATE %1INDEX [%2_%3] ON [%2] (%4)")
                 .arg(index.unique ? QStringLiteral("UNIQUE ") : QString(), table.name, index.name,
                     fields.join(QLatin1Char(','))));
    }
    installFieldChecks(table);
}

// Runs "Delete * From" over the list, but for the tables in `keep`; the
// first failure is reported with the tail and ends the list.
void deleteAll(const QStringList& tables, const QString& tail, const QStringList& keep = {})
{
    for (const QString& table : tables) {
        if (keep.contains(table, Qt::CaseInsensitive))
            continue;
        const RuntimeError e = tryExec(QStringLiteral("DELETE FROM [%1]").arg(table));
        if (e.number() != 0) {
            reportError(e.text(), tail);
            return;
        }
    }
}

const QStringList experimentTables = {
    QStringLiteral("Treatments"), QStringLiteral("Cultivars"), QStringLiteral("ICLayers"),
    QStringLiteral("InitialConditions"), QStringLiteral("Chemicals"), QStringLiteral("ChemLevelNames"),
    QStringLiteral("EnvironMod"), QStringLiteral("EnvLevelNames"), QStringLiteral("Fertilization"),
    QStringLiteral("FerLevelNames"), QStringLiteral("Fields"), QStringLiteral("GeneralInfo"),
    QStringLiteral("ExpDetails"), QStringLiteral("Harvest"), QStringLiteral("HarLevelNames"),
    QStringLiteral("IrrigApplications"), QStringLiteral("Irrigation"), QStringLiteral("Planting"),
    QStringLiteral("PlotInfo"), QStringLiteral("Residue"), QStringLiteral("ResLevelNames"),
    QStringLiteral("SoilLayers"), QStringLiteral("SoilAnalysis"), QStringLiteral("Tillage"),
    QStringLiteral("TillLevelNames")
};

const QStringList simulationTables = {
    QStringLiteral("AutoManagementHarvest"), QStringLiteral("AutoManagementSimdates"),
    QStringLiteral("AutoManagementIrrigation"), QStringLiteral("AutoManagementNitrogen"),
    QStringLiteral("AutoManagementPlanting"), QStringLiteral("AutoManagementResidues"),
    QStringLiteral("SimulationControlManagement"), QStringLiteral("SimulationControlMethods"),
    QStringLiteral("SimulationControlOptions"), QStringLiteral("SimulationControlOutputs"),
    QStringLiteral("SimulationControl")
};

const QStringList mapTables = { QStringLiteral("SoilData"), QStringLiteral("IrrManagement"),
    QStringLiteral("FerManagement"), QStringLiteral("ResManagement"), QStringLiteral("HarManagement"),
    QStringLiteral("IC_Water_Nitrogen") };

} // namespace

const QStringList& cleanDataBaseTables()
{
    static const QStringList tables = experimentTables + simulationTables + mapTables
        + QStringList { QStringLiteral("CodeLookup"), QStringLiteral("CodeStageLookup"),
            QStringLiteral("CropCodesLookup"), QStringLiteral("CropLookup"), QStringLiteral("SoilLookup"),
            QStringLiteral("SimLookUp"), QStringLiteral("TotalWeatherLookup"),
            QStringLiteral("WeatherLookup"), QStringLiteral("TERVAPRO") };
    return tables;
}

const QStringList& cleanDataBasePartiallyTables()
{
    static const QStringList tables = experimentTables + QStringList { QStringLiteral("ICSoil") }
        + simulationTables + QStringList { QStringLiteral("SoilLookup") } + mapTables;
    return tables;
}

void CleanDataBase() { deleteAll(cleanDataBaseTables(), QStringLiteral(" in CleanDatabase/frmMain.")); }

void CleanDataBase_Partially(const QStringList& keep)
{
    deleteAll(cleanDataBasePartiallyTables(),
        QStringLiteral(" in CleanDataBase_Partially/frmMain."), keep);
}

bool openWorkDB(const QString& path, QSqlError* error)
{
    closeWorkDB();
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName());
    db.setDatabaseName(path);
    if (!db.open()) {
        if (error)
            *error = db.lastError();
        return false;
    }
    QSqlQuery pragma(db);
    // The working database is a scratch copy of a file and of the suite's
    // lookups: speed matters more than surviving a power cut. Without a
    // synced journal on disk, a crash or power loss in the middle of a
    // write can leave pages half written and the file damaged. That is
    // acceptable because nothing in it is lost for good (deleting the file,
    // as Refresh does, rebuilds it from the suite and the experiment file)
    // and because Open and New check the file before they first use it in a
    // run (examineWorkDB): a damaged file is named as the culprit and the
    // user told to delete it, instead of failing later in some routine that
    // would blame a suite file.
    pragma.exec(QStringLiteral("PRAGMA synchronous = OFF"));
    pragma.exec(QStringLiteral("PRAGMA journal_mode = MEMORY"));
    // Does the file hold a database at all? A query fails if not.
    if (!pragma.exec(QStringLiteral("SELECT COUNT(*) FROM sqlite_master"))) {
        if (error)
            *error = pragma.lastError();
        closeWorkDB();
        return false;
    }
    return true;
}

void closeWorkDB()
{
    clearStatementCache();
    if (QSqlDatabase::contains(connectionName())) {
        {
            QSqlDatabase db = QSqlDatabase::database(connectionName(), false);
            db.close();
        }
        QSqlDatabase::removeDatabase(connectionName());
    }
}

bool isWorkDBOpen() { return QSqlDatabase::contains(connectionName()) && WorkDB().isOpen(); }

void buildSchema(int* stage)
{
    Transaction transaction;
    for (const SchemaStep& step : schemaSteps()) {
        if (stage && step.stage)
            *stage = step.stage;
        switch (step.kind) {
        case SchemaStep::Table:
            createTable(step.table);
            break;
        case SchemaStep::Statement:
            exec(step.statement);
            break;
        case SchemaStep::Progress:
            ui().progress(step.percent);
            break;
        }
    }
    transaction.commit();
}

void CreateDataBaseX()
{
    const QString path = state().WorkDBPath;
    if (QFile::exists(path)) {
        if (!isWorkDBOpen() || WorkDB().databaseName() != path)
            openWorkDB(path);
        return;
    }
    int stage = 2;
    try {
        if (!openWorkDB(path))
            throw RuntimeError(err::Other, WorkDB().lastError().text());
        buildSchema(&stage);
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in CreateDataBaseX(%1)").arg(stage));
        endProgram();
    }
}

} // namespace quillon::database
