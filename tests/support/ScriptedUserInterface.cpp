#include "support/ScriptedUserInterface.h"

namespace quillon::test {

ScriptedUserInterface::ScriptedUserInterface()
    : m_previous(&ui())
{
    setUserInterface(this);
}

ScriptedUserInterface::~ScriptedUserInterface()
{
    setUserInterface(m_previous);
}

MsgAnswer ScriptedUserInterface::message(
    const QString& text, const QString& title, MsgIcon icon, MsgButtons buttons)
{
    messages.push_back({ text, title, icon, buttons });
    if (!answers.empty()) {
        const MsgAnswer answer = answers.front();
        answers.pop_front();
        return answer;
    }
    return firstAnswer(buttons);
}

QString ScriptedUserInterface::openFileName(
    const QString& filter, const QString& folder, const QString& name)
{
    fileDialogs << QStringLiteral("open|%1|%2|%3").arg(filter, folder, name);
    if (fileAnswers.empty())
        return QString();
    const QString answer = fileAnswers.front();
    fileAnswers.pop_front();
    return answer;
}

QString ScriptedUserInterface::saveFileName(
    const QString& filter, const QString& folder, const QString& name)
{
    fileDialogs << QStringLiteral("save|%1|%2|%3").arg(filter, folder, name);
    if (fileAnswers.empty())
        return QString();
    const QString answer = fileAnswers.front();
    fileAnswers.pop_front();
    return answer;
}

PrintChoice ScriptedUserInterface::choosePrinter()
{
    if (printAnswers.empty())
        return {};
    const PrintChoice choice = printAnswers.front();
    printAnswers.pop_front();
    return choice;
}

void ScriptedUserInterface::progress(int percent)
{
    progressSteps.push_back(percent);
}

void ScriptedUserInterface::endProgram()
{
    throw ProgramEnded();
}

QStringList ScriptedUserInterface::texts() const
{
    QStringList list;
    for (const RecordedMessage& m : messages)
        list << m.text;
    return list;
}

void ScriptedUserInterface::clear()
{
    messages.clear();
    progressSteps.clear();
    fileDialogs.clear();
}

} // namespace quillon::test
