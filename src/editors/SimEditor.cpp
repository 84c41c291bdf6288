#include "editors/SimEditor.h"

#include "app/AppState.h"
#include "app/DocumentCommands.h"
#include "app/UserInterface.h"
#include "database/Relations.h"
#include "database/Schema.h"
#include "database/Sql.h"
#include "editors/EditorForms.h"
#include "editors/EditorSteps.h"
#include "editors/EditorTexts.h"
#include "editors/LevelRows.h"
#include "editors/SimTexts.h"
#include "editors/SimValues.h"
#include "format/DateCodes.h"
#include "format/NumberText.h"
#include "reference/SimDefaults.h"
#include "validation/TableRelations.h"

#include <QFileInfo>
#include <QSqlRecord>

namespace quillon::editors {

using database::exec;
using database::scalar;
using database::select;
namespace st = sim_text;

namespace {

const QString simulationControl = QStringLiteral("SimulationControl");
const QString simdates = QStringLiteral("AutoManagementSimdates");
const QString simTreatment = QStringLiteral("SimTreatment");
const QString forecastRelation = QStringLiteral("Sim10");
const QString levelsStatement
    = QStringLiteral("SELECT LNSIM, TITSIM FROM SimulationControl ORDER BY LNSIM");

QString number(int value)
{
    return QString::number(value);
}

QString twin(const QString& table, const char* suffix)
{
    return table + QLatin1String(suffix);
}

// "Create Table X_BackUp (LNSIM Integer, ...)": a twin of a group table with
// its columns in the same order and of the same types.
QString createTwin(const QString& table, const QString& twinName)
{
    QStringList columns;
    for (const database::FieldDef& f : database::findTable(table)->fields)
        columns << QStringLiteral("[%1] %2").arg(f.name, database::columnDeclaration(f));
    return QStringLiteral("CREATE TABLE [%1] (%2)")
        .arg(twinName, columns.join(QStringLiteral(", ")));
}

QString picture(const char* name)
{
    const QString path = state().AppFolder + QLatin1String(name);
    return QFileInfo::exists(path) ? path : QString();
}

std::vector<CodeChoice> choicesOf(const SimField& field)
{
    std::vector<CodeChoice> choices;
    if (!field.codeType.isEmpty()) {
        QSqlQuery q = select(
            QStringLiteral(
                "SELECT Code, Description FROM CodeLookup WHERE Type = ? ORDER BY Description"),
            { field.codeType });
        while (q.next()) {
            const QString code = q.value(0).toString();
            choices.push_back({ code,
                q.value(1).toString().trimmed() + QStringLiteral(" (") + code + QLatin1Char(')') });
        }
        return choices;
    }
    QSqlQuery q = select(
        QStringLiteral("SELECT Code, Description FROM SimLookUp WHERE Type = %1 ORDER BY rowid")
            .arg(field.simType));
    while (q.next())
        choices.push_back({ q.value(0).toString(), q.value(1).toString() });
    return choices;
}

// The code of a combo as the rules compare it.
QString comparable(const QString& code)
{
    return code.trimmed().toUpper();
}

} // namespace

// --- Opening ----------------------------------------------------------------

bool EditSimOptGeneral_Click()
{
    AppState& s = state();
    s.NewLevelCreated = false;
    Busy busy;
    try {
        closeOtherEditors();
        if (!s.DocumentOpen)
            return true;
        QSqlQuery first = select(
            QStringLiteral("SELECT rowid, YRSIM FROM SimulationControl ORDER BY rowid LIMIT 1"));
        if (!first.next() || !first.value(1).isNull())
            return true;
        const qint64 row = first.value(0).toLongLong();
        first.finish();
        // A level without a start date starts on the first planting date.
        const QVariant planting
            = scalar(QStringLiteral("SELECT YRPLT FROM Planting ORDER BY rowid LIMIT 1"));
        if (!planting.isValid() || planting.isNull()) {
            msgBox(text::enterPlantingDate);
            documentHost().reopenEditor(QStringLiteral("frmPlantingEd"));
            return false;
        }
        exec(QStringLiteral("UPDATE SimulationControl SET YRSIM = ? WHERE rowid = ?"),
            { planting, row });
        return true;
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::menuTail);
        return false;
    }
}

SimEditor::SimEditor(SimScreen& screen)
    : m_screen(screen)
{
    m_data1.setHooks({ [this](int column, const QVariant& oldValue, QVariant& value, bool) {
                          return DBGrid1_BeforeColUpdate(column, oldValue, value);
                      },
        {}, [this](const RuntimeError& error) { DBGrid1_Error(error); } });
}

QString SimEditor::levelCellText() const
{
    return m_data1.text(m_screen.levelRow(), 0);
}

void SimEditor::Form_Load()
{
    try {
        markOpen(EditorForm::frmSim);
        m_forecast = state().IsForecast;
        m_screen.setForecastTab(m_forecast);
        m_screen.showPictures(picture("Sim1.jpg"), picture("Sim2.jpg"));
        m_screen.setCaption(editorCaption(st::captionStem));
        m_data1.setQuery(levelsStatement, simulationControl);
        std::map<QString, std::vector<CodeChoice>> lists;
        for (const SimField& f : simFields()) {
            if (f.kind != SimKind::Code)
                continue;
            const QString key = f.codeType.isEmpty() ? number(f.simType) : f.codeType;
            if (!lists.count(key))
                lists[key] = choicesOf(f);
            m_screen.setChoices(f.control, lists[key]);
        }
        CreateBackUp();
        ColumnNames();
        m_screen.goToLevelRow(0);
        EditEntry(levelOf(levelCellText()).value_or(0));
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::formLoadTail);
    }
}

void SimEditor::CreateBackUp()
{
    try {
        database::Transaction transaction;
        for (const QString& table : simTables()) {
            const QString backUp = twin(table, "_BackUp");
            database::remakeTable(backUp, createTwin(table, backUp));
            exec(QStringLiteral("INSERT INTO [%1] SELECT * FROM [%2]").arg(backUp, table));
        }
        m_treatmentLevels.clear();
        QSqlQuery q = select(QStringLiteral("SELECT LNSIM FROM Treatments ORDER BY rowid"));
        while (q.next())
            m_treatmentLevels.push_back(q.value(0));
        transaction.commit();
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::tail("CreateBackUp"));
    }
}

void SimEditor::ColumnNames()
{
    m_data1.setCaptions({ text::level, text::description });
}

// The forecast dates take part in forecast files only.
bool SimEditor::shownInForm(const QString& table) const
{
    return m_forecast || table.compare(simdates, Qt::CaseInsensitive) != 0;
}

void SimEditor::EditEntry(int level)
{
    try {
        QStringList years;
        QSqlQuery y = select(QStringLiteral("SELECT DISTINCT Year FROM FieldYears"));
        while (y.next())
            years << y.value(0).toString();
        m_screen.setYears(years);

        m_level = level;
        m_rows.clear();
        for (const QString& table : simTables()) {
            if (!shownInForm(table))
                continue;
            QSqlQuery q = select(
                QStringLiteral("SELECT rowid, * FROM [%1] WHERE LNSIM = %2 ORDER BY rowid LIMIT 1")
                    .arg(table, number(level)));
            const bool found = q.next();
            if (found)
                m_rows[table] = q.value(0).toLongLong();
            const QSqlRecord record = q.record();
            for (const SimField& f : simFields()) {
                if (f.table == table)
                    showField(f, found ? q.value(record.indexOf(f.column)) : QVariant());
            }
        }
        applyManagement();
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::editEntryTail);
    }
}

void SimEditor::showField(const SimField& field, const QVariant& value)
{
    if (field.kind == SimKind::Code) {
        const QString code = value.toString();
        m_screen.showCode(field.control, code);
        m_shown[field.control] = m_screen.code(field.control);
    } else {
        m_screen.setText(field.control, shownText(field, value));
        m_shown[field.control] = m_screen.text(field.control);
    }
}

// A field of a table without a row for the level stays off: there is
// nothing to store its value in.
void SimEditor::setEnabled(const QString& control, bool enabled)
{
    const SimField* field = simField(control);
    m_screen.setFieldEnabled(control, enabled && field && m_rows.count(field->table));
}

// A level shows with its fields on, but for those its management codes turn
// off. The residue code turns its fields off whatever it is, so it only
// does so when the user changes it.
void SimEditor::applyManagement()
{
    for (const SimField& f : simFields())
        setEnabled(f.control, true);
    for (int index : { 0, 1, 2, 4 })
        DBCombo4_Change(index);
}

// --- Levels -----------------------------------------------------------------

void SimEditor::goToLevel(int level)
{
    for (int row = 0; row < m_data1.rowCount(); ++row) {
        if (m_data1.value(row, 0).toInt() == level)
            m_screen.goToLevelRow(row);
    }
}

void SimEditor::DBGrid1_RowColChange()
{
    try {
        const QString levelText = levelCellText();
        const std::optional<int> level = levelOf(levelText);
        if (!level) {
            if (!levelText.trimmed().isEmpty())
                invalidEntry();
            return;
        }
        if (m_level == level)
            return;
        saveLevel();
        EditEntry(*level);
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::tail("DBGrid1_RowColChange"));
    }
}

void SimEditor::CmdAdd_Click()
{
    try {
        saveLevel();
        const int newLevel
            = nextLevel(QStringLiteral("SimulationControl"), QStringLiteral("LNSIM"));
        addLevel(m_rows.count(simulationControl) ? m_level.value_or(0) : 0, newLevel);
        m_data1.requery();
        goToLevel(newLevel);
        EditEntry(newLevel);
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::tail("CmdAdd_Click"));
    }
}

// The current level's rows go through the _Add tables, where they take the
// new number, into the group tables. Without a level to copy the new one
// holds the defaults.
void SimEditor::addLevel(int current, int newLevel)
{
    database::Transaction transaction;
    for (const QString& table : simTables())
        database::tryExec(QStringLiteral("DROP TABLE [%1]").arg(twin(table, "_Add")));
    for (const QString& table : simTables())
        exec(createTwin(table, twin(table, "_Add")));
    for (const QString& table : simTables()) {
        const QString add = twin(table, "_Add");
        if (current > 0) {
            exec(QStringLiteral("INSERT INTO [%1] SELECT * FROM [%2] WHERE LNSIM = %3")
                     .arg(add, table, number(current)));
            exec(QStringLiteral("UPDATE [%1] SET LNSIM = %2").arg(add, number(newLevel)));
        } else {
            database::insertRow(
                add, reference::defaultRow(*reference::findSimGroup(table), newLevel));
        }
    }
    for (const QString& table : simTables())
        exec(QStringLiteral("INSERT INTO [%1] SELECT * FROM [%2]").arg(table, twin(table, "_Add")));
    for (const QString& table : simTables())
        exec(QStringLiteral("DROP TABLE [%1]").arg(twin(table, "_Add")));
    transaction.commit();
}

void SimEditor::CmdRemove_Click()
{
    try {
        const std::optional<int> level = levelOf(levelCellText());
        if (!level) {
            invalidEntry();
            return;
        }
        const QString n = number(*level);
        const QStringList treatments = treatmentsUsing(QStringLiteral("LNSIM"), *level);
        if (!treatments.isEmpty()) {
            ui().deletionWarning(st::levelWord, treatments);
            return;
        }
        if (msgBox(text::deleteLevel + QLatin1Char(' ') + n + QLatin1Char('?'), MsgButtons::YesNo,
                MsgIcon::Question)
            != MsgAnswer::Yes)
            return;
        {
            // SimulationControl goes last: the other tables' rows hang on it.
            database::Transaction transaction;
            QStringList order = simTables();
            order.removeAll(simulationControl);
            order << simulationControl;
            for (const QString& table : order)
                exec(QStringLiteral("DELETE FROM [%1] WHERE LNSIM = %2").arg(table, n));
            transaction.commit();
        }
        m_level.reset();
        m_data1.requery();
        m_screen.goToLevelRow(m_data1.rowCount() - 1);
        EditEntry(levelOf(levelCellText()).value_or(0));
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::tail("CmdRemove_Click"));
    }
}

bool SimEditor::DBGrid1_BeforeColUpdate(int column, const QVariant& oldValue, QVariant& value)
{
    try {
        if (column == 1) {
            value = value.toString().left(titleLength);
            return true;
        }
        const QString typed = value.toString().trimmed();
        const double wanted = typed.toDouble();
        if (!format::isNumeric(typed) || wanted != qRound(wanted) || wanted < 1 || wanted > 999) {
            invalidEntry();
            return false;
        }
        const int newLevel = qRound(wanted);
        value = newLevel;
        // A number in use: the list's own update fails on the duplicate and
        // its error event says so.
        if (scalar(QStringLiteral("SELECT 1 FROM SimulationControl WHERE LNSIM = %1").arg(newLevel))
                .isValid())
            return true;
        const int oldLevel = oldValue.toInt();
        if (newLevel != oldLevel) {
            // The group tables and the treatments follow through the
            // relations.
            exec(QStringLiteral("UPDATE [SimulationControl] SET LNSIM = %1 WHERE LNSIM = %2")
                     .arg(newLevel)
                     .arg(oldLevel));
            if (m_level == oldLevel)
                m_level = newLevel;
        }
        return true;
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::tail("DBGrid1_BeforeColUpdate"));
        return false;
    }
}

void SimEditor::DBGrid1_Error(const RuntimeError& error)
{
    Q_UNUSED(error)
    invalidEntry();
}

// --- The page ---------------------------------------------------------------

void SimEditor::DBCombo1_Click(int index)
{
    try {
        const QString photosynthesis = QStringLiteral("DBCombo1(4)");
        if (comparable(m_screen.code(QStringLiteral("DBCombo1(2)"))) != QLatin1String("Z"))
            return;
        if (index == 2
            || (index == 4 && comparable(m_screen.code(photosynthesis)) != QLatin1String("L")))
            m_screen.showCode(photosynthesis, QStringLiteral("L"));
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::dbCombo1Tail);
    }
}

void SimEditor::DBCombo4_Change(int index)
{
    try {
        const QString code = comparable(m_screen.code(QStringLiteral("DBCombo4(%1)").arg(index)));
        for (const ManagementRule& rule : managementRules()) {
            if (rule.index != index || (!rule.codes.isEmpty() && !rule.codes.contains(code)))
                continue;
            for (const QString& control : rule.enabled)
                setEnabled(control, true);
            for (const QString& control : rule.disabled)
                setEnabled(control, false);
            return;
        }
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::tail("DBCombo4_Change"));
    }
}

bool SimEditor::Validate(const QString& control)
{
    const SimField* field = simField(control);
    if (!field)
        return true;
    const QString typed = m_screen.text(control);
    if (field->column == QLatin1String("NYRS") && typed.trimmed().isEmpty()) {
        msgBox(st::nyrsDefault, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
        m_screen.setText(control, format::NumText(reference::simDefaults().member(field->column)));
        return true;
    }
    const QString refusal = refusalOf(*field, typed);
    if (refusal.isEmpty())
        return true;
    msgBox(refusal, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
    return false;
}

// The data controls save their current rows: each field the user changed
// goes to its column, in one statement per table. A text its check refuses
// (the check said so as the user left the box) changes nothing.
void SimEditor::saveLevel()
{
    if (!m_level)
        return;
    std::map<QString, database::Values> changes;
    std::map<QString, QString> nowShown;
    for (const SimField& f : simFields()) {
        if (!m_rows.count(f.table))
            continue;
        const bool coded = f.kind == SimKind::Code;
        const QString now = coded ? m_screen.code(f.control) : m_screen.text(f.control);
        if (now == m_shown[f.control])
            continue;
        const std::optional<QVariant> value = coded
            ? std::optional<QVariant>(now.isEmpty() ? QVariant() : QVariant(now))
            : storedValue(f, now);
        if (!value)
            continue;
        changes[f.table].push_back({ f.column, *value });
        nowShown[f.control] = now;
    }
    database::Transaction transaction;
    for (const auto& [table, values] : changes) {
        QStringList assignments;
        QVariantList params;
        for (const auto& [column, value] : values) {
            assignments << QStringLiteral("[%1] = ?").arg(column);
            params << value;
        }
        params << m_rows.at(table);
        exec(QStringLiteral("UPDATE [%1] SET %2 WHERE rowid = ?")
                 .arg(table, assignments.join(QStringLiteral(", "))),
            params);
    }
    transaction.commit();
    for (const auto& [control, text] : nowShown)
        m_shown[control] = text;
}

// --- Closing ----------------------------------------------------------------

void SimEditor::commit()
{
    saveLevel();
    state().FileSaved = false;
}

void SimEditor::cmdOK_Click()
{
    try {
        for (const char* box :
            { "txtYRSIMDate", "txtMaskEdBoxHar2", "txtMaskEdBoxPlant1", "txtMaskEdBoxPlant2" }) {
            const QString typed = m_screen.text(QLatin1String(box)).trimmed();
            if (!typed.isEmpty() && !format::toDate(typed).isValid()) {
                msgBox(text::invalidDate, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
                return;
            }
        }
        commit();
        m_closedByButton = true;
        m_screen.closeWindow();
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::tail("cmdOK_Click"));
    }
}

void SimEditor::cmdCancel_Click()
{
    try {
        restoreTables();
        m_closedByButton = true;
        m_screen.closeWindow();
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::tail("cmdCancel_Click"));
    }
}

// Cancel's order: the treatments let go of their levels and the relation
// to them goes; every group table is emptied, SimulationControl next to last
// and the forecast dates last, and filled from its backup; the relation
// comes back and the treatments take the levels they held at opening.
void SimEditor::restoreTables()
{
    database::Transaction transaction;
    exec(QStringLiteral("UPDATE Treatments SET LNSIM = NULL"));
    if (database::relationExists(simTreatment))
        database::deleteRelation(simTreatment);
    // The forecast dates hang on SimulationControl too, and their rows go
    // after it: their relation is off meanwhile.
    const bool forecastDates = database::relationExists(forecastRelation);
    if (forecastDates)
        validation::DeleteRelationsForecast();
    QStringList order = simTables();
    order.removeAll(simulationControl);
    order.removeAll(simdates);
    order << simulationControl << simdates;
    for (const QString& table : order)
        exec(QStringLiteral("DELETE FROM [%1]").arg(table));
    for (const QString& table : simTables())
        exec(QStringLiteral("INSERT INTO [%1] SELECT * FROM [%2]")
                 .arg(table, twin(table, "_BackUp")));
    if (forecastDates)
        validation::SetRelationsForecast();
    for (const database::Relation& r : validation::relationTable()) {
        if (r.name == simTreatment)
            database::createRelation(r);
    }
    QSqlQuery rows = select(QStringLiteral("SELECT rowid FROM Treatments ORDER BY rowid"));
    std::vector<qint64> ids;
    while (rows.next())
        ids.push_back(rows.value(0).toLongLong());
    for (size_t i = 0; i < ids.size() && i < m_treatmentLevels.size(); ++i)
        exec(QStringLiteral("UPDATE Treatments SET LNSIM = ? WHERE rowid = ?"),
            { m_treatmentLevels[i], ids[i] });
    transaction.commit();
}

bool SimEditor::Form_QueryUnload()
{
    if (m_closedByButton)
        return true;
    if (!escapeConfirmed())
        return false;
    try {
        restoreTables();
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::tail("cmdCancel_Click"));
    }
    m_closedByButton = true;
    return true;
}

void SimEditor::Form_Unload()
{
    unloadEditor(m_closedByButton, EditorForm::frmSim, [this] {
        try {
            commit();
        } catch (const RuntimeError& e) {
            reportError(e.text(), st::tail("cmdOK_Click"));
        }
    });
}

void SimEditor::escapePressed()
{
    if (escapeConfirmed())
        cmdCancel_Click();
}

} // namespace quillon::editors
