#include "app/CommandLine.h"

#include "app/AppState.h"

#include <QDir>

namespace quillon {

void takeCommandLine(AppState& s, const QString& platformCommandLine)
{
    // "55" is the mark of a used-up command line, whether an earlier Close
    // left it in CommandLine or it is what the program was started with.
    const bool usedUp = s.CommandLine == QLatin1String("55")
        || platformCommandLine.trimmed() == QLatin1String("55");
    s.CommandLine = usedUp ? QString() : platformCommandLine;
    s.CommandArgs.clear();
    s.OpenFromCommand = false;
    s.NewFromCommand = false;
    if (s.CommandLine.isEmpty())
        return;
    s.CommandArgs = s.CommandLine.split(QLatin1Char(','));
    s.CommandFolder = s.CommandArgs.at(0).trimmed();
    if (s.CommandArgs.size() == 1) {
        s.NewFromCommand = true;
        return;
    }
    if (s.CommandArgs.at(1).trimmed().isEmpty()) {
        s.NewFromCommand = true;
        return;
    }
    const QString third = s.CommandArgs.size() > 2 ? s.CommandArgs.at(2).trimmed() : QString();
    s.CommandFile = s.CommandArgs.at(1).trimmed() + QDir::separator() + third;
    s.OpenFromCommand = true;
}

bool namesNewFile(const QString& path)
{
    return path.right(4).toUpper() == QString(QDir::separator()) + QStringLiteral("NEW");
}

} // namespace quillon
