#pragma once

// The windows, the user and the program folder as the benchmarks stand
// them in: the document commands run as the main window runs them, without
// a screen.

#include "app/AppState.h"
#include "app/DocumentCommands.h"
#include "app/UserInterface.h"

#include <QDir>
#include <QFile>
#include <QString>

#include <cstdio>
#include <optional>
#include <stdexcept>

namespace bench {

// Answers the open dialog with `openAnswer` and OK to every message; prints
// the messages unless told to count them only.
class BenchUserInterface final : public quillon::UserInterface {
public:
    QString openAnswer;
    bool print = true;
    int messages = 0;
    quillon::MsgAnswer message(
        const QString& text, const QString& title, quillon::MsgIcon, quillon::MsgButtons) override
    {
        ++messages;
        if (print)
            std::printf("message [%s]: %s\n", qPrintable(title), qPrintable(text));
        return quillon::MsgAnswer::OK;
    }
    QString openFileName(const QString&, const QString&, const QString&) override
    {
        return openAnswer;
    }
    QString saveFileName(const QString&, const QString&, const QString&) override { return {}; }
    quillon::PrintChoice choosePrinter() override { return {}; }
    void progress(int) override { }
    void endProgram() override { throw std::runtime_error("the program would end here"); }
};

// The windows without a screen: the identification is loaded as the real
// window loads it, so that its cost is part of the figures.
class HeadlessHost final : public quillon::DocumentHost {
public:
    void setMenuState(quillon::MenuState) override { }
    void setEntryEnabled(const QString&, bool) override { }
    bool isEntryEnabled(const QString&) const override { return true; }
    void showIdentification() override
    {
        crops = quillon::cropList().size();
        window = quillon::storedIdentification();
    }
    std::optional<quillon::Identification> identification() const override { return window; }
    QString closeEditors() override { return {}; }
    void reopenEditor(const QString&) override
    {
        if (!window)
            showIdentification();
    }
    void unloadAllWindows() override { window.reset(); }
    void rebuildCaptions(const QString&) override { }
    void showStartNew() override { }
    RefreshNotice showStartRefresh() override { return { true, false }; }
    int showSaveFile() override { return 1; }
    void setBusy(bool) override { }

    std::optional<quillon::Identification> window;
    size_t crops = 0;
};

// Makes `program` the program folder of a run on `suite`: the folder made,
// with the suite's defaults files in it, and the working database there.
inline void useProgramFolder(const QString& program, const QString& suite)
{
    QDir().mkpath(program);
    const QDir tools(suite + QStringLiteral("/TOOLS/Quillon"));
    for (const QString& def : tools.entryList({ QStringLiteral("*.def") }, QDir::Files))
        QFile::copy(tools.filePath(def), QDir(program).filePath(def));
    quillon::AppState& s = quillon::state();
    s.AppFolder = QDir::toNativeSeparators(program) + QDir::separator();
    s.DataFolder = QDir::toNativeSeparators(QDir(suite).absolutePath());
    s.WorkDBPath = s.AppFolder + QStringLiteral("QUILLONTEMP2.mdb");
}

} // namespace bench
