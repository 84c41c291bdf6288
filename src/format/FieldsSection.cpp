#include "format/FieldsSection.h"

#include "app/AppState.h"
#include "app/RuntimeError.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "format/Columns.h"
#include "format/NumberText.h"
#include "format/SectionValues.h"

#include <QSqlQuery>

#include <optional>

namespace quillon::format {

namespace {

const QString fields = QStringLiteral("Fields");

// The name a blank ID_FIELD is read as.
const QString blankName = QStringLiteral("XXXXX000");

// How many times a line may be moved to a new name before the reader gives
// up on it; each move picks a name not yet in the table, so this is only a
// guard against a table that keeps refusing.
constexpr int MaxRenames = 100;

struct Column {
    const char* field;
    int start;
    int length;
};

void readFirstGroup(const QString& line, const std::optional<qint64>& level, const QString& name)
{
    RowValues row(fields);
    if (level)
        row.number(QStringLiteral("LNFLD"), double(*level));
    else
        row.number(QStringLiteral("LNFLD"), leadingNumber(mid(line, 1, 3)));
    row.text(QStringLiteral("FLDNAM"), name);
    static const Column cols[] = {
        { "WSTA", 13, 8 },
        { "SLOPE", 22, 5 },
        { "FLOB", 28, 5 },
        { "DFDRN", 34, 5 },
        { "FLDD", 40, 5 },
        { "SFDRN", 46, 5 },
        { "FLST", 52, 5 },
        { "SLTX", 58, 5 },
        { "SLDP", 64, 5 },
        { "SLNO", 70, 10 },
    };
    for (const Column& col : cols)
        readColumn(row, QLatin1String(col.field), line, col.start, col.length);
    row.text(QStringLiteral("FLNAME"), column(line, 81, 60));
    row.insert();
}

void readSecondGroup(const QString& line)
{
    const QVariant level
        = fieldNumber(fields, QStringLiteral("LNFLD"), leadingNumber(mid(line, 1, 3)));
    QSqlQuery q
        = database::select(QStringLiteral("SELECT rowid FROM Fields WHERE LNFLD = ?"), { level });
    if (!q.next())
        throw RuntimeError(err::NoCurrentRecord, QStringLiteral("No current record."));
    const qint64 rowid = q.value(0).toLongLong();
    q.finish();

    struct Coord {
        const char* field;
        int start;
        int length;
        bool exact; // coordinates may be negative: only -99 itself is missing
    };
    static const Coord cols[] = {
        { "XCRD", 4, 17, true },
        { "YCRD", 21, 15, true },
        { "ELEV", 37, 9, true },
        { "AREA", 47, 17, false },
        { "SLEN", 64, 5, false },
        { "FLWR", 70, 5, false },
        { "SLAS", 76, 5, false },
        { "FLHST", 82, 5, false },
        { "FHDUR", 88, 5, false },
    };
    RowValues row(fields);
    for (const Coord& col : cols) {
        const QString text = column(line, col.start, col.length);
        if (text.isEmpty())
            continue;
        const double value = leadingNumber(text);
        if (col.exact ? value == -99 : value < 0)
            row.null(QLatin1String(col.field));
        else
            row.text(QLatin1String(col.field), text);
    }
    row.update(rowid);
}

// The number of trailing characters of a name that read as a number: the
// largest of 1 to 4, or 0.
int numericTail(const QString& name)
{
    int tail = 0;
    for (int d = 1; d <= 4 && d <= name.size(); ++d) {
        if (isNumeric(name.right(d)))
            tail = d;
    }
    return tail;
}

bool nameTaken(const QString& name)
{
    return database::select(
        QStringLiteral("Select * From Fields Where FLDNAM = '") + name + QStringLiteral("'"))
        .next();
}

// A name for a line whose name (or level) is already in the table: the
// number at the end of the name counted on, zero-filled, or "XXXX000" and a
// count for a name that ends in no digit.
QString nextFreeName(const QString& name)
{
    const int tail = numericTail(name);
    QString candidate;
    for (int i = 1; i <= 9; ++i) {
        if (tail > 0) {
            const qint64 v = qint64(leadingNumber(name.right(tail)));
            QString zeros;
            if (v < 10)
                zeros = QStringLiteral("000");
            if (v > 9)
                zeros = QStringLiteral("00");
            if (v > 99)
                zeros = QStringLiteral("0");
            if (v > 999)
                zeros.clear();
            candidate = name.left(name.size() - tail) + zeros + QString::number(v + i);
        } else {
            candidate = QStringLiteral("XXXX000") + QString::number(i);
        }
        if (!nameTaken(candidate))
            break;
    }
    return candidate;
}

qint64 nextFreeLevel()
{
    database::Rows q(QStringLiteral("Select LNFLD From Fields Order by LNFLD"));
    qint64 last = 0;
    while (q.next())
        last = q.value(0).toLongLong();
    return last + 1;
}

QString spaces(int count)
{
    return QString(qMax(0, count), QLatin1Char(' '));
}

QString firstGroupLine(const database::Rows& q)
{
    const auto v = [&q](const char* field) { return q.value(QLatin1String(field)); };
    const QString name = textOr99(v("FLDNAM"));
    const QString station = textOr99(v("WSTA"));
    const QString slope = maskedCell(v("SLOPE"), QStringLiteral("#0.0"), QStringLiteral("-99"));
    QString texture = textOr99(v("SLTX"));
    texture = texture.leftJustified(4);
    QString soil = textOr99(v("SLNO"));
    if (soil != QLatin1String("-99"))
        soil = soil.leftJustified(10);
    QString text = levelColumn(isBlank(v("LNFLD")) ? QVariant(-99) : v("LNFLD"));
    text += name + spaces(9 - int(name.size()));
    text += station;
    text += spaces(14 - int(station.size()) - int(slope.size())) + slope;
    for (const char* field : { "FLOB", "DFDRN", "FLDD", "SFDRN", "FLST" })
        text += rightJustified(cellText(v(field), QStringLiteral("-99")), 6);
    text += spaces(5 - int(texture.size())) + texture;
    text += rightJustified(cellText(v("SLDP"), QStringLiteral("-99")), 6);
    text += spaces(12 - int(soil.size())) + soil;
    text += QLatin1Char(' ') + textOr99(v("FLNAME")).left(25);
    return text;
}

QString secondGroupLine(const database::Rows& q)
{
    struct Cell {
        const char* field;
        int width;
        const char* missing;
    };
    static const Cell cells[] = {
        { "XCRD", 15, "-99.00000" },
        { "YCRD", 16, "-99.00000" },
        { "ELEV", 10, "-99.00" },
        { "AREA", 18, "-99.0" },
        { "SLEN", 6, "-99.0" },
        { "FLWR", 6, "-99.0" },
        { "SLAS", 6, "-99.0" },
        { "FLHST", 6, "-99" },
        { "FHDUR", 6, "-99" },
    };
    const QVariant level = q.value(QStringLiteral("LNFLD"));
    QString text = levelColumn(isBlank(level) ? QVariant(-99) : level);
    for (const Cell& cell : cells)
        text += rightJustified(
            cellText(q.value(QLatin1String(cell.field)), QLatin1String(cell.missing)), cell.width);
    return text;
}

} // namespace

void FieldRead(const QString& line, int group, int lineNumber)
{
    Q_UNUSED(lineNumber)
    if (line.size() < 2)
        return;
    if (isComment(line)) {
        appendComment(state().comments.CommentsFields, line);
        return;
    }
    std::optional<qint64> level;
    QString name = column(line, 4, 8);
    if (name.isEmpty())
        name = blankName;
    for (int renames = 0;; ++renames) {
        try {
            if (group == 1)
                readFirstGroup(line, level, name);
            else
                readSecondGroup(line);
            return;
        } catch (const RuntimeError& e) {
            if (e.number() == err::DuplicateKey && group == 1 && renames < MaxRenames) {
                const QString oldLevel = level
                    ? QString::number(*level)
                    : levelText(fieldNumber(
                        fields, QStringLiteral("LNFLD"), leadingNumber(mid(line, 1, 3))));
                try {
                    name = nextFreeName(name);
                    level = nextFreeLevel();
                } catch (const RuntimeError& inner) {
                    reportError(inner.text(), QStringLiteral(" in FieldRead/frmMain"));
                    return;
                }
                msgBox(QStringLiteral("Duplicate data in 'Fields'.") + QLatin1Char(' ')
                        + QStringLiteral("The data in level") + QLatin1Char(' ') + oldLevel
                        + QLatin1Char(' ') + QStringLiteral("will be read as")
                        + QStringLiteral(" '") + QString::number(*level) + QStringLiteral("   ")
                        + name + QStringLiteral(" .......'"),
                    MsgButtons::OK, MsgIcon::Exclamation);
                continue;
            }
            if (e.number() == err::ObjectNotSet) {
                msgBox(QStringLiteral(
                    "Database is already open. Please close it and start Quillon again."));
                endProgram();
            }
            if (e.number() == err::NoCurrentRecord)
                msgBox(QStringLiteral(
                           "Format in Field section is incorrect. Some data could be lost."),
                    MsgButtons::OK, MsgIcon::None, QStringLiteral("Error"));
            else
                reportError(e.text(), QStringLiteral(" in FieldRead/frmMain"));
            return;
        }
    }
}

void readFieldsSection(LineCursor& c)
{
    QString& comments = state().comments.CommentsFields;
    ++c.i;
    c.takeComments(comments);
    ++c.i; // the first header, whatever it holds
    c.takeComments(comments);
    while (!c.atEnd()) {
        const QString line = c.line();
        if (line.startsWith(QLatin1Char('*')))
            return;
        if (line.startsWith(QLatin1Char('@')))
            break;
        FieldRead(line, 1, c.i + 1);
        ++c.i;
        c.takeComments(comments);
    }
    if (c.atEnd())
        return;
    ++c.i; // the second header
    c.takeComments(comments);
    while (!c.atEnd() && !c.line().startsWith(QLatin1Char('*'))) {
        FieldRead(c.line(), 2, c.i + 1);
        ++c.i;
        c.takeComments(comments);
    }
}

void writeFieldsSection(FileWriter& w)
{
    QStringList first;
    QStringList second;
    database::Rows q(QStringLiteral("Select * from Fields Order By LNFLD"));
    while (q.next()) {
        first << firstGroupLine(q);
        second << secondGroupLine(q);
    }
    if (first.isEmpty()) {
        msgBox(QStringLiteral("No Field data available."), MsgButtons::OK, MsgIcon::None,
            QStringLiteral("Error"));
        return;
    }
    w.line();
    w.line(QStringLiteral("*FIELDS"));
    w.line(QStringLiteral(
        "@L ID_FIELD WSTA....  FLSA  FLOB  FLDT  FLDD  FLDS  FLST SLTX  SLDP  ID_SOIL    FLNAME"));
    for (const QString& line : first)
        w.line(line);
    w.line(QStringLiteral("@L ...........XCRD ...........YCRD .....ELEV .............AREA .SLEN "
                          ".FLWR .SLAS FLHST FHDUR"));
    for (const QString& line : second)
        w.line(line);
    w.comments(state().comments.CommentsFields);
}

} // namespace quillon::format
