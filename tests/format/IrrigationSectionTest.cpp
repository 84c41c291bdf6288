#include "app/AppState.h"
#include "database/Sql.h"
#include "format/IrrigationSection.h"
#include "support/QtPrinters.h"
#include "support/WorkDbFixture.h"

#include "EventSectionSupport.h"

using namespace quillon;
using namespace quillon::format;
using quillon::test::rowsOf;

namespace {

class IrrigationSection : public test::WorkDbTest {
protected:
    static QStringList levels() { return rowsOf(QStringLiteral("SELECT * FROM Irrigation ORDER BY rowid")); }
    static QStringList applications()
    {
        return rowsOf(QStringLiteral("SELECT * FROM IrrigApplications ORDER BY rowid"));
    }
    static int read(const QStringList& lines) { return test::readSection(lines, readIrrigationSection); }
    static QStringList write() { return test::written(writeIrrigationSection); }
};

const QString Head = QStringLiteral("*IRRIGATION AND WATER MANAGEMENT");
const QString LevelHeader = QStringLiteral("@I  EFIR  IDEP  ITHR  IEPT  IOFF  IAME  IAMT IRNAME");

} // namespace

TEST_F(IrrigationSection, ReadsLevelsWithTheirApplications)
{
    const int stop = read({
        Head,
        QStringLiteral("! before the header"),
        LevelHeader,
        QStringLiteral(" 1  0.75    30    50   100 GS000 IR001    10 Sprinkler plan"),
        QStringLiteral("@I IDATE  IROP IRVAL"),
        QStringLiteral(" 1 01110 IR001  12.5"),
        QStringLiteral("! between applications"),
        QStringLiteral(" 1  1120 ib005   -99"), // four-digit date padded, IB code turned into IR
        QStringLiteral(" 1   -99 IR001    20"), // no date: no row at all
        QStringLiteral(" 1   110 IR001  10.0   2.5"), // three characters stay as they are
        LevelHeader,
        QStringLiteral(" 2   -99   -99   -99   -99   -99   -99   -99"), // ends before the name
        LevelHeader,
        QStringLiteral(" 3  1.00  -5.0   -99   -99   -99   -99   -99   "), // blank name
        QStringLiteral("*FERTILIZERS (INORGANIC)"),
    });
    EXPECT_EQ(stop, 14);
    EXPECT_EQ(levels(),
        QStringList({
            QStringLiteral("1|0.75|30|50|100|GS000|IR001|10|Sprinkler plan"),
            QStringLiteral("2|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL"),
            QStringLiteral("3|1|NULL|NULL|NULL|NULL|NULL|NULL|-99"),
        }));
    EXPECT_EQ(applications(),
        QStringList({
            QStringLiteral("1|01110|IR001|12.5|NULL"),
            QStringLiteral("1|01120|IR005|NULL|NULL"),
            QStringLiteral("1|110|IR001|10|2.5"),
            QStringLiteral("2|NULL|NULL|NULL|NULL"), // levels without applications get one empty row
            QStringLiteral("3|NULL|NULL|NULL|NULL"),
        }));
    EXPECT_EQ(state().comments.CommentsIrrigation, QStringLiteral("\r\n before the header\r\n between applications"));
    EXPECT_TRUE(m_ui.messages.empty());
}

TEST_F(IrrigationSection, ApplicationGroupsThatDontFitTheirLevel)
{
    const int stop = read({
        Head,
        LevelHeader,
        QStringLiteral(" 1  0.75"),
        QStringLiteral("@I IDATE  IROP IRVAL"), // a header with a section line behind it
        QStringLiteral("*FERTILIZERS (INORGANIC)"),
    });
    EXPECT_EQ(stop, 4);
    EXPECT_EQ(applications(), QStringList { QStringLiteral("1|NULL|NULL|NULL|NULL") });

    // Application lines of another level end the group and are taken as
    // level lines: their code in a number column reads as 0, and the level
    // gets the empty application row.
    test::clearSection({ QStringLiteral("Irrigation"), QStringLiteral("IrrigApplications") });
    read({
        Head,
        LevelHeader,
        QStringLiteral(" 1  0.75"),
        QStringLiteral("@I IDATE  IROP IRVAL"),
        QStringLiteral(" 1 01120  IR1    12"), // the code is kept untrimmed
        QStringLiteral(" 2 01110 IR001  12.5"),
    });
    EXPECT_EQ(rowsOf(QStringLiteral(
                  "SELECT LNIR, EFFIRX, DSOILX, THETCX FROM Irrigation ORDER BY rowid")),
        QStringList({ QStringLiteral("1|0.75|NULL|NULL"), QStringLiteral("2|1110|0|12.5") }));
    EXPECT_EQ(applications(),
        QStringList({ QStringLiteral("1|01120| IR1 |12|NULL"), QStringLiteral("2|NULL|NULL|NULL|NULL") }));
    EXPECT_TRUE(m_ui.messages.empty());
}

TEST_F(IrrigationSection, RepeatedLevelLosesItsLineWithTheEngineText)
{
    read({
        Head,
        LevelHeader,
        QStringLiteral(" 1  0.75    30"),
        LevelHeader,
        QStringLiteral(" 1  0.50    40"),
    });
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT LNIR, EFFIRX FROM Irrigation")), QStringList { QStringLiteral("1|0.75") });
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_TRUE(m_ui.messages[0].text.startsWith(QLatin1String("The changes you requested")));
    EXPECT_TRUE(m_ui.messages[0].text.endsWith(QLatin1String("try again. in IrrigationRead/frmMain.")));
    // Both levels keep their empty application row.
    EXPECT_EQ(applications().size(), 2);
}

TEST_F(IrrigationSection, WritesLevelsAndTheOneApplicationHeaderOfTheFile)
{
    using database::insertRow;
    const QVariant null;
    insertRow(QStringLiteral("Irrigation"),
        { { "LNIR", 12 }, { "EFFIRX", 1 }, { "DSOILX", 1234567 }, { "IRNAME", QStringLiteral("Wide") } });
    insertRow(QStringLiteral("Irrigation"),
        { { "LNIR", 1 }, { "EFFIRX", 0.8 }, { "DSOILX", 30 }, { "IEPTX", 100 }, { "IOFFX", QStringLiteral("GS000") },
            { "IAMEX", QStringLiteral("IR001") }, { "AIRAMX", 10 }, { "IRNAME", QStringLiteral("Sprinkler plan") } });
    insertRow(QStringLiteral("Irrigation"), { { "LNIR", 2 }, { "EFFIRX", -99 } });
    const auto app = [](int level, const QVariant& date, const QVariant& code, const QVariant& amount,
                         const QVariant& further) {
        insertRow(QStringLiteral("IrrigApplications"),
            { { "LNIR", level }, { "IDLAPL", date }, { "IRRCOD", code }, { "AMT", amount }, { "IIRV", further } });
    };
    app(1, QStringLiteral("01110"), QStringLiteral("IR001"), 12.5, null);
    app(1, null, QStringLiteral("IR001"), 3, null); // no date: not written
    app(1, QStringLiteral("01120"), QStringLiteral("IR005"), null, 2.5);
    app(2, null, null, null, null);
    app(12, QStringLiteral("-99"), QStringLiteral("IR001"), 5, null); // the first row decides
    app(12, QStringLiteral("01150"), QStringLiteral("IR004"), 5, null);
    state().comments.CommentsIrrigation = QStringLiteral("note one\r\nnote two");

    EXPECT_EQ(write(),
        QStringList({
            QString(),
            Head,
            LevelHeader,
            QStringLiteral(" 1  0.80    30   -99   100 GS000 IR001    10 Sprinkler plan"),
            QStringLiteral("@I IDATE  IROP IRVAL  IIRV"),
            QStringLiteral(" 1 01110 IR001  12.5   -99"),
            QStringLiteral(" 1 01120 IR005   -99   2.5"),
            LevelHeader,
            QStringLiteral(" 2   -99   -99   -99   -99   -99   -99   -99 -99"),
            LevelHeader,
            QStringLiteral("12  1.001234567   -99   -99   -99   -99   -99 Wide"),
            QStringLiteral("!note one"),
            QStringLiteral("!note two"),
        }));

    // Without any further value the short header is used.
    database::exec(QStringLiteral("UPDATE IrrigApplications SET IIRV = -99"));
    const QStringList shortForm = write();
    EXPECT_EQ(shortForm.at(4), QStringLiteral("@I IDATE  IROP IRVAL"));
    EXPECT_EQ(shortForm.at(5), QStringLiteral(" 1 01110 IR001  12.5"));
}

TEST_F(IrrigationSection, ANullLevelEndsTheLevels)
{
    state().comments.CommentsIrrigation = QStringLiteral("still written");
    database::insertRow(QStringLiteral("Irrigation"), { { "LNIR", 1 } });
    database::insertRow(QStringLiteral("Irrigation"), { { "EFFIRX", 1 } });
    EXPECT_EQ(write(), QStringList({ QString(), Head, QStringLiteral("!still written") }));
}

TEST_F(IrrigationSection, SecondSaveWritesWhatTheFirstWrote)
{
    const auto [first, second] = test::saveAndReload(
        {
            Head,
            LevelHeader,
            QStringLiteral(" 1  0.75    30    50   100 GS000 IR001    10 Sprinkler plan"),
            QStringLiteral("@I IDATE  IROP IRVAL  IIRV"),
            QStringLiteral(" 1 01110 IB001  12.5     3"),
            QStringLiteral(" 1  1120  IR1   -99"),
            QStringLiteral("! a note"),
            LevelHeader,
            QStringLiteral(" 2  -99.0"),
            LevelHeader,
            QStringLiteral(" 3  1.00  -5.0   -99   -99   -99   -99   -99   "),
            QStringLiteral("@I IDATE  IROP IRVAL"),
            QStringLiteral(" 3 01110 IR001  12.5"),
        },
        { QStringLiteral("Irrigation"), QStringLiteral("IrrigApplications") }, readIrrigationSection,
        writeIrrigationSection);
    EXPECT_EQ(first, second);
    EXPECT_EQ(first.mid(5, 2),
        QStringList({ QStringLiteral(" 1 01110 IR001  12.5     3"), QStringLiteral(" 1 01120   IR1   -99   -99") }));
    // The level without applications comes back without an application header.
    EXPECT_EQ(first.mid(7, 3),
        QStringList({ LevelHeader, QStringLiteral(" 2   -99   -99   -99   -99   -99   -99   -99 -99"), LevelHeader }));
    EXPECT_EQ(first.last(), QStringLiteral("! a note"));
}
