// Builds a suite of the size of an installed one in a temporary folder and
// times the loading of its reference data:
//   - Fill_All_Lookups and CreateSIMLookUp from an empty working database,
//   - FillSoilTable for the last profile of a large SOIL.SOL,
//   - FindFieldDate for a field whose four-letter station has 30 files.
// Run a Release build; the figures are printed in milliseconds.

#include "LargeSuite.h"
#include "app/AppState.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "database/WorkDatabase.h"
#include "reference/CodeTables.h"
#include "reference/FillAllLookups.h"
#include "reference/SoilLookups.h"
#include "reference/WeatherLookups.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>
#include <stdexcept>

using namespace quillon;

namespace {

// Prints every message: a quiet load shows none.
class PrintingUserInterface final : public UserInterface {
public:
    int messages = 0;
    MsgAnswer message(const QString& text, const QString& title, MsgIcon, MsgButtons) override
    {
        ++messages;
        std::printf("message [%s]: %s\n", qPrintable(title), qPrintable(text));
        return MsgAnswer::OK;
    }
    QString openFileName(const QString&, const QString&, const QString&) override { return {}; }
    QString saveFileName(const QString&, const QString&, const QString&) override { return {}; }
    PrintChoice choosePrinter() override { return {}; }
    void progress(int) override { }
    void endProgram() override { throw std::runtime_error("the program would end here"); }
};

double timed(const std::function<void()>& job)
{
    QElapsedTimer timer;
    timer.start();
    job();
    return timer.nsecsElapsed() / 1e6;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    PrintingUserInterface printing;
    setUserInterface(&printing);

    QTemporaryDir dir;
    const QString suiteFolder = dir.filePath(QStringLiteral("TERVA48"));
    QElapsedTimer generation;
    generation.start();
    const bench::LargeSuite suite = bench::generateLargeSuite(suiteFolder);
    const qint64 soilBytes = QFileInfo(suiteFolder + QStringLiteral("/Soil/SOIL.SOL")).size();
    std::printf("generated the suite in %lld ms (SOIL.SOL %.1f MB)\n", generation.elapsed(),
        soilBytes / 1e6);

    AppState& s = state();
    s.AppFolder = dir.filePath(QStringLiteral("app")) + QLatin1Char('/');
    QDir().mkpath(s.AppFolder);
    s.DataFolder = suiteFolder;
    s.WorkDBPath = s.AppFolder + QStringLiteral("QUILLONTEMP2.mdb");
    database::CreateDataBaseX();

    const double load = timed([] {
        reference::Fill_All_Lookups();
        reference::CreateSIMLookUp();
    });
    std::printf("Fill_All_Lookups + CreateSIMLookUp: %8.1f ms (target < 2000)\n", load);
    std::printf("   rows: %d weather, %d soils, %d codes, %d stages, %d crops, %d cultivars, %d "
                "simulation codes\n",
        database::rowCount(QStringLiteral("WeatherLookup")),
        database::rowCount(QStringLiteral("SoilLookup")),
        database::rowCount(QStringLiteral("CodeLookup")),
        database::rowCount(QStringLiteral("CodeStageLookup")),
        database::rowCount(QStringLiteral("CropLookup")),
        database::rowCount(QStringLiteral("CropCodesLookup")),
        database::rowCount(QStringLiteral("SimLookUp")));

    const QString lastSoil = QString::fromLatin1(suite.lastSoil);
    const double fill = timed([&] { reference::FillSoilTable(lastSoil); });
    std::printf("FillSoilTable(%s):          %8.1f ms (target < 20), %d layers\n",
        qPrintable(lastSoil), fill, database::rowCount(QStringLiteral("SoilData")));

    database::insertRow(QStringLiteral("Fields"),
        { { QStringLiteral("LNFLD"), 1 }, { QStringLiteral("FLDNAM"), QStringLiteral("BENCH001") },
            { QStringLiteral("WSTA"), QString::fromLatin1(suite.busyStation) } });
    const double years = timed([] { reference::FindFieldDate(); });
    std::printf("FindFieldDate (station %s):       %8.1f ms (target < 20), %d years\n",
        suite.busyStation.constData(), years, database::rowCount(QStringLiteral("FieldYears")));

    database::closeWorkDB();
    return printing.messages == 0 ? 0 : 1;
}
