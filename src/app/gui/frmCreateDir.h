#pragma once

#include <QDialog>

class QLineEdit;

namespace quillon {

// Asks for the name of a crop's folder under the data folder and records it
// as the crop's TERVA_Folder.
class frmCreateDir final : public QDialog {
    Q_OBJECT
public:
    explicit frmCreateDir(const QString& cropName, QWidget* parent = nullptr);

    // The folder name as stored: trimmed, in upper case. Empty until OK took it.
    QString folderName() const { return m_folder; }

    void cmdOK_Click();
    // Creating the folder on disk is left to Save; this stays empty.
    void Sub_CreateFolder();

private:
    QString m_cropName;
    QString m_folder;
    QLineEdit* m_txtFolder;
};

} // namespace quillon
