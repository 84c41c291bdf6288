#include "format/TreatmentsSection.h"
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

class TreatmentsSection : public WorkDbTest {
protected:
    static std::map<QString, Reader> readers()
    {
        return { { QStringLiteral("*TRE"), readTreatmentsSection },
            { QStringLiteral("*CUL"), readCultivarsSection } };
    }
    static QStringList treatmentRows()
    {
        return rowsOf(QStringLiteral(
            "SELECT TRTNO, ROTNO, ROTOPT, CRPNO, TITLET, LNCU, LNFLD, LNSA, LNIC, LNPLT, "
            "LNIR, LNFER, LNRES, LNCHE, LNTIL, LNENV, LNHAR, LNSIM FROM Treatments ORDER BY "
            "TRTNO"));
    }
};

const QString treatmentsLine
    = QStringLiteral("*TREATMENTS                        -------------FACTOR LEVELS------------");
const QString treatmentsHeader
    = QStringLiteral("@N R O C TNAME.................... CU FL SA IC MP MI MF MR MC MT ME MH SM");

} // namespace

TEST_F(TreatmentsSection, ReadsTreatmentLines)
{
    LineCursor c = LineCursor::fromLines({
        treatmentsLine,
        QStringLiteral("! before the header"),
        treatmentsHeader,
        QStringLiteral(
            " 1 1 0 0 Rainfed low N               1  1  0  1  1  0  1  0  0  0  0  0  1"),
        QStringLiteral("  ! between the lines"),
        QStringLiteral(
            " 2 2 1 3 A name longer than twenty-five  2 12                               "),
        QStringLiteral(" 3 1 0 0                             x  3"),
        QStringLiteral("*CULTIVARS"),
    });
    readTreatmentsSection(c);
    EXPECT_EQ(c.i, 7);
    EXPECT_EQ(treatmentRows(),
        (QStringList {
            QStringLiteral("1|1|0|0|Rainfed low N|1|1|NULL|1|1|NULL|1|NULL|NULL|NULL|NULL|NULL|1"),
            // 25 characters of the name; the level columns are read where
            // they should stand, so that the levels behind a long name
            // come out wrong.
            QStringLiteral("2|2|1|3|A name longer than "
                           "twenty|NULL|NULL|NULL|2|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL"),
            // A blank name stays empty; "x" in a level column is no number.
            QStringLiteral(
                "3|1|0|0|NULL|NULL|3|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL"),
        }));
    EXPECT_EQ(state().comments.CommentsTreatments,
        QStringLiteral("\r\n before the header\r\n ! between the lines"));
    EXPECT_TRUE(m_ui.messages.empty());
}

TEST_F(TreatmentsSection, TreatmentReadTwiceIsReportedAndDropped)
{
    TreatmentRead(QStringLiteral(" 1 1 0 0 First                     1  1"));
    TreatmentRead(QStringLiteral(" 1 1 0 0 Second                    2  2"));
    TreatmentRead(QStringLiteral(" 1 2 0 0 Other rotation            3  3"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT TITLET, ROTNO FROM Treatments ORDER BY ROTNO")),
        (QStringList { QStringLiteral("First|1"), QStringLiteral("Other rotation|2") }));
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_TRUE(m_ui.messages[0].text.endsWith(QStringLiteral(" in TreatmentRead.")));
    EXPECT_TRUE(m_ui.messages[0].text.startsWith(QStringLiteral("The changes you requested")));
}

TEST_F(TreatmentsSection, ReadsCultivarLines)
{
    LineCursor c = LineCursor::fromLines({
        QStringLiteral("*CULTIVARS"),
        QStringLiteral("@C CR INGENO CNAME"),
        QStringLiteral(" 1 MZ IB0035 McCurdy 84aa and more words behind"),
        QStringLiteral(" 1 MZ IB0001 Second line of level one"),
        QStringLiteral(" 2 MZ        "),
        QStringLiteral(" 3 MZ IB0002                 name after sixteen blanks"),
        QStringLiteral("12      -99  Short"),
    });
    readCultivarsSection(c);
    EXPECT_TRUE(c.atEnd());
    EXPECT_EQ(
        rowsOf(QStringLiteral("SELECT LNCU, CODE, VARNO, CNAME FROM Cultivars ORDER BY LNCU")),
        (QStringList { QStringLiteral("1|MZ|IB0035|McCurdy 84aa and more wor"),
            QStringLiteral("2|MZ|NULL|NULL"), QStringLiteral("3|MZ|IB0002|NULL"),
            QStringLiteral("12||-99|Short") }));
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].text,
        QStringLiteral("Duplicate levels in 'Cultivars'. Level 1 is read only once."));
    EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Quillon"));
}

TEST_F(TreatmentsSection, WritesTreatmentLines)
{
    database::exec(QStringLiteral(
        "INSERT INTO Treatments (TRTNO, ROTNO, ROTOPT, CRPNO, TITLET, LNCU, LNFLD, LNSA, LNSIM) "
        "VALUES (2, NULL, NULL, NULL, NULL, 1, 1, NULL, 1)"));
    database::exec(QStringLiteral(
        "INSERT INTO Treatments (TRTNO, ROTNO, ROTOPT, CRPNO, TITLET, LNCU, LNFLD, LNSA) "
        "VALUES (1, 1, 0, 0, 'Rainfed low N', 1, 12, 0)"));
    database::exec(
        QStringLiteral("INSERT INTO Treatments (TRTNO, ROTNO, ROTOPT, CRPNO, TITLET, LNCU, LNFLD) "
                       "VALUES (10, 2, 1, 3, 'A name of exactly 25 char', 100, 2)"));
    state().comments.CommentsTreatments = QStringLiteral("one remark");
    EXPECT_EQ(written(writeTreatmentsSection),
        (QStringList {
            QString(),
            treatmentsLine,
            treatmentsHeader,
            QStringLiteral(
                " 1 1 0 0 Rainfed low N              1 12  0  0  0  0  0  0  0  0  0  0  0"),
            QStringLiteral(
                " 2 1 0 0 -99                        1  1  0  0  0  0  0  0  0  0  0  0  1"),
            // A name of 25 characters runs into the first cell; a level of
            // three digits makes its cell four wide.
            QStringLiteral(
                "10 2 1 3 A name of exactly 25 char 100  2  0  0  0  0  0  0  0  0  0  0  0"),
            QStringLiteral("!one remark"),
        }));
    EXPECT_TRUE(m_ui.messages.empty());

    database::exec(QStringLiteral(
        "UPDATE Treatments SET TITLET = 'A name that is longer than the column' WHERE TRTNO = 1"));
    EXPECT_EQ(written(writeTreatmentsSection).at(3).mid(9, 28),
        QStringLiteral("A name that is longer tha  1"));
}

TEST_F(TreatmentsSection, EmptyTablesAreToldAndLeftOut)
{
    state().comments.CommentsTreatments = QStringLiteral("not written without rows");
    state().comments.CommentsCultivars = QStringLiteral("nor this");
    EXPECT_TRUE(written(writeTreatmentsSection).isEmpty());
    EXPECT_TRUE(written(writeCultivarsSection).isEmpty());
    ASSERT_EQ(m_ui.messages.size(), 2u);
    EXPECT_EQ(m_ui.messages[0].text, QStringLiteral("No Treatment data available."));
    EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Error"));
    EXPECT_EQ(m_ui.messages[1].text, QStringLiteral("No cultivar available."));
    EXPECT_EQ(m_ui.messages[1].title, QStringLiteral("Error"));
}

TEST_F(TreatmentsSection, WritesCultivarLines)
{
    database::exec(QStringLiteral(
        "INSERT INTO Cultivars (LNCU, CODE, VARNO, CNAME) VALUES (2, NULL, ' ', '')"));
    database::exec(QStringLiteral(
        "INSERT INTO Cultivars (LNCU, CODE, VARNO, CNAME) VALUES (1, 'MZ', 'IB0035', "
        "'A cultivar name that the writer does not cut')"));
    database::exec(QStringLiteral(
        "INSERT INTO Cultivars (LNCU, CODE, VARNO, CNAME) VALUES (100, 'WH', 'X', NULL)"));
    EXPECT_EQ(written(writeCultivarsSection),
        (QStringList { QString(), QStringLiteral("*CULTIVARS"),
            QStringLiteral("@C CR INGENO CNAME"),
            QStringLiteral(" 1 MZ IB0035 A cultivar name that the writer does not cut"),
            QStringLiteral(" 2 -99    -99 "), QStringLiteral("100WH      X ") }));
}

TEST_F(TreatmentsSection, WritingAndReadingBack)
{
    const QStringList input {
        treatmentsLine,
        treatmentsHeader,
        QStringLiteral(
            " 1 1 0 0 Rainfed low N               1  1  0  1  1  0  1  0  0  0  0  0  1"),
        QStringLiteral(
            " 2 1 0 0 Irrigated                   1 12  1  1  1  1  1  0  0  0  0  0  1"),
        QStringLiteral("! remark"),
        QStringLiteral("*CULTIVARS"),
        QStringLiteral("@C CR INGENO CNAME"),
        QStringLiteral(" 1 MZ IB0035 McCurdy 84aa"),
        QStringLiteral(" 2 MZ IB0001"),
    };
    const QStringList tables { QStringLiteral("Treatments"), QStringLiteral("Cultivars") };
    const Writer write = [](FileWriter& w) {
        writeTreatmentsSection(w);
        writeCultivarsSection(w);
    };
    const TwoSaves saves = saveTwice(input, tables, readers(), write);
    EXPECT_EQ(saves.first, saves.second);
    EXPECT_EQ(saves.first,
        (QStringList { QString(), treatmentsLine, treatmentsHeader,
            QStringLiteral(
                " 1 1 0 0 Rainfed low N              1  1  0  1  1  0  1  0  0  0  0  0  1"),
            QStringLiteral(
                " 2 1 0 0 Irrigated                  1 12  1  1  1  1  1  0  0  0  0  0  1"),
            QStringLiteral("! remark"), QString(), QStringLiteral("*CULTIVARS"),
            QStringLiteral("@C CR INGENO CNAME"), QStringLiteral(" 1 MZ IB0035 McCurdy 84aa"),
            QStringLiteral(" 2 MZ IB0001 ") }));
}
