// File Open builds SimLookUp for every file; a build from an unchanged file
// into a table that still holds its rows is skipped. These cases must build
// again all the same.

#include "reference/CodeTables.h"

#include "database/Sql.h"
#include "reference/SuiteFixture.h"
#include "support/QtPrinters.h"

namespace quillon::test {
namespace {

using namespace quillon::reference;

class SimLookUpReuse : public SuiteTest {
protected:
    static QStringList models()
    {
        return rowsOf(QStringLiteral("SELECT Code FROM SimLookUp WHERE Type = 19 ORDER BY Code"));
    }
};

TEST_F(SimLookUpReuse, BuildsAgainWhenTheFileOrTheTableChanged)
{
    write(QStringLiteral("Simulation.cde"),
        { QStringLiteral("*Simulation/Crop Models"), QStringLiteral("MZKES      Maize model") });
    CreateSIMLookUp();
    EXPECT_EQ(models(), QStringList { QStringLiteral("MZKES") });

    // Rows gone from the table come back.
    database::exec(QStringLiteral("DELETE FROM SimLookUp"));
    CreateSIMLookUp();
    EXPECT_EQ(models(), QStringList { QStringLiteral("MZKES") });

    // An edited file is read again.
    write(QStringLiteral("Simulation.cde"),
        { QStringLiteral("*Simulation/Crop Models"), QStringLiteral("MZKES      Maize model"),
            QStringLiteral("WHKES      Wheat model") });
    CreateSIMLookUp();
    EXPECT_EQ(models(), (QStringList { QStringLiteral("MZKES"), QStringLiteral("WHKES") }));

    // So is a file that has gone: the program ends as it always did.
    QFile::remove(path(QStringLiteral("Simulation.cde")));
    EXPECT_THROW(CreateSIMLookUp(), ProgramEnded);
    EXPECT_TRUE(m_ui.messages.back().text.startsWith(QStringLiteral("Cannot find file ")));
}

} // namespace
} // namespace quillon::test
