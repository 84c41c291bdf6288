#include "app/AppState.h"
#include "database/Sql.h"
#include "format/ChemicalSection.h"
#include "support/QtPrinters.h"
#include "support/WorkDbFixture.h"

#include "EventSectionSupport.h"

using namespace quillon;
using namespace quillon::format;
using quillon::test::rowsOf;

namespace {

class ChemicalSection : public test::WorkDbTest { };

const QString CheHead = QStringLiteral("*CHEMICAL APPLICATIONS");
const QString CheHeader = QStringLiteral("@C CDATE CHCOD CHAMT  CHME CHDEP   CHT..CHNAME");
const QString TilHead = QStringLiteral("*TILLAGE AND ROTATIONS");
const QString TilHeader = QStringLiteral("@T TDATE TIMPL  TDEP TNAME");
const QStringList CheTables { QStringLiteral("Chemicals"), QStringLiteral("ChemLevelNames") };

} // namespace

TEST_F(ChemicalSection, ReadsChemicalsWithTheNameBehindTwoBlanks)
{
    const QString sixty = QStringLiteral("N").repeated(60);
    const int stop = test::readSection(
        {
            CheHead,
            CheHeader,
            QStringLiteral(" 1  1001 HE001  1.50 AP001    10   -99  Weed control"),
            QStringLiteral(" 1 01030 HE001   -99 AP001   -99 IN001  Other name"),
            QStringLiteral("! a note"),
            QStringLiteral(" 2 01050 HE002     2 AP002       IN001  ") + sixty, // blank depth; 60 characters
            QStringLiteral("*TILLAGE AND ROTATIONS"),
        },
        readChemicalsSection);
    EXPECT_EQ(stop, 6);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM Chemicals ORDER BY rowid")),
        QStringList({
            QStringLiteral("1|01001|HE001|1.5|AP001|10|NULL"),
            QStringLiteral("1|01030|HE001|NULL|AP001|NULL|IN001"),
            QStringLiteral("2|01050|HE002|2|AP002|NULL|IN001"),
        }));
    // Read from one position early, a name of 60 characters loses its last.
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM ChemLevelNames ORDER BY LNCHE")),
        QStringList({ QStringLiteral("1|Weed control"), QStringLiteral("2|") + sixty.left(59) }));
    EXPECT_EQ(state().comments.CommentsChemical, QStringLiteral("\r\n a note"));
    EXPECT_TRUE(m_ui.messages.empty());
}

TEST_F(ChemicalSection, DepthMaskAndAmountsOnWriting)
{
    using database::insertRow;
    insertRow(QStringLiteral("Chemicals"),
        { { "LNCHE", 1 }, { "CDATE", QStringLiteral("01001") }, { "CHCOD", QStringLiteral("HE001") }, { "CHAMT", 2 },
            { "CHMET", QStringLiteral("AP001") }, { "CHDEP", 0 }, { "CHT", QStringLiteral("IN001") } });
    insertRow(QStringLiteral("Chemicals"), { { "LNCHE", 1 }, { "CHAMT", -1 }, { "CHDEP", 12.6 } });
    insertRow(QStringLiteral("Chemicals"), { { "LNCHE", 100 }, { "CHAMT", 0.125 } });
    insertRow(QStringLiteral("ChemLevelNames"), { { "LNCHE", 1 }, { "CHNAME", QStringLiteral("Weed control") } });
    EXPECT_EQ(test::written(writeChemicalsSection),
        QStringList({
            QString(),
            CheHead,
            CheHeader,
            QStringLiteral(" 1 01001 HE001  2.00 AP001       IN001  Weed control"),
            QStringLiteral(" 1   -99   -99   -99   -99    13   -99  Weed control"),
            QStringLiteral("100  -99   -99  0.13   -99   -99   -99  -99"),
        }));
}

TEST_F(ChemicalSection, ADepthOfZeroDoesntSurviveASaveAndLoad)
{
    const auto [first, second] = test::saveAndReload(
        {
            CheHead,
            CheHeader,
            QStringLiteral(" 1  1001 HE001  1.50 AP001     0   -99  Weed control"),
        },
        CheTables, readChemicalsSection, writeChemicalsSection);
    EXPECT_EQ(first.at(3), QStringLiteral(" 1 01001 HE001  1.50 AP001         -99  Weed control"));
    EXPECT_EQ(second.at(3), QStringLiteral(" 1 01001 HE001  1.50 AP001   -99   -99  Weed control"));

    // From then on the text stays as it is.
    const auto [third, fourth] = test::saveAndReload(second, CheTables, readChemicalsSection, writeChemicalsSection);
    EXPECT_EQ(third, second);
    EXPECT_EQ(fourth, second);
}

TEST_F(ChemicalSection, ChemicalCommentsFollowTheResidueBuffersFirstCharacter)
{
    database::insertRow(QStringLiteral("Chemicals"), { { "LNCHE", 1 } });
    CommentBuffers& comments = state().comments;

    comments.CommentsChemical = QStringLiteral("\r\nchemical");
    comments.CommentsResidue = QStringLiteral("residue");
    QStringList lines = test::written(writeChemicalsSection);
    EXPECT_EQ(lines.mid(4), QStringList({ QStringLiteral("!"), QStringLiteral("!chemical") }));

    comments.CommentsChemical = QStringLiteral("chemical");
    comments.CommentsResidue = QStringLiteral("\r\nresidue");
    lines = test::written(writeChemicalsSection);
    EXPECT_EQ(lines.size(), 4);

    comments.CommentsChemical.clear();
    comments.CommentsResidue = QStringLiteral("residue");
    EXPECT_EQ(test::written(writeChemicalsSection).size(), 4);
}

TEST_F(ChemicalSection, TillageReadAndWritten)
{
    const QString seventy = QStringLiteral("T").repeated(70);
    test::readSection(
        {
            TilHead,
            TilHeader,
            QStringLiteral(" 1  1001 TI001    15 Plough"),
            QStringLiteral(" 1 01020 TI002   -99 Harrow"),
            QStringLiteral(" 2 01030 TI003  12.5 ") + seventy,
        },
        readTillageSection);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM Tillage ORDER BY rowid")),
        QStringList({
            QStringLiteral("1|01001|TI001|15"),
            QStringLiteral("1|01020|TI002|NULL"),
            QStringLiteral("2|01030|TI003|12.5"),
        }));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT * FROM TillLevelNames ORDER BY LNTIL")),
        QStringList({ QStringLiteral("1|Plough"), QStringLiteral("2|") + seventy.left(60) }));

    database::insertRow(QStringLiteral("Tillage"), { { "LNTIL", 3 } });
    EXPECT_EQ(test::written(writeTillageSection),
        QStringList({
            QString(),
            TilHead,
            TilHeader,
            QStringLiteral(" 1 01001 TI001    15 Plough"),
            QStringLiteral(" 1 01020 TI002   -99 Plough"),
            QStringLiteral(" 2 01030 TI003    13 ") + seventy.left(60),
            QStringLiteral(" 3   -99   -99   -99 -99"),
        }));

    const auto [first, second] = test::saveAndReload(
        {
            TilHead,
            TilHeader,
            QStringLiteral(" 1  1001 TI001  14.5 Plough"),
            QStringLiteral("! a note"),
            QStringLiteral(" 2 01030 TI003"),
        },
        { QStringLiteral("Tillage"), QStringLiteral("TillLevelNames") }, readTillageSection, writeTillageSection);
    EXPECT_EQ(first, second);
    EXPECT_EQ(first.at(3), QStringLiteral(" 1 01001 TI001    15 Plough"));
}
