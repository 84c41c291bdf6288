#include "support/FakeEventScreen.h"

namespace quillon::test {

using namespace editors;

FakeEventScreen::FakeEventScreen(const EventMember& m)
    : member(m)
{
}

void FakeEventScreen::attach(EventEditor& e)
{
    editor = &e;
    levels.setHooks(e.levelGridHooks());
    events.setHooks(e.eventGridHooks());
}

void FakeEventScreen::showLevels(const QString& statement, LevelRow row)
{
    const int kept = levelRow;
    levels.setQuery(statement, member.levelTable);
    const int count = levels.rowCount();
    levelRow = row == LevelRow::First ? 0
        : row == LevelRow::Last       ? count - 1
                                      : std::min(kept, count - 1);
    if (count == 0)
        levelRow = -1;
}

void FakeEventScreen::showEvents(const EventGridSetup& setup)
{
    events.setQuery(setup.statement, QStringLiteral("Applications"));
    events.setNewRows(true, { { setup.levelField, setup.level } });
    daysMode = setup.daysMode;
    eventRow = 0;
}

void FakeEventScreen::refreshEvents()
{
    const qint64 id = currentEventRow();
    events.requery();
    eventRow = std::max(0, events.rowOf(id));
}

void FakeEventScreen::goToEvent(qint64 row)
{
    eventRow = row == 0 ? 0 : std::max(0, events.rowOf(row));
}

void FakeEventScreen::goToLastEvent()
{
    eventRow = std::max(0, events.rowCount() - 2);
}

void FakeEventScreen::setEventCell(int column, const QString& text)
{
    events.store(eventRow, column, text, true);
}

void FakeEventScreen::setListItems(int list, const QStringList& items)
{
    if (int(lists.size()) <= list)
        lists.resize(size_t(list) + 1);
    lists[size_t(list)] = items;
}

void FakeEventScreen::closeWindow()
{
    if (closed)
        return;
    closed = true;
    editor->Form_Unload();
}

void FakeEventScreen::selectLevel(int level)
{
    for (int row = 0; row < levels.rowCount(); ++row) {
        if (levels.value(row, 0).toInt() == level)
            levelRow = row;
    }
    editor->DBGrid1_RowColChange();
}

RuntimeError FakeEventScreen::typeLevel(int column, const QString& text)
{
    return levels.store(levelRow, column, text);
}

RuntimeError FakeEventScreen::typeEvent(int row, int column, const QString& text)
{
    eventRow = row;
    return events.store(row, column, text);
}

QStringList FakeEventScreen::eventRows() const
{
    QStringList rows;
    for (int row = 0; row < events.rowCount(); ++row) {
        if (events.isNewRow(row))
            continue;
        QStringList cells;
        for (int column = 0; column < events.columnCount(); ++column)
            cells << events.text(row, column);
        rows << cells.join(QLatin1Char('|'));
    }
    return rows;
}

} // namespace quillon::test
