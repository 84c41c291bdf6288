#include "editors/gui/EditorHost.h"

#include "editors/CultivarEditor.h"
#include "editors/EditorForms.h"
#include "editors/EventEditor.h"
#include "editors/FieldEditor.h"
#include "editors/InitialConditionsEditor.h"
#include "editors/PlantingEditor.h"
#include "editors/SimEditor.h"
#include "editors/SoilAnalysisEditor.h"
#include "editors/TreatmentEditor.h"
#include "editors/gui/EditorWindow.h"
#include "editors/gui/frmChemEdit.h"
#include "editors/gui/frmCult1.h"
#include "editors/gui/frmEnvMod.h"
#include "editors/gui/frmFertEdit.h"
#include "editors/gui/frmFields.h"
#include "editors/gui/frmHarvest.h"
#include "editors/gui/frmInitCond.h"
#include "editors/gui/frmIrrigation.h"
#include "editors/gui/frmPlantingEd.h"
#include "editors/gui/frmResidueEdit.h"
#include "editors/gui/frmSim.h"
#include "editors/gui/frmSoilAnalysis.h"
#include "editors/gui/frmTillEdit.h"
#include "editors/gui/frmViewTreatments.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace quillon {

namespace {

// The main window's entries whose keys are editor keys too (Ctrl+N, Ctrl+O,
// Ctrl+P).
const char* const sharedKeyEntries[] = { "mnuFileNew", "mnuFileOpen", "mnuPrint" };

// An event editor: the frame's menu handler on the member, then its window.
template <typename Window>
std::pair<std::function<bool()>, std::function<EditorWindow*()>> eventEditor(const char* form)
{
    const editors::EventMember* member = editors::eventMember(QLatin1String(form));
    return { [member] { return editors::EventEditor::openEditor(*member); },
        [] { return new Window; } };
}

} // namespace

EditorHost::EditorHost(QMdiArea* mdi, Action action, QObject* parent)
    : QObject(parent)
    , m_mdi(mdi)
    , m_action(std::move(action))
{
    const auto add = [this](const char* form, auto entry) {
        m_forms[QLatin1String(form)] = { entry.first, entry.second };
    };
    add("frmFertEdit", eventEditor<frmFertEdit>("frmFertEdit"));
    add("frmResidueEdit", eventEditor<frmResidueEdit>("frmResidueEdit"));
    add("frmChemEdit", eventEditor<frmChemEdit>("frmChemEdit"));
    add("frmTillEdit", eventEditor<frmTillEdit>("frmTillEdit"));
    add("frmIrrigation", eventEditor<frmIrrigation>("frmIrrigation"));
    add("frmHarvest", eventEditor<frmHarvest>("frmHarvest"));
    add("frmEnvMod", eventEditor<frmEnvMod>("frmEnvMod"));
    m_forms[QStringLiteral("frmViewTreatments")]
        = { editors::mnuViewTreatments_Click, [] { return new frmViewTreatments; } };
    m_forms[QStringLiteral("frmCult1")]
        = { editors::mnuEditCultivar_Click, [] { return new frmCult1; } };
    m_forms[QStringLiteral("frmPlantingEd")]
        = { editors::mnuEditPlanting_Click, [] { return new frmPlantingEd; } };
    m_forms[QStringLiteral("frmFields")]
        = { editors::mnuEditField_Click, [] { return new frmFields; } };
    m_forms[QStringLiteral("frmSoilAnalysis")]
        = { editors::mnuEditSoil_Click, [] { return new frmSoilAnalysis; } };
    m_forms[QStringLiteral("frmInitCond")]
        = { editors::mnuEditInitCond_Click, [] { return new frmInitCond; } };
    // The simulation controls open on General from their own entry, and on
    // the matching tab from Simulation Environment and Simulation Management.
    m_forms[QStringLiteral("frmSim")]
        = { editors::EditSimOptGeneral_Click, [] { return new frmSim; } };
    m_forms[QStringLiteral("frmSim/Methods")]
        = { editors::EditSimOptGeneral_Click, [] { return new frmSim(frmSim::Tab::Methods); } };
    m_forms[QStringLiteral("frmSim/Management")]
        = { editors::EditSimOptGeneral_Click, [] { return new frmSim(frmSim::Tab::Management); } };
    connect(m_mdi, &QMdiArea::subWindowActivated, this,
        [this](QMdiSubWindow* active) { giveKeysToEditor(active && active == m_child); });
}

bool EditorHost::knows(const QString& formName) const
{
    return m_forms.count(formName) > 0;
}

void EditorHost::open(const QString& formName)
{
    const auto it = m_forms.find(formName);
    if (it == m_forms.end() || !it->second.menuHandler())
        return;
    // Loaded before it is shown, so that it can size itself to what it holds.
    EditorWindow* window = it->second.create();
    window->Form_Load();
    show(window);
}

void EditorHost::show(EditorWindow* window)
{
    m_window = window;
    m_child = m_mdi->addSubWindow(window);
    m_child->setWindowIcon(QIcon());
    connect(window, &EditorWindow::unloaded, this, [this] { giveKeysToEditor(false); });
    // The editor takes the top left of the frame, as large as it wants to be
    // and the frame allows.
    const QSize room = m_mdi->viewport()->size();
    m_child->resize(m_child->sizeHint().expandedTo(window->size()).boundedTo(room));
    m_child->move(0, 0);
    m_child->showNormal();
    m_mdi->setActiveSubWindow(m_child);
    giveKeysToEditor(true);
}

QString EditorHost::closeEditor()
{
    const std::optional<editors::EditorForm> flagged = editors::openForm();
    if (m_child)
        m_child->close();
    m_window = nullptr;
    m_child = nullptr;
    return flagged ? editors::formName(*flagged) : QString();
}

void EditorHost::giveKeysToEditor(bool editorActive)
{
    for (const char* name : sharedKeyEntries) {
        QAction* action = m_action(QLatin1String(name));
        if (!action)
            continue;
        const QString key = QLatin1String(name);
        if (editorActive && !m_takenKeys.count(key)) {
            m_takenKeys[key] = action->shortcut();
            action->setShortcut({});
        } else if (!editorActive && m_takenKeys.count(key)) {
            action->setShortcut(m_takenKeys[key]);
            m_takenKeys.erase(key);
        }
    }
}

} // namespace quillon
