#include "app/AppState.h"
#include "app/CommandLine.h"
#include "app/DialogSwitches.h"
#include "app/LocaleSettings.h"
#include "app/StartUp.h"
#include "support/ScriptedUserInterface.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

using namespace quillon;

namespace {

QString sep() { return QString(QDir::separator()); }

AppState takeLine(const QString& line, const QString& previous = QString())
{
    AppState s;
    s.CommandLine = previous;
    s.DataFolder = QStringLiteral("suite");
    takeCommandLine(s, line);
    return s;
}

} // namespace

TEST(CommandLine, FieldsDecideWhatStarts)
{
    AppState none = takeLine(QString());
    EXPECT_FALSE(none.OpenFromCommand);
    EXPECT_FALSE(none.NewFromCommand);

    AppState one = takeLine(QStringLiteral(" /data/A "));
    EXPECT_TRUE(one.NewFromCommand);
    EXPECT_EQ(one.CommandFolder, QStringLiteral("/data/A"));

    AppState secondEmpty = takeLine(QStringLiteral("/data/A,"));
    EXPECT_TRUE(secondEmpty.NewFromCommand);
    EXPECT_FALSE(secondEmpty.OpenFromCommand);
    EXPECT_EQ(secondEmpty.CommandFolder, QStringLiteral("/data/A"));

    AppState open = takeLine(QStringLiteral("/data/A, /data/A/Maize , ABCD0101.MZX"));
    EXPECT_TRUE(open.OpenFromCommand);
    EXPECT_FALSE(open.NewFromCommand);
    EXPECT_EQ(open.CommandFile, QStringLiteral("/data/A/Maize") + sep() + QStringLiteral("ABCD0101.MZX"));
    EXPECT_EQ(open.CommandArgs.size(), 3);

    // "55" is what a Close leaves behind: the line is then taken as none.
    AppState used = takeLine(QStringLiteral("/data/A,/x,y"), QStringLiteral("55"));
    EXPECT_TRUE(used.CommandLine.isEmpty());
    EXPECT_FALSE(used.OpenFromCommand);
    // So is a start whose command line is that mark itself.
    const AppState fiftyFive = takeLine(QStringLiteral(" 55"));
    EXPECT_TRUE(fiftyFive.CommandLine.isEmpty());
    EXPECT_FALSE(fiftyFive.NewFromCommand || fiftyFive.OpenFromCommand);
    EXPECT_TRUE(takeLine(QStringLiteral("55,")).NewFromCommand);

    EXPECT_TRUE(namesNewFile(QStringLiteral("/data/A") + sep() + QStringLiteral("new")));
    EXPECT_TRUE(namesNewFile(sep() + QStringLiteral("NeW")));
    EXPECT_FALSE(namesNewFile(QStringLiteral("/data/ANEW")));
}

TEST(StartUp, MainRecordsTheLineSetsFoldersAndRefusesASecondInstance)
{
    QTemporaryDir dir;
    const QString app = dir.filePath(QStringLiteral("terva48/TOOLS/Quillon"));
    QDir().mkpath(app);
    qunsetenv("QUILLON_APP_DIR");
    test::ScriptedUserInterface ui;
    state() = AppState();

    const StartDecision first = Main(app, { QStringLiteral("/x/Exp,/x/Exp/Maize,ABCD0101.MZX") });
    EXPECT_TRUE(first.proceed);
    EXPECT_FALSE(first.showSplash);
    const AppState& s = state();
    EXPECT_TRUE(s.AppFolder.endsWith(QDir::separator()));
    EXPECT_EQ(s.WorkDBPath, s.AppFolder + QStringLiteral("QUILLONTEMP2.mdb"));
    EXPECT_EQ(s.DataFolder, QStringLiteral("/x/Exp")); // two or more fields: the command's folder
    QFile record(s.AppFolder + QStringLiteral("CommandQuillon.txt"));
    ASSERT_TRUE(record.open(QIODevice::ReadOnly));
    EXPECT_EQ(record.readAll(), QByteArray("/x/Exp,/x/Exp/Maize,ABCD0101.MZX\r\n"));
    record.close();

    const StartDecision second = Main(app, {});
    EXPECT_FALSE(second.proceed);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].text, QStringLiteral("Another instance of Quillon is already running!"));
    EXPECT_EQ(ui.messages[0].icon, MsgIcon::Critical);
    releaseInstanceLock();

    // Without a command line: the splash, and the suite found above the program.
    state() = AppState();
    const StartDecision third = Main(app, {});
    EXPECT_TRUE(third.proceed);
    EXPECT_TRUE(third.showSplash);
    EXPECT_EQ(QDir(state().DataFolder).dirName(), QStringLiteral("terva48"));
    releaseInstanceLock();

    // A first start with the used-up "55": the splash, nothing to start.
    state() = AppState();
    const StartDecision fourth = Main(app, { QStringLiteral("55") });
    EXPECT_TRUE(fourth.showSplash);
    EXPECT_FALSE(state().OpenFromCommand || state().NewFromCommand);
    releaseInstanceLock();
}

TEST(StartUp, DialogSwitchesAndLocale)
{
    QTemporaryDir dir;
    state().AppFolder = dir.path() + QDir::separator();
    EXPECT_FALSE(DontShowOptionRefresh()); // absent file
    QFile on(dir.filePath(QStringLiteral("DontShowOption.txt")));
    ASSERT_TRUE(on.open(QIODevice::WriteOnly));
    on.write("1\r\n");
    on.close();
    EXPECT_TRUE(DontShowOptionRefresh());
    DontShowOption_Remove();
    EXPECT_FALSE(DontShowOptionRefresh());
    DontShowNew_Remove();
    QFile written(dir.filePath(QStringLiteral("DontShowNew.txt")));
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.readAll().trimmed(), QByteArray("0"));
    EXPECT_FALSE(DontShowOptionNew());

    EXPECT_EQ(fourDigitYearFormat(QStringLiteral("M/d/yy")), QStringLiteral("M/d/yyyy"));
    EXPECT_EQ(fourDigitYearFormat(QStringLiteral("dd.MM.yyyy")), QStringLiteral("dd.MM.yyyy"));
    EXPECT_EQ(fourDigitYearFormat(QStringLiteral("d MMM")), QStringLiteral("M/d/yyyy"));
}

TEST(AppState, FileTypeFromTheExtension)
{
    AppState s;
    s.setTypeFromExtension(QStringLiteral("ABCD0101.SQX"));
    EXPECT_TRUE(s.IsSequence);
    EXPECT_FALSE(s.IsExperimental);
    s.setTypeFromExtension(QStringLiteral("ABCD0101.sNx"));
    EXPECT_TRUE(s.IsSeasonal);
    EXPECT_FALSE(s.IsSequence);
    s.setTypeFromExtension(QStringLiteral("ABCD0101.MZX"));
    EXPECT_TRUE(s.IsExperimental);
    EXPECT_FALSE(s.IsSeasonal || s.IsSequence || s.IsSpatial || s.IsForecast);

    CommentBuffers c;
    c.CommentsFields = QStringLiteral("\r\nline");
    c.CommentsSimulation = QStringLiteral("\r\nx\r\ny");
    c.stripLeadingLineBreaks();
    EXPECT_EQ(c.CommentsFields, QStringLiteral("line"));
    EXPECT_EQ(c.CommentsSimulation, QStringLiteral("x\r\ny"));
    EXPECT_EQ(c.CommentsGeneral, QString());
}
