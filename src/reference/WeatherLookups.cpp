#include "reference/WeatherLookups.h"

#include "app/AppState.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "format/Cp1252.h"
#include "format/NumberText.h"
#include "format/TextLines.h"
#include "reference/LookupText.h"
#include "reference/SuiteFiles.h"

#include <QFile>

#include <utility>
#include <vector>

namespace quillon::reference {

namespace {

// The year a station's file states: the first six characters, trimmed, of
// the line after the one that begins with "@START". Reads no further than
// that line. Nothing when the file or the line isn't there.
bool startYearOfFile(const QString& path, QString& year)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine();
        if (!line.startsWith("@START"))
            continue;
        if (file.atEnd())
            return false;
        QByteArray next = file.readLine();
        while (next.endsWith('\n') || next.endsWith('\r'))
            next.chop(1);
        year = format::trimSpaces(format::fromCp1252(next.left(6)));
        return true;
    }
    return false;
}

QString likeEscaped(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    text.replace(QLatin1Char('%'), QLatin1String("\\%"));
    text.replace(QLatin1Char('_'), QLatin1String("\\_"));
    return text;
}

} // namespace

QString weatherDescription(const QString& firstLine)
{
    const int colon = int(firstLine.indexOf(QLatin1Char(':')));
    QString text = colon >= 0 ? firstLine.mid(colon + 1, 50) : firstLine.left(50);
    text = format::trimSpaces(text);
    text.remove(QLatin1Char('\''));
    text.replace(QLatin1Char('\t'), QLatin1Char(' '));
    if (text == QLatin1String(" -99"))
        return QStringLiteral("");
    return text;
}

QString fullYear(const QString& digits)
{
    return (format::leadingNumber(digits) > 25 ? QStringLiteral("19") : QStringLiteral("20"))
        + digits;
}

QString yearOfWeatherCode(const QString& code)
{
    return fullYear(code.mid(4, 2));
}

QStringList stationCodes(const QString& station, const QString& markColumn)
{
    QString match;
    QVariant value;
    if (station.size() == 4) {
        match = QStringLiteral("LIKE ? ESCAPE '\\'");
        value = likeEscaped(station) + QLatin1Char('%');
    } else if (station.size() == 8) {
        match = QStringLiteral("= ?");
        value = station;
    } else {
        return {};
    }
    QStringList codes;
    database::Rows q(
        QStringLiteral("SELECT Code FROM TotalWeatherLookup WHERE Code %1 AND %2 = 'X' "
                       "ORDER BY rowid")
            .arg(match, markColumn),
        { value });
    while (q.next())
        codes << q.value(0).toString();
    return codes;
}

void fillWeatherLookup()
{
    const QString folder = locationFolder(state().WeatherFolder);
    const QStringList names = listMatching(folder, QStringLiteral("*.wth"));
    for (const QString& name : names) {
        if (name.size() >= 13)
            continue;
        const QString code = name.left(name.size() - 4);
        const QString description = weatherDescription(readFirstLine(joinPath(folder, name)));
        database::insertRow(QStringLiteral("WeatherLookup"),
            { { QStringLiteral("Code"), textOrNull(code) },
                { QStringLiteral("Description"), textOrNull(description) },
                { QStringLiteral("Station"), textOrNull(code.left(4)) } });
    }

    // One row for each station and description: it stands for the station.
    std::vector<std::pair<QVariant, QVariant>> stations;
    QSqlQuery q = database::select(QStringLiteral(
        "SELECT DISTINCT Station, Description FROM WeatherLookup ORDER BY Station, Description"));
    while (q.next())
        stations.emplace_back(q.value(0), q.value(1));
    q.finish();
    for (const auto& [station, description] : stations) {
        database::insertRow(QStringLiteral("WeatherLookup"),
            { { QStringLiteral("Code"), station }, { QStringLiteral("Description"), description },
                { QStringLiteral("Station"), station } });
    }
}

void fillTotalWeatherLookup()
{
    database::exec(QStringLiteral("INSERT INTO TotalWeatherLookup (Code, Description) SELECT Code, "
                                  "Description FROM WeatherLookup"));
    database::exec(QStringLiteral("UPDATE TotalWeatherLookup SET Observed = 'X'"));
}

void FindFieldDate()
{
    try {
        ListingCache cache;
        const QString folder = locationFolder(state().WeatherFolder);

        QStringList stations;
        QSqlQuery q
            = database::select(QStringLiteral("SELECT DISTINCT WSTA FROM Fields ORDER BY WSTA"));
        while (q.next()) {
            if (!q.value(0).isNull())
                stations << format::trimSpaces(q.value(0).toString());
        }
        q.finish();

        QStringList years;
        for (const QString& station : stations) {
            for (const QString& stored : stationCodes(station, QStringLiteral("Observed"))) {
                const QString code = format::trimSpaces(stored);
                if (code.size() == 8) {
                    years << yearOfWeatherCode(code);
                    continue;
                }
                // A station's own row: its file, if there is one, states the
                // year it starts.
                const QString path = findIn(folder, stored + QStringLiteral(".wth"));
                QString year;
                if (!path.isEmpty() && startYearOfFile(path, year))
                    years << year;
            }
        }

        database::Transaction transaction;
        database::exec(QStringLiteral("DELETE FROM FieldYears"));
        for (const QString& year : years)
            database::insertRow(QStringLiteral("FieldYears"),
                { { QStringLiteral("Year"), year.isNull() ? QStringLiteral("") : year } });
        transaction.commit();
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in FindFieldDate/Module."));
    }
}

} // namespace quillon::reference
