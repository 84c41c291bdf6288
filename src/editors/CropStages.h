#pragma once

#include <QString>
#include <QStringList>

namespace quillon::editors {

// The crops that the experiment's cultivars use, by their names in
// CropLookup, as the harvest editor's ComboCrop offers them.
QStringList cropsOfCultivars();

// The growth stages of a crop in CodeStageLookup, whose names are in
// capitals: their descriptions, and the code of one of them ("" when the
// crop has no such stage).
QStringList stagesOf(const QString& crop);
QString stageCode(const QString& crop, const QString& description);

} // namespace quillon::editors
