#include "editors/EventEditor.h"

#include "app/AppState.h"
#include "app/DocumentCommands.h"
#include "app/UserInterface.h"
#include "database/Relations.h"
#include "database/Schema.h"
#include "database/Sql.h"
#include "editors/CropStages.h"
#include "editors/EditorForms.h"
#include "editors/EditorSteps.h"
#include "editors/EditorTexts.h"
#include "editors/LevelOne.h"
#include "editors/ScratchDates.h"
#include "editors/ScratchTable.h"
#include "format/DateCodes.h"
#include "format/NumberText.h"
#include "reference/WeatherLookups.h"

namespace quillon::editors {

using database::exec;
using database::scalar;
using database::select;

namespace {

const QString applications = QStringLiteral("Applications");

QString number(int value)
{
    return QString::number(value);
}

bool hasRows(const QString& sql)
{
    return scalar(sql).isValid();
}

// A failed statement whose cause is a value the table refused.
bool refusedEntry(const RuntimeError& e)
{
    switch (e.number()) {
    case err::ValidationRule:
    case err::UpdateCancelled:
    case err::MalformedExpression:
    case err::TypeMismatch:
    case err::FieldTooSmall:
    case err::NumericOverflow:
    case err::ZeroLengthString:
        return true;
    default:
        return false;
    }
}

// The first planting date, for a level or event made without one to copy;
// nothing, after saying so, when the planting has none.
std::optional<QVariant> firstPlantingDate()
{
    const QVariant planting
        = scalar(QStringLiteral("SELECT YRPLT FROM Planting ORDER BY rowid LIMIT 1"));
    if (planting.isNull() || format::leadingNumber(planting.toString()) <= 0) {
        msgBox(text::enterPlantingDate);
        return std::nullopt;
    }
    QString code = planting.toString().trimmed();
    return scratchDateOf(format::YYDDDToDate(code));
}

} // namespace

EventEditor::EventEditor(const EventMember& member, EventScreen& screen)
    : m_member(member)
    , m_screen(screen)
    , m_scratch(member)
    , m_page(member, screen)
{
}

void EventEditor::report(const RuntimeError& e, Routine routine) const
{
    reportError(e.text(), m_member.tail(routine));
}

std::optional<int> EventEditor::currentLevel() const
{
    return levelOf(m_screen.levelCellText());
}

QString EventEditor::levelsStatement() const
{
    return QStringLiteral("SELECT %1, %2 FROM %3 ORDER BY %1")
        .arg(m_member.levelField, m_member.nameField, m_member.levelTable);
}

// --- Opening ----------------------------------------------------------------

namespace {

// Whether a new level wants days: the simulation's management of the
// factor says so.
bool daysWanted(const EventMember& member)
{
    return member.hasManagement()
        && hasRows(
            QStringLiteral("SELECT 1 FROM SimulationControlManagement WHERE %1 = 'D' LIMIT 1")
                .arg(member.managementField));
}

// The first event of the factor gets the day or date it lacks. Without a
// date to give it stays as it is.
void fillNullFirstDate(const EventMember& member)
{
    const QVariant first
        = scalar(QStringLiteral("SELECT rowid FROM [%1] WHERE [%2] IS NULL AND rowid = "
                                "(SELECT MIN(rowid) FROM [%1])")
                     .arg(member.eventTable, member.dateField));
    if (!first.isValid())
        return;
    const QString date = daysWanted(member) ? QStringLiteral("1") : plantingOrStartDate();
    if (date != QLatin1String("-99"))
        exec(QStringLiteral("UPDATE [%1] SET [%2] = ? WHERE rowid = ?")
                 .arg(member.eventTable, member.dateField),
            { date, first });
}

// Level 1 of a factor without levels, with the member's defaults for it.
database::Values newLevelRow(const EventMember& member)
{
    database::Values row { { member.levelField, 1 } };
    if (member.newLevelDefaults.empty())
        return row;
    QStringList defaults;
    for (const auto& pair : member.newLevelDefaults)
        defaults << pair.second;
    QSqlQuery first
        = select(QStringLiteral("SELECT %1 FROM [%2] ORDER BY rowid LIMIT 1")
                     .arg(defaults.join(QStringLiteral(", ")), member.newLevelDefaultsTable));
    if (first.next()) {
        for (int i = 0; i < int(member.newLevelDefaults.size()); ++i)
            row.push_back({ member.newLevelDefaults[size_t(i)].first, first.value(i) });
    }
    return row;
}

} // namespace

bool EventEditor::openEditor(const EventMember& member)
{
    AppState& s = state();
    Busy busy;
    try {
        closeOtherEditors();

        if (hasRows(QStringLiteral("SELECT 1 FROM [%1] LIMIT 1").arg(member.levelTable))) {
            s.NewLevelCreated = false;
            if (member.has(Addition::FillsNullFirstDate))
                fillNullFirstDate(member);
            return true;
        }

        // A factor with no level gets level 1 now, dated by the planting.
        const std::optional<QString> date = levelOneDate(member.enterFieldInformation);
        if (!date)
            return false;

        const bool days = daysWanted(member);
        database::Transaction transaction;
        s.NewLevelCreated = true;
        database::insertRow(member.levelTable, newLevelRow(member));
        database::insertRow(member.eventTable,
            { { member.levelField, 1 }, { member.dateField, days ? QStringLiteral("1") : *date } });
        if (member.hasManagement()) {
            const QString code = days ? QStringLiteral("D") : QStringLiteral("R");
            const QVariant first
                = scalar(QStringLiteral("SELECT rowid FROM [%1] ORDER BY rowid LIMIT 1")
                             .arg(member.managementTable));
            if (first.isValid())
                exec(QStringLiteral("UPDATE [%1] SET %2 = 1, %3 = ? WHERE rowid = ?")
                         .arg(member.managementTable, member.levelField, member.managementField),
                    { code, first });
            else
                database::insertRow(member.managementTable,
                    { { member.levelField, 1 }, { member.managementField, code } });
        }
        transaction.commit();
        return true;
    } catch (const RuntimeError& e) {
        reportError(e.text(), member.tail(Routine::MenuHandler));
        return false;
    }
}

void EventEditor::Form_Load()
{
    try {
        markOpen(*formNamed(m_member.formName));
        database::tryExec(QStringLiteral("DROP TABLE [Applications]"));
        CreateDateTable();
        CreateBackUp();
        m_screen.setCaption(editorCaption(m_member.captionStem));

        m_screen.showLevels(levelsStatement(), LevelRow::First);
        m_page.load();
        const QVariant first = scalar(QStringLiteral("SELECT %1 FROM %2 ORDER BY %1 LIMIT 1")
                                          .arg(m_member.levelField, m_member.levelTable));
        if (!first.isNull() && first.isValid())
            EditEntry(first.toInt());
        ColumnNames();

        for (int list = 0; list < int(m_member.lists.size()); ++list) {
            if (m_member.lists[size_t(list)].source != ListSource::CodeLookup)
                continue;
            QStringList items;
            QSqlQuery q = select(QStringLiteral("SELECT Description FROM CodeLookup WHERE Type = ? "
                                                "ORDER BY Description"),
                { m_member.lists[size_t(list)].type });
            while (q.next())
                items << q.value(0).toString();
            m_screen.setListItems(list, items);
        }
        // The stage list follows the crop in ComboCrop, the first at first.
        if (m_member.listFrom(ListSource::CropStages) >= 0) {
            const QStringList crops = cropsOfCultivars();
            m_screen.setCrops(crops);
            ComboCrop_Change(crops.value(0));
        }
    } catch (const RuntimeError& e) {
        report(e, Routine::Form_Load);
    }
}

void EventEditor::CreateDateTable()
{
    try {
        m_scratch.create();
        if (const std::optional<bool> days = m_scratch.firstEventInDays())
            m_daysMode = *days;
        m_scratch.fill(m_daysMode);
        m_scratch.setRules();
    } catch (const RuntimeError& e) {
        report(e, Routine::CreateDateTable);
    }
}

void EventEditor::CreateBackUp()
{
    try {
        m_scratch.backUp();
        m_treatmentLevels.clear();
        QSqlQuery q = select(
            QStringLiteral("SELECT [%1] FROM Treatments ORDER BY rowid").arg(m_member.levelField));
        while (q.next())
            m_treatmentLevels.push_back(q.value(0));
    } catch (const RuntimeError& e) {
        report(e, Routine::CreateBackUp);
    }
}

void EventEditor::EditEntry(int level)
{
    try {
        reference::FindFieldDate();
        m_years.years.clear();
        QSqlQuery q = select(QStringLiteral("SELECT DISTINCT Year FROM FieldYears"));
        while (q.next())
            m_years.years << q.value(0).toString();
        SetUpData2(level);
        m_screen.setLevelNumberText(text::level + QLatin1Char(' ') + number(level));
        if (!m_page.isEmpty())
            m_page.show(level);
        if (m_member.hasManagement()) {
            QStringList choices;
            QSqlQuery c
                = select(QStringLiteral("SELECT Description FROM SimLookUp WHERE Type = %1 AND "
                                        "(Code = 'D' OR Code = 'R') ORDER BY rowid")
                             .arg(m_member.managementType));
            while (c.next())
                choices << c.value(0).toString();
            m_screen.setManagementChoices(choices);
            const QVariant code
                = scalar(QStringLiteral("SELECT %1 FROM %2 WHERE %3 = %4")
                             .arg(m_member.managementField, m_member.managementTable,
                                 m_member.levelField, number(level)));
            const QVariant description = code.isNull()
                ? QVariant()
                : scalar(
                    QStringLiteral("SELECT Description FROM SimLookUp WHERE Type = %1 AND Code = ?")
                        .arg(m_member.managementType),
                    { code });
            m_screen.showManagement(description.toString());
        }
        showYears();
    } catch (const RuntimeError& e) {
        report(e, Routine::EditEntry);
    }
}

// The year combo shows the fields' years in dates mode; with none it gives
// way to txtYear. Neither changes anything.
void EventEditor::showYears()
{
    m_years.selected = m_years.years.indexOf(m_years.txtYear);
    m_years.comboVisible = !m_daysMode && !m_years.years.isEmpty();
    m_years.comboEnabled = m_years.comboVisible;
    m_years.txtYearVisible = !m_daysMode;
    m_screen.showYears(m_years);
}

QString EventEditor::eventOrder(int level) const
{
    if (!m_member.hasManagement())
        return QStringLiteral("TheDate");
    // Both modes sort by the other mode's column when every row of the
    // level has it, so that events keep their order across a change of mode.
    const QString other
        = m_daysMode ? QStringLiteral("TheDate") : QStringLiteral("DayAfterPlanting");
    const QString own = m_daysMode ? QStringLiteral("DayAfterPlanting") : QStringLiteral("TheDate");
    const QString where
        = QStringLiteral("FROM Applications WHERE %1 = %2").arg(m_member.levelField, number(level));
    const int all = scalar(QStringLiteral("SELECT COUNT(*) ") + where).toInt();
    const int withOther
        = scalar(QStringLiteral("SELECT COUNT(*) %1 AND %2 IS NOT NULL").arg(where, other)).toInt();
    return all == withOther ? other : own;
}

QString EventEditor::eventStatement(int level, const QString& order) const
{
    QStringList fields { m_daysMode ? QStringLiteral("DayAfterPlanting")
                                    : QStringLiteral("TheDate") };
    for (const GridColumn& c : m_member.grid)
        fields << c.field;
    return QStringLiteral("SELECT %1 FROM Applications WHERE %2 = %3 ORDER BY %4, rowid")
        .arg(fields.join(QStringLiteral(", ")), m_member.levelField, number(level), order);
}

void EventEditor::SetUpData2(int level)
{
    try {
        m_eventLevel = level;
        m_eventOrder = eventOrder(level);
        m_screen.showEvents(
            { eventStatement(level, m_eventOrder), m_member.levelField, level, m_daysMode });
        ColumnNames_Layers();
        if (m_daysMode) {
            m_years.txtYear.clear();
        } else {
            m_screen.goToEvent(0);
            const QVariant first
                = scalar(QStringLiteral("SELECT TheDate FROM Applications WHERE %1 = %2 "
                                        "ORDER BY %3, rowid LIMIT 1")
                             .arg(m_member.levelField, number(level), m_eventOrder));
            const QDate date = dateOfScratch(first);
            m_years.txtYear = date.isValid() ? number(date.year()) : QString();
        }
        showYears();
    } catch (const RuntimeError& e) {
        if (e.number() == err::ValidationRule) {
            m_screen.hideLists();
            m_listShown = -1;
            msgBox(text::invalidEntry, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
        }
        report(e, Routine::SetUpData2);
    }
}

void EventEditor::ColumnNames()
{
    m_screen.setLevelCaptions({ text::level, text::description });
}

void EventEditor::ColumnNames_Layers()
{
    QStringList captions { m_daysMode ? text::day : text::dateCaption(state().DateTextFormat) };
    std::vector<bool> visible { true };
    for (const GridColumn& c : m_member.grid) {
        captions << c.caption;
        visible.push_back(!c.shownFor || c.shownFor(m_eventLevel));
    }
    m_screen.setEventCaptions(captions, visible);
}

// --- Levels -----------------------------------------------------------------

void EventEditor::handleAddFailure(const RuntimeError& e, Routine routine)
{
    const bool firstAdd = routine == Routine::cmdAdd1_Click;
    if (refusedEntry(e))
        msgBox(firstAdd ? text::invalidEntry : m_member.ruleRefused, MsgButtons::OK,
            MsgIcon::Critical, text::errorTitle);
    if (e.number() == err::RowNotStored) {
        m_rowInError = true;
        msgBox(firstAdd ? m_member.applicationsTableError : text::invalidEntry, MsgButtons::OK,
            MsgIcon::Critical, text::errorTitle);
    }
    report(e, routine);
}

void EventEditor::goToLevel(LevelRow row)
{
    m_screen.showLevels(levelsStatement(), row);
    if (const std::optional<int> level = currentLevel())
        EditEntry(*level);
}

void EventEditor::cmdAdd1_Click()
{
    try {
        const RuntimeError pending = m_screen.commitEventEdit();
        if (pending.number() != 0)
            throw pending;
        const bool fromPlanting = m_member.has(Addition::FirstLevelFromPlanting);
        const QString levelText = m_screen.levelCellText();
        std::optional<int> current = levelOf(levelText);
        // A member that starts level 1 from the planting takes an empty grid
        // for level 0.
        if (!current && fromPlanting && levelText.trimmed().isEmpty())
            current = 0;
        if (!current) {
            msgBox(text::invalidEntry, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
            return;
        }
        const int newLevel = scalar(QStringLiteral("SELECT MAX(%1) FROM %2")
                                        .arg(m_member.levelField, m_member.levelTable))
                                 .toInt()
            + 1;
        m_screen.showLevels(levelsStatement(), LevelRow::Same);
        m_screen.refreshEvents();
        if (*current > 0) {
            if (!copyLevel(*current, newLevel))
                return;
        } else if (fromPlanting && !addFirstLevel()) {
            return;
        }
        m_screen.setDeleteEnabled(true, true);
        m_screen.showLevels(levelsStatement(), LevelRow::Last);
        ColumnNames();
        ColumnNames_Layers();
        if (m_member.hasManagement()) {
            const QVariant code
                = scalar(QStringLiteral("SELECT %1 FROM %2 WHERE %3 = %4")
                             .arg(m_member.managementField, m_member.managementTable,
                                 m_member.levelField, number(*current)));
            database::insertRow(m_member.managementTable,
                { { m_member.levelField, newLevel }, { m_member.managementField, code } });
        }
        if (const std::optional<int> shown = currentLevel())
            EditEntry(*shown);
    } catch (const RuntimeError& e) {
        handleAddFailure(e, Routine::cmdAdd1_Click);
    }
}

// The new level takes every value of the current level's row (its name, and
// whatever else the level table keeps) and a copy of its events. False when
// the current level has no events to copy.
bool EventEditor::copyLevel(int current, int newLevel)
{
    const QString level = number(current);
    exec(QStringLiteral("UPDATE Applications SET %1 = %2 WHERE %1 = 0")
             .arg(m_member.levelField, level));
    if (!hasRows(QStringLiteral("SELECT 1 FROM Applications WHERE %1 = %2 LIMIT 1")
                     .arg(m_member.levelField, level))) {
        msgBox(text::addApplications);
        return false;
    }
    database::Transaction transaction;
    QStringList values;
    for (const database::FieldDef& field : database::findTable(m_member.levelTable)->fields) {
        if (field.name.compare(m_member.levelField, Qt::CaseInsensitive) != 0)
            values << QStringLiteral("[%1]").arg(field.name);
    }
    exec(QStringLiteral("INSERT INTO [%1] (%2, %3) SELECT %4, %3 FROM [%1] WHERE %2 = %5")
             .arg(m_member.levelTable, m_member.levelField, values.join(QStringLiteral(", ")),
                 number(newLevel), level));
    const QStringList copied = m_scratch.eventColumns();
    const QString list = copied.join(QStringLiteral(", "));
    exec(QStringLiteral(
        "INSERT INTO Applications (%1) SELECT %1 FROM Applications WHERE %2 = %3 ORDER BY rowid")
             .arg(list, m_member.levelField, level));
    exec(QStringLiteral("UPDATE Applications SET %1 = %2 WHERE %1 IS NULL")
             .arg(m_member.levelField, number(newLevel)));
    transaction.commit();
    return true;
}

// Level 1 with one event on the planting date. False when there is no
// planting date.
bool EventEditor::addFirstLevel()
{
    const std::optional<QVariant> date = firstPlantingDate();
    if (!date)
        return false;
    database::Transaction transaction;
    database::insertRow(m_member.levelTable, { { m_member.levelField, 1 } });
    database::insertRow(
        applications, { { m_member.levelField, 1 }, { QStringLiteral("TheDate"), *date } });
    transaction.commit();
    return true;
}

// An event on the planting date for a level without events.
void EventEditor::addFirstEvent(int level)
{
    const std::optional<QVariant> date = firstPlantingDate();
    if (!date)
        return;
    database::insertRow(
        applications, { { m_member.levelField, level }, { QStringLiteral("TheDate"), *date } });
    SetUpData2(level);
}

void EventEditor::cmdDelete1_Click()
{
    try {
        const std::optional<int> level = currentLevel();
        if (!level) {
            msgBox(text::invalidEntry, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
            return;
        }
        const QString n = number(*level);
        QStringList treatments;
        QSqlQuery users
            = select(QStringLiteral("SELECT TRTNO FROM Treatments WHERE %1 = %2 ORDER BY rowid")
                         .arg(m_member.levelField, n));
        while (users.next())
            treatments << users.value(0).toString();
        if (!treatments.isEmpty()) {
            ui().deletionWarning(m_member.levelWord, treatments);
            return;
        }
        const bool only = database::rowCount(m_member.levelTable) < 2;
        if (msgBox(text::deleteLevel + QLatin1Char(' ') + n + QLatin1Char('?'),
                MsgButtons::YesNoDefaultNo, MsgIcon::Question)
            != MsgAnswer::Yes)
            return;
        {
            database::Transaction transaction;
            QStringList tables { applications, m_member.eventTable, m_member.levelTable };
            if (m_member.hasManagement()
                && !(only && m_member.has(Addition::OnlyLevelKeepsManagement)))
                tables << m_member.managementTable;
            for (const QString& table : tables)
                exec(QStringLiteral("DELETE FROM [%1] WHERE %2 = %3")
                         .arg(table, m_member.levelField, n));
            transaction.commit();
        }
        if (only) {
            // The factor ends without levels: the window closes, committing.
            m_screen.closeWindow();
            return;
        }
        goToLevel(LevelRow::Last);
        ColumnNames();
    } catch (const RuntimeError& e) {
        report(e, Routine::cmdDelete1_Click);
    }
}

bool EventEditor::DBGrid1_BeforeColUpdate(int column, const QVariant& oldValue, QVariant& value)
{
    try {
        if (column == 1) {
            value = value.toString().left(text::levelNameLength);
            return true;
        }
        const QString typed = value.toString();
        if (!format::isNumeric(typed)
            || typed.trimmed().toDouble() != qRound(typed.trimmed().toDouble())) {
            msgBox(text::invalidEntry, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
            return false;
        }
        const int newLevel = qRound(typed.trimmed().toDouble());
        value = newLevel;
        // A number in use: the grid's own update fails on the duplicate and
        // its error event says so.
        if (hasRows(QStringLiteral("SELECT 1 FROM %1 WHERE %2 = %3")
                        .arg(m_member.levelTable, m_member.levelField, number(newLevel))))
            return true;
        if (newLevel != oldValue.toInt()) {
            database::Transaction transaction;
            QStringList tables { applications, m_member.levelTable };
            if (m_member.hasManagement())
                tables << m_member.managementTable;
            // Treatments follow the level table through the relation.
            for (const QString& table : tables)
                exec(QStringLiteral("UPDATE [%1] SET %2 = %3 WHERE %2 = %4")
                         .arg(table, m_member.levelField, number(newLevel),
                             number(oldValue.toInt())));
            transaction.commit();
        }
        return true;
    } catch (const RuntimeError& e) {
        report(e, Routine::DBGrid1_BeforeColUpdate);
        return false;
    }
}

void EventEditor::DBGrid1_AfterColUpdate(int column, const QVariant& value)
{
    // The renumbered level's events now answer to its new number.
    if (column == 0)
        EditEntry(value.toInt());
}

SqlGridModel::Hooks EventEditor::levelGridHooks()
{
    return { [this](int column, const QVariant& oldValue, QVariant& value, bool) {
                return DBGrid1_BeforeColUpdate(column, oldValue, value);
            },
        [this](int column, const QVariant& value) { DBGrid1_AfterColUpdate(column, value); },
        [this](const RuntimeError& error) { DBGrid1_Error(error); } };
}

SqlGridModel::Hooks EventEditor::eventGridHooks()
{
    return { [this](int column, const QVariant&, QVariant& value, bool fromList) {
                DBGrid2_BeforeColUpdate(column, value, fromList);
                return true;
            },
        {}, [this](const RuntimeError& error) { DBGrid2_Error(error); } };
}

void EventEditor::DBGrid1_Error(const RuntimeError& error)
{
    Q_UNUSED(error)
    msgBox(text::invalidEntry, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
}

void EventEditor::DBGrid1_GotFocus()
{
    m_rowInError = false;
    const RuntimeError pending = m_screen.commitEventEdit();
    if (pending.number() != 0) {
        m_rowInError = true;
        msgBox(
            m_member.applicationsTableError, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
    }
}

void EventEditor::DBGrid1_RowColChange()
{
    if (m_rowInError)
        return;
    try {
        const QString levelText = m_screen.levelCellText();
        const std::optional<int> level = levelOf(levelText);
        if (!level && !levelText.trimmed().isEmpty()) {
            msgBox(text::invalidEntry, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
            return;
        }
        if (level)
            EditEntry(*level);
        m_screen.hideLists();
        m_listShown = -1;
    } catch (const RuntimeError& e) {
        report(e, Routine::DBGrid1_RowColChange);
    }
}

// --- Events -----------------------------------------------------------------

void EventEditor::cmdAdd2_Click()
{
    if (m_rowInError)
        return;
    try {
        if (database::rowCount(applications) == 0 && database::rowCount(m_member.levelTable) == 0) {
            cmdAdd1_Click();
            return;
        }
        m_screen.commitEventEdit();
        const int level = currentLevel().value_or(0);
        if (m_member.has(Addition::FirstEventFromPlanting)
            && !hasRows(QStringLiteral("SELECT 1 FROM Applications WHERE %1 = %2 LIMIT 1")
                            .arg(m_member.levelField, number(level)))) {
            addFirstEvent(level);
            return;
        }
        if (m_screen.currentEventRow() == 0)
            m_screen.goToEvent(0);

        const QString when = m_screen.eventCellText(0).trimmed();
        QVariant dateValue;
        if (m_daysMode) {
            if (when.isEmpty()) {
                msgBox(m_member.pleaseEnterDay);
                return;
            }
            if (!format::isNumeric(when))
                throw RuntimeError(err::MalformedExpression, text::syntaxError(when));
            dateValue = qRound(when.toDouble());
        } else {
            QString slashed = when;
            slashed.replace(QLatin1Char('.'), QLatin1Char('/'))
                .replace(QLatin1Char('-'), QLatin1Char('/'));
            if (slashed.isEmpty()) {
                msgBox(text::enterDate);
                return;
            }
            const QDate date = format::toDate(slashed);
            if (!date.isValid())
                throw RuntimeError(err::MalformedExpression, text::syntaxError(when));
            dateValue = scratchDate(date);
        }
        const QString dateColumn
            = m_daysMode ? QStringLiteral("DayAfterPlanting") : QStringLiteral("TheDate");
        const QString keyField = m_member.grid.at(m_member.keyColumn - 1).field;
        const QString key = m_screen.eventCellText(m_member.keyColumn);

        QStringList copied;
        for (const ScratchColumn& c : m_member.scratch) {
            if (c.name.compare(keyField, Qt::CaseInsensitive) != 0)
                copied << c.name;
        }
        QString sql = QStringLiteral("SELECT %1 FROM Applications WHERE %2 = %3 AND %4 = ? AND ")
                          .arg(copied.join(QStringLiteral(", ")), m_member.levelField,
                              number(level), dateColumn);
        QVariantList params { dateValue };
        if (key.isEmpty()) {
            sql += keyField + QStringLiteral(" IS NULL");
        } else {
            sql += keyField + QStringLiteral(" = ?");
            params << key;
        }
        QSqlQuery source = select(sql + QStringLiteral(" ORDER BY rowid LIMIT 1"), params);
        // The harvest editor stores a copied day under a name the scratch
        // table doesn't have, so that only dates can be copied there.
        const QString storedDate = m_daysMode && m_member.has(Addition::DayCopyUnderWrongName)
            ? QStringLiteral("DaysAfterPlanting")
            : dateColumn;
        if (source.next()) {
            database::Values row { { m_member.levelField, level }, { storedDate, dateValue },
                { keyField, key.isEmpty() ? QVariant() : QVariant(key) } };
            for (int i = 0; i < copied.size(); ++i)
                row.push_back({ copied.at(i), source.value(i) });
            source.finish();
            database::insertRow(applications, row);
        }

        // The copy stands right after its source: the user edits the copy.
        SetUpData2(level);
        QSqlQuery shown = select(
            QStringLiteral("SELECT rowid, %1 FROM Applications WHERE %2 = %3 ORDER BY %4, rowid")
                .arg(dateColumn, m_member.levelField, number(level), m_eventOrder));
        qint64 target = 0;
        bool found = false;
        while (shown.next()) {
            if (found) {
                target = shown.value(0).toLongLong();
                break;
            }
            if (shown.value(1) == dateValue || shown.value(1).toString() == dateValue.toString()) {
                found = true;
                target = shown.value(0).toLongLong();
            }
        }
        if (found)
            m_screen.goToEvent(target);
    } catch (const RuntimeError& e) {
        handleAddFailure(e, Routine::cmdAdd2_Click);
    }
}

void EventEditor::cmdDelete2_Click()
{
    try {
        const QString when = m_screen.eventCellText(0).trimmed();
        if (m_daysMode ? !format::isNumeric(when) : !format::toDate(when).isValid()) {
            msgBox(m_daysMode ? text::invalidDay : text::invalidDate, MsgButtons::OK,
                MsgIcon::Critical, text::errorTitle);
            return;
        }
        const int level = currentLevel().value_or(0);
        const QString where = QStringLiteral("FROM Applications WHERE %1 = %2")
                                  .arg(m_member.levelField, number(level));
        if (scalar(QStringLiteral("SELECT COUNT(*) ") + where).toInt() == 1) {
            // The last event is the level.
            cmdDelete1_Click();
            return;
        }
        if (msgBox(text::deleteApplication + QLatin1Char(' ') + when + QLatin1Char('?'),
                MsgButtons::YesNoDefaultNo, MsgIcon::Question)
            == MsgAnswer::Yes) {
            exec(QStringLiteral("DELETE FROM Applications WHERE rowid = ?"),
                { m_screen.currentEventRow() });
            m_screen.refreshEvents();
        }
        ColumnNames_Layers();
        const bool rowsLeft
            = hasRows(QStringLiteral("SELECT 1 ") + where + QStringLiteral(" LIMIT 1"));
        m_screen.setDeleteEnabled(true, rowsLeft);
        m_screen.goToLastEvent();
    } catch (const RuntimeError& e) {
        report(e, Routine::cmdDelete2_Click);
    }
}

void EventEditor::DBGrid2_BeforeColUpdate(int column, QVariant& value, bool fromList)
{
    // Only a list's choice gets into a list column: typing blanks it, but
    // for the letters that stand for an entry.
    if (column > 0 && column <= int(m_member.grid.size())
        && m_member.grid.at(column - 1).entry == Entry::List && !fromList) {
        const auto typed = m_member.typedEntries.find(value.toString().trimmed().toUpper());
        value = typed != m_member.typedEntries.end() ? QVariant(typed->second) : QVariant();
    }
}

void EventEditor::DBGrid2_Error(const RuntimeError& error)
{
    Q_UNUSED(error)
    m_rowInError = true;
    msgBox(text::invalidEntry, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
}

void EventEditor::openList(int column, bool toggle)
{
    const int list = column > 0 && column <= int(m_member.grid.size())
        ? m_member.grid.at(column - 1).list
        : -1;
    if (list < 0 || (toggle && list == m_listShown)) {
        m_screen.hideLists();
        m_listShown = -1;
        return;
    }
    m_screen.showList(list, m_screen.eventCellText(column));
    m_listShown = list;
}

void EventEditor::DBGrid2_RowColChange(int column, bool newRow)
{
    if (newRow)
        m_rowInError = false;
    if (m_rowInError)
        return;
    try {
        openList(column, false);
    } catch (const RuntimeError& e) {
        report(e, Routine::DBGrid2_RowColChange);
    }
}

void EventEditor::DBGrid2_ButtonClick(int column)
{
    try {
        openList(column, true);
    } catch (const RuntimeError& e) {
        report(e, Routine::DBGrid2_ButtonClick);
    }
}

void EventEditor::ListDescription_Click(int list, const QString& description)
{
    const CodeList& chosen = m_member.lists.at(size_t(list));
    try {
        // A stage list's choice puts the stage's code in the cell.
        const QString value = chosen.source == ListSource::CropStages
            ? stageCode(m_crop, description)
            : description;
        for (int i = 0; i < int(m_member.grid.size()); ++i) {
            if (m_member.grid[size_t(i)].list == list)
                writeChoice(i + 1, value);
        }
        m_screen.hideLists();
        m_listShown = -1;
    } catch (const RuntimeError& e) {
        reportError(e.text(), m_member.tail(Routine::ListDescription_Click, chosen.control));
    }
}

void EventEditor::writeChoice(int column, const QString& value)
{
    if (!m_member.has(Addition::ListWritesRow)) {
        m_screen.setEventCell(column, value);
        return;
    }
    const qint64 row = m_screen.currentEventRow();
    if (row == 0)
        throw RuntimeError(err::NoCurrentRecord, QStringLiteral("No current record."));
    exec(QStringLiteral("UPDATE Applications SET [%1] = ? WHERE rowid = ?")
             .arg(m_member.grid.at(size_t(column - 1)).field),
        { value, row });
    m_screen.refreshEvents();
}

void EventEditor::DBComboManagement_Click(const QString& description)
{
    if (description.isEmpty() || !m_member.hasManagement())
        return;
    try {
        const QString code = scalar(
            QStringLiteral("SELECT Code FROM SimLookUp WHERE Description = ? AND Type = %1")
                .arg(m_member.managementType),
            { description })
                                 .toString();
        const bool daysMode = code.compare(QLatin1String("D"), Qt::CaseInsensitive) == 0;
        const std::optional<int> level = currentLevel();
        if (!m_screen.levelCellText().isEmpty() && level && daysMode != m_daysMode) {
            // Nothing converts between dates and days: the other column shows
            // empty.
            m_daysMode = daysMode;
            SetUpData2(*level);
        }
        showYears();
        // The combo is bound to the level's row of the management table.
        if (level)
            exec(QStringLiteral("UPDATE %1 SET %2 = ? WHERE %3 = %4")
                     .arg(m_member.managementTable, m_member.managementField, m_member.levelField,
                         number(*level)),
                { code });
    } catch (const RuntimeError& e) {
        report(e, Routine::DBComboManagement_Click);
    }
}

void EventEditor::ComboCrop_Change(const QString& crop)
{
    const int list = m_member.listFrom(ListSource::CropStages);
    if (list < 0)
        return;
    try {
        m_crop = crop;
        m_screen.setListItems(list, {});
        m_screen.setListItems(list, stagesOf(crop));
    } catch (const RuntimeError& e) {
        report(e, Routine::ComboCrop_Change);
    }
}

bool EventEditor::LevelPage_Validate(int field, const QString& text)
{
    const std::optional<int> level = currentLevel();
    if (!level)
        return true;
    try {
        return m_page.validate(*level, field, text);
    } catch (const RuntimeError& e) {
        reportError(e.text(),
            m_member.tail(
                Routine::LevelPage_Validate, m_member.levelPage.at(size_t(field)).control));
        return true;
    }
}

void EventEditor::LevelPage_Click(int field, const QString& description)
{
    const std::optional<int> level = currentLevel();
    if (!level)
        return;
    try {
        m_page.choose(*level, field, description);
    } catch (const RuntimeError& e) {
        reportError(e.text(),
            m_member.tail(Routine::LevelPage_Click, m_member.levelPage.at(size_t(field)).control));
    }
}

void EventEditor::Check_Dates(int level)
{
    try {
        const QString column
            = m_daysMode ? QStringLiteral("DayAfterPlanting") : QStringLiteral("TheDate");
        m_screen.showEvents(
            { eventStatement(level, column), m_member.levelField, level, m_daysMode });
        const QString where = QStringLiteral("FROM Applications WHERE %1 = %2")
                                  .arg(m_member.levelField, number(level));
        const int rows = scalar(QStringLiteral("SELECT COUNT(*) ") + where).toInt();
        const int distinct = scalar(
            QStringLiteral("SELECT COUNT(*) FROM (SELECT DISTINCT %1 %2)").arg(column, where))
                                 .toInt();
        m_datesMessage.clear();
        if (rows > 1 && distinct < rows)
            m_datesMessage = m_daysMode ? text::daysDifferent : text::datesDifferent;
    } catch (const RuntimeError& e) {
        report(e, Routine::Check_Dates);
    }
}

// --- Closing ----------------------------------------------------------------

void EventEditor::cmdOK_Click()
{
    try {
        const RuntimeError pending = m_screen.commitEventEdit();
        if (pending.number() != 0)
            throw pending;
        database::Transaction transaction;
        m_scratch.writeBack(m_daysMode);
        if (m_member.okDropsBackups)
            m_scratch.dropBackups();
        transaction.commit();
        state().FileSaved = false;
        m_closedByButton = true;
        m_screen.closeWindow();
    } catch (const RuntimeError& e) {
        if (refusedEntry(e))
            msgBox(m_member.ruleRefused, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
        if (e.number() == err::RowNotStored) {
            m_rowInError = true;
            msgBox(text::invalidEntry, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
        }
        report(e, Routine::cmdOK_Click);
    }
}

void EventEditor::cmdCancel_Click()
{
    m_closedByButton = true;
    m_screen.closeWindow();
    try {
        restoreTables();
    } catch (const RuntimeError& e) {
        report(e, Routine::cmdCancel_Click);
    }
}

// Cancel's order: the relation off, the tables back from the backups, the
// treatments back to the levels they held at opening, the relation on.
void EventEditor::restoreTables()
{
    database::Transaction transaction;
    if (database::relationExists(m_member.relationName))
        database::deleteRelation(m_member.relationName);
    m_scratch.restore(state().NewLevelCreated);
    QSqlQuery rows = select(QStringLiteral("SELECT rowid FROM Treatments ORDER BY rowid"));
    std::vector<qint64> ids;
    while (rows.next())
        ids.push_back(rows.value(0).toLongLong());
    for (size_t i = 0; i < ids.size() && i < m_treatmentLevels.size(); ++i)
        exec(
            QStringLiteral("UPDATE Treatments SET %1 = ? WHERE rowid = ?").arg(m_member.levelField),
            { m_treatmentLevels[i], ids[i] });
    database::createRelation({ m_member.relationName, m_member.levelTable, m_member.levelField,
        QStringLiteral("Treatments"), m_member.levelField });
    transaction.commit();
}

void EventEditor::Form_Unload()
{
    unloadEditor(m_closedByButton, *formNamed(m_member.formName), [this] { cmdOK_Click(); });
}

void EventEditor::escapePressed()
{
    if (escapeConfirmed())
        cmdCancel_Click();
}

// --- Codes ------------------------------------------------------------------

QString EventEditor::MyIRRCode(int list, const QString& description) const
{
    return m_scratch.code(list, description);
}

QString EventEditor::MyIRRDescription(int list, const QString& code) const
{
    return m_scratch.description(list, code);
}

} // namespace quillon::editors
