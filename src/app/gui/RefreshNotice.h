#pragma once

#include <QString>

class QBoxLayout;
class QCheckBox;
class QWidget;

namespace quillon {

// The body shared by the two notices that explain when the internal database
// needs a refresh: an information icon, the reasons, and the box "Don't show
// this message again.". The third reason differs between the two notices.
// Adds the parts to `layout` and returns the check box.
QCheckBox* addRefreshNotice(QWidget* dialog, QBoxLayout* layout, const QString& thirdReason);

} // namespace quillon
