#include "print/gui/frmView.h"

#include "app/ExpIdentity.h"
#include "app/RuntimeError.h"
#include "app/gui/frmExpidentify.h"

#include <QAbstractTextDocumentLayout>
#include <QFileInfo>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPrinter>
#include <QPushButton>
#include <QShortcut>
#include <QTextBlock>
#include <QTextDocument>
#include <QVBoxLayout>

namespace quillon {

namespace {

// The one file view of the program; loading it again shows the same window.
QPointer<frmView>& fileView()
{
    static QPointer<frmView> view;
    return view;
}

} // namespace

QFont frmView::fixedFont(qreal pointSize)
{
    QFont font(QStringLiteral("Courier New"));
    font.setStyleHint(QFont::TypeWriter);
    font.setFixedPitch(true);
    // Without Courier New on the machine, take the system's fixed font, or
    // failing that the first installed family whose letters are all of one
    // width: the file's columns must line up.
    if (!QFontInfo(font).fixedPitch())
        font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (!QFontInfo(font).fixedPitch()) {
        for (const QString& family : QFontDatabase::families()) {
            if (QFontDatabase::isFixedPitch(family)) {
                font = QFont(family);
                break;
            }
        }
    }
    font.setPointSizeF(pointSize);
    font.setBold(false);
    return font;
}

frmView::frmView(print::Writer writer, QWidget* parent)
    : QDialog(parent, Qt::Window)
    , m_writer(std::move(writer))
    , m_RhTBView(new QPlainTextEdit(this))
{
    setObjectName(QStringLiteral("frmView"));
    setWindowTitle(tr("Print Preview"));
    m_RhTBView->setObjectName(QStringLiteral("RhTBView"));
    m_RhTBView->setReadOnly(true);
    m_RhTBView->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_RhTBView->setFont(fixedFont(10));
    m_RhTBView->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);

    auto* refresh = new QPushButton(tr("&Refresh"), this);
    refresh->setObjectName(QStringLiteral("cmdRefresh"));
    refresh->setToolTip(tr("Write the text again from the experiment as it stands now"));
    auto* print = new QPushButton(tr("&Print..."), this);
    print->setObjectName(QStringLiteral("Command1"));
    print->setToolTip(tr("Print the text (Ctrl+P)"));
    auto* close = new QPushButton(tr("&Close"), this);
    close->setObjectName(QStringLiteral("cmdExit"));
    close->setToolTip(tr("Close the preview (Ctrl+O)"));
    for (QPushButton* button : { refresh, print, close })
        button->setAutoDefault(false);
    connect(refresh, &QPushButton::clicked, this, &frmView::cmdRefresh_Click);
    connect(print, &QPushButton::clicked, this, &frmView::Command1_Click);
    connect(close, &QPushButton::clicked, this, &frmView::cmdExit_Click);
    connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_O), this), &QShortcut::activated, this,
        &frmView::cmdExit_Click);
    connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_P), this), &QShortcut::activated, this,
        &frmView::Command1_Click);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(refresh);
    buttons->addWidget(print);
    buttons->addStretch();
    buttons->addWidget(close);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addWidget(m_RhTBView, 1);
    layout->addLayout(buttons);
    resize(900, 640);
}

frmView::~frmView()
{
    Form_Unload();
}

void frmView::Form_Load()
{
    print::ViewOpen() = true;
    m_loaded = true;
    if (!m_writer)
        return;
    if (m_prepare) {
        try {
            m_prepare();
        } catch (const RuntimeError& e) {
            reportError(e.text(), QStringLiteral(" in Form_Load/frmView."));
        }
    }
    m_paneFile = print::ViewFilePath();
    m_RhTBView->setPlainText(print::writeViewText(m_writer, m_paneFile));
}

void frmView::Form_Unload()
{
    if (!m_loaded)
        return;
    m_loaded = false;
    print::ViewOpen() = false;
    if (m_writer)
        print::removeViewFile(print::ViewFilePath());
}

void frmView::loadFile(const QString& path)
{
    m_paneFile = path;
    m_RhTBView->setPlainText(print::readViewText(path));
}

void frmView::setSource(std::function<QString()> source)
{
    // A report has no columns to keep: its long lines wrap.
    m_RhTBView->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    m_source = std::move(source);
    m_RhTBView->setPlainText(m_source());
}

QString frmView::text() const
{
    return m_RhTBView->toPlainText();
}

void frmView::cmdExit_Click()
{
    close();
}

void frmView::cmdRefresh_Click()
{
    const int line = m_RhTBView->textCursor().blockNumber();
    if (m_source)
        m_RhTBView->setPlainText(m_source());
    else if (m_writer && m_paneFile == print::ViewFilePath())
        m_RhTBView->setPlainText(print::writeViewText(m_writer, m_paneFile));
    else
        loadFile(m_paneFile);
    // Stay near where the reader was.
    QTextCursor cursor(m_RhTBView->document()->findBlockByNumber(line));
    m_RhTBView->setTextCursor(cursor);
    m_RhTBView->ensureCursorVisible();
}

void frmView::Command1_Click()
{
    const PrintChoice choice = ui().choosePrinter();
    if (!choice.accepted)
        return;
    printText(text(), choice, fixedFont(8));
}

void frmView::done(int result)
{
    Form_Unload();
    QDialog::done(result);
}

bool printText(const QString& text, const PrintChoice& choice, const QFont& font)
{
    QPrinter printer(QPrinter::HighResolution);
    if (!choice.pdfFile.isEmpty()) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(choice.pdfFile);
    } else if (!choice.printerName.isEmpty()) {
        printer.setPrinterName(choice.printerName);
    }
    if (!printer.isValid())
        return false;
    printer.setDocName(QStringLiteral("Quillon"));
    printer.setPageMargins(QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter);
    // Laid out on the printer's own page, the text goes out as it stands:
    // no page numbers or margins of the document's own.
    QTextDocument document;
    document.documentLayout()->setPaintDevice(&printer);
    document.setPageSize(printer.pageRect(QPrinter::DevicePixel).size());
    document.setDocumentMargin(0);
    document.setDefaultFont(font);
    QTextOption option = document.defaultTextOption();
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document.setDefaultTextOption(option);
    document.setPlainText(text);
    document.print(&printer);
    return printer.printerState() != QPrinter::Error;
}

std::function<void()> viewIdentityFrom(frmExpidentify* identification)
{
    QPointer<frmExpidentify> window(identification);
    return [window] {
        if (!window)
            return;
        ExperimentDetails details = window->padForView();
        print::storeViewIdentity(details, window->cropCode());
    };
}

frmView* ShowFileView(
    QWidget* parent, const print::Writer& writer, const std::function<void()>& prepare)
{
    QPointer<frmView>& view = fileView();
    if (!view) {
        view = new frmView(writer, parent);
        view->setAttribute(Qt::WA_DeleteOnClose);
        view->setPrepare(prepare);
        view->Form_Load();
    }
    view->show();
    view->raise();
    view->activateWindow();
    return view;
}

void printFileView(
    QWidget* parent, const print::Writer& writer, const std::function<void()>& prepare)
{
    const PrintChoice choice = ui().choosePrinter();
    if (!choice.accepted)
        return;
    frmView* view = nullptr;
    if (print::ViewOpen() && fileView()) {
        view = ShowFileView(parent, writer, prepare);
    } else {
        // Reaching the pane loads the window, and with it the scratch file.
        view = new frmView(writer, parent);
        view->setPrepare(prepare);
        view->Form_Load();
        fileView() = view;
    }
    printText(view->text(), choice, frmView::fixedFont(8));
    view->Form_Unload();
    fileView() = nullptr;
    view->hide();
    view->deleteLater();
}

void showErrors(QWidget* parent, const QString& path)
{
    frmView view(print::Writer(), parent);
    view.Form_Load();
    view.loadFile(path);
    view.setWindowTitle(QStringLiteral("View Errors"));
    view.exec();
}

frmView* showReport(QWidget* parent, const QString& caption, std::function<QString()> source)
{
    static QPointer<frmView> report;
    if (!report) {
        // No writer: the window keeps no scratch file and leaves the
        // preview's marks alone.
        report = new frmView(print::Writer(), parent);
        report->setAttribute(Qt::WA_DeleteOnClose);
    }
    report->setWindowTitle(caption);
    report->setSource(std::move(source));
    report->show();
    report->raise();
    report->activateWindow();
    return report;
}

} // namespace quillon
