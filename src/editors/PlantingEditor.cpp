#include "editors/PlantingEditor.h"

#include "app/AppState.h"
#include "app/DocumentCommands.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "editors/EditorForms.h"
#include "editors/EditorSteps.h"
#include "editors/EditorTexts.h"
#include "editors/InitialConditionsPreparation.h"
#include "editors/LevelRows.h"
#include "editors/PlantingTexts.h"
#include "format/DateCodes.h"
#include "format/NumberText.h"
#include "reference/WeatherLookups.h"

namespace quillon::editors {

using database::exec;
using database::scalar;
using database::select;
namespace pt = planting_text;

namespace {

const QString planting = QStringLiteral("Planting");
const QString levelField = QStringLiteral("LNPLT");
const QString methodType = QStringLiteral("Planting Material/Method");
const QString distributionType = QStringLiteral("Plant Distribution");
const QString noDate = QStringLiteral("-99");

// The columns a new level copies from the current one.
const QString copiedColumns = QStringLiteral("YRPLT, IEMRG, PLANTS, PLTPOP, PLME, PLDS, ROWSPC, "
                                             "AZIR, SDEPTH, SDWTPL, SDAGE, ATEMP, PLPH, SPRLAP, "
                                             "PLNAME");

// A file's dates are four-digit years from 1926 to 3000.
bool yearInRange(const QDate& date)
{
    return date.year() >= 1926 && date.year() <= 3000;
}

// The date a box's text gives; "." separates as "/" does.
QDate dateOfBox(QString text)
{
    return format::toDate(text.trimmed().replace(QLatin1Char('.'), QLatin1Char('/')));
}

QString codeOfDate(const QDate& date)
{
    QVariant value(date);
    return format::DateToYYDDD(value);
}

QString dateOfCode(const QVariant& code)
{
    QString value = code.toString();
    return format::YYDDDToDate(value);
}

RangeRule range(double lower, double upper)
{
    return { lower, upper, true, noDate };
}

} // namespace

const std::vector<PlantingBox>& PlantingEditor::boxes()
{
    // txtATEMP applies its two ranges one after the other, so that a
    // temperature below 0 never passes.
    static const std::vector<PlantingBox> all {
        { QStringLiteral("txtPLANTS"), QStringLiteral("PLANTS"),
            QStringLiteral("Plant Population at Seeding, plants m-2"), { range(0, 9999) } },
        { QStringLiteral("txtPLTPOP"), QStringLiteral("PLTPOP"),
            QStringLiteral("Plant Population at emergence, plants m-2"), { range(0, 9999) } },
        { QStringLiteral("txtROWSPC"), QStringLiteral("ROWSPC"), QStringLiteral("Row Spacing, cm"),
            { range(0, 9999) } },
        { QStringLiteral("txtAZIR"), QStringLiteral("AZIR"),
            QStringLiteral("Row Direction, degrees from North"), { range(0, 360) } },
        { QStringLiteral("txtSDEPTH"), QStringLiteral("SDEPTH"),
            QStringLiteral("Planting Depth, cm"), { range(0, 9999) } },
        { QStringLiteral("txtSDWTPL"), QStringLiteral("SDWTPL"),
            QStringLiteral("Planting material dry weight, kg/ha"), { range(0, 9999) } },
        { QStringLiteral("txtSDAGE"), QStringLiteral("SDAGE"),
            QStringLiteral("Transplant age, days"), { range(0, 99999) } },
        { QStringLiteral("txtATEMP"), QStringLiteral("ATEMP"),
            QStringLiteral("Temperature of transplant environment, C"),
            { range(0, 9999), range(-10, 99) } },
        { QStringLiteral("txtPLPH"), QStringLiteral("PLPH"),
            QStringLiteral("Plant per hill (if appropriate)"), { range(0, 9999) } },
        { QStringLiteral("txtSPRLAP"), QStringLiteral("SPRLAP"),
            QStringLiteral("Initial sprout length, cm"), { range(0, 9999) } },
    };
    return all;
}

// --- Opening ----------------------------------------------------------------

bool mnuEditPlanting_Click()
{
    Busy busy;
    try {
        closeOtherEditors();

        QSqlQuery first
            = select(QStringLiteral("SELECT YRPLT FROM Planting ORDER BY rowid LIMIT 1"));
        const bool undated = first.next() && first.value(0).isNull();
        first.finish();
        // A planting date needs the weather of a field first.
        if (undated
            && scalar(QStringLiteral("SELECT WSTA FROM Fields ORDER BY rowid LIMIT 1")).isNull()) {
            msgBox(pt::selectWeatherStation);
            documentHost().reopenEditor(QStringLiteral("frmFields"));
            return false;
        }
        return true;
    } catch (const RuntimeError& e) {
        reportError(e.text(), pt::menuTail);
        return false;
    }
}

PlantingEditor::PlantingEditor(PlantingScreen& screen)
    : m_screen(screen)
    , m_backup(planting, levelField, QStringLiteral("PLTTreatment"))
{
    m_grid.setHooks({ [](int column, const QVariant&, QVariant& value, bool) {
                         if (column == 1) {
                             value = value.toString().left(text::levelNameLength);
                             return true;
                         }
                         const QString typed = value.toString();
                         const std::optional<int> level = levelOf(typed);
                         if (!level || typed.trimmed().toDouble() != *level) {
                             invalidEntry();
                             return false;
                         }
                         value = *level;
                         return true;
                     },
        [this](int column, const QVariant& value) {
            // The renumbered level's page says its new number.
            if (column == 0)
                EditEntry(value.toInt());
        },
        [](const RuntimeError&) { invalidEntry(); } });
}

void PlantingEditor::Form_Load()
{
    markOpen(EditorForm::frmPlantingEd);
    m_screen.setCaption(editorCaption(pt::captionStem));
    try {
        m_grid.setQuery(
            QStringLiteral("SELECT LNPLT, PLNAME FROM Planting ORDER BY LNPLT"), planting);
        CreateBackUp();
        QStringList lists[2];
        const QString types[2] = { methodType, distributionType };
        for (int i = 0; i < 2; ++i) {
            QSqlQuery q = select(QStringLiteral("SELECT Description FROM CodeLookup WHERE Type = ? "
                                                "ORDER BY Description, rowid"),
                { types[i] });
            while (q.next())
                lists[i] << q.value(0).toString();
        }
        m_screen.setChoices(lists[0], lists[1]);
        showLevel(m_grid.rowCount() > 0 ? m_grid.value(0, 0).toInt() : -1);
    } catch (const RuntimeError& e) {
        reportError(e.text(), pt::formLoadTail);
    }
}

void PlantingEditor::CreateBackUp()
{
    try {
        m_backup.create();
    } catch (const RuntimeError& e) {
        reportError(e.text(), pt::createBackUpTail);
    }
}

void PlantingEditor::ColumnNames()
{
    m_grid.setCaptions({ text::level, text::description });
}

std::optional<int> PlantingEditor::currentLevel() const
{
    return levelOf(m_grid.text(m_screen.currentRow(), 0));
}

qint64 PlantingEditor::currentRowId() const
{
    return m_grid.rowId(m_screen.currentRow());
}

// Reads Data1 again and goes to the row of a level (-1: the last row).
void PlantingEditor::showLevel(int level)
{
    m_grid.requery();
    ColumnNames();
    int row = m_grid.rowCount() - 1;
    for (int i = 0; i < m_grid.rowCount() && level >= 0; ++i) {
        if (m_grid.value(i, 0).toInt() == level)
            row = i;
    }
    m_screen.goToRow(row);
    if (row < 0)
        m_screen.showPage({});
    else
        EditEntry(m_grid.value(row, 0).toInt());
}

QString PlantingEditor::codeOf(const QString& type, const QString& description) const
{
    return scalar(QStringLiteral("SELECT Code FROM CodeLookup WHERE Type = ? AND Description = ? "
                                 "ORDER BY rowid LIMIT 1"),
        { type, description })
        .toString();
}

QString PlantingEditor::descriptionOf(const QString& type, const QString& code) const
{
    return scalar(QStringLiteral("SELECT Description FROM CodeLookup WHERE Type = ? AND Code = ? "
                                 "ORDER BY rowid LIMIT 1"),
        { type, code })
        .toString();
}

void PlantingEditor::EditEntry(int level)
{
    try {
        PlantingPage page;
        page.levelNumber = text::level + QLatin1Char(' ') + QString::number(level);
        reference::FindFieldDate();
        QSqlQuery years = select(QStringLiteral("SELECT DISTINCT Year FROM FieldYears"));
        while (years.next())
            page.years << years.value(0).toString();

        QStringList fields { QStringLiteral("YRPLT"), QStringLiteral("IEMRG"),
            QStringLiteral("PLME"), QStringLiteral("PLDS") };
        for (const PlantingBox& box : boxes())
            fields << box.field;
        QSqlQuery row = select(QStringLiteral("SELECT %1 FROM Planting WHERE LNPLT = ? ORDER BY "
                                              "rowid LIMIT 1")
                                   .arg(fields.join(QStringLiteral(", "))),
            { level });
        if (row.next()) {
            page.plantingDate = dateOfCode(row.value(0));
            page.emergenceDate = dateOfCode(row.value(1));
            page.method = descriptionOf(methodType, row.value(2).toString());
            page.distribution = descriptionOf(distributionType, row.value(3).toString());
            for (int i = 0; i < int(boxes().size()); ++i) {
                const QVariant value = row.value(4 + i);
                page.boxes.push_back(value.isNull() ? QString() : format::NumText(value));
            }
            const QDate date = format::toDate(page.plantingDate);
            if (date.isValid())
                page.year = int(page.years.indexOf(QString::number(date.year())));
        }
        m_screen.setDatesInError(false);
        m_screen.showPage(page);
    } catch (const RuntimeError& e) {
        reportError(e.text(), pt::editEntryTail);
    }
}

void PlantingEditor::EditIC_Date()
{
    const QDate sown = dateOfBox(m_screen.dateText(PlantingDate::Planting));
    const QDate emerged = dateOfBox(m_screen.dateText(PlantingDate::Emergence));
    const bool early = sown.isValid() && emerged.isValid() && sown.daysTo(emerged) < 0;
    m_screen.setDatesInError(early);
    if (early)
        msgBox(pt::emergenceBeforePlanting, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
}

void PlantingEditor::DBGrid1_RowColChange()
{
    const QString levelText = m_grid.text(m_screen.currentRow(), 0);
    const std::optional<int> level = levelOf(levelText);
    if (!level) {
        if (!levelText.trimmed().isEmpty())
            invalidEntry();
        return;
    }
    EditEntry(*level);
}

// --- The page ---------------------------------------------------------------

void PlantingEditor::storeValue(const QString& field, const QVariant& value)
{
    const qint64 id = currentRowId();
    if (id != 0)
        exec(QStringLiteral("UPDATE Planting SET [%1] = ? WHERE rowid = ?").arg(field),
            { value, id });
}

bool PlantingEditor::BoxValidate(int box, QString& text)
{
    const PlantingBox& b = boxes().at(size_t(box));
    QString accepted = text;
    for (const RangeRule& rule : b.rules) {
        const std::optional<QString> passed = acceptRange(accepted, rule);
        if (!passed) {
            invalidEntry();
            return false;
        }
        accepted = *passed;
    }
    try {
        storeValue(b.field, accepted.toDouble());
    } catch (const RuntimeError& e) {
        reportError(e.text(), pt::validateTail);
        return false;
    }
    text = accepted;
    return true;
}

bool PlantingEditor::DateValidate(PlantingDate box, const QString& text)
{
    const QString field
        = box == PlantingDate::Planting ? QStringLiteral("YRPLT") : QStringLiteral("IEMRG");
    const QString typed = text.trimmed();
    try {
        if (typed.isEmpty()) {
            if (box == PlantingDate::Emergence)
                storeValue(field, QVariant());
            return true;
        }
        if (typed == noDate)
            return true;
        // A date outside the file's years would come back as another year.
        const QDate date = dateOfBox(typed);
        if (!date.isValid() || !yearInRange(date)) {
            msgBox(text::invalidDate, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
            return false;
        }
        storeValue(field, codeOfDate(date));
        return true;
    } catch (const RuntimeError& e) {
        reportError(e.text(), pt::validateTail);
        return false;
    }
}

void PlantingEditor::ComboClick(const QString& field, const QString& description)
{
    try {
        const QString type = field.compare(QLatin1String("PLME"), Qt::CaseInsensitive) == 0
            ? methodType
            : distributionType;
        const QString code = codeOf(type, description);
        storeValue(field, code.isEmpty() ? QVariant() : QVariant(code));
    } catch (const RuntimeError& e) {
        reportError(e.text(), pt::validateTail);
    }
}

// --- Levels -----------------------------------------------------------------

void PlantingEditor::cmdAdd()
{
    try {
        m_screen.commitEdit();
        const int added = nextLevel(planting, levelField);
        const std::optional<int> level = currentLevel();
        database::Transaction transaction;
        if (level
            && scalar(QStringLiteral("SELECT 1 FROM Planting WHERE LNPLT = ?"), { *level })
                   .isValid())
            exec(QStringLiteral("INSERT INTO Planting (LNPLT, %1) SELECT ?, %1 FROM Planting WHERE "
                                "LNPLT = ?")
                     .arg(copiedColumns),
                { added, *level });
        else
            database::insertRow(planting, { { levelField, added } });
        transaction.commit();
        showLevel(added);
    } catch (const RuntimeError& e) {
        reportError(e.text(), pt::addTail);
    }
}

void PlantingEditor::cmdDelete_Click()
{
    try {
        const std::optional<int> level = currentLevel();
        if (!level) {
            invalidEntry();
            return;
        }
        if (deleteUnusedLevel(planting, levelField, *level, pt::levelWord))
            showLevel(-1);
    } catch (const RuntimeError& e) {
        reportError(e.text(), pt::deleteTail);
    }
}

// --- Closing ----------------------------------------------------------------

bool PlantingEditor::storeDates(const QString& plantingTitle)
{
    const QString sown = m_screen.dateText(PlantingDate::Planting).trimmed();
    if (!sown.isEmpty() && sown != noDate) {
        const QDate date = dateOfBox(sown);
        if (!date.isValid()) {
            msgBox(pt::enterPlantingDate, MsgButtons::OK, MsgIcon::None, plantingTitle);
            return false;
        }
        if (!yearInRange(date)) {
            msgBox(text::invalidDate, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
            return false;
        }
        storeValue(QStringLiteral("YRPLT"), codeOfDate(date));
    }
    ColumnNames();

    const QString emerged = m_screen.dateText(PlantingDate::Emergence).trimmed();
    if (emerged.isEmpty()) {
        storeValue(QStringLiteral("IEMRG"), QVariant());
    } else if (emerged != noDate) {
        const QDate date = dateOfBox(emerged);
        if (!date.isValid()) {
            msgBox(pt::enterEmergenceDate);
            return false;
        }
        if (!yearInRange(date)) {
            msgBox(text::invalidDate, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
            return false;
        }
        storeValue(QStringLiteral("IEMRG"), codeOfDate(date));
    }
    return true;
}

// The experiment's date: the first planting date of the table, "-99" for
// none.
QString PlantingEditor::experimentDate() const
{
    QSqlQuery q = select(QStringLiteral("SELECT YRPLT FROM Planting ORDER BY rowid"));
    while (q.next()) {
        const QString date = q.value(0).toString().trimmed();
        if (!q.value(0).isNull() && date != noDate)
            return date;
    }
    return noDate;
}

// A new file's simulation starts on the planting date: the defaults that are
// still empty take it, and only those.
void PlantingEditor::fillSimulationDefaults(const QString& date) const
{
    struct Default {
        const char* table;
        const char* column;
    };
    std::vector<Default> defaults { { "SimulationControl", "YRSIM" },
        { "AutoManagementPlanting", "PWDINF" }, { "AutoManagementPlanting", "PWDINL" },
        { "AutoManagementHarvest", "HLATE" } };
    if (state().IsForecast)
        defaults.push_back({ "AutoManagementSimdates", "FODAT" });
    database::Transaction transaction;
    for (const Default& d : defaults)
        exec(QStringLiteral("UPDATE [%1] SET [%2] = ? WHERE [%2] IS NULL AND rowid = (SELECT rowid "
                            "FROM [%1] ORDER BY rowid LIMIT 1)")
                 .arg(QLatin1String(d.table), QLatin1String(d.column)),
            { date });
    transaction.commit();
}

void PlantingEditor::close()
{
    LevelTableBackup::drop();
    m_closedByButton = true;
    state().FileSaved = false;
    m_screen.closeWindow();
}

void PlantingEditor::cmdOK_Click()
{
    try {
        m_screen.commitEdit();
        if (!storeDates(QString()))
            return;
        const QString date = experimentDate();
        if (date == noDate && state().IsNewFile
            && msgBox(pt::noPlantingDate, MsgButtons::OKCancelDefaultCancel, MsgIcon::Exclamation,
                   pt::noteTitle)
                == MsgAnswer::Cancel)
            return;
        if (date != noDate)
            EditIC_Date();
        if (state().IsNewFile)
            fillSimulationDefaults(date);
        close();
    } catch (const RuntimeError& e) {
        reportError(e.text(), pt::okTail);
    }
}

void PlantingEditor::cmdNext()
{
    try {
        m_screen.commitEdit();
        if (!storeDates(pt::noteTitle))
            return;
        // Readies ICSoil, the first level's date and crop, and SoilData as
        // the initial conditions' own menu entry does.
        if (!prepareInitialConditions())
            return;
        if (state().IsNewFile)
            fillSimulationDefaults(experimentDate());
        close();
        documentHost().reopenEditor(QStringLiteral("frmInitCond"));
    } catch (const RuntimeError& e) {
        reportError(e.text(), pt::nextTail);
    }
}

void PlantingEditor::Command1_Click()
{
    m_closedByButton = true;
    m_screen.closeWindow();
    m_backup.restore(pt::cancelTail);
}

void PlantingEditor::Form_Unload()
{
    unloadEditor(m_closedByButton, EditorForm::frmPlantingEd, [this] { cmdOK_Click(); });
}

void PlantingEditor::escapePressed()
{
    if (escapeConfirmed())
        Command1_Click();
}

} // namespace quillon::editors
