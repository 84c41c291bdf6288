#pragma once

#include <QDialog>

class QProgressBar;

namespace quillon {

// The wait window: a progress bar and nothing else, shown during long jobs.
class frmWait final : public QDialog {
    Q_OBJECT
public:
    explicit frmWait(QWidget* parent = nullptr);
    // Moves the bar and lets the window system repaint.
    void setPercent(int percent);

private:
    QProgressBar* m_prgLoad;
};

} // namespace quillon
