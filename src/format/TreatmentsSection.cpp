#include "format/TreatmentsSection.h"

#include "app/AppState.h"
#include "app/RuntimeError.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "format/Columns.h"
#include "format/NumberText.h"
#include "format/SectionValues.h"

#include <QSqlQuery>

namespace quillon::format {

namespace {

struct LevelColumn {
    const char* field;
    int start; // the reader's column; the writer's cell begins one before it
};

const LevelColumn levelColumns[] = {
    { "LNCU", 36 },
    { "LNFLD", 39 },
    { "LNSA", 42 },
    { "LNIC", 45 },
    { "LNPLT", 48 },
    { "LNIR", 51 },
    { "LNFER", 54 },
    { "LNRES", 57 },
    { "LNCHE", 60 },
    { "LNTIL", 63 },
    { "LNENV", 66 },
    { "LNHAR", 69 },
    { "LNSIM", 72 },
};

// A level in the treatment line: a blank for the sign, and one blank more
// for a single digit. A level of three digits makes the cell four wide.
QString levelCell(const QVariant& level)
{
    const qint64 n = isBlank(level) ? 0 : level.toLongLong();
    QString cell = QString::number(n);
    if (n >= 0)
        cell.prepend(QLatin1Char(' '));
    if (n <= 9)
        cell.prepend(QLatin1Char(' '));
    return cell;
}

} // namespace

void TreatmentRead(const QString& line)
{
    try {
        if (isComment(line)) {
            appendComment(state().comments.CommentsTreatments, line);
            return;
        }
        RowValues row(QStringLiteral("Treatments"));
        row.number(QStringLiteral("TRTNO"), leadingNumber(mid(line, 1, 2)));
        row.number(QStringLiteral("ROTNO"), leadingNumber(mid(line, 3, 2)));
        row.number(QStringLiteral("ROTOPT"), leadingNumber(mid(line, 6, 1)));
        row.number(QStringLiteral("CRPNO"), leadingNumber(mid(line, 8, 1)));
        const QString title = column(line, 10, 25);
        if (!title.isEmpty())
            row.text(QStringLiteral("TITLET"), title);
        for (const LevelColumn& col : levelColumns) {
            const QString cell = mid(line, col.start, 3);
            if (isNumeric(cell) && leadingNumber(cell) != 0)
                row.text(QLatin1String(col.field), cell);
        }
        row.insert();
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in TreatmentRead."));
    }
}

void CultivarRead(const QString& line)
{
    readLevelLine(line, state().comments.CommentsCultivars, QStringLiteral("Cultivars"), QStringLiteral("LNCU"),
        QStringLiteral(" in CultivarRead/frmMain"), duplicateLevels(QStringLiteral("Cultivars")),
        [&line](RowValues& row) {
            row.text(QStringLiteral("CODE"), column(line, 4, 2));
            const QString varno = column(line, 7, 6);
            if (!varno.isEmpty())
                row.text(QStringLiteral("VARNO"), varno);
            if (!column(line, 14, 16).isEmpty())
                row.text(QStringLiteral("CNAME"), column(line, 14, 25));
        });
}

void readTreatmentsSection(LineCursor& c)
{
    sectionLoop(c, state().comments.CommentsTreatments, TreatmentRead);
}

void readCultivarsSection(LineCursor& c)
{
    sectionLoop(c, state().comments.CommentsCultivars, CultivarRead);
}

void writeTreatmentsSection(FileWriter& w)
{
    database::Rows q(QStringLiteral("Select * From TreatmentS Order By TRTNO"));
    QStringList lines;
    while (q.next()) {
        QString title = isBlank(q.value(QStringLiteral("TITLET")))
            ? QStringLiteral("-99")
            : q.value(QStringLiteral("TITLET")).toString();
        title = title.left(25);
        const QVariant rotno = q.value(QStringLiteral("ROTNO"));
        const QVariant rotopt = q.value(QStringLiteral("ROTOPT"));
        const QVariant crpno = q.value(QStringLiteral("CRPNO"));
        QString text = twoWide(q.value(QStringLiteral("TRTNO")))
            + twoWide(isBlank(rotno) ? QVariant(1) : rotno) + QLatin1Char(' ')
            + NumText(isBlank(rotopt) ? QVariant(0) : rotopt) + QLatin1Char(' ')
            + NumText(isBlank(crpno) ? QVariant(0) : crpno) + QLatin1Char(' ') + title
            + QString(25 - title.size(), QLatin1Char(' '));
        for (const LevelColumn& col : levelColumns)
            text += levelCell(q.value(QLatin1String(col.field)));
        lines << text;
    }
    if (lines.isEmpty()) {
        msgBox(QStringLiteral("No Treatment data available."), MsgButtons::OK, MsgIcon::None,
            QStringLiteral("Error"));
        return;
    }
    w.section({ QStringLiteral("*TREATMENTS") + QString(24, QLatin1Char(' '))
                      + QStringLiteral("-------------FACTOR LEVELS------------"),
                  QStringLiteral("@N R O C TNAME.................... CU FL SA IC MP MI MF MR MC MT ME MH SM") },
        lines, state().comments.CommentsTreatments);
}

void writeCultivarsSection(FileWriter& w)
{
    database::Rows q(QStringLiteral("Select * From Cultivars Order By LNCU"));
    QStringList lines;
    while (q.next()) {
        const QVariant name = q.value(QStringLiteral("CNAME"));
        lines << levelColumn(q.value(QStringLiteral("LNCU")))
                + textOr99(q.value(QStringLiteral("CODE")))
                + rightJustified(textOr99(q.value(QStringLiteral("VARNO"))), 7)
                + QLatin1Char(' ') + (name.isNull() ? QString() : trimSpaces(name.toString()));
    }
    if (lines.isEmpty()) {
        msgBox(QStringLiteral("No cultivar available."), MsgButtons::OK, MsgIcon::None,
            QStringLiteral("Error"));
        return;
    }
    w.section({ QStringLiteral("*CULTIVARS"), QStringLiteral("@C CR INGENO CNAME") }, lines,
        state().comments.CommentsCultivars);
}

} // namespace quillon::format
