#include "format/IrrigationSection.h"

#include "app/AppState.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "format/Columns.h"
#include "format/EventCells.h"
#include "format/SectionValues.h"
#include "format/NumberText.h"

#include <QSqlQuery>

namespace quillon::format {

using namespace events;

namespace {

const QString LevelHeader = QStringLiteral("@I  EFIR  IDEP  ITHR  IEPT  IOFF  IAME  IAMT IRNAME");
const QString ShortDatesHeader = QStringLiteral("@I IDATE  IROP IRVAL");
const QString LongDatesHeader = QStringLiteral("@I IDATE  IROP IRVAL  IIRV");

// The level's name: unlike the other columns a blank name is stored as
// "-99"; a line that doesn't reach the column leaves it NULL.
QVariant irrigationName(const QString& line)
{
    if (line.size() <= 45)
        return {};
    const QString t = trimSpaces(mid(line, 46, 60));
    if (t.isEmpty())
        return QStringLiteral("-99");
    if (leadingNumber(t) < 0)
        return {};
    return t;
}

// The operation code: "IB" codes (any case) become "IR" codes; any other
// code is kept untrimmed, as long as the column isn't blank.
QVariant operationCode(const QString& line)
{
    if (line.size() <= 11)
        return {};
    if (mid(line, 10, 2).toUpper() == QLatin1String("IB"))
        return QStringLiteral("IR") + mid(line, 12, 3);
    const QString column = mid(line, 10, 5);
    if (trimSpaces(column).isEmpty())
        return {};
    return column;
}

bool hasDate(const QVariant& date)
{
    if (date.isNull())
        return false;
    const QString t = trimSpaces(date.toString());
    return !t.isEmpty() && t != QLatin1String("-99");
}

QString efficiencyText(const QVariant& value)
{
    if (isBlank(value) || value.toDouble() == -99)
        return QStringLiteral("-99");
    return maskedNumber(value, QStringLiteral("#0.00"));
}

} // namespace

void IrrigationRead(const QString& line)
{
    if (isComment(line)) {
        appendComment(state().comments.CommentsIrrigation, line);
        return;
    }
    try {
        database::insertRow(QStringLiteral("Irrigation"),
            typedRow(QStringLiteral("Irrigation"), {
                { QStringLiteral("LNIR"), levelOf(line) },
                { QStringLiteral("EFFIRX"), numberCell(line, 5, 4, 5) },
                { QStringLiteral("DSOILX"), numberCell(line, 11, 10, 5) },
                { QStringLiteral("THETCX"), numberCell(line, 17, 16, 5) },
                { QStringLiteral("IEPTX"), numberCell(line, 23, 22, 5) },
                { QStringLiteral("IOFFX"), textCell(line, 29, 28, 5) },
                { QStringLiteral("IAMEX"), textCell(line, 35, 34, 5) },
                { QStringLiteral("AIRAMX"), numberCell(line, 41, 40, 5) },
                { QStringLiteral("IRNAME"), irrigationName(line) },
            }));
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in IrrigationRead/frmMain."));
    }
}

void IrrigDatesRead(const QString& line)
{
    if (isComment(line)) {
        appendComment(state().comments.CommentsIrrigation, line);
        return;
    }
    try {
        // A blank or negative date means no application at all.
        if (textCell(line, 5, 4, 5).isNull())
            return;
        database::insertRow(QStringLiteral("IrrigApplications"),
            typedRow(QStringLiteral("IrrigApplications"), {
                { QStringLiteral("LNIR"), levelOf(line) },
                { QStringLiteral("IDLAPL"), dateCell(line, true) },
                { QStringLiteral("IRRCOD"), operationCode(line) },
                { QStringLiteral("AMT"), numberCell(line, 17, 16, 5) },
                { QStringLiteral("IIRV"), numberCell(line, 23, 22, 5) },
            }));
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in IrrigDatesRead."));
    }
}

bool FindIIRV()
{
    return database::scalar(QStringLiteral("SELECT COUNT(*) FROM IrrigApplications "
                                           "WHERE IIRV IS NOT NULL AND IIRV <> '' AND IIRV <> -99"))
               .toInt()
        > 0;
}

void readIrrigationSection(LineCursor& c)
{
    QString& comments = state().comments.CommentsIrrigation;
    ++c.i;
    c.takeComments(comments);
    ++c.i; // the level header, whatever it holds
    while (!c.atEnd()) {
        const QString levelLine = c.line();
        IrrigationRead(levelLine);
        const QString level = levelLine.left(3);
        ++c.i;
        c.takeComments(comments);

        const bool datesFollow = !c.atEnd() && c.line().startsWith(QLatin1String("@I IDATE"))
            && !(c.i + 1 < c.n() && c.lines.at(c.i + 1).startsWith(QLatin1Char('*')));
        if (datesFollow) {
            ++c.i;
            c.takeComments(comments);
            while (!c.atEnd() && c.line().left(3) == level) {
                IrrigDatesRead(c.line());
                ++c.i;
                c.takeComments(comments);
            }
        } else {
            // A level without applications still gets one empty application.
            database::insertRow(QStringLiteral("IrrigApplications"), { { QStringLiteral("LNIR"), levelOf(levelLine) } });
        }

        if (!c.atEnd() && c.line().startsWith(QLatin1Char('@'))) {
            ++c.i; // the next level's header
            c.takeComments(comments);
        }
        if (c.atEnd() || c.line().startsWith(QLatin1Char('*')))
            return;
    }
}

void writeIrrigationSection(FileWriter& w)
{
    if (database::rowCount(QStringLiteral("Irrigation")) == 0)
        return;
    w.line();
    w.line(QStringLiteral("*IRRIGATION AND WATER MANAGEMENT"));

    // Whether any application has a water volume decides the dates header of
    // every level, and the writing doesn't change it: asked once.
    const bool longForm = FindIIRV();
    database::Rows q(QStringLiteral("SELECT * FROM Irrigation ORDER BY LNIR"));
    while (q.next()) {
        const QVariant level = q.value(QStringLiteral("LNIR"));
        if (level.isNull())
            break;
        const QVariant irName = q.value(QStringLiteral("IRNAME"));
        const QString name = isBlank(irName) ? QStringLiteral("-99") : irName.toString().left(60);
        w.line(LevelHeader);
        w.line(levelColumn(level)
            + rightJustified(efficiencyText(q.value(QStringLiteral("EFFIRX"))), 5)
            + rightJustified(numberOr99(q.value(QStringLiteral("DSOILX"))), 6)
            + rightJustified(numberOr99(q.value(QStringLiteral("THETCX"))), 6)
            + rightJustified(numberOr99(q.value(QStringLiteral("IEPTX"))), 6)
            + rightJustified(textOr99(q.value(QStringLiteral("IOFFX"))), 6)
            + rightJustified(textOr99(q.value(QStringLiteral("IAMEX"))), 6)
            + rightJustified(numberOr99(q.value(QStringLiteral("AIRAMX"))), 6)
            + QLatin1Char(' ') + name);

        database::Rows a(
            QStringLiteral("SELECT * FROM IrrigApplications WHERE LNIR = ? ORDER BY rowid"),
            { level });
        bool first = true;
        while (a.next()) {
            const QVariant date = a.value(QStringLiteral("IDLAPL"));
            if (first) {
                // The first application decides whether the level has any.
                if (!hasDate(date))
                    break;
                w.line(longForm ? LongDatesHeader : ShortDatesHeader);
                first = false;
            }
            if (!hasDate(date))
                continue;
            QString text = levelColumn(a.value(QStringLiteral("LNIR")))
                + rightJustified(textOr99(date), 5)
                + rightJustified(textOr99(a.value(QStringLiteral("IRRCOD"))), 6)
                + rightJustified(maskOr99(a.value(QStringLiteral("AMT")), QStringLiteral("#0.0")), 6);
            if (longForm)
                text += rightJustified(numberOr99(a.value(QStringLiteral("IIRV"))), 6);
            w.line(text);
        }
    }
    w.comments(state().comments.CommentsIrrigation);
}

} // namespace quillon::format
