#pragma once

#include <QDialog>

class QCheckBox;

namespace quillon {

// The notice shown before a new file when the installation asks for it: when
// the internal database needs a refresh. Closing it lets a refresh go on;
// closed with "Don't show this message again." ticked it turns itself off.
class frmStart_New final : public QDialog {
    Q_OBJECT
public:
    explicit frmStart_New(QWidget* parent = nullptr);

    bool dontShowAgain() const;

    void cmdClose_Click();

protected:
    void done(int result) override;

private:
    QCheckBox* m_dontShow;
};

} // namespace quillon
