#include "app/OpenExperiment.h"

#include "app/AppState.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "database/WorkDBCheck.h"
#include "database/WorkDatabase.h"
#include "format/ReadFile.h"
#include "reference/CodeTables.h"
#include "reference/FillAllLookups.h"
#include "reference/SoilLookups.h"
#include "validation/LevelIntegrity.h"
#include "validation/ManagementRepairs.h"
#include "validation/ManagementTables.h"
#include "validation/TableRelations.h"

#include <QFile>
#include <QFileInfo>

namespace quillon {

namespace {

// A working database whose profile table is empty was left half-built: it
// is deleted so that it is built anew. A damaged file is beyond that: the
// user is told to delete it, and the program ends; so it does for one that
// can't be read at all, with `unreadableMessage`.
void dropDamagedWorkDatabase(const QString& unreadableMessage)
{
    const QString path = state().WorkDBPath;
    if (!QFile::exists(path))
        return;
    switch (database::examineWorkDB(path)) {
    case database::WorkDBCondition::Sound:
        return;
    case database::WorkDBCondition::Empty:
        database::closeWorkDB();
        QFile::remove(path);
        return;
    case database::WorkDBCondition::Damaged:
        database::reportDamagedWorkDB();
    case database::WorkDBCondition::Unreadable:
        msgBox(unreadableMessage);
        endProgram();
    }
}

} // namespace

void clearLastDocument()
{
    validation::DeleteRelations();
    // The soil listing stays when the soil files are as it found them: the
    // soil lookup below gives the same rows back without refilling the table.
    database::CleanDataBase_Partially(reference::SoilLookupStands()
            ? QStringList { QStringLiteral("SoilLookup") }
            : QStringList());
    reference::CreateSIMLookUp();
    reference::CreateSoilLookup();
}

void fillManagementTables()
{
    validation::FillIrrManagement();
    validation::FillFerManagement();
    validation::FillResManagement();
    validation::FillHarManagement();
}

void prepareWorkDatabase(const QString& unreadableMessage)
{
    dropDamagedWorkDatabase(unreadableMessage);
    const bool kept = QFile::exists(state().WorkDBPath);
    database::CreateDataBaseX();
    ui().progress(15);
    if (kept) {
        clearLastDocument();
    } else {
        reference::Fill_All_Lookups();
        reference::CreateSIMLookUp();
    }
}

void openExperiment(const QString& path)
{
    AppState& s = state();
    ui().progress(0);
    s.setTypeFromExtension(QFileInfo(path).fileName());
    ui().progress(5);
    prepareWorkDatabase();
    // One transaction for the reading: the file's rows, the repairs and the
    // relations reach the disk together. It begins once the database is
    // open (the first Open of a run opens it above); without it every row
    // would lock and unlock the file on its own.
    database::Transaction transaction;
    ui().progress(30);
    s.CommandArgs = QStringList(8, QString());
    s.comments.clear();
    s.NegativeEnvValue = false;
    format::ReadFile(path);
    ui().progress(60);
    validation::ChangePlantingMethod();
    ui().progress(95);
    s.comments.stripLeadingLineBreaks();
    validation::CheckLevels();
    validation::SetRelations();
    ui().progress(99);
    fillManagementTables();
    reference::CheckOn_ICSoil_Empty();
    database::exec(QStringLiteral("INSERT INTO IC_Water_Nitrogen (LNIC) SELECT LNIC FROM InitialConditions"));
    transaction.commit();
    ui().progress(100);
}

} // namespace quillon
