#include "format/ChemicalSection.h"

#include "app/AppState.h"
#include "format/Columns.h"
#include "format/EventCells.h"
#include "format/SectionValues.h"
#include "format/NumberText.h"
#include "validation/LevelNames.h"

#include <QSqlQuery>

namespace quillon::format {

using namespace events;

namespace {

QString amountText(const QVariant& value)
{
    if (!isBlank(value) && value.toDouble() < 0)
        return QStringLiteral("-99");
    return maskOr99(value, QStringLiteral("#0.00"));
}

// The depth mask writes no digit for 0, so a depth of 0 leaves the field
// blank and comes back NULL on the next read.
QString depthText(const QVariant& value)
{
    return isBlank(value) ? QStringLiteral("-99") : maskedNumber(value, QStringLiteral("##"));
}

// The tables of the two sections.
const NamedEventTables ChemicalTables { "Chemicals", "LNCHE", "ChemLevelNames", "CHNAME" };
const NamedEventTables TillageTables { "Tillage", "LNTIL", "TillLevelNames", "TNAME" };

} // namespace

void ChemicalRead(const QString& line)
{
    if (isComment(line)) {
        appendComment(state().comments.CommentsChemical, line);
        return;
    }
    storeNamedEvent(line, ChemicalTables, QStringLiteral("Chemical Applications"),
        QStringLiteral(" in ChemicalRead/frmMain."), [&line](NamedEventRow& row) {
            row.event.insert(row.event.end(), {
                { QStringLiteral("CDate"), dateCell(line, true) },
                { QStringLiteral("CHCOD"), textCell(line, 11, 10, 5) },
                { QStringLiteral("CHAMT"), numberCell(line, 17, 16, 5) },
                { QStringLiteral("CHMET"), textCell(line, 23, 22, 5) },
                { QStringLiteral("CHDEP"), numberCell(line, 29, 28, 5) },
                { QStringLiteral("CHT"), textCell(line, 35, 34, 5) },
            });
            // The writer leaves two blanks before the name; reading from one
            // position early takes the name with a blank that trimming drops.
            row.name = textCell(line, 39, 40, 60);
        });
}

void TillageRead(const QString& line)
{
    if (isComment(line)) {
        appendComment(state().comments.CommentsTillage, line);
        return;
    }
    storeNamedEvent(line, TillageTables, QStringLiteral("Tillage"),
        QStringLiteral(" in TillageRead/frmMain."), [&line](NamedEventRow& row) {
            row.event.insert(row.event.end(), {
                { QStringLiteral("TDATE"), dateCell(line, true) },
                { QStringLiteral("TIMPL"), textCell(line, 11, 10, 5) },
                { QStringLiteral("TDEP"), numberCell(line, 17, 16, 5) },
            });
            row.name = textCell(line, 21, 22, 60);
        });
}

void readChemicalsSection(LineCursor& c)
{
    sectionLoop(c, state().comments.CommentsChemical, ChemicalRead);
}

void readTillageSection(LineCursor& c)
{
    sectionLoop(c, state().comments.CommentsTillage, TillageRead);
}

void writeChemicalsSection(FileWriter& w)
{
    const bool written = writeNamedEvents(w, ChemicalTables,
        QStringLiteral("*CHEMICAL APPLICATIONS"),
        QStringLiteral("@C CDATE CHCOD CHAMT  CHME CHDEP   CHT..CHNAME"), validation::Find_CHNAME,
        [](const database::Rows& q) {
            return rightJustified(textOr99(q.value(QStringLiteral("CDate"))), 5)
                + rightJustified(textOr99(q.value(QStringLiteral("CHCOD"))), 6)
                + rightJustified(amountText(q.value(QStringLiteral("CHAMT"))), 6)
                + rightJustified(textOr99(q.value(QStringLiteral("CHMET"))), 6)
                + rightJustified(depthText(q.value(QStringLiteral("CHDEP"))), 6)
                + rightJustified(textOr99(q.value(QStringLiteral("CHT"))), 6) + QStringLiteral("  ");
        });
    if (!written)
        return;
    // The first-character test looks at the residue comments rather than the
    // chemical ones: that is how this block has always been decided, and it
    // stays so.
    const CommentBuffers& comments = state().comments;
    if (!comments.CommentsChemical.isEmpty() && !comments.CommentsResidue.startsWith(QLatin1Char('\r')))
        w.commentsUnchecked(comments.CommentsChemical);
}

void writeTillageSection(FileWriter& w)
{
    if (writeNamedEvents(w, TillageTables, QStringLiteral("*TILLAGE AND ROTATIONS"),
            QStringLiteral("@T TDATE TIMPL  TDEP TNAME"), validation::Find_TillNAME,
            [](const database::Rows& q) {
                return rightJustified(textOr99(q.value(QStringLiteral("TDATE"))), 5)
                    + rightJustified(textOr99(q.value(QStringLiteral("TIMPL"))), 6)
                    + rightJustified(roundedOr99(q.value(QStringLiteral("TDEP")), 0), 6) + QLatin1Char(' ');
            }))
        w.comments(state().comments.CommentsTillage);
}

} // namespace quillon::format
