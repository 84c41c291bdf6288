// Times the factor editors on the large generated experiment (99 levels of
// every factor, about 20,000 events; run a Release build; figures are
// printed, nothing is asserted): opening the fertilizer editor (menu handler
// and Form_Load), a change of level, OK, Cancel, opening the treatment
// table, and the simulation controls' opening, change of level and Add.
// Each is the median of several runs on a freshly opened file.

#include "LargeExperiment.h"
#include "app/AppState.h"
#include "app/DocumentCommands.h"
#include "app/OpenExperiment.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "database/WorkDatabase.h"
#include "editors/EventEditor.h"
#include "editors/SimEditor.h"
#include "editors/TreatmentEditor.h"
#include "support/FakeDocumentHost.h"
#include "support/FakeEventScreen.h"
#include "support/FakeSimScreen.h"
#include "support/FakeTreatmentScreen.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

using namespace quillon;
using namespace quillon::editors;

namespace {

const QString suiteDir = QStringLiteral(QUILLON_SAMPLE_SUITE_DIR);

class QuietUserInterface final : public UserInterface {
public:
    int messages = 0;
    MsgAnswer message(const QString&, const QString&, MsgIcon, MsgButtons buttons) override
    {
        ++messages;
        return firstAnswer(buttons);
    }
    QString openFileName(const QString&, const QString&, const QString&) override { return {}; }
    QString saveFileName(const QString&, const QString&, const QString&) override { return {}; }
    PrintChoice choosePrinter() override { return {}; }
    void progress(int) override { }
    void endProgram() override { std::exit(3); }
};

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v.empty() ? 0 : v[v.size() / 2];
}

double millisecondsOf(const std::function<void()>& step)
{
    QElapsedTimer t;
    t.start();
    step();
    return t.nsecsElapsed() / 1e6;
}

void report(const char* what, const std::vector<double>& runs, double target)
{
    std::printf("   %-44s %8.1f ms median of %zu   (target < %.0f ms)\n", what, median(runs),
        runs.size(), target);
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QuietUserInterface quiet;
    setUserInterface(&quiet);
    test::FakeHost host;
    QTemporaryDir scratch;

    AppState& s = state();
    const QString appFolder = scratch.filePath(QStringLiteral("app"));
    QDir().mkpath(appFolder);
    const QDir defaults(suiteDir + QStringLiteral("/TOOLS/Quillon"));
    for (const QString& def : defaults.entryList({ QStringLiteral("*.def") }, QDir::Files))
        QFile::copy(defaults.filePath(def), appFolder + QLatin1Char('/') + def);
    s.AppFolder = QDir::toNativeSeparators(appFolder) + QDir::separator();
    s.DataFolder = QDir::toNativeSeparators(QDir(suiteDir).absolutePath());
    s.WorkDBPath = s.AppFolder + QStringLiteral("QUILLONTEMP2.mdb");

    QFile sample(suiteDir + QStringLiteral("/Maize/QLNV2101.MZX"));
    sample.open(QIODevice::ReadOnly);
    int eventRows = 0;
    const QByteArray large = bench::generateLarge(sample.readAll(), 16, eventRows);
    const QString path = QDir::toNativeSeparators(scratch.filePath(QStringLiteral("QLGN9901.MZX")));
    QFile out(path);
    out.open(QIODevice::WriteOnly);
    out.write(large);
    out.close();
    s.ExpFilePath = path;

    const EventMember& fertilizer = *eventMember(QStringLiteral("frmFertEdit"));
    std::vector<double> opening, levelChange, ok, cancel, treatments;
    std::vector<double> simOpening, simLevelChange, simAdd;
    for (int run = 0; run < 5; ++run) {
        openExperiment(path);
        {
            test::FakeEventScreen screen(fertilizer);
            EventEditor editor(fertilizer, screen);
            screen.attach(editor);
            opening.push_back(millisecondsOf([&] {
                EventEditor::openEditor(fertilizer);
                editor.Form_Load();
            }));
            for (int level : { 50, 99, 2 })
                levelChange.push_back(millisecondsOf([&] { screen.selectLevel(level); }));
            ok.push_back(millisecondsOf([&] { editor.cmdOK_Click(); }));
        }
        {
            test::FakeEventScreen screen(fertilizer);
            EventEditor editor(fertilizer, screen);
            screen.attach(editor);
            EventEditor::openEditor(fertilizer);
            editor.Form_Load();
            screen.selectLevel(7);
            screen.typeLevel(0, QStringLiteral("120"));
            cancel.push_back(millisecondsOf([&] { editor.cmdCancel_Click(); }));
        }
        test::FakeTreatmentScreen screen;
        TreatmentEditor table(screen);
        screen.editor = &table;
        treatments.push_back(millisecondsOf([&] {
            mnuViewTreatments_Click();
            table.Form_Load();
        }));
        table.cmdSave_Click();
        {
            test::FakeSimScreen screen;
            SimEditor sim(screen);
            screen.editor = &sim;
            simOpening.push_back(millisecondsOf([&] {
                EditSimOptGeneral_Click();
                sim.Form_Load();
            }));
            for (int level : { 50, 99, 2 })
                simLevelChange.push_back(millisecondsOf([&] { screen.selectLevel(level); }));
            simAdd.push_back(millisecondsOf([&] { sim.CmdAdd_Click(); }));
            sim.cmdCancel_Click();
        }
    }
    std::printf("Large generated experiment: %lld bytes, %d event rows, %d fertilizer events\n",
        static_cast<long long>(large.size()), eventRows,
        database::rowCount(QStringLiteral("Fertilization")));
    report("fertilizer editor: menu handler + Form_Load", opening, 300);
    report("a change of level (EditEntry)", levelChange, 30);
    report("OK", ok, 500);
    report("Cancel after a renumbering", cancel, 500);
    report("treatment table: menu handler + Form_Load", treatments, 200);
    std::printf("Simulation controls: %d levels\n",
        database::rowCount(QStringLiteral("SimulationControl")));
    report("frmSim: menu handler + Form_Load", simOpening, 300);
    report("frmSim: a change of level", simLevelChange, 30);
    report("frmSim: CmdAdd_Click", simAdd, 100);
    std::printf("   messages shown: %d\n", quiet.messages);
    database::closeWorkDB();
    return 0;
}
