#pragma once

#include <QPushButton>

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

} // namespace quillon
