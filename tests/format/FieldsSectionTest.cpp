#include "format/FieldsSection.h"
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

const QString header1 = QStringLiteral(
    "@L ID_FIELD WSTA....  FLSA  FLOB  FLDT  FLDD  FLDS  FLST SLTX  SLDP  ID_SOIL    FLNAME");
const QString header2 = QStringLiteral(
    "@L ...........XCRD ...........YCRD .....ELEV .............AREA .SLEN .FLWR .SLAS FLHST FHDUR");
const QString field1 = QStringLiteral(
    " 1 IBWA0001 IBWA       0.0     0 DR000     0     0 00000 SIL    180  IBWA910001 Field one");
const QString field2 = QStringLiteral(
    " 2 IBWA0002 IBWA99     -99   -99   -99   -99   -99   -99 -99    -99         -99 -99");
const QString coords1 = QStringLiteral(
    " 1           -45.5           12.25       200               1.5    10 -99.0 -99.0   FH1   -99");
const QString coords2 = QStringLiteral(
    " 2       -99.00000       -99.00000    -99.00             -99.0 -99.0 -99.0 -99.0   -99   -99");

class FieldsSection : public WorkDbTest {
protected:
    static QStringList firstGroup()
    {
        return rowsOf(QStringLiteral(
            "SELECT LNFLD, FLDNAM, WSTA, SLOPE, FLOB, DFDRN, FLDD, SFDRN, FLST, SLTX, SLDP, "
            "SLNO, FLNAME FROM Fields ORDER BY LNFLD"));
    }
    static QStringList secondGroup()
    {
        return rowsOf(QStringLiteral("SELECT LNFLD, XCRD, YCRD, ELEV, AREA, SLEN, FLWR, SLAS, "
                                     "FLHST, FHDUR FROM Fields ORDER BY LNFLD"));
    }
};

} // namespace

TEST_F(FieldsSection, ReadsBothGroups)
{
    LineCursor c = LineCursor::fromLines({ QStringLiteral("*FIELDS"),
        QStringLiteral("! first remark"), header1, field1, QStringLiteral(" ! second"), field2,
        header2, coords1, coords2, QStringLiteral("*SOIL ANALYSIS") });
    readFieldsSection(c);
    EXPECT_EQ(c.i, 9);
    EXPECT_EQ(firstGroup(),
        (QStringList {
            QStringLiteral("1|IBWA0001|IBWA|0|0|DR000|0|0|00000|SIL|180|IBWA910001|Field one"),
            // "-99" comes back as NULL in every column but the name.
            QStringLiteral(
                "2|IBWA0002|IBWA99|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|-99") }));
    // Coordinates are missing only as -99 itself; the others at any negative.
    EXPECT_EQ(secondGroup(),
        (QStringList { QStringLiteral("1|-45.5|12.25|200|1.5|10|NULL|NULL|FH1|NULL"),
            QStringLiteral("2|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL") }));
    EXPECT_EQ(state().comments.CommentsFields, QStringLiteral("\r\n first remark\r\n! second"));
    EXPECT_TRUE(m_ui.messages.empty());
}

TEST_F(FieldsSection, NameReadTwiceMovesTheLineToANewLevel)
{
    FieldRead(QStringLiteral(" 1 ABCD0001 ABCD"), 1, 1);
    FieldRead(QStringLiteral(" 3 ABCD0002 ABCD"), 1, 2);
    FieldRead(QStringLiteral(" 1 ABCD0001 WXYZ"), 1, 3); // ABCD0002 is taken: ABCD0003, level 4
    FieldRead(QStringLiteral(" 5 FIELDX   EFGH"), 1, 4);
    FieldRead(QStringLiteral(" 6 FIELDX   IJKL"), 1, 5); // no digit at the end
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNFLD, FLDNAM, WSTA FROM Fields ORDER BY LNFLD")),
        (QStringList { QStringLiteral("1|ABCD0001|ABCD"), QStringLiteral("3|ABCD0002|ABCD"),
            QStringLiteral("4|ABCD0003|WXYZ"), QStringLiteral("5|FIELDX|EFGH"),
            QStringLiteral("6|XXXX0001|IJKL") }));
    ASSERT_EQ(m_ui.messages.size(), 2u);
    EXPECT_EQ(m_ui.messages[0].text,
        QStringLiteral("Duplicate data in 'Fields'. The data in level 1 will be read as '4   "
                       "ABCD0003 .......'"));
    EXPECT_EQ(m_ui.messages[0].icon, MsgIcon::Exclamation);
    EXPECT_EQ(m_ui.messages[1].text,
        QStringLiteral("Duplicate data in 'Fields'. The data in level 6 will be read as '6   "
                       "XXXX0001 .......'"));
}

TEST_F(FieldsSection, DuplicateLevelAndBlankNames)
{
    // A level read twice under another name is a duplicate too: it moves
    // and its name is counted on.
    FieldRead(QStringLiteral(" 1 ABCD0009 ABCD"), 1, 1);
    FieldRead(QStringLiteral(" 1 ABCD0100 ABCD"), 1, 2);
    // A blank name is "XXXXX000"; a second blank name is counted on to a
    // name too long for the field, and that line is lost.
    FieldRead(QStringLiteral(" 3          ABCD"), 1, 3);
    FieldRead(QStringLiteral(" 4          ABCD"), 1, 4);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNFLD, FLDNAM FROM Fields ORDER BY LNFLD")),
        (QStringList { QStringLiteral("1|ABCD0009"), QStringLiteral("2|ABCD0101"),
            QStringLiteral("3|XXXXX000") }));
    ASSERT_EQ(m_ui.messages.size(), 3u);
    EXPECT_EQ(m_ui.messages[0].text,
        QStringLiteral("Duplicate data in 'Fields'. The data in level 1 will be read as '2   "
                       "ABCD0101 .......'"));
    EXPECT_EQ(m_ui.messages[1].text,
        QStringLiteral("Duplicate data in 'Fields'. The data in level 4 will be read as '4   "
                       "XXXXX0001 .......'"));
    EXPECT_EQ(m_ui.messages[2].text,
        QStringLiteral("The field is too small to accept the amount of data you attempted to add.  "
                       "Try inserting "
                       "or pasting less data. in FieldRead/frmMain"));
}

TEST_F(FieldsSection, SecondGroupLevelWithoutFirstGroupLine)
{
    LineCursor c
        = LineCursor::fromLines({ QStringLiteral("*FIELDS"), header1, field1, header2, coords2 });
    readFieldsSection(c);
    EXPECT_TRUE(c.atEnd());
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].text,
        QStringLiteral("Format in Field section is incorrect. Some data could be lost."));
    EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Error"));

    // Text that is no number in a numeric column costs the line.
    FieldRead(QStringLiteral(" 7 NEWFIELD IBWA      abc"), 1, 9);
    EXPECT_EQ(m_ui.messages.back().text,
        QStringLiteral("Data type conversion error. in FieldRead/frmMain"));
    EXPECT_EQ(
        rowsOf(QStringLiteral("SELECT COUNT(*) FROM Fields")), QStringList { QStringLiteral("1") });
}

TEST_F(FieldsSection, WritesBothGroups)
{
    database::exec(QStringLiteral("INSERT INTO Fields (LNFLD, FLDNAM, WSTA, SLOPE, FLOB, DFDRN, "
                                  "FLDD, SFDRN, FLST, SLTX, SLDP, SLNO, FLNAME, "
                                  "XCRD, YCRD, ELEV, AREA, SLEN, FLWR, SLAS, FLHST, FHDUR) VALUES "
                                  "(1, 'IBWA0001', 'IBWA', 0, 0, 'DR000', 0, 0, "
                                  "'00000', 'SIL', 180, 'IBWA910001', 'Field one with a name of "
                                  "more than 25 characters', -45.5, 12.25, 200, "
                                  "1.5, 10, NULL, NULL, 'FH1', NULL)"));
    database::exec(QStringLiteral(
        "INSERT INTO Fields (LNFLD, FLDNAM, WSTA, SLOPE) VALUES (2, 'IBWA0002', 'IBWA99', 2.25)"));
    state().comments.CommentsFields = QStringLiteral("remark");
    EXPECT_EQ(written(writeFieldsSection),
        (QStringList { QString(), QStringLiteral("*FIELDS"), header1,
            QStringLiteral(
                " 1 IBWA0001 IBWA       0.0     0 DR000     0     0 00000 SIL    180  IBWA910001 "
                "Field one with a name of "),
            // A station of six characters takes its room from the slope.
            QStringLiteral(" 2 IBWA0002 IBWA99     2.3   -99   -99   -99   -99   -99 -99    -99    "
                           "     -99 -99"),
            header2, coords1, coords2, QStringLiteral("!remark") }));
    EXPECT_TRUE(m_ui.messages.empty());

    // Without rows nothing is written, not even the comments.
    database::exec(QStringLiteral("DELETE FROM Fields"));
    EXPECT_TRUE(written(writeFieldsSection).isEmpty());
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].text, QStringLiteral("No Field data available."));
    EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Error"));
}

TEST_F(FieldsSection, WritingAndReadingBack)
{
    const std::map<QString, Reader> readers { { QStringLiteral("*FIE"), readFieldsSection } };
    // Only the first group in the file: the second is written in its
    // missing forms, and reads back as such.
    const QStringList input { QStringLiteral("*FIELDS"), header1, field1, field2,
        QStringLiteral("! remark") };
    const TwoSaves saves
        = saveTwice(input, { QStringLiteral("Fields") }, readers, writeFieldsSection);
    EXPECT_EQ(saves.first, saves.second);
    EXPECT_EQ(saves.first,
        (QStringList { QString(), QStringLiteral("*FIELDS"), header1, field1, field2, header2,
            QStringLiteral(" 1       -99.00000       -99.00000    -99.00             -99.0 -99.0 "
                           "-99.0 -99.0   -99   -99"),
            coords2, QStringLiteral("! remark") }));

    const QStringList both { QStringLiteral("*FIELDS"), header1, field1, field2, header2, coords1,
        coords2 };
    const TwoSaves again
        = saveTwice(both, { QStringLiteral("Fields") }, readers, writeFieldsSection);
    EXPECT_EQ(again.first, again.second);
}
