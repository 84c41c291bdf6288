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

TEST_F(EventReaders, TextInANumberColumnCostsTheLineUnderEachReadersName)
{
    struct Case {
        void (*read)(const QString&);
        const char* line;
        const char* table;
        const char* tail;
    };
    const Case cases[] = {
        { IrrigationRead, " 1  0.75   1O", "Irrigation", " in IrrigationRead/frmMain." },
        { IrrigDatesRead, " 1 01110 IR001   abc", "IrrigApplications", " in IrrigDatesRead." },
        { FertilizerRead, " 1 01001 FE005 AP002    1O    20 Named by a lost line", "Fertilization",
            " in FertilizerRead/frmMain." },
        { ResidueRead, " 1 01001 RE001   1,5", "Residue", " in ResidueRead/frnMain." },
        { ChemicalRead, " 1 01001 HE001  1.5x", "Chemicals", " in ChemicalRead/frmMain." },
        { TillageRead, " 1 01001 TI001 15 cm", "Tillage", " in TillageRead/frmMain." },
        { EvironModRead, " 1 01001 A 1.0 M   x", "EnvironMod", " in EvironModRead/frmMain." },
        { HarvestRead, " 1 01001 GS000     C     A   all", "Harvest", " in HarvestRead/frmMain." },
    };
    for (const Case& c : cases) {
        m_ui.clear();
        c.read(QLatin1String(c.line));
        EXPECT_EQ(database::rowCount(QLatin1String(c.table)), 0) << c.table;
        EXPECT_EQ(m_ui.texts(), QStringList { QStringLiteral("Data type conversion error.") + QLatin1String(c.tail) });
    }
    // The name of a lost line isn't kept either.
    EXPECT_EQ(database::rowCount(QStringLiteral("FerLevelNames")), 0);
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
