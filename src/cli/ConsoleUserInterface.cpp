#include "cli/ConsoleUserInterface.h"

#include <cstdio>

namespace quillon::cli {

MsgAnswer ConsoleUserInterface::message(const QString& text, const QString& title, MsgIcon, MsgButtons buttons)
{
    QString oneLine = text;
    oneLine.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    oneLine.replace(QLatin1Char('\n'), QLatin1Char(' '));
    oneLine.replace(QLatin1Char('\r'), QLatin1Char(' '));
    std::fprintf(stderr, "%s: %s\n", title.toLocal8Bit().constData(), oneLine.toLocal8Bit().constData());
    return firstAnswer(buttons);
}

} // namespace quillon::cli
