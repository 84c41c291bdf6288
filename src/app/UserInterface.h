#pragma once

#include <QString>
#include <QStringList>

namespace quillon {

// Icons and button sets of a message box, as the program's messages use them.
enum class MsgIcon { None, Critical, Question, Exclamation, Information };
// YesNoDefaultNo is Yes and No with No as the button Enter takes, for the
// questions before a deletion; OKCancelDefaultCancel likewise keeps Enter
// from going on.
enum class MsgButtons { OK, OKCancel, YesNo, YesNoCancel, YesNoDefaultNo, OKCancelDefaultCancel };
enum class MsgAnswer { OK, Cancel, Yes, No };

// The answer of a box's default button, the one Enter takes.
MsgAnswer firstAnswer(MsgButtons buttons);

// What a printer dialog gives back: whether to print, and to which file when
// the user chose to print to a PDF file instead of a printer.
struct PrintChoice {
    bool accepted = false;
    QString pdfFile;
    QString printerName;
};

// The one way the core talks to the user. The windowed program implements it
// with message boxes and file dialogs; tests script it and record every call;
// the command-line tool prints the messages.
class UserInterface {
public:
    virtual ~UserInterface() = default;

    // A message box. Returns the button the user took.
    virtual MsgAnswer message(const QString& text, const QString& title, MsgIcon icon,
        MsgButtons buttons)
        = 0;

    // File dialogs. `filter` is in the program's own "Name (*.x)|*.x|…" form.
    // An empty result means the user cancelled.
    virtual QString openFileName(const QString& filter, const QString& folder,
        const QString& name)
        = 0;
    virtual QString saveFileName(const QString& filter, const QString& folder,
        const QString& name)
        = 0;

    // The printer dialog.
    virtual PrintChoice choosePrinter() = 0;

    // The progress bar of the wait window; -1 hides it.
    virtual void progress(int percent) = 0;

    // Ends the program at once. The windowed program exits; tests throw so
    // that the test can see where the program would have ended.
    virtual void endProgram() = 0;

    // The warning that a factor level can't be deleted because treatments
    // use it: the factor's word ("Fertilizer") and the treatment numbers.
    // The windowed program shows its own dialog; elsewhere it is a message
    // box titled "Deletion Warning" that says the same.
    virtual void deletionWarning(const QString& levelName, const QStringList& treatments);
};

// The interface in force. There is always one: before anybody installs
// another, a silent one answers OK to everything.
UserInterface& ui();
void setUserInterface(UserInterface* ui);

// The program's title, used as the title of message boxes that have none.
QString appTitle();

// Shorthands for the common message forms.
MsgAnswer msgBox(const QString& text, MsgButtons buttons = MsgButtons::OK,
    MsgIcon icon = MsgIcon::None, const QString& title = QString());

// A trapped error: the error text followed by its tail, the routine and form
// as the program spells them there (" in ReadFile/frmMain.", " in TheDate.").
void reportError(const QString& errorText, const QString& tail);

// Ends the program after the messages shown so far. Does not return.
[[noreturn]] void endProgram();

} // namespace quillon
