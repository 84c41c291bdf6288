#include "format/GeneralSection.h"

#include "app/AppState.h"
#include "app/RuntimeError.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "format/Columns.h"
#include "format/NumberText.h"
#include "format/SectionValues.h"

#include <QSqlQuery>
#include <QSqlRecord>

namespace quillon::format {

namespace {

const QString people = QStringLiteral("@PEOPLE");
const QString address = QStringLiteral("@ADDRESS");
const QString site = QStringLiteral("@SITE");
const QString plot = QStringLiteral("@ PAREA ");
const QString notes = QStringLiteral("@NOTES");

const QString plotHeader
    = QStringLiteral("@ PAREA  PRNO  PLEN  PLDR  PLSP  PLAY HAREA  HRNO  HLEN  HARM.........");

// People, Address and Site as the reader holds them while a file is read.
struct HeldGeneral {
    QString people;
    QString address;
    QString site;
};

HeldGeneral& held()
{
    static HeldGeneral h;
    return h;
}

// The held values belong to the file being read: a block read after an
// earlier one of the same file goes on from what that one stored, and a
// fresh working database starts them empty.
void loadHeld()
{
    HeldGeneral h;
    database::Rows q(QStringLiteral("SELECT PEOPLE, ADDRESS, SITE FROM GeneralInfo"));
    if (q.next()) {
        h.people = q.value(0).toString();
        h.address = q.value(1).toString();
        h.site = q.value(2).toString();
    }
    held() = h;
}

QString nonNull(const QString& text)
{
    return text.isNull() ? QStringLiteral("") : text;
}

void storeGeneralInfo()
{
    const HeldGeneral& h = held();
    const QVariantList values { nonNull(h.people), nonNull(h.address), nonNull(h.site) };
    if (database::rowCount(QStringLiteral("GeneralInfo")) == 0)
        database::exec(
            QStringLiteral("INSERT INTO GeneralInfo (PEOPLE, ADDRESS, SITE) VALUES (?, ?, ?)"),
            values);
    else
        database::exec(QStringLiteral("UPDATE GeneralInfo SET PEOPLE = ?, ADDRESS = ?, SITE = ? "
                                      "WHERE rowid = (SELECT MIN(rowid) FROM GeneralInfo)"),
            values);
}

// Tabs, backspaces, vertical tabs and form feeds become blanks, NULs go,
// and then each pair of blanks becomes one, in a single pass.
void cleanNotes()
{
    QString& n = state().comments.Notes;
    n.replace(QLatin1Char('\t'), QLatin1Char(' '));
    n.remove(QChar(0));
    n.replace(QChar(8), QLatin1Char(' '));
    n.replace(QChar(11), QLatin1Char(' '));
    n.replace(QChar(12), QLatin1Char(' '));
    n.replace(QStringLiteral("  "), QStringLiteral(" "));
}

// A line too long for its field loses its end; a line that doesn't begin
// with a blank is cut at its last blank inside the bound, so that no word
// is torn.
QString cutToBound(const QString& line, int bound)
{
    QString text = line.left(bound);
    if (!line.startsWith(QLatin1Char(' '))) {
        const int blank = int(text.lastIndexOf(QLatin1Char(' ')));
        if (blank > 0)
            text = text.left(blank);
    }
    return text;
}

void warnTooLong(const QString& line, const QString& header, int lineNumber, int allowed)
{
    msgBox(QStringLiteral("Line #") + QString::number(lineNumber) + QStringLiteral(" '")
        + line.left(15) + QStringLiteral("...' in ") + header + QStringLiteral("\n\r")
        + QStringLiteral(
            " exceeded maximum allowable length of %1 charaters. Some information will be lost.")
              .arg(allowed));
}

// One plot line as a new PlotInfo row. A column whose condition fails is
// left empty, so the "-99" of the file doesn't come back as a value.
void readPlotLine(const QString& line)
{
    struct Col {
        const char* field;
        int start;
        int length;
        bool textColumn; // a layout or method name: only not negative by its leading number
    };
    static const Col cols[] = {
        { "PAREA", 2, 6, false },
        { "PRNO", 9, 5, false },
        { "PLEN", 15, 5, false },
        { "PLDR", 21, 5, false },
        { "PLSP", 27, 5, false },
        { "PLAY", 33, 5, true },
        { "HAREA", 39, 5, false },
        { "HRNO", 45, 5, false },
        { "HLEN", 51, 5, false },
        { "HARM", 57, 15, true },
    };
    RowValues row(QStringLiteral("PlotInfo"));
    for (const Col& col : cols) {
        const QString text = column(line, col.start, col.length);
        const bool ok = col.textColumn ? leadingNumber(text) >= 0
                                       : isNumeric(text) && leadingNumber(text) >= 0;
        if (ok)
            row.text(QLatin1String(col.field), text);
    }
    row.insert();
}

QVariantList firstRow(const QString& sql)
{
    database::Rows q(sql);
    QVariantList values;
    if (q.next()) {
        for (int i = 0; i < q.columnCount(); ++i)
            values << q.value(i);
    }
    return values;
}

} // namespace

void GeneralRead(const QString& line, QString& header, int lineNumber)
{
    try {
        if (isComment(line)) {
            appendComment(state().comments.CommentsGeneral, line);
            return;
        }
        if (line.startsWith(QLatin1Char('@'))) {
            header = line.left(8);
        } else {
            QString text = line;
            int bound = 0;
            int allowed = 0;
            if ((header == people || header == address) && line.size() > 199) {
                bound = 199;
                allowed = 200;
            } else if (header == site && line.size() > 70) {
                bound = 70;
                allowed = 70;
            }
            if (bound > 0) {
                warnTooLong(line, header, lineNumber, allowed);
                text = cutToBound(line, bound);
            }
            if (header == people) {
                held().people = text;
                header.clear();
            } else if (header == address) {
                held().address = text;
                header.clear();
            } else if (header == site) {
                held().site = text;
                header.clear();
            } else if (header == plot) {
                readPlotLine(line);
            } else if (header == notes) {
                state().comments.Notes += line + QStringLiteral("\r\n");
            }
        }
        storeGeneralInfo();
        cleanNotes();
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in GeneralRead/frmMain."));
    }
}

void readGeneralSection(LineCursor& c, const QString& fixedHeader)
{
    try {
        loadHeld();
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in GeneralRead/frmMain."));
    }
    QString header = fixedHeader;
    const bool endsAtGroup = fixedHeader == site;
    ++c.i;
    while (!c.atEnd()) {
        const QString line = c.line();
        if (line.startsWith(QLatin1Char('*')) || (endsAtGroup && line.startsWith(QLatin1Char('@'))))
            return;
        if (isComment(line))
            appendComment(state().comments.CommentsGeneral, line);
        else
            GeneralRead(line, header, c.i + 1);
        ++c.i;
    }
}

void writeGeneralSection(FileWriter& w)
{
    const QVariantList general
        = firstRow(QStringLiteral("SELECT PEOPLE, ADDRESS, SITE FROM GeneralInfo"));
    const QVariantList plotRow = firstRow(QStringLiteral(
        "SELECT PAREA, PRNO, PLEN, PLDR, PLSP, PLAY, HAREA, HRNO, HLEN, HARM FROM PlotInfo"));

    w.line();
    bool generalLine = false;
    for (const QVariant& v : general) {
        if (!isBlank(v))
            generalLine = true;
    }
    if (generalLine)
        w.line(QStringLiteral("*GENERAL"));

    // The three groups stand in every file: a blank value is written "-99".
    const QString groups[] = { people, address, site };
    for (int i = 0; i < 3; ++i) {
        const QVariant v = general.value(i);
        w.line(groups[i]);
        w.line(isBlank(v) ? QStringLiteral("-99") : v.toString());
    }

    bool anyPlot = false;
    for (const QVariant& v : plotRow) {
        if (!isBlank(v))
            anyPlot = true;
    }
    if (anyPlot) {
        if (!generalLine)
            w.line(QStringLiteral("*GENERAL"));
        w.line(plotHeader);
        struct Col {
            int width;
            const char* mask;
            const char* missing;
        };
        static const Col cols[] = {
            { 7, "##0.0", "-99.0" },
            { 6, "##", "-99" },
            { 6, "##0.0", "-99.0" },
            { 6, "##", "-99" },
            { 6, "##0.0", "-99" },
            { 6, "##", "-99" },
            { 6, "##0.0", "-99.0" },
            { 6, "##", "-99" },
            { 6, "##0.0", "-99.0" },
            { 6, "##", "-99" },
        };
        QString text;
        for (int i = 0; i < 10; ++i) {
            const Col& col = cols[i];
            text += rightJustified(
                maskedCell(plotRow.value(i), QLatin1String(col.mask), QLatin1String(col.missing)),
                col.width);
        }
        w.line(text);
    }

    const QString& n = state().comments.Notes;
    if (!n.isEmpty()) {
        w.line(notes);
        w.line(n);
    }
    w.comments(state().comments.CommentsGeneral);
}

} // namespace quillon::format
