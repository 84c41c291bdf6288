#include "cli/ConsoleUserInterface.h"

#include <cstdio>

namespace quillon::cli {

MsgAnswer ConsoleUserInterface::message(const QString& text, const QString& title, MsgIcon, MsgButtons buttons)
{
    ++messageCount;
    QString oneLine = text;
    oneLine.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    oneLine.replace(QLatin1Char('\n'), QLatin1Char(' '));
    oneLine.replace(QLatin1Char('\r'), QLatin1Char(' '));
    std::fprintf(stderr, "%s: %s\n", title.toLocal8Bit().constData(), oneLine.toLocal8Bit().constData());
    switch (buttons) {
    case MsgButtons::YesNo:
    case MsgButtons::YesNoCancel:
        return MsgAnswer::Yes;
    case MsgButtons::RetryCancel:
        return MsgAnswer::Cancel;
    case MsgButtons::AbortRetryIgnore:
        return MsgAnswer::Abort;
    default:
        return MsgAnswer::OK;
    }
}

} // namespace quillon::cli
