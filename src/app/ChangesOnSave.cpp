#include "app/ChangesOnSave.h"

#include "app/AppState.h"
#include "app/DocumentCommands.h"
#include "app/RuntimeError.h"
#include "format/ChangesReport.h"
#include "format/FileWriter.h"
#include "format/WriteFile.h"

#include <QFile>
#include <QFileInfo>

namespace quillon {

QStringList changesOnSave()
{
    const AppState& s = state();
    if (s.IsNewFile && s.LastSavedPath.isEmpty())
        return { QStringLiteral("This experiment has never been saved: there is no file on disk "
                                "to compare it with. Save writes it whole.") };
    const QString path = s.ExpFilePath;
    if (!QFile::exists(path))
        return { QStringLiteral("Save will write %1 anew: there is no file of that name on disk "
                                "to compare it with.")
                     .arg(path) };
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return { QStringLiteral("%1 can't be read (%2): there is nothing to compare with.")
                     .arg(path, file.errorString()) };
    const QByteArray onDisk = file.readAll();

    storeIdentificationAsSave();
    format::FileWriter w;
    try {
        format::writeExperiment(w, QFileInfo(path).fileName());
    } catch (const RuntimeError& e) {
        return { QStringLiteral("The text Save would write can't be made: %1").arg(e.text()) };
    }
    QStringList report { path };
    for (const QString& line :
        format::changesReport(format::compareForSave(onDisk, w.bytes()), false))
        report << QStringLiteral("  ") + line;
    return report;
}

} // namespace quillon
