#include "database/Sql.h"
#include "support/QtPrinters.h"
#include "support/WorkDbFixture.h"
#include "validation/LevelNames.h"

using namespace quillon;
using namespace quillon::validation;

namespace {

class LevelNames : public test::WorkDbTest { };

} // namespace

TEST_F(LevelNames, NamesAndWhatStandsForAMissingOne)
{
    struct Case {
        QString (*find)(const QVariant&);
        const char* table;
        const char* level;
        const char* name;
        const char* missing;
    };
    const Case cases[] = {
        { Find_FERNAME, "FerLevelNames", "LNFER", "FERNAME", "-99" },
        { Find_RESNAME, "ResLevelNames", "LNRES", "RENAME", "-99" },
        { Find_CHNAME, "ChemLevelNames", "LNCHE", "CHNAME", "-99" },
        { Find_TillNAME, "TillLevelNames", "LNTIL", "TNAME", "-99" },
        // Environment and harvest levels without a name give nothing at all.
        { Find_EnvNAME, "EnvLevelNames", "LNENV", "ENVNAME", "" },
        { Find_HarNAME, "HarLevelNames", "LNHAR", "HNAME", "" },
    };
    for (const Case& c : cases) {
        database::insertRow(QLatin1String(c.table),
            { { QLatin1String(c.level), 1 }, { QLatin1String(c.name), QStringLiteral("Named") } });
        database::insertRow(QLatin1String(c.table), { { QLatin1String(c.level), 2 } });
        EXPECT_EQ(c.find(1), QStringLiteral("Named")) << c.table;
        EXPECT_EQ(c.find(2), QLatin1String(c.missing)) << c.table; // NULL name
        EXPECT_EQ(c.find(3), QLatin1String(c.missing)) << c.table; // no row
    }
    EXPECT_TRUE(m_ui.messages.empty());

    // A level without a number breaks the statement; the box names the routine.
    EXPECT_EQ(Find_TillNAME(QVariant()), QString());
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_TRUE(m_ui.messages[0].text.endsWith(QLatin1String(" in Find_TillNAME."))) << m_ui.messages[0].text.toStdString();
}
