#include "validation/LevelNames.h"
#include "database/Sql.h"
#include "support/QtPrinters.h"
#include "support/WorkDbFixture.h"

using namespace quillon;
using namespace quillon::validation;

namespace {

class LevelNames : public test::WorkDbTest { };

} // namespace

TEST_F(LevelNames, NamesAndWhatStandsForAMissingOne)
{
    using database::insertRow;
    insertRow(QStringLiteral("FerLevelNames"),
        { { "LNFER", 1 }, { "FERNAME", QStringLiteral("Split N") } });
    insertRow(QStringLiteral("FerLevelNames"), { { "LNFER", 2 } });
    insertRow(
        QStringLiteral("ResLevelNames"), { { "LNRES", 1 }, { "RENAME", QStringLiteral("Straw") } });
    insertRow(QStringLiteral("ChemLevelNames"),
        { { "LNCHE", 3 }, { "CHNAME", QStringLiteral("Weeds") } });
    insertRow(QStringLiteral("TillLevelNames"),
        { { "LNTIL", 1 }, { "TNAME", QStringLiteral("Plough") } });
    insertRow(QStringLiteral("EnvLevelNames"),
        { { "LNENV", 1 }, { "ENVNAME", QStringLiteral("Warmer") } });
    insertRow(QStringLiteral("EnvLevelNames"), { { "LNENV", 2 } });
    insertRow(QStringLiteral("HarLevelNames"),
        { { "LNHAR", 1 }, { "HNAME", QStringLiteral("At maturity") } });

    EXPECT_EQ(Find_FERNAME(1), QStringLiteral("Split N"));
    EXPECT_EQ(Find_FERNAME(2), QStringLiteral("-99")); // NULL name
    EXPECT_EQ(Find_FERNAME(3), QStringLiteral("-99")); // no row
    EXPECT_EQ(Find_RESNAME(1), QStringLiteral("Straw"));
    EXPECT_EQ(Find_RESNAME(2), QStringLiteral("-99"));
    EXPECT_EQ(Find_CHNAME(3), QStringLiteral("Weeds"));
    EXPECT_EQ(Find_CHNAME(1), QStringLiteral("-99"));
    EXPECT_EQ(Find_TillNAME(1), QStringLiteral("Plough"));
    EXPECT_EQ(Find_TillNAME(2), QStringLiteral("-99"));
    // Environment and harvest levels without a name give nothing at all.
    EXPECT_EQ(Find_EnvNAME(1), QStringLiteral("Warmer"));
    EXPECT_EQ(Find_EnvNAME(2), QString());
    EXPECT_EQ(Find_EnvNAME(3), QString());
    EXPECT_EQ(Find_HarNAME(1), QStringLiteral("At maturity"));
    EXPECT_EQ(Find_HarNAME(2), QString());
    EXPECT_TRUE(m_ui.messages.empty());
}

TEST_F(LevelNames, ALevelWithoutNumberIsReportedUnderTheRoutinesName)
{
    EXPECT_EQ(Find_TillNAME(QVariant()), QString());
    EXPECT_EQ(Find_HarNAME(QVariant()), QString());
    ASSERT_EQ(m_ui.messages.size(), 2u);
    EXPECT_TRUE(m_ui.messages[0].text.endsWith(QLatin1String(" in Find_TillNAME.")))
        << m_ui.messages[0].text.toStdString();
    EXPECT_TRUE(m_ui.messages[1].text.endsWith(QLatin1String(" in Find_HarNAME.")));
}
