#include "app/DocumentCommands.h"

#include "app/AppState.h"
#include "database/Sql.h"
#include "database/WorkDBCheck.h"
#include "database/WorkDatabase.h"
#include "support/FakeDocumentHost.h"
#include "support/SampleSuiteFixture.h"
#include "support/WorkDbFixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <map>

namespace quillon::test {
namespace {

using namespace document_text;

class DocumentCommandsTest : public SampleSuiteTest {
protected:
    void SetUp() override
    {
        SampleSuiteTest::SetUp();
        if (IsSkipped())
            return;
        m_host.setMenuState(MenuState::Empty);
    }

    // Opens a file through the open dialog and forgets the messages.
    void open(const QString& path)
    {
        m_ui.fileAnswers.push_back(path);
        mnuFileOpen_Click();
        ASSERT_TRUE(state().DocumentOpen) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
        m_ui.clear();
        m_host.calls.clear();
    }
    // A copy of the maize experiment under another name in the same folder.
    QString copyOfMaize(const QString& name)
    {
        const QString path = suitePath(QStringLiteral("Maize/") + name);
        EXPECT_TRUE(QFile::copy(maizeFile(), path));
        return path;
    }
    QString title() const
    {
        return rowsOf(QStringLiteral("SELECT ENAME FROM ExpDetails")).value(0);
    }

    FakeHost m_host;
};

TEST_F(DocumentCommandsTest, OpenBuildsTheDatabaseReadsTheFileAndShowsIdentification)
{
    // A cancelled dialog changes nothing.
    mnuFileOpen_Click();
    EXPECT_EQ(m_ui.fileDialogs,
        QStringList {
            QStringLiteral("open|PLOTBOOK (*.*x)|*.*x|") + state().DataFolder + QLatin1Char('|') });
    EXPECT_FALSE(state().DocumentOpen);
    EXPECT_FALSE(QFile::exists(state().WorkDBPath));

    m_ui.clear();
    m_ui.fileAnswers.push_back(maizeFile());
    mnuFileOpen_Click();
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
    const AppState& s = state();
    EXPECT_TRUE(s.DocumentOpen);
    EXPECT_EQ(s.ExpFilePath, maizeFile());
    EXPECT_EQ(m_host.menu, MenuState::DocumentOpen);
    EXPECT_EQ(m_host.calls, QStringList { QStringLiteral("identification") });
    ASSERT_TRUE(m_host.window);
    EXPECT_EQ(m_host.window->details.INSTE, QStringLiteral("QL"));
    // The lookups came from the suite, the experiment from the file, and the
    // initial conditions have their water and nitrogen rows.
    EXPECT_GT(database::rowCount(QStringLiteral("CropLookup")), 0);
    EXPECT_EQ(database::rowCount(QStringLiteral("Treatments")), 11);
    EXPECT_EQ(database::rowCount(QStringLiteral("IC_Water_Nitrogen")),
        database::rowCount(QStringLiteral("InitialConditions")));
}

TEST_F(DocumentCommandsTest, ExtensionGivesTheTypeInAnyCase)
{
    open(copyOfMaize(QStringLiteral("QLNV2101.sQx")));
    const AppState& s = state();
    EXPECT_TRUE(s.IsSequence);
    EXPECT_FALSE(s.IsExperimental || s.IsSeasonal || s.IsSpatial || s.IsForecast);
    ASSERT_TRUE(mnuFileClose_Click());

    open(copyOfMaize(QStringLiteral("QLNV2101.FCX")));
    EXPECT_TRUE(s.IsForecast);
    EXPECT_FALSE(s.IsExperimental || s.IsSequence || s.IsSeasonal || s.IsSpatial);
}

TEST_F(DocumentCommandsTest, CommandLineOpensTheFileOrStartsNew)
{
    AppState& s = state();
    s.OpenFromCommand = true;
    s.CommandFile = suitePath(QStringLiteral("Maize")) + QStringLiteral("/new");
    startFromCommandLine();
    EXPECT_TRUE(m_ui.fileDialogs.isEmpty());
    EXPECT_TRUE(s.IsNewFile);
    EXPECT_EQ(database::rowCount(QStringLiteral("Treatments")), 0);

    ASSERT_TRUE(mnuFileClose_Click());
    EXPECT_EQ(s.CommandLine, QStringLiteral("55"));
    EXPECT_FALSE(s.OpenFromCommand);

    s.OpenFromCommand = true;
    s.CommandFile = maizeFile();
    startFromCommandLine();
    EXPECT_TRUE(m_ui.fileDialogs.isEmpty());
    EXPECT_EQ(s.ExpFilePath, maizeFile());
    EXPECT_EQ(database::rowCount(QStringLiteral("Treatments")), 11);
}

TEST_F(DocumentCommandsTest, NegativeEnvironmentValueIsToldAfterOpenAndCleared)
{
    const QString path = copyOfMaize(QStringLiteral("QLNV2109.MZX"));
    QByteArray bytes = bytesOf(path);
    bytes.replace("A   2 A   2 M0.90", "A  -2 A   2 M0.90");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
    file.close();

    m_ui.fileAnswers.push_back(path);
    mnuFileOpen_Click();
    ASSERT_EQ(m_ui.texts(), QStringList { negativeEnvValue });
    EXPECT_EQ(m_ui.messages[0].title, errorTitle);
    EXPECT_FALSE(state().NegativeEnvValue);
}

TEST_F(DocumentCommandsTest, SaveWritesThenTheTablesHoldWhatTheFileHolds)
{
    const QString path = copyOfMaize(QStringLiteral("QLNV2102.MZX"));
    open(path);
    const QByteArray before = bytesOf(path);
    m_host.window->details.ENAME = QStringLiteral("MAIZE NITROGEN, SAVED AGAIN");
    // A change the file can't hold: a treatment name longer than its column
    // in the file is cut when it is written, and so when it is read back.
    database::exec(QStringLiteral("UPDATE Treatments SET TITLET = ? WHERE TRTNO = 1"),
        { QStringLiteral("Rainfed, no nitrogen at all, ever") });

    mnuFileSave_Click();
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
    const QByteArray after = bytesOf(path);
    EXPECT_NE(after, before);
    EXPECT_TRUE(after.startsWith("*EXP.DETAILS: QLNV2102MZ MAIZE NITROGEN, SAVED AGAIN"));
    EXPECT_EQ(title(), QStringLiteral("MAIZE NITROGEN, SAVED AGAIN"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT TITLET FROM Treatments WHERE TRTNO = 1")),
        QStringList { QStringLiteral("Rainfed, no nitrogen at a") });
    EXPECT_EQ(m_host.calls,
        (QStringList { QStringLiteral("closeEditors"), QStringLiteral("unload"),
            QStringLiteral("reopen:"), QStringLiteral("identification") }));
    const AppState& s = state();
    EXPECT_EQ(s.LastSavedPath, path);
    EXPECT_FALSE(s.FileSaved);
    EXPECT_EQ(m_host.menu, MenuState::DocumentOpen);

    // Saving again writes the same text: comments and all survive the
    // read-back.
    mnuFileSave_Click();
    EXPECT_EQ(bytesOf(path), after);
    EXPECT_TRUE(
        after.contains("\r\n! Plot sizes in m2 and m; the harvest area is the two centre rows."));

    // Once saved, Close asks nothing, even after further changes.
    ASSERT_TRUE(mnuFileClose_Click());
    EXPECT_TRUE(m_ui.messages.empty());
    EXPECT_EQ(m_host.menu, MenuState::Empty);
    EXPECT_EQ(database::rowCount(QStringLiteral("Treatments")), 0);
    EXPECT_TRUE(s.ExpFilePath.isEmpty());
    EXPECT_TRUE(s.FileSaved);
}

TEST_F(DocumentCommandsTest, SaveRefusesNamesAndIdentificationThatCantMakeAFile)
{
    const QString path = copyOfMaize(QStringLiteral("QLNV2103.MZX"));
    open(path);
    const QByteArray before = bytesOf(path);
    AppState& s = state();

    // A ".X" name lacks its crop: nothing else happens.
    s.ExpFilePath = suitePath(QStringLiteral("Maize/QLNV2103.X"));
    mnuFileSave_Click();
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].text, invalidFileName);
    EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Error"));
    EXPECT_EQ(m_ui.messages[0].icon, MsgIcon::Critical);
    EXPECT_TRUE(m_host.calls.isEmpty());
    EXPECT_FALSE(QFile::exists(s.ExpFilePath));
    s.ExpFilePath = path;

    // Missing identification stops the save and returns to the window.
    m_ui.clear();
    m_host.window->details.INSTE.clear();
    mnuFileSave_Click();
    EXPECT_EQ(m_ui.texts(),
        QStringList { QStringLiteral("Specify Institute Code before saving the file.") });
    m_host.window->details.INSTE = QStringLiteral("QL");
    m_host.window->cropCode.clear();
    m_ui.clear();
    mnuFileSave_Click();
    EXPECT_EQ(m_ui.texts(), QStringList { QStringLiteral("You must choose a crop name.") });
    EXPECT_EQ(bytesOf(path), before);

    // A renamed file is announced, and Cancel keeps it unsaved.
    m_host.window->cropCode = QStringLiteral("MZ");
    s.LastSavedPath = path;
    s.ExpFilePath = suitePath(QStringLiteral("Maize/QLNV2104.MZX"));
    m_ui.clear();
    m_ui.answers.push_back(MsgAnswer::Cancel);
    mnuFileSave_Click();
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].text,
        QStringLiteral("You have modified the file ") + path
            + QStringLiteral(" The file will be saved as ") + s.ExpFilePath + QLatin1Char('.'));
    EXPECT_EQ(m_ui.messages[0].buttons, MsgButtons::OKCancel);
    EXPECT_FALSE(QFile::exists(s.ExpFilePath));

    // A folder that doesn't exist leads to Save As.
    s.LastSavedPath.clear();
    s.ExpFilePath = suitePath(QStringLiteral("Nowhere/QLNV2104.MZX"));
    m_ui.clear();
    mnuFileSave_Click();
    EXPECT_EQ(m_ui.texts(), QStringList { folderMissing });
    ASSERT_EQ(m_ui.fileDialogs.size(), 1);
    EXPECT_TRUE(
        m_ui.fileDialogs[0].startsWith(QStringLiteral("save|") + saveAsFilter + QLatin1Char('|')));
    EXPECT_TRUE(m_ui.fileDialogs[0].endsWith(QStringLiteral("|QLNV2104.MZX")));
}

TEST_F(DocumentCommandsTest, FailedWriteLeavesTheOldFileAndTheDocument)
{
    const QString folder = suitePath(QStringLiteral("Locked"));
    ASSERT_TRUE(QDir().mkpath(folder));
    const QString path = folder + QStringLiteral("/QLNV2105.MZX");
    ASSERT_TRUE(QFile::copy(maizeFile(), path));
    open(path);
    const QByteArray before = bytesOf(path);
    // An immutable folder refuses the new file, also to the superuser.
    if (QProcess::execute(QStringLiteral("chattr"), { QStringLiteral("+i"), folder }) != 0)
        GTEST_SKIP() << "chattr is not available here";
    m_host.window->details.ENAME = QStringLiteral("NEVER WRITTEN");

    mnuFileSave_Click();
    QProcess::execute(QStringLiteral("chattr"), { QStringLiteral("-i"), folder });
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_TRUE(m_ui.messages[0].text.startsWith(
        QStringLiteral("Cannot open file ") + path + QStringLiteral(". ")));
    EXPECT_EQ(bytesOf(path), before);
    // The document wasn't read back: what the user had stays, and a Close
    // still asks.
    EXPECT_FALSE(m_host.calls.contains(QStringLiteral("unload")));
    EXPECT_EQ(title(), QStringLiteral("NEVER WRITTEN"));
    EXPECT_TRUE(state().LastSavedPath.isEmpty());
    state().FileSaved = false;
    m_ui.clear();
    m_ui.answers.push_back(MsgAnswer::Cancel);
    EXPECT_FALSE(mnuFileClose_Click());
    EXPECT_EQ(m_ui.texts(), QStringList { saveOnClose });
    EXPECT_TRUE(state().DocumentOpen);
}

TEST_F(DocumentCommandsTest, SaveAsWritesUnderTheNewNameAfterItsChecks)
{
    open(maizeFile());
    AppState& s = state();
    const QString copy = suitePath(QStringLiteral("Maize/QLNV2199.MZX"));

    m_ui.fileAnswers.push_back(suitePath(QStringLiteral("Maize/short.MZX")));
    mnuFileSaveAs_Click();
    EXPECT_EQ(m_ui.fileDialogs,
        QStringList { QStringLiteral("save|") + saveAsFilter + QLatin1Char('|')
            + suitePath(QStringLiteral("Maize")) + QStringLiteral("|QLNV2101.MZX") });
    EXPECT_EQ(m_ui.texts(), QStringList { QStringLiteral("short.MZX is wrong file name.") });

    // An existing file is only replaced on Yes.
    ASSERT_TRUE(QFile::copy(suitePath(QStringLiteral("TERVAPRO.V48")), copy));
    m_ui.clear();
    m_ui.fileAnswers.push_back(copy);
    m_ui.answers.push_back(MsgAnswer::No);
    mnuFileSaveAs_Click();
    EXPECT_EQ(m_ui.texts(), QStringList { overwrite });
    EXPECT_EQ(bytesOf(copy), bytesOf(suitePath(QStringLiteral("TERVAPRO.V48"))));
    EXPECT_EQ(s.ExpFilePath, maizeFile());

    m_ui.clear();
    m_host.calls.clear();
    m_ui.fileAnswers.push_back(copy);
    m_ui.answers.push_back(MsgAnswer::Yes);
    mnuFileSaveAs_Click();
    EXPECT_EQ(m_ui.texts(), QStringList { overwrite });
    EXPECT_TRUE(bytesOf(copy).startsWith("*EXP.DETAILS: QLNV2199MZ MAIZE NITROGEN RATE"));
    EXPECT_EQ(s.ExpFilePath, copy);
    EXPECT_TRUE(m_host.calls.contains(QStringLiteral("captions:") + copy));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT EXPTNO FROM ExpDetails")),
        QStringList { QStringLiteral("2199") });
}

TEST_F(DocumentCommandsTest, CloseAndExitAskAboutUnsavedChanges)
{
    open(maizeFile());
    AppState& s = state();
    s.FileSaved = false; // an editor stored a change

    m_ui.answers = { MsgAnswer::Cancel };
    EXPECT_FALSE(mnuFileExit_Click());
    EXPECT_EQ(m_ui.texts(), QStringList { saveOnExit });

    m_ui.clear();
    m_ui.answers = { MsgAnswer::Cancel };
    EXPECT_FALSE(mnuFileClose_Click());
    EXPECT_EQ(m_ui.texts(), QStringList { saveOnClose });
    EXPECT_TRUE(s.DocumentOpen);
    EXPECT_EQ(database::rowCount(QStringLiteral("Treatments")), 11);

    m_ui.clear();
    m_ui.answers = { MsgAnswer::No };
    const QByteArray before = bytesOf(maizeFile());
    EXPECT_TRUE(mnuFileExit_Click());
    EXPECT_EQ(bytesOf(maizeFile()), before);

    // Yes on Close writes the file (with the window's title) and closes.
    m_ui.clear();
    m_ui.answers = { MsgAnswer::Yes };
    m_host.window->details.ENAME = QStringLiteral("WRITTEN ON CLOSE");
    EXPECT_TRUE(mnuFileClose_Click());
    EXPECT_TRUE(bytesOf(maizeFile()).startsWith("*EXP.DETAILS: QLNV2101MZ WRITTEN ON CLOSE"));
    EXPECT_FALSE(s.DocumentOpen);
    EXPECT_TRUE(mnuFileExit_Click());
}

TEST_F(DocumentCommandsTest, RefreshRebuildsTheDatabaseAndReopens)
{
    open(maizeFile());
    AppState& s = state();
    database::exec(QStringLiteral("DELETE FROM CropLookup WHERE CODE = 'WH'"));
    const int crops = database::rowCount(QStringLiteral("CropLookup"));

    // An unchanged document: no question, the database is built anew from
    // the suite and the file opened again without its dialog.
    mnuRefresh_Click();
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
    EXPECT_TRUE(m_ui.fileDialogs.isEmpty());
    EXPECT_EQ(database::rowCount(QStringLiteral("CropLookup")), crops + 1);
    EXPECT_EQ(s.ExpFilePath, maizeFile());
    EXPECT_EQ(database::rowCount(QStringLiteral("Treatments")), 11);
}

TEST_F(DocumentCommandsTest, RefreshOfANewDocument)
{
    mnuFileNew_Click();
    AppState& s = state();
    ASSERT_TRUE(s.IsNewFile);
    s.FileSaved = false;
    database::exec(QStringLiteral("DELETE FROM CropLookup WHERE CODE = 'WH'"));
    const int crops = database::rowCount(QStringLiteral("CropLookup"));

    // After New the refresh asks with frmSaveFile; Cancel changes nothing.
    m_host.saveFileAnswer = 3;
    mnuRefresh_Click();
    EXPECT_EQ(m_host.calls.filter(QStringLiteral("frmSaveFile")).size(), 1);
    EXPECT_EQ(s.RefreshAnswer, 3);
    EXPECT_EQ(database::rowCount(QStringLiteral("CropLookup")), crops);
    EXPECT_FALSE(s.SaveQuestionPending);

    // A document never saved and unchanged ends in New, not Open.
    s.FileSaved = true;
    m_host.calls.clear();
    mnuRefresh_Click();
    EXPECT_TRUE(m_ui.fileDialogs.isEmpty());
    EXPECT_TRUE(s.IsNewFile);
    EXPECT_EQ(database::rowCount(QStringLiteral("CropLookup")), crops + 1);
    EXPECT_EQ(m_host.calls.filter(QStringLiteral("identification")).size(), 1);
}

// The working database file of the document open now, as it stands on disk,
// and the offset of the page that holds the treatment table.
struct SoundDatabase {
    QByteArray bytes;
    qint64 treatmentsPage = 0;
};

SoundDatabase soundDatabase()
{
    const int page = database::scalar(QStringLiteral("PRAGMA page_size")).toInt();
    const int root = database::scalar(
        QStringLiteral("SELECT rootpage FROM sqlite_master WHERE name = 'Treatments'"))
                         .toInt();
    database::closeWorkDB();
    return { bytesOf(state().WorkDBPath), qint64(root - 1) * page };
}

// 4 KB of noise over the page at `offset`, as a disk fault leaves it.
QByteArray withNoise(QByteArray bytes, qint64 offset)
{
    quint32 seed = 2463534242u;
    for (qint64 i = offset; i < offset + 4096 && i < bytes.size(); ++i) {
        seed ^= seed << 13;
        seed ^= seed >> 17;
        seed ^= seed << 5;
        bytes[i] = char(seed);
    }
    return bytes;
}

// A working database for the next command: the bytes in a program folder of
// their own (the file is checked once per run and path).
void useWorkDatabase(const QString& folder, const QByteArray& bytes)
{
    QDir().mkpath(folder);
    QFile file(folder + QStringLiteral("/QUILLONTEMP2.mdb"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
    file.close();
    state().WorkDBPath = QDir::toNativeSeparators(file.fileName());
}

TEST_F(DocumentCommandsTest, DamagedWorkingDatabaseIsNamedAndEndsTheProgram)
{
    open(maizeFile());
    const SoundDatabase sound = soundDatabase();
    const struct {
        const char* name;
        QByteArray bytes;
    } cases[] = {
        { "noise in a page", withNoise(sound.bytes, sound.treatmentsPage) },
        { "cut in half", sound.bytes.left(sound.bytes.size() / 2) },
        { "not a database",
            QByteArray("Notes of the field team, not a database.\r\n").repeated(100) },
    };
    for (const auto& c : cases) {
        for (const bool onNew : { false, true }) {
            SCOPED_TRACE(std::string(c.name) + (onNew ? " on New" : " on Open"));
            useWorkDatabase(
                m_dir.filePath(QStringLiteral("%1-%2").arg(QLatin1String(c.name)).arg(onNew)),
                c.bytes);
            m_ui.clear();
            m_ui.fileAnswers.push_back(maizeFile());
            EXPECT_THROW(onNew ? mnuFileNew_Click() : mnuFileOpen_Click(), ProgramEnded);
            EXPECT_EQ(m_ui.texts(), QStringList { database::damagedWorkDatabase });
            database::closeWorkDB();
        }
        // quillon-cli stops the run with exit 2 and names the file.
        QProcess cli;
        cli.start(QStringLiteral(QUILLON_CLI),
            { QStringLiteral("view"), maizeFile(), QStringLiteral("--suite"), state().DataFolder,
                QStringLiteral("--app-dir"), QFileInfo(state().WorkDBPath).path() });
        ASSERT_TRUE(cli.waitForFinished(60000));
        EXPECT_EQ(cli.exitCode(), 2) << c.name;
        const QString errors = QString::fromLocal8Bit(cli.readAllStandardError());
        EXPECT_TRUE(errors.contains(database::damagedWorkDatabase)) << errors.toStdString();
        EXPECT_TRUE(errors.contains(state().WorkDBPath + QStringLiteral(" is damaged")))
            << errors.toStdString();
        EXPECT_TRUE(cli.readAllStandardOutput().isEmpty());
    }
}

TEST_F(DocumentCommandsTest, SoundOrEmptiedWorkingDatabaseOpensWithoutAWord)
{
    open(maizeFile());
    const SoundDatabase sound = soundDatabase();

    // A sound file opens; a page damaged after the run's check is met by the
    // next Open's cleaning, and is named as the culprit all the same.
    useWorkDatabase(m_dir.filePath(QStringLiteral("sound")), sound.bytes);
    m_ui.fileAnswers.push_back(maizeFile());
    mnuFileOpen_Click();
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(database::rowCount(QStringLiteral("Treatments")), 11);
    database::closeWorkDB();
    useWorkDatabase(
        m_dir.filePath(QStringLiteral("sound")), withNoise(sound.bytes, sound.treatmentsPage));
    m_ui.fileAnswers.push_back(maizeFile());
    EXPECT_THROW(mnuFileOpen_Click(), ProgramEnded);
    EXPECT_EQ(m_ui.texts(), QStringList { database::damagedWorkDatabase });
    database::closeWorkDB();

    // An empty profile table: deleted and built anew, on Open and on New.
    for (const bool onNew : { false, true }) {
        SCOPED_TRACE(onNew ? "New" : "Open");
        useWorkDatabase(m_dir.filePath(QStringLiteral("empty-%1").arg(onNew)), sound.bytes);
        ASSERT_TRUE(database::openWorkDB(state().WorkDBPath));
        database::exec(QStringLiteral("DELETE FROM TERVAPRO"));
        database::closeWorkDB();
        m_ui.clear();
        m_ui.fileAnswers.push_back(maizeFile());
        onNew ? mnuFileNew_Click() : mnuFileOpen_Click();
        EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
        EXPECT_TRUE(state().DocumentOpen);
        EXPECT_GT(database::rowCount(QStringLiteral("TERVAPRO")), 0);
        ASSERT_TRUE(mnuFileClose_Click());
        database::closeWorkDB();
    }
}

} // namespace
} // namespace quillon::test
