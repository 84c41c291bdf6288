#pragma once

#include "editors/LevelScreen.h"

#include <QString>
#include <QStringList>

namespace quillon::editors {

// The window of the cultivar editor as its routines see it: where the level
// grid DBGrid1 stands, and what the routines tell the window to show. The
// grid's rows are the editor's record source Data1; the window implements
// this, tests fake it.
class CultivarScreen : public LevelScreen {
public:
    // ListCrop: the crop names.
    virtual void setCrops(const QStringList& names) = 0;
    // Moves ListCrop's selection to a row (-1: none); a routine's move
    // chooses nothing.
    virtual void selectCrop(int row) = 0;
    // ListDescription: the cultivars of the selected crop, and the one of the
    // level (-1 for none).
    virtual void setCultivars(const QStringList& descriptions, int selected) = 0;
    // The picture of the level's crop: a file that may not exist.
    virtual void showPicture(const QString& path) = 0;
};

} // namespace quillon::editors
