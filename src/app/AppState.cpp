#include "app/AppState.h"

namespace quillon {

void CommentBuffers::stripLeadingLineBreaks()
{
    for (QString* buffer : all()) {
        if (!buffer->isEmpty())
            *buffer = buffer->mid(2);
    }
}

std::array<QString*, 15> CommentBuffers::all()
{
    return { &CommentsGeneral, &CommentsTreatments, &CommentsCultivars, &CommentsFields,
        &CommentsSoil, &CommentsIC, &CommentsPlanting, &CommentsIrrigation,
        &CommentsFertilizer, &CommentsResidue, &CommentsChemical, &CommentsTillage,
        &CommentsEnvironment, &CommentsHarvest, &CommentsSimulation };
}

void AppState::setExperimental()
{
    IsExperimental = true;
    IsSequence = IsSeasonal = IsSpatial = IsForecast = false;
}

void AppState::setTypeFromExtension(const QString& fileName)
{
    setExperimental();
    const QString kind = fileName.right(3).left(2).toLower();
    if (kind == QLatin1String("sq"))
        IsSequence = true;
    else if (kind == QLatin1String("sn"))
        IsSeasonal = true;
    else if (kind == QLatin1String("gs"))
        IsSpatial = true;
    else if (kind == QLatin1String("fc"))
        IsForecast = true;
    else
        return;
    IsExperimental = false;
}

AppState& state()
{
    static AppState s;
    return s;
}

} // namespace quillon
