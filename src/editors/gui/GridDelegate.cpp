#include "editors/gui/GridDelegate.h"

#include "editors/SqlGridModel.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QRegularExpression>

namespace quillon {

GridDelegate::GridDelegate(editors::SqlGridModel& model, QObject* parent)
    : QStyledItemDelegate(parent)
    , m_model(model)
{
}

void GridDelegate::setListColumn(int column, bool list)
{
    m_listColumns[column] = list;
}

bool GridDelegate::isListColumn(int column) const
{
    const auto it = m_listColumns.find(column);
    return it != m_listColumns.end() && it->second;
}

void GridDelegate::setMaxLength(int column, int length)
{
    m_maxLengths[column] = length;
}

QWidget* GridDelegate::createEditor(
    QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const
{
    if (isListColumn(index.column()))
        return nullptr;
    auto* edit = new QLineEdit(parent);
    edit->setFrame(false);
    if (m_dateMask && index.column() == 0 && m_model.isDateColumn(0))
        edit->setInputMask(editors::dateInputMask());
    const auto length = m_maxLengths.find(index.column());
    if (length != m_maxLengths.end())
        edit->setMaxLength(length->second);
    edit->installEventFilter(const_cast<GridDelegate*>(this));
    m_open = edit;
    m_openIndex = index;
    return edit;
}

void GridDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    if (auto* edit = qobject_cast<QLineEdit*>(editor))
        edit->setText(m_model.editText(index.row(), index.column()));
}

void GridDelegate::setModelData(
    QWidget* editor, QAbstractItemModel*, const QModelIndex& index) const
{
    auto* edit = qobject_cast<QLineEdit*>(editor);
    if (!edit)
        return;
    QString text = edit->text();
    // An untouched mask gives its separators only.
    static const QRegularExpression nonDigit(QStringLiteral("[^0-9]"));
    if (!edit->inputMask().isEmpty() && QString(text).remove(nonDigit).isEmpty())
        text.clear();
    if (text == m_model.editText(index.row(), index.column()))
        return;
    m_lastStoreFailed = m_model.store(index.row(), index.column(), text).number() != 0;
}

void GridDelegate::destroyEditor(QWidget* editor, const QModelIndex& index) const
{
    if (editor == m_open)
        m_open = nullptr;
    QStyledItemDelegate::destroyEditor(editor, index);
}

bool GridDelegate::commitOpenEditor()
{
    if (!m_open)
        return true;
    QWidget* editor = m_open;
    m_lastStoreFailed = false;
    if (m_openIndex.isValid())
        setModelData(editor, &m_model, m_openIndex);
    emit closeEditor(editor, QAbstractItemDelegate::NoHint);
    return !m_lastStoreFailed;
}

void GridDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyledItemDelegate::paint(painter, option, index);
    if (!isListColumn(index.column()))
        return;
    // The cell's button: a small arrow at its right edge.
    const int size = qMin(option.rect.height() - 6, 9);
    const QPoint centre(option.rect.right() - size, option.rect.center().y());
    const QPolygon arrow({ QPoint(centre.x() - size / 2, centre.y() - size / 4),
        QPoint(centre.x() + size / 2, centre.y() - size / 4),
        QPoint(centre.x(), centre.y() + size / 4) });
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(option.palette.color(QPalette::Text));
    painter->drawPolygon(arrow);
    painter->restore();
}

bool GridDelegate::eventFilter(QObject* watched, QEvent* event)
{
    // The keys the window takes for OK and Cancel store or drop the cell.
    if (event->type() == QEvent::ShortcutOverride) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter
            || key->key() == Qt::Key_Escape) {
            event->accept();
            return true;
        }
    }
    return QStyledItemDelegate::eventFilter(watched, event);
}

} // namespace quillon
