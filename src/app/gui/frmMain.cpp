#include "app/gui/frmMain.h"

#include "app/AppState.h"
#include "app/LocaleSettings.h"
#include "app/StartUp.h"
#include "app/UserInterface.h"

#include <QAction>
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

const char* const fileEntries[] = { "mnuFileClose", "mnuFileSave", "mnuFileSaveAs", "mnuFilePrintPreview", "mnuPrint" };
const char* const documentEntries[] = { "mnuEditField", "mnuEditSoil", "mnuEditInitCond", "mnuEditPlanting",
    "mnuEditIrrigation", "mnuEditFertilizer", "mnuEditResidue", "mnuEditTillage", "mnuEditEnvMod", "mnuHarvest",
    "mnuEditChemicalApp", "mnuEditCultivar", "mnuViewTreatments", "EditSimOptGeneral", "mnuEnvironEdit",
    "mnuManageEdit", "mnuRefresh", "mnuRefresh2" };

} // namespace

frmMain::frmMain(QWidget* parent)
    : QMainWindow(parent)
    , m_mdi(new QMdiArea(this))
{
    setObjectName(QStringLiteral("frmMain"));
    m_mdi->setObjectName(QStringLiteral("mdiArea"));
    m_mdi->setBackground(palette().brush(QPalette::Dark));
    setCentralWidget(m_mdi);
    buildMenus();
    resize(960, 720);
}

QAction* frmMain::addEntry(QMenu* menu, const char* name, const QString& caption, const QKeySequence& key)
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
    QAction* exit = addEntry(file, "mnuFileExit", tr("E&xit"));
    connect(exit, &QAction::triggered, this, &QWidget::close);

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
    addEntry(view, "mnuViewBugs", tr("&Debug"));
    addEntry(view, "mnuErrors", tr("&Errors"));

    QAction* refresh = menuBar()->addAction(tr("&Refresh"));
    refresh->setObjectName(QStringLiteral("mnuRefresh"));
    m_actions[QStringLiteral("mnuRefresh")] = refresh;

    for (auto& [name, action] : m_actions) {
        if (name != QLatin1String("mnuFileExit"))
            connect(action, &QAction::triggered, this, [this, a = action] { notAvailable(a->text()); });
    }
}

void frmMain::notAvailable(const QString& command)
{
    QString caption = command;
    caption.remove(QLatin1Char('&'));
    msgBox(tr("%1 is not available in this version of Quillon.").arg(caption), MsgButtons::OK,
        MsgIcon::Information);
}

QAction* frmMain::menuAction(const QString& name) const
{
    const auto it = m_actions.find(name);
    return it == m_actions.end() ? nullptr : it->second;
}

void frmMain::setMenuState(MenuState menuState)
{
    const bool open = menuState == MenuState::DocumentOpen;
    menuAction(QStringLiteral("mnuFileNew"))->setEnabled(!open);
    menuAction(QStringLiteral("mnuFileOpen"))->setEnabled(!open);
    menuAction(QStringLiteral("mnuFileExit"))->setEnabled(true);
    for (const char* name : fileEntries)
        menuAction(QLatin1String(name))->setEnabled(open);
    for (const char* name : documentEntries)
        menuAction(QLatin1String(name))->setEnabled(open);
    menuAction(QStringLiteral("mnuViewBugs"))->setEnabled(false);
    menuAction(QStringLiteral("mnuErrors"))->setEnabled(false);
}

void frmMain::LoadNewDoc()
{
    ++m_documentCount;
    auto* background = new QLabel;
    background->setAlignment(Qt::AlignCenter);
    background->setText(tr("Open an experiment (File > Open) or start a new one (File > New)."));
    QMdiSubWindow* child = m_mdi->addSubWindow(background);
    child->setWindowTitle(tr("Document %1").arg(m_documentCount));
    child->setObjectName(QStringLiteral("frmDocument"));
    child->showMaximized();
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
    if (!s.OpenFromCommand) {
        setMenuState(MenuState::Empty);
        LoadNewDoc();
    }
}

void frmMain::closeEvent(QCloseEvent* event)
{
    restoreLocaleSettings();
    event->accept();
}

} // namespace quillon
