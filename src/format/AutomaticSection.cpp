#include "format/AutomaticSection.h"

#include "app/AppState.h"
#include "app/RuntimeError.h"
#include "database/Sql.h"
#include "format/Columns.h"
#include "format/DateCodes.h"
#include "format/NumberText.h"
#include "format/SimulationCells.h"
#include "format/TextLines.h"
#include "reference/SimDefaults.h"

#include <cmath>

namespace quillon::format {

using namespace simulation;
using reference::SimGroup;
using reference::simDefaults;

namespace {

enum GroupIndex { Planting = 5, Irrigation, Nitrogen, Residues, Harvest, Simdates };

const SimGroup& group(int index) { return reference::simGroups().at(index); }

// Runs a group reader's body; on failure reports it and stores the level's
// row of defaults, whose own failure goes on to the caller.
void readGroup(const QString& line, int index, const char* name, const std::function<void(Row&, double)>& body)
{
    const SimGroup& g = group(index);
    readGroupLine(line, g, index == Harvest ? 0 : 5, QStringLiteral("Auto Management/") + QLatin1String(name), g.table,
        body);
}

// What completes a date given as a day alone: the level's start date S and
// its year Y, two digits.
struct StartYear {
    QString S;
    QString Y;
};

StartYear startYear(double level)
{
    database::Rows q(QStringLiteral("SELECT YRSIM FROM SimulationControl WHERE LNSIM = ?"),
        { static_cast<qlonglong>(std::nearbyint(level)) });
    if (!q.next())
        throw RuntimeError(err::NoCurrentRecord, QStringLiteral("No current record."));
    StartYear s;
    s.S = trimSpaces(q.value(0).toString());
    s.Y = s.S.left(2);
    return s;
}

enum class MoveYear { Never, WhenLater, WhenEarlier };

// A window date of five positions at `start`. A full five-digit code stays
// as it stands. A day alone gets the year of the start date, and moves to
// the next year when it lies after the start (planting) or before it
// (harvest). The next year's two digits are taken from positions 3 and 4 of
// the year's text with its sign blank, so 2001 gives "00": that loss of the
// last digit belongs to the format.
QString windowDate(const QString& line, int start, const QString& blank, const QString& member, StartYear& base,
    MoveYear move)
{
    const QString column = mid(line, start, 5);
    const QString t = trimSpaces(column);
    QString c;
    if (!t.isEmpty() && t != QLatin1String("-99"))
        c = leadingNumber(column) < 0 ? member : column;
    else
        c = blank;
    const QString trimmed = trimSpaces(c);
    if (trimmed == QLatin1String("-99"))
        return c;

    const bool whole = trimmed.size() == 5;
    switch (trimmed.size()) {
    case 4:
        c = base.Y + c.right(3);
        break;
    case 3:
        c = base.Y + trimmed;
        break;
    case 2:
        c = base.Y + QLatin1Char('0') + trimmed;
        break;
    case 1:
        c = base.Y + QStringLiteral("00") + trimmed;
        break;
    default:
        break;
    }
    if (!whole && move != MoveYear::Never) {
        const QDate from = toDate(TheDate(base.S));
        const QDate to = toDate(TheDate(c));
        if (!from.isValid() || !to.isValid())
            throw RuntimeError(err::TypeMismatch, QStringLiteral("Type mismatch"));
        const qint64 days = from.daysTo(to);
        if ((move == MoveYear::WhenLater && days > 0) || (move == MoveYear::WhenEarlier && days < 0)) {
            base.Y = mid(QLatin1Char(' ') + QString::number(from.year() + 1), 3, 2);
            c = base.Y + c.mid(2);
        }
    }
    return c;
}

const QString Marker = QStringLiteral("@  AUTOMATIC MANAGEMENT");

} // namespace

bool isAutomaticManagementMarker(const QString& line)
{
    const QString head = line.left(8);
    for (const char* spelling : { "@  AUTOM", "@ AUTOMA", "@AUTOMAT", "@   AUTO", "@    AUT" }) {
        if (head == QLatin1String(spelling))
            return true;
    }
    return false;
}

void AutoPlantingRead(const QString& line)
{
    readGroup(line, Planting, "Planting", [&](Row& row, double level) {
        StartYear base = startYear(level);
        if (line.size() > 16)
            row.emplace_back(QStringLiteral("PWDINF"),
                windowDate(line, 16, QStringLiteral("-99  "), simDefaults().PWDINF, base, MoveYear::WhenLater));
        // The last day takes the year that the first day left, unmoved.
        if (line.size() > 22)
            row.emplace_back(QStringLiteral("PWDINL"),
                windowDate(line, 22, QStringLiteral("-99  "), simDefaults().PWDINL, base, MoveYear::Never));
        addCells(row, line,
            { { "SWPLTL", 28, 28, 5 }, { "SWPLTH", 34, 34, 5 }, { "SWPLTD", 40, 40, 5 }, { "PTX", 46, 46, 5 },
                { "PTTN", 52, 52, 5 } });
    });
}

void AutoIrrigationRead(const QString& line)
{
    readGroup(line, Irrigation, "Irrigation", [&](Row& row, double) {
        addCells(row, line,
            { { "DSOIL", 17, 16, 5 }, { "THETAC", 23, 22, 5 }, { "IEPT", 29, 28, 5 }, { "IOFF", 35, 34, 5 },
                { "IAME", 41, 40, 5 }, { "AIRAMT", 47, 46, 5 }, { "EFFIRR", 53, 52, 5 } });
    });
}

void AutoNitrogenRead(const QString& line)
{
    // The stage code is taken over 11 positions.
    readGroup(line, Nitrogen, "Nitrogen", [&](Row& row, double) {
        addCells(row, line,
            { { "DSOILN", 17, 16, 5 }, { "SOILNC", 23, 22, 5 }, { "SOILNX", 29, 28, 5 }, { "NCODE", 35, 34, 5 },
                { "NEND", 41, 40, 11 } });
    });
}

void AutoResiduesRead(const QString& line)
{
    readGroup(line, Residues, "Residues", [&](Row& row, double) {
        addCells(row, line, { { "RIP", 17, 16, 5 }, { "NRESDL", 23, 22, 5 }, { "DRESMG", 29, 28, 5 } });
    });
}

void AutoHarvestRead(const QString& line)
{
    readGroup(line, Harvest, "Harvest", [&](Row& row, double level) {
        StartYear base = startYear(level);
        addCell(row, line, { "HDLAY", 17, 16, 5 });
        if (line.size() > 23)
            row.emplace_back(QStringLiteral("HLATE"),
                windowDate(line, 22, QStringLiteral("  -99"), simDefaults().HLATE, base, MoveYear::WhenEarlier));
        addCells(row, line, { { "HPP", 29, 28, 5 }, { "HRP", 35, 34, 5 } });
    });
}

void AutoSimdatesRead(const QString& line)
{
    readGroup(line, Simdates, "Simdates", [&](Row& row, double) {
        if (line.size() > 29) {
            const QString test = mid(line, 29, 8);
            // Stored as a number, so that leading zeros go.
            row.emplace_back(QStringLiteral("FODAT"),
                trimSpaces(test).isEmpty() || leadingNumber(test) < 0
                    ? simDefaults().member(QStringLiteral("FODAT"))
                    : QVariant(decimalText(leadingNumber(mid(line, 30, 7)))));
        }
        // The file name has no negative test and keeps its blanks.
        if (line.size() > 71)
            row.emplace_back(QStringLiteral("FONAME"),
                trimSpaces(mid(line, 70, 25)).isEmpty() ? simDefaults().member(QStringLiteral("FONAME"))
                                                        : QVariant(mid(line, 71, 25)));
    });
}

void writeAutomaticManagementLevel(FileWriter& w, const QVariant& level, const QList<QList<QVariantMap>>& groups,
    int i)
{
    const auto& all = reference::simGroups();
    auto plain = [&](int index, const char* header) {
        w.line(QLatin1String(header));
        w.line(plainLine(level, rowAt(groups.at(index), i), all.at(index)));
    };

    w.line(Marker);
    plain(Planting, "@N PLANTING    PFRST PLAST PH2OL PH2OU PH2OD PSTMX PSTMN");

    // The efficiency alone has a mask, and only for a value of the table.
    const QVariantMap irrigation = rowAt(groups.at(Irrigation), i);
    const SimGroup& g = all.at(Irrigation);
    QString line = lineStart(level, labelText(irrigation, g));
    for (const QString& column : g.columns) {
        const QVariant value = irrigation.value(column);
        line += rightJustified(column == QLatin1String("EFFIRR") && !value.isNull()
                ? maskedNumber(value, QStringLiteral("##0.00"))
                : cellText(irrigation, column),
            6);
    }
    w.line(QStringLiteral("@N IRRIGATION  IMDEP ITHRL ITHRU IROFF IMETH IRAMT IREFF"));
    w.line(line);

    plain(Nitrogen, "@N NITROGEN    NMDEP NMTHR NAMNT NCODE NAOFF");
    plain(Residues, "@N RESIDUES    RIPCN RTIME RIDEP");
    plain(Harvest, "@N HARVEST     HFRST HLAST HPCNP HPCNR");

    if (state().IsForecast) {
        const QVariantMap dates = rowAt(groups.at(Simdates), i);
        w.line(QStringLiteral("@N SIMDATES    ENDAT    SDUR   FODAT  FSTRYR  FENDYR FWFILE           FONAME"));
        w.line(lineStart(level, labelText(dates, all.at(Simdates)))
            + rightJustified(cellText(dates, QStringLiteral("FODAT")), 22) + QString(34, QLatin1Char(' '))
            + cellText(dates, QStringLiteral("FONAME")));
    }
}

} // namespace quillon::format
