#include "format/FertilizerSection.h"

#include "app/AppState.h"
#include "format/Columns.h"
#include "format/EventCells.h"
#include "format/SectionValues.h"
#include "validation/LevelNames.h"

#include <QSqlQuery>

namespace quillon::format {

using namespace events;

namespace {

// Concentrations below 0 print as the missing value rather than masked.
QString concentrationText(const QVariant& value)
{
    if (!isBlank(value) && value.toDouble() < 0)
        return QStringLiteral("-99");
    return maskOr99(value, QStringLiteral("#0.00"));
}

// The tables of the two sections.
const NamedEventTables FertilizerTables { "Fertilization", "LNFER", "FerLevelNames", "FERNAME" };
const NamedEventTables ResidueTables { "Residue", "LNRES", "ResLevelNames", "RENAME" };

} // namespace

void FertilizerRead(const QString& line)
{
    if (isComment(line)) {
        appendComment(state().comments.CommentsFertilizer, line);
        return;
    }
    storeNamedEvent(line, FertilizerTables, QStringLiteral("Fertilizer"),
        QStringLiteral(" in FertilizerRead/frmMain."), [&line](NamedEventRow& row) {
            row.event.insert(row.event.end(), {
                // The fertilizer date has no four-digit rule.
                { QStringLiteral("FDAY"), dateCell(line, false) },
                { QStringLiteral("IFTYPE"), textCell(line, 11, 10, 5) },
                { QStringLiteral("FERCOD"), textCell(line, 17, 16, 5) },
                { QStringLiteral("DFERT"), numberCell(line, 23, 22, 5) },
                { QStringLiteral("ANFER"), numberCell(line, 29, 28, 5) },
                { QStringLiteral("APFER"), numberCell(line, 35, 34, 5) },
                { QStringLiteral("AKFER"), numberCell(line, 41, 40, 5) },
                { QStringLiteral("ACFER"), numberCell(line, 47, 46, 5) },
                { QStringLiteral("AOFER"), numberCell(line, 53, 52, 5) },
                { QStringLiteral("FOCOD"), textCell(line, 59, 58, 5) },
            });
            row.name = textCell(line, 63, 64, 60);
        });
}

void ResidueRead(const QString& line)
{
    if (isComment(line)) {
        appendComment(state().comments.CommentsResidue, line);
        return;
    }
    storeNamedEvent(line, ResidueTables, QStringLiteral("Residue"),
        QStringLiteral(" in ResidueRead/frnMain."), [&line](NamedEventRow& row) {
            row.event.insert(row.event.end(), {
                { QStringLiteral("RESDAY"), dateCell(line, true) },
                { QStringLiteral("RESCOD"), textCell(line, 11, 10, 5) },
                { QStringLiteral("RESIDUE"), numberCell(line, 17, 16, 5) },
                { QStringLiteral("RESN"), numberCell(line, 23, 22, 5) },
                { QStringLiteral("RESP"), numberCell(line, 29, 28, 5) },
                { QStringLiteral("RESK"), numberCell(line, 35, 34, 5) },
                { QStringLiteral("RINP"), numberCell(line, 41, 40, 5) },
                { QStringLiteral("DEPRES"), numberCell(line, 47, 46, 5) },
                { QStringLiteral("RMET"), textCell(line, 53, 52, 5) },
            });
            row.name = textCell(line, 57, 58, 60);
        });
}

void readFertilizersSection(LineCursor& c)
{
    sectionLoop(c, state().comments.CommentsFertilizer, FertilizerRead);
}

void readResiduesSection(LineCursor& c)
{
    sectionLoop(c, state().comments.CommentsResidue, ResidueRead);
}

void writeFertilizersSection(FileWriter& w)
{
    if (writeNamedEvents(w, FertilizerTables, QStringLiteral("*FERTILIZERS (INORGANIC)"),
            QStringLiteral(
                "@F FDATE  FMCD  FACD  FDEP  FAMN  FAMP  FAMK  FAMC  FAMO  FOCD FERNAME"),
            validation::Find_FERNAME, [](const database::Rows& q) {
                QString text = rightJustified(textOr99(q.value(QStringLiteral("FDAY"))), 5)
                    + rightJustified(textOr99(q.value(QStringLiteral("IFTYPE"))), 6)
                    + rightJustified(textOr99(q.value(QStringLiteral("FERCOD"))), 6);
                for (const char* amount : { "DFERT", "ANFER", "APFER", "AKFER", "ACFER", "AOFER" })
                    text += rightJustified(roundedOr99(q.value(QLatin1String(amount)), 0), 6);
                return text + rightJustified(textOr99(q.value(QStringLiteral("FOCOD"))), 6) + QLatin1Char(' ');
            }))
        w.comments(state().comments.CommentsFertilizer);
}

void writeResiduesSection(FileWriter& w)
{
    if (writeNamedEvents(w, ResidueTables, QStringLiteral("*RESIDUES AND ORGANIC FERTILIZER"),
            QStringLiteral("@R RDATE  RCOD  RAMT  RESN  RESP  RESK  RINP  RDEP  RMET RENAME"),
            validation::Find_RESNAME, [](const database::Rows& q) {
                return rightJustified(textOr99(q.value(QStringLiteral("RESDAY"))), 5)
                    + rightJustified(textOr99(q.value(QStringLiteral("RESCOD"))), 6)
                    + rightJustified(roundedOr99(q.value(QStringLiteral("RESIDUE")), 0), 6)
                    + rightJustified(concentrationText(q.value(QStringLiteral("RESN"))), 6)
                    + rightJustified(concentrationText(q.value(QStringLiteral("RESP"))), 6)
                    + rightJustified(concentrationText(q.value(QStringLiteral("RESK"))), 6)
                    + rightJustified(roundedOr99(q.value(QStringLiteral("RINP")), 0), 6)
                    + rightJustified(roundedOr99(q.value(QStringLiteral("DEPRES")), 0), 6)
                    + rightJustified(textOr99(q.value(QStringLiteral("RMET"))), 6) + QLatin1Char(' ');
            }))
        w.comments(state().comments.CommentsResidue);
}

} // namespace quillon::format
