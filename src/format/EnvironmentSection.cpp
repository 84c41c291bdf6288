#include "format/EnvironmentSection.h"

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

// How the writer puts an adjustment: form 1 has one or two decimals, form 2
// is rounded to a fixed number of digits.
enum class AdjustmentForm { Decimal, Rounded };

struct Variable {
    const char* factor;
    const char* adjustment;
    int factorTest;
    int factorStart;
    int adjustmentTest;
    int adjustmentStart;
    AdjustmentForm form;
    int digits;
};

// The eight weather variables in file order. The wind factor's length test
// is one shorter than the pattern of the others.
const Variable Variables[] = {
    { "DAYFAC", "DAYADJ", 11, 10, 12, 11, AdjustmentForm::Decimal, 0 },
    { "RADFAC", "RADADJ", 17, 16, 18, 17, AdjustmentForm::Decimal, 0 },
    { "TXFAC", "TXADJ", 23, 22, 24, 23, AdjustmentForm::Rounded, 1 },
    { "TMFAC", "TMADJ", 29, 28, 30, 29, AdjustmentForm::Rounded, 1 },
    { "PRCFAC", "PRCADJ", 35, 34, 36, 35, AdjustmentForm::Decimal, 0 },
    { "CO2FAC", "CO2ADJ", 41, 40, 42, 41, AdjustmentForm::Rounded, 0 },
    { "DPTFAC", "DPTADJ", 47, 46, 48, 47, AdjustmentForm::Rounded, 1 },
    { "WNDFAC", "WNDADJ", 52, 52, 54, 53, AdjustmentForm::Rounded, 1 },
};

// An adjustment: a blank column stores nothing; a negative value is stored
// as NULL and, unless it is exactly -99, marks the file as holding one.
// Otherwise the leading number is stored ("2C" is 2, text alone 0).
QVariant adjustmentCell(const QString& line, int test, int start)
{
    if (line.size() <= test)
        return {};
    const QString t = trimSpaces(mid(line, start, 4));
    if (t.isEmpty())
        return {};
    const double value = leadingNumber(t);
    if (value < 0) {
        if (value != -99)
            state().NegativeEnvValue = true;
        return {};
    }
    return value;
}

// A factor and its adjustment as written: a pair without both parts is an
// addition of nothing, "A" with 0.0 or 0.
QString pairText(const Variable& v, const QVariant& factor, const QVariant& adjustment)
{
    const bool noFactor = isBlank(factor);
    const bool noValue = isBlank(adjustment);
    const QString factorText = noFactor || noValue ? QStringLiteral("A") : trimSpaces(factor.toString());
    QString valueText;
    if (v.form == AdjustmentForm::Decimal) {
        if (noValue) {
            valueText = QStringLiteral("0.0");
        } else {
            const bool multiplier = !noFactor && trimSpaces(factor.toString()) == QLatin1String("M");
            const QString mask = multiplier && adjustment.toDouble() < 10 ? QStringLiteral("#0.00") : QStringLiteral("#0.0");
            valueText = maskedNumber(adjustment, mask);
        }
    } else {
        valueText = noFactor || noValue ? QStringLiteral("0") : roundedText(adjustment, v.digits);
    }
    return rightJustified(factorText, 2) + rightJustified(valueText, 4);
}

QString stageText(const QVariant& stage)
{
    if (!isBlank(stage) && trimSpaces(stage.toString()) == QLatin1String("GS000"))
        return QStringLiteral("-99");
    return textOr99(stage);
}

// The comment handling of these two readers: the line goes in as usual, and
// then the whole buffer loses its first two characters.
void addCutComment(QString& buffer, const QString& line)
{
    appendComment(buffer, line);
    buffer = buffer.mid(2);
}

// The tables of the two sections.
const NamedEventTables EnvironmentTables { "EnvironMod", "LNENV", "EnvLevelNames", "ENVNAME" };
const NamedEventTables HarvestTables { "Harvest", "LNHAR", "HarLevelNames", "HNAME" };

} // namespace

void EvironModRead(const QString& line)
{
    if (isComment(line)) {
        addCutComment(state().comments.CommentsEnvironment, line);
        return;
    }
    storeNamedEvent(line, EnvironmentTables, QStringLiteral("Environmental Modifications"),
        QStringLiteral(" in EvironModRead/frmMain."), [&line](NamedEventRow& row) {
            row.event.push_back({ QStringLiteral("WMDATE"), dateCell(line, true) });
            for (const Variable& v : Variables) {
                row.event.push_back({ QLatin1String(v.factor), textCell(line, v.factorTest, v.factorStart, 1) });
                row.event.push_back(
                    { QLatin1String(v.adjustment), adjustmentCell(line, v.adjustmentTest, v.adjustmentStart) });
            }
            row.name = textCell(line, 57, 58, 60);
        });
}

void HarvestRead(const QString& line)
{
    if (isComment(line)) {
        addCutComment(state().comments.CommentsHarvest, line);
        return;
    }
    storeNamedEvent(line, HarvestTables, QStringLiteral("Harvest"),
        QStringLiteral(" in HarvestRead/frmMain."), [&line](NamedEventRow& row) {
            row.event.insert(row.event.end(), {
                { QStringLiteral("HDATE"), dateCell(line, true) },
                { QStringLiteral("HSTG"), textCell(line, 11, 10, 5) },
                { QStringLiteral("HCOM"), textCell(line, 17, 16, 5) },
                { QStringLiteral("HSIZ"), textCell(line, 23, 22, 5) },
                { QStringLiteral("HPC"), numberCell(line, 29, 28, 5) },
                { QStringLiteral("HBPC"), numberCell(line, 35, 34, 5) },
            });
            row.name = textCell(line, 39, 40, 60);
        });
}

void readEnvironmentSection(LineCursor& c)
{
    sectionLoop(c, state().comments.CommentsEnvironment, EvironModRead);
}

void readHarvestSection(LineCursor& c)
{
    sectionLoop(c, state().comments.CommentsHarvest, HarvestRead);
}

void writeEnvironmentSection(FileWriter& w)
{
    if (writeNamedEvents(w, EnvironmentTables, QStringLiteral("*ENVIRONMENT MODIFICATIONS"),
            QStringLiteral("@E ODATE EDAY  ERAD  EMAX  EMIN  ERAIN ECO2  EDEW  EWIND ENVNAME  "),
            validation::Find_EnvNAME, [](const database::Rows& q) {
                QString text = rightJustified(textOr99(q.value(QStringLiteral("WMDATE"))), 5);
                for (const Variable& v : Variables)
                    text += pairText(v, q.value(QLatin1String(v.factor)), q.value(QLatin1String(v.adjustment)));
                return text + QLatin1Char(' ');
            }))
        w.comments(state().comments.CommentsEnvironment);
}

void writeHarvestSection(FileWriter& w)
{
    if (writeNamedEvents(w, HarvestTables, QStringLiteral("*HARVEST DETAILS"),
            QStringLiteral("@H HDATE  HSTG  HCOM HSIZE   HPC  HBPC HNAME"),
            validation::Find_HarNAME, [](const database::Rows& q) {
                return rightJustified(textOr99(q.value(QStringLiteral("HDATE"))), 5)
                    + rightJustified(stageText(q.value(QStringLiteral("HSTG"))), 6)
                    + rightJustified(textOr99(q.value(QStringLiteral("HCOM"))), 6)
                    + rightJustified(textOr99(q.value(QStringLiteral("HSIZ"))), 6)
                    + rightJustified(maskOr99(q.value(QStringLiteral("HPC")), QStringLiteral("#0.0")), 6)
                    + rightJustified(maskOr99(q.value(QStringLiteral("HBPC")), QStringLiteral("#0.0")), 6)
                    + QLatin1Char(' ');
            }))
        w.comments(state().comments.CommentsHarvest);
}

} // namespace quillon::format
