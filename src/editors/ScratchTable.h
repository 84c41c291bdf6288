#pragma once

#include "editors/EventMember.h"

#include <QHash>
#include <QVariant>

#include <optional>
#include <vector>

namespace quillon::editors {

// The tables an open event editor works on besides the member's own: the
// scratch table Applications, where the events stand with their codes spelt
// out and their dates as dates, and the backups BackUp, BackUp_Applications
// and BackUp2 that Cancel restores from. What goes from the member's tables
// into the scratch table, and back, is here.
class ScratchTable {
public:
    explicit ScratchTable(const EventMember& member);

    // Creates Applications, empty: the level, TheDate, DayAfterPlanting
    // when the member has management, then the member's columns.
    void create() const;
    // Whether the first event of the member's table gives a day number
    // (three characters or fewer) rather than a date code; nothing when
    // there are no events. Members without management have no days.
    std::optional<bool> firstEventInDays() const;
    // One row per event, in the table's order: a day number, or the date of
    // a date code; the descriptions of the codes.
    void fill(bool daysMode) const;
    // The columns' validation rules, put on once the table is filled so that
    // values read from the file are never refused.
    void setRules() const;
    // The events back into the member's table, in the file's form, sorted by
    // level and by the day or date of the mode.
    void writeBack(bool daysMode) const;

    // The copies of the level, event and management tables.
    void backUp() const;
    // Those tables back from the copies, which go; the scratch table goes
    // too. `dropNewLevel` takes away what the menu handler made, level 1 and
    // its event, as well.
    void restore(bool dropNewLevel) const;
    void dropBackups() const;

    // The scratch columns a copy of an event takes: the dates and the
    // member's columns.
    QStringList eventColumns() const;

    // Description to code and back through the code table of a list; an
    // unknown one gives "".
    QString code(int list, const QString& description) const;
    QString description(int list, const QString& code) const;

private:
    void loadCodes(int list) const;

    const EventMember& m_member;
    // The code tables of the lists, read once.
    mutable std::vector<std::optional<QHash<QString, QString>>> m_descriptions;
    mutable std::vector<std::optional<QHash<QString, QString>>> m_codes;
};

} // namespace quillon::editors
