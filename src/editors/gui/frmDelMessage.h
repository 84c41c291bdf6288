#pragma once

#include <QDialog>

namespace quillon {

// The warning that a level can't be deleted: the treatments that use it are
// listed, and the one button closes the window.
class frmDelMessage final : public QDialog {
    Q_OBJECT
public:
    // `levelName` is the factor's word ("Fertilizer"); `treatments` the
    // numbers of the treatments that use the level.
    frmDelMessage(
        const QString& levelName, const QStringList& treatments, QWidget* parent = nullptr);
};

} // namespace quillon
