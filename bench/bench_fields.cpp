// Times the field and soil analysis editors against a suite of the size of an
// installed one (5,000 soil profiles, 3,000 weather files; run a Release
// build; figures are printed, nothing is asserted): opening the field editor
// (menu handler and Form_Load), choosing a station and a soil, a change of
// level, and opening the soil analysis editor. Each is the median of several
// runs on a freshly opened sample experiment, through the tests' window
// without widgets and through the real window drawn off screen.

#include "LargeSuite.h"
#include "app/AppState.h"
#include "app/OpenExperiment.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "database/WorkDatabase.h"
#include "editors/FieldEditor.h"
#include "editors/SoilAnalysisEditor.h"
#include "editors/gui/frmFields.h"
#include "reference/CodeTables.h"
#include "reference/FillAllLookups.h"
#include "support/FakeDocumentHost.h"
#include "support/FakeFieldScreen.h"
#include "support/FakeSoilAnalysisScreen.h"

#include <QApplication>
#include <QComboBox>
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

const QString sampleSuite = QStringLiteral(QUILLON_SAMPLE_SUITE_DIR);

class QuietUserInterface final : public UserInterface {
public:
    int messages = 0;
    MsgAnswer message(const QString& text, const QString&, MsgIcon, MsgButtons buttons) override
    {
        ++messages;
        std::printf("   message: %s\n", qPrintable(text));
        return firstAnswer(buttons);
    }
    QString openFileName(const QString&, const QString&, const QString&) override { return {}; }
    QString saveFileName(const QString&, const QString&, const QString&) override { return {}; }
    PrintChoice choosePrinter() override { return {}; }
    void progress(int) override { }
    void endProgram() override { std::exit(3); }
};

double millisecondsOf(const std::function<void()>& step)
{
    QElapsedTimer t;
    t.start();
    step();
    return t.nsecsElapsed() / 1e6;
}

void report(const char* what, std::vector<double> runs, double target)
{
    std::sort(runs.begin(), runs.end());
    std::printf("   %-52s %8.1f ms median of %zu   (target < %.0f ms)\n", what,
        runs.empty() ? 0 : runs[runs.size() / 2], runs.size(), target);
}

} // namespace

int main(int argc, char* argv[])
{
    // The real window is drawn off screen.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QuietUserInterface quiet;
    setUserInterface(&quiet);
    test::FakeHost host;
    QTemporaryDir scratch;

    const QString suiteFolder = scratch.filePath(QStringLiteral("TERVA48"));
    const bench::LargeSuite suite = bench::generateLargeSuite(suiteFolder);
    AppState& s = state();
    s.AppFolder = scratch.filePath(QStringLiteral("app")) + QLatin1Char('/');
    QDir().mkpath(s.AppFolder);
    s.DataFolder = suiteFolder;
    s.WorkDBPath = s.AppFolder + QStringLiteral("QUILLONTEMP2.mdb");
    s.DateTextFormat = QStringLiteral("M/d/yyyy");
    database::CreateDataBaseX();
    reference::Fill_All_Lookups();
    reference::CreateSIMLookUp();
    // The sample experiment, with the suite's own soil and station in its
    // first field.
    const QString path = suiteFolder + QStringLiteral("/Maize/QLNV2101.MZX");
    QDir().mkpath(suiteFolder + QStringLiteral("/Maize"));
    QFile::copy(sampleSuite + QStringLiteral("/Maize/QLNV2101.MZX"), path);
    s.ExpFilePath = path;

    const QString station = QString::fromLatin1(suite.busyStation);
    const QString stationDescription = QStringLiteral("Station %1, generated").arg(station);
    const QString soil = QString::fromLatin1(suite.lastSoil);
    const QString soilEntry = QStringLiteral("Generated soil %1(SOIL.SOL)").arg(soil);

    std::vector<double> opening, stationChoice, stationId, soilChoice, levelChange, soilOpening;
    std::vector<double> windowOpening;
    for (int run = 0; run < 5; ++run) {
        openExperiment(path);
        database::exec(QStringLiteral("UPDATE Fields SET WSTA = ?, SLNO = ? WHERE LNFLD = 1"),
            { station, soil });
        {
            test::FakeFieldScreen screen;
            FieldEditor editor(screen);
            screen.attach(editor);
            opening.push_back(millisecondsOf([&] {
                mnuEditField_Click();
                editor.Form_Load();
            }));
            stationChoice.push_back(
                millisecondsOf([&] { editor.ComboWSTA_Click(stationDescription); }));
            stationId.push_back(millisecondsOf(
                [&] { editor.ComboWSTA_ID_Change(station + QStringLiteral("7501")); }));
            soilChoice.push_back(millisecondsOf([&] {
                editor.ComboSoil_Click(soilEntry);
                editor.Combo2_Click(soil);
            }));
            levelChange.push_back(millisecondsOf([&] { screen.selectLevel(2); }));
            editor.Command1_Click();
        }
        {
            auto* window = new frmFields;
            windowOpening.push_back(millisecondsOf([&] {
                mnuEditField_Click();
                window->Form_Load();
                window->show();
                QApplication::processEvents();
            }));
            window->editor().Command1_Click();
            QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        test::FakeSoilAnalysisScreen screen;
        SoilAnalysisEditor editor(screen);
        screen.attach(editor);
        soilOpening.push_back(millisecondsOf([&] {
            mnuEditSoil_Click();
            editor.Form_Load();
        }));
        editor.cmdCancel_Click();
    }
    std::printf("Generated suite: %d soil profiles, %d weather rows; station %s, soil %s\n",
        database::rowCount(QStringLiteral("SoilLookup")),
        database::rowCount(QStringLiteral("TotalWeatherLookup")), qPrintable(station),
        qPrintable(soil));
    report("field editor: menu handler + Form_Load", opening, 300);
    report("field editor window: the same, shown off screen", windowOpening, 300);
    report("choosing a station (ComboWSTA_Click)", stationChoice, 50);
    report("choosing a station ID (ComboWSTA_ID)", stationId, 50);
    report("choosing a soil (ComboSoil_Click + Combo2)", soilChoice, 50);
    report("a change of level (EditEntry)", levelChange, 50);
    report("soil analysis editor: menu handler + Form_Load", soilOpening, 300);
    std::printf("   messages shown: %d\n", quiet.messages);
    database::closeWorkDB();
    return 0;
}
