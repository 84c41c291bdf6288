#pragma once

#include <QDialog>

namespace quillon {

// The start-up window: the version and the makers. Closed by OK or when the
// main window takes over.
class frmSplash final : public QDialog {
    Q_OBJECT
public:
    explicit frmSplash(QWidget* parent = nullptr);
};

} // namespace quillon
