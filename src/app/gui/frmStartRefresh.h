#pragma once

#include <QDialog>

class QCheckBox;

namespace quillon {

// The notice shown before a refresh when the installation asks for it. OK
// lets the refresh go on and announces the save question; Cancel stops the
// refresh. Closed with "Don't show this message again." ticked it turns
// itself off.
class frmStartRefresh final : public QDialog {
    Q_OBJECT
public:
    explicit frmStartRefresh(QWidget* parent = nullptr);

    bool dontShowAgain() const;
    // Whether the refresh goes on (also kept in state().RefreshGoOn).
    bool refreshGoOn() const { return m_goOn; }
    // Whether the refresh announced its save question (OK was taken).
    bool saveQuestionPending() const { return m_saveQuestion; }

    void cmdOK_Click();
    void cmdCancel_Click();

protected:
    void done(int result) override;

private:
    QCheckBox* m_dontShow;
    bool m_goOn = false;
    bool m_saveQuestion = false;
};

} // namespace quillon
