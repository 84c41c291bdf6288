#include "app/AppState.h"
#include "database/Sql.h"
#include "format/ChemicalSection.h"
#include "format/EnvironmentSection.h"
#include "format/EventCells.h"
#include "format/FertilizerSection.h"
#include "format/IrrigationSection.h"
#include "support/QtPrinters.h"
#include "support/WorkDbFixture.h"

#include "EventSectionSupport.h"

using namespace quillon;
using namespace quillon::format;

namespace {

class EventReaders : public test::WorkDbTest { };

} // namespace

TEST_F(EventReaders, NumberColumnsTakeTheirLeadingNumber)
{
    // "90kg" reads as 90, text without a number as 0, and the rest of the
    // line is kept.
    struct Case {
        void (*read)(const QString&);
        const char* line;
        const char* table;
        const char* row;
    };
    const Case cases[] = {
        { IrrigationRead, " 1  0.75   1O", "Irrigation", "1|0.75|1|NULL|NULL|NULL|NULL|NULL|NULL" },
        { IrrigDatesRead, " 1 01110 IR001   abc", "IrrigApplications", "1|01110|IR001|0|NULL" },
        { FertilizerRead, " 1 01001 FE005 AP002  90kg    kg   -99   -99   -99   -99   -99 Split N",
            "Fertilization", "1|01001|FE005|AP002|90|0|NULL|NULL|NULL|NULL|NULL" },
        { ResidueRead, " 1 01001 RE001   1,5", "Residue",
            "1|01001|RE001|1|NULL|NULL|NULL|NULL|NULL|NULL" },
        { ChemicalRead, " 1 01001 HE001  1.5x", "Chemicals", "1|01001|HE001|1.5|NULL|NULL|NULL" },
        { TillageRead, " 1 01001 TI001 15 cm", "Tillage", "1|01001|TI001|15" },
        { EvironModRead, " 1 01001 A 1.0 M   x", "EnvironMod",
            "1|01001|A|1|M|0|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL" },
        { HarvestRead, " 1 01001 GS000     C     A   all", "Harvest", "1|01001|GS000|C|A|0|NULL" },
    };
    for (const Case& c : cases) {
        c.read(QLatin1String(c.line));
        EXPECT_EQ(test::rowsOf(QStringLiteral("SELECT * FROM [%1]").arg(QLatin1String(c.table))),
            QStringList { QLatin1String(c.row) });
    }
    EXPECT_EQ(test::rowsOf(QStringLiteral("SELECT * FROM FerLevelNames")),
        QStringList { QStringLiteral("1|Split N") });
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
}

TEST_F(EventReaders, DuplicateKeyInTheFillGetsTheSectionsOwnMessage)
{
    using events::NamedEventRow;
    const events::NamedEventTables residue { "Residue", "LNRES", "ResLevelNames", "RENAME" };
    events::storeNamedEvent(QStringLiteral("  4"), residue, QStringLiteral("Residue"), QString(), [](NamedEventRow&) {
        throw RuntimeError(err::DuplicateKey, QStringLiteral("duplicate"));
    });
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].text, QStringLiteral("duplicate levels in 'Residue'. Level 4 is read only once."));
    EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Error"));
    EXPECT_EQ(m_ui.messages[0].icon, MsgIcon::Critical);

    // A row the table refuses after a clean fill goes without a word.
    events::storeNamedEvent(QStringLiteral("  4"), residue, QStringLiteral("Residue"), QString(), [](NamedEventRow& row) {
        row.event.push_back({ QStringLiteral("RESCOD"), QStringLiteral("TOO LONG") });
    });
    EXPECT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(database::rowCount(QStringLiteral("Residue")), 0);
}

TEST_F(EventReaders, AnEmptyTableLeavesItsSectionOutWithItsComments)
{
    CommentBuffers& comments = state().comments;
    for (QString* buffer : comments.all())
        *buffer = QStringLiteral("lost");
    // Names without events don't bring a section in.
    database::insertRow(QStringLiteral("FerLevelNames"), { { "LNFER", 1 }, { "FERNAME", QStringLiteral("x") } });
    database::insertRow(QStringLiteral("IrrigApplications"), { { "LNIR", 1 }, { "IDLAPL", QStringLiteral("01001") } });
    for (const auto write : { writeIrrigationSection, writeFertilizersSection, writeResiduesSection,
             writeChemicalsSection, writeTillageSection, writeEnvironmentSection, writeHarvestSection })
        EXPECT_TRUE(test::written(write).isEmpty());
}
