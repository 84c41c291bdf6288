#include "app/AppState.h"
#include "app/gui/frmExpidentify.h"
#include "app/gui/frmMain.h"
#include "database/Sql.h"
#include "print/FileView.h"
#include "print/gui/frmView.h"
#include "support/SampleSuiteFixture.h"
#include "support/WorkDbFixture.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTimer>

#include <gtest/gtest.h>

namespace quillon::test {
namespace {

frmView* visibleView()
{
    for (QWidget* w : QApplication::topLevelWidgets()) {
        if (w->objectName() == QLatin1String("frmView") && w->isVisible())
            return static_cast<frmView*>(w);
    }
    return nullptr;
}

class MainWindowTest : public SampleSuiteTest {
protected:
    void trigger(const char* entry)
    {
        QAction* action = m_window.menuAction(QLatin1String(entry));
        ASSERT_NE(action, nullptr) << entry;
        ASSERT_TRUE(action->isEnabled()) << entry;
        action->trigger();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    bool enabled(const char* entry) const
    {
        return m_window.menuAction(QLatin1String(entry))->isEnabled();
    }
    QString expectNoMessages() const { return m_ui.texts().join(QLatin1Char('\n')); }
    // The background documents LoadNewDoc made.
    int backgrounds() const
    {
        int count = 0;
        for (QMdiSubWindow* child : m_window.mdiArea()->subWindowList())
            count += child->objectName() == QLatin1String("frmDocument");
        return count;
    }

    frmMain m_window;
};

TEST_F(MainWindowTest, OpenPreviewPrintSaveAsCloseAndExit)
{
    m_window.show();
    m_window.Form_Load();
    EXPECT_TRUE(enabled("mnuFileOpen"));
    EXPECT_TRUE(enabled("mnuFileExit"));
    EXPECT_FALSE(enabled("mnuFileSave"));
    EXPECT_FALSE(enabled("mnuViewCheck"));
    EXPECT_FALSE(enabled("mnuRefresh"));

    m_ui.fileAnswers.push_back(maizeFile());
    trigger("mnuFileOpen");
    EXPECT_TRUE(m_ui.messages.empty()) << expectNoMessages().toStdString();
    frmExpidentify* identification = m_window.identificationWindow();
    ASSERT_NE(identification, nullptr);
    EXPECT_TRUE(identification->isVisible());
    EXPECT_EQ(identification->parentWidget()->parentWidget()->parentWidget(), m_window.mdiArea());
    EXPECT_TRUE(identification->windowTitle().endsWith(QStringLiteral(" QLNV2101.MZX")));
    EXPECT_EQ(identification->experimentDetails().INSTE, QStringLiteral("QL"));
    for (const char* entry : { "mnuFileSave", "mnuEditFertilizer", "mnuRefresh2", "mnuViewCheck" })
        EXPECT_TRUE(enabled(entry)) << entry;
    for (const char* entry : { "mnuFileOpen", "mnuViewBugs", "mnuErrors" })
        EXPECT_FALSE(enabled(entry)) << entry;

    // Check Experiment shows its findings in the view.
    QString checkCaption;
    QTimer::singleShot(0, [&] {
        if (QWidget* modal = QApplication::activeModalWidget()) {
            checkCaption = modal->windowTitle();
            modal->close();
        }
    });
    trigger("mnuViewCheck");
    EXPECT_EQ(checkCaption, QStringLiteral("View Errors")) << expectNoMessages().toStdString();
    EXPECT_TRUE(QFile::exists(state().AppFolder + QStringLiteral("Errors.txt")));
    m_ui.clear();

    // The preview shows the text Save would write.
    trigger("mnuFilePrintPreview");
    frmView* view = visibleView();
    ASSERT_NE(view, nullptr);
    EXPECT_TRUE(
        view->text().startsWith(QStringLiteral("*EXP.DETAILS: QLNV2101MZ MAIZE NITROGEN RATE")));
    view->cmdExit_Click();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(visibleView(), nullptr);

    // Printing from the menu leaves no window behind.
    const QString pdf = m_dir.filePath(QStringLiteral("maize.pdf"));
    m_ui.printAnswers.push_back({ true, pdf, QString() });
    trigger("mnuPrint");
    EXPECT_EQ(bytesOf(pdf, 5), QByteArray("%PDF-"));
    EXPECT_EQ(visibleView(), nullptr);
    EXPECT_FALSE(QFile::exists(print::ViewFilePath()));

    // Save As writes the new file, reads it back and renames the window.
    const QString copy = suitePath(QStringLiteral("Maize/QLNV2102.MZX"));
    m_ui.fileAnswers.push_back(copy);
    trigger("mnuFileSaveAs");
    EXPECT_TRUE(m_ui.messages.empty()) << expectNoMessages().toStdString();
    EXPECT_EQ(bytesOf(copy, 24), QByteArray("*EXP.DETAILS: QLNV2102MZ"));
    ASSERT_NE(m_window.identificationWindow(), nullptr);
    EXPECT_TRUE(
        m_window.identificationWindow()->windowTitle().endsWith(QStringLiteral(" QLNV2102.MZX")));
    EXPECT_EQ(m_window.identificationWindow()->experimentDetails().EXPTNO, QStringLiteral("2102"));

    // Saved, so Close asks nothing and the menus go back to the empty state.
    trigger("mnuFileClose");
    EXPECT_TRUE(m_ui.messages.empty()) << expectNoMessages().toStdString();
    EXPECT_EQ(m_window.identificationWindow(), nullptr);
    EXPECT_TRUE(enabled("mnuFileOpen"));
    EXPECT_FALSE(enabled("mnuFileSave"));
    EXPECT_EQ(database::rowCount(QStringLiteral("Treatments")), 0);

    trigger("mnuFileExit");
    EXPECT_FALSE(m_window.isVisible());
    EXPECT_TRUE(m_ui.messages.empty()) << expectNoMessages().toStdString();
}

TEST_F(MainWindowTest, ClosingWithUnsavedChangesAsksAndCancelKeepsTheDocument)
{
    m_window.show();
    m_window.Form_Load();
    m_ui.fileAnswers.push_back(maizeFile());
    trigger("mnuFileOpen");
    state().FileSaved = false;

    m_ui.answers.push_back(MsgAnswer::Cancel);
    EXPECT_FALSE(m_window.close());
    EXPECT_EQ(m_ui.texts(),
        QStringList { QStringLiteral("Do you want to save the file before closing?") });
    EXPECT_TRUE(m_window.isVisible());
    ASSERT_NE(m_window.identificationWindow(), nullptr);
    EXPECT_EQ(m_window.mdiArea()->activeSubWindow()->widget(), m_window.identificationWindow());

    m_ui.answers.push_back(MsgAnswer::No);
    EXPECT_TRUE(m_window.close());
}

TEST_F(MainWindowTest, NewFromTheCommandLineComesBeforeTheEmptyState)
{
    // New runs first; then the menus of the empty state are set and the
    // background is made, behind the identification.
    state().NewFromCommand = true;
    m_window.show();
    m_window.Form_Load();
    EXPECT_TRUE(m_ui.messages.empty()) << expectNoMessages().toStdString();
    EXPECT_TRUE(state().IsNewFile);
    ASSERT_NE(m_window.identificationWindow(), nullptr);
    EXPECT_TRUE(m_window.identificationWindow()->isVisible());
    EXPECT_EQ(m_window.mdiArea()->activeSubWindow()->widget(), m_window.identificationWindow());
    EXPECT_EQ(backgrounds(), 1);
    EXPECT_TRUE(enabled("mnuFileOpen"));
    EXPECT_FALSE(enabled("mnuFileSave"));
    EXPECT_FALSE(enabled("mnuRefresh"));
    m_window.close();
}

TEST_F(MainWindowTest, OpenFromTheCommandLineKeepsTheMenusOfTheDocument)
{
    state().OpenFromCommand = true;
    state().CommandFile = maizeFile();
    m_window.show();
    m_window.Form_Load();
    EXPECT_TRUE(m_ui.messages.empty()) << expectNoMessages().toStdString();
    ASSERT_NE(m_window.identificationWindow(), nullptr);
    EXPECT_TRUE(enabled("mnuFileSave"));
    EXPECT_TRUE(enabled("mnuRefresh"));
    EXPECT_FALSE(enabled("mnuFileOpen"));
    EXPECT_EQ(backgrounds(), 0);
    m_window.close();
}

TEST_F(MainWindowTest, ChangesOnSaveReportsOnTheOpenDocumentAndFollowsItsLife)
{
    m_window.show();
    m_window.Form_Load();
    EXPECT_FALSE(enabled("mnuViewChanges"));
    m_ui.fileAnswers.push_back(maizeFile());
    trigger("mnuFileOpen");
    trigger("mnuViewChanges");
    frmView* view = visibleView();
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->windowTitle(), QStringLiteral("Changes on Save"));
    EXPECT_EQ(view->text(), maizeFile() + QStringLiteral("\n  No values change."));

    // The file changed on disk since it was opened: Refresh compares anew.
    QFile file(maizeFile());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray bytes = file.readAll();
    file.close();
    bytes.replace(" 1    15   1.3  2.10", " 1    15  1.34  2.10");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
    file.close();
    view->cmdRefresh_Click();
    EXPECT_EQ(view->text(),
        maizeFile()
            + QStringLiteral(
                "\n  value changed: *SOIL ANALYSIS, @A SABL, level 1, SADM: \"1.34\" -> \"1.3\" "
                "(line 53 -> 53)"));

    // Closing the document closes the report and the entry.
    m_ui.answers.push_back(MsgAnswer::No);
    trigger("mnuFileClose");
    EXPECT_EQ(visibleView(), nullptr);
    EXPECT_FALSE(enabled("mnuViewChanges"));

    // A new document has no file to compare with.
    QTimer::singleShot(0, [] {
        if (QWidget* modal = QApplication::activeModalWidget())
            modal->close();
    });
    trigger("mnuFileNew");
    trigger("mnuViewChanges");
    ASSERT_NE(visibleView(), nullptr);
    EXPECT_TRUE(
        visibleView()->text().startsWith(QStringLiteral("This experiment has never been saved")));
    EXPECT_TRUE(m_ui.messages.empty()) << expectNoMessages().toStdString();
}

} // namespace
} // namespace quillon::test
