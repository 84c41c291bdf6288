#pragma once

#include "editors/EventEditor.h"
#include "editors/SqlGridModel.h"

namespace quillon::test {

// The window of an event editor without widgets: its two grids are the
// record sources alone, with a current row each, and what the routines ask
// to be shown is kept for the test to look at.
class FakeEventScreen final : public editors::EventScreen {
public:
    explicit FakeEventScreen(const editors::EventMember& member);
    // Ties the grids to the editor's routines.
    void attach(editors::EventEditor& editor);

    QString levelCellText() const override { return levels.text(levelRow, 0); }
    QString eventCellText(int column) const override { return events.text(eventRow, column); }
    qint64 currentEventRow() const override { return events.rowId(eventRow); }
    RuntimeError commitEventEdit() override { return pending; }
    void showLevels(const QString& statement, editors::LevelRow row) override;
    void showEvents(const editors::EventGridSetup& setup) override;
    void refreshEvents() override;
    void goToEvent(qint64 row) override;
    void goToLastEvent() override;
    void setEventCell(int column, const QString& text) override;
    void setLevelCaptions(const QStringList& captions) override { levelCaptions = captions; }
    void setEventCaptions(const QStringList& captions, const std::vector<bool>&) override
    {
        eventCaptions = captions;
    }
    void setCaption(const QString& text) override { caption = text; }
    void setLevelNumberText(const QString& text) override { levelNumber = text; }
    void showYears(const editors::YearControls& shown) override { years = shown; }
    void setManagementChoices(const QStringList& choices) override { managementChoices = choices; }
    void showManagement(const QString& description) override { management = description; }
    void setListItems(int list, const QStringList& items) override;
    void showList(int list, const QString&) override { listShown = list; }
    void hideLists() override { listShown = -1; }
    void setDeleteEnabled(bool, bool) override { }
    void closeWindow() override;

    // The user's moves: a level chosen in DBGrid1, a cell typed in.
    void selectLevel(int level);
    RuntimeError typeLevel(int column, const QString& text);
    RuntimeError typeEvent(int row, int column, const QString& text);
    // The rows of the event grid as text, "date|cell|cell" each.
    QStringList eventRows() const;

    const editors::EventMember& member;
    editors::EventEditor* editor = nullptr;
    editors::SqlGridModel levels;
    editors::SqlGridModel events;
    int levelRow = -1;
    int eventRow = -1;
    bool daysMode = false;
    bool closed = false;
    RuntimeError pending { 0, {} };
    QStringList levelCaptions;
    QStringList eventCaptions;
    QString caption;
    QString levelNumber;
    editors::YearControls years;
    QStringList managementChoices;
    QString management;
    std::vector<QStringList> lists;
    int listShown = -1;
};

} // namespace quillon::test
