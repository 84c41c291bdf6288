#pragma once

#include "app/ExpIdentity.h"

#include <QString>

#include <optional>
#include <vector>

namespace quillon {

// The menu states of the document's life.
enum class MenuState { Empty, Opening, DocumentOpen };

// One row of the menu table: whether an entry is enabled in the empty
// state, while a file is opening, and while a document is open.
struct MenuEntryState {
    const char* name;
    bool empty;
    bool opening;
    bool open;
};
// Every entry whose state the document's life sets, mnuViewCheck (Check
// Experiment) among them.
const std::vector<MenuEntryState>& menuTable();
bool entryEnabledIn(const MenuEntryState& entry, MenuState state);

// What the identification window holds when a document is saved.
struct Identification {
    ExperimentDetails details;
    QString cropCode;
    FileType type = FileType::Experimental;
    PlotDetails plot;
    GeneralDetails general;
};

// The identification as the tables hold it, as the identification window
// loads it: the details, the type from the type flags, the crop code for an
// experimental file, the plot details and the general information.
Identification storedIdentification();

// The windows as the document commands see them. The main window implements
// it; tests use a fake that records what was asked of it.
class DocumentHost {
public:
    virtual ~DocumentHost() = default;

    // Enables the menu entries of a state as the menu table lists them.
    virtual void setMenuState(MenuState state) = 0;
    // One entry, by its name (mnuFileClose, ...).
    virtual void setEntryEnabled(const QString& name, bool enabled) = 0;
    virtual bool isEntryEnabled(const QString& name) const = 0;

    // Loads the identification window from the tables and the state, and
    // shows it; a window that is shown already is loaded again.
    virtual void showIdentification() = 0;
    // The values of the identification window, or nothing when it isn't
    // loaded (the tables then hold what identifies the document).
    virtual std::optional<Identification> identification() const = 0;

    // Closes the open factor editors, committing them as OK does, and
    // returns the name of the one that was open (empty for none).
    virtual QString closeEditors() = 0;
    // Opens the editor of that name again; an empty name shows the
    // identification window.
    virtual void reopenEditor(const QString& name) = 0;
    // Unloads every window but the main one, the last opened first.
    virtual void unloadAllWindows() = 0;
    // Rebuilds the captions of the open windows for a new file name.
    virtual void rebuildCaptions(const QString& path) = 0;

    // The start dialogs, shown modally. frmStart_New's only answer is that a
    // refresh may go on.
    virtual void showStartNew() = 0;
    struct RefreshNotice {
        bool goOn = false;
        bool saveQuestionPending = false;
    };
    virtual RefreshNotice showStartRefresh() = 0;
    // frmSaveFile: 1 for "Save and Refresh", 3 for "Cancel".
    virtual int showSaveFile() = 0;

    // The hourglass pointer during the long steps.
    virtual void setBusy(bool busy) = 0;
};

// The texts of the document commands.
namespace document_text {
inline const QString openFilter = QStringLiteral("PLOTBOOK (*.*x)|*.*x");
inline const QString saveAsFilter = QStringLiteral("PLOTBOOK (*.*X)|*.*X|All Files (*.*)|*.*");
using identity_text::errorTitle;
inline const QString negativeEnvValue
    = QStringLiteral("Negative value was encounted on import of Environmental Modification data. \n"
                     "Please enter correct values.");
inline const QString databaseInUse = QStringLiteral(
    "The database was opened by other application. Close the application and start again.");
inline const QString invalidFileName
    = QStringLiteral("Invalid file name. Please select crop or change the file type.");
inline const QString savedAs = QStringLiteral("The file will be saved as");
inline const QString modifiedFile = QStringLiteral("You have modified the file");
inline const QString folderMissing
    = QStringLiteral("The folder does not exist. Please save the file in an existing  folder.");
inline const QString wrongFileName = QStringLiteral("is wrong file name.");
inline const QString overwrite
    = QStringLiteral("File already exists. Do You want to overwrite it?");
inline const QString saveOnClose = QStringLiteral("Do you want to save the file?");
inline const QString saveOnExit = QStringLiteral("Do you want to save the file before closing?");
} // namespace document_text

// The File menu. Each command is a fixed sequence of reading, writing,
// cleaning and lookup steps that leaves the menus in a known state; the
// process-wide marks they share live in state(). They talk to the user
// through ui() and to the windows through the host, which must be set
// before a command runs and outlive it.
void setDocumentHost(DocumentHost* host);
DocumentHost& documentHost();

// The hourglass pointer for as long as the object lives.
class Busy {
public:
    Busy() { documentHost().setBusy(true); }
    ~Busy() { documentHost().setBusy(false); }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;
};

// Opens an experiment: from the open dialog, from the command line, or
// (ReopenFlag) ExpFilePath again. A cancelled dialog changes nothing.
void mnuFileOpen_Click();
// Starts a new, empty experiment in the identification window.
void mnuFileNew_Click();
// Writes the document to ExpFilePath, then empties the working database and
// reads the file back, so that the tables hold what the file holds. The
// write replaces the file in one step: a failed write is reported and
// leaves the old file whole, and the document stays as it was.
void mnuFileSave_Click();
// Save under a name from the save dialog.
void mnuFileSaveAs_Click();
// Stores what identifies the document (the identification window's values,
// or the tables' own without the window) as Save does before it writes, so
// that a text written now is the one Save would write. False when the
// database refused; the user has been told.
bool storeIdentificationAsSave();
// Closes the document, asking about unsaved changes. Returns false when the
// document stays open (the user cancelled, or the save it asked for didn't
// happen).
bool mnuFileClose_Click();
// Exit's question. Returns true when the program is to end; false when the
// user cancelled (ExitCancelled is then set) or the save didn't happen.
bool mnuFileExit_Click();
// Refresh: closes the document, deletes the working database so that the
// next Open or New rebuilds every lookup from the suite, and opens the
// document again (or starts a new one for a document begun with New).
void mnuRefresh_Click();

// The start from the command line: Open for a named file (a name ending in a
// separator and "NEW", any case, starts New), New for a folder alone.
void startFromCommandLine();

} // namespace quillon
