#include "validation/LevelIntegrity.h"

#include "app/UserInterface.h"
#include "database/Sql.h"

#include <QSqlError>
#include <QSqlQuery>

#include <array>
#include <map>
#include <vector>

namespace quillon::validation {

namespace {

// The factor columns of Treatments in table order (behind TRTNO, ROTNO,
// ROTOPT and CRPNO), each with the table whose rows prove that a level
// exists.
struct FactorLevel {
    const char* column;
    const char* table;
};

constexpr std::array<FactorLevel, 13> factorLevels { {
    { "LNCU", "CULTIVARS" },
    { "LNFLD", "FIELDS" },
    { "LNSA", "SOILANALYSIS" },
    { "LNIC", "INITIALCONDITIONS" },
    { "LNPLT", "PLANTING" },
    { "LNIR", "IRRIGATION" },
    { "LNFER", "FERTILIZATION" },
    { "LNRES", "RESIDUE" },
    { "LNCHE", "CHEMICALS" },
    { "LNTIL", "TILLAGE" },
    { "LNENV", "ENVIRONMOD" },
    { "LNHAR", "HARVEST" },
    { "LNSIM", "SIMULATIONCONTROL" },
} };

struct TreatmentLevels {
    qint64 rowId;
    std::array<int, factorLevels.size()> levels;
};

std::vector<TreatmentLevels> readTreatments()
{
    QStringList columns { QStringLiteral("rowid") };
    for (const FactorLevel& f : factorLevels)
        columns << QStringLiteral("[%1]").arg(QLatin1String(f.column));
    QSqlQuery q = database::select(QStringLiteral("SELECT %1 FROM [Treatments] ORDER BY rowid")
                                       .arg(columns.join(QLatin1Char(','))));
    std::vector<TreatmentLevels> rows;
    while (q.next()) {
        TreatmentLevels row { q.value(0).toLongLong(), {} };
        for (size_t i = 0; i < factorLevels.size(); ++i) {
            const QVariant v = q.value(int(i) + 1);
            row.levels[i] = v.isNull() ? 0 : v.toInt();
        }
        rows.push_back(row);
    }
    return rows;
}

} // namespace

void CheckLevels()
{
    try {
        // The treatments are read first, so that the repairs don't change
        // the table under an open scan.
        const std::vector<TreatmentLevels> treatments = readTreatments();
        if (treatments.empty())
            return;

        // One prepared query per factor, bound anew for each level and kept
        // for the whole pass.
        std::array<QSqlQuery, factorLevels.size()> levelQueries;
        for (size_t i = 0; i < factorLevels.size(); ++i) {
            QSqlQuery& q = levelQueries[i];
            q = QSqlQuery(database::WorkDB());
            q.setForwardOnly(true);
            if (!q.prepare(QStringLiteral("SELECT * FROM [%1] WHERE [%2]= ?")
                               .arg(QLatin1String(factorLevels[i].table),
                                   QLatin1String(factorLevels[i].column))))
                throw database::classify(q.lastError());
        }

        // Treatments share their levels: each level is looked up once.
        std::map<std::pair<size_t, int>, bool> known;
        for (const TreatmentLevels& treatment : treatments) {
            for (size_t i = 0; i < factorLevels.size(); ++i) {
                const int level = treatment.levels[i];
                if (level == 0)
                    continue;
                auto found = known.find({ i, level });
                if (found == known.end()) {
                    QSqlQuery& q = levelQueries[i];
                    q.bindValue(0, level);
                    if (!q.exec())
                        throw database::classify(q.lastError());
                    found = known.emplace(std::make_pair(i, level), q.next()).first;
                    q.finish();
                }
                if (!found->second) {
                    database::exec(
                        QStringLiteral("UPDATE [Treatments] SET [%1] = NULL WHERE rowid = ?")
                            .arg(QLatin1String(factorLevels[i].column)),
                        { treatment.rowId });
                }
            }
        }
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in CheckLevels/Module."));
    }
}

} // namespace quillon::validation
