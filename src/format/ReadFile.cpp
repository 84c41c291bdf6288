#include "format/ReadFile.h"

#include "app/AppState.h"
#include "app/RuntimeError.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "format/ChemicalSection.h"
#include "format/Columns.h"
#include "format/EnvironmentSection.h"
#include "format/FertilizerSection.h"
#include "format/FieldsSection.h"
#include "format/GeneralSection.h"
#include "format/IrrigationSection.h"
#include "format/NumberText.h"
#include "format/PlantingSection.h"
#include "format/SimulationSection.h"
#include "format/SoilSection.h"
#include "format/TextLines.h"
#include "format/TreatmentsSection.h"
#include "reference/SimDefaults.h"

#include <QDir>

namespace quillon::format {

namespace {

// Cuts `part` out of `title` wherever it stands, then keeps 70 characters.
void removeName(QString& title, const QString& part)
{
    if (!part.isEmpty())
        title.remove(part);
    title = trimSpaces(title.left(70));
}

void readExperimentLine(LineCursor& c, const QString& path)
{
    AppState& s = state();
    const ExperimentIdentity identity = experimentIdentity(path, c.line());
    ++c.i;
    c.takeComments(s.comments.CommentsGeneral);
    ExpDetailsRead(identity);
    c.takeComments(s.comments.CommentsGeneral);
}

// "*SIMULATION CONTROLS" and the comment lines behind it.
void skipSimulationHead(LineCursor& c)
{
    ++c.i;
    c.takeComments(state().comments.CommentsSimulation);
}

// Hands the section at the cursor to its reader. Returns false if the key is
// none of the table's, in which case nothing was consumed.
bool dispatch(LineCursor& c, const QString& path)
{
    const QString key = c.line().left(4);
    if (key == QLatin1String("*EXP"))
        readExperimentLine(c, path);
    else if (key == QLatin1String("*GEN"))
        readGeneralSection(c, QString());
    else if (key == QLatin1String("@SIT"))
        readGeneralSection(c, QStringLiteral("@SITE"));
    else if (key == QLatin1String("@ PA"))
        readGeneralSection(c, QStringLiteral("@ PAREA "));
    else if (key == QLatin1String("*TRE"))
        readTreatmentsSection(c);
    else if (key == QLatin1String("*CUL"))
        readCultivarsSection(c);
    else if (key == QLatin1String("*SOI"))
        readSoilAnalysisSection(c);
    else if (key == QLatin1String("*FIE"))
        readFieldsSection(c);
    else if (key == QLatin1String("*INI"))
        readInitialConditionsSection(c);
    else if (key == QLatin1String("*PLA"))
        readPlantingSection(c);
    else if (key == QLatin1String("*IRR"))
        readIrrigationSection(c);
    else if (key == QLatin1String("*FER"))
        readFertilizersSection(c);
    else if (key == QLatin1String("*RES"))
        readResiduesSection(c);
    else if (key == QLatin1String("*CHE"))
        readChemicalsSection(c);
    else if (key == QLatin1String("*TIL"))
        readTillageSection(c);
    else if (key == QLatin1String("*ENV"))
        readEnvironmentSection(c);
    else if (key == QLatin1String("*HAR"))
        readHarvestSection(c);
    else if (key == QLatin1String("@N G"))
        readSimulationControls(c);
    else if (key == QLatin1String("*SIM"))
        skipSimulationHead(c);
    else
        return false;
    return true;
}

} // namespace

ExperimentIdentity experimentIdentity(const QString& path, const QString& expLine)
{
    const QString native = QDir::toNativeSeparators(path);
    const QString f = trimSpaces(native.mid(native.lastIndexOf(QDir::separator()) + 1));
    const QString a = f.toUpper().remove(QLatin1Char('.'));
    const QString b = f.toUpper().replace(QLatin1Char('.'), QLatin1Char(' '));
    const QString a1 = a.left(a.size() - 1);
    const QString b1 = b.left(b.size() - 1);
    if (a.size() != 11)
        msgBox(QStringLiteral("Name of the file") + QLatin1Char(' ') + path + QLatin1Char(' ')
                + QStringLiteral("has wrong format."),
            MsgButtons::OK, MsgIcon::Critical, QStringLiteral("Error"));

    ExperimentIdentity id;
    id.INSTE = a.mid(0, 2);
    id.Sitee = a.mid(2, 2);
    const QString number = a.mid(4, 4);
    id.Exptno = isNumeric(number) ? number : QStringLiteral("0");
    id.code = a.mid(8, 2);

    QString title = expLine;
    title.remove(QStringLiteral("*EXP.DETAILS:"));
    title = title.toUpper();
    for (const QString& part : { a, b, a1, b1 })
        removeName(title, part);
    id.Ename = title;
    return id;
}

void ExpDetailsRead(const ExperimentIdentity& id)
{
    try {
        database::insertRow(QStringLiteral("ExpDetails"),
            { { QStringLiteral("INSTE"), id.INSTE }, { QStringLiteral("SITEE"), id.Sitee },
                { QStringLiteral("EXPTNO"), id.Exptno }, { QStringLiteral("CODE"), id.code },
                { QStringLiteral("ENAME"), id.Ename } });
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in ExpDetailsRead/frmMain."));
    }
}

void readExperimentLines(const QString& path, const QStringList& rawLines)
{
    LineCursor c = LineCursor::fromLines(rawLines);
    database::Transaction transaction;
    try {
        while (!c.atEnd()) {
            if (dispatch(c, path))
                continue;
            if (isComment(c.line()))
                appendComment(state().comments.CommentsSimulation, c.line());
            ++c.i;
        }
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in ReadFile/frmMain."));
    }
    transaction.commit();
}

void ReadFile(const QString& path)
{
    reference::LoadSimDefaults();
    QStringList lines;
    if (!format::readLines(path, lines)) {
        msgBox(QStringLiteral("Cannot open file") + QLatin1Char(' ') + path + QLatin1Char('.'));
        endProgram();
    }
    readExperimentLines(path, lines);
}

} // namespace quillon::format
