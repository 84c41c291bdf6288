#pragma once

#include "app/SystemInfo.h"

#include <QDialog>

#include <vector>

namespace quillon {

// About Quillon: the version and makers, then the system information — the
// folders and files in use — each value selectable, and a button that copies
// all of it for a support request.
class AboutDialog final : public QDialog {
    Q_OBJECT
public:
    explicit AboutDialog(QWidget* parent = nullptr);

    // The information as shown, one "label: value" a line.
    QString informationText() const;
    void copyToClipboard();

private:
    std::vector<SystemInfoLine> m_lines;
};

} // namespace quillon
