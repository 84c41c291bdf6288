#pragma once

#include "app/UserInterface.h"

#include <stdexcept>

namespace quillon::cli {

// Thrown where the program would have ended; the tool ends the current file
// (or the whole run) instead.
struct ProgramEnded : std::runtime_error {
    ProgramEnded()
        : std::runtime_error("program ended")
    {
    }
};

// The user interface of the command-line tool: messages go to standard error
// as "Title: text", questions take their first answer, dialogs are cancelled.
class ConsoleUserInterface final : public UserInterface {
public:
    MsgAnswer message(const QString& text, const QString& title, MsgIcon icon, MsgButtons buttons) override;
    QString openFileName(const QString&, const QString&, const QString&) override { return {}; }
    QString saveFileName(const QString&, const QString&, const QString&) override { return {}; }
    PrintChoice choosePrinter() override { return {}; }
    void progress(int) override { }
    void endProgram() override { throw ProgramEnded(); }
};

} // namespace quillon::cli
