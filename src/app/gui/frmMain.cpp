#include "app/gui/frmMain.h"

#include "app/AppState.h"
#include "app/ChangesOnSave.h"
#include "app/LocaleSettings.h"
#include "app/RuntimeError.h"
#include "app/StartUp.h"
#include "app/UserInterface.h"
#include "app/gui/HelpMenu.h"
#include "app/gui/frmExpidentify.h"
#include "app/gui/frmSaveFile.h"
#include "app/gui/frmStartRefresh.h"
#include "app/gui/frmStart_New.h"
#include "editors/gui/EditorHost.h"
#include "format/WriteFile.h"
#include "print/gui/frmView.h"
#include "validation/ExperimentDebugger.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>

namespace quillon {

namespace {

// Design size of the window in the program's units (15 to a pixel).
constexpr float DesignWidth = 9600;
constexpr float DesignHeight = 7200;
constexpr float UnitsPerPixel = 15;

} // namespace

frmMain::frmMain(QWidget* parent)
    : QMainWindow(parent)
    , m_mdi(new QMdiArea(this))
    , m_editors(new EditorHost(
          m_mdi, [this](const QString& name) { return menuAction(name); }, this))
{
    setObjectName(QStringLiteral("frmMain"));
    m_mdi->setObjectName(QStringLiteral("mdiArea"));
    m_mdi->setBackground(palette().brush(QPalette::Dark));
    setCentralWidget(m_mdi);
    buildMenus();
    resize(960, 720);
    setDocumentHost(this);
}

frmMain::~frmMain()
{
    setDocumentHost(nullptr);
}

QAction* frmMain::addEntry(
    QMenu* menu, const char* name, const QString& caption, const QKeySequence& key)
{
    auto* action = menu->addAction(caption);
    action->setObjectName(QLatin1String(name));
    if (!key.isEmpty())
        action->setShortcut(key);
    m_actions[QLatin1String(name)] = action;
    return action;
}

void frmMain::buildMenus()
{
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->setObjectName(QStringLiteral("mnuFile"));
    addEntry(file, "mnuFileNew", tr("&New"), QKeySequence::New);
    addEntry(file, "mnuFileOpen", tr("&Open..."), QKeySequence::Open);
    addEntry(file, "mnuFileClose", tr("&Close"));
    file->addSeparator();
    addEntry(file, "mnuFileSave", tr("&Save"), QKeySequence::Save);
    addEntry(file, "mnuFileSaveAs", tr("Save &As..."));
    file->addSeparator();
    addEntry(file, "mnuFilePrintPreview", tr("Print Pre&view"));
    addEntry(file, "mnuPrint", tr("&Print..."), QKeySequence::Print);
    file->addSeparator();
    addEntry(file, "mnuRefresh2", tr("&Refresh Database"));
    file->addSeparator();
    addEntry(file, "mnuFileExit", tr("E&xit"));

    QMenu* edit = menuBar()->addMenu(tr("&Edit"));
    edit->setObjectName(QStringLiteral("mnuEdit"));
    addEntry(edit, "mnuEditCultivar", tr("&Cultivars"));
    addEntry(edit, "mnuEditField", tr("&Fields"));
    addEntry(edit, "mnuEditSoil", tr("&Soil Analysis"));
    addEntry(edit, "mnuEditInitCond", tr("&Initial Conditions"));
    addEntry(edit, "mnuEditPlanting", tr("&Planting"));
    addEntry(edit, "mnuEditIrrigation", tr("I&rrigation"));
    addEntry(edit, "mnuEditFertilizer", tr("F&ertilizers"));
    addEntry(edit, "mnuEditResidue", tr("Resi&dues"));
    addEntry(edit, "mnuEditChemicalApp", tr("C&hemicals"));
    addEntry(edit, "mnuEditTillage", tr("&Tillage"));
    addEntry(edit, "mnuEditEnvMod", tr("Environment &Modifications"));
    addEntry(edit, "mnuHarvest", tr("Har&vest"));

    QMenu* view = menuBar()->addMenu(tr("&View"));
    view->setObjectName(QStringLiteral("mnuView"));
    addEntry(view, "mnuViewTreatments", tr("&Treatments"));
    addEntry(view, "EditSimOptGeneral", tr("&Simulation Controls"));
    addEntry(view, "mnuEnvironEdit", tr("Simulation &Environment"));
    addEntry(view, "mnuManageEdit", tr("Simulation &Management"));
    view->addSeparator();
    addEntry(view, "mnuViewCheck", tr("&Check Experiment"));
    addEntry(view, "mnuViewChanges", tr("Chan&ges on Save"));
    addEntry(view, "mnuViewBugs", tr("&Debug"));
    addEntry(view, "mnuErrors", tr("&Errors"));

    QAction* refresh = menuBar()->addAction(tr("&Refresh"));
    refresh->setObjectName(QStringLiteral("mnuRefresh"));
    m_actions[QStringLiteral("mnuRefresh")] = refresh;
    addHelpMenu(this);

    connectEntry("mnuFileNew", mnuFileNew_Click);
    connectEntry("mnuFileOpen", mnuFileOpen_Click);
    connectEntry("mnuFileClose", [] { mnuFileClose_Click(); });
    connectEntry("mnuFileSave", mnuFileSave_Click);
    connectEntry("mnuFileSaveAs", mnuFileSaveAs_Click);
    connectEntry("mnuFilePrintPreview", [this] { mnuFilePrintPreview_Click(); });
    connectEntry("mnuPrint", [this] { mnuPrint_Click(); });
    connectEntry("mnuRefresh", mnuRefresh_Click);
    connectEntry("mnuRefresh2", mnuRefresh_Click);
    connectEntry("mnuViewCheck", [this] { mnuViewCheck_Click(); });
    connectEntry("mnuViewChanges", [this] { mnuViewChanges_Click(); });
    connect(menuAction(QStringLiteral("mnuFileExit")), &QAction::triggered, this, &QWidget::close);

    // The editors' entries and the forms they open. Debug and Errors stay
    // greyed out: no command enables them.
    const std::pair<const char*, const char*> editorEntries[]
        = { { "mnuEditCultivar", "frmCult1" }, { "mnuEditField", "frmFields" },
              { "mnuEditSoil", "frmSoilAnalysis" }, { "mnuEditInitCond", "frmInitCond" },
              { "mnuEditPlanting", "frmPlantingEd" }, { "mnuEditIrrigation", "frmIrrigation" },
              { "mnuEditFertilizer", "frmFertEdit" }, { "mnuEditResidue", "frmResidueEdit" },
              { "mnuEditChemicalApp", "frmChemEdit" }, { "mnuEditTillage", "frmTillEdit" },
              { "mnuEditEnvMod", "frmEnvMod" }, { "mnuHarvest", "frmHarvest" },
              { "mnuViewTreatments", "frmViewTreatments" }, { "EditSimOptGeneral", "frmSim" },
              { "mnuEnvironEdit", "frmSim/Methods" }, { "mnuManageEdit", "frmSim/Management" } };
    for (const auto& [name, form] : editorEntries) {
        QAction* action = menuAction(QLatin1String(name));
        const QString formName = QLatin1String(form);
        connect(action, &QAction::triggered, this, [this, formName] { m_editors->open(formName); });
    }
}

void frmMain::connectEntry(const char* name, std::function<void()> command)
{
    connect(
        menuAction(QLatin1String(name)), &QAction::triggered, this, [command = std::move(command)] {
            try {
                command();
            } catch (const RuntimeError& e) {
                reportError(e.text(), QStringLiteral(" in frmMain."));
            }
        });
}

QAction* frmMain::menuAction(const QString& name) const
{
    const auto it = m_actions.find(name);
    return it == m_actions.end() ? nullptr : it->second;
}

void frmMain::setMenuState(MenuState menuState)
{
    for (const MenuEntryState& entry : menuTable())
        setEntryEnabled(QLatin1String(entry.name), entryEnabledIn(entry, menuState));
    if (menuState == MenuState::Empty)
        showBackground(true);
}

void frmMain::setEntryEnabled(const QString& name, bool enabled)
{
    if (QAction* action = menuAction(name))
        action->setEnabled(enabled);
}

bool frmMain::isEntryEnabled(const QString& name) const
{
    const QAction* action = menuAction(name);
    return action && action->isEnabled();
}

void frmMain::LoadNewDoc()
{
    ++m_documentCount;
    QMdiSubWindow* active = m_mdi->activeSubWindow();
    auto* background = new QLabel;
    background->setAlignment(Qt::AlignCenter);
    background->setText(tr("Open an experiment (File > Open) or start a new one (File > New)."));
    QMdiSubWindow* child = m_mdi->addSubWindow(background);
    child->setWindowTitle(tr("Document %1").arg(m_documentCount));
    child->setObjectName(QStringLiteral("frmDocument"));
    child->showMaximized();
    // The background never covers a document that is open already.
    if (state().DocumentOpen) {
        showBackground(false);
        m_mdi->setActiveSubWindow(active);
    }
}

void frmMain::Form_Load()
{
    AppState& s = state();
    menuAction(QStringLiteral("mnuRefresh"))->setEnabled(false);
    menuAction(QStringLiteral("mnuRefresh2"))->setEnabled(false);
    const QSize client = m_mdi->size();
    s.ScaleX = client.width() * UnitsPerPixel / DesignWidth;
    s.ScaleY = (client.height() * UnitsPerPixel - 500) / DesignHeight;
    setWindowTitle(versionText());
    s.FileTypeLabel = QStringLiteral("(experimental)");
    s.FileSaved = true;
    s.RefreshStarted = false;
    try {
        startFromCommandLine();
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in Form_Load/frmMain."));
    }
    // After the command line's file: a new file started from it ends with
    // the menus of the empty state.
    if (!s.OpenFromCommand) {
        setMenuState(MenuState::Empty);
        LoadNewDoc();
    }
}

void frmMain::showBackground(bool visible)
{
    for (QMdiSubWindow* child : m_mdi->subWindowList()) {
        if (child->objectName() != QLatin1String("frmDocument"))
            continue;
        if (visible) {
            child->showMaximized();
        } else {
            // A maximized child would maximize every window opened over it.
            child->showNormal();
            child->hide();
        }
    }
}

void frmMain::showIdentification()
{
    showBackground(false);
    if (!m_identification) {
        auto* window = new frmExpidentify;
        m_identification = window;
        m_identificationChild = m_mdi->addSubWindow(window);
        m_identificationChild->setAttribute(Qt::WA_DeleteOnClose);
        m_identificationChild->setWindowIcon(QIcon());
        // Next leads to the treatments.
        connect(window, &frmExpidentify::nextRequested, this,
            [this] { m_editors->open(QStringLiteral("frmViewTreatments")); });
        connect(window, &frmExpidentify::fileNameChanged, this, [this](const QString& path) {
            for (QMdiSubWindow* child : m_mdi->subWindowList()) {
                if (child != m_identificationChild
                    && child->objectName() != QLatin1String("frmDocument"))
                    child->setWindowTitle(captionWithFile(child->windowTitle(), path));
            }
        });
    }
    m_identification->Form_Load();
    m_identificationChild->showNormal();
    m_identificationChild->resize(m_identificationChild->sizeHint().expandedTo(QSize(640, 0)));
    m_mdi->setActiveSubWindow(m_identificationChild);
}

frmExpidentify* frmMain::identificationWindow() const
{
    return m_identification.data();
}

std::optional<Identification> frmMain::identification() const
{
    if (!m_identification)
        return std::nullopt;
    Identification id;
    id.details = m_identification->experimentDetails();
    id.cropCode = m_identification->cropCode();
    id.type = m_identification->fileType();
    id.plot = m_identification->plotDetails();
    id.general = m_identification->generalDetails();
    return id;
}

QString frmMain::closeEditors()
{
    // The identification window stays: Save and Close read it.
    return m_editors->closeEditor();
}

void frmMain::reopenEditor(const QString& name)
{
    if (m_editors->knows(name)) {
        m_editors->open(name);
        return;
    }
    if (!m_identification) {
        showIdentification();
        return;
    }
    m_mdi->setActiveSubWindow(m_identificationChild);
}

void frmMain::unloadAllWindows()
{
    // The preview goes too; the background document is only the main
    // window's backdrop and stays.
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->objectName() == QLatin1String("frmView") && window->isVisible())
            window->close();
    }
    const QList<QMdiSubWindow*> children = m_mdi->subWindowList(QMdiArea::CreationOrder);
    for (auto it = children.rbegin(); it != children.rend(); ++it) {
        QMdiSubWindow* child = *it;
        if (child->objectName() == QLatin1String("frmDocument"))
            continue;
        if (child == m_identificationChild && m_identification)
            m_identification->Form_Unload();
        child->hide();
        child->deleteLater();
    }
    m_identification = nullptr;
    m_identificationChild = nullptr;
}

void frmMain::rebuildCaptions(const QString& path)
{
    for (QMdiSubWindow* child : m_mdi->subWindowList()) {
        if (child->objectName() == QLatin1String("frmDocument"))
            continue;
        QWidget* window = child->widget();
        window->setWindowTitle(captionWithFile(window->windowTitle(), path));
    }
}

void frmMain::showStartNew()
{
    frmStart_New dialog(this);
    dialog.exec();
}

DocumentHost::RefreshNotice frmMain::showStartRefresh()
{
    frmStartRefresh dialog(this);
    dialog.exec();
    return { dialog.refreshGoOn(), dialog.saveQuestionPending() };
}

int frmMain::showSaveFile()
{
    frmSaveFile dialog(this);
    dialog.exec();
    return dialog.answer();
}

void frmMain::setBusy(bool busy)
{
    if (busy) {
        ++m_busy;
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else if (m_busy > 0) {
        --m_busy;
        // A message box may have taken the pointer back already.
        if (QApplication::overrideCursor())
            QApplication::restoreOverrideCursor();
    }
}

// The preview and the printout are the text Save would write.
void frmMain::mnuFilePrintPreview_Click()
{
    ShowFileView(this, format::writeFile, viewIdentityFrom(m_identification));
}

void frmMain::mnuPrint_Click()
{
    printFileView(this, format::writeFile, viewIdentityFrom(m_identification));
}

void frmMain::mnuViewCheck_Click()
{
    const validation::DebugResult result = validation::DebugFile();
    if (result.outcome == validation::DebugResult::Outcome::Findings && result.errorsFileWritten)
        showErrors(this, result.errorsFilePath);
}

void frmMain::mnuViewChanges_Click()
{
    showReport(this, tr("Changes on Save"), [] { return changesOnSave().join(QLatin1Char('\n')); });
}

void frmMain::closeEvent(QCloseEvent* event)
{
    if (!m_closing && state().DocumentOpen) {
        m_closing = true;
        const bool end = mnuFileExit_Click();
        m_closing = false;
        if (!end) {
            event->ignore();
            reopenEditor(QString());
            return;
        }
    }
    restoreLocaleSettings();
    // The preview and other windows of the program end with it.
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window != this && window->isVisible())
            window->close();
    }
    event->accept();
}

} // namespace quillon
