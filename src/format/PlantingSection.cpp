#include "format/PlantingSection.h"

#include "app/AppState.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "format/Columns.h"
#include "format/NumberText.h"
#include "format/SectionValues.h"

#include <QSqlQuery>

namespace quillon::format {

namespace {

struct Column {
    const char* field;
    int start;
    const char* missing; // the writer's text for an empty cell
};

// The columns after the level and the planting date, in the order of the
// line. Each is five wide behind a blank, so the writer right-justifies it
// in six.
const Column columns[] = {
    { "IEMRG", 10, "-99" },
    { "PLANTS", 16, "-99.0" },
    { "PLTPOP", 22, "-99.0" },
    { "PLME", 28, "-99" },
    { "PLDS", 34, "-99" },
    { "ROWSPC", 40, "-99" },
    { "AZIR", 46, "-99" },
    { "SDEPTH", 52, "-99.0" },
    { "SDWTPL", 58, "-99" },
    { "SDAGE", 64, "-99" },
    { "ATEMP", 70, "-99.0" },
    { "PLPH", 76, "-99.0" },
    { "SPRLAP", 82, "-99.0" },
};

// A temperature may be below zero: only below -10 is it missing.
constexpr double TemperatureFloor = -10;

} // namespace

void PlantRead(const QString& line)
{
    readLevelLine(line, state().comments.CommentsPlanting, QStringLiteral("Planting"), QStringLiteral("LNPLT"),
        QStringLiteral(" in PlantRead/frmMain."), [](const QVariant& level) {
            msgBox(QStringLiteral("duplicate levels in 'Planting'.") + QLatin1Char(' ') + QStringLiteral("Level")
                    + QLatin1Char(' ') + levelText(level) + QLatin1Char(' ') + QStringLiteral("is read only once."),
                MsgButtons::OK, MsgIcon::None, QStringLiteral("Error"));
        },
        [&line](RowValues& row) {
            const QString date = column(line, 4, 5);
            if (date.size() == 4)
                row.text(QStringLiteral("YRPLT"), QLatin1Char('0') + date);
            else
                readColumn(row, QStringLiteral("YRPLT"), line, 4, 5);
            for (const Column& col : columns) {
                const QString field = QLatin1String(col.field);
                readColumn(row, field, line, col.start, 5,
                    field == QLatin1String("ATEMP") ? TemperatureFloor : 0);
            }
            readColumn(row, QStringLiteral("PLNAME"), line, 111, 60);
        });
}

void readPlantingSection(LineCursor& c)
{
    sectionLoop(c, state().comments.CommentsPlanting, PlantRead);
}

void writePlantingSection(FileWriter& w)
{
    database::Rows q(QStringLiteral("Select * From Planting Order By LNPLT"));
    QStringList lines;
    while (q.next()) {
        const QVariant level = q.value(QStringLiteral("LNPLT"));
        QString text = levelColumn(isBlank(level) ? QVariant(-99) : level)
            + rightJustified(cellText(q.value(QStringLiteral("YRPLT")), QStringLiteral("-99")), 5);
        for (const Column& col : columns)
            text += rightJustified(
                cellText(q.value(QLatin1String(col.field)), QLatin1String(col.missing)), 6);
        // Columns 87 to 110 stay blank; the name begins in column 111.
        text += QString(24, QLatin1Char(' '))
            + textOr99(q.value(QStringLiteral("PLNAME"))).left(60);
        lines << text;
    }
    if (!lines.isEmpty())
        w.section({ QStringLiteral("*PLANTING DETAILS"),
                      QStringLiteral("@P PDATE EDATE  PPOP  PPOE  PLME  PLDS  PLRS  PLRD  PLDP  PLWT  PAGE  "
                                     "PENV  PLPH  SPRL                        PLNAME") },
            lines, state().comments.CommentsPlanting);
}

} // namespace quillon::format
