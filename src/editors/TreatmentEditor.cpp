#include "editors/TreatmentEditor.h"

#include "app/AppState.h"
#include "app/DocumentCommands.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "editors/EditorForms.h"
#include "editors/EditorSteps.h"
#include "editors/EditorTexts.h"
#include "editors/TreatmentTexts.h"
#include "format/NumberText.h"

#include <array>
#include <cmath>

namespace quillon::editors {

using database::exec;
using database::scalar;
using database::select;
namespace tt = treatment_text;

namespace {

const QString treatments = QStringLiteral("Treatments");

// A column of the grid. A factor column names the table and name field its
// list is filled from.
struct TreatmentColumn {
    const char* field;
    const char* caption;
    bool sequenceOnly = false;
    const char* table = nullptr;
    const char* nameField = nullptr;
    // Cultivar, field and simulation controls: every treatment needs one, so
    // their lists offer no "NONE".
    bool required = false;
};

constexpr std::array<TreatmentColumn, 18> gridColumns { {
    { "TRTNO", "Level" },
    { "ROTNO", "Rot. Num.", true },
    { "ROTOPT", "Rot. Option", true },
    { "CRPNO", "Crop Comp. Number", true },
    { "TITLET", "Description" },
    { "LNCU", "Cultivar", false, "Cultivars", "CNAME", true },
    { "LNFLD", "Field", false, "Fields", "FLNAME", true },
    { "LNSA", "Soil. Anal.", false, "SoilAnalysis", "SANAME" },
    { "LNIC", "Init. Cond.", false, "InitialConditions", "ICNAME" },
    { "LNPLT", "Plant.", false, "Planting", "PLNAME" },
    { "LNIR", "Irrigat.", false, "Irrigation", "IRNAME" },
    { "LNFER", "Fertil.", false, "FerLevelNames", "FERNAME" },
    { "LNRES", "Resid.", false, "ResLevelNames", "RENAME" },
    { "LNCHE", "Chem. App.", false, "ChemLevelNames", "CHNAME" },
    { "LNTIL", "Tillage", false, "TillLevelNames", "TNAME" },
    { "LNENV", "Env. Mod.", false, "EnvLevelNames", "ENVNAME" },
    { "LNHAR", "Harv.", false, "HarLevelNames", "HNAME" },
    { "LNSIM", "Sim. Contr.", false, "SimulationControl", "TITSIM", true },
} };

// The columns of BackUp, in the order it declares them.
constexpr std::array<const char*, 18> backUpColumns { "TRTNO", "ROTNO", "ROTOPT", "CRPNO", "TITLET",
    "LNCU", "LNFLD", "LNIC", "LNFER", "LNIR", "LNPLT", "LNRES", "LNENV", "LNTIL", "LNCHE", "LNHAR",
    "LNSA", "LNSIM" };

// In a sequence file the button of this column (LNRES) opens no list: its
// list opens only when the cell becomes current.
constexpr int sequenceColumnWithoutButton = 12;

std::vector<const TreatmentColumn*> shownColumns(bool sequence)
{
    std::vector<const TreatmentColumn*> shown;
    for (const TreatmentColumn& c : gridColumns) {
        if (sequence || !c.sequenceOnly)
            shown.push_back(&c);
    }
    return shown;
}

const TreatmentColumn* columnNamed(const QString& field)
{
    for (const TreatmentColumn& c : gridColumns) {
        if (field.compare(QLatin1String(c.field), Qt::CaseInsensitive) == 0)
            return &c;
    }
    return nullptr;
}

QString backUpColumnList()
{
    QStringList names;
    for (const char* name : backUpColumns)
        names << QLatin1String(name);
    return names.join(QStringLiteral(", "));
}

bool hasRows(const QString& sql, const QVariantList& params = {})
{
    return scalar(sql, params).isValid();
}

bool isWhole(const QString& text)
{
    const double value = text.trimmed().toDouble();
    return value == std::nearbyint(value);
}

// A whole number as typed text, so that one outside the column's range fails
// in the grid's store as typed text would.
QString wholeText(double value)
{
    return QString::number(value, 'f', 0);
}

RuntimeError noCurrentRecord()
{
    return RuntimeError(err::NoCurrentRecord, QStringLiteral("No current record."));
}

} // namespace

// --- Opening ----------------------------------------------------------------

bool mnuViewTreatments_Click()
{
    AppState& s = state();
    Busy busy;
    try {
        if (s.IsNewFile) {
            const QVariant cultivar
                = scalar(QStringLiteral("SELECT LNCU FROM Cultivars ORDER BY rowid LIMIT 1"));
            if (!cultivar.isValid()) {
                msgBox(tt::selectCultivar);
                return false;
            }
            if (hasRows(QStringLiteral("SELECT 1 FROM Treatments WHERE LNCU IS NULL LIMIT 1")))
                exec(QStringLiteral("UPDATE Treatments SET LNCU = ? WHERE rowid = "
                                    "(SELECT rowid FROM Treatments ORDER BY rowid LIMIT 1)"),
                    { cultivar });
        }
        closeOtherEditors();
        return true;
    } catch (const RuntimeError& e) {
        reportError(e.text(), tt::menuTail);
        return false;
    }
}

TreatmentEditor::TreatmentEditor(TreatmentScreen& screen)
    : m_screen(screen)
{
    m_grid.setHooks({ [this](int column, const QVariant&, QVariant& value, bool) {
                         return beforeUpdate(column, value);
                     },
        {}, [this](const RuntimeError& error) { DBGrdTreatment_Error(error); } });
}

void TreatmentEditor::Form_Load()
{
    markOpen(EditorForm::frmViewTreatments);
    m_screen.setCaption(editorCaption(tt::captionStem));
    CreateBackUp();
    try {
        m_sequence = state().IsSequence;
        QStringList fields;
        for (const TreatmentColumn* c : shownColumns(m_sequence))
            fields << QLatin1String(c->field);
        m_grid.setQuery(QStringLiteral("SELECT %1 FROM Treatments ORDER BY TRTNO, rowid")
                            .arg(fields.join(QStringLiteral(", "))),
            treatments);
        m_screen.goToRow(0);
        ColumnNames();
        m_screen.setButtonsEnabled(true);
    } catch (const RuntimeError& e) {
        reportError(e.text(), tt::formLoadTail);
    }
}

void TreatmentEditor::CreateBackUp()
{
    try {
        database::tryExec(QStringLiteral("DROP TABLE [BackUp]"));
        QStringList declared;
        for (const char* name : backUpColumns)
            declared << QStringLiteral("%1 %2").arg(QLatin1String(name),
                qstrcmp(name, "TITLET") == 0 ? QStringLiteral("TEXT") : QStringLiteral("SMALLINT"));
        exec(QStringLiteral("CREATE TABLE [BackUp] (%1)").arg(declared.join(QStringLiteral(", "))));
        // The columns go by name, as the backup declares them in its own
        // order.
        exec(QStringLiteral("INSERT INTO [BackUp] (%1) SELECT %1 FROM [Treatments] ORDER BY rowid")
                 .arg(backUpColumnList()));
    } catch (const RuntimeError& e) {
        reportError(e.text(), tt::createBackUpTail);
    }
}

void TreatmentEditor::ColumnNames()
{
    QStringList captions;
    for (const TreatmentColumn* c : shownColumns(m_sequence))
        captions << QLatin1String(c->caption);
    m_grid.setCaptions(captions);
}

// Reads the grid's rows again and moves to a row (-1: the last).
void TreatmentEditor::showTreatments(int row)
{
    m_grid.requery();
    ColumnNames();
    m_screen.goToRow(row < 0 ? m_grid.rowCount() - 1 : row);
}

int TreatmentEditor::firstFactorColumn() const
{
    return m_sequence ? 5 : 2;
}

bool TreatmentEditor::isFactorColumn(int column) const
{
    return column >= firstFactorColumn() && column < m_grid.columnCount();
}

// --- Rows -------------------------------------------------------------------

void TreatmentEditor::cmdAdd_Click()
{
    try {
        const int row = m_screen.currentRow();
        const QString number = m_grid.text(row, 0);
        if (!format::isNumeric(number) || number.trimmed().toDouble() == 0) {
            invalidEntry();
            return;
        }
        const QVariant current = qRound(number.trimmed().toDouble());
        const QString rotation = m_grid.text(row, 1);
        showTreatments(row);

        QStringList fields;
        for (const TreatmentColumn& c : gridColumns)
            fields << QLatin1String(c.field);
        QString source = QStringLiteral("SELECT %1 FROM Treatments WHERE TRTNO = ?")
                             .arg(fields.join(QStringLiteral(", ")));
        QVariantList params { current };
        QVariant newNumber = current;
        QVariant newRotation;
        if (m_sequence) {
            // Add extends the rotation of the current treatment: the next
            // step after its last one, under the same number.
            const QVariant last = scalar(QStringLiteral("SELECT ROTNO FROM Treatments WHERE TRTNO "
                                                        "= ? ORDER BY ROTNO DESC LIMIT 1"),
                { current });
            newRotation = last.toInt() + 1;
            source += QStringLiteral(" AND ROTNO IS ?");
            params << (rotation.isEmpty() ? QVariant()
                                          : QVariant(qRound(format::leadingNumber(rotation))));
        } else {
            newNumber = m_grid.value(m_grid.rowCount() - 1, 0).toInt() + 1;
        }
        QSqlQuery read = select(source + QStringLiteral(" ORDER BY rowid LIMIT 1"), params);
        if (!read.next())
            throw noCurrentRecord();
        database::Values added { { QStringLiteral("TRTNO"), newNumber } };
        for (int i = 1; i < int(gridColumns.size()); ++i) {
            const TreatmentColumn& c = gridColumns[size_t(i)];
            QVariant value = read.value(i);
            if (c.table) {
                // A factor without a level stays without one.
                if (value.toInt() == 0)
                    continue;
            } else if (i == 1 && m_sequence) {
                value = newRotation;
            }
            added.push_back({ QLatin1String(c.field), value });
        }
        read.finish();
        database::insertRow(treatments, added);
        showTreatments(-1);
    } catch (const RuntimeError& e) {
        if (e.number() == err::UpdateCancelled || e.number() == err::MalformedExpression)
            invalidEntry();
        reportError(e.text(), tt::cmdAddTail);
    }
}

void TreatmentEditor::cmdDelete()
{
    try {
        const int row = m_screen.currentRow();
        const QString number = m_grid.text(row, 0).trimmed();
        const QString rotation = m_sequence ? m_grid.text(row, 1).trimmed() : QString();
        if (!format::isNumeric(number) || (m_sequence && !format::isNumeric(rotation))) {
            invalidEntry();
            return;
        }
        // The last treatment stays.
        if (m_grid.rowCount() < 2)
            return;
        const QString question = m_sequence
            ? tt::deleteLevelOfRotation + QLatin1Char(' ') + number + QLatin1Char(',')
                + tt::rotationNumber + QLatin1Char(' ') + rotation + QLatin1Char('?')
            : text::deleteLevel + QLatin1Char(' ') + number + QLatin1Char('?');
        if (msgBox(question, MsgButtons::YesNoDefaultNo, MsgIcon::Question) == MsgAnswer::Yes) {
            if (m_sequence)
                exec(QStringLiteral("DELETE FROM Treatments WHERE TRTNO = ? AND ROTNO = ?"),
                    { number.toDouble(), rotation.toDouble() });
            else
                exec(QStringLiteral("DELETE FROM Treatments WHERE TRTNO = ?"),
                    { number.toDouble() });
        }
        showTreatments(-1);
    } catch (const RuntimeError& e) {
        reportError(e.text(), tt::cmdDeleteTail);
    }
}

// --- Closing ----------------------------------------------------------------

void TreatmentEditor::cmdSave_Click()
{
    m_screen.commitEdit();
    m_closedByButton = true;
    state().FileSaved = false;
    m_screen.closeWindow();
}

void TreatmentEditor::Command1_Click()
{
    try {
        database::Transaction transaction;
        exec(QStringLiteral("DELETE FROM [Treatments]"));
        exec(QStringLiteral("INSERT INTO [Treatments] (%1) SELECT %1 FROM [Backup] ORDER BY rowid")
                 .arg(backUpColumnList()));
        exec(QStringLiteral("DROP TABLE [Backup]"));
        transaction.commit();
    } catch (const RuntimeError& e) {
        reportError(e.text(), tt::command1Tail);
        return;
    }
    m_closedByButton = true;
    m_screen.closeWindow();
}

void TreatmentEditor::Form_Unload()
{
    unloadEditor(m_closedByButton, EditorForm::frmViewTreatments, [this] { cmdSave_Click(); });
    database::tryExec(QStringLiteral("DROP TABLE [BackUp]"));
}

void TreatmentEditor::escapePressed()
{
    if (escapeConfirmed())
        Command1_Click();
}

// --- The list of levels -----------------------------------------------------

QStringList TreatmentEditor::FillListBox(int row, int column)
{
    try {
        m_currentTRTNO = m_grid.value(row, 0).toInt();
        m_currentROTNO = m_sequence
            ? m_grid.value(row, 1)
            : scalar(QStringLiteral("SELECT ROTNO FROM Treatments WHERE TRTNO = ? ORDER BY rowid "
                                    "LIMIT 1"),
                { m_currentTRTNO });
        if (!m_currentROTNO.isValid())
            m_currentROTNO = QVariant();
        const TreatmentColumn* c = columnNamed(m_grid.columnName(column));
        if (!c || !c->table)
            return {};
        m_currentColumnField = QLatin1String(c->field);

        QStringList items;
        QSqlQuery levels = select(
            QStringLiteral("SELECT [%1], [%2] FROM [%3] ORDER BY rowid")
                .arg(m_currentColumnField, QLatin1String(c->nameField), QLatin1String(c->table)));
        while (levels.next())
            items << levels.value(0).toString() + tt::levelSeparator + levels.value(1).toString();
        if (!c->required)
            items << tt::none;
        return items;
    } catch (const RuntimeError& e) {
        reportError(e.text(), tt::fillListBoxTail);
        return {};
    }
}

void TreatmentEditor::openList(bool toggle)
{
    const int row = m_screen.currentRow();
    const int column = m_screen.currentColumn();
    if (row < 0 || !isFactorColumn(column) || (toggle && m_listShown)) {
        m_screen.hideList();
        m_listShown = false;
        return;
    }
    const QStringList items = FillListBox(row, column);
    if (items.isEmpty())
        return;
    // The row's own level is chosen, or NONE for a factor it lacks.
    const QVariant level = m_grid.value(row, column);
    int selected = items.indexOf(tt::none);
    if (!level.isNull()) {
        const QString prefix = level.toString() + tt::levelSeparator;
        selected = -1;
        for (int i = 0; i < items.size() && selected < 0; ++i) {
            if (items.at(i).startsWith(prefix))
                selected = i;
        }
    }
    m_screen.showList(items, selected);
    m_listShown = true;
}

void TreatmentEditor::DBGrdTreatment_ButtonClick()
{
    try {
        if (m_sequence && m_screen.currentColumn() == sequenceColumnWithoutButton)
            return;
        openList(true);
    } catch (const RuntimeError& e) {
        reportError(e.text(), tt::buttonClickTail);
    }
}

void TreatmentEditor::DBGrdTreatment_RowColChange(bool rowChanged)
{
    try {
        if (rowChanged && !format::isNumeric(m_grid.text(m_screen.currentRow(), 0))) {
            invalidEntry();
            return;
        }
        openList(false);
    } catch (const RuntimeError& e) {
        reportError(e.text(), tt::rowColChangeTail);
    }
}

void TreatmentEditor::List1_Click(const QString& entry)
{
    try {
        const qint64 bookmark = m_grid.rowId(m_screen.currentRow());
        m_screen.commitEdit();
        // "NONE" reads as no number: the factor goes.
        const int level = qRound(format::leadingNumber(entry.section(tt::levelSeparator, 0, 0)));
        const QVariant id = scalar(QStringLiteral("SELECT rowid FROM Treatments WHERE TRTNO = ? "
                                                  "AND ROTNO IS ? ORDER BY rowid LIMIT 1"),
            { m_currentTRTNO, m_currentROTNO });
        if (!id.isValid())
            throw noCurrentRecord();
        exec(QStringLiteral("UPDATE Treatments SET [%1] = ? WHERE rowid = ?")
                 .arg(m_currentColumnField),
            { level == 0 ? QVariant() : QVariant(level), id });
        showTreatments(m_grid.rowOf(bookmark));
        m_screen.hideList();
        m_listShown = false;
    } catch (const RuntimeError& e) {
        reportError(e.text(), tt::list1Tail);
    }
}

// --- Typing -----------------------------------------------------------------

RuntimeError TreatmentEditor::DBGrdTreatment_Change(int row, int column, const QString& typed)
{
    m_editRow = row;
    m_editColumn = column;
    return m_grid.store(row, column, typed);
}

QVariant TreatmentEditor::rowValue(const QString& field) const
{
    return scalar(QStringLiteral("SELECT [%1] FROM Treatments WHERE rowid = ?").arg(field),
        { m_grid.rowId(m_editRow) });
}

// The typing rules: a description is cut, numbers are made whole, a
// treatment number and rotation already in use put the old value back
// without a word, and a factor's cell is blanked (only List1 sets levels).
// False keeps the old value.
bool TreatmentEditor::beforeUpdate(int column, QVariant& value)
{
    m_editColumn = column;
    const QString field = m_grid.columnName(column);
    const QString typed = value.toString();
    if (isFactorColumn(column)) {
        value = QVariant();
        return true;
    }
    if (field == QLatin1String("TITLET")) {
        value = typed.left(TreatmentEditor::titleLength);
        return true;
    }
    if (field == QLatin1String("TRTNO")) {
        if (!format::isNumeric(typed) || !isWhole(typed)) {
            invalidEntry();
            return false;
        }
        const double number = std::nearbyint(typed.trimmed().toDouble());
        value = wholeText(number);
        return !hasRows(QStringLiteral("SELECT 1 FROM Treatments WHERE TRTNO = ? AND ROTNO IS ?"),
            { number, rowValue(QStringLiteral("ROTNO")) });
    }
    // ROTNO, ROTOPT, CRPNO: whole numbers.
    if (typed.trimmed().isEmpty()) {
        value = QVariant();
        return true;
    }
    const double number = std::nearbyint(format::leadingNumber(typed));
    value = wholeText(number);
    if (field == QLatin1String("ROTNO"))
        return !hasRows(QStringLiteral("SELECT 1 FROM Treatments WHERE ROTNO = ? AND TRTNO IS ?"),
            { number, rowValue(QStringLiteral("TRTNO")) });
    return true;
}

void TreatmentEditor::DBGrdTreatment_Error(const RuntimeError& error)
{
    if (m_editColumn == 0)
        msgBox(tt::invalidTreatmentLevel, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
    else
        reportError(error.text(), tt::gridTail);
}

} // namespace quillon::editors
