#include "app/NewExperiment.h"

#include "app/AppState.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "editors/InitialConditionsPreparation.h"
#include "reference/SimDefaults.h"
#include "validation/LevelIntegrity.h"
#include "validation/TableRelations.h"

namespace quillon {

namespace {

// Level 1 of the simulation controls and treatment 1 from the defaults of
// the file's type. Treatment 1 names cultivar 1, which a new file hasn't got
// until one is chosen: the treatment is stored as a file's treatments are
// read, without the relations, and the level check leaves out the level
// that isn't there (the treatment table gives it the first cultivar later).
void startFromDefaults()
{
    reference::LoadSimDefaults();
    database::Transaction transaction;
    validation::DeleteRelations();
    reference::FillDefaltSim();
    validation::CheckLevels();
    validation::SetRelations();
    transaction.commit();
}

} // namespace

void Add_IC_Fld_Planting()
{
    database::Transaction transaction;
    database::insertRow(QStringLiteral("Fields"), { { QStringLiteral("LNFLD"), 1 } });
    database::insertRow(QStringLiteral("Planting"), { { QStringLiteral("LNPLT"), 1 } });
    editors::addInitialConditionsLevelOne();
    database::insertRow(QStringLiteral("IC_Water_Nitrogen"), { { QStringLiteral("LNIC"), 1 } });
    transaction.commit();
}

bool identificationNext(const ExperimentDetails& details, FileType type, const QString& cropCode)
{
    try {
        if (database::rowCount(QStringLiteral("Cultivars")) > 0
            || database::rowCount(QStringLiteral("Treatments")) > 0) {
            reference::LoadSimDefaults();
            return true;
        }
        ExperimentDetails accepted = details;
        if (type != FileType::Experimental) {
            accepted.CODE = QStringLiteral("");
        } else if (cropCode.isEmpty()) {
            msgBox(identity_text::selectCrop, MsgButtons::OK, MsgIcon::Exclamation);
            return false;
        } else {
            accepted.CODE = cropCode;
        }
        storeExperimentDetails(accepted);
        if (state().IsNewFile)
            startFromDefaults();
        else
            reference::LoadSimDefaults();
        return true;
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in cmdNext/frmExpIdentify."));
        return false;
    }
}

} // namespace quillon
