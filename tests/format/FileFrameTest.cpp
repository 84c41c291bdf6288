#include "app/AppState.h"
#include "database/Sql.h"
#include "format/Cp1252.h"
#include "format/FileWriter.h"
#include "format/ReadFile.h"
#include "format/TextLines.h"
#include "format/WriteFile.h"
#include "support/QtPrinters.h"
#include "support/WorkDbFixture.h"

#include <QBuffer>
#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace quillon;
using namespace quillon::format;
using namespace quillon::test;

namespace {

class FileFrame : public WorkDbTest {
protected:
    // Reads crafted lines as the file `name` in the test's folder.
    void read(const QStringList& lines, const QString& name = QStringLiteral("QLNV2101.MZX"))
    {
        readExperimentLines(QDir::toNativeSeparators(path(name)), lines);
    }

    static QStringList written(const QString& fileName = QStringLiteral("QLNV2101.MZX"))
    {
        FileWriter w;
        writeExperiment(w, fileName);
        QStringList lines = fromCp1252(w.bytes()).split(QStringLiteral("\r\n"));
        EXPECT_EQ(lines.last(), QString()) << "the text doesn't end in CR LF";
        lines.removeLast();
        return lines;
    }

    static QStringList sectionLines(const QStringList& lines)
    {
        QStringList sections;
        for (const QString& line : lines) {
            if (line.startsWith(QLatin1Char('*')))
                sections << line;
        }
        return sections;
    }

    static QStringList expDetails()
    {
        return rowsOf(QStringLiteral("SELECT INSTE, SITEE, EXPTNO, CODE, ENAME FROM ExpDetails"));
    }
};

const QString treatmentsLine
    = QStringLiteral("*TREATMENTS                        -------------FACTOR LEVELS------------");
const QString treatmentsHeader
    = QStringLiteral("@N R O C TNAME.................... CU FL SA IC MP MI MF MR MC MT ME MH SM");
const QString treatmentOne
    = QStringLiteral(" 1 1 1 0 Rainfed                    1  0  0  0  0  0  0  0  0  1  0  1  0");
const QString cultivarsHeader = QStringLiteral("@C CR INGENO CNAME");
// The general block the writer puts into every file, even an empty one.
const QStringList emptyGeneral { QString(), QStringLiteral("@PEOPLE"), QStringLiteral("-99"),
    QStringLiteral("@ADDRESS"), QStringLiteral("-99"), QStringLiteral("@SITE"),
    QStringLiteral("-99") };

} // namespace

TEST_F(FileFrame, IdentityComesFromTheFileNameAndTheTitleFromTheExpLine)
{
    read({ QStringLiteral("*EXP.DETAILS: QLNV2101MZ Rates for qlnv2101mzx and QLNV2101 MZ") });
    EXPECT_EQ(expDetails(), QStringList { QStringLiteral("QL|NV|2101|MZ|RATES FOR  AND") });
    EXPECT_TRUE(m_ui.messages.empty());

    // The title keeps 70 characters; the identity of the line is ignored.
    database::exec(QStringLiteral("DELETE FROM ExpDetails"));
    read({ QStringLiteral("*EXP.DETAILS: XXYY9999ZZ ") + QString(80, QLatin1Char('t')) },
        QStringLiteral("ABCD0012.whx"));
    EXPECT_EQ(expDetails(),
        QStringList {
            QStringLiteral("AB|CD|0012|WH|XXYY9999ZZ ") + QString(58, QLatin1Char('T')) });
}

TEST_F(FileFrame, ANameOfTheWrongLengthIsReadWithAWarning)
{
    struct Case {
        QString name;
        QString row;
    };
    const Case cases[] = {
        // Nine characters without the dot: the number column holds "21MZ",
        // which is no number, and the crop code is what is left.
        { QStringLiteral("QLNV21.MZX"), QStringLiteral("QL|NV|0|X|TRIAL") },
        // Thirteen: the positions are taken as they stand.
        { QStringLiteral("QLNV2101AB.MZX"), QStringLiteral("QL|NV|2101|AB|TRIAL") },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name.toStdString());
        database::exec(QStringLiteral("DELETE FROM ExpDetails"));
        m_ui.clear();
        read({ QStringLiteral("*EXP.DETAILS: trial") }, c.name);
        ASSERT_EQ(m_ui.messages.size(), 1u);
        EXPECT_EQ(m_ui.messages[0].text,
            QStringLiteral("Name of the file ") + QDir::toNativeSeparators(path(c.name))
                + QStringLiteral(" has wrong format."));
        EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Error"));
        EXPECT_EQ(m_ui.messages[0].icon, MsgIcon::Critical);
        EXPECT_EQ(expDetails(), QStringList { c.row });
    }
}

TEST_F(FileFrame, LinesOfOneCharacterAndTheClosingMarkVanish)
{
    read({
        QStringLiteral("*GENERAL"),
        QStringLiteral("@NOTES"),
        QStringLiteral(" first"),
        QStringLiteral("x"),
        QStringLiteral("   y   "),
        QStringLiteral("xy"),
        treatmentsLine,
        treatmentsHeader,
        treatmentOne,
        QString(QChar(0x1A)),
    });
    EXPECT_EQ(state().comments.Notes, QStringLiteral(" first\r\nxy\r\n"));
    // Had the closing mark reached the treatment reader, it would have been
    // a line of its own.
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT TRTNO, TITLET FROM Treatments")),
        QStringList { QStringLiteral("1|Rainfed") });
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
}

TEST_F(FileFrame, KeysAreExactAndUnknownSectionsArePassedLineByLine)
{
    read({
        // Keys are case-sensitive: this section and its lines are passed by.
        QStringLiteral("*Treatments"),
        treatmentsHeader,
        treatmentOne,
        // An unknown section: its lines are tried against the keys one by
        // one, so that a plot group inside it is read as the plot line.
        QStringLiteral("*OBSERVED DATA"),
        QStringLiteral("@ PAREA  PRNO  PLEN  PLDR  PLSP  PLAY HAREA  HRNO  HLEN  HARM........."),
        QStringLiteral("   54.7     6  12.0    90   0.0   -99  18.2     2  12.0  Hand"),
        // A section with no header line loses its first data line.
        QStringLiteral("*CULTIVARS"),
        QStringLiteral(" 1 MZ QL0003 Northfield 105"),
        QStringLiteral(" 2 MZ QL0004 Prairie 115"),
    });
    EXPECT_EQ(database::rowCount(QStringLiteral("Treatments")), 0);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT PAREA, PRNO, HARM FROM PlotInfo")),
        QStringList { QStringLiteral("54.7|6|Hand") });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNCU, CNAME FROM Cultivars")),
        QStringList { QStringLiteral("2|Prairie 115") });
}

TEST_F(FileFrame, CommentsOutsideSectionsGoToTheEndOfTheFile)
{
    read({
        QStringLiteral("! before everything"),
        QStringLiteral("*EXP.DETAILS: QLNV2101MZ TRIAL"),
        QStringLiteral("! behind the experiment line"),
        QStringLiteral("*CULTIVARS"),
        cultivarsHeader,
        QStringLiteral(" 1 MZ QL0003 Northfield 105"),
        QStringLiteral("  ! inside the cultivars"),
        QStringLiteral("*OBSERVED DATA"),
        QStringLiteral("  !between sections"),
        QStringLiteral("*SIMULATION CONTROLS"),
        QStringLiteral("! behind the simulation line"),
    });
    EXPECT_EQ(state().comments.CommentsGeneral, QStringLiteral("\r\n behind the experiment line"));
    EXPECT_EQ(state().comments.CommentsCultivars, QStringLiteral("\r\n ! inside the cultivars"));
    EXPECT_EQ(state().comments.CommentsSimulation,
        QStringLiteral(
            "\r\n before everything\r\n !between sections\r\n behind the simulation line"));

    state().comments.stripLeadingLineBreaks();
    const QStringList lines = written();
    ASSERT_GE(lines.size(), 6);
    EXPECT_EQ(lines.mid(lines.size() - 6),
        (QStringList { QString(), QString(), QStringLiteral("! before everything"),
            QStringLiteral("! !between sections"), QStringLiteral("! behind the simulation line"),
            QString(QChar(0x1A)) }));
}

TEST_F(FileFrame, WritesTheSectionsInTheirOrderWhateverTheFileHad)
{
    read({
        QStringLiteral("*EXP.DETAILS: QLNV2101MZ ORDER"),
        QStringLiteral("*HARVEST DETAILS"),
        QStringLiteral("@H HDATE  HSTG  HCOM HSIZE   HPC  HBPC HNAME"),
        QStringLiteral(" 1 21280 GS009     H     A 100.0   0.0 Grain harvest"),
        QStringLiteral("*TILLAGE AND ROTATIONS"),
        QStringLiteral("@T TDATE TIMPL  TDEP TNAME"),
        QStringLiteral(" 1 21100 TI002    20 Spring chisel"),
        QStringLiteral("*CULTIVARS"),
        cultivarsHeader,
        QStringLiteral(" 1 MZ QL0003 Northfield 105"),
        treatmentsLine,
        treatmentsHeader,
        treatmentOne,
    });
    state().comments.stripLeadingLineBreaks();
    EXPECT_EQ(written(),
        (QStringList { QStringLiteral("*EXP.DETAILS: QLNV2101MZ ORDER") } + emptyGeneral
            + QStringList {
                QString(),
                treatmentsLine,
                treatmentsHeader,
                treatmentOne,
                QString(),
                QStringLiteral("*CULTIVARS"),
                cultivarsHeader,
                QStringLiteral(" 1 MZ QL0003 Northfield 105"),
                QString(),
                QStringLiteral("*TILLAGE AND ROTATIONS"),
                QStringLiteral("@T TDATE TIMPL  TDEP TNAME"),
                QStringLiteral(" 1 21100 TI002    20 Spring chisel"),
                QString(),
                QStringLiteral("*HARVEST DETAILS"),
                QStringLiteral("@H HDATE  HSTG  HCOM HSIZE   HPC  HBPC HNAME"),
                QStringLiteral(" 1 21280 GS009     H     A 100.0   0.0 Grain harvest"),
                QString(QChar(0x1A)),
            }));
    EXPECT_EQ(m_ui.texts(), QStringList { QStringLiteral("No Field data available.") });
}

TEST_F(FileFrame, TheExperimentLineHasTwoForms)
{
    database::insertRow(QStringLiteral("ExpDetails"),
        { { QStringLiteral("INSTE"), QStringLiteral("AB") },
            { QStringLiteral("SITEE"), QStringLiteral("CD") },
            { QStringLiteral("EXPTNO"), QStringLiteral("1234") },
            { QStringLiteral("CODE"), QStringLiteral("WH") },
            { QStringLiteral("ENAME"), QStringLiteral("A TITLE") } });
    // An ordinary file is named by its own name, whatever the table holds.
    EXPECT_EQ(written(QStringLiteral("QLNV2101.MZX")).first(),
        QStringLiteral("*EXP.DETAILS: QLNV2101MZ A TITLE"));
    EXPECT_EQ(written(QStringLiteral("odd.name.sqx")).first(),
        QStringLiteral("*EXP.DETAILS: oddnamesq A TITLE"));
    // A temporary file gets the identity from the table.
    EXPECT_EQ(written(QStringLiteral("Temp.Txt")).first(),
        QStringLiteral("*EXP.DETAILS: ABCD1234WH A TITLE"));
}

TEST_F(FileFrame, AnEmptyExperimentIsItsLineTheGeneralBlockAndTheClosingMark)
{
    const QStringList lines = written();
    EXPECT_EQ(lines,
        (QStringList { QStringLiteral("*EXP.DETAILS: QLNV2101MZ ") } + emptyGeneral
            + QStringList { QString(QChar(0x1A)) }));
    EXPECT_EQ(m_ui.texts(),
        (QStringList { QStringLiteral("No Treatment data available."),
            QStringLiteral("No cultivar available."),
            QStringLiteral("No Field data available.") }));

    FileWriter w;
    writeExperiment(w, QStringLiteral("QLNV2101.MZX"));
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    ASSERT_TRUE(w.writeTo(buffer));
    EXPECT_EQ(buffer.data(),
        QByteArray(
            "*EXP.DETAILS: QLNV2101MZ \r\n\r\n@PEOPLE\r\n-99\r\n@ADDRESS\r\n-99\r\n@SITE\r\n-99\r\n"
            "\x1A\r\n"));
    // A device that takes nothing is told apart.
    QBuffer closed;
    EXPECT_FALSE(w.writeTo(closed));
}

TEST_F(FileFrame, AFailedSaveLeavesWhatWasThereAndSaysWhy)
{
    // A folder stands where the file should go.
    const QString target = path(QStringLiteral("QLNV2101.MZX"));
    ASSERT_TRUE(QDir().mkpath(target + QStringLiteral("/inside")));
    m_ui.clear();
    EXPECT_FALSE(writeFile(target));
    // The empty sections are told first; the failure comes last.
    ASSERT_EQ(m_ui.messages.size(), 4u) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
    EXPECT_TRUE(m_ui.messages[3].text.startsWith(
        QStringLiteral("Cannot open file ") + target + QStringLiteral(". ")));
    EXPECT_GT(m_ui.messages[3].text.size(),
        (QStringLiteral("Cannot open file ") + target + QStringLiteral(". ")).size())
        << "the message doesn't say why";
    EXPECT_TRUE(QFileInfo(target + QStringLiteral("/inside")).isDir());
    EXPECT_EQ(QDir(path(QString())).entryList(QDir::Files),
        QStringList { QStringLiteral("QUILLONTEMP2.mdb") })
        << "a temporary file was left behind";
}

TEST_F(FileFrame, AFolderThatCantBeWrittenToKeepsTheOldFile)
{
    const QString locked = path(QStringLiteral("locked"));
    ASSERT_TRUE(QDir().mkpath(locked));
    const QString old = locked + QStringLiteral("/QLNV2101.MZX");
    {
        QFile f(old);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("the old text\r\n");
    }
    QFile::setPermissions(locked, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    struct Unlock {
        QString folder;
        ~Unlock()
        {
            QFile::setPermissions(
                folder, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        }
    } unlock { locked };
    if (QFile(locked + QStringLiteral("/probe")).open(QIODevice::WriteOnly))
        GTEST_SKIP() << "permissions don't stop this user from writing";

    EXPECT_FALSE(writeFile(old));
    ASSERT_FALSE(m_ui.messages.empty());
    EXPECT_TRUE(m_ui.messages.back().text.startsWith(
        QStringLiteral("Cannot open file ") + old + QStringLiteral(". ")));
    QFile f(old);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(f.readAll(), QByteArray("the old text\r\n"));
}

TEST_F(FileFrame, ASavedFileReadsBack)
{
    read({ QStringLiteral("*EXP.DETAILS: QLNV2101MZ TRIAL"), QStringLiteral("*CULTIVARS"),
        cultivarsHeader, QStringLiteral(" 1 MZ QL0003 Northfield 105") });
    const QString target = path(QStringLiteral("QLNV2101.MZX"));
    ASSERT_TRUE(writeFile(target));
    EXPECT_EQ(m_ui.texts(),
        (QStringList { QStringLiteral("No Treatment data available."),
            QStringLiteral("No Field data available.") }));
    QStringList lines;
    ASSERT_TRUE(readLines(target, lines));
    EXPECT_EQ(lines,
        (QStringList { QStringLiteral("*EXP.DETAILS: QLNV2101MZ TRIAL") } + emptyGeneral
            + QStringList { QString(), QStringLiteral("*CULTIVARS"), cultivarsHeader,
                QStringLiteral(" 1 MZ QL0003 Northfield 105"), QString(QChar(0x1A)) }));
}
