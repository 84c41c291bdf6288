#include "format/SimulationSection.h"

#include "app/AppState.h"
#include "app/RuntimeError.h"
#include "app/UserInterface.h"
#include "format/AutomaticSection.h"
#include "format/Columns.h"
#include "format/NumberText.h"
#include "format/SimulationCells.h"
#include "reference/SimDefaults.h"

namespace quillon::format {

using namespace simulation;
using reference::SimGroup;
using reference::simDefaults;

namespace {

const SimGroup& group(int index) { return reference::simGroups().at(index); }

enum GroupIndex { General, Options, Methods, Management, Outputs };

// Reads a plain group line: level, label and cells, into the group's table.
// On failure the level's row of defaults goes to `defaultsTable`.
void readPlainGroup(const QString& line, const SimGroup& g, const std::vector<Cell>& cells, const QString& where,
    const QString& defaultsTable)
{
    readGroupLine(line, g, 4, where, defaultsTable, [&](Row& row, double) { addCells(row, line, cells); });
}

// The start date: a short code is padded with zeros to five characters; a
// blank or negative one gives the default.
QVariant startDate(const QString& line)
{
    const QString text = mid(line, 34, 5);
    const QString t = trimSpaces(text);
    if (t.isEmpty() || leadingNumber(text) < 0)
        return simDefaults().member(QStringLiteral("YRSIM"));
    return QVariant(QString(5 - int(t.size()), QLatin1Char('0')) + t);
}

const QString GeneralHeader = QStringLiteral(
    "@N GENERAL     NYERS NREPS START SDATE RSEED SNAME.................... SMODEL");
const QString OptionsHeader = QStringLiteral(
    "@N OPTIONS     WATER NITRO SYMBI PHOSP POTAS DISES  CHEM  TILL   CO2");
const QString MethodsHeader = QStringLiteral(
    "@N METHODS     WTHER INCON LIGHT EVAPO INFIL PHOTO HYDRO NSWIT MESOM MESEV MESOL");
const QString ManagementHeader = QStringLiteral("@N MANAGEMENT  PLANT IRRIG FERTI RESID HARVS");

} // namespace

void SimGeneralRead(const QString& line)
{
    if (isComment(line)) {
        takeComment(line);
        return;
    }
    const SimGroup& g = group(General);
    const double level = levelOf(line);
    try {
        Row row { { QStringLiteral("LNSIM"), level } };
        if (const auto label = labelValue(line, 4, g.label))
            row.emplace_back(g.labelColumn, *label);
        addCell(row, line, { "NYRS", 18, 18, 3 });
        addCell(row, line, { "NREPSQ", 25, 25, 2 });
        addCell(row, line, { "ISIMI", 32, 32, 1 });
        if (line.size() > 34)
            row.emplace_back(QStringLiteral("YRSIM"), startDate(line));
        addCell(row, line, { "RSEED", 40, 40, 5 });
        // The title is tested over 25 positions but taken from 24, so that a
        // title of 25 characters loses its last one on every reading.
        if (line.size() > 46) {
            const QString test = mid(line, 46, 25);
            row.emplace_back(QStringLiteral("TITSIM"),
                trimSpaces(test).isEmpty() || leadingNumber(test) < 0
                    ? simDefaults().member(QStringLiteral("TITSIM"))
                    : QVariant(trimSpaces(mid(line, 46, 24))));
        }
        if (const auto model = cellValue(line, { "Crop_Model", 72, 71, 8 }))
            row.emplace_back(QStringLiteral("Crop_Model"), reference::VerifySim_Model(model->toString()));
        storeRow(g.table, row);
    } catch (const RuntimeError& e) {
        if (e.number() == err::DuplicateKey) {
            msgBox(QStringLiteral("duplicate levels in 'Simulation Control'. Level %1 is read only once.")
                       .arg(levelText(level)),
                MsgButtons::OK, MsgIcon::Critical, QStringLiteral("Error"));
            return;
        }
        groupFailed(QStringLiteral("Simulation Control/General"), level);
        storeDefaultRow(g.table, g, level);
    }
}

void SimOptionsRead(const QString& line)
{
    // The row of defaults is offered to the general table, which has no
    // column for the options' label: it always fails, and the caller's
    // recovery takes over.
    readPlainGroup(line, group(Options),
        { { "ISWWAT", 20, 20, 1 }, { "ISWNIT", 26, 26, 1 }, { "ISWSYM", 32, 32, 1 }, { "ISWPHO", 38, 38, 1 },
            { "ISWPOT", 44, 44, 1 }, { "ISWDIS", 50, 50, 1 }, { "ISCHEM", 56, 56, 1 }, { "ISTILL", 62, 62, 1 },
            { "ISCO2", 67, 68, 1 } },
        QStringLiteral("Simulation Control/Options"), group(General).table);
}

void SimMethodsRead(const QString& line)
{
    // The blank test looks at the cell, the negative test at three positions
    // ending there, so that a right-aligned -99 is caught.
    readPlainGroup(line, group(Methods),
        { { "MEWTH", 20, 20, 1, 18, 3 }, { "MESIC", 26, 26, 1, 24, 3 }, { "MELI", 32, 32, 1, 30, 3 },
            { "MEEVP", 38, 38, 1, 36, 3 }, { "MEINF", 45, 44, 1, 42, 3 }, { "MEPHO", 45, 50, 1, 48, 3 },
            { "HYDRO", 50, 56, 1, 54, 3 }, { "NSWIT", 57, 61, 2, 60, 3 }, { "MESOM", 62, 68, 1, 66, 3 },
            { "MESEV", 73, 74, 1, 72, 3 }, { "MESOL", 79, 80, 1, 80, 3 } },
        QStringLiteral("Simulation Control/Methods"), group(Methods).table);
}

void SimManagementRead(const QString& line)
{
    readPlainGroup(line, group(Management),
        { { "IPLTI", 20, 20, 1 }, { "IIRRI", 26, 26, 1 }, { "IFERI", 32, 32, 1 }, { "IRESI", 38, 38, 1 },
            { "IHARI", 0, 44, 1 } },
        QStringLiteral("Simulation Control/Management"), group(Management).table);
}

void SimOutputsRead(const QString& line)
{
    readPlainGroup(line, group(Outputs),
        { { "IOX", 20, 20, 1 }, { "IDETO", 26, 26, 1 }, { "IDETS", 32, 32, 1 }, { "FROP", 37, 37, 2 },
            { "IDETG", 44, 44, 1 }, { "IDETC", 50, 50, 1 }, { "IDETW", 56, 56, 1 }, { "IDETN", 62, 62, 1 },
            { "IDETP", 68, 68, 1 }, { "IDETD", 74, 74, 1 }, { "VBOSE", 80, 80, 1 }, { "CHOUT", 82, 86, 1 },
            { "OPOUT", 87, 92, 1 }, { "FMOPT", 93, 98, 1 } },
        QStringLiteral("Simulation Control/Outputs"), group(Outputs).table);
}

void readSimulationControls(LineCursor& c)
{
    QString& comments = state().comments.CommentsSimulation;

    // A failure that the group reader couldn't absorb resets the whole
    // section to defaults; reading goes on with the next line.
    auto hand = [&](void (*reader)(const QString&)) {
        try {
            reader(c.line());
        } catch (const RuntimeError&) {
            restoreDefaultControls();
        }
    };
    // Steps over the group's header, then hands every line to the reader up
    // to one beginning with "@" (or "*" too, where asked); comments are
    // collected on the way.
    auto groupLines = [&](void (*reader)(const QString&), bool endAtSection) {
        ++c.i;
        while (!c.atEnd()) {
            const QString line = c.line();
            if (line.startsWith(QLatin1Char('@')) || (endAtSection && line.startsWith(QLatin1Char('*'))))
                return;
            if (isComment(line))
                appendComment(comments, line);
            else
                hand(reader);
            ++c.i;
        }
    };

    groupLines(SimGeneralRead, false);
    groupLines(SimOptionsRead, false);
    groupLines(SimMethodsRead, false);
    groupLines(SimManagementRead, false);
    groupLines(SimOutputsRead, true);

    if (!c.atEnd() && isAutomaticManagementMarker(c.line())) {
        ++c.i; // the marker line; the planting header follows
        groupLines(AutoPlantingRead, false);
        groupLines(AutoIrrigationRead, false);
        groupLines(AutoNitrogenRead, false);
        groupLines(AutoResiduesRead, false);
        // Harvest has exactly one line behind its header.
        c.i += 1;
        if (!c.atEnd()) {
            hand(AutoHarvestRead);
            ++c.i;
        }
        // The forecast dates: the next header, then exactly one line.
        if (state().IsForecast) {
            while (!c.atEnd() && !c.line().startsWith(QLatin1Char('@'))) {
                if (isComment(c.line()))
                    appendComment(comments, c.line());
                ++c.i;
            }
            c.i += 1;
            if (!c.atEnd()) {
                hand(AutoSimdatesRead);
                ++c.i;
            }
        }
    }
    if (c.i > c.n())
        c.i = c.n();
}

SimData printSimData()
{
    SimData data;
    const auto& groups = reference::simGroups();
    for (const SimGroup& g : groups) {
        if (g.table == QLatin1String("AutoManagementSimdates") && !state().IsForecast)
            data.groups << QList<QVariantMap>();
        else
            data.groups << groupRows(g);
    }
    return data;
}

void writeSimulationSection(FileWriter& w)
{
    const SimData data = printSimData();
    const int levels = data.levels();
    if (levels == 0)
        return;
    const auto& groups = reference::simGroups();

    w.line();
    w.line(QStringLiteral("*SIMULATION CONTROLS"));
    for (int i = 0; i < levels; ++i) {
        const QVariantMap general = data.groups.at(General).at(i);
        const QVariant level = general.value(QStringLiteral("LNSIM"));

        w.line(GeneralHeader);
        QString line = lineStart(level, labelText(general, groups.at(General)));
        for (const char* column : { "NYRS", "NREPSQ", "ISIMI", "YRSIM", "RSEED" })
            line += rightJustified(cellText(general, QLatin1String(column)), 6);
        const QString title = cellText(general, QStringLiteral("TITSIM")).left(25);
        const QString model = cellText(general, QStringLiteral("Crop_Model"));
        line += QLatin1Char(' ') + title;
        // The model code stands at position 72, behind the title's 25 places
        // and one blank.
        if (!model.isEmpty())
            line += QString(26 - int(title.size()), QLatin1Char(' ')) + model;
        w.line(line);

        w.line(OptionsHeader);
        w.line(plainLine(level, rowAt(data.groups.at(Options), i), groups.at(Options)));
        w.line(MethodsHeader);
        w.line(plainLine(level, rowAt(data.groups.at(Methods), i), groups.at(Methods)));
        w.line(ManagementHeader);
        w.line(plainLine(level, rowAt(data.groups.at(Management), i), groups.at(Management)));
        w.line(QStringLiteral("@N OUTPUTS     FNAME OVVEW SUMRY FROPT GROUT CAOUT")
            + QStringLiteral(" WAOUT NIOUT MIOUT DIOUT VBOSE CHOUT OPOUT FMOPT"));
        w.line(plainLine(level, rowAt(data.groups.at(Outputs), i), groups.at(Outputs)));
        w.line();

        writeAutomaticManagementLevel(w, level, data.groups, i);
        w.line();
    }
}

} // namespace quillon::format
