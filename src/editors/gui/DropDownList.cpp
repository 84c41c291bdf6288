#include "editors/gui/DropDownList.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QScreen>
#include <QScrollBar>

#include <algorithm>

namespace quillon {

namespace {

// At most this many entries show without scrolling.
constexpr int visibleEntries = 12;

} // namespace

DropDownList::DropDownList(QWidget* parent)
    : QListWidget(parent)
{
    setWindowFlags(Qt::Popup);
    // The click that closes the list is not passed on to the grid: a second
    // click on a cell closes its list rather than opening it again.
    setAttribute(Qt::WA_NoMouseReplay);
    setSelectionMode(QAbstractItemView::SingleSelection);
    connect(this, &QListWidget::itemClicked, this, &DropDownList::choose);
}

void DropDownList::showUnder(QAbstractItemView* view, const QModelIndex& cell,
    const QStringList& items, int selected, bool alignRight)
{
    clear();
    addItems(items);
    const QRect rect = view->visualRect(cell);
    const int frame = 2 * frameWidth();
    const int width = std::max(
        rect.width(), sizeHintForColumn(0) + frame + verticalScrollBar()->sizeHint().width());
    const int rows = std::min<int>(int(items.size()), visibleEntries);
    const int height = rows * std::max(sizeHintForRow(0), 1) + frame;
    QPoint at = view->viewport()->mapToGlobal(alignRight
            ? QPoint(rect.right() + 1 - width, rect.bottom() + 1)
            : rect.bottomLeft() + QPoint(0, 1));
    // Keep the list on the screen: above the cell when there is no room below.
    if (const QScreen* screen = view->screen()) {
        const QRect area = screen->availableGeometry();
        at.setX(std::clamp(at.x(), area.left(), std::max(area.left(), area.right() - width)));
        if (at.y() + height > area.bottom())
            at.setY(view->viewport()->mapToGlobal(rect.topLeft()).y() - height);
    }
    setGeometry(QRect(at, QSize(width, height)));
    setCurrentRow(selected);
    show();
    setFocus(Qt::PopupFocusReason);
}

bool DropDownList::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    return QListWidget::event(event);
}

void DropDownList::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        choose(currentItem());
        return;
    case Qt::Key_Escape:
        hide();
        return;
    default:
        QListWidget::keyPressEvent(event);
    }
}

void DropDownList::hideEvent(QHideEvent* event)
{
    QListWidget::hideEvent(event);
    if (onHidden)
        onHidden();
}

void DropDownList::choose(QListWidgetItem* item)
{
    if (!item)
        return;
    const QString entry = item->text();
    hide();
    if (onChosen)
        onChosen(entry);
}

} // namespace quillon
