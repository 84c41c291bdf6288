#pragma once

// Opens arbitrary bytes as an experiment file, as File Open does, and gives
// what Save would write. Shared by the randomized test in the test suite and
// the long-running fuzz target. The caller installs the user interface.

#include "app/AppState.h"
#include "app/OpenExperiment.h"
#include "format/FileWriter.h"
#include "format/WriteFile.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>

namespace quillon::test {

// Points the state at a program folder `appFolder` that gets the sample
// suite's defaults files, with the sample suite as the data folder. The
// working database is built there on the first open.
inline bool prepareProgramFolder(const QString& appFolder, const QString& suiteFolder)
{
    QDir defaults(suiteFolder + QStringLiteral("/TOOLS/Quillon"));
    for (const QString& def : defaults.entryList({ QStringLiteral("*.def") }, QDir::Files)) {
        const QString target = QDir(appFolder).filePath(def);
        if (!QFile::exists(target) && !QFile::copy(defaults.filePath(def), target))
            return false;
    }
    AppState& s = state();
    s.AppFolder = QDir::toNativeSeparators(appFolder) + QDir::separator();
    s.DataFolder = QDir::toNativeSeparators(QDir(suiteFolder).absolutePath());
    s.WorkDBPath = s.AppFolder + QStringLiteral("QUILLONTEMP2.mdb");
    s.DateTextFormat = QStringLiteral("M/d/yyyy");
    return true;
}

// Writes `bytes` to `folder`/`fileName`, opens that file and returns the text
// Save would write for it.
inline QByteArray openBytes(const QByteArray& bytes, const QString& folder, const QString& fileName)
{
    const QString path = QDir::toNativeSeparators(QDir(folder).filePath(fileName));
    {
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate) || f.write(bytes) != bytes.size())
            return QByteArray();
    }
    state().ExpFilePath = path;
    openExperiment(path);
    format::FileWriter w;
    format::writeExperiment(w, fileName);
    return w.bytes();
}

} // namespace quillon::test
