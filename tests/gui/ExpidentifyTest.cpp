#include "app/AppState.h"
#include "app/ExpIdentity.h"
#include "app/gui/frmAddInfo.h"
#include "app/gui/frmExpidentify.h"
#include "database/Sql.h"
#include "support/QtPrinters.h"
#include "support/WorkDbFixture.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

using namespace quillon;

namespace {

QString sep()
{
    return QString(QDir::separator());
}

class ExpidentifyTest : public test::WorkDbTest {
protected:
    void SetUp() override
    {
        test::WorkDbTest::SetUp();
        addCrop(QStringLiteral("WH"), QStringLiteral("Wheat"), QStringLiteral("WHEAT"));
        addCrop(QStringLiteral("MZ"), QStringLiteral("Maize"), QStringLiteral("MAIZE"));
        state().DataFolder = QStringLiteral("/data/TERVA48");
    }
    void addCrop(const QString& code, const QString& name, const QString& folder)
    {
        database::insertRow(QStringLiteral("CropLookup"),
            { { QStringLiteral("CODE"), code }, { QStringLiteral("Name"), name },
                { QStringLiteral("TERVA_Folder"), folder } });
        database::insertRow(QStringLiteral("CodeLookup"),
            { { QStringLiteral("Type"), QStringLiteral("Crop and Weed Species") },
                { QStringLiteral("Code"), code }, { QStringLiteral("Description"), name } });
    }
    void startNewFile()
    {
        setFileType(state(), FileType::Experimental);
        state().IsNewFile = true;
        state().ExpFilePath.clear();
        m_window.Form_Load();
    }
    template <typename T> T* child(const char* name)
    {
        T* widget = m_window.findChild<T*>(QLatin1String(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    QLineEdit* box(const char* name) { return child<QLineEdit>(name); }
    void chooseCrop(const QString& name)
    {
        auto* combo = child<QComboBox>("DBCombo1");
        combo->setCurrentIndex(combo->findText(name));
        m_window.DBCombo1_Click();
    }
    void chooseType(FileType type)
    {
        auto* combo = child<QComboBox>("cmbType");
        combo->setCurrentIndex(combo->findData(static_cast<int>(type)));
        m_window.cmbType_Click();
    }

    frmExpidentify m_window;
};

} // namespace

TEST_F(ExpidentifyTest, NewFileNameGrowsFromCropCodesYearAndNumber)
{
    startNewFile();
    QStringList renamed;
    QObject::connect(
        &m_window, &frmExpidentify::fileNameChanged, [&](const QString& p) { renamed << p; });
    EXPECT_EQ(child<QComboBox>("DBCombo1")->count(), 2);
    EXPECT_EQ(child<QComboBox>("DBCombo1")->itemText(0), QStringLiteral("Maize"));
    EXPECT_EQ(child<QComboBox>("cmbType")->count(), 5);
    EXPECT_TRUE(child<QComboBox>("cmbType")->isEnabled());

    chooseCrop(QStringLiteral("Maize"));
    box("txtINSTE")->setText(QStringLiteral("AB"));
    box("TxtSitee")->setText(QStringLiteral("CD"));
    EXPECT_TRUE(state().ExpFilePath.isEmpty()); // no number yet
    box("txtYear")->setText(QStringLiteral("2001"));
    box("txtNumber")->setText(QStringLiteral("1"));
    EXPECT_EQ(box("TxtEXPTNO")->text(), QStringLiteral("0101"));
    const QString maizeFile = QStringLiteral("/data/TERVA48") + sep() + QStringLiteral("MAIZE")
        + sep() + QStringLiteral("ABCD0101.MZx");
    EXPECT_EQ(state().ExpFilePath, maizeFile);
    ASSERT_FALSE(renamed.isEmpty());
    EXPECT_EQ(renamed.last(), maizeFile);
    EXPECT_EQ(m_window.windowTitle(),
        QStringLiteral("Experiment Identification (experimental) - ABCD0101.MZX"));

    // Another type: no crop, the type's folder, extension and label.
    chooseType(FileType::Sequence);
    EXPECT_TRUE(state().IsSequence);
    EXPECT_FALSE(state().IsExperimental);
    EXPECT_EQ(state().FileTypeLabel, QStringLiteral("(sequence)"));
    EXPECT_EQ(child<QComboBox>("DBCombo1")->currentIndex(), -1);
    EXPECT_FALSE(child<QComboBox>("DBCombo1")->isEnabled());
    EXPECT_FALSE(child<QLabel>("lblCropNote")->isHidden());
    EXPECT_EQ(state().ExpFilePath,
        QStringLiteral("/data/TERVA48") + sep() + QStringLiteral("Sequence") + sep()
            + QStringLiteral("ABCD0101.sqx"));
    EXPECT_EQ(m_window.experimentDetails().CODE, QStringLiteral("sq"));
    EXPECT_EQ(m_window.windowTitle(),
        QStringLiteral("Experiment Identification (sequence) - ABCD0101.SQX"));

    // Back to experimental with no crop chosen: the marks of a missing crop.
    chooseType(FileType::Experimental);
    EXPECT_EQ(state().ExpFilePath,
        QStringLiteral("/data/TERVA48") + sep() + sep() + QStringLiteral("ABCD0101.x"));
}

TEST_F(ExpidentifyTest, ReadFileIsShownKeepsItsFolderAndItsType)
{
    storeExperimentDetails({ QStringLiteral("UF"), QStringLiteral("GA"), QStringLiteral("9702"),
        QStringLiteral("wh"), QStringLiteral("A WHEAT TRIAL") });
    PlotDetails plot;
    plot.PAREA = QStringLiteral("20");
    storePlotDetails(plot);
    setFileType(state(), FileType::Experimental);
    state().IsNewFile = false;
    const QString readPath = QStringLiteral("/trials/old/UFGA9702.WHX");
    state().ExpFilePath = readPath;
    m_window.Form_Load();

    // Loading shows the file as it is and doesn't rename it.
    EXPECT_EQ(state().ExpFilePath, readPath);
    EXPECT_EQ(box("txtINSTE")->text(), QStringLiteral("UF"));
    EXPECT_EQ(box("txtYear")->text(), QStringLiteral("1997"));
    EXPECT_EQ(box("txtNumber")->text(), QStringLiteral("2"));
    EXPECT_EQ(box("TxtEXPTNO")->text(), QStringLiteral("9702"));
    EXPECT_EQ(box("TxtENAME")->text(), QStringLiteral("A WHEAT TRIAL"));
    EXPECT_EQ(child<QComboBox>("DBCombo1")->currentText(), QStringLiteral("Wheat"));
    EXPECT_EQ(m_window.cropCode(), QStringLiteral("WH"));
    EXPECT_FALSE(child<QComboBox>("cmbType")->isEnabled());
    EXPECT_EQ(m_window.plotDetails().PAREA, QStringLiteral("20"));

    // The same name typed again keeps the file's own spelling; a new number
    // renames it in its own folder.
    box("TxtSitee")->setText(QStringLiteral("GA"));
    EXPECT_EQ(state().ExpFilePath, readPath);
    box("txtNumber")->setText(QStringLiteral("3"));
    EXPECT_EQ(state().ExpFilePath,
        QStringLiteral("/trials/old") + sep() + QStringLiteral("UFGA9703.WHx"));

    // The type list is locked for a file that was read.
    chooseType(FileType::Seasonal);
    EXPECT_TRUE(state().IsExperimental);
}

TEST_F(ExpidentifyTest, BoxesRefuseWhatTheRulesRefuse)
{
    startNewFile();
    box("txtYear")->setText(QStringLiteral("1920"));
    EXPECT_FALSE(m_window.txtYear_Validate());
    box("txtYear")->setText(QStringLiteral("1921"));
    EXPECT_TRUE(m_window.txtYear_Validate());
    box("txtYear")->setText(QStringLiteral("3001"));
    EXPECT_FALSE(m_window.txtYear_Validate());

    box("txtNumber")->setText(QString());
    EXPECT_TRUE(m_window.txtNumber_Validate());
    EXPECT_EQ(box("txtNumber")->text(), QStringLiteral("1"));
    box("txtNumber")->setText(QStringLiteral("one"));
    EXPECT_FALSE(m_window.txtNumber_Validate());

    box("txtINSTE")->setText(QStringLiteral("A"));
    EXPECT_FALSE(m_window.txtINSTE_Validate());
    box("TxtSitee")->setText(QStringLiteral("C"));
    EXPECT_FALSE(m_window.TxtSitee_Validate());
    box("TxtEXPTNO")->setText(QStringLiteral("123"));
    EXPECT_FALSE(m_window.TxtEXPTNO_Validate());
    box("TxtEXPTNO")->setText(QString());
    EXPECT_TRUE(m_window.TxtEXPTNO_Validate());

    ASSERT_EQ(m_ui.messages.size(), 6u);
    EXPECT_EQ(m_ui.texts(),
        QStringList({ QStringLiteral("Enter a four digit year."),
            QStringLiteral("Enter a four digit year."), QStringLiteral("Invalid entry."),
            QStringLiteral("Institute code must be two characters long."),
            QStringLiteral("Site code must be two characters long."),
            QStringLiteral("Experiment number cannot less then 4 symbols long") }));
    EXPECT_EQ(m_ui.messages[2].title, QStringLiteral("Error"));
    EXPECT_EQ(m_ui.messages[2].icon, MsgIcon::Critical);
}

TEST_F(ExpidentifyTest, NextNeedsACropThenStoresTheCode)
{
    startNewFile();
    box("txtINSTE")->setText(QStringLiteral("AB"));
    m_window.cmdNext_Click();
    EXPECT_EQ(m_ui.texts(), QStringList { QStringLiteral("Please select Crop.") });
    EXPECT_EQ(database::rowCount(QStringLiteral("ExpDetails")), 0);

    m_ui.clear();
    int requests = 0;
    QObject::connect(&m_window, &frmExpidentify::nextRequested, [&] { ++requests; });
    chooseCrop(QStringLiteral("Wheat"));
    m_window.cmdNext_Click();
    EXPECT_EQ(test::rowsOf(QStringLiteral("SELECT INSTE, CODE FROM ExpDetails")),
        QStringList { QStringLiteral("AB|WH") });
    EXPECT_EQ(requests, 1);
    EXPECT_TRUE(m_ui.messages.empty());
    // The accepted new file starts from the defaults: treatment 1.
    EXPECT_EQ(database::rowCount(QStringLiteral("Treatments")), 1);

    // Another type stores no crop, in a document without treatments yet.
    database::exec(QStringLiteral("DELETE FROM Treatments"));
    chooseType(FileType::Forecast);
    m_window.cmdNext_Click();
    EXPECT_EQ(requests, 2);
    EXPECT_TRUE(m_ui.messages.empty());
    EXPECT_EQ(
        test::rowsOf(QStringLiteral("SELECT CODE FROM ExpDetails")), QStringList { QString() });

    // With treatments in the file the code is left alone.
    database::exec(QStringLiteral("UPDATE ExpDetails SET CODE = 'zz'"));
    m_window.cmdNext_Click();
    EXPECT_EQ(test::rowsOf(QStringLiteral("SELECT CODE FROM ExpDetails")),
        QStringList { QStringLiteral("zz") });
}

TEST_F(ExpidentifyTest, UnloadWritesTheThreeTablesOnceAndAdditionalInfoComesBack)
{
    startNewFile();
    chooseCrop(QStringLiteral("Maize"));
    box("txtINSTE")->setText(QStringLiteral("AB"));
    box("TxtSitee")->setText(QStringLiteral("CD"));
    box("TxtEXPTNO")->setText(QStringLiteral("2601"));
    box("TxtENAME")->setText(QStringLiteral("NITROGEN RATES"));

    // The additional information dialog: entries come back on OK.
    QTimer::singleShot(0, [] {
        auto* dialog = qobject_cast<frmAddInfo*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        dialog->findChild<QLineEdit*>(QStringLiteral("txtPEOPLE"))
            ->setText(QStringLiteral("A. Grower"));
        dialog->findChild<QLineEdit*>(QStringLiteral("txtPRNO"))->setText(QStringLiteral("4"));
        dialog->findChild<QLineEdit*>(QStringLiteral("txtHARM"))
            ->setText(QStringLiteral("Combine"));
        dialog->findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
    });
    m_window.cmdAddInfo_Click();
    EXPECT_EQ(m_window.generalDetails().PEOPLE, QStringLiteral("A. Grower"));
    EXPECT_EQ(m_window.plotDetails().PRNO, QStringLiteral("4"));

    m_window.close();
    EXPECT_EQ(
        test::rowsOf(QStringLiteral("SELECT INSTE, SITEE, EXPTNO, CODE, ENAME FROM ExpDetails")),
        QStringList { QStringLiteral("AB|CD|2601|MZ|NITROGEN RATES") });
    EXPECT_EQ(test::rowsOf(QStringLiteral("SELECT PRNO, HARM, PAREA FROM PlotInfo")),
        QStringList { QStringLiteral("4|Combine|NULL") });
    EXPECT_EQ(test::rowsOf(QStringLiteral("SELECT PEOPLE, ADDRESS FROM GeneralInfo")),
        QStringList { QStringLiteral("A. Grower|") });
    database::exec(QStringLiteral("DELETE FROM ExpDetails"));
    m_window.Form_Unload(); // already unloaded: nothing more is written
    EXPECT_EQ(database::rowCount(QStringLiteral("ExpDetails")), 0);
    EXPECT_TRUE(m_ui.messages.empty());
}

TEST_F(ExpidentifyTest, UnloadFailureIsReportedWithItsTail)
{
    startNewFile();
    QTimer::singleShot(0, [] {
        auto* dialog = qobject_cast<frmAddInfo*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        // Within the box's limit, beyond the 16-bit column's.
        dialog->findChild<QLineEdit*>(QStringLiteral("txtHRNO"))->setText(QStringLiteral("40000"));
        dialog->cmdOK_Click();
    });
    m_window.cmdAddInfo_Click();
    m_window.Form_Unload();
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_TRUE(m_ui.messages[0].text.endsWith(QStringLiteral(" in Form_Unload/frmExpidentify")))
        << m_ui.messages[0].text.toStdString();
}

TEST_F(ExpidentifyTest, PaddingForThePreviewLeavesTheFileNameAlone)
{
    startNewFile();
    box("txtINSTE")->setText(QStringLiteral("A"));
    box("TxtEXPTNO")->setText(QStringLiteral("12"));
    state().ExpFilePath = QStringLiteral("/keep/me.x");
    const ExperimentDetails padded = m_window.padForView();
    EXPECT_EQ(padded.INSTE, QStringLiteral(" A"));
    EXPECT_EQ(padded.SITEE, QStringLiteral("  "));
    EXPECT_EQ(padded.EXPTNO, QStringLiteral("  12"));
    EXPECT_EQ(box("TxtEXPTNO")->text(), QStringLiteral("  12"));
    EXPECT_EQ(state().ExpFilePath, QStringLiteral("/keep/me.x"));
}

TEST_F(ExpidentifyTest, PlotBoxesOfAdditionalInformation)
{
    frmAddInfo dialog;
    PlotDetails plot;
    plot.PLEN = QStringLiteral("10");
    plot.PLAY = QStringLiteral("RCB");
    dialog.setDetails(plot, { QStringLiteral("P"), QStringLiteral("A"), QStringLiteral("S") });
    EXPECT_EQ(dialog.plotDetails().PLAY, QStringLiteral("RCB"));
    EXPECT_EQ(dialog.generalDetails().SITE, QStringLiteral("S"));

    auto* plen = dialog.findChild<QLineEdit*>(QStringLiteral("txtPLEN"));
    auto* parea = dialog.findChild<QLineEdit*>(QStringLiteral("txtPAREA"));
    ASSERT_TRUE(plen && parea);
    plen->setText(QStringLiteral("10000"));
    EXPECT_FALSE(dialog.validatePlotBox(QStringLiteral("txtPLEN")));
    EXPECT_EQ(plen->text(), QStringLiteral("10000")); // left for the user to mend
    parea->setText(QStringLiteral("10000"));
    EXPECT_TRUE(dialog.validatePlotBox(QStringLiteral("txtPAREA")));
    plen->setText(QString());
    EXPECT_TRUE(dialog.validatePlotBox(QStringLiteral("txtPLEN")));
    EXPECT_EQ(plen->text(), QStringLiteral("-99"));
    EXPECT_TRUE(dialog.validatePlotBox(QStringLiteral("txtPLAY")));
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].text, QStringLiteral("Invalid entry."));
    EXPECT_EQ(m_ui.messages[0].title, QStringLiteral("Error"));
    EXPECT_EQ(m_ui.messages[0].icon, MsgIcon::Critical);
}

TEST_F(ExpidentifyTest, LeavingABoxChecksItButAButtonWaitsForItsHandler)
{
    startNewFile();
    m_window.show();
    QApplication::setActiveWindow(&m_window);
    QLineEdit* year = box("txtYear");
    QLineEdit* site = box("TxtSitee");
    year->setFocus(Qt::TabFocusReason);
    year->setText(QStringLiteral("1900"));
    site->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(m_ui.texts(), QStringList { QStringLiteral("Enter a four digit year.") });
    EXPECT_EQ(QApplication::focusWidget(), year);

    // Focus to a button: no message until the button's handler settles.
    m_ui.clear();
    child<QPushButton>("cmdNext")->setFocus(Qt::MouseFocusReason);
    EXPECT_TRUE(m_ui.messages.empty());
    m_window.cmdNext_Click();
    EXPECT_EQ(m_ui.texts(), QStringList { QStringLiteral("Enter a four digit year.") });
    EXPECT_EQ(QApplication::focusWidget(), year);

    // A mended entry lets the focus go.
    m_ui.clear();
    year->setText(QStringLiteral("1999"));
    site->setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(m_ui.messages.empty());
    EXPECT_EQ(QApplication::focusWidget(), site);
}
