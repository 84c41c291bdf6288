// Times the initial conditions editor with the suite of an installed size
// (5,000 soil profiles, 3,000 weather files; run a Release build; figures
// are printed, nothing is asserted):
//   - opening the editor (menu handler and Form_Load) on the large generated
//     experiment, its fields made up to 99, each naming its own soil of the
//     large SOIL.SOL and the station with 30 weather files,
//   - ICFillAll on a profile of 20 layers.
// Each figure is the median of several runs.

#include "LargeExperiment.h"
#include "LargeSuite.h"
#include "app/AppState.h"
#include "app/OpenExperiment.h"
#include "database/Sql.h"
#include "database/WorkDatabase.h"
#include "editors/InitialConditionsEditor.h"
#include "editors/InitialConditionsFill.h"
#include "support/FakeDocumentHost.h"
#include "support/FakeInitialConditionsScreen.h"
#include "support/ScriptedUserInterface.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

using namespace quillon;

namespace {

// The median time of `runs` calls of a step, in milliseconds; `before` runs
// untimed ahead of each call.
double medianMs(int runs, const std::function<void()>& before, const std::function<void()>& step)
{
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        before();
        QElapsedTimer timer;
        timer.start();
        step();
        times.push_back(timer.nsecsElapsed() / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    test::ScriptedUserInterface ui;
    test::FakeHost host;
    QTemporaryDir scratch;

    const QString sampleSuite = QStringLiteral(QUILLON_SAMPLE_SUITE_DIR);
    const QString suiteFolder = scratch.filePath(QStringLiteral("TERVA48"));
    const bench::LargeSuite suite = bench::generateLargeSuite(suiteFolder);

    AppState& s = state();
    const QString appFolder = scratch.filePath(QStringLiteral("app"));
    QDir().mkpath(appFolder);
    const QDir defaults(sampleSuite + QStringLiteral("/TOOLS/Quillon"));
    for (const QString& def : defaults.entryList({ QStringLiteral("*.def") }, QDir::Files))
        QFile::copy(defaults.filePath(def), appFolder + QLatin1Char('/') + def);
    s.AppFolder = QDir::toNativeSeparators(appFolder) + QDir::separator();
    s.DataFolder = QDir::toNativeSeparators(suiteFolder);
    s.WorkDBPath = s.AppFolder + QStringLiteral("QUILLONTEMP2.mdb");

    QFile sample(sampleSuite + QStringLiteral("/Maize/QLNV2101.MZX"));
    sample.open(QIODevice::ReadOnly);
    int eventRows = 0;
    const QString path
        = QDir::toNativeSeparators(suiteFolder + QStringLiteral("/Maize/QLGN9901.MZX"));
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile large(path);
    large.open(QIODevice::WriteOnly | QIODevice::Truncate);
    large.write(bench::generateLarge(sample.readAll(), 1, eventRows));
    large.close();
    s.ExpFilePath = path;
    openExperiment(path); // builds the working database from the suite

    // 99 fields, each naming its own soil of SOIL.SOL and the busy station.
    const auto openFile = [&] {
        openExperiment(path);
        database::exec(QStringLiteral(
            "WITH RECURSIVE n(i) AS (SELECT MAX(LNFLD) + 1 FROM Fields UNION ALL SELECT i + 1 FROM "
            "n WHERE i < 99) INSERT INTO Fields (LNFLD) SELECT i FROM n"));
        database::exec(
            QStringLiteral("UPDATE Fields SET WSTA = ?, SLNO = 'IB' || printf('%08d', rowid * 50)"),
            { QString::fromLatin1(suite.busyStation) });
        database::exec(QStringLiteral("DELETE FROM ICSoil"));
        ui.messages.clear();
    };
    const double opening = medianMs(5, openFile, [] {
        test::FakeInitialConditionsScreen screen;
        editors::InitialConditionsEditor editor(screen);
        screen.attach(editor);
        editors::mnuEditInitCond_Click();
        editor.Form_Load();
        editor.cmdSave();
    });
    const int soils = database::rowCount(QStringLiteral("ICSoil"));

    // A profile of 20 layers, 10 cm each, as FillSoilTable leaves it.
    database::exec(QStringLiteral("DELETE FROM SoilData"));
    for (int i = 1; i <= 20; ++i)
        database::insertRow(QStringLiteral("SoilData"),
            { { QStringLiteral("SLB"), i * 10 }, { QStringLiteral("SLLL"), 0.1 + i * 0.005 },
                { QStringLiteral("SDUL"), 0.3 + i * 0.005 },
                { QStringLiteral("SBDM"), 1.2 + i * 0.01 } });
    const int layers = database::rowCount(QStringLiteral("SoilData"));
    const QString soil = QStringLiteral("Generated deep soil (ZZ00000001)");
    const double fill = medianMs(
        21, [] {}, [&] { editors::ICFillAll(50, 40, 1, soil); });

    std::printf("Large suite: %d soil profiles; large experiment: %d levels of initial conditions, "
                "%d soils in ICSoil\n",
        database::rowCount(QStringLiteral("SoilLookup")),
        database::rowCount(QStringLiteral("InitialConditions")), soils);
    std::printf("   %-46s %8.1f ms median   (target < 300 ms)\n",
        "initial conditions editor: menu handler + Form_Load", opening);
    std::printf(
        "   %-46s %8.2f ms median   (target < 20 ms), %d layers\n", "ICFillAll", fill, layers);
    QStringList texts = ui.texts();
    texts.removeDuplicates();
    std::printf(
        "   messages shown: %zu %s\n", ui.messages.size(), qPrintable(texts.join(" | ").left(300)));
    database::closeWorkDB();
    return 0;
}
