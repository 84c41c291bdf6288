#include "editors/CultivarEditor.h"

#include "app/AppState.h"
#include "app/DocumentCommands.h"
#include "app/ExpIdentity.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "editors/CultivarTexts.h"
#include "editors/EditorForms.h"
#include "editors/EditorSteps.h"
#include "editors/EditorTexts.h"
#include "editors/LevelRows.h"
#include "editors/MainWindowCrop.h"
#include "format/NumberText.h"

namespace quillon::editors {

using database::exec;
using database::scalar;
using database::select;
namespace ct = cultivar_text;

namespace {

const QString cultivars = QStringLiteral("Cultivars");
const QString levelField = QStringLiteral("LNCU");

// The level grid: a level whose crop code is unknown still shows, with an
// empty crop.
const QString levelsStatement = QStringLiteral(
    "SELECT Cultivars.LNCU, CropLookup.Name, Cultivars.CNAME FROM Cultivars "
    "LEFT OUTER JOIN CropLookup ON Cultivars.CODE = CropLookup.CODE ORDER BY LNCU");

// The crops of ListCrop: those the code table lists as crops.
const QString cropsStatement = QStringLiteral(
    "SELECT CropLookup.NAME, CropLookup.CODE FROM CropLookup INNER JOIN CodeLookup "
    "ON CropLookup.Code = CodeLookup.Code WHERE CodeLookup.Type = 'Crop and Weed Species' "
    "ORDER BY CropLookup.NAME");

RuntimeError noCurrentRecord()
{
    return RuntimeError(err::NoCurrentRecord, QStringLiteral("No current record."));
}

} // namespace

// --- Opening ----------------------------------------------------------------

bool mnuEditCultivar_Click()
{
    AppState& s = state();
    Busy busy;
    try {
        closeOtherEditors();

        s.NewLevelCreated = database::rowCount(cultivars) == 0;
        if (!s.NewLevelCreated)
            return true;
        // Level 1 grows the crop of the experiment; the other kinds of file
        // have none.
        QString crop;
        if (s.IsExperimental) {
            crop = mainWindowCrop();
            if (crop.isEmpty()) {
                s.NewLevelCreated = false;
                msgBox(identity_text::selectCrop, MsgButtons::OK, MsgIcon::Exclamation);
                return false;
            }
        }
        database::insertRow(cultivars,
            { { levelField, 1 }, { QStringLiteral("CODE"), crop.isEmpty() ? QVariant() : crop } });
        return true;
    } catch (const RuntimeError& e) {
        reportError(e.text(), ct::menuTail);
        return false;
    }
}

CultivarEditor::CultivarEditor(CultivarScreen& screen)
    : m_screen(screen)
    , m_backup(cultivars, levelField, QStringLiteral("CuTreatment"))
{
    m_grid.setHooks({ [this](int column, const QVariant& oldValue, QVariant& value, bool) {
                         return DBGrid1_BeforeColUpdate(column, oldValue, value);
                     },
        {}, [this](const RuntimeError& error) { DBGrid1_Error(error); } });
}

void CultivarEditor::Form_Load()
{
    markOpen(EditorForm::frmCult1);
    m_screen.setCaption(editorCaption(ct::captionStem));
    try {
        m_grid.setQuery(levelsStatement, cultivars);
        // Only the level number is typed: crops and cultivars come from the
        // lists.
        m_grid.setEditableColumns({ true, false, false });
        CreateBackUp();
        m_cropNames.clear();
        m_cropCodes.clear();
        QSqlQuery crops = select(cropsStatement);
        while (crops.next()) {
            m_cropNames << crops.value(0).toString();
            m_cropCodes << crops.value(1).toString();
        }
        m_screen.setCrops(m_cropNames);
        ColumnNames();
        m_screen.goToRow(m_grid.rowCount() > 0 ? 0 : -1);
        showListsAndPicture(m_screen.currentRow());
    } catch (const RuntimeError& e) {
        reportError(e.text(), ct::formLoadTail);
    }
}

void CultivarEditor::CreateBackUp()
{
    try {
        m_backup.create();
    } catch (const RuntimeError& e) {
        reportError(e.text(), ct::createBackUpTail);
    }
}

void CultivarEditor::ColumnNames()
{
    m_grid.setCaptions({ text::level, ct::crop, ct::cultivar });
}

std::optional<int> CultivarEditor::currentLevel() const
{
    return levelOf(m_grid.text(m_screen.currentRow(), 0));
}

// --- The lists --------------------------------------------------------------

void CultivarEditor::FillListBox(int level)
{
    try {
        QSqlQuery row
            = select(QStringLiteral(
                         "SELECT CODE, VARNO FROM Cultivars WHERE LNCU = ? ORDER BY rowid LIMIT 1"),
                { level });
        if (!row.next())
            throw noCurrentRecord();
        m_listedCrop = row.value(0).toString();
        const QString number = row.value(1).toString();
        row.finish();

        int crop = -1;
        for (int i = 0; i < m_cropCodes.size() && crop < 0; ++i) {
            if (m_cropCodes.at(i).compare(m_listedCrop, Qt::CaseInsensitive) == 0)
                crop = i;
        }
        m_screen.selectCrop(crop);

        QStringList descriptions;
        int selected = -1;
        QSqlQuery cultivarsOfCrop = select(QStringLiteral("SELECT Description, CROP FROM "
                                                          "CropCodesLookup WHERE Code = ? ORDER "
                                                          "BY Description, rowid"),
            { m_listedCrop });
        while (cultivarsOfCrop.next()) {
            if (!number.isEmpty()
                && cultivarsOfCrop.value(1).toString().compare(number, Qt::CaseInsensitive) == 0)
                selected = int(descriptions.size());
            descriptions << cultivarsOfCrop.value(0).toString();
        }
        m_screen.setCultivars(descriptions, selected);
    } catch (const RuntimeError& e) {
        reportError(e.text(), ct::fillListBoxTail);
    }
}

// The lists of the row's level, and the picture of its crop: the crop's code
// followed by "2.jpg" in the program's folder, or the default picture.
void CultivarEditor::showListsAndPicture(int row)
{
    const std::optional<int> level = levelOf(m_grid.text(row, 0));
    if (!level) {
        m_listedCrop.clear();
        m_screen.selectCrop(-1);
        m_screen.setCultivars({}, -1);
        return;
    }
    FillListBox(*level);
    const QString code = scalar(
        QStringLiteral("SELECT CODE FROM CropLookup WHERE Name = ? ORDER BY rowid LIMIT 1"),
        { m_grid.text(row, 1).toUpper() })
                             .toString();
    const QString folder = state().AppFolder;
    const QString picture = folder + code + ct::pictureSuffix;
    m_screen.showPicture(QFileInfo::exists(picture) ? picture : folder + ct::defaultPicture);
}

void CultivarEditor::showLevel(int level)
{
    m_grid.requery();
    ColumnNames();
    int row = m_grid.rowCount() - 1;
    for (int i = 0; i < m_grid.rowCount() && level >= 0; ++i) {
        if (m_grid.value(i, 0).toInt() == level)
            row = i;
    }
    m_screen.goToRow(row);
    showListsAndPicture(row);
}

void CultivarEditor::DBGrid1_RowColChange()
{
    try {
        const QString levelText = m_grid.text(m_screen.currentRow(), 0);
        if (!levelOf(levelText) && !levelText.trimmed().isEmpty()) {
            invalidEntry();
            return;
        }
        showListsAndPicture(m_screen.currentRow());
    } catch (const RuntimeError& e) {
        reportError(e.text(), ct::rowColChangeTail);
    }
}

QString CultivarEditor::cropCodeOf(const QString& name) const
{
    const QVariant code = scalar(
        QStringLiteral("SELECT CODE FROM CropLookup WHERE Name = ? ORDER BY rowid LIMIT 1"),
        { name });
    if (!code.isValid())
        throw noCurrentRecord();
    return code.toString();
}

void CultivarEditor::ListCrop_Click(const QString& name)
{
    try {
        const std::optional<int> level = currentLevel();
        if (!level) {
            invalidEntry();
            return;
        }
        const QString code = cropCodeOf(name);
        // Another crop drops the cultivar, which belonged to the old one; the
        // crop the level has already changes nothing.
        const QString held
            = scalar(QStringLiteral("SELECT CODE FROM Cultivars WHERE LNCU = ?"), { *level })
                  .toString();
        if (held.compare(code, Qt::CaseInsensitive) != 0)
            exec(QStringLiteral(
                     "UPDATE Cultivars SET CODE = ?, VARNO = NULL, CNAME = NULL WHERE LNCU = ?"),
                { code, *level });
        showLevel(*level);
    } catch (const RuntimeError& e) {
        reportError(e.text(), ct::listCropTail);
    }
}

void CultivarEditor::ListDescription_Click(const QString& description)
{
    try {
        const std::optional<int> level = currentLevel();
        if (!level) {
            invalidEntry();
            return;
        }
        const QVariant number = scalar(
            QStringLiteral("SELECT CROP FROM CropCodesLookup WHERE Description = ? AND CODE = ?"),
            { description, m_listedCrop });
        if (!number.isValid())
            throw noCurrentRecord();
        exec(QStringLiteral("UPDATE Cultivars SET CNAME = ?, VARNO = ? WHERE LNCU = ?"),
            { description, number, *level });
        showLevel(*level);
    } catch (const RuntimeError& e) {
        reportError(e.text(), ct::listDescriptionTail);
    }
}

int CultivarEditor::FindNameByLetter(const QString& letter)
{
    for (int i = 0; i < m_cropNames.size(); ++i) {
        if (m_cropNames.at(i).left(1).compare(letter, Qt::CaseInsensitive) == 0) {
            m_screen.selectCrop(i);
            return i;
        }
    }
    return -1;
}

// --- Levels -----------------------------------------------------------------

void CultivarEditor::CmdAddCultivar_Click()
{
    try {
        const std::optional<int> level = currentLevel();
        if (!level) {
            invalidEntry();
            return;
        }
        const int added = nextLevel(cultivars, levelField);
        database::Values row { { levelField, added } };
        QSqlQuery source = select(
            QStringLiteral("SELECT VARNO, CNAME, CODE FROM Cultivars WHERE LNCU = ?"), { *level });
        if (source.next()) {
            row.push_back({ QStringLiteral("VARNO"), source.value(0) });
            row.push_back({ QStringLiteral("CNAME"), source.value(1) });
            row.push_back({ QStringLiteral("CODE"), source.value(2) });
        }
        source.finish();
        database::insertRow(cultivars, row);
        showLevel(-1);
    } catch (const RuntimeError& e) {
        reportError(e.text(), ct::addTail);
    }
}

void CultivarEditor::Command2_Click()
{
    try {
        const std::optional<int> level = currentLevel();
        if (!level) {
            invalidEntry();
            return;
        }
        if (deleteUnusedLevel(cultivars, levelField, *level, ct::levelWord))
            showLevel(-1);
    } catch (const RuntimeError& e) {
        reportError(e.text(), ct::deleteTail);
    }
}

bool CultivarEditor::DBGrid1_BeforeColUpdate(int column, const QVariant& oldValue, QVariant& value)
{
    if (column != 0)
        return false;
    try {
        const QString typed = value.toString();
        if (!format::isNumeric(typed)
            || typed.trimmed().toDouble() != qRound(typed.trimmed().toDouble())) {
            invalidEntry();
            return false;
        }
        const int newLevel = qRound(typed.trimmed().toDouble());
        value = newLevel;
        // Treatments follow the renumbered level through the relation.
        if (newLevel != oldValue.toInt())
            exec(QStringLiteral("UPDATE [Cultivars] SET LNCU = ? WHERE LNCU = ?"),
                { newLevel, oldValue.toInt() });
        return true;
    } catch (const RuntimeError& e) {
        reportError(e.text(), ct::beforeColUpdateTail);
        return false;
    }
}

void CultivarEditor::DBGrid1_Error(const RuntimeError& error)
{
    Q_UNUSED(error)
    invalidEntry();
}

// --- Closing ----------------------------------------------------------------

void CultivarEditor::cmdOK_Click()
{
    m_screen.commitEdit();
    m_closedByButton = true;
    state().FileSaved = false;
    m_screen.closeWindow();
}

void CultivarEditor::cmdCancel_Click()
{
    m_closedByButton = true;
    m_screen.closeWindow();
    m_backup.restore(ct::cancelTail);
}

void CultivarEditor::Form_Unload()
{
    unloadEditor(m_closedByButton, EditorForm::frmCult1, [this] { cmdOK_Click(); });
}

void CultivarEditor::escapePressed()
{
    if (escapeConfirmed())
        cmdCancel_Click();
}

} // namespace quillon::editors
