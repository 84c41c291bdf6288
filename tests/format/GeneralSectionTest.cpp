#include "format/GeneralSection.h"
#include "app/AppState.h"
#include "database/Sql.h"
#include "support/QtPrinters.h"
#include "support/WorkDbFixture.h"

#include "SectionFileSupport.h"

#include <gtest/gtest.h>

using namespace quillon;
using namespace quillon::format;
using namespace quillon::test;
using namespace quillon::test::sections;

namespace {

class GeneralSection : public WorkDbTest {
protected:
    static std::map<QString, Reader> readers()
    {
        return {
            { QStringLiteral("*GEN"), [](LineCursor& c) { readGeneralSection(c, QString()); } },
            { QStringLiteral("@SIT"),
                [](LineCursor& c) { readGeneralSection(c, QStringLiteral("@SITE")); } },
            { QStringLiteral("@ PA"),
                [](LineCursor& c) { readGeneralSection(c, QStringLiteral("@ PAREA ")); } },
        };
    }
    static QStringList tables()
    {
        return { QStringLiteral("GeneralInfo"), QStringLiteral("PlotInfo") };
    }

    static QStringList plotRows()
    {
        return rowsOf(QStringLiteral(
            "SELECT PAREA, PRNO, PLEN, PLDR, PLSP, PLAY, HAREA, HRNO, HLEN, HARM FROM PlotInfo"));
    }
};

const QString plotHeader
    = QStringLiteral("@ PAREA  PRNO  PLEN  PLDR  PLSP  PLAY HAREA  HRNO  HLEN  HARM.........");
const QString plotLine
    = QStringLiteral("   20.0     4   5.0     2  75.0     R   4.5     2   3.0     C");

} // namespace

TEST_F(GeneralSection, ReadsTheGroupsOfTheBlock)
{
    LineCursor c = LineCursor::fromLines({
        QStringLiteral("*GENERAL"),
        QStringLiteral("line before any group"),
        QStringLiteral("@PEOPLE"),
        QStringLiteral("Ames J., Berg K."),
        QStringLiteral("a second people line is lost"),
        QStringLiteral("@ADDRESS"),
        QStringLiteral("  12 Long Road"),
        QStringLiteral("  ! a comment inside the block"),
        QStringLiteral("@SITE"),
        QStringLiteral("North plots, 12.5N"),
        plotHeader,
        plotLine,
        QStringLiteral("@NOTES"),
        QStringLiteral("one\tnote  with two blanks"),
        QStringLiteral("three   blanks"),
        QStringLiteral("*TREATMENTS"),
    });
    readGeneralSection(c, QString());

    EXPECT_EQ(c.i, 15);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT PEOPLE, ADDRESS, SITE FROM GeneralInfo")),
        QStringList { QStringLiteral("Ames J., Berg K.|  12 Long Road|North plots, 12.5N") });
    EXPECT_EQ(plotRows(), QStringList { QStringLiteral("20|4|5|2|75|R|4.5|2|3|C") });
    // The notes are cleaned on every call: the first line's pair of blanks
    // went with its own call, the three blanks of the last became two.
    EXPECT_EQ(
        state().comments.Notes, QStringLiteral("one note with two blanks\r\nthree  blanks\r\n"));
    EXPECT_EQ(
        state().comments.CommentsGeneral, QStringLiteral("\r\n ! a comment inside the block"));
    EXPECT_TRUE(m_ui.messages.empty());
}

TEST_F(GeneralSection, NotesAreCleanedAgainOnEveryLaterLine)
{
    LineCursor c = LineCursor::fromLines({ QStringLiteral("*GENERAL"), QStringLiteral("@NOTES"),
        QStringLiteral("a    b"), QStringLiteral("next"), QStringLiteral("x\x0b\x0c y") });
    readGeneralSection(c, QString());
    EXPECT_TRUE(c.atEnd());
    // Four blanks: two after their own line, one after the next; the vertical
    // tab, form feed and blank of the last line are three blanks, then two.
    EXPECT_EQ(state().comments.Notes, QStringLiteral("a b\r\nnext\r\nx  y\r\n"));
}

TEST_F(GeneralSection, PlotColumnsThatFailTheirTestStayEmpty)
{
    // Negative or non-numeric numbers are left empty; the layout and method
    // are text and pass unless their leading number is negative.
    LineCursor c = LineCursor::fromLines({ plotHeader,
        QStringLiteral("  -99.0   abc  12.5     2   -99   -99   4.5     2   3.0 Hand, 2 rows")
            + QString() });
    readGeneralSection(c, QStringLiteral("@ PAREA "));
    EXPECT_EQ(plotRows(),
        QStringList { QStringLiteral("NULL|NULL|12.5|2|NULL|NULL|4.5|2|3|Hand, 2 rows") });

    // Each further line under the plot header makes one more row.
    c = LineCursor::fromLines({ plotHeader, plotLine, plotLine });
    database::exec(QStringLiteral("DELETE FROM PlotInfo"));
    readGeneralSection(c, QStringLiteral("@ PAREA "));
    EXPECT_EQ(plotRows().size(), 2);
    EXPECT_TRUE(m_ui.messages.empty());
}

TEST_F(GeneralSection, GroupsOutsideTheBlock)
{
    // Without *GENERAL the dispatch sees only the site and the plot header;
    // the site group ends at the next "@" line, which the dispatch takes up.
    dispatch({ QStringLiteral("@PEOPLE"), QStringLiteral("Never read"), QStringLiteral("@SITE"),
                 QStringLiteral("Valley farm"), QStringLiteral("second site line ignored"),
                 plotHeader, plotLine, QStringLiteral("@NOTES"),
                 QStringLiteral("read under the plot group's loop") },
        readers());
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT PEOPLE, ADDRESS, SITE FROM GeneralInfo")),
        QStringList { QStringLiteral("||Valley farm") });
    EXPECT_EQ(plotRows().size(), 1);
    EXPECT_EQ(state().comments.Notes, QStringLiteral("read under the plot group's loop\r\n"));

    // A later block of the same file goes on from what the first stored.
    LineCursor c = LineCursor::fromLines(
        { QStringLiteral("*GENERAL"), QStringLiteral("@PEOPLE"), QStringLiteral("Cole M.") });
    readGeneralSection(c, QString());
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT PEOPLE, ADDRESS, SITE FROM GeneralInfo")),
        QStringList { QStringLiteral("Cole M.||Valley farm") });
}

TEST_F(GeneralSection, OverlongLinesAreCutWithAWarning)
{
    const QString words
        = QStringLiteral("word ").repeated(14) + QStringLiteral("xy"); // 72 characters
    const QString people
        = QStringLiteral("P").repeated(150) + QLatin1Char(' ') + QStringLiteral("Q").repeated(60);
    const QString blankFirst = QLatin1Char(' ') + QStringLiteral("A").repeated(250);
    LineCursor c = LineCursor::fromLines({ QStringLiteral("*GENERAL"), QStringLiteral("@SITE"),
        words, QStringLiteral("@PEOPLE"), people, QStringLiteral("@ADDRESS"), blankFirst });
    readGeneralSection(c, QString());

    ASSERT_EQ(m_ui.messages.size(), 3u);
    EXPECT_EQ(m_ui.messages[0].text,
        QStringLiteral(
            "Line #3 'word word word ...' in @SITE\n\r exceeded maximum allowable length of 70 "
            "charaters. Some information will be lost."));
    EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Quillon"));
    EXPECT_EQ(m_ui.messages[1].text,
        QStringLiteral(
            "Line #5 'PPPPPPPPPPPPPPP...' in @PEOPLE\n\r exceeded maximum allowable length of 200 "
            "charaters. Some information will be lost."));
    EXPECT_TRUE(m_ui.messages[2].text.contains(
        QStringLiteral("in @ADDRESS\n\r exceeded maximum allowable length of 200")));

    QSqlQuery q = database::select(QStringLiteral("SELECT PEOPLE, ADDRESS, SITE FROM GeneralInfo"));
    ASSERT_TRUE(q.next());
    // Cut at the last blank inside the bound, so that no word is torn ...
    EXPECT_EQ(q.value(2).toString(), QStringLiteral("word ").repeated(13) + QStringLiteral("word"));
    EXPECT_EQ(q.value(0).toString(), QStringLiteral("P").repeated(150));
    // ... except for a line that begins with a blank: cut hard at 199.
    EXPECT_EQ(q.value(1).toString(), blankFirst.left(199));
    q.finish();

    // Seventy characters of site are within the bound.
    m_ui.clear();
    const QString seventy = QStringLiteral("S").repeated(70);
    c = LineCursor::fromLines({ QStringLiteral("@SITE"), seventy });
    readGeneralSection(c, QStringLiteral("@SITE"));
    EXPECT_TRUE(m_ui.messages.empty());
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT SITE FROM GeneralInfo")), QStringList { seventy });
}

TEST_F(GeneralSection, WritesTheBlock)
{
    database::exec(QStringLiteral(
        "INSERT INTO GeneralInfo (PEOPLE, ADDRESS, SITE) VALUES ('Ames J.', NULL, ' ')"));
    database::exec(QStringLiteral(
        "INSERT INTO PlotInfo (PAREA, PRNO, PLEN, PLDR, PLSP, PLAY, HAREA, HRNO, HLEN, HARM) "
        "VALUES (20, 4, 5, 2, 75, 'R', 4.5, 2, 3, 'C')"));
    database::exec(QStringLiteral("INSERT INTO PlotInfo (PAREA) VALUES (99)")); // never written
    state().comments.Notes = QStringLiteral("first note\r\nsecond\r\n");
    state().comments.CommentsGeneral = QStringLiteral("kept remark\r\n!with its own mark");

    EXPECT_EQ(written(writeGeneralSection),
        (QStringList { QString(), QStringLiteral("*GENERAL"), QStringLiteral("@PEOPLE"),
            QStringLiteral("Ames J."), QStringLiteral("@ADDRESS"), QStringLiteral("-99"),
            QStringLiteral("@SITE"), QStringLiteral("-99"), plotHeader, plotLine,
            QStringLiteral("@NOTES"), QStringLiteral("first note"), QStringLiteral("second"),
            QString(), QStringLiteral("!kept remark"), QStringLiteral("!with its own mark") }));
}

TEST_F(GeneralSection, EmptyDatabaseWritesTheGroupsWithoutTheSectionLine)
{
    EXPECT_EQ(written(writeGeneralSection),
        (QStringList { QString(), QStringLiteral("@PEOPLE"), QStringLiteral("-99"),
            QStringLiteral("@ADDRESS"), QStringLiteral("-99"), QStringLiteral("@SITE"),
            QStringLiteral("-99") }));

    // Plot data alone: the section line comes behind the groups.
    database::exec(QStringLiteral("INSERT INTO PlotInfo (PLAY, PRNO, PLSP) VALUES ('0', 0, NULL)"));
    const QStringList lines = written(writeGeneralSection);
    ASSERT_EQ(lines.size(), 10);
    EXPECT_EQ(lines[7], QStringLiteral("*GENERAL"));
    // "##" writes a zero as nothing; an empty plant spacing is "-99", not "-99.0".
    EXPECT_EQ(
        lines[9], QStringLiteral("  -99.0       -99.0   -99   -99       -99.0   -99 -99.0   -99"));
}

TEST_F(GeneralSection, WritingAndReadingBack)
{
    const QStringList input { QStringLiteral("*GENERAL"), QStringLiteral("@PEOPLE"),
        QStringLiteral("Ames J."), QStringLiteral("@ADDRESS"), QStringLiteral("12 Long Road"),
        QStringLiteral("@SITE"), QStringLiteral("North"), QStringLiteral("! remark"), plotHeader,
        plotLine, QStringLiteral("@NOTES"), QStringLiteral("a note") };
    const TwoSaves saves = saveTwice(input, tables(), readers(), writeGeneralSection);
    EXPECT_EQ(saves.first, saves.second);
    EXPECT_EQ(
        saves.first.mid(1, 12), input.mid(0, 7) + input.mid(8, 4) + QStringList { QString() });

    // From an empty database the site alone comes back on the first re-read,
    // then "-99" in all three groups: the reader knows no missing value there.
    const TwoSaves empty = saveTwice({}, tables(), readers(), writeGeneralSection);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT PEOPLE, ADDRESS, SITE FROM GeneralInfo")),
        QStringList { QStringLiteral("||-99") });
    clearSection(tables());
    dispatch(empty.second, readers());
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT PEOPLE, ADDRESS, SITE FROM GeneralInfo")),
        QStringList { QStringLiteral("-99|-99|-99") });
}
