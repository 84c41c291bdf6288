#include "editors/InitialConditionsFill.h"

#include "app/RuntimeError.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "editors/InitialConditionsTexts.h"

#include <cmath>
#include <functional>

namespace quillon::editors {

using database::exec;
using database::select;

namespace {

// The density taken when the profile doesn't give one for every layer.
constexpr double defaultBulkDensity = 1.2;

const QString icLayers = QStringLiteral("ICLayers");

double profileDepth(const std::vector<SoilLayer>& layers)
{
    if (layers.empty())
        throw RuntimeError(9, QStringLiteral("Subscript out of range"));
    const double depth = layers.back().SLB;
    if (depth == 0)
        throw RuntimeError(11, QStringLiteral("Division by zero"));
    return depth;
}

void deleteLayers(int level)
{
    exec(QStringLiteral("DELETE FROM ICLayers WHERE LNIC = ?"), { level });
}

// The level's summary in IC_Water_Nitrogen: the soil and the numbers given,
// on the level's row, or on a new one. The columns hold whole numbers.
void storeSummary(
    int level, const QString& soil, std::optional<double> water, std::optional<double> nitrogen)
{
    database::Values values { { QStringLiteral("SLNO"), soil } };
    if (water)
        values.push_back({ QStringLiteral("Water"), std::nearbyint(*water) });
    if (nitrogen)
        values.push_back({ QStringLiteral("Nitrogen"), std::nearbyint(*nitrogen) });
    if (database::scalar(
            QStringLiteral("SELECT 1 FROM IC_Water_Nitrogen WHERE LNIC = ?"), { level })
            .isValid()) {
        QStringList set;
        QVariantList params;
        for (const auto& [column, value] : values) {
            set << column + QStringLiteral(" = ?");
            params << value;
        }
        params << level;
        exec(QStringLiteral("UPDATE IC_Water_Nitrogen SET %1 WHERE LNIC = ?")
                 .arg(set.join(QStringLiteral(", "))),
            params);
    } else if (!soil.isEmpty()) {
        values.push_back({ QStringLiteral("LNIC"), level });
        database::insertRow(QStringLiteral("IC_Water_Nitrogen"), values);
    }
}

// Runs a recalculation in one transaction; a failure is reported and
// undoes it.
bool recalculation(const QString& soil, const std::function<void()>& steps)
{
    if (soil.isEmpty())
        return false;
    try {
        database::Transaction transaction;
        steps();
        transaction.commit();
        return true;
    } catch (const RuntimeError& e) {
        reportError(e.text(), ic_text::recalculateTail);
        return false;
    }
}

} // namespace

std::vector<SoilLayer> soilDataLayers()
{
    std::vector<SoilLayer> layers;
    QSqlQuery q
        = select(QStringLiteral("SELECT SLB, SLLL, SDUL, SBDM FROM SoilData ORDER BY rowid"));
    while (q.next())
        layers.push_back({ q.value(0).toDouble(), q.value(1).toDouble(), q.value(2).toDouble(),
            q.value(3).toDouble() });
    return layers;
}

double roundTo(double value, int decimals)
{
    const double scale = std::pow(10.0, decimals);
    return std::nearbyint(value * scale) / scale;
}

double initialWater(const SoilLayer& layer, double water)
{
    return roundTo((layer.SDUL - layer.SLLL) * water / 100 + layer.SLLL, 3);
}

double meanBulkDensity(const std::vector<SoilLayer>& layers)
{
    const double depth = profileDepth(layers);
    for (const SoilLayer& layer : layers) {
        if (layer.SBDM == 0 || layer.SBDM == -99)
            return defaultBulkDensity;
    }
    double mean = layers.front().SLB * layers.front().SBDM / depth;
    for (size_t i = 1; i < layers.size(); ++i)
        mean += (layers[i].SLB - layers[i - 1].SLB) * layers[i].SBDM / depth;
    return mean;
}

NitrogenContents nitrogenContents(const std::vector<SoilLayer>& layers, double nitrogen)
{
    const double density = meanBulkDensity(layers);
    const double soilMass = profileDepth(layers) * density * 0.1;
    return { roundTo(nitrogen * 0.1 / soilMass, 1), roundTo(nitrogen * 0.9 / soilMass, 1) };
}

bool ICFillAll(double water, double nitrogen, int level, const QString& soil)
{
    return recalculation(soil, [&] {
        const std::vector<SoilLayer> layers = soilDataLayers();
        deleteLayers(level);
        if (layers.empty()) {
            database::insertRow(
                icLayers, { { QStringLiteral("LNIC"), level }, { QStringLiteral("DLAYRI"), 5 } });
        } else {
            const NitrogenContents n = nitrogenContents(layers, nitrogen);
            for (const SoilLayer& layer : layers)
                database::insertRow(icLayers,
                    { { QStringLiteral("LNIC"), level }, { QStringLiteral("DLAYRI"), layer.SLB },
                        { QStringLiteral("SWINIT"), initialWater(layer, water) },
                        { QStringLiteral("INH4"), n.INH4 }, { QStringLiteral("INO3"), n.INO3 } });
        }
        storeSummary(level, soil, water, nitrogen);
    });
}

bool ICFillWater(double water, int level, const QString& soil)
{
    return recalculation(soil, [&] {
        const std::vector<SoilLayer> layers = soilDataLayers();
        std::vector<qint64> rows;
        QSqlQuery old = select(
            QStringLiteral("SELECT rowid FROM ICLayers WHERE LNIC = ? ORDER BY DLAYRI, rowid"),
            { level });
        while (old.next())
            rows.push_back(old.value(0).toLongLong());
        if (rows.size() == layers.size()) {
            for (size_t i = 0; i < rows.size(); ++i)
                exec(QStringLiteral("UPDATE ICLayers SET SWINIT = ? WHERE rowid = ?"),
                    { initialWater(layers[i], water), rows[i] });
        } else {
            deleteLayers(level);
            for (const SoilLayer& layer : layers)
                database::insertRow(icLayers,
                    { { QStringLiteral("LNIC"), level }, { QStringLiteral("DLAYRI"), layer.SLB },
                        { QStringLiteral("SWINIT"), initialWater(layer, water) } });
        }
        storeSummary(level, soil, water, std::nullopt);
    });
}

bool ICFillNitrogen(double nitrogen, int level, const QString& soil)
{
    return recalculation(soil, [&] {
        const NitrogenContents n = nitrogenContents(soilDataLayers(), nitrogen);
        exec(QStringLiteral("UPDATE ICLayers SET INH4 = ?, INO3 = ? WHERE LNIC = ?"),
            { n.INH4, n.INO3, level });
        storeSummary(level, soil, std::nullopt, nitrogen);
    });
}

} // namespace quillon::editors
