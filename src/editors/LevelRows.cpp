#include "editors/LevelRows.h"

#include "app/UserInterface.h"
#include "database/Sql.h"
#include "editors/EditorTexts.h"
#include "format/NumberText.h"

namespace quillon::editors {

int nextLevel(const QString& table, const QString& levelField)
{
    return database::scalar(QStringLiteral("SELECT MAX([%1]) FROM [%2]").arg(levelField, table))
               .toInt()
        + 1;
}

QStringList treatmentsUsing(const QString& levelField, int level)
{
    QStringList treatments;
    QSqlQuery q = database::select(
        QStringLiteral("SELECT TRTNO FROM Treatments WHERE [%1] = ? ORDER BY rowid")
            .arg(levelField),
        { level });
    while (q.next())
        treatments << q.value(0).toString();
    return treatments;
}

bool deleteUnusedLevel(
    const QString& table, const QString& levelField, int level, const QString& levelWord)
{
    const QStringList treatments = treatmentsUsing(levelField, level);
    if (!treatments.isEmpty()) {
        ui().deletionWarning(levelWord, treatments);
        return false;
    }
    if (msgBox(text::deleteLevel + QLatin1Char(' ') + QString::number(level) + QLatin1Char('?'),
            MsgButtons::YesNoDefaultNo, MsgIcon::Question)
        != MsgAnswer::Yes)
        return false;
    database::exec(
        QStringLiteral("DELETE FROM [%1] WHERE [%2] = ?").arg(table, levelField), { level });
    return true;
}

} // namespace quillon::editors
