#include "app/DocumentCommands.h"

#include "app/AppState.h"
#include "app/CommandLine.h"
#include "app/DialogSwitches.h"
#include "app/NewExperiment.h"
#include "app/OpenExperiment.h"
#include "app/RuntimeError.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "database/WorkDatabase.h"
#include "format/ReadFile.h"
#include "format/WriteFile.h"
#include "reference/SoilLookups.h"
#include "validation/TableRelations.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace quillon {

namespace {

DocumentHost* g_host = nullptr;

using namespace document_text;

QString withSingleSeparators(QString path)
{
    for (int i = doubledSeparatorAt(path); i >= 0; i = doubledSeparatorAt(path))
        path.remove(i, 1);
    return path;
}

// The first folder of a path, read from its fourth character up to the next
// separator ("C:\TERVA48\Maize\X.MZX" gives "TERVA48").
QString firstFolderOf(const QString& path)
{
    QString folder;
    for (int i = 3; i < path.size() && !isPathSeparator(path.at(i)); ++i)
        folder += path.at(i);
    return folder;
}

// A guard that puts the hourglass up for a scope.
Identification currentIdentification()
{
    if (std::optional<Identification> shown = documentHost().identification())
        return *shown;
    // No window: the tables hold what identifies the document.
    return storedIdentification();
}

// Institute, site, title and, for an experimental file, the crop must be
// there before a file is written.
bool identificationComplete(const Identification& id)
{
    const QString message = checkBeforeSave(id.details, id.type, id.cropCode);
    if (message.isEmpty())
        return true;
    msgBox(message, MsgButtons::OK, MsgIcon::Exclamation);
    return false;
}

// The identification goes to the tables the writer reads: ExpDetails with
// the type's code or the crop's in lower case and the title cut to its
// column, and the plot details and general information with it.
bool storeIdentification(const Identification& id)
{
    ExperimentDetails details = id.details;
    details.CODE
        = id.type == FileType::Experimental ? id.cropCode.toLower() : fileTypeCode(id.type);
    details.ENAME = details.ENAME.left(70);
    try {
        storeExperimentDetails(details);
        storePlotDetails(id.plot);
        storeGeneralDetails(id.general);
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in mnuFileSave_Click/frmMain."));
        return false;
    }
    return true;
}

// Writes the document. The file is replaced in one step: a failure has been
// reported by the writer and leaves the old file as it was.
bool writeDocument(const QString& path)
{
    if (!format::writeFile(path))
        return false;
    AppState& s = state();
    s.FileSaved = false;
    s.CloseWithoutQuestion = true;
    return true;
}

// After a write: every window but the main one goes, the working database is
// emptied and the file read back, so that what the user sees is what the
// file holds; then the editor that was open comes back.
void readBack(const QString& editor)
{
    AppState& s = state();
    DocumentHost& host = documentHost();
    host.unloadAllWindows();
    {
        Busy busy;
        database::Transaction transaction;
        clearLastDocument();
        s.comments.clear();
        format::ReadFile(s.ExpFilePath);
        // As after File Open: without this the buffers keep the line break in
        // front of their first line, and the next write would leave them out.
        s.comments.stripLeadingLineBreaks();
        validation::SetRelations();
        fillManagementTables();
        transaction.commit();
    }
    host.setMenuState(MenuState::DocumentOpen);
    host.reopenEditor(editor);
    s.LastSavedPath = s.ExpFilePath;
}

bool saveAsSteps(bool readBackAfter);

// A name with ".X" lacks the crop the extension is made of: the user is told
// and nothing is written.
bool fileNameComplete(const QString& path)
{
    if (!fileNameOf(path).toUpper().contains(QLatin1String(".X")))
        return true;
    msgBox(invalidFileName, MsgButtons::OK, MsgIcon::Critical, errorTitle);
    return false;
}

// Save's sequence. Close and Exit run it without the read-back, since the
// document goes away. Returns whether the file was written.
bool saveSteps(bool readBackAfter)
{
    AppState& s = state();
    DocumentHost& host = documentHost();

    if (!fileNameComplete(s.ExpFilePath))
        return false;
    const QString editor = host.closeEditors();
    // Whatever stops the save gives the user back the editor that was open.
    const auto giveUp = [&] {
        host.reopenEditor(editor);
        return false;
    };

    if (!s.LastSavedPath.isEmpty()) {
        const int gap = doubledSeparatorAt(s.LastSavedPath);
        if (gap >= 0) {
            // The crop's folder is missing from the path: the crop's name
            // fills the gap.
            const std::optional<Crop> crop = cropWithCode(currentIdentification().cropCode);
            QString folder = crop ? crop->name : QString();
            folder.remove(QLatin1Char(' '));
            folder.remove(QLatin1Char('/'));
            s.LastSavedPath.replace(
                gap, 2, QDir::separator() + folder.toUpper() + QDir::separator());
        } else if (s.LastSavedPath.toUpper() != s.ExpFilePath.toUpper()) {
            const QString asNew = savedAs + QLatin1Char(' ') + s.ExpFilePath + QLatin1Char('.');
            const QString question = s.IsNewFile
                ? asNew
                : modifiedFile + QLatin1Char(' ') + s.LastSavedPath + QLatin1Char(' ') + asNew;
            if (msgBox(question, MsgButtons::OKCancel, MsgIcon::Exclamation) == MsgAnswer::Cancel)
                return giveUp();
        }
    }

    const Identification id = currentIdentification();
    if (!identificationComplete(id) || !storeIdentification(id))
        return giveUp();

    const QString folder = folderOf(s.ExpFilePath);
    if (folder.isEmpty() || !QFileInfo(folder).isDir()) {
        msgBox(folderMissing);
        host.reopenEditor(editor);
        return saveAsSteps(readBackAfter);
    }

    if (!writeDocument(s.ExpFilePath))
        return giveUp();
    if (readBackAfter)
        readBack(editor);
    return true;
}

// An experiment file's name is eight characters, a dot and three.
bool isExperimentFileName(const QFileInfo& file)
{
    return file.completeBaseName().size() == 8 && file.suffix().size() == 3;
}

bool saveAsSteps(bool readBackAfter)
{
    AppState& s = state();
    DocumentHost& host = documentHost();
    // The dialog is the question: the last saved name isn't compared.
    s.LastSavedPath.clear();

    if (!fileNameComplete(s.ExpFilePath))
        return false;
    const QString editor = host.closeEditors();
    // Whatever stops the save gives the user back the editor that was open.
    const auto giveUp = [&] {
        host.reopenEditor(editor);
        return false;
    };
    const Identification id = currentIdentification();
    if (!identificationComplete(id))
        return giveUp();

    const QString start = withSingleSeparators(s.ExpFilePath);
    const QString startFolder = start.isEmpty() ? s.DataFolder : folderOf(start);
    const QString answer = ui().saveFileName(saveAsFilter, startFolder, fileNameOf(start));
    if (answer.isEmpty())
        return giveUp();
    const QFileInfo chosen(answer);
    if (!isExperimentFileName(chosen)) {
        msgBox(chosen.fileName() + QLatin1Char(' ') + wrongFileName, MsgButtons::OK,
            MsgIcon::Critical);
        return giveUp();
    }
    if (chosen.exists()
        && msgBox(overwrite, MsgButtons::YesNo, MsgIcon::Exclamation) != MsgAnswer::Yes)
        return giveUp();

    const QString path = QDir::toNativeSeparators(answer);
    if (!storeIdentification(id) || !writeDocument(path))
        return giveUp();
    s.ExpFilePath = path;
    host.rebuildCaptions(path);
    if (readBackAfter)
        readBack(editor);
    return true;
}

void clearTypeFlags(AppState& s)
{
    s.IsExperimental = s.IsSequence = s.IsSeasonal = s.IsSpatial = s.IsForecast = false;
}

} // namespace

Identification storedIdentification()
{
    Identification id;
    id.details = loadExperimentDetails();
    id.type = fileTypeOf(state());
    id.cropCode = id.type == FileType::Experimental ? id.details.CODE : QString();
    id.plot = loadPlotDetails();
    id.general = loadGeneralDetails();
    return id;
}

const std::vector<MenuEntryState>& menuTable()
{
    static const std::vector<MenuEntryState> table {
        { "mnuFileNew", true, true, false },
        { "mnuFileOpen", true, true, false },
        { "mnuFileClose", false, false, true },
        { "mnuFileSave", false, false, true },
        { "mnuFileSaveAs", false, false, true },
        { "mnuFilePrintPreview", false, false, true },
        { "mnuPrint", false, false, true },
        { "mnuFileExit", true, true, true },
        { "mnuEditField", false, false, true },
        { "mnuEditSoil", false, false, true },
        { "mnuEditInitCond", false, false, true },
        { "mnuEditPlanting", false, false, true },
        { "mnuEditIrrigation", false, false, true },
        { "mnuEditFertilizer", false, false, true },
        { "mnuEditResidue", false, false, true },
        { "mnuEditTillage", false, false, true },
        { "mnuEditEnvMod", false, false, true },
        { "mnuHarvest", false, false, true },
        { "mnuEditChemicalApp", false, false, true },
        { "mnuEditCultivar", false, false, true },
        { "mnuViewTreatments", false, false, true },
        { "EditSimOptGeneral", false, false, true },
        { "mnuEnvironEdit", false, false, true },
        { "mnuManageEdit", false, false, true },
        { "mnuRefresh", false, false, true },
        { "mnuRefresh2", false, false, true },
        { "mnuViewBugs", false, false, false },
        { "mnuErrors", false, false, false },
        { "mnuViewCheck", false, false, true },
        { "mnuViewChanges", false, false, true },
    };
    return table;
}

bool entryEnabledIn(const MenuEntryState& entry, MenuState state)
{
    switch (state) {
    case MenuState::Empty:
        return entry.empty;
    case MenuState::Opening:
        return entry.opening;
    case MenuState::DocumentOpen:
        return entry.open;
    }
    return false;
}

void setDocumentHost(DocumentHost* host)
{
    g_host = host;
}

DocumentHost& documentHost()
{
    Q_ASSERT_X(g_host, "documentHost", "the document commands need a host");
    return *g_host;
}

void mnuFileOpen_Click()
{
    AppState& s = state();
    DocumentHost& host = documentHost();

    clearTypeFlags(s);
    s.IsNewFile = false;
    s.CloseWithoutQuestion = false;
    s.SaveQuestionPending = false;
    s.ExitCancelled = false;
    // A document's first save has nothing to compare its name with.
    s.LastSavedPath.clear();
    host.setMenuState(MenuState::Opening);

    if (!s.OpenFromCommand) {
        if (!s.ReopenFlag || s.ExpFilePath.isEmpty()) {
            const QString answer = ui().openFileName(openFilter, s.DataFolder, QString());
            if (answer.isEmpty())
                return;
            s.ExpFilePath = QDir::toNativeSeparators(answer);
        }
        s.ReopenFlag = false;
        s.OpenFolderName = firstFolderOf(s.ExpFilePath);
    }
    if (s.OpenFromCommand && (s.ExpFilePath.isEmpty() || !s.ReopenFlag)) {
        s.ExpFilePath = s.CommandFile;
        if (namesNewFile(s.ExpFilePath)) {
            s.ExpFilePath.clear();
            mnuFileNew_Click();
            return;
        }
    }
    s.ReopenFlag = false;

    try {
        Busy busy;
        openExperiment(s.ExpFilePath);
    } catch (const RuntimeError& e) {
        ui().progress(-1);
        reportError(e.text(), QStringLiteral(" in mnuFileOpen_Click/frmMain."));
        host.setMenuState(MenuState::Empty);
        return;
    }

    host.setMenuState(MenuState::DocumentOpen);
    host.showIdentification();
    s.DocumentOpen = true;
    ui().progress(-1);
    if (s.NegativeEnvValue) {
        msgBox(negativeEnvValue, MsgButtons::OK, MsgIcon::Critical, errorTitle);
        s.NegativeEnvValue = false;
    }
    host.setEntryEnabled(QStringLiteral("mnuRefresh"), true);
    host.setEntryEnabled(QStringLiteral("mnuRefresh2"), true);
}

void mnuFileNew_Click()
{
    AppState& s = state();
    DocumentHost& host = documentHost();

    s.RefreshStarted = true;
    if (QFile::exists(s.WorkDBPath) && DontShowOptionNew())
        host.showStartNew();

    for (const char* name :
        { "mnuFileExit", "mnuFileClose", "mnuFileSave", "mnuFilePrintPreview", "mnuPrint" })
        host.setEntryEnabled(QLatin1String(name), true);
    host.setEntryEnabled(QStringLiteral("mnuViewBugs"), false);
    host.setEntryEnabled(QStringLiteral("mnuEditCultivar"), false);

    setFileType(s, FileType::Experimental);
    s.IsNewFile = true;
    s.CloseWithoutQuestion = false;
    s.LastSavedPath.clear();
    {
        Busy busy;
        database::Transaction transaction;
        ui().progress(0);
        // A database held by another program can't be read here: New says
        // so and the program ends. An empty one is deleted and built anew.
        prepareWorkDatabase(databaseInUse);
        Add_IC_Fld_Planting();
        validation::SetRelations();
        transaction.commit();
        ui().progress(-1);
    }

    host.setMenuState(MenuState::DocumentOpen);
    host.showIdentification();
    s.DocumentOpen = true;
}

void mnuFileSave_Click()
{
    saveSteps(true);
}

void mnuFileSaveAs_Click()
{
    saveAsSteps(true);
}

bool storeIdentificationAsSave()
{
    return storeIdentification(currentIdentification());
}

bool mnuFileClose_Click()
{
    AppState& s = state();
    DocumentHost& host = documentHost();

    const QString editor = host.closeEditors();
    if (s.CloseWithoutQuestion || s.FileSaved) {
        reference::SoilFolder().clear();
        s.GenotypeFolder.clear();
    } else {
        bool save = false;
        if (s.SaveQuestionPending) {
            s.SaveQuestionPending = false;
            s.RefreshAnswer = host.showSaveFile();
            save = s.RefreshAnswer == 1;
            if (!save) {
                host.reopenEditor(editor);
                return false;
            }
        } else {
            const MsgAnswer answer = msgBox(saveOnClose, MsgButtons::YesNoCancel);
            if (answer == MsgAnswer::Cancel) {
                host.reopenEditor(editor);
                return false;
            }
            save = answer == MsgAnswer::Yes;
        }
        // A save that didn't happen keeps the document open.
        if (save && !saveSteps(false))
            return false;
    }

    host.unloadAllWindows();
    s.CommandLine = QStringLiteral("55");
    s.OpenFromCommand = false;
    s.ExpFilePath.clear();
    clearTypeFlags(s);
    s.comments.clear();
    s.SimulationDate = QStringLiteral("-99");
    try {
        validation::DeleteRelations();
        database::CleanDataBase_Partially();
        database::exec(QStringLiteral("DELETE FROM ICSoil"));
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in mnuFileClose_Click/frmMain."));
    }
    s.DocumentOpen = false;
    s.FileSaved = true;
    host.setMenuState(MenuState::Empty);
    return true;
}

bool mnuFileExit_Click()
{
    AppState& s = state();
    s.ExitCancelled = false;
    if (!s.DocumentOpen || s.CloseWithoutQuestion || s.FileSaved)
        return true;
    DocumentHost& host = documentHost();
    const QString editor = host.closeEditors();
    const MsgAnswer answer = msgBox(saveOnExit, MsgButtons::YesNoCancel);
    if (answer == MsgAnswer::Cancel) {
        s.ExitCancelled = true;
        host.reopenEditor(editor);
        return false;
    }
    if (answer == MsgAnswer::Yes && !saveSteps(false)) {
        s.ExitCancelled = true;
        return false;
    }
    return true;
}

void mnuRefresh_Click()
{
    AppState& s = state();
    DocumentHost& host = documentHost();

    const QString remembered = s.ExpFilePath;
    s.RefreshGoOn = true;
    s.RefreshAnswer = 1;
    if (s.RefreshStarted) {
        s.RefreshStarted = false;
        s.SaveQuestionPending = true;
    } else if (QFile::exists(s.WorkDBPath) && DontShowOptionRefresh()) {
        const DocumentHost::RefreshNotice notice = host.showStartRefresh();
        s.RefreshGoOn = notice.goOn;
        s.SaveQuestionPending = s.SaveQuestionPending || notice.saveQuestionPending;
    }
    if (!s.RefreshGoOn) {
        s.SaveQuestionPending = false;
        return;
    }

    if (host.isEntryEnabled(QStringLiteral("mnuFileClose"))) {
        if (s.FileSaved)
            s.CloseWithoutQuestion = true;
        const bool closed = mnuFileClose_Click();
        // The question belongs to this refresh only.
        s.SaveQuestionPending = false;
        // A document that stayed open keeps its database.
        if (!closed)
            return;
    }
    s.SaveQuestionPending = false;
    if (s.RefreshAnswer == 3)
        return;

    bool deleted = false;
    if (QFile::exists(s.WorkDBPath)) {
        database::closeWorkDB();
        deleted = QFile::remove(s.WorkDBPath);
    }
    if (host.isEntryEnabled(QStringLiteral("mnuFileOpen")) && !s.ExpFilePath.isEmpty()
        && !s.IsNewFile) {
        s.ReopenFlag = true;
        mnuFileOpen_Click();
    }
    if (s.ExpFilePath.isEmpty() && !s.IsNewFile && deleted) {
        s.ExpFilePath = remembered;
        s.ReopenFlag = true;
        mnuFileOpen_Click();
    }
    if (s.IsNewFile)
        mnuFileNew_Click();
}

void startFromCommandLine()
{
    const AppState& s = state();
    if (s.OpenFromCommand)
        mnuFileOpen_Click();
    else if (s.NewFromCommand)
        mnuFileNew_Click();
}

} // namespace quillon
