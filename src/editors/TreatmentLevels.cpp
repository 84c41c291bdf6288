#include "editors/TreatmentLevels.h"

#include "database/Relations.h"
#include "database/Sql.h"
#include "validation/TableRelations.h"

namespace quillon::editors {

TreatmentLevels::TreatmentLevels(QString levelField)
    : m_levelField(std::move(levelField))
{
}

void TreatmentLevels::capture()
{
    m_levels.clear();
    QSqlQuery q = database::select(
        QStringLiteral("SELECT [%1] FROM Treatments ORDER BY rowid").arg(m_levelField));
    while (q.next())
        m_levels.push_back(q.value(0));
}

void TreatmentLevels::restore(const QString& relationName) const
{
    // The n-th treatment of the table takes the n-th remembered level.
    QSqlQuery rows
        = database::select(QStringLiteral("SELECT rowid FROM Treatments ORDER BY rowid"));
    std::vector<qint64> treatments;
    while (rows.next())
        treatments.push_back(rows.value(0).toLongLong());
    rows.finish();
    const QString update
        = QStringLiteral("UPDATE Treatments SET [%1] = ? WHERE rowid = ?").arg(m_levelField);
    for (size_t i = 0; i < std::min(treatments.size(), m_levels.size()); ++i)
        database::exec(update, { m_levels[i], treatments[i] });
    for (const database::Relation& relation : validation::relationTable()) {
        if (relation.name.compare(relationName, Qt::CaseInsensitive) == 0)
            database::createRelation(relation);
    }
}

void dropRelation(const QString& name)
{
    if (database::relationExists(name))
        database::deleteRelation(name);
}

} // namespace quillon::editors
