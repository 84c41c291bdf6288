#include "editors/EditorForms.h"

#include "app/AppState.h"
#include "app/DocumentCommands.h"
#include "app/ExpIdentity.h"

#include <array>

namespace quillon::editors {

namespace {

constexpr std::array<const char*, 14> names = { "frmViewTreatments", "frmCult1", "frmFields",
    "frmSoilAnalysis", "frmInitCond", "frmPlantingEd", "frmIrrigation", "frmFertEdit",
    "frmResidueEdit", "frmChemEdit", "frmTillEdit", "frmEnvMod", "frmHarvest", "frmSim" };

size_t indexOf(EditorForm form)
{
    return static_cast<size_t>(form);
}

} // namespace

QString formName(EditorForm form)
{
    return QLatin1String(names.at(indexOf(form)));
}

std::optional<EditorForm> formNamed(const QString& name)
{
    for (size_t i = 0; i < names.size(); ++i) {
        if (name.compare(QLatin1String(names[i]), Qt::CaseInsensitive) == 0)
            return static_cast<EditorForm>(i);
    }
    return std::nullopt;
}

void markOpen(EditorForm form)
{
    state().EditorOpen.fill(false);
    state().EditorOpen.at(indexOf(form)) = true;
}

void markClosed(EditorForm form)
{
    state().EditorOpen.at(indexOf(form)) = false;
}

bool isOpen(EditorForm form)
{
    return state().EditorOpen.at(indexOf(form));
}

void closeOtherEditors()
{
    const auto flags = state().EditorOpen;
    documentHost().closeEditors();
    state().EditorOpen = flags;
}

std::optional<EditorForm> openForm()
{
    for (size_t i = 0; i < names.size(); ++i) {
        if (state().EditorOpen.at(i))
            return static_cast<EditorForm>(i);
    }
    return std::nullopt;
}

QString editorCaption(const QString& stem)
{
    const AppState& s = state();
    const QString head = stem + QLatin1Char(' ') + s.FileTypeLabel + QStringLiteral(" -");
    return s.ExpFilePath.isEmpty() ? head : captionWithFile(head, s.ExpFilePath);
}

} // namespace quillon::editors
