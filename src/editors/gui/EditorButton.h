#pragma once

#include <QBoxLayout>
#include <QPushButton>

#include <initializer_list>

namespace quillon {

// A button of an editor window, known by its control name. It never takes
// Enter for itself: Enter is the window's OK.
inline QPushButton* editorButton(
    const QString& name, const QString& caption, const QString& hint, QWidget* parent)
{
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(name);
    b->setToolTip(hint);
    b->setAutoDefault(false);
    return b;
}

// A row of an editor window: `left` at its left edge, `right` at its right.
inline QHBoxLayout* widgetRow(
    std::initializer_list<QWidget*> left, std::initializer_list<QWidget*> right = {})
{
    auto* row = new QHBoxLayout;
    for (QWidget* w : left)
        row->addWidget(w);
    row->addStretch();
    for (QWidget* w : right)
        row->addWidget(w);
    return row;
}

} // namespace quillon
