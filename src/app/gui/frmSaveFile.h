#pragma once

#include <QDialog>

namespace quillon {

// Asks for a save before a refresh empties the working database. The answer
// is 1 for "Save and Refresh" and 3 for "Cancel" (also kept in
// state().RefreshAnswer).
class frmSaveFile final : public QDialog {
    Q_OBJECT
public:
    explicit frmSaveFile(QWidget* parent = nullptr);

    int answer() const { return m_answer; }

    void cmdSave_Click();
    void cmdCancel_Click();

protected:
    void done(int result) override;

private:
    int m_answer = 3;
};

} // namespace quillon
