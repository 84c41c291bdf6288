#pragma once

#include <QPointer>
#include <QStyledItemDelegate>

#include <functional>
#include <map>

namespace quillon {

namespace editors {
class SqlGridModel;
}

// The cell editors of an editor's grid: a date column takes its date through
// an input mask, a text column is cut to its length as it is typed, and a
// list column has no editor at all (its cells show a drop-down arrow and are
// filled from a list). Enter and Esc in an open cell belong to the cell:
// they store or drop what was typed instead of closing the window.
class GridDelegate final : public QStyledItemDelegate {
    Q_OBJECT
public:
    GridDelegate(editors::SqlGridModel& model, QObject* parent = nullptr);

    void setListColumn(int column, bool list);
    bool isListColumn(int column) const;
    void setMaxLength(int column, int length);
    // Whether the date column (column 0) takes its text through the mask.
    void setDateMask(bool masked) { m_dateMask = masked; }

    // Stores what an open cell editor holds. Returns false when there was
    // one and the value could not be stored.
    bool commitOpenEditor();

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(
        QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
    void destroyEditor(QWidget* editor, const QModelIndex& index) const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    editors::SqlGridModel& m_model;
    std::map<int, bool> m_listColumns;
    std::map<int, int> m_maxLengths;
    bool m_dateMask = false;
    mutable QPointer<QWidget> m_open;
    mutable QPersistentModelIndex m_openIndex;
    mutable bool m_lastStoreFailed = false;
};

} // namespace quillon
