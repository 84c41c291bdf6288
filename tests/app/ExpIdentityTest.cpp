#include "app/ExpIdentity.h"
#include "app/AppState.h"
#include "app/RuntimeError.h"
#include "database/Sql.h"
#include "support/QtPrinters.h"
#include "support/WorkDbFixture.h"

#include <QDir>

#include <gtest/gtest.h>

using namespace quillon;

namespace {

QString sep()
{
    return QString(QDir::separator());
}

const PlotField& plotField(const char* column)
{
    for (const PlotField& field : plotFields()) {
        if (QLatin1String(field.column) == QLatin1String(column))
            return field;
    }
    throw std::logic_error("no such plot field");
}

QString accepted(const QString& text, const RangeRule& rule)
{
    const std::optional<QString> result = acceptRange(text, rule);
    return result ? *result : QStringLiteral("<refused>");
}

class ExpIdentityTest : public test::WorkDbTest {
protected:
    void addCrop(const QString& code, const QString& name, const QString& folder,
        bool listedAsSpecies = true)
    {
        database::insertRow(QStringLiteral("CropLookup"),
            { { QStringLiteral("CODE"), code }, { QStringLiteral("Name"), name },
                { QStringLiteral("TERVA_Folder"), folder },
                { QStringLiteral("CultivarFile"), code + QStringLiteral("X.CUL") } });
        database::insertRow(QStringLiteral("CodeLookup"),
            { { QStringLiteral("Type"),
                  listedAsSpecies ? QStringLiteral("Crop and Weed Species")
                                  : QStringLiteral("Weather") },
                { QStringLiteral("Code"), code }, { QStringLiteral("Description"), name } });
    }
};

} // namespace

TEST(ExpIdentity, PlotBoxesKeepTheirLimitsDefaultsAndTheMissingValue)
{
    const RangeRule parea = plotField("PAREA").rule;
    const RangeRule plen = plotField("PLEN").rule;
    // PLEN stops at 9999 where PAREA goes on to 99999.
    EXPECT_EQ(accepted(QStringLiteral("10000"), plen), QStringLiteral("<refused>"));
    EXPECT_EQ(accepted(QStringLiteral("10000"), parea), QStringLiteral("10000"));
    EXPECT_EQ(accepted(QStringLiteral("99999.5"), parea), QStringLiteral("<refused>"));
    EXPECT_EQ(accepted(QStringLiteral("0"), plen), QStringLiteral("0"));
    EXPECT_EQ(accepted(QStringLiteral("-1"), plen), QStringLiteral("<refused>"));
    EXPECT_EQ(accepted(QStringLiteral("abc"), parea), QStringLiteral("<refused>"));
    EXPECT_EQ(accepted(QStringLiteral("12,5"), parea), QStringLiteral("<refused>"));
    // -99 passes every limit, an empty box takes its default, blanks go.
    for (const PlotField& field : plotFields()) {
        if (!field.numeric)
            continue;
        EXPECT_EQ(accepted(QStringLiteral(" -99 "), field.rule), QStringLiteral("-99"))
            << field.column;
        EXPECT_EQ(accepted(QStringLiteral("  "), field.rule), QStringLiteral("-99"))
            << field.column;
    }
    EXPECT_FALSE(plotField("PLAY").numeric);
    EXPECT_FALSE(plotField("HARM").numeric);
    EXPECT_EQ(QLatin1String(plotField("HAREA").control), QLatin1String("txtHAREA"));
    EXPECT_EQ(
        accepted(QStringLiteral("10000"), plotField("HAREA").rule), QStringLiteral("<refused>"));
    EXPECT_EQ(accepted(QStringLiteral("10000"), plotField("HLEN").rule), QStringLiteral("10000"));

    // The experiment counter has no upper limit and defaults to 1.
    const RangeRule counter = experimentCounterRule();
    EXPECT_EQ(accepted(QString(), counter), QStringLiteral("1"));
    EXPECT_EQ(accepted(QStringLiteral("123456"), counter), QStringLiteral("123456"));
    EXPECT_EQ(accepted(QStringLiteral("-5"), counter), QStringLiteral("<refused>"));
}

TEST(ExpIdentity, YearAndCodeLengthChecksGiveTheirTexts)
{
    EXPECT_EQ(checkYear(QStringLiteral("1920")), QStringLiteral("Enter a four digit year."));
    EXPECT_EQ(checkYear(QStringLiteral("1921")), QString());
    EXPECT_EQ(checkYear(QStringLiteral("3000")), QString());
    EXPECT_EQ(checkYear(QStringLiteral("3001")), QStringLiteral("Enter a four digit year."));
    EXPECT_EQ(checkYear(QStringLiteral("26")), QStringLiteral("Enter a four digit year."));
    EXPECT_EQ(checkYear(QStringLiteral("20x6")), QStringLiteral("Enter a four digit year."));
    EXPECT_EQ(checkYear(QString()), QString());

    EXPECT_EQ(checkInstitute(QStringLiteral("A")),
        QStringLiteral("Institute code must be two characters long."));
    EXPECT_EQ(checkInstitute(QStringLiteral(" A ")),
        QStringLiteral("Institute code must be two characters long."));
    EXPECT_EQ(checkInstitute(QStringLiteral("AB")), QString());
    EXPECT_EQ(checkInstitute(QString()), QString());
    EXPECT_EQ(
        checkSite(QStringLiteral("C")), QStringLiteral("Site code must be two characters long."));
    EXPECT_EQ(checkExperimentNumber(QStringLiteral("010")),
        QStringLiteral("Experiment number cannot less then 4 symbols long"));
    EXPECT_EQ(checkExperimentNumber(QStringLiteral("   1")),
        QStringLiteral("Experiment number cannot less then 4 symbols long"));
    EXPECT_EQ(checkExperimentNumber(QStringLiteral("0101")), QString());
}

TEST(ExpIdentity, ExperimentNumberIsMadeOfYearAndCounterAndSplitBack)
{
    EXPECT_EQ(composeExperimentNumber(QStringLiteral("2026"), QStringLiteral("1")),
        QStringLiteral("2601"));
    EXPECT_EQ(composeExperimentNumber(QStringLiteral("2001"), QStringLiteral("01")),
        QStringLiteral("0101"));
    EXPECT_EQ(composeExperimentNumber(QStringLiteral("1999"), QStringLiteral("123")),
        QStringLiteral("9923"));
    EXPECT_EQ(composeExperimentNumber(QStringLiteral("2026"), QStringLiteral("-99")), QString());
    EXPECT_EQ(composeExperimentNumber(QString(), QStringLiteral("1")), QString());

    const YearAndNumber recent = splitExperimentNumber(QStringLiteral("2502"));
    EXPECT_EQ(recent.year, QStringLiteral("2025"));
    EXPECT_EQ(recent.number, QStringLiteral("2"));
    EXPECT_EQ(splitExperimentNumber(QStringLiteral("2601")).year, QStringLiteral("1926"));
    EXPECT_TRUE(splitExperimentNumber(QStringLiteral("A101")).year.isEmpty());
    EXPECT_TRUE(splitExperimentNumber(QStringLiteral("101")).number.isEmpty());
}

TEST(ExpIdentity, FileNameFollowsTypeCropAndReadFolder)
{
    FileNameParts parts;
    parts.INSTE = QStringLiteral("AB");
    parts.SITEE = QStringLiteral("CD");
    parts.EXPTNO = QStringLiteral("0101");
    parts.cropCode = QStringLiteral("MZ");
    parts.cropFolder = QStringLiteral("Maize");
    parts.dataFolder = QStringLiteral("/data/TERVA48");
    EXPECT_EQ(experimentFilePath(parts),
        QStringLiteral("/data/TERVA48") + sep() + QStringLiteral("Maize") + sep()
            + QStringLiteral("ABCD0101.MZx"));

    // A crop without a folder and no crop at all leave the marks that Save
    // recognises: a doubled separator and a bare ".x".
    FileNameParts noCrop = parts;
    noCrop.cropCode.clear();
    noCrop.cropFolder.clear();
    const QString missing = experimentFilePath(noCrop);
    EXPECT_EQ(
        missing, QStringLiteral("/data/TERVA48") + sep() + sep() + QStringLiteral("ABCD0101.x"));
    EXPECT_EQ(pathForType(missing, FileType::Seasonal),
        QStringLiteral("/data/TERVA48") + sep() + QStringLiteral("Seasonal") + sep()
            + QStringLiteral("ABCD0101.SNX"));
    EXPECT_EQ(pathForType(missing, FileType::Experimental), missing);

    const std::pair<FileType, const char*> types[]
        = { { FileType::Sequence, "Sequence/ABCD0101.sqx" },
              { FileType::Seasonal, "Seasonal/ABCD0101.snx" },
              { FileType::Spatial, "Spatial/ABCD0101.gsx" },
              { FileType::Forecast, "YieldForecast/ABCD0101.fcx" } };
    for (const auto& [type, tail] : types) {
        FileNameParts typed = parts;
        typed.type = type;
        EXPECT_EQ(experimentFilePath(typed),
            QStringLiteral("/data/TERVA48") + sep()
                + QString::fromLatin1(tail).replace(QLatin1Char('/'), sep()));
    }

    // A file that was read stays in its own folder, whatever its crop says.
    FileNameParts read = parts;
    read.readFilePath = QStringLiteral("C:\\Trials\\Old\\XXYY9901.MZX");
    EXPECT_EQ(experimentFilePath(read),
        QStringLiteral("C:\\Trials\\Old") + sep() + QStringLiteral("ABCD0101.MZx"));

    // Nothing is made until all three parts have their full length.
    FileNameParts shortSite = parts;
    shortSite.SITEE = QStringLiteral("C");
    EXPECT_TRUE(experimentFilePath(shortSite).isEmpty());
    FileNameParts shortNumber = parts;
    shortNumber.EXPTNO = QStringLiteral("101");
    EXPECT_TRUE(experimentFilePath(shortNumber).isEmpty());

    EXPECT_EQ(captionWithFile(QStringLiteral("Experiment Details - OLD0101.MZX"),
                  QStringLiteral("/x/ABCD0101.MZx")),
        QStringLiteral("Experiment Details - ABCD0101.MZX"));
}

TEST_F(ExpIdentityTest, CropListJoinsTheSpeciesCodesAndFindsByNameOrCode)
{
    addCrop(QStringLiteral("WH"), QStringLiteral("Wheat"), QStringLiteral("WHEAT"));
    addCrop(QStringLiteral("MZ"), QStringLiteral("Maize"), QStringLiteral("MAIZE"));
    addCrop(QStringLiteral("ZZ"), QStringLiteral("Not a species"), QString(), false);

    const std::vector<Crop> crops = cropList();
    ASSERT_EQ(crops.size(), 2u);
    EXPECT_EQ(crops[0].name, QStringLiteral("Maize"));
    EXPECT_EQ(crops[0].code, QStringLiteral("MZ"));
    EXPECT_EQ(crops[1].folder, QStringLiteral("WHEAT"));

    ASSERT_TRUE(cropNamed(QStringLiteral("Wheat")).has_value());
    EXPECT_EQ(cropNamed(QStringLiteral("Wheat"))->code, QStringLiteral("WH"));
    // A file that was read holds its crop code as the file name spells it.
    ASSERT_TRUE(cropWithCode(QStringLiteral("mz")).has_value());
    EXPECT_EQ(cropWithCode(QStringLiteral("mz"))->name, QStringLiteral("Maize"));
    EXPECT_FALSE(cropNamed(QStringLiteral("Rice")).has_value());

    EXPECT_EQ(
        checkCropFolderName(QStringLiteral("  ")), QStringLiteral("Please enter a folder name."));
    EXPECT_FALSE(checkCropFolderName(QStringLiteral("a\\b")).isEmpty());
    EXPECT_FALSE(checkCropFolderName(QStringLiteral("o'brien")).isEmpty());
    EXPECT_FALSE(checkCropFolderName(QStringLiteral("a,b")).isEmpty());
    EXPECT_TRUE(checkCropFolderName(QStringLiteral(" corn ")).isEmpty());
    storeCropFolder(QStringLiteral("Maize"), QStringLiteral(" corn "));
    EXPECT_EQ(
        test::rowsOf(QStringLiteral("SELECT CODE, TERVA_Folder FROM CropLookup ORDER BY CODE")),
        QStringList(
            { QStringLiteral("MZ|CORN"), QStringLiteral("WH|WHEAT"), QStringLiteral("ZZ|NULL") }));
}

TEST_F(ExpIdentityTest, TablesAreLoadedAndStoredAsOneRow)
{
    // Nothing stored yet: empty texts.
    EXPECT_TRUE(loadExperimentDetails().INSTE.isEmpty());
    EXPECT_TRUE(loadPlotDetails().PAREA.isEmpty());

    ExperimentDetails details { QStringLiteral("AB"), QStringLiteral("CD"), QStringLiteral("0101"),
        QStringLiteral("MZ"), QStringLiteral("A TITLE") };
    storeExperimentDetails(details);
    details.ENAME = QStringLiteral("ANOTHER TITLE");
    storeExperimentDetails(details);
    EXPECT_EQ(
        test::rowsOf(QStringLiteral("SELECT INSTE, SITEE, EXPTNO, CODE, ENAME FROM ExpDetails")),
        QStringList { QStringLiteral("AB|CD|0101|MZ|ANOTHER TITLE") });
    EXPECT_EQ(loadExperimentDetails().ENAME, QStringLiteral("ANOTHER TITLE"));

    PlotDetails plot;
    plot.PAREA = QStringLiteral("12.5");
    plot.PRNO = QStringLiteral("2.5"); // an Integer column: rounded half to even
    plot.PLEN = QStringLiteral("-99");
    plot.PLAY = QStringLiteral("R");
    storePlotDetails(plot);
    plot.HLEN = QStringLiteral(" 3 ");
    storePlotDetails(plot);
    EXPECT_EQ(test::rowsOf(
                  QStringLiteral("SELECT PAREA, PRNO, PLEN, PLDR, PLAY, HLEN, HARM FROM PlotInfo")),
        QStringList { QStringLiteral("12.5|2|-99|NULL|R|3|") });
    const PlotDetails back = loadPlotDetails();
    EXPECT_EQ(back.PAREA, QStringLiteral("12.5"));
    EXPECT_EQ(back.PLEN, QStringLiteral("-99"));
    EXPECT_TRUE(back.PLDR.isEmpty());
    EXPECT_EQ(back.PLAY, QStringLiteral("R"));

    // A count too large for its Integer column is refused by the database,
    // as is text in a numeric box.
    PlotDetails tooMany;
    tooMany.PRNO = QStringLiteral("40000");
    EXPECT_THROW(storePlotDetails(tooMany), RuntimeError);
    PlotDetails notNumber;
    notNumber.PAREA = QStringLiteral("x");
    try {
        storePlotDetails(notNumber);
        FAIL() << "text stored in a numeric column";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::TypeMismatch);
    }

    storeGeneralDetails({ QStringLiteral("A. Person"), QString(), QStringLiteral("Field 3") });
    EXPECT_EQ(test::rowsOf(QStringLiteral("SELECT PEOPLE, ADDRESS, SITE FROM GeneralInfo")),
        QStringList { QStringLiteral("A. Person||Field 3") });
    EXPECT_EQ(loadGeneralDetails().SITE, QStringLiteral("Field 3"));

    // A title longer than its column is the database's to refuse.
    details.ENAME = QString(71, QLatin1Char('T'));
    EXPECT_THROW(storeExperimentDetails(details), RuntimeError);
}

TEST(ExpIdentity, SaveChecksComeInTheirOrder)
{
    ExperimentDetails details { QStringLiteral("AB"), QStringLiteral("CD"), QStringLiteral("0101"),
        QString(), QStringLiteral("TITLE") };
    EXPECT_EQ(checkBeforeSave(details, FileType::Experimental, QString()),
        QStringLiteral("You must choose a crop name."));
    EXPECT_EQ(checkBeforeSave(details, FileType::Sequence, QString()), QString());
    details.SITEE.clear();
    details.INSTE = QStringLiteral(" ");
    EXPECT_EQ(checkBeforeSave(details, FileType::Sequence, QString()),
        QStringLiteral("Specify Institute Code before saving the file."));
    details.INSTE = QStringLiteral("AB");
    EXPECT_EQ(checkBeforeSave(details, FileType::Sequence, QString()),
        QStringLiteral("Specify Site Code before saving the file."));
    details.SITEE = QStringLiteral("CD");
    details.ENAME.clear();
    EXPECT_EQ(checkBeforeSave(details, FileType::Experimental, QStringLiteral("MZ")),
        identity_text::enterExperimentName);
}
