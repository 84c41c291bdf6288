#include "editors/InitialConditionsEditor.h"

#include "app/AppState.h"
#include "app/DocumentCommands.h"
#include "app/UserInterface.h"
#include "database/Relations.h"
#include "database/Schema.h"
#include "database/Sql.h"
#include "editors/EditorForms.h"
#include "editors/EditorSteps.h"
#include "editors/EditorTexts.h"
#include "editors/InitialConditionsFill.h"
#include "editors/InitialConditionsPreparation.h"
#include "editors/InitialConditionsTexts.h"
#include "editors/LevelRows.h"
#include "format/DateCodes.h"
#include "format/NumberText.h"
#include "reference/SoilLookups.h"
#include "reference/WeatherLookups.h"

namespace quillon::editors {

using database::exec;
using database::scalar;
using database::select;

namespace {

const QString initialConditions = QStringLiteral("InitialConditions");
const QString icSoilDefinition = QStringLiteral("CREATE TABLE ICSoil (SLNO TEXT COLLATE NOCASE)");

// The tables and their backups, in the order Cancel restores them.
struct Backup {
    const char* table;
    const char* backup;
};
constexpr std::array<Backup, 4> backups { { { "InitialConditions", "BackUp" },
    { "IC_Water_Nitrogen", "BackUp_IC_Water_Nitrogen" }, { "ICLayers", "BackUp_Layers" },
    { "ICSoil", "BackUp2" } } };

QString number(int value)
{
    return QString::number(value);
}

// A backup takes the table's columns without their checks, so that it takes
// back every row the table held.
void backUp(const QString& table, const QString& backup)
{
    QStringList columns;
    if (const database::TableDef* def = database::findTable(table)) {
        for (const database::FieldDef& field : def->fields)
            columns << QStringLiteral("[%1] %2").arg(
                field.name, database::columnDeclaration(field));
    }
    exec(QStringLiteral("CREATE TABLE [%1] (%2)").arg(backup, columns.join(QStringLiteral(", "))));
    exec(QStringLiteral("INSERT INTO [%1] SELECT * FROM [%2] ORDER BY rowid").arg(backup, table));
}

void putBack(const QString& table, const QString& backup)
{
    exec(QStringLiteral("INSERT INTO [%1] SELECT * FROM [%2] ORDER BY rowid").arg(table, backup));
    exec(QStringLiteral("DROP TABLE [%1]").arg(backup));
}

void dropBackups()
{
    for (const Backup& b : backups)
        database::tryExec(QStringLiteral("DROP TABLE [%1]").arg(QLatin1String(b.backup)));
}

// The soil's ID in the list's "description (ID)": the text after the last
// "(", less the closing ")".
QString soilId(const QString& soil)
{
    QString id = soil.mid(soil.lastIndexOf(QLatin1Char('(')) + 1);
    id.remove(QLatin1Char(')'));
    return id.trimmed();
}

QString textOf(const QVariant& value)
{
    return value.isNull() ? QString() : format::NumText(value);
}

} // namespace

const std::array<InitialConditionsBox, 10>& initialConditionsBoxes()
{
    static const std::array<InitialConditionsBox, 10> boxes { {
        { "txtICREN", "ICREN", "N %", 0, 100 },
        { "txtICREP", "ICREP", "P %", 0, 100 },
        { "txtICRES", "ICRES", "Crop residue, kg/ha", 0, 99999 },
        { "txtICRID", "ICRID", "Depth, cm", 0, 100 },
        { "txtICRIP", "ICRIP", "%", 0, 100 },
        { "txtICWD", "ICWD", "Water table depth, cm", 0, 999 },
        { "txtRootWeight", "WRESR", "Root Weight, kg/ha", 0, 99999 },
        { "txtNodWeight", "WRESND", "Nodule Weight, kg/ha", 0, 9999 },
        { "txtRhizEffect", "EFNFIX", "Effectiveness", 0, 1 },
        { "txtRhizNumber", "EFINOC", "Number", 0, 1 },
    } };
    return boxes;
}

// --- Opening ----------------------------------------------------------------

bool mnuEditInitCond_Click()
{
    Busy busy;
    try {
        closeOtherEditors();
        database::Transaction transaction;
        const bool show = prepareInitialConditions();
        transaction.commit();
        return show;
    } catch (const RuntimeError& e) {
        reportError(e.text(), ic_text::menuTail);
        return false;
    }
}

InitialConditionsEditor::InitialConditionsEditor(InitialConditionsScreen& screen)
    : m_screen(screen)
{
}

std::optional<int> InitialConditionsEditor::currentLevel() const
{
    return levelOf(m_screen.levelCellText());
}

QString InitialConditionsEditor::levelsStatement() const
{
    return QStringLiteral("SELECT LNIC, ICNAME FROM InitialConditions ORDER BY LNIC");
}

QString InitialConditionsEditor::layersStatement(int level) const
{
    return QStringLiteral(
        "SELECT DLAYRI, SWINIT, INH4, INO3 FROM ICLayers WHERE LNIC = %1 ORDER BY DLAYRI")
        .arg(number(level));
}

void InitialConditionsEditor::showLayers(int level, qint64 row)
{
    m_screen.showLayers(layersStatement(level), level);
    ColumnNames_Layers();
    m_screen.goToLayer(row);
}

void InitialConditionsEditor::Form_Load()
{
    try {
        markOpen(EditorForm::frmInitCond);
        m_screen.setCaption(editorCaption(ic_text::captionStem));
        CreateBackUp();
        m_screen.setCropChoices(cropList());
        QStringList soils;
        QSqlQuery q = select(QStringLiteral("SELECT SLNO FROM ICSoil ORDER BY rowid"));
        while (q.next())
            soils << q.value(0).toString();
        m_screen.setSoilChoices(soils);
        m_screen.showLevels(levelsStatement(), LevelRow::First);
        ColumnNames();
        if (const std::optional<int> level = currentLevel())
            EditEntry(*level);
    } catch (const RuntimeError& e) {
        reportError(e.text(), ic_text::formLoadTail);
    }
}

void InitialConditionsEditor::CreateBackUp()
{
    try {
        dropBackups();
        database::Transaction transaction;
        for (const Backup& b : backups)
            backUp(QLatin1String(b.table), QLatin1String(b.backup));
        m_treatmentLevels.clear();
        QSqlQuery q = select(QStringLiteral("SELECT LNIC FROM Treatments ORDER BY rowid"));
        while (q.next())
            m_treatmentLevels.push_back(q.value(0));
        transaction.commit();
    } catch (const RuntimeError& e) {
        reportError(e.text(), ic_text::createBackUpTail);
    }
}

void InitialConditionsEditor::ColumnNames()
{
    m_screen.setLevelCaptions({ text::level, text::description });
}

void InitialConditionsEditor::ColumnNames_Layers()
{
    m_screen.setLayerCaptions({ ic_text::depthCaption, ic_text::waterCaption,
        ic_text::ammoniumCaption, ic_text::nitrateCaption });
}

void InitialConditionsEditor::EditEntry(int level)
{
    try {
        m_level = level;
        reference::FindFieldDate();
        QStringList years;
        QSqlQuery y = select(QStringLiteral("SELECT DISTINCT Year FROM FieldYears"));
        while (y.next())
            years << y.value(0).toString();
        m_screen.showYears(years);
        m_screen.setLevelNumberText(text::level + QLatin1Char(' ') + number(level));

        showSummary(level);
        QStringList fields { QStringLiteral("PRCROP") };
        for (const InitialConditionsBox& box : initialConditionsBoxes())
            fields << QLatin1String(box.field);
        QSqlQuery row = select(QStringLiteral("SELECT %1 FROM InitialConditions WHERE LNIC = ?")
                                   .arg(fields.join(QStringLiteral(", "))),
            { level });
        const bool found = row.next();
        m_screen.showPreviousCrop(found ? row.value(0).toString() : QString());
        for (int i = 1; i < fields.size(); ++i)
            m_screen.setBoxText(fields.at(i), found ? textOf(row.value(i)) : QString());
        row.finish();
        showLayers(level);
        EditIC_Date();
    } catch (const RuntimeError& e) {
        reportError(e.text(), ic_text::editEntryTail);
    }
}

// The level's soil, water and nitrogen, or empty boxes when it has none.
void InitialConditionsEditor::showSummary(int level)
{
    QSqlQuery q = select(
        QStringLiteral("SELECT SLNO, Water, Nitrogen FROM IC_Water_Nitrogen WHERE LNIC = ?"),
        { level });
    if (q.next()) {
        m_screen.showSoil(q.value(0).toString());
        m_screen.showWaterNitrogen(textOf(q.value(1)), textOf(q.value(2)));
    } else {
        m_screen.showSoil(QString());
        m_screen.showWaterNitrogen(QString(), QString());
    }
}

void InitialConditionsEditor::EditIC_Date()
{
    try {
        QString code = scalar(
            QStringLiteral("SELECT IDAYIC FROM InitialConditions WHERE LNIC = ?"), { m_level })
                           .toString();
        m_screen.setDateText(format::YYDDDToDate(code));
    } catch (const RuntimeError& e) {
        reportError(e.text(), ic_text::editDateTail);
    }
}

// --- The page -----------------------------------------------------------------

bool InitialConditionsEditor::txtBox_Validate(const QString& field, const QString& text)
{
    for (const InitialConditionsBox& box : initialConditionsBoxes()) {
        if (field != QLatin1String(box.field))
            continue;
        const std::optional<QString> accepted = acceptRange(text, { box.lower, box.upper });
        if (!accepted) {
            invalidEntry();
            return false;
        }
        try {
            exec(QStringLiteral("UPDATE InitialConditions SET [%1] = ? WHERE LNIC = ?").arg(field),
                { accepted->toDouble(), m_level });
        } catch (const RuntimeError& e) {
            reportError(e.text(), ic_text::editEntryTail);
            return false;
        }
        m_screen.setBoxText(field, *accepted);
        return true;
    }
    return true;
}

bool InitialConditionsEditor::txtDate_Validate(const QString& text)
{
    if (!text.trimmed().isEmpty() && !format::toDate(text.trimmed()).isValid()) {
        msgBox(text::invalidDate, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
        return false;
    }
    try {
        storeDate(text);
    } catch (const RuntimeError& e) {
        reportError(e.text(), ic_text::editDateTail);
        return false;
    }
    return true;
}

// IDAYIC of the level from the date text: its code, or NULL for no date.
void InitialConditionsEditor::storeDate(const QString& text)
{
    QVariant date = format::toDate(text.trimmed());
    const QVariant code
        = text.trimmed().isEmpty() ? QVariant() : QVariant(format::DateToYYDDD(date));
    exec(QStringLiteral("UPDATE InitialConditions SET IDAYIC = ? WHERE LNIC = ?"),
        { code, m_level });
}

void InitialConditionsEditor::PRCROP_Click(const QString& code)
{
    try {
        exec(QStringLiteral("UPDATE InitialConditions SET PRCROP = ? WHERE LNIC = ?"),
            { code.isEmpty() ? QVariant() : QVariant(code), m_level });
    } catch (const RuntimeError& e) {
        reportError(e.text(), ic_text::editEntryTail);
    }
}

void InitialConditionsEditor::DBComboSLNO_Change()
{
    try {
        QSqlQuery q
            = select(QStringLiteral("SELECT Water, Nitrogen FROM IC_Water_Nitrogen WHERE LNIC = ?"),
                { m_level });
        if (q.next())
            m_screen.showWaterNitrogen(textOf(q.value(0)), textOf(q.value(1)));
        else
            m_screen.showWaterNitrogen(QString(), QString());
    } catch (const RuntimeError& e) {
        reportError(e.text(), ic_text::recalculateTail);
    }
}

void InitialConditionsEditor::cmdRecalculate_Click(Recalculation which)
{
    try {
        const QString soil = m_screen.soilText().trimmed();
        if (soil.isEmpty()) {
            msgBox(ic_text::selectSoil);
            return;
        }
        const bool needsWater = which != Recalculation::Nitrogen;
        const bool needsNitrogen = which != Recalculation::Water;
        const QString water = m_screen.waterText().trimmed();
        const QString nitrogen = m_screen.nitrogenText().trimmed();
        for (const auto& [needed, box] :
            { std::pair { needsWater, water }, std::pair { needsNitrogen, nitrogen } }) {
            if (needed && box.isEmpty()) {
                msgBox(ic_text::enterWaterNitrogen);
                return;
            }
            if (needed && !format::isNumeric(box)) {
                msgBox(text::invalidEntry);
                return;
            }
        }
        if (needsWater && (water.toDouble() < 0 || water.toDouble() > 100)) {
            invalidEntry();
            m_screen.focusWater();
            return;
        }
        reference::FillSoilTable(soilId(soil));
        if (database::rowCount(QStringLiteral("SoilData")) == 0) {
            msgBox(ic_text::noProfileData);
            return;
        }
        switch (which) {
        case Recalculation::All:
            ICFillAll(water.toDouble(), nitrogen.toDouble(), m_level, soil);
            break;
        case Recalculation::Water:
            ICFillWater(water.toDouble(), m_level, soil);
            break;
        case Recalculation::Nitrogen:
            ICFillNitrogen(nitrogen.toDouble(), m_level, soil);
            break;
        }
        showLayers(m_level);
    } catch (const RuntimeError& e) {
        reportError(e.text(), ic_text::recalculateTail);
    }
}

// --- Levels -----------------------------------------------------------------

void InitialConditionsEditor::cmdAdd_Click()
{
    try {
        if (!layerCommitted())
            return;
        const std::optional<int> level = currentLevel();
        if (!level) {
            invalidEntry();
            return;
        }
        const int newLevel = nextLevel(QStringLiteral("InitialConditions"), QStringLiteral("LNIC"));
        QStringList copied;
        for (const database::FieldDef& field : database::findTable(initialConditions)->fields) {
            if (field.name != QLatin1String("LNIC"))
                copied << field.name;
        }
        const QString columns = copied.join(QStringLiteral(", "));
        database::Transaction transaction;
        exec(QStringLiteral("INSERT INTO InitialConditions (LNIC, %1) SELECT ?, %1 FROM "
                            "InitialConditions WHERE LNIC = ?")
                 .arg(columns),
            { newLevel, *level });
        // The layers are copied without their level, which they get next.
        exec(QStringLiteral("INSERT INTO ICLayers (DLAYRI, SWINIT, INH4, INO3) SELECT DLAYRI, "
                            "SWINIT, INH4, INO3 "
                            "FROM ICLayers WHERE LNIC = ? ORDER BY DLAYRI, rowid"),
            { *level });
        exec(QStringLiteral("UPDATE ICLayers SET LNIC = ? WHERE LNIC IS NULL"), { newLevel });
        // Layers without ammonium go, whichever level they belong to: the
        // program has always cleared them here.
        exec(QStringLiteral("DELETE FROM ICLayers WHERE INH4 IS NULL"));
        Add_IC_Water_Nitrogen(*level, newLevel);
        transaction.commit();
        m_screen.showLevels(levelsStatement(), LevelRow::Last);
        EditEntry(newLevel);
    } catch (const RuntimeError& e) {
        reportError(e.text(), ic_text::cmdAddTail);
    }
}

void InitialConditionsEditor::Add_IC_Water_Nitrogen(int level, int newLevel)
{
    exec(QStringLiteral("INSERT INTO IC_Water_Nitrogen (LNIC, SLNO, Water, Nitrogen) "
                        "SELECT ?, SLNO, Water, Nitrogen FROM IC_Water_Nitrogen WHERE LNIC = ?"),
        { newLevel, level });
}

void InitialConditionsEditor::Delete_IC_Water_Nitrogen(int level)
{
    exec(QStringLiteral("DELETE FROM [IC_Water_Nitrogen] WHERE LNIC = ?"), { level });
}

void InitialConditionsEditor::CmdDelete_Click()
{
    try {
        const std::optional<int> level = currentLevel();
        if (!level) {
            invalidEntry();
            return;
        }
        const QString n = number(*level);
        const QStringList treatments = treatmentsUsing(QStringLiteral("LNIC"), *level);
        if (!treatments.isEmpty()) {
            ui().deletionWarning(ic_text::captionStem, treatments);
            return;
        }
        const bool layers
            = scalar(QStringLiteral("SELECT 1 FROM ICLayers WHERE LNIC = ?"), { *level }).isValid();
        const QString question = layers
            ? ic_text::layersOfLevel + QLatin1Char(' ') + n + QStringLiteral(".\n")
                + ic_text::stillDelete
            : ic_text::deleteLevel + QLatin1Char(' ') + n + QLatin1Char('?');
        if (msgBox(question, MsgButtons::YesNoDefaultNo, MsgIcon::Question) != MsgAnswer::Yes)
            return;
        {
            database::Transaction transaction;
            exec(QStringLiteral("DELETE FROM ICLayers WHERE LNIC = ?"), { *level });
            exec(QStringLiteral("DELETE FROM InitialConditions WHERE LNIC = ?"), { *level });
            Delete_IC_Water_Nitrogen(*level);
            transaction.commit();
        }
        if (database::rowCount(initialConditions) == 0) {
            // The factor ends without levels: the window closes, committing.
            m_screen.closeWindow();
            return;
        }
        m_screen.showLevels(levelsStatement(), LevelRow::Last);
        if (const std::optional<int> shown = currentLevel())
            EditEntry(*shown);
    } catch (const RuntimeError& e) {
        reportError(e.text(), ic_text::cmdDeleteTail);
    }
}

bool InitialConditionsEditor::DBGridIC_BeforeColUpdate(
    int column, const QVariant& oldValue, QVariant& value)
{
    try {
        if (column == 1) {
            value = value.toString().left(text::levelNameLength);
            return true;
        }
        const QString typed = value.toString().trimmed();
        if (!format::isNumeric(typed) || typed.toDouble() != qRound(typed.toDouble())) {
            invalidEntry();
            return false;
        }
        const int newLevel = qRound(typed.toDouble());
        value = newLevel;
        if (newLevel == oldValue.toInt())
            return true;
        if (scalar(QStringLiteral("SELECT 1 FROM InitialConditions WHERE LNIC = ?"), { newLevel })
                .isValid()) {
            msgBox(ic_text::levelExists);
            return false;
        }
        // The layers and the treatments follow through the relations.
        database::Transaction transaction;
        for (const char* table : { "InitialConditions", "IC_Water_Nitrogen" })
            exec(
                QStringLiteral("UPDATE [%1] SET LNIC = ? WHERE LNIC = ?").arg(QLatin1String(table)),
                { newLevel, oldValue.toInt() });
        transaction.commit();
        return true;
    } catch (const RuntimeError& e) {
        reportError(e.text(), ic_text::beforeColUpdateTail);
        return false;
    }
}

void InitialConditionsEditor::DBGridIC_RowColChange()
{
    const QString text = m_screen.levelCellText();
    const std::optional<int> level = levelOf(text);
    if (!level && !text.trimmed().isEmpty()) {
        invalidEntry();
        return;
    }
    if (level)
        EditEntry(*level);
}

bool InitialConditionsEditor::dbgICLayers_BeforeColUpdate(int column, QVariant& value)
{
    const QString typed = value.toString().trimmed();
    if (column != 0 || !format::isNumeric(typed))
        return true;
    try {
        if (scalar(QStringLiteral(
                       "SELECT 1 FROM ICLayers WHERE LNIC = ? AND DLAYRI = ? AND rowid <> ?"),
                { m_level, typed.toDouble(), m_screen.currentLayerRow() })
                .isValid()) {
            msgBox(ic_text::depthUnique);
            return false;
        }
    } catch (const RuntimeError& e) {
        reportError(e.text(), ic_text::addLayersTail);
        return false;
    }
    return true;
}

SqlGridModel::Hooks InitialConditionsEditor::levelGridHooks()
{
    return { [this](int column, const QVariant& oldValue, QVariant& value, bool) {
                return DBGridIC_BeforeColUpdate(column, oldValue, value);
            },
        [this](int column, const QVariant& value) {
            // The renumbered level's page answers to its new number.
            if (column == 0)
                EditEntry(value.toInt());
        },
        [](const RuntimeError&) { invalidEntry(); } };
}

SqlGridModel::Hooks InitialConditionsEditor::layerGridHooks()
{
    return { [this](int column, const QVariant&, QVariant& value, bool) {
                return dbgICLayers_BeforeColUpdate(column, value);
            },
        {}, [](const RuntimeError&) { invalidEntry(); } };
}

// --- Layers -----------------------------------------------------------------

// Stores what the user is typing in the layer grid; a value the table
// refuses is told and stops the routine.
bool InitialConditionsEditor::layerCommitted()
{
    if (m_screen.commitLayerEdit().number() == 0)
        return true;
    msgBox(ic_text::layersTableError, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
    return false;
}

void InitialConditionsEditor::cmdAddLayers()
{
    try {
        if (!layerCommitted())
            return;
        if (!currentLevel()) {
            invalidEntry();
            return;
        }
        const int count
            = scalar(QStringLiteral("SELECT COUNT(*) FROM ICLayers WHERE LNIC = ?"), { m_level })
                  .toInt();
        if (count >= maxLayers) {
            msgBox(ic_text::layerLimit + number(maxLayers) + QLatin1Char('.'));
            return;
        }
        if (m_screen.currentLayerRow() == 0)
            m_screen.goToLayer(0);
        const qint64 source = m_screen.currentLayerRow();
        if (count == 0 || source == 0) {
            database::insertRow(
                QStringLiteral("ICLayers"), { { QStringLiteral("LNIC"), m_level } });
        } else {
            // The copy stands next to its source, at the same depth, for the
            // user to change.
            exec(QStringLiteral(
                     "INSERT INTO ICLayers (LNIC, DLAYRI, SWINIT, INH4, INO3) "
                     "SELECT LNIC, DLAYRI, SWINIT, INH4, INO3 FROM ICLayers WHERE rowid = ?"),
                { source });
        }
        showLayers(m_level, scalar(QStringLiteral("SELECT last_insert_rowid()")).toLongLong());
    } catch (const RuntimeError& e) {
        reportError(e.text(), ic_text::addLayersTail);
    }
}

void InitialConditionsEditor::cmdDeleteLayers()
{
    try {
        const QString depth = m_screen.layerDepthText().trimmed();
        if (!format::isNumeric(depth)) {
            msgBox(ic_text::depthNotValid, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
            return;
        }
        // A level keeps its last layer.
        if (scalar(QStringLiteral("SELECT COUNT(*) FROM ICLayers WHERE LNIC = ?"), { m_level })
                .toInt()
            < 2)
            return;
        if (msgBox(ic_text::deleteLayer + QLatin1Char(' ') + depth + QLatin1Char('?'),
                MsgButtons::YesNoDefaultNo, MsgIcon::Question)
            != MsgAnswer::Yes)
            return;
        exec(
            QStringLiteral("DELETE FROM ICLayers WHERE rowid = ?"), { m_screen.currentLayerRow() });
        showLayers(m_level);
    } catch (const RuntimeError& e) {
        reportError(e.text(), ic_text::deleteLayersTail);
    }
}

// --- Closing ----------------------------------------------------------------

void InitialConditionsEditor::cmdSave()
{
    try {
        const QString date = m_screen.dateText().trimmed();
        const QDate day = format::toDate(date);
        if (!date.isEmpty() && (!day.isValid() || day.year() < 1921 || day.year() > 3000)) {
            msgBox(text::invalidDate, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
            return;
        }
        if (!layerCommitted())
            return;
        const QVariant crowded = scalar(QStringLiteral(
            "SELECT LNIC FROM ICLayers GROUP BY LNIC HAVING COUNT(*) > %1 ORDER BY LNIC LIMIT 1")
                                            .arg(maxLayers));
        if (crowded.isValid()) {
            msgBox(ic_text::tooManyLayers);
            return;
        }
        storeDate(date);
        dropBackups();
        state().FileSaved = false;
        m_closedByButton = true;
        m_screen.closeWindow();
    } catch (const RuntimeError& e) {
        reportError(e.text(), ic_text::saveTail);
    }
}

void InitialConditionsEditor::cmdCancel_Click()
{
    m_closedByButton = true;
    m_screen.closeWindow();
    try {
        restoreTables();
    } catch (const RuntimeError& e) {
        reportError(e.text(), ic_text::cancelTail);
    }
}

// Cancel's order: the relation off, the tables back from their backups, the
// treatments back to the levels they held at opening, the relation on, and
// the soils of the list back.
void InitialConditionsEditor::restoreTables()
{
    const QString relation = QStringLiteral("ICTreatment");
    database::Transaction transaction;
    if (database::relationExists(relation))
        database::deleteRelation(relation);
    exec(QStringLiteral("DELETE FROM [ICLayers]"));
    for (const char* table : { "InitialConditions", "IC_Water_Nitrogen" })
        exec(QStringLiteral("DELETE FROM [%1]").arg(QLatin1String(table)));
    for (const Backup& b : backups) {
        if (qstrcmp(b.table, "ICSoil") != 0)
            putBack(QLatin1String(b.table), QLatin1String(b.backup));
    }
    QSqlQuery rows = select(QStringLiteral("SELECT rowid FROM Treatments ORDER BY rowid"));
    std::vector<qint64> ids;
    while (rows.next())
        ids.push_back(rows.value(0).toLongLong());
    for (size_t i = 0; i < ids.size() && i < m_treatmentLevels.size(); ++i)
        exec(QStringLiteral("UPDATE Treatments SET LNIC = ? WHERE rowid = ?"),
            { m_treatmentLevels[i], ids[i] });
    database::createRelation({ relation, initialConditions, QStringLiteral("LNIC"),
        QStringLiteral("Treatments"), QStringLiteral("LNIC") });
    database::remakeTable(QStringLiteral("ICSoil"), icSoilDefinition);
    putBack(QStringLiteral("ICSoil"), QStringLiteral("BackUp2"));
    transaction.commit();
}

void InitialConditionsEditor::Form_Unload()
{
    unloadEditor(m_closedByButton, EditorForm::frmInitCond, [this] { cmdSave(); });
}

void InitialConditionsEditor::escapePressed()
{
    if (escapeConfirmed())
        cmdCancel_Click();
}

} // namespace quillon::editors
