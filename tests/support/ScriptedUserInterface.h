#pragma once

#include "app/UserInterface.h"
#include "support/QtPrinters.h"

#include <QString>
#include <QStringList>

#include <deque>
#include <stdexcept>
#include <vector>

namespace quillon::test {

// Thrown where the program would have ended.
struct ProgramEnded : std::runtime_error {
    ProgramEnded()
        : std::runtime_error("program ended")
    {
    }
};

struct RecordedMessage {
    QString text;
    QString title;
    MsgIcon icon;
    MsgButtons buttons;
};

// A user interface for tests: records every message, answers questions and
// file dialogs from queues (OK, or the first button, when a queue is empty),
// and throws ProgramEnded where the program would end.
class ScriptedUserInterface final : public UserInterface {
public:
    ScriptedUserInterface();
    ~ScriptedUserInterface() override;

    MsgAnswer message(
        const QString& text, const QString& title, MsgIcon icon, MsgButtons buttons) override;
    QString openFileName(
        const QString& filter, const QString& folder, const QString& name) override;
    QString saveFileName(
        const QString& filter, const QString& folder, const QString& name) override;
    PrintChoice choosePrinter() override;
    void progress(int percent) override;
    void endProgram() override;

    std::vector<RecordedMessage> messages;
    std::vector<int> progressSteps;
    std::deque<MsgAnswer> answers;
    std::deque<QString> fileAnswers;
    std::deque<PrintChoice> printAnswers;
    QStringList fileDialogs; // "open|filter|folder|name" for each dialog shown

    // The texts of the messages shown, in order.
    QStringList texts() const;
    void clear();

private:
    UserInterface* m_previous;
};

} // namespace quillon::test
