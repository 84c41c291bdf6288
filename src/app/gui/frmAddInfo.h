#pragma once

#include "app/ExpIdentity.h"

#include <QDialog>

#include <map>

class QLineEdit;

namespace quillon {

class FocusValidation;

// The experiment's additional information: who ran it, where, and the plot
// details. Takes the values to show and gives back what the user entered;
// the identification window keeps them and stores them.
class frmAddInfo final : public QDialog {
    Q_OBJECT
public:
    explicit frmAddInfo(QWidget* parent = nullptr);

    void setDetails(const PlotDetails& plot, const GeneralDetails& general);
    PlotDetails plotDetails() const;
    GeneralDetails generalDetails() const;

    // The shared rule of the numeric plot boxes, run when the focus leaves
    // one: an empty box takes its default, a refused entry gives
    // "Invalid entry." and keeps the focus. True when the entry stands.
    bool validatePlotBox(const QString& control);

    void cmdOK_Click();

private:
    QLineEdit* box(const QString& control) const;

    std::map<QString, QLineEdit*> m_boxes;
    QLineEdit* m_txtPEOPLE;
    QLineEdit* m_txtADDRESS;
    QLineEdit* m_txtSITE;
    FocusValidation* m_validation;
};

} // namespace quillon
