#include "app/gui/frmExpidentify.h"

#include "app/AppState.h"
#include "app/NewExperiment.h"
#include "app/RuntimeError.h"
#include "app/gui/FocusValidation.h"
#include "app/gui/frmAddInfo.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace quillon {

namespace {

QLineEdit* codeBox(QWidget* parent, const char* name, int length, int width)
{
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(QLatin1String(name));
    edit->setMaxLength(length);
    edit->setFixedWidth(width);
    return edit;
}

QLabel* hint(const QString& text, QWidget* parent, const char* name)
{
    auto* label = new QLabel(text, parent);
    label->setObjectName(QLatin1String(name));
    label->setWordWrap(true);
    QFont small = label->font();
    small.setPointSizeF(small.pointSizeF() * 0.9);
    label->setFont(small);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

constexpr FileType allTypes[] = { FileType::Experimental, FileType::Sequence, FileType::Seasonal,
    FileType::Spatial, FileType::Forecast };

} // namespace

frmExpidentify::frmExpidentify(QWidget* parent)
    : QWidget(parent)
    , m_cmbType(new QComboBox(this))
    , m_DBCombo1(new QComboBox(this))
    , m_lblCropNote(hint(identity_text::cropOnlyForExperimental, this, "lblCropNote"))
    , m_txtINSTE(codeBox(this, "txtINSTE", 2, 56))
    , m_TxtSitee(codeBox(this, "TxtSitee", 2, 56))
    , m_txtYear(codeBox(this, "txtYear", 4, 72))
    , m_txtNumber(codeBox(this, "txtNumber", 6, 56))
    , m_TxtEXPTNO(codeBox(this, "TxtEXPTNO", 4, 72))
    , m_TxtENAME(new QLineEdit(this))
    , m_lblPleseEntExpNam(new QLabel(identity_text::enterExperimentName, this))
    , m_lblFileName(new QLabel(this))
    , m_cmdAddInfo(new QPushButton(tr("&Additional Information..."), this))
    , m_cmdNext(new QPushButton(tr("&Next >"), this))
    , m_validation(new FocusValidation(this))
{
    setObjectName(QStringLiteral("frmExpidentify"));
    m_cmbType->setObjectName(QStringLiteral("cmbType"));
    m_DBCombo1->setObjectName(QStringLiteral("DBCombo1"));
    m_TxtENAME->setObjectName(QStringLiteral("TxtENAME"));
    m_TxtENAME->setMaxLength(70); // the width of ExpDetails.ENAME
    m_TxtENAME->setPlaceholderText(identity_text::enterExperimentName);
    m_lblPleseEntExpNam->setObjectName(QStringLiteral("lblPleseEntExpNam"));
    m_lblPleseEntExpNam->hide(); // its text is the message of a missing title
    m_lblFileName->setObjectName(QStringLiteral("lblFileName"));
    m_lblFileName->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_lblFileName->setWordWrap(true);
    m_cmdAddInfo->setObjectName(QStringLiteral("cmdAddInfo"));
    m_cmdNext->setObjectName(QStringLiteral("cmdNext"));
    m_txtINSTE->setToolTip(tr("Two-letter code of the institute"));
    m_TxtSitee->setToolTip(tr("Two-letter code of the site"));
    m_txtYear->setToolTip(tr("Year of the experiment, four digits"));
    m_txtNumber->setToolTip(tr("Number of the experiment in its year"));
    m_TxtEXPTNO->setToolTip(tr("Two digits of the year and two of the number"));
    for (QLineEdit* edit : { m_txtINSTE, m_TxtSitee })
        edit->setPlaceholderText(QStringLiteral("XX"));
    m_txtYear->setPlaceholderText(QStringLiteral("yyyy"));
    m_TxtEXPTNO->setPlaceholderText(QStringLiteral("yynn"));

    for (FileType type : allTypes)
        m_cmbType->addItem(fileTypeName(type), static_cast<int>(type));
    m_DBCombo1->setMinimumContentsLength(24);
    m_DBCombo1->setPlaceholderText(tr("Select a crop"));

    buildLayout();
    showCropState();

    connect(m_cmbType, &QComboBox::activated, this, &frmExpidentify::cmbType_Click);
    connect(m_DBCombo1, &QComboBox::activated, this, &frmExpidentify::DBCombo1_Click);
    for (QLineEdit* edit : { m_txtINSTE, m_TxtSitee, m_TxtEXPTNO })
        connect(edit, &QLineEdit::textChanged, this, &frmExpidentify::setFileName);
    for (QLineEdit* edit : { m_txtYear, m_txtNumber })
        connect(edit, &QLineEdit::textChanged, this, &frmExpidentify::composeExperimentNumber);
    connect(m_cmdNext, &QPushButton::clicked, this, &frmExpidentify::cmdNext_Click);
    connect(m_cmdAddInfo, &QPushButton::clicked, this, &frmExpidentify::cmdAddInfo_Click);

    m_validation->watch(m_txtINSTE, [this] { return txtINSTE_Validate(); });
    m_validation->watch(m_TxtSitee, [this] { return TxtSitee_Validate(); });
    m_validation->watch(m_TxtEXPTNO, [this] { return TxtEXPTNO_Validate(); });
    m_validation->watch(m_txtYear, [this] { return txtYear_Validate(); });
    m_validation->watch(m_txtNumber, [this] { return txtNumber_Validate(); });

    refreshCaption();
    showFileName();
}

void frmExpidentify::buildLayout()
{
    // Every group's labels get the width of the widest, so that the boxes of
    // all groups line up.
    std::vector<QLabel*> rowLabels;
    auto rowLabel = [&](const QString& text, QWidget* buddy, QWidget* parent) {
        auto* label = new QLabel(text, parent);
        label->setBuddy(buddy);
        rowLabels.push_back(label);
        return label;
    };
    auto inlineLabel = [](const QString& text, QWidget* buddy, QWidget* parent) {
        auto* label = new QLabel(text, parent);
        label->setBuddy(buddy);
        return label;
    };

    auto* fileBox = new QGroupBox(tr("File type and crop"), this);
    fileBox->setObjectName(QStringLiteral("fraType"));
    m_typeForm = new QFormLayout(fileBox);
    m_typeForm->addRow(rowLabel(tr("&Type:"), m_cmbType, fileBox), m_cmbType);
    m_typeForm->addRow(rowLabel(tr("&Crop:"), m_DBCombo1, fileBox), m_DBCombo1);
    m_typeForm->addRow(rowLabel(QString(), nullptr, fileBox), m_lblCropNote);

    auto* idBox = new QGroupBox(tr("Identification"), this);
    idBox->setObjectName(QStringLiteral("fraIdentification"));
    auto* idForm = new QFormLayout(idBox);
    auto* codes = new QHBoxLayout;
    codes->addWidget(m_txtINSTE);
    codes->addSpacing(16);
    codes->addWidget(inlineLabel(tr("&Site code:"), m_TxtSitee, idBox));
    codes->addWidget(m_TxtSitee);
    codes->addStretch();
    idForm->addRow(rowLabel(tr("&Institute code:"), m_txtINSTE, idBox), codes);

    auto* yearRow = new QHBoxLayout;
    yearRow->addWidget(m_txtYear);
    yearRow->addSpacing(16);
    yearRow->addWidget(inlineLabel(tr("N&umber:"), m_txtNumber, idBox));
    yearRow->addWidget(m_txtNumber);
    yearRow->addStretch();
    idForm->addRow(rowLabel(tr("&Year:"), m_txtYear, idBox), yearRow);
    idForm->addRow(rowLabel(tr("E&xperiment number:"), m_TxtEXPTNO, idBox), m_TxtEXPTNO);
    idForm->addRow(rowLabel(tr("File name:"), nullptr, idBox), m_lblFileName);
    idForm->addRow(rowLabel(QString(), nullptr, idBox),
        hint(identity_text::fileNameRule, idBox, "lblFileNameRule"));

    auto* nameBox = new QGroupBox(tr("Experiment"), this);
    nameBox->setObjectName(QStringLiteral("fraExperiment"));
    auto* nameForm = new QFormLayout(nameBox);
    nameForm->addRow(rowLabel(tr("&Name:"), m_TxtENAME, nameBox), m_TxtENAME);
    nameForm->addRow(m_lblPleseEntExpNam);

    int labelWidth = 0;
    for (QLabel* label : rowLabels)
        labelWidth = std::max(labelWidth, label->sizeHint().width());
    for (QLabel* label : rowLabels)
        label->setMinimumWidth(labelWidth);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_cmdAddInfo);
    buttons->addStretch();
    buttons->addWidget(m_cmdNext);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 12);
    layout->setSpacing(12);
    layout->addWidget(fileBox);
    layout->addWidget(idBox);
    layout->addWidget(nameBox);
    layout->addStretch();
    layout->addLayout(buttons);

    QWidget* const order[] = { m_cmbType, m_DBCombo1, m_txtINSTE, m_TxtSitee, m_txtYear,
        m_txtNumber, m_TxtEXPTNO, m_TxtENAME, m_cmdAddInfo, m_cmdNext };
    for (size_t i = 1; i < std::size(order); ++i)
        setTabOrder(order[i - 1], order[i]);
    setMinimumWidth(600);
}

void frmExpidentify::Form_Load()
{
    AppState& s = state();
    m_quiet = true;
    m_unloaded = false;
    m_DBCombo1->clear();
    for (const Crop& crop : cropList())
        m_DBCombo1->addItem(crop.name, crop.code);

    const ExperimentDetails details = loadExperimentDetails();
    m_plot = loadPlotDetails();
    m_general = loadGeneralDetails();

    const FileType type = fileTypeOf(s);
    m_cmbType->setCurrentIndex(m_cmbType->findData(static_cast<int>(type)));
    m_cmbType->setEnabled(s.IsNewFile);
    m_crop = {};
    m_DBCombo1->setCurrentIndex(-1);
    if (type == FileType::Experimental && !details.CODE.trimmed().isEmpty()) {
        if (const std::optional<Crop> crop = cropWithCode(details.CODE)) {
            m_crop = *crop;
            m_DBCombo1->setCurrentIndex(m_DBCombo1->findText(crop->name));
        }
    }
    showCropState();

    m_txtINSTE->setText(details.INSTE);
    m_TxtSitee->setText(details.SITEE);
    m_TxtEXPTNO->setText(details.EXPTNO);
    const YearAndNumber parts = splitExperimentNumber(details.EXPTNO);
    m_txtYear->setText(parts.year);
    m_txtNumber->setText(parts.number);
    m_TxtENAME->setText(details.ENAME);
    m_quiet = false;
    showFileName();
    refreshCaption();
}

void frmExpidentify::Form_Unload()
{
    if (m_unloaded)
        return;
    m_unloaded = true;
    try {
        storeExperimentDetails(experimentDetails());
        storePlotDetails(m_plot);
        storeGeneralDetails(m_general);
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in Form_Unload/frmExpidentify"));
    }
}

void frmExpidentify::closeEvent(QCloseEvent* event)
{
    Form_Unload();
    event->accept();
}

FileType frmExpidentify::fileType() const
{
    return static_cast<FileType>(m_cmbType->currentData().toInt());
}

ExperimentDetails frmExpidentify::experimentDetails() const
{
    const FileType type = fileType();
    return { m_txtINSTE->text(), m_TxtSitee->text(), m_TxtEXPTNO->text(),
        type == FileType::Experimental ? m_crop.code : fileTypeCode(type), m_TxtENAME->text() };
}

ExperimentDetails frmExpidentify::padForView()
{
    // Padding doesn't rename the file: a complete identity has nothing to
    // pad, and an incomplete one names no file.
    m_quiet = true;
    m_TxtEXPTNO->setText(QStringLiteral("%1").arg(m_TxtEXPTNO->text(), 4));
    m_txtINSTE->setText(QStringLiteral("%1").arg(m_txtINSTE->text(), 2));
    m_TxtSitee->setText(QStringLiteral("%1").arg(m_TxtSitee->text(), 2));
    m_quiet = false;
    return experimentDetails();
}

bool frmExpidentify::refuse(
    QLineEdit* box, const QString& message, MsgIcon icon, const QString& title)
{
    msgBox(message, MsgButtons::OK, icon, title);
    box->setFocus();
    box->selectAll();
    return false;
}

bool frmExpidentify::checked(QLineEdit* box, const QString& message)
{
    return message.isEmpty() || refuse(box, message, MsgIcon::Exclamation);
}

bool frmExpidentify::txtINSTE_Validate()
{
    return checked(m_txtINSTE, checkInstitute(m_txtINSTE->text()));
}

bool frmExpidentify::TxtSitee_Validate()
{
    return checked(m_TxtSitee, checkSite(m_TxtSitee->text()));
}

bool frmExpidentify::TxtEXPTNO_Validate()
{
    return checked(m_TxtEXPTNO, checkExperimentNumber(m_TxtEXPTNO->text()));
}

bool frmExpidentify::txtYear_Validate()
{
    return checked(m_txtYear, checkYear(m_txtYear->text()));
}

bool frmExpidentify::txtNumber_Validate()
{
    const std::optional<QString> accepted
        = acceptRange(m_txtNumber->text(), experimentCounterRule());
    if (!accepted)
        return refuse(
            m_txtNumber, identity_text::invalidEntry, MsgIcon::Critical, identity_text::errorTitle);
    if (*accepted != m_txtNumber->text())
        m_txtNumber->setText(*accepted);
    return true;
}

void frmExpidentify::composeExperimentNumber()
{
    if (m_quiet)
        return;
    const QString number = quillon::composeExperimentNumber(m_txtYear->text(), m_txtNumber->text());
    if (!number.isEmpty())
        m_TxtEXPTNO->setText(number);
}

void frmExpidentify::setFileName()
{
    if (m_quiet)
        return;
    AppState& s = state();
    FileNameParts parts;
    parts.INSTE = m_txtINSTE->text();
    parts.SITEE = m_TxtSitee->text();
    parts.EXPTNO = m_TxtEXPTNO->text();
    parts.type = fileType();
    parts.cropCode = m_crop.code;
    parts.cropFolder = m_crop.folder;
    parts.dataFolder = s.DataFolder;
    if (!s.IsNewFile)
        parts.readFilePath = s.ExpFilePath;
    const QString path = experimentFilePath(parts);
    if (path.isEmpty())
        return;
    // The same name in other letters is the same file to the user: keep the
    // spelling of the file on disk.
    if (path.compare(s.ExpFilePath, Qt::CaseInsensitive) != 0)
        s.ExpFilePath = path;
    showFileName();
    refreshCaption();
    emit fileNameChanged(s.ExpFilePath);
}

void frmExpidentify::showFileName()
{
    const QString path = state().ExpFilePath;
    if (path.isEmpty()) {
        m_lblFileName->setForegroundRole(QPalette::PlaceholderText);
        m_lblFileName->setText(
            tr("(made once institute, site and experiment number are complete)"));
    } else {
        m_lblFileName->setForegroundRole(QPalette::WindowText);
        m_lblFileName->setText(QDir::toNativeSeparators(path));
    }
}

void frmExpidentify::refreshCaption()
{
    const QString stem = tr("Experiment Identification %1 -").arg(state().FileTypeLabel);
    const QString path = state().ExpFilePath;
    setWindowTitle(path.isEmpty() ? stem : captionWithFile(stem, path));
}

void frmExpidentify::showCropState()
{
    const bool experimental = fileType() == FileType::Experimental;
    m_DBCombo1->setEnabled(experimental);
    m_typeForm->setRowVisible(m_lblCropNote, !experimental);
}

void frmExpidentify::DBCombo1_Click()
{
    const QString name = m_DBCombo1->currentText();
    try {
        const std::optional<Crop> crop = cropNamed(name);
        m_crop = crop ? *crop : Crop {};
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in DBCombo1_Click/frmExpIdentify."));
        return;
    }
    setFileName();
}

void frmExpidentify::cmbType_Click()
{
    AppState& s = state();
    if (!s.IsNewFile)
        return;
    try {
        const FileType type = fileType();
        setFileType(s, type);
        if (type != FileType::Experimental) {
            m_DBCombo1->setCurrentIndex(-1);
            m_crop = {};
        }
        showCropState();
        if (!s.LastSavedPath.isEmpty())
            s.LastSavedPath = pathForType(s.LastSavedPath, type);
        refreshCaption();
        setFileName();
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in cmbType/frmExpIdentify."));
    }
}

void frmExpidentify::cmdNext_Click()
{
    if (m_validation->settle() && identificationNext(experimentDetails(), fileType(), m_crop.code))
        emit nextRequested();
}

void frmExpidentify::cmdAddInfo_Click()
{
    if (!m_validation->settle())
        return;
    frmAddInfo dialog(this);
    dialog.setDetails(m_plot, m_general);
    if (dialog.exec() != QDialog::Accepted)
        return;
    m_plot = dialog.plotDetails();
    m_general = dialog.generalDetails();
}

} // namespace quillon
