#include "editors/FieldEditor.h"

#include "app/AppState.h"
#include "app/DocumentCommands.h"
#include "app/UserInterface.h"
#include "database/Schema.h"
#include "database/Sql.h"
#include "editors/EditorForms.h"
#include "editors/EditorSteps.h"
#include "editors/EditorTexts.h"
#include "editors/FieldTexts.h"
#include "editors/LevelRows.h"
#include "format/NumberText.h"

#include <algorithm>

namespace quillon::editors {

using database::exec;
using database::scalar;
using database::select;
namespace ft = field_text;

namespace {

const QString fields = QStringLiteral("Fields");
const QString levelsStatement = QStringLiteral("SELECT * FROM Fields ORDER BY LNFLD");
const QString relationName = QStringLiteral("FieldTreatment");

// The controls of the page that the routines fill, by their names.
const QString txtFLDNAM = QStringLiteral("txtFLDNAM");
const QString txtWSTA = QStringLiteral("txtWSTA");
const QString comboWSTA = QStringLiteral("ComboWSTA");
const QString comboWSTA_ID = QStringLiteral("ComboWSTA_ID");
const QString dbComboMethod = QStringLiteral("DBComboMethod");
const QString comboSoil = QStringLiteral("ComboSoil");
const QString combo2 = QStringLiteral("Combo2");

// A station code no station has: the searches of an empty station find
// nothing.
const QString noStation = QStringLiteral("KKKKK");

// The first column of a query's rows.
QStringList firstColumn(const QString& sql, const QVariantList& params = {})
{
    QStringList values;
    QSqlQuery q = select(sql, params);
    while (q.next())
        values << q.value(0).toString();
    return values;
}

// A value of the row as its box shows it: numbers as the file writes them.
QString boxTextOf(const QVariant& value)
{
    if (value.isNull())
        return QString();
    if (value.userType() == QMetaType::QString)
        return value.toString();
    return format::NumText(value);
}

bool isTextField(const QString& field)
{
    for (const database::FieldDef& def : database::findTable(fields)->fields) {
        if (def.name.compare(field, Qt::CaseInsensitive) == 0)
            return def.type == database::FieldType::Text;
    }
    return true;
}

// A box's text as the row stores it: empty text is NULL, numbers of a
// number column are numbers.
QVariant storedValue(const QString& field, const QString& text)
{
    if (text.isEmpty())
        return {};
    if (isTextField(field))
        return text;
    return text.trimmed().toDouble();
}

// The soil description and file as ComboSoil lists them: "description(FILE.SOL)".
const QString soilEntry
    = QStringLiteral("IFNULL(Description, '') || '(' || IFNULL(SoilFile, '') || ')'");

// The columns a new level copies from the current one.
const QStringList copiedColumns { QStringLiteral("WSTA"), QStringLiteral("SLOPE"),
    QStringLiteral("FLOB"), QStringLiteral("DFDRN"), QStringLiteral("FLDD"),
    QStringLiteral("SFDRN"), QStringLiteral("FLST"), QStringLiteral("SLTX"), QStringLiteral("SLDP"),
    QStringLiteral("SLNO"), QStringLiteral("XCRD"), QStringLiteral("YCRD"), QStringLiteral("ELEV"),
    QStringLiteral("AREA"), QStringLiteral("SLEN"), QStringLiteral("FLWR"), QStringLiteral("SLAS"),
    QStringLiteral("FHDUR"), QStringLiteral("FLHST"), QStringLiteral("FLNAME") };

} // namespace

const std::vector<FieldBox>& fieldBoxes()
{
    const auto box = [](const char* control, const char* field, std::optional<RangeRule> range) {
        return FieldBox { QLatin1String(control), QLatin1String(field), range };
    };
    const auto upTo = [](double high) { return RangeRule { 0, high }; };
    static const std::vector<FieldBox> boxes {
        box("txtFLDNAM", "FLDNAM", std::nullopt),
        box("txtFLNAME", "FLNAME", std::nullopt),
        box("txtWSTA", "WSTA", std::nullopt),
        box("txtSLOPE", "SLOPE", upTo(99999)),
        box("txtFLOB", "FLOB", upTo(99999)),
        box("txtFLDD", "FLDD", upTo(99999)),
        box("txtSFDRN", "SFDRN", upTo(99999)),
        box("TxtFLST", "FLST", upTo(9999)),
        box("TxtSLDP", "SLDP", upTo(9999)),
        box("txtSLEN", "SLEN", upTo(9999)),
        box("txtFLWR", "FLWR", upTo(9999)),
        box("txtSLAS", "SLAS", upTo(9999)),
        box("txtFHDUR", "FHDUR", upTo(200)),
        box("txtAREA", "AREA", upTo(99999999999999.0)),
        box("txtELEV", "ELEV", RangeRule { -std::numeric_limits<double>::infinity(), 9999999 }),
        // The X bound is the latitude's and the Y bound the longitude's, the
        // other way round from the labels; the file's rules expect it so.
        box("txtXCRD", "XCRD", RangeRule { -90, 90 }),
        box("txtYCRD", "YCRD", RangeRule { -180, 180 }),
    };
    return boxes;
}

const std::vector<CodeCombo>& fieldCodeCombos()
{
    static const std::vector<CodeCombo> combos {
        { QStringLiteral("DBComboSLTX"), QStringLiteral("SLTX"), QStringLiteral("Soil Texture") },
        { QStringLiteral("DBComboDFDRN"), QStringLiteral("DFDRN"), QStringLiteral("Drainage") },
        { QStringLiteral("DBComboFLHST"), QStringLiteral("FLHST"),
            QStringLiteral("Field History") },
    };
    return combos;
}

QString newFieldId(const QString& lastId, int newLevel)
{
    const QString lastFour = lastId.right(4);
    if (format::isNumeric(lastFour)) {
        const double next = lastFour.trimmed().toDouble() + 1;
        const QString head = lastId.left(std::max<qsizetype>(0, lastId.size() - 4));
        const QString digits = format::decimalText(next);
        if (next < 10)
            return head + QStringLiteral("000") + digits;
        if (next < 100)
            return head + QStringLiteral("00") + digits;
        if (next < 1000)
            return head + QStringLiteral("0") + digits;
    }
    const QString padding = newLevel < 10 ? QStringLiteral("XXXXXXX")
        : newLevel < 100                  ? QStringLiteral("XXXXXX")
        : newLevel < 1000                 ? QStringLiteral("XXXXX")
                                          : QStringLiteral("XXXX");
    return padding + QString::number(newLevel);
}

bool mnuEditField_Click()
{
    // The mark comes first, and stays as the other editors close.
    markOpen(EditorForm::frmFields);
    closeOtherEditors();
    return true;
}

FieldEditor::FieldEditor(FieldScreen& screen)
    : m_screen(screen)
    , m_treatmentLevels(QStringLiteral("LNFLD"))
{
}

std::optional<int> FieldEditor::currentLevel() const
{
    return levelOf(m_screen.levelCellText());
}

QVariant FieldEditor::rowValue(const QString& field) const
{
    if (m_rowId == 0)
        return {};
    return scalar(
        QStringLiteral("SELECT [%1] FROM Fields WHERE rowid = ?").arg(field), { m_rowId });
}

void FieldEditor::store(const QString& field, const QVariant& value)
{
    if (m_rowId == 0)
        return;
    exec(QStringLiteral("UPDATE Fields SET [%1] = ? WHERE rowid = ?").arg(field),
        { value, m_rowId });
    // The grid shows the page's columns too.
    m_screen.showLevels(levelsStatement, LevelRow::Same);
}

void FieldEditor::goToLevel(LevelRow row)
{
    m_screen.showLevels(levelsStatement, row);
    if (const std::optional<int> level = currentLevel())
        EditEntry(*level);
    else
        clearPage();
}

// --- Opening ----------------------------------------------------------------

void FieldEditor::Form_Load()
{
    try {
        markOpen(EditorForm::frmFields);
        CreateBackUp();
        m_screen.setCaption(editorCaption(ft::captionStem));
        for (const CodeCombo& combo : fieldCodeCombos())
            m_screen.setComboItems(combo.control,
                firstColumn(QStringLiteral("SELECT Description FROM CodeLookup WHERE Type = ? "
                                           "ORDER BY Description"),
                    { combo.type }));
        m_screen.setComboItems(dbComboMethod,
            firstColumn(
                QStringLiteral("SELECT Description FROM SimLookUp WHERE Type = 4 ORDER BY rowid")));
        goToLevel(LevelRow::First);
        ColumnNames();
    } catch (const RuntimeError& e) {
        reportError(e.text(), ft::formLoadTail);
    }
}

void FieldEditor::CreateBackUp()
{
    try {
        database::tryExec(QStringLiteral("DROP TABLE [BackUp]"));
        database::tryExec(QStringLiteral("DROP TABLE [BackUp3]"));
        exec(QStringLiteral("CREATE TABLE [BackUp] AS SELECT * FROM [Fields]"));
        m_treatmentLevels.capture();
        exec(QStringLiteral("CREATE TABLE [BackUp3] (SLNO TEXT COLLATE NOCASE)"));
        exec(QStringLiteral("INSERT INTO [BackUp3] SELECT * FROM [ICSoil]"));
    } catch (const RuntimeError& e) {
        reportError(e.text(), ft::createBackUpTail);
    }
}

void FieldEditor::EditEntry(int level)
{
    try {
        const QVariant id
            = scalar(QStringLiteral("SELECT rowid FROM Fields WHERE LNFLD = ?"), { level });
        if (!id.isValid()) {
            clearPage();
            return;
        }
        m_rowId = id.toLongLong();
        // The weather source shows the observed data, which is what the
        // station searches use.
        m_screen.showComboText(dbComboMethod,
            scalar(QStringLiteral("SELECT Description FROM SimLookUp WHERE Type = 4 "
                                  "ORDER BY Code = 'M' DESC, rowid LIMIT 1"))
                .toString());
        m_screen.setLevelNumberText(text::level + QLatin1Char(' ') + QString::number(level));
        for (const FieldBox& box : fieldBoxes())
            m_screen.showBoxText(box.control, boxTextOf(rowValue(box.field)));
        for (const CodeCombo& combo : fieldCodeCombos()) {
            const QVariant code = rowValue(combo.field);
            m_screen.showComboText(combo.control,
                code.isNull() ? QString()
                              : scalar(QStringLiteral("SELECT Description FROM CodeLookup WHERE "
                                                      "Type = ? AND Code = ? ORDER BY rowid"),
                                  { combo.type, code })
                                    .toString());
        }
        FillSLNOCombo(rowValue(QStringLiteral("SLNO")).toString());
        DisplayMethods();
        showStation(rowValue(QStringLiteral("WSTA")).toString());
    } catch (const RuntimeError& e) {
        reportError(e.text(), ft::editEntryTail);
    }
}

void FieldEditor::clearPage()
{
    m_rowId = 0;
    m_screen.setLevelNumberText(QString());
    for (const FieldBox& box : fieldBoxes())
        m_screen.showBoxText(box.control, QString());
    for (const CodeCombo& combo : fieldCodeCombos())
        m_screen.showComboText(combo.control, QString());
    for (const QString& combo : { comboWSTA, comboSoil, combo2 })
        m_screen.showComboText(combo, QString());
    m_screen.setComboItems(comboWSTA_ID, {});
    m_screen.setComboVisible(comboWSTA_ID, false);
}

void FieldEditor::ColumnNames()
{
    m_screen.setLevelCaptions(ft::gridCaptions);
}

// --- Weather ----------------------------------------------------------------

void FieldEditor::DisplayMethods()
{
    // Whatever the source combo shows, the stations are the observed ones.
    m_weatherColumn = QStringLiteral("Observed");
}

// The station description of a station, and its IDs: the first station
// whose code ends in the station's first four letters gives the
// description.
void FieldEditor::showStation(const QString& station)
{
    const QString prefix = station.isEmpty() ? noStation : station.left(4);
    int ids = 0;
    if (station.isEmpty()) {
        m_screen.setComboItems(comboWSTA_ID, {});
    } else {
        ids = SetWeatherData(m_weatherColumn, prefix);
        m_screen.showComboText(comboWSTA_ID, station);
    }
    m_screen.setComboVisible(comboWSTA_ID, ids > 1);
    const QVariant description = scalar(
        QStringLiteral("SELECT Description FROM TotalWeatherLookup WHERE [%1] = 'X' AND "
                       "substr(Code, -length(?)) = ? COLLATE NOCASE ORDER BY rowid LIMIT 1")
            .arg(m_weatherColumn),
        { prefix, prefix });
    listStations(description);
}

void FieldEditor::listStations(const QVariant& shown)
{
    m_screen.setComboItems(comboWSTA,
        firstColumn(QStringLiteral("SELECT DISTINCT Description FROM TotalWeatherLookup "
                                   "WHERE [%1] = 'X' AND Description IS NOT NULL "
                                   "ORDER BY Description")
                        .arg(m_weatherColumn)));
    m_screen.showComboText(comboWSTA, shown.toString());
}

int FieldEditor::SetWeatherData(const QString& column, const QString& prefix)
{
    try {
        const QStringList codes = firstColumn(
            QStringLiteral("SELECT DISTINCT Code FROM TotalWeatherLookup WHERE [%1] = 'X' AND "
                           "substr(Code, 1, length(?)) = ? COLLATE NOCASE ORDER BY Code")
                .arg(column),
            { prefix, prefix });
        m_screen.setComboItems(comboWSTA_ID, codes);
        return int(codes.size());
    } catch (const RuntimeError& e) {
        reportError(e.text(), ft::setWeatherDataTail);
        return 0;
    }
}

void FieldEditor::SetupComboWeatherDescript(const QString& code)
{
    try {
        listStations(scalar(QStringLiteral("SELECT Description FROM TotalWeatherLookup WHERE "
                                           "[%1] = 'X' AND Code = ? ORDER BY rowid LIMIT 1")
                                .arg(m_weatherColumn),
            { code }));
    } catch (const RuntimeError& e) {
        reportError(e.text(), ft::setupComboWeatherDescriptTail);
    }
}

void FieldEditor::DBComboMethod_Click(const QString& text)
{
    try {
        m_screen.showComboText(dbComboMethod, text);
        m_screen.setComboItems(comboWSTA, {});
        m_screen.setComboItems(comboWSTA_ID, {});
        DisplayMethods();
        showStation(rowValue(QStringLiteral("WSTA")).toString());
    } catch (const RuntimeError& e) {
        reportError(e.text(), ft::dbComboMethodTail);
    }
}

void FieldEditor::ComboWSTA_Click(const QString& description)
{
    try {
        const QStringList codes = firstColumn(
            QStringLiteral("SELECT Code FROM TotalWeatherLookup WHERE Description = ? AND "
                           "[%1] = 'X' ORDER BY Code")
                .arg(m_weatherColumn),
            { description });
        const QString code = codes.value(0);
        m_screen.showBoxText(txtWSTA, code);
        store(QStringLiteral("WSTA"), storedValue(QStringLiteral("WSTA"), code));
        // One description can stand for several station IDs.
        if (codes.size() < 2) {
            m_screen.setComboVisible(comboWSTA_ID, false);
            return;
        }
        SetWeatherData(m_weatherColumn, code.left(4));
        m_screen.showComboText(comboWSTA_ID, code);
        m_screen.setComboVisible(comboWSTA_ID, true);
    } catch (const RuntimeError& e) {
        reportError(e.text(), ft::comboWstaTail);
    }
}

void FieldEditor::ComboWSTA_ID_Change(const QString& code)
{
    try {
        SetWeatherData(m_weatherColumn, code.left(4));
        m_screen.showComboText(comboWSTA_ID, code);
        m_screen.showBoxText(txtWSTA, code);
        store(QStringLiteral("WSTA"), storedValue(QStringLiteral("WSTA"), code));
        SetupComboWeatherDescript(code);
    } catch (const RuntimeError& e) {
        reportError(e.text(), ft::tailOf(QStringLiteral("ComboWSTA_ID_Change")));
    }
}

// --- Soils ------------------------------------------------------------------

void FieldEditor::FillSLNOCombo(const QString& soilId)
{
    try {
        if (m_soilEntries.isEmpty()) {
            m_soilEntries = firstColumn(QStringLiteral("SELECT DISTINCT %1 AS Description FROM "
                                                       "SoilLookup ORDER BY 1 COLLATE NOCASE")
                                            .arg(soilEntry));
            m_screen.setComboItems(comboSoil, m_soilEntries);
        }
        const QString entry = soilId.isEmpty()
            ? QString()
            : scalar(QStringLiteral("SELECT %1 FROM SoilLookup WHERE Code = ?").arg(soilEntry),
                { soilId })
                  .toString();
        m_screen.showComboText(comboSoil, entry);
        listSoilIds(entry.left(entry.lastIndexOf(QLatin1Char('('))), soilId);
    } catch (const RuntimeError& e) {
        reportError(e.text(), ft::fillSlnoComboTail);
    }
}

// Combo2: the IDs of the soils of a description, showing the current row's
// soil. A soil the lookup doesn't know stays in the list so that it shows.
void FieldEditor::listSoilIds(const QString& description, const QString& current)
{
    QStringList ids = firstColumn(
        QStringLiteral(
            "SELECT IFNULL(Code, '') FROM SoilLookup WHERE Description = ? ORDER BY rowid"),
        { description });
    const bool known = ids.contains(current, Qt::CaseInsensitive);
    if (!known && !current.isEmpty() && description.isEmpty())
        ids.prepend(current);
    m_screen.setComboItems(combo2, ids);
    m_screen.showComboText(
        combo2, ids.contains(current, Qt::CaseInsensitive) ? current : QString());
}

void FieldEditor::ComboSoil_Click(const QString& entry)
{
    FillSoilIst(entry);
}

void FieldEditor::FillSoilIst(const QString& entry)
{
    try {
        m_screen.showComboText(comboSoil, entry);
        const qsizetype bracket = entry.lastIndexOf(QLatin1Char('('));
        listSoilIds(
            bracket < 0 ? entry : entry.left(bracket), rowValue(QStringLiteral("SLNO")).toString());
    } catch (const RuntimeError& e) {
        reportError(e.text(), ft::fillSoilIstTail);
    }
}

void FieldEditor::Combo2_Click(const QString& soilId)
{
    try {
        m_screen.showComboText(combo2, soilId);
        store(QStringLiteral("SLNO"), storedValue(QStringLiteral("SLNO"), soilId));
    } catch (const RuntimeError& e) {
        reportError(e.text(), ft::tailOf(QStringLiteral("Combo2_Click")));
    }
}

void FieldEditor::CodeCombo_Click(const QString& control, const QString& description)
{
    try {
        for (const CodeCombo& combo : fieldCodeCombos()) {
            if (combo.control != control)
                continue;
            const QVariant code = scalar(QStringLiteral("SELECT Code FROM CodeLookup WHERE Type = "
                                                        "? AND Description = ? ORDER BY rowid"),
                { combo.type, description });
            m_screen.showComboText(control, description);
            store(combo.field, code.isValid() ? code : QVariant());
        }
    } catch (const RuntimeError& e) {
        reportError(e.text(), ft::tailOf(control + QStringLiteral("_Click")));
    }
}

// --- The page's boxes -------------------------------------------------------

bool FieldEditor::Validate(const QString& control)
{
    const auto box = std::find_if(fieldBoxes().begin(), fieldBoxes().end(),
        [&](const FieldBox& b) { return b.control == control; });
    // A box that loses the focus as the window closes has nothing to store.
    if (box == fieldBoxes().end() || m_rowId == 0 || m_closedByButton)
        return true;
    QString text = m_screen.boxText(control);
    if (box->range) {
        const std::optional<QString> kept = acceptRange(text, *box->range);
        if (!kept) {
            invalidEntry();
            return false;
        }
        text = *kept;
    } else if (control == txtFLDNAM && text.size() != 8) {
        errorBox(ft::fieldIdLength);
        return false;
    }
    m_screen.showBoxText(control, text);
    try {
        if (text != boxTextOf(rowValue(box->field)))
            store(box->field, storedValue(box->field, text));
        // A station typed by hand shows its description and IDs as a chosen
        // one does.
        if (control == txtWSTA)
            showStation(text.trimmed());
        return true;
    } catch (const RuntimeError& e) {
        if (e.number() == err::DuplicateKey && control == txtFLDNAM) {
            errorBox(ft::fieldIdNotUnique);
            return false;
        }
        reportError(e.text(), ft::tailOf(control + QStringLiteral("_Validate")));
        return false;
    }
}

// --- Levels -----------------------------------------------------------------

std::optional<int> FieldEditor::levelWithFieldId()
{
    const std::optional<int> level = currentLevel();
    if (!level) {
        errorBox(text::invalidEntry);
        return std::nullopt;
    }
    if (m_screen.boxText(txtFLDNAM).trimmed().isEmpty()) {
        msgBox(ft::enterFieldId);
        return std::nullopt;
    }
    return level;
}

void FieldEditor::CmdAddField()
{
    try {
        if (database::rowCount(fields) == 0) {
            // No level to copy: the first one starts empty.
            database::insertRow(fields, { { QStringLiteral("LNFLD"), 1 } });
            goToLevel(LevelRow::Last);
            return;
        }
        const std::optional<int> level = levelWithFieldId();
        if (!level)
            return;
        const QString lastId
            = scalar(QStringLiteral("SELECT FLDNAM FROM Fields ORDER BY rowid DESC LIMIT 1"))
                  .toString();
        QSqlQuery current = select(QStringLiteral("SELECT [%1] FROM Fields WHERE LNFLD = ?")
                                       .arg(copiedColumns.join(QStringLiteral("], ["))),
            { *level });
        const int newLevel = nextLevel(QStringLiteral("Fields"), QStringLiteral("LNFLD"));
        database::Values row { { QStringLiteral("LNFLD"), newLevel },
            { QStringLiteral("FLDNAM"), newFieldId(lastId, newLevel) } };
        if (current.next()) {
            for (int i = 0; i < copiedColumns.size(); ++i)
                row.push_back({ copiedColumns.at(i), current.value(i) });
        }
        current.finish();
        database::insertRow(fields, row);
        goToLevel(LevelRow::Last);
        ColumnNames();
    } catch (const RuntimeError& e) {
        reportError(e.text(), ft::cmdAddFieldTail);
    }
}

void FieldEditor::CmdRemoveField()
{
    try {
        const std::optional<int> level = levelWithFieldId();
        if (!level)
            return;
        const QString n = QString::number(*level);
        const QStringList treatments = treatmentsUsing(QStringLiteral("LNFLD"), *level);
        if (!treatments.isEmpty()) {
            ui().deletionWarning(ft::levelWord, treatments);
            return;
        }
        if (msgBox(text::deleteLevel + QLatin1Char(' ') + n + QLatin1Char('?'),
                MsgButtons::YesNoDefaultNo, MsgIcon::Question)
            != MsgAnswer::Yes)
            return;
        database::Transaction transaction;
        const QString soil
            = scalar(QStringLiteral("SELECT IFNULL(SLNO, '') FROM Fields WHERE LNFLD = %1").arg(n))
                  .toString();
        // A soil no other field uses leaves the experiment's soils.
        if (!soil.isEmpty()
            && scalar(QStringLiteral("SELECT COUNT(*) FROM Fields WHERE SLNO = ?"), { soil })
                    .toInt()
                == 1) {
            const QString shown = QStringLiteral("(") + soil + QLatin1Char(')');
            exec(QStringLiteral(
                     "DELETE FROM ICSoil WHERE substr(SLNO, -length(?)) = ? COLLATE NOCASE"),
                { shown, shown });
        }
        exec(QStringLiteral("DELETE FROM Fields WHERE LNFLD = %1").arg(n));
        transaction.commit();
        goToLevel(LevelRow::Same);
    } catch (const RuntimeError& e) {
        reportError(e.text(), ft::cmdRemoveFieldTail);
    }
}

bool FieldEditor::DBGrid1_BeforeColUpdate(int column, QVariant& value)
{
    if (column == 1) {
        value = value.toString().left(text::levelNameLength);
        return true;
    }
    if (column == 0 && !format::isNumeric(value.toString())) {
        errorBox(text::invalidEntry);
        return false;
    }
    return column == 0;
}

void FieldEditor::DBGrid1_AfterColUpdate()
{
    // The page shows the new number or ID.
    if (const std::optional<int> level = currentLevel())
        EditEntry(*level);
}

void FieldEditor::DBGrid1_Error(const RuntimeError& error)
{
    if (error.number() == err::DuplicateKey) {
        errorBox(ft::levelOrIdRepeated);
        m_screen.focusControl(txtFLDNAM);
        return;
    }
    errorBox(text::invalidEntry);
}

SqlGridModel::Hooks FieldEditor::levelGridHooks()
{
    return { [this](int column, const QVariant&, QVariant& value, bool) {
                return DBGrid1_BeforeColUpdate(column, value);
            },
        [this](int, const QVariant&) { DBGrid1_AfterColUpdate(); },
        [this](const RuntimeError& error) { DBGrid1_Error(error); } };
}

void FieldEditor::DBGrid1_RowColChange()
{
    const QString text = m_screen.levelCellText();
    const std::optional<int> level = levelOf(text);
    if (!level) {
        if (!text.trimmed().isEmpty())
            errorBox(text::invalidEntry);
        return;
    }
    EditEntry(*level);
}

// --- Closing ----------------------------------------------------------------

// The three boxes a field can't do without; a message for the first that is
// empty.
bool FieldEditor::pageComplete()
{
    if (m_screen.boxText(txtFLDNAM).trimmed().isEmpty()) {
        msgBox(ft::enterFieldId);
        return false;
    }
    if (m_screen.boxText(txtWSTA).trimmed().isEmpty()) {
        msgBox(ft::selectStation);
        return false;
    }
    if (m_screen.comboText(combo2).trimmed().isEmpty()) {
        msgBox(ft::selectSoilProfile);
        return false;
    }
    return true;
}

void FieldEditor::cmdOK_Click()
{
    try {
        if (m_screen.commitLevelEdit().number() != 0 || !pageComplete())
            return;
        // BackUp2 is no table of this editor: dropping it fails harmlessly,
        // and BackUp3 stays until the next opening drops it.
        database::tryExec(QStringLiteral("DROP TABLE [BackUp]"));
        database::tryExec(QStringLiteral("DROP TABLE [BackUp2]"));
        state().FileSaved = false;
        m_closedByButton = true;
        m_screen.closeWindow();
    } catch (const RuntimeError& e) {
        reportError(e.text(), ft::tailOf(QStringLiteral("cmdOK_Click")));
    }
}

void FieldEditor::cmdNext()
{
    if (!pageComplete())
        return;
    cmdOK_Click();
    if (m_closedByButton)
        documentHost().reopenEditor(QStringLiteral("frmPlantingEd"));
}

void FieldEditor::Command1_Click()
{
    m_closedByButton = true;
    m_screen.closeWindow();
    try {
        database::Transaction transaction;
        dropRelation(relationName);
        exec(QStringLiteral("DELETE FROM [Fields]"));
        exec(QStringLiteral("INSERT INTO [Fields] SELECT * FROM [BackUp]"));
        exec(QStringLiteral("DROP TABLE [BackUp]"));
        // Renumbered levels reached the treatments through the relation.
        m_treatmentLevels.restore(relationName);
        exec(QStringLiteral("DELETE FROM [ICSoil]"));
        exec(QStringLiteral("INSERT INTO [ICSoil] SELECT * FROM [BackUp3]"));
        exec(QStringLiteral("DROP TABLE [BackUp3]"));
        transaction.commit();
    } catch (const RuntimeError& e) {
        reportError(e.text(), ft::command1Tail);
    }
}

void FieldEditor::Form_Unload()
{
    unloadEditor(m_closedByButton, EditorForm::frmFields, [this] { cmdOK_Click(); });
}

void FieldEditor::escapePressed()
{
    if (escapeConfirmed())
        Command1_Click();
}

} // namespace quillon::editors
