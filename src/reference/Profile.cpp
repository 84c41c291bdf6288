#include "reference/Profile.h"

#include "app/AppState.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "format/Columns.h"
#include "format/TextLines.h"
#include "reference/LookupText.h"
#include "reference/SuiteFiles.h"
#include "reference/WeatherLookups.h"

#include <QFileInfo>

namespace quillon::reference {

QString requiredProfileLocation(const char* code, const QString& missing)
{
    database::Rows q(QStringLiteral("SELECT Path FROM TERVAPRO WHERE CODE = ? ORDER BY rowid"),
        { QLatin1String(code) });
    if (!q.next()) {
        msgBox(missing);
        endProgram();
    }
    return locationText(q.value(0).toString());
}

void LocateAvailableData()
{
    AppState& s = state();
    const QString name = joinPath(s.DataFolder, QStringLiteral("TERVAPRO.V48"));
    const QString found = findPath(name);
    if (found.isEmpty() || QFileInfo(found).isDir()) {
        msgBox(QStringLiteral("File ") + name + QStringLiteral(" was not found."), MsgButtons::OK,
            MsgIcon::Critical, QStringLiteral("Error"));
        endProgram();
    }

    // Rows stored before a failure stay, as each insert stood on its own.
    database::Transaction transaction;
    try {
        const QStringList lines = readSuiteLines(found);
        for (const QString& line : lines) {
            const QString trimmed = format::trimSpaces(line);
            if (trimmed.isEmpty() || trimmed.startsWith(QLatin1Char('!')))
                continue;
            database::insertRow(QStringLiteral("TERVAPRO"),
                { { QStringLiteral("Code"), textOrNull(format::mid(line, 1, 3)) },
                    { QStringLiteral("Path"),
                        textOrNull(format::trimSpaces(format::mid(line, 4, 100))) } });
        }

        s.WeatherFolder
            = requiredProfileLocation("WED", QStringLiteral("Cannot locate Weather files."));
        fillWeatherLookup();

        s.GenotypeFolder
            = requiredProfileLocation("CRD", QStringLiteral("Cannot locate Genotype files."));
        fillTotalWeatherLookup();
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral("in LocateAvailableData."));
    }
    transaction.commit();
}

} // namespace quillon::reference
