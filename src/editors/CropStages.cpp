#include "editors/CropStages.h"

#include "database/Sql.h"

namespace quillon::editors {

using database::select;

QStringList cropsOfCultivars()
{
    QStringList crops;
    QSqlQuery q = select(QStringLiteral(
        "SELECT DISTINCT CropLookup.Name, CropLookup.CODE FROM CropLookup "
        "INNER JOIN Cultivars ON CropLookup.CODE = Cultivars.CODE ORDER BY CropLookup.Name"));
    while (q.next())
        crops << q.value(0).toString();
    return crops;
}

QStringList stagesOf(const QString& crop)
{
    QStringList stages;
    QSqlQuery q = select(
        QStringLiteral("SELECT Description FROM CodeStageLookup WHERE Name = ? ORDER BY rowid"),
        { crop.toUpper() });
    while (q.next())
        stages << q.value(0).toString();
    return stages;
}

QString stageCode(const QString& crop, const QString& description)
{
    return database::scalar(QStringLiteral("SELECT Code FROM CodeStageLookup WHERE Name = ? AND "
                                           "Description = ? ORDER BY rowid LIMIT 1"),
        { crop.toUpper(), description })
        .toString();
}

} // namespace quillon::editors
