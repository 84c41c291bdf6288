#include "editors/FindIIRV.h"

#include "app/UserInterface.h"
#include "database/Sql.h"
#include "editors/EventMember.h"

namespace quillon::editors {

bool FindIIRV(int level)
{
    try {
        return database::scalar(QStringLiteral("SELECT 1 FROM Applications WHERE LNIR = %1 AND "
                                               "IIRV IS NOT NULL AND IIRV <> 0 AND IIRV <> -99 "
                                               "LIMIT 1")
                                    .arg(level))
            .isValid();
    } catch (const RuntimeError& e) {
        reportError(
            e.text(), eventMember(QStringLiteral("frmIrrigation"))->tail(Routine::FindIIRV));
        return false;
    }
}

} // namespace quillon::editors
