#pragma once

#include "editors/CultivarEditor.h"
#include "support/FakeLevelScreen.h"

namespace quillon::test {

// The cultivar editor's window as its routines see it: a current row, the
// two lists and the picture as they were last shown.
class FakeCultivarScreen final
    : public FakeLevelScreen<editors::CultivarScreen, editors::CultivarEditor> {
public:
    void setCrops(const QStringList& names) override { crops = names; }
    void selectCrop(int r) override { crop = r; }
    void setCultivars(const QStringList& descriptions, int chosen) override
    {
        cultivars = descriptions;
        cultivar = chosen;
    }
    void showPicture(const QString& path) override { picture = path; }

    QString selectedCrop() const { return crops.value(crop); }
    QString selectedCultivar() const { return cultivars.value(cultivar); }

    QStringList crops;
    int crop = -1;
    QStringList cultivars;
    int cultivar = -1;
    QString picture;
};

} // namespace quillon::test
