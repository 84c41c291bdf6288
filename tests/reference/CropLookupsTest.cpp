#include "reference/CropLookups.h"

#include "app/AppState.h"
#include "database/Sql.h"
#include "reference/CodeTables.h"
#include "reference/Profile.h"
#include "reference/SuiteFixture.h"
#include "support/QtPrinters.h"

namespace quillon::test {
namespace {

using namespace quillon::reference;

class CropLookupsTest : public SuiteTest {
protected:
    // The crops of Detail.cde and a profile, read as the load reads them.
    void load(const QStringList& crops, const QStringList& profile)
    {
        write(QStringLiteral("Detail.cde"),
            QStringList { QStringLiteral("*Crop and Weed Species") } + crops);
        writeProfile(profile);
        LocateAvailableData();
        CreateCodeLookup();
    }
};

TEST_F(CropLookupsTest, CultivarFileNamesFromModelLines)
{
    EXPECT_EQ(cultivarFileOfModel(
                  QStringLiteral("CD"), QStringLiteral("C: \\TERVA48\\ABMOD048.EXE ABMOD048")),
        QStringLiteral("CDMOD048.CUL"));
    EXPECT_EQ(
        cultivarFileOfModel(QStringLiteral("EF"), QStringLiteral("C: \\TERVA48\\KESTA048.EXE I")),
        QStringLiteral("EFSTA048.CUL"));
    // Three characters after the last blank are not a model name.
    EXPECT_EQ(cultivarFileOfModel(QStringLiteral("GH"), QStringLiteral("C: \\TERVA48\\GH.EXE GHX")),
        QString());
    // A blank before position 5 doesn't count.
    EXPECT_EQ(
        cultivarFileOfModel(QStringLiteral("GH"), QStringLiteral("C: \\TERVA48\\GHMODEL.EXE")),
        QString());
    EXPECT_EQ(folderOfData(QStringLiteral("C: \\TERVA48\\Alpha")), QStringLiteral("Alpha"));
    EXPECT_EQ(folderOfData(QStringLiteral("C:")), QString());
}

TEST_F(CropLookupsTest, CropsWithAModelLineGetARow)
{
    load({ QStringLiteral("AB       Alpha bean"), QStringLiteral("CD       Corn dog"),
             QStringLiteral("EF       Eff"), QStringLiteral("GH       No model line") },
        { QStringLiteral("ABD C: \\TERVA48\\Alpha"),
            QStringLiteral("MAB C: \\TERVA48\\ABMOD048.EXE ABMOD048"),
            QStringLiteral("MCD C: \\TERVA48\\ABMOD048.EXE ABMOD048"),
            QStringLiteral("CDD C: \\TERVA48\\Corn"), QStringLiteral("EFD C: \\TERVA48\\Eff"),
            QStringLiteral("MEF C: \\TERVA48\\KESTA048.EXE I"),
            QStringLiteral("GHD C: \\TERVA48\\Gh") });

    CreateCropLookup();

    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(rowsOf(QStringLiteral(
                  "SELECT CODE, Name, TERVA_Folder, CultivarFile FROM CropLookup ORDER BY rowid")),
        (QStringList { QStringLiteral("AB|Alpha bean|Alpha|ABMOD048.CUL"),
            QStringLiteral("CD|Corn dog|Corn|CDMOD048.CUL"),
            QStringLiteral("EF|Eff|Eff|EFSTA048.CUL") }));
}

TEST_F(CropLookupsTest, RepeatedCropCodeIsToldAndPassedOver)
{
    load({ QStringLiteral("AB       Alpha bean"), QStringLiteral("AB       Alpha again") },
        { QStringLiteral("MAB C: \\TERVA48\\ABMOD048.EXE ABMOD048") });

    CreateCropLookup();

    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].text,
        QStringLiteral(
            "Please correct the file TERVAPRO.V48. Repeated codes are not permitted in the file. "
            "Please change or remove one code 'ABD'."));
    EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Error"));
    EXPECT_EQ(m_ui.messages[0].icon, MsgIcon::Critical);
    EXPECT_EQ(database::rowCount(QStringLiteral("CropLookup")), 1);
}

TEST_F(CropLookupsTest, CultivarLinesFromEachCropsFile)
{
    load({ QStringLiteral("AB       Alpha bean"), QStringLiteral("CD       Corn dog"),
             QStringLiteral("EF       Eff"), QStringLiteral("GH       Gee") },
        { QStringLiteral("MAB C: \\TERVA48\\ABMOD048.EXE ABMOD048"),
            QStringLiteral("MCD C: \\TERVA48\\CDMOD048.EXE CDMOD048"),
            QStringLiteral("MEF C: \\TERVA48\\EFMOD048.EXE EFMOD048"),
            QStringLiteral("MGH C: \\TERVA48\\GHMOD048.EXE GHMOD048") });
    write(QStringLiteral("GENOTYPE/abmod048.cul"),
        { QStringLiteral("*CULTIVARS: Alpha"), QStringLiteral("@VAR#  VAR-NAME........"),
            QStringLiteral("! comment"), QStringLiteral("$junk"), QStringLiteral("   "),
            QStringLiteral("IB0001 Alpha one        . 1.0 2.0"), QStringLiteral("IB0002 O'Brien"),
            QStringLiteral("IB0003"), QStringLiteral("       no number"),
            QStringLiteral("IB0004 A very long cultivar name") });
    // A number listed twice: the file is given up at that line.
    write(QStringLiteral("GENOTYPE/CDMOD048.CUL"),
        { QStringLiteral("IB0001 First"), QStringLiteral("IB0001 Second"),
            QStringLiteral("IB0009 Never read") });
    // Junk bytes are read as text like any other.
    writeBytes(QStringLiteral("GENOTYPE/EFMOD048.CUL"),
        QByteArray("\x00\x01\xff\xfe\r\n\x1a\x1a\x1a\x1a\x1a\x1a\x1a\x1a\x1a\x1a", 16));
    // GHMOD048.CUL doesn't exist: passed over without a word.
    CreateCropLookup();

    CropCodesLookup();

    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].text,
        QStringLiteral("Error in file ") + path(QStringLiteral("GENOTYPE/CDMOD048.CUL"))
            + QStringLiteral(" in CropCodesLookup/module."));
    EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Error"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT CODE, CROP, Description FROM CropCodesLookup WHERE "
                                    "CODE <> 'EF' ORDER BY rowid")),
        (QStringList { QStringLiteral("AB|IB0001|Alpha one"), QStringLiteral("AB|IB0002|OBrien"),
            QStringLiteral("AB|IB0003|No description"), QStringLiteral("AB|IB0004|A very long cul"),
            QStringLiteral("CD|IB0001|First"), QStringLiteral("FA|IB0001| FALLOW") }));
    EXPECT_EQ(database::rowCount(QStringLiteral("CropCodesLookup")), 8);
}

TEST_F(CropLookupsTest, FallowIsThereWithoutAnyCultivarFile)
{
    load({}, {});
    CreateCropLookup();
    CropCodesLookup();
    EXPECT_TRUE(m_ui.messages.empty()) << m_ui.texts().join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT CODE, CROP, Description FROM CropCodesLookup")),
        QStringList { QStringLiteral("FA|IB0001| FALLOW") });
}

} // namespace
} // namespace quillon::test
