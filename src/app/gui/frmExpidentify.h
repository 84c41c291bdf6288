#pragma once

#include "app/ExpIdentity.h"
#include "app/UserInterface.h"

#include <QWidget>

class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace quillon {

class FocusValidation;

// The first window of every document: the new-file wizard and the view of
// what identifies an open file. Type, crop, institute, site, year and number
// make the file's name; the title and the additional information
// (frmAddInfo) go to the file's head. It reads ExpDetails, PlotInfo and
// GeneralInfo when it loads and writes them back when it unloads; Save and
// Close read its values through the getters.
class frmExpidentify final : public QWidget {
    Q_OBJECT
public:
    explicit frmExpidentify(QWidget* parent = nullptr);

    // Fills the lists and the boxes from the tables and the state.
    void Form_Load();
    // Writes the boxes back to the three tables, adding rows where there are
    // none. Runs once, also when the window is closed.
    void Form_Unload();

    // What the boxes hold now. CODE is the crop's code for an experimental
    // file and the type's code otherwise.
    ExperimentDetails experimentDetails() const;
    QString cropCode() const { return m_crop.code; }
    QString cropName() const { return m_crop.name; }
    FileType fileType() const;
    PlotDetails plotDetails() const { return m_plot; }
    GeneralDetails generalDetails() const { return m_general; }

    // Before a preview: pads institute, site and number in their boxes with
    // leading blanks to 2, 2 and 4 characters, and returns the padded values.
    ExperimentDetails padForView();

    // The checks the boxes run when the focus leaves them. Each shows its
    // message and keeps the focus when it refuses; true when the entry stands.
    bool txtINSTE_Validate();
    bool TxtSitee_Validate();
    bool TxtEXPTNO_Validate();
    bool txtYear_Validate();
    bool txtNumber_Validate();

    void DBCombo1_Click();
    void cmbType_Click();
    void cmdNext_Click();
    void cmdAddInfo_Click();

signals:
    // The file's name was made anew: the path is in state().ExpFilePath too.
    // Other windows rebuild their captions with captionWithFile().
    void fileNameChanged(const QString& path);
    // Next was taken and its checks passed: the treatment editor is wanted.
    void nextRequested();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildLayout();
    void setFileName();
    void composeExperimentNumber();
    void refreshCaption();
    void showFileName();
    void showCropState();
    bool refuse(
        QLineEdit* box, const QString& message, MsgIcon icon, const QString& title = QString());
    // True when a box's check found nothing (`message` empty); refuses the
    // entry with the message otherwise.
    bool checked(QLineEdit* box, const QString& message);

    QComboBox* m_cmbType;
    QComboBox* m_DBCombo1;
    QLabel* m_lblCropNote;
    QFormLayout* m_typeForm = nullptr;
    QLineEdit* m_txtINSTE;
    QLineEdit* m_TxtSitee;
    QLineEdit* m_txtYear;
    QLineEdit* m_txtNumber;
    QLineEdit* m_TxtEXPTNO;
    QLineEdit* m_TxtENAME;
    QLabel* m_lblPleseEntExpNam;
    QLabel* m_lblFileName;
    QPushButton* m_cmdAddInfo;
    QPushButton* m_cmdNext;
    FocusValidation* m_validation;

    Crop m_crop;
    PlotDetails m_plot;
    GeneralDetails m_general;
    // Guards: filling or padding the boxes must not make a new file name.
    bool m_quiet = false;
    bool m_unloaded = false;
};

} // namespace quillon
