#include "app/AppState.h"
#include "app/gui/frmCreateDir.h"
#include "app/gui/frmSaveFile.h"
#include "app/gui/frmStartRefresh.h"
#include "app/gui/frmStart_New.h"
#include "database/Sql.h"
#include "support/QtPrinters.h"
#include "support/WorkDbFixture.h"

#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace quillon;

namespace {

class StartDialogsTest : public test::WorkDbTest {
protected:
    QByteArray switchFile(const char* name) const
    {
        QFile file(state().AppFolder + QLatin1String(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<absent>");
    }
    void writeSwitch(const char* name, const QByteArray& bytes)
    {
        QFile file(state().AppFolder + QLatin1String(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
};

template <typename T> T* child(QWidget& parent, const char* name)
{
    T* widget = parent.findChild<T*>(QLatin1String(name));
    EXPECT_NE(widget, nullptr) << name;
    return widget;
}

QStringList reasons(QWidget& dialog)
{
    QStringList lines;
    for (int i = 1; i <= 4; ++i)
        lines << child<QLabel>(dialog, QStringLiteral("lblReason%1").arg(i).toLatin1().constData())
                     ->text();
    return lines;
}

} // namespace

TEST_F(StartDialogsTest, NewFileNoticeWordsAndSwitch)
{
    state().RefreshGoOn = false;
    writeSwitch("DontShowNew.txt", "1\r\n");
    {
        frmStart_New notice;
        EXPECT_EQ(child<QLabel>(notice, "lblNotice")->text(),
            QStringLiteral("You need to refresh the information in the internal database by "
                           "selecting the REFRESH "
                           "menu option if you:"));
        EXPECT_EQ(reasons(notice),
            QStringList({ QStringLiteral("1. added new weather files,  "),
                QStringLiteral(" 2. added any new cultivar"),
                QStringLiteral(
                    " 3. changed directories in TERVA configuration menu (TERVAPRO.V46), or"),
                QStringLiteral(" 4. changed any codes in *.CDE files") }));
        EXPECT_EQ(child<QCheckBox>(notice, "chkDontShow")->text(),
            QStringLiteral("Don't show this message again."));
        // Closed without the box: the installation's switch stays.
        child<QPushButton>(notice, "cmdClose")->click();
    }
    EXPECT_TRUE(state().RefreshGoOn);
    EXPECT_EQ(switchFile("DontShowNew.txt"), QByteArray("1\r\n"));

    frmStart_New again;
    child<QCheckBox>(again, "chkDontShow")->setChecked(true);
    again.reject(); // the window's own close button
    EXPECT_EQ(switchFile("DontShowNew.txt").trimmed(), QByteArray("0"));
    EXPECT_EQ(switchFile("DontShowOption.txt"), QByteArray("<absent>"));
}

TEST_F(StartDialogsTest, RefreshNoticeOkGoesOnAndCancelStops)
{
    {
        frmStartRefresh notice;
        EXPECT_EQ(reasons(notice)[2],
            QStringLiteral(" 3. changed directories in TERVA configuration menu (affecting "
                           "TERVAPRO.V48), or"));
        child<QPushButton>(notice, "cmdOK")->click();
        EXPECT_TRUE(notice.refreshGoOn());
        EXPECT_TRUE(notice.saveQuestionPending());
        EXPECT_TRUE(state().RefreshGoOn);
    }
    EXPECT_EQ(switchFile("DontShowOption.txt"), QByteArray("<absent>"));

    frmStartRefresh cancelled;
    child<QCheckBox>(cancelled, "chkDontShow")->setChecked(true);
    child<QPushButton>(cancelled, "cmdCancel")->click();
    EXPECT_FALSE(cancelled.refreshGoOn());
    EXPECT_FALSE(cancelled.saveQuestionPending());
    EXPECT_FALSE(state().RefreshGoOn);
    EXPECT_EQ(switchFile("DontShowOption.txt").trimmed(), QByteArray("0"));

    // Esc counts as Cancel.
    state().RefreshGoOn = true;
    frmStartRefresh escaped;
    escaped.reject();
    EXPECT_FALSE(state().RefreshGoOn);
}

TEST_F(StartDialogsTest, SaveQuestionAnswersOneOrThree)
{
    frmSaveFile save;
    EXPECT_EQ(child<QLabel>(save, "lblSave")->text(),
        QStringLiteral("Please save your file prior to refreshing the database!"));
    EXPECT_EQ(child<QPushButton>(save, "cmdSave")->text(), QStringLiteral("Save and Refresh"));
    EXPECT_EQ(child<QPushButton>(save, "cmdCancel")->text(), QStringLiteral("Cancel"));
    child<QPushButton>(save, "cmdSave")->click();
    EXPECT_EQ(save.answer(), 1);
    EXPECT_EQ(state().RefreshAnswer, 1);

    frmSaveFile cancel;
    child<QPushButton>(cancel, "cmdCancel")->click();
    EXPECT_EQ(cancel.answer(), 3);
    EXPECT_EQ(state().RefreshAnswer, 3);

    state().RefreshAnswer = 1;
    frmSaveFile closed;
    closed.reject();
    EXPECT_EQ(state().RefreshAnswer, 3);
}

TEST_F(StartDialogsTest, CropFolderIsRefusedOrStoredTrimmedInCapitals)
{
    database::insertRow(QStringLiteral("CropLookup"),
        { { QStringLiteral("CODE"), QStringLiteral("MZ") },
            { QStringLiteral("Name"), QStringLiteral("Maize") } });
    frmCreateDir dialog(QStringLiteral("Maize"));
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Warning!"));
    QLineEdit* name = child<QLineEdit>(dialog, "txtFolder");
    for (const char* refused : { "  ", "a\\b", "don't", "a,b" }) {
        m_ui.clear();
        name->setText(QLatin1String(refused));
        dialog.cmdOK_Click();
        EXPECT_EQ(m_ui.messages.size(), 1u) << refused;
        EXPECT_EQ(dialog.result(), QDialog::Rejected) << refused;
    }
    EXPECT_EQ(test::rowsOf(QStringLiteral("SELECT TERVA_Folder FROM CropLookup")),
        QStringList { QStringLiteral("NULL") });

    m_ui.clear();
    name->setText(QStringLiteral("  corn fields "));
    child<QPushButton>(dialog, "cmdOK")->click();
    EXPECT_TRUE(m_ui.messages.empty());
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.folderName(), QStringLiteral("CORN FIELDS"));
    EXPECT_EQ(test::rowsOf(QStringLiteral("SELECT TERVA_Folder FROM CropLookup")),
        QStringList { QStringLiteral("CORN FIELDS") });
}
