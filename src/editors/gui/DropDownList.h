#pragma once

#include <QListWidget>

#include <functional>

class QAbstractItemView;

namespace quillon {

// The drop-down list of an editor's grid: a popup under a cell that offers
// the entries a cell may take. A click or Enter chooses an entry, Esc or a
// click elsewhere closes it. While it is open it keeps every key, so that the
// editor's own keys (Enter saves) don't act behind it.
class DropDownList final : public QListWidget {
public:
    explicit DropDownList(QWidget* parent);

    // Opens under a cell of a grid with `selected` chosen (-1 for none). With
    // `alignRight` the list ends at the cell's right edge rather than
    // beginning at its left one, for cells near the right of the window.
    void showUnder(QAbstractItemView* view, const QModelIndex& cell, const QStringList& items,
        int selected, bool alignRight);

    // An entry was chosen; the list has closed.
    std::function<void(const QString& entry)> onChosen;
    // The list closed, by a choice or otherwise.
    std::function<void()> onHidden;

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void choose(QListWidgetItem* item);
};

} // namespace quillon
