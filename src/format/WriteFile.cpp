#include "format/WriteFile.h"

#include "app/AppState.h"
#include "app/RuntimeError.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "format/ChemicalSection.h"
#include "format/EnvironmentSection.h"
#include "format/FertilizerSection.h"
#include "format/FieldsSection.h"
#include "format/FileWriter.h"
#include "format/GeneralSection.h"
#include "format/IrrigationSection.h"
#include "format/PlantingSection.h"
#include "format/SimulationSection.h"
#include "format/SoilSection.h"
#include "format/TreatmentsSection.h"

#include <QFileInfo>

namespace quillon::format {

namespace {

void writeExperimentLine(FileWriter& w, const QString& fileName)
{
    QString inste, sitee, exptno, code, ename;
    database::Rows q(QStringLiteral("SELECT INSTE, SITEE, EXPTNO, CODE, ENAME FROM ExpDetails"));
    if (q.next()) {
        inste = q.value(0).toString();
        sitee = q.value(1).toString();
        exptno = q.value(2).toString();
        code = q.value(3).toString();
        ename = q.value(4).toString();
    }
    QString identity;
    if (fileName.toUpper() == QLatin1String("TEMP.TXT")) {
        identity = inste + sitee + exptno + code;
    } else {
        identity = fileName;
        identity.remove(QLatin1Char('.'));
        identity.chop(1);
    }
    w.line(QStringLiteral("*EXP.DETAILS: ") + identity + QLatin1Char(' ') + ename);
}

} // namespace

void writeExperiment(FileWriter& w, const QString& fileName)
{
    database::Transaction transaction;
    writeExperimentLine(w, fileName);
    writeGeneralSection(w);
    writeTreatmentsSection(w);
    writeCultivarsSection(w);
    writeFieldsSection(w);
    writeSoilAnalysisSection(w);
    writeInitialConditionsSection(w);
    writePlantingSection(w);
    writeIrrigationSection(w);
    writeFertilizersSection(w);
    writeResiduesSection(w);
    writeChemicalsSection(w);
    writeTillageSection(w);
    writeEnvironmentSection(w);
    writeHarvestSection(w);
    writeSimulationSection(w);
    const QString& simulationComments = state().comments.CommentsSimulation;
    if (!simulationComments.isEmpty()) {
        w.line();
        w.line();
        w.commentsUnchecked(simulationComments);
    }
    w.line(QString(QChar(0x1A)));
    transaction.commit();
}

bool writeFile(const QString& path)
{
    FileWriter w;
    try {
        writeExperiment(w, QFileInfo(path).fileName());
    } catch (const RuntimeError& e) {
        msgBox(e.text());
        return false;
    }
    QString reason;
    if (!w.save(path, &reason)) {
        msgBox(QStringLiteral("Cannot open file ") + path + QStringLiteral(". ") + reason);
        return false;
    }
    return true;
}

} // namespace quillon::format
