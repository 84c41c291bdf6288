#pragma once

#include "editors/EventMember.h"
#include "editors/EventScreen.h"

#include <optional>

namespace quillon::editors {

// The level page of a member that keeps values of its own per level in the
// level table (the irrigation editor's efficiency, depth, threshold...): a
// box or combo per column, bound to the row of the level chosen in the level
// grid. A box's text is checked as the user leaves it and stored at once;
// Cancel restores the table from its backup like everything else.
class LevelPage {
public:
    LevelPage(const EventMember& member, EventScreen& screen);

    bool isEmpty() const { return m_member.levelPage.empty(); }
    // The entries of the combos.
    void load() const;
    // The level's values in the boxes.
    void show(int level) const;
    // The check of a box as the user leaves it: the number rules of the
    // member's page, with their messages (title "Error"). An empty box
    // becomes -99, which always passes. Returns false, having said why, when
    // the text is refused; otherwise the level's row takes the value.
    bool validate(int level, int field, const QString& text) const;
    // A combo's choice: the level's row takes its code.
    void choose(int level, int field, const QString& description) const;

private:
    // The value a box's text gives, or nothing when the text is refused.
    std::optional<QVariant> accepted(const LevelPageField& f, const QString& text) const;
    void store(int level, const LevelPageField& f, const QVariant& value) const;

    const EventMember& m_member;
    EventScreen& m_screen;
};

} // namespace quillon::editors
