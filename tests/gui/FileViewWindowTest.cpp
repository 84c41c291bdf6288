#include "app/AppState.h"
#include "print/FileView.h"
#include "print/gui/frmView.h"
#include "support/QtPrinters.h"
#include "support/WorkDbFixture.h"

#include <QApplication>
#include <QFile>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

using namespace quillon;

namespace {

class FileViewWindowTest : public test::WorkDbTest {
protected:
    // A writer standing in for the experiment writer: the text says how
    // often it ran.
    print::Writer countingWriter()
    {
        return [this](const QString& path) {
            ++m_runs;
            QFile file(path);
            if (!file.open(QIODevice::WriteOnly))
                return false;
            file.write("*EXP.DETAILS: ABCD0101MZ RUN " + QByteArray::number(m_runs)
                + "\r\n\r\n*TREATMENTS\r\n\x1a\r\n");
            return true;
        };
    }
    int m_runs = 0;
};

int visibleViews()
{
    int count = 0;
    for (QWidget* w : QApplication::topLevelWidgets())
        count += w->objectName() == QLatin1String("frmView") && w->isVisible();
    return count;
}

} // namespace

TEST_F(FileViewWindowTest, PreviewShowsWriterTextRefreshesAndCleansUp)
{
    const QString scratch = print::ViewFilePath();
    int prepared = 0;
    frmView* view = ShowFileView(nullptr, countingWriter(), [&] { ++prepared; });
    ASSERT_NE(view, nullptr);
    EXPECT_TRUE(print::ViewOpen());
    EXPECT_EQ(prepared, 1);
    EXPECT_TRUE(QFile::exists(scratch));
    EXPECT_EQ(view->text(), QStringLiteral("*EXP.DETAILS: ABCD0101MZ RUN 1\n\n*TREATMENTS"));
    auto* pane = view->findChild<QPlainTextEdit*>(QStringLiteral("RhTBView"));
    ASSERT_NE(pane, nullptr);
    EXPECT_TRUE(pane->font().fixedPitch() || QFontInfo(pane->font()).fixedPitch());

    // Loading again shows the same window and writes nothing.
    EXPECT_EQ(ShowFileView(nullptr, countingWriter(), [&] { ++prepared; }), view);
    EXPECT_EQ(m_runs, 1);

    view->findChild<QPushButton*>(QStringLiteral("cmdRefresh"))->click();
    EXPECT_EQ(m_runs, 2);
    EXPECT_TRUE(view->text().contains(QStringLiteral("RUN 2")));
    EXPECT_EQ(prepared, 1); // only the load prepares

    view->findChild<QPushButton*>(QStringLiteral("cmdExit"))->click();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(print::ViewOpen());
    EXPECT_FALSE(QFile::exists(scratch));
    EXPECT_EQ(visibleViews(), 0);
}

TEST_F(FileViewWindowTest, PrintGoesToAPdfFileAndCancelPrintsNothing)
{
    const QString pdf = path(QStringLiteral("out.pdf"));
    frmView view(countingWriter());
    view.Form_Load();

    m_ui.printAnswers.push_back({}); // cancelled
    view.Command1_Click();
    EXPECT_FALSE(QFile::exists(pdf));

    m_ui.printAnswers.push_back({ true, pdf, QString() });
    view.Command1_Click();
    EXPECT_EQ(test::bytesOf(pdf, 5), QByteArray("%PDF-"));
    EXPECT_TRUE(m_ui.messages.empty());
}

TEST_F(FileViewWindowTest, MenuPrintLeavesNoWindowAndNoScratchFile)
{
    const QString pdf = path(QStringLiteral("menu.pdf"));
    m_ui.printAnswers.push_back({ true, pdf, QString() });
    int prepared = 0;
    printFileView(nullptr, countingWriter(), [&] { ++prepared; });
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(prepared, 1);
    EXPECT_EQ(m_runs, 1);
    EXPECT_EQ(test::bytesOf(pdf, 5), QByteArray("%PDF-"));
    EXPECT_FALSE(print::ViewOpen());
    EXPECT_FALSE(QFile::exists(print::ViewFilePath()));
    EXPECT_EQ(visibleViews(), 0);

    // Cancel: nothing is written or printed.
    printFileView(nullptr, countingWriter(), [&] { ++prepared; });
    EXPECT_EQ(m_runs, 1);

    // With a preview open, its text is printed and the preview goes too.
    frmView* view = ShowFileView(nullptr, countingWriter(), {});
    EXPECT_EQ(m_runs, 2);
    const QString second = path(QStringLiteral("second.pdf"));
    m_ui.printAnswers.push_back({ true, second, QString() });
    printFileView(nullptr, countingWriter(), {});
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(m_runs, 2);
    EXPECT_EQ(test::bytesOf(second, 5), QByteArray("%PDF-"));
    EXPECT_EQ(visibleViews(), 0);
    EXPECT_FALSE(print::ViewOpen());
    (void)view;
}

TEST_F(FileViewWindowTest, ErrorsAreShownModallyFromTheirFile)
{
    const QString errors = path(QStringLiteral("Errors.txt"));
    {
        QFile file(errors);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("Treatment 1: no weather for 1997\r\n");
    }
    QString title;
    QString text;
    bool modal = false;
    QTimer::singleShot(0, [&] {
        auto* view = qobject_cast<frmView*>(QApplication::activeModalWidget());
        ASSERT_NE(view, nullptr);
        title = view->windowTitle();
        text = view->text();
        modal = view->isModal();
        view->cmdExit_Click();
    });
    showErrors(nullptr, errors);
    EXPECT_EQ(title, QStringLiteral("View Errors"));
    EXPECT_EQ(text, QStringLiteral("Treatment 1: no weather for 1997"));
    EXPECT_TRUE(modal);
    EXPECT_TRUE(QFile::exists(errors)); // the findings stay
    EXPECT_FALSE(print::ViewOpen());
}
