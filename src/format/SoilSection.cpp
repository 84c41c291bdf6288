#include "format/SoilSection.h"

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

struct Column {
    const char* field;
    int start;
    int length;
};

// A date code of four characters lost its leading zero on the way: it gets
// it back.
QString dateCode(const QString& text)
{
    return text.size() == 4 ? QLatin1Char('0') + text : text;
}

// Layer lines of both sections: a blank column leaves the field alone, a
// negative one is missing, anything else is the value.
void readLayer(const QString& table, const QString& levelField, const QString& line,
    std::initializer_list<Column> cols)
{
    RowValues row(table);
    row.number(levelField, leadingNumber(mid(line, 1, 3)));
    for (const Column& col : cols)
        readColumn(row, QLatin1String(col.field), line, col.start, col.length);
    row.insert();
}

// Runs the lines of a group through a reader: from the line after the
// group's header up to the line `ends` accepts, or the end. Comment lines
// go to the section's buffer.
template <typename Ends, typename Reader>
void readGroup(LineCursor& c, QString& comments, Ends&& ends, Reader&& reader)
{
    ++c.i;
    while (!c.atEnd() && !ends(c.line())) {
        if (isComment(c.line()))
            appendComment(comments, c.line());
        else
            reader(c.line());
        ++c.i;
    }
}

bool startsWith(const QString& line, char c)
{
    return line.startsWith(QLatin1Char(c));
}

// The text of an initial-conditions header from its third column on, which
// tells a level group ("PCR") from a layer group ("ICBL") whatever the
// number of blanks behind "@C".
QString headerWord(const QString& line)
{
    return trimSpaces(mid(line, 3));
}

} // namespace

void SoilAnalRead(const QString& line)
{
    readLevelLine(line, state().comments.CommentsSoil, QStringLiteral("SoilAnalysis"), QStringLiteral("LNSA"),
        QStringLiteral(" in SoilAnalRead/frmMain"), duplicateLevels(QStringLiteral("Soil Analysis")),
        [&line](RowValues& row) {
            const QString date = column(line, 4, 5);
            if (!date.isEmpty() && leadingNumber(date) >= 0)
                row.text(QStringLiteral("SADAT"), dateCode(date));
            static const Column cols[] = { { "SMHB", 10, 5 }, { "SMPX", 16, 5 }, { "SMKE", 22, 5 } };
            for (const Column& col : cols) {
                const QString text = column(line, col.start, col.length);
                if (!text.isEmpty() && leadingNumber(text) >= 0)
                    row.text(QLatin1String(col.field), text);
            }
            const QString nameHead = column(line, 28, 16);
            if (!nameHead.isEmpty() && leadingNumber(nameHead) >= 0)
                row.text(QStringLiteral("SANAME"), column(line, 28, 60));
        });
}

void SoilLayersRead(const QString& line)
{
    try {
        if (isComment(line)) {
            appendComment(state().comments.CommentsSoil, line);
            return;
        }
        readLayer(QStringLiteral("SoilLayers"), QStringLiteral("LNSA"), line,
            { { "SABL", 4, 5 }, { "SADM", 10, 5 }, { "SAOC", 16, 5 }, { "SANI", 22, 5 },
                { "SAPHW", 28, 5 }, { "SAPHB", 34, 5 }, { "SAPX", 40, 5 }, { "SAKE", 46, 5 },
                { "SASC", 52, 5 } });
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in SoilLayersRead/frmMain"));
    }
}

void InitialCondRead(const QString& line)
{
    readLevelLine(line, state().comments.CommentsIC, QStringLiteral("InitialConditions"), QStringLiteral("LNIC"),
        QStringLiteral(" in InitialCondRead/frmMain."), duplicateLevels(QStringLiteral("Initial Conditions")),
        [&line](RowValues& row) {
            // The previous crop is two-letter text; its blank test looks at
            // four columns, its value at five.
            if (!column(line, 4, 4).isEmpty())
                readColumn(row, QStringLiteral("PRCROP"), line, 4, 5);
            // Each further column is read only if the line reaches into it, so
            // that a short line just ends the reading.
            static const Column cols[] = {
                { "IDAYIC", 10, 5 },
                { "WRESR", 16, 5 },
                { "WRESND", 22, 5 },
                { "EFINOC", 28, 5 },
                { "EFNFIX", 34, 5 },
                { "ICWD", 40, 5 },
                { "ICRES", 46, 5 },
                { "ICREN", 52, 5 },
                { "ICREP", 58, 5 },
                { "ICRIP", 64, 5 },
                { "ICRID", 70, 5 },
                { "ICNAME", 76, 60 },
            };
            int minLength = 11;
            for (const Column& col : cols) {
                if (line.size() <= minLength)
                    break;
                minLength += 6;
                const QString field = QLatin1String(col.field);
                const QString text = column(line, col.start, col.length);
                if (text.isEmpty())
                    continue;
                if (leadingNumber(text) < 0)
                    row.null(field);
                else
                    row.text(field, field == QLatin1String("IDAYIC") ? dateCode(text) : text);
            }
        });
}

void ICLayersRead(const QString& line)
{
    try {
        if (isComment(line)) {
            appendComment(state().comments.CommentsIC, line);
            return;
        }
        if (startsWith(line, '@') || startsWith(line, '*'))
            return;
        readLayer(QStringLiteral("ICLayers"), QStringLiteral("LNIC"), line,
            { { "DLAYRI", 4, 5 }, { "SWINIT", 10, 5 }, { "INH4", 16, 5 }, { "INO3", 22, 5 } });
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in ICLayersRead/frmMain."));
    }
}

void readSoilAnalysisSection(LineCursor& c)
{
    QString& comments = state().comments.CommentsSoil;
    ++c.i;
    c.takeComments(comments);
    const auto groupEnds
        = [](const QString& line) { return startsWith(line, '@') || startsWith(line, '*'); };
    while (!c.atEnd() && !startsWith(c.line(), '*')) {
        const QString head = c.line().left(8);
        if (head == QLatin1String("@A SADAT"))
            readGroup(c, comments, groupEnds, SoilAnalRead);
        else if (head == QLatin1String("@A  SABL"))
            readGroup(c, comments, groupEnds, SoilLayersRead);
        else if (isComment(c.line()))
            c.takeComments(comments);
        else
            ++c.i; // another header, or a line outside any group
    }
}

void readInitialConditionsSection(LineCursor& c)
{
    QString& comments = state().comments.CommentsIC;
    ++c.i;
    c.takeComments(comments);
    const auto levelGroupEnds
        = [](const QString& line) { return startsWith(line, '@') || startsWith(line, '*'); };
    const auto layerGroupEnds = [](const QString& line) {
        return startsWith(line, '*') || headerWord(line).startsWith(QLatin1String("PCR"));
    };
    while (!c.atEnd() && !startsWith(c.line(), '*')) {
        const QString word = headerWord(c.line());
        if (word.startsWith(QLatin1String("PCR")))
            readGroup(c, comments, levelGroupEnds, InitialCondRead);
        else if (word.startsWith(QLatin1String("ICBL")))
            readGroup(c, comments, layerGroupEnds, ICLayersRead);
        else if (isComment(c.line()))
            c.takeComments(comments);
        else
            ++c.i;
    }
}

void writeSoilAnalysisSection(FileWriter& w)
{
    database::Rows levels(QStringLiteral("Select * From SoilAnalysis Order By LNSA"));
    QStringList lines;
    while (levels.next()) {
        const auto v = [&levels](const char* field) { return levels.value(QLatin1String(field)); };
        const QVariant level = v("LNSA");
        lines << QStringLiteral("@A SADAT  SMHB  SMPX  SMKE  SANAME");
        lines << levelColumn(level) + rightJustified(textOr99(v("SADAT")), 5)
                + rightJustified(textOr99(v("SMHB")), 6)
                + rightJustified(textOr99(v("SMPX")), 6)
                + rightJustified(textOr99(v("SMKE")), 6) + QStringLiteral("  ")
                + textOr99(v("SANAME")).left(60);
        lines << QStringLiteral("@A  SABL  SADM  SAOC  SANI SAPHW SAPHB  SAPX  SAKE  SASC");
        database::Rows layers(QStringLiteral("Select * From SoilLayers where LNSA=")
            + NumText(level) + QStringLiteral(" order by SABL"));
        while (layers.next()) {
            const auto l
                = [&layers](const char* field) { return layers.value(QLatin1String(field)); };
            // Organic carbon and total nitrogen are missing as -99 too;
            // the other columns put a stored -99 through their template.
            const auto carbonOrNitrogen = [](const QVariant& value) {
                return !isBlank(value) && value.toDouble() == -99
                    ? QStringLiteral("-99")
                    : maskedCell(value, QStringLiteral("#0.00"), QStringLiteral("-99"));
            };
            lines << levelColumn(l("LNSA"))
                    + rightJustified(cellText(l("SABL"), QStringLiteral("-99")), 5)
                    + rightJustified(
                        maskedCell(l("SADM"), QStringLiteral("#0.0"), QStringLiteral("-99.0")), 6)
                    + rightJustified(carbonOrNitrogen(l("SAOC")), 6)
                    + rightJustified(carbonOrNitrogen(l("SANI")), 6)
                    + rightJustified(
                        maskedCell(l("SAPHW"), QStringLiteral("#0.0"), QStringLiteral("-99.0")), 6)
                    + rightJustified(
                        maskedCell(l("SAPHB"), QStringLiteral("#0.0"), QStringLiteral("-99.0")), 6)
                    + rightJustified(
                        maskedCell(l("SAPX"), QStringLiteral("#0.0"), QStringLiteral("-99.0")), 6)
                    + rightJustified(
                        maskedCell(l("SAKE"), QStringLiteral("#0.0"), QStringLiteral("-99.0")), 6)
                    + rightJustified(
                        maskedCell(l("SASC"), QStringLiteral("#0.00"), QStringLiteral("-99.00")),
                        6);
        }
    }
    if (!lines.isEmpty())
        w.section({ QStringLiteral("*SOIL ANALYSIS") }, lines, state().comments.CommentsSoil);
}

void writeInitialConditionsSection(FileWriter& w)
{
    database::Rows levels(QStringLiteral("Select * From InitialConditions Order By LNIC"));
    QStringList lines;
    while (levels.next()) {
        const auto v = [&levels](const char* field) { return levels.value(QLatin1String(field)); };
        const QVariant level = v("LNIC");
        lines << QStringLiteral(
            "@C   PCR ICDAT  ICRT  ICND  ICRN  ICRE  ICWD ICRES ICREN ICREP ICRIP ICRID ICNAME");
        QString text
            = levelColumn(level) + rightJustified(cellText(v("PRCROP"), QStringLiteral("-99")), 5);
        for (const char* field : { "IDAYIC", "WRESR", "WRESND", "EFINOC", "EFNFIX" })
            text += rightJustified(cellText(v(field), QStringLiteral("-99")), 6);
        text += rightJustified(cellText(v("ICWD"), QStringLiteral("-99.0")), 6);
        for (const char* field : { "ICRES", "ICREN", "ICREP", "ICRIP", "ICRID" })
            text += rightJustified(cellText(v(field), QStringLiteral("-99")), 6);
        text += QLatin1Char(' ') + textOr99(v("ICNAME")).left(60);
        lines << text;
        lines << QStringLiteral("@C  ICBL  SH2O  SNH4  SNO3");
        database::Rows layers(QStringLiteral("Select * From ICLayers where LNIC=") + NumText(level)
            + QStringLiteral(" order by DLAYRI"));
        while (layers.next()) {
            const auto l
                = [&layers](const char* field) { return layers.value(QLatin1String(field)); };
            lines << levelColumn(l("LNIC"))
                    + rightJustified(cellText(l("DLAYRI"), QStringLiteral("-99")), 5)
                    + rightJustified(
                        maskedCell(l("SWINIT"), QStringLiteral("##.000"), QStringLiteral("-99")), 6)
                    + rightJustified(
                        maskedCell(l("INH4"), QStringLiteral("##.0"), QStringLiteral("-99.0")), 6)
                    + rightJustified(
                        maskedCell(l("INO3"), QStringLiteral("##.0"), QStringLiteral("-99.0")), 6);
        }
    }
    if (!lines.isEmpty())
        w.section({ QStringLiteral("*INITIAL CONDITIONS") }, lines, state().comments.CommentsIC);
}

} // namespace quillon::format
