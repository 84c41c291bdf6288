#include "editors/SoilAnalysisEditor.h"

#include "app/AppState.h"
#include "app/DocumentCommands.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "editors/EditorForms.h"
#include "editors/EditorSteps.h"
#include "editors/EditorTexts.h"
#include "editors/LevelOne.h"
#include "editors/LevelRows.h"
#include "editors/SoilAnalysisTexts.h"
#include "format/DateCodes.h"
#include "format/NumberText.h"
#include "reference/WeatherLookups.h"

namespace quillon::editors {

using database::exec;
using database::scalar;
using database::select;
namespace st = soil_analysis_text;

namespace {

const QString soilAnalysis = QStringLiteral("SoilAnalysis");
const QString soilLayers = QStringLiteral("SoilLayers");
const QString relationName = QStringLiteral("SATreatment");
const QString levelsStatement
    = QStringLiteral("SELECT LNSA, SANAME FROM SoilAnalysis ORDER BY LNSA");
const QString layerColumns
    = QStringLiteral("SABL, SADM, SAOC, SANI, SAPHW, SAPHB, SAPX, SAKE, SASC");
// What a copy of a layer takes besides its depth and density.
const QString copiedLayerColumns = QStringLiteral("SAOC, SANI, SAPHW, SAPHB, SAPX, SAKE, SASC");

// The years a date of the editor may have.
bool inDateRange(const QDate& date)
{
    return date.isValid() && date.year() >= 1921 && date.year() <= 3000;
}

} // namespace

const std::vector<MethodCombo>& soilMethodCombos()
{
    static const std::vector<MethodCombo> combos {
        { QStringLiteral("DBCmbSMHB"), QStringLiteral("SMHB"),
            QStringLiteral("Methods - Soil Analysis2") },
        { QStringLiteral("DBCmbSMPX"), QStringLiteral("SMPX"),
            QStringLiteral("Methods - Soil Analysis1") },
        { QStringLiteral("DBCmbSMKE"), QStringLiteral("SMKE"),
            QStringLiteral("Methods - Soil Analysis3") },
    };
    return combos;
}

bool mnuEditSoil_Click()
{
    AppState& s = state();
    Busy busy;
    try {
        closeOtherEditors();
        if (database::rowCount(soilAnalysis) > 0) {
            s.NewLevelCreated = false;
            return true;
        }
        const std::optional<QString> date = levelOneDate(st::enterFieldInformation);
        if (!date)
            return false;
        database::Transaction transaction;
        s.NewLevelCreated = true;
        database::insertRow(
            soilAnalysis, { { QStringLiteral("LNSA"), 1 }, { QStringLiteral("SADAT"), *date } });
        // One empty layer for the user to fill in.
        database::insertRow(soilLayers, { { QStringLiteral("LNSA"), 1 } });
        transaction.commit();
        return true;
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::tailOf(QStringLiteral("mnuEditSoil_Click")));
        return false;
    }
}

SoilAnalysisEditor::SoilAnalysisEditor(SoilAnalysisScreen& screen)
    : m_screen(screen)
    , m_treatmentLevels(QStringLiteral("LNSA"))
{
}

std::optional<int> SoilAnalysisEditor::currentLevel() const
{
    return levelOf(m_screen.levelCellText());
}

QString SoilAnalysisEditor::layersStatement(int level) const
{
    return QStringLiteral("SELECT %1 FROM SoilLayers WHERE LNSA = %2 ORDER BY SABL")
        .arg(layerColumns, QString::number(level));
}

void SoilAnalysisEditor::showLayers(int level)
{
    m_screen.showLayers(layersStatement(level), level);
}

void SoilAnalysisEditor::goToLevel(LevelRow row)
{
    m_screen.showLevels(levelsStatement, row);
    if (const std::optional<int> level = currentLevel())
        EditEntry(*level);
}

// --- Opening ----------------------------------------------------------------

void SoilAnalysisEditor::Form_Load()
{
    try {
        markOpen(EditorForm::frmSoilAnalysis);
        // The code table holds the methods of all three analyses under one
        // type; the combos each want their own, and the split stays.
        exec(QStringLiteral("UPDATE CodeLookup SET Type = 'Methods - Soil Analysis2' "
                            "WHERE Code = 'SA011' OR Code = 'SA012'"));
        exec(QStringLiteral("UPDATE CodeLookup SET Type = 'Methods - Soil Analysis1' "
                            "WHERE Code IN ('SA001', 'SA002', 'SA003', 'SA004', 'SA005', "
                            "'SA006', 'SA007', 'SA008', 'SA009', 'SA010')"));
        exec(QStringLiteral("UPDATE CodeLookup SET Type = 'Methods - Soil Analysis3' "
                            "WHERE Type = 'Methods - Soil Analysis'"));
        for (const MethodCombo& combo : soilMethodCombos()) {
            QStringList descriptions;
            QSqlQuery q = select(QStringLiteral("SELECT Description FROM CodeLookup WHERE Type = ? "
                                                "ORDER BY Description"),
                { combo.type });
            while (q.next())
                descriptions << q.value(0).toString();
            m_screen.setMethodChoices(combo.field, descriptions);
        }
        CreateBackUp();
        m_screen.setCaption(editorCaption(st::captionStem));
        reference::FindFieldDate();
        goToLevel(LevelRow::First);
        ColumnNames();
        ColumnNames_Layers();
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::tailOf(QStringLiteral("Form_Load")));
    }
}

void SoilAnalysisEditor::CreateBackUp()
{
    try {
        for (const char* backup : { "BackUp", "BackUp_Applications" })
            database::tryExec(QStringLiteral("DROP TABLE [%1]").arg(QLatin1String(backup)));
        exec(QStringLiteral("CREATE TABLE [BackUp] AS SELECT * FROM [SoilAnalysis]"));
        exec(QStringLiteral("CREATE TABLE [BackUp_Applications] AS SELECT * FROM [SoilLayers]"));
        m_treatmentLevels.capture();
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::createBackUpTail);
    }
}

void SoilAnalysisEditor::EditEntry(int level)
{
    try {
        m_level = level;
        QStringList years;
        QSqlQuery q = select(QStringLiteral("SELECT DISTINCT Year FROM FieldYears"));
        while (q.next())
            years << q.value(0).toString();
        m_screen.showYears(years);
        showLayers(level);
        EditIC_Date(level);
        for (const MethodCombo& combo : soilMethodCombos()) {
            const QVariant description = scalar(
                QStringLiteral("SELECT Description FROM CodeLookup WHERE Type = ? AND Code = "
                               "(SELECT [%1] FROM SoilAnalysis WHERE LNSA = ?) ORDER BY rowid")
                    .arg(combo.field),
                { combo.type, level });
            m_screen.showMethod(combo.field, description.toString());
        }
        m_screen.setLevelNumberText(text::level + QLatin1Char(' ') + QString::number(level));
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::tailOf(QStringLiteral("EditEntry")));
    }
}

void SoilAnalysisEditor::EditIC_Date(int level)
{
    try {
        QString code
            = scalar(QStringLiteral("SELECT SADAT FROM SoilAnalysis WHERE LNSA = ?"), { level })
                  .toString();
        m_screen.showDate(format::YYDDDToDate(code));
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::editIcDateTail);
    }
}

void SoilAnalysisEditor::EditSA_Date()
{
    try {
        QVariant date = format::toDate(m_screen.dateText().trimmed());
        const QVariant code
            = date.toDate().isValid() ? QVariant(format::DateToYYDDD(date)) : QVariant();
        const QVariant stored
            = scalar(QStringLiteral("SELECT SADAT FROM SoilAnalysis WHERE LNSA = ?"), { m_level });
        if (code.toString() != stored.toString())
            exec(QStringLiteral("UPDATE SoilAnalysis SET SADAT = ? WHERE LNSA = ?"),
                { code, m_level });
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::editSaDateTail);
    }
}

void SoilAnalysisEditor::ColumnNames()
{
    m_screen.setLevelCaptions({ text::level, text::description });
}

void SoilAnalysisEditor::ColumnNames_Layers()
{
    m_screen.setLayerCaptions(st::layerCaptions);
}

// --- The page ---------------------------------------------------------------

// txtDate's rule: empty, or a date of the years 1921 to 3000.
bool SoilAnalysisEditor::dateAccepted(QDate& date)
{
    const QString text = m_screen.dateText().trimmed();
    date = format::toDate(text);
    if (text.isEmpty() || inDateRange(date))
        return true;
    errorBox(text::invalidDate);
    return false;
}

bool SoilAnalysisEditor::txtDate_Validate()
{
    // The box loses the focus as the window closes: nothing to check then.
    if (m_closedByButton)
        return true;
    QDate date;
    if (!dateAccepted(date))
        return false;
    if (m_level != 0)
        EditSA_Date();
    return true;
}

void SoilAnalysisEditor::MethodCombo_Click(const QString& field, const QString& description)
{
    try {
        for (const MethodCombo& combo : soilMethodCombos()) {
            if (combo.field != field || m_level == 0)
                continue;
            const QVariant code = scalar(QStringLiteral("SELECT Code FROM CodeLookup WHERE Type = "
                                                        "? AND Description = ? ORDER BY rowid"),
                { combo.type, description });
            exec(QStringLiteral("UPDATE SoilAnalysis SET [%1] = ? WHERE LNSA = ?").arg(field),
                { code.isValid() ? code : QVariant(), m_level });
            m_screen.showMethod(field, description);
        }
    } catch (const RuntimeError& e) {
        reportError(
            e.text(), st::tailOf(QStringLiteral("DBCmb") + field + QStringLiteral("_Click")));
    }
}

// --- Levels -----------------------------------------------------------------

bool SoilAnalysisEditor::layersCommitted()
{
    if (m_screen.commitLayerEdit().number() == 0)
        return true;
    errorBox(st::layersTableError);
    return false;
}

void SoilAnalysisEditor::cmdAdd1_Click()
{
    try {
        if (!layersCommitted())
            return;
        const QString levelText = m_screen.levelCellText();
        // An empty grid stands for level 0: there is no level yet.
        const std::optional<int> current
            = levelText.trimmed().isEmpty() ? std::optional<int>(0) : levelOf(levelText);
        if (!current) {
            errorBox(text::invalidEntry);
            return;
        }
        const int newLevel = nextLevel(QStringLiteral("SoilAnalysis"), QStringLiteral("LNSA"));
        const QString level = QString::number(*current);
        database::Transaction transaction;
        if (*current < 1) {
            const QVariant planted
                = scalar(QStringLiteral("SELECT YRPLT FROM Planting ORDER BY rowid LIMIT 1"));
            if (planted.isNull() || format::leadingNumber(planted.toString()) <= 0) {
                msgBox(text::enterPlantingDate);
                return;
            }
            database::insertRow(soilAnalysis,
                { { QStringLiteral("LNSA"), newLevel },
                    { QStringLiteral("SADAT"), planted.toString().trimmed() } });
            database::insertRow(soilLayers, { { QStringLiteral("LNSA"), newLevel } });
        } else {
            exec(QStringLiteral("UPDATE SoilLayers SET LNSA = %1 WHERE LNSA = 0").arg(level));
            if (!scalar(QStringLiteral("SELECT 1 FROM SoilLayers WHERE LNSA = %1").arg(level))
                     .isValid()) {
                transaction.commit();
                msgBox(st::addSoilLayers);
                return;
            }
            exec(QStringLiteral("INSERT INTO SoilAnalysis (LNSA, SANAME, SADAT, SMHB, SMPX, SMKE) "
                                "SELECT %1, SANAME, SADAT, SMHB, SMPX, SMKE FROM SoilAnalysis "
                                "WHERE LNSA = %2")
                     .arg(QString::number(newLevel), level));
            // The copies come in without a level and then take the new one.
            exec(QStringLiteral("INSERT INTO SoilLayers (%1) SELECT %1 FROM SoilLayers WHERE LNSA "
                                "= %2 ORDER BY rowid")
                     .arg(layerColumns, level));
            exec(QStringLiteral("UPDATE SoilLayers SET LNSA = %1 WHERE LNSA IS NULL")
                     .arg(QString::number(newLevel)));
        }
        transaction.commit();
        goToLevel(LevelRow::Last);
        ColumnNames();
        ColumnNames_Layers();
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::cmdAdd1Tail);
    }
}

void SoilAnalysisEditor::cmdAdd2_Click()
{
    try {
        if (database::rowCount(soilLayers) == 0 && database::rowCount(soilAnalysis) == 0) {
            cmdAdd1_Click();
            return;
        }
        m_screen.commitLayerEdit();
        const std::optional<int> level = currentLevel();
        if (!level)
            return;
        if (m_screen.currentLayerRow() == 0)
            m_screen.goToLayer(0);
        const QVariant depth = m_screen.layerValue(0);
        const QVariant density = m_screen.layerValue(1);
        qint64 added = 0;
        if (m_screen.currentLayerRow() == 0) {
            // A level without layers gets its first one, empty.
            database::insertRow(soilLayers, { { QStringLiteral("LNSA"), *level } });
            added = scalar(QStringLiteral("SELECT last_insert_rowid()")).toLongLong();
        } else {
            // The source is found by its level, depth and density; an empty
            // depth or density is found as such. The copy takes the same two.
            QString where = QStringLiteral("LNSA = ?");
            QVariantList params { depth, density, *level };
            for (const auto& [field, value] : { std::pair { QStringLiteral("SABL"), depth },
                     std::pair { QStringLiteral("SADM"), density } }) {
                if (value.isNull()) {
                    where += QStringLiteral(" AND %1 IS NULL").arg(field);
                } else {
                    where += QStringLiteral(" AND %1 = ?").arg(field);
                    params << value;
                }
            }
            exec(QStringLiteral("INSERT INTO SoilLayers (LNSA, SABL, SADM, %1) SELECT LNSA, ?, ?, "
                                "%1 FROM SoilLayers WHERE %2 ORDER BY rowid LIMIT 1")
                     .arg(copiedLayerColumns, where),
                params);
            if (scalar(QStringLiteral("SELECT changes()")).toInt() > 0)
                added = scalar(QStringLiteral("SELECT last_insert_rowid()")).toLongLong();
        }
        showLayers(*level);
        m_screen.goToLayer(added);
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::tailOf(QStringLiteral("cmdAdd2_Click")));
    }
}

void SoilAnalysisEditor::cmdDelete1_Click()
{
    try {
        const std::optional<int> level = currentLevel();
        if (!level) {
            errorBox(text::invalidEntry);
            return;
        }
        const QString n = QString::number(*level);
        const QStringList treatments = treatmentsUsing(QStringLiteral("LNSA"), *level);
        if (!treatments.isEmpty()) {
            ui().deletionWarning(st::levelWord, treatments);
            return;
        }
        const bool only = database::rowCount(soilAnalysis) < 2;
        if (msgBox(text::deleteLevel + QLatin1Char(' ') + n + QLatin1Char('?'),
                MsgButtons::YesNoDefaultNo, MsgIcon::Question)
            != MsgAnswer::Yes)
            return;
        database::Transaction transaction;
        exec(QStringLiteral("DELETE FROM SoilLayers WHERE LNSA = %1").arg(n));
        exec(QStringLiteral("DELETE FROM SoilAnalysis WHERE LNSA = %1").arg(n));
        transaction.commit();
        if (only) {
            // The factor ends without levels: the window closes, committing.
            m_screen.closeWindow();
            return;
        }
        goToLevel(LevelRow::Last);
        ColumnNames();
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::tailOf(QStringLiteral("cmdDelete1_Click")));
    }
}

void SoilAnalysisEditor::cmdDelete2_Click()
{
    try {
        const QVariant depth = m_screen.layerValue(0);
        if (depth.isNull()) {
            // The form kept the frame's word for a layer it can't name.
            errorBox(text::invalidDate);
            return;
        }
        if (msgBox(st::deleteLayer + QLatin1Char(' ') + format::NumText(depth) + QLatin1Char('?'),
                MsgButtons::YesNoDefaultNo, MsgIcon::Question)
            == MsgAnswer::Yes) {
            exec(QStringLiteral("DELETE FROM SoilLayers WHERE rowid = ?"),
                { m_screen.currentLayerRow() });
            showLayers(m_level);
        }
        m_screen.goToLastLayer();
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::tailOf(QStringLiteral("cmdDelete2_Click")));
    }
}

bool SoilAnalysisEditor::DBGrid1_BeforeColUpdate(
    int column, const QVariant& oldValue, QVariant& value)
{
    if (column == 1) {
        value = value.toString().left(text::levelNameLength);
        return true;
    }
    const QString typed = value.toString();
    if (!format::isNumeric(typed)) {
        errorBox(text::invalidEntry);
        return false;
    }
    const int newLevel = qRound(typed.trimmed().toDouble());
    value = newLevel;
    try {
        // A number in use: the grid's own update fails on it and says so.
        if (newLevel != oldValue.toInt()
            && !scalar(QStringLiteral("SELECT 1 FROM SoilAnalysis WHERE LNSA = ?"), { newLevel })
                    .isValid())
            // The layers and the treatments follow through the relations.
            exec(QStringLiteral("UPDATE [SoilAnalysis] SET LNSA = ? WHERE LNSA = ?"),
                { newLevel, oldValue });
        return true;
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::tailOf(QStringLiteral("DBGrid1_BeforeColUpdate")));
        return false;
    }
}

SqlGridModel::Hooks SoilAnalysisEditor::levelGridHooks()
{
    return { [this](int column, const QVariant& oldValue, QVariant& value, bool) {
                return DBGrid1_BeforeColUpdate(column, oldValue, value);
            },
        [this](int column, const QVariant& value) {
            // The renumbered level's layers now answer to its new number.
            if (column == 0)
                EditEntry(value.toInt());
        },
        [](const RuntimeError&) { errorBox(text::invalidEntry); } };
}

SqlGridModel::Hooks SoilAnalysisEditor::layerGridHooks()
{
    return { {}, {}, [](const RuntimeError&) { errorBox(text::invalidEntry); } };
}

void SoilAnalysisEditor::DBGrid1_GotFocus()
{
    layersCommitted();
}

void SoilAnalysisEditor::DBGrid1_RowColChange()
{
    const QString text = m_screen.levelCellText();
    const std::optional<int> level = levelOf(text);
    if (level)
        EditEntry(*level);
    else if (!text.trimmed().isEmpty())
        errorBox(text::invalidEntry);
}

// --- Closing ----------------------------------------------------------------

void SoilAnalysisEditor::cmdOK_Click()
{
    try {
        QDate date;
        if (!dateAccepted(date))
            return;
        if (m_level != 0)
            EditSA_Date();
        if (!layersCommitted())
            return;
        state().FileSaved = false;
        m_closedByButton = true;
        m_screen.closeWindow();
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::cmdOkTail);
    }
}

void SoilAnalysisEditor::cmdCancel_Click()
{
    m_closedByButton = true;
    m_screen.closeWindow();
    try {
        database::Transaction transaction;
        dropRelation(relationName);
        exec(QStringLiteral("DELETE FROM [SoilLayers]"));
        exec(QStringLiteral("DELETE FROM [SoilAnalysis]"));
        exec(QStringLiteral("INSERT INTO [SoilAnalysis] SELECT * FROM [BackUp]"));
        exec(QStringLiteral("DROP TABLE [BackUp]"));
        exec(QStringLiteral("INSERT INTO [SoilLayers] SELECT * FROM [BackUp_Applications]"));
        exec(QStringLiteral("DROP TABLE [BackUp_Applications]"));
        // Level 1 of the menu handler goes too.
        if (state().NewLevelCreated) {
            exec(QStringLiteral("DELETE FROM [SoilLayers]"));
            exec(QStringLiteral("DELETE FROM [SoilAnalysis]"));
        }
        m_treatmentLevels.restore(relationName);
        transaction.commit();
    } catch (const RuntimeError& e) {
        reportError(e.text(), st::tailOf(QStringLiteral("cmdCancel_Click")));
    }
}

void SoilAnalysisEditor::Form_Unload()
{
    unloadEditor(m_closedByButton, EditorForm::frmSoilAnalysis, [this] { cmdOK_Click(); });
}

void SoilAnalysisEditor::escapePressed()
{
    if (escapeConfirmed())
        cmdCancel_Click();
}

} // namespace quillon::editors
