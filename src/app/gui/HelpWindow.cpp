#include "app/gui/HelpWindow.h"

#include "app/SystemInfo.h"

#include <QAbstractTextDocumentLayout>
#include <QAction>
#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSplitter>
#include <QTextBlock>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <vector>

namespace quillon {

namespace {

constexpr int BlockNumberRole = Qt::UserRole;

QAction* addWindowKey(QWidget* window, QKeySequence::StandardKey key)
{
    auto* action = new QAction(window);
    action->setShortcuts(key);
    action->setShortcutContext(Qt::WindowShortcut);
    window->addAction(action);
    return action;
}

} // namespace

HelpWindow::HelpWindow(const QString& manualFile, QWidget* parent)
    : QWidget(parent, Qt::Window)
    , m_contents(new QTreeWidget(this))
    , m_browser(new QTextBrowser(this))
    , m_findBar(new QWidget(this))
    , m_findText(new QLineEdit(m_findBar))
    , m_findStatus(new QLabel(m_findBar))
{
    setObjectName(QStringLiteral("HelpWindow"));
    setWindowTitle(tr("Quillon Help"));
    m_contents->setObjectName(QStringLiteral("contents"));
    m_contents->setHeaderHidden(true);
    m_browser->setObjectName(QStringLiteral("manual"));
    // The manual links nowhere; a click must not replace the page.
    m_browser->setOpenLinks(false);
    m_findText->setObjectName(QStringLiteral("findText"));
    m_findText->setPlaceholderText(tr("Find in the manual"));
    m_findText->setClearButtonEnabled(true);

    auto* previous = new QToolButton(m_findBar);
    previous->setText(tr("&Previous"));
    previous->setToolTip(tr("Previous match (Shift+F3)"));
    auto* next = new QToolButton(m_findBar);
    next->setText(tr("&Next"));
    next->setToolTip(tr("Next match (F3 or Enter)"));
    auto* closeFind = new QToolButton(m_findBar);
    closeFind->setText(tr("Close"));
    closeFind->setToolTip(tr("Close the find bar (Esc)"));
    auto* findLayout = new QHBoxLayout(m_findBar);
    findLayout->setContentsMargins(0, 0, 0, 0);
    findLayout->addWidget(new QLabel(tr("Find:"), m_findBar));
    findLayout->addWidget(m_findText, 1);
    findLayout->addWidget(previous);
    findLayout->addWidget(next);
    findLayout->addWidget(m_findStatus);
    findLayout->addWidget(closeFind);
    m_findBar->hide();

    auto* splitter = new QSplitter(this);
    splitter->addWidget(m_contents);
    splitter->addWidget(m_browser);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({ 300, 620 });
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(splitter, 1);
    layout->addWidget(m_findBar);

    connect(m_contents, &QTreeWidget::itemClicked, this, &HelpWindow::goToHeading);
    connect(m_contents, &QTreeWidget::itemActivated, this, &HelpWindow::goToHeading);
    connect(m_findText, &QLineEdit::textEdited, this, &HelpWindow::findAsTyped);
    connect(m_findText, &QLineEdit::returnPressed, this, [this] { find(); });
    connect(next, &QToolButton::clicked, this, [this] { find(); });
    connect(previous, &QToolButton::clicked, this, [this] { find(true); });
    connect(closeFind, &QToolButton::clicked, m_findBar, &QWidget::hide);
    connect(addWindowKey(this, QKeySequence::Find), &QAction::triggered, this,
        &HelpWindow::showFindBar);
    connect(
        addWindowKey(this, QKeySequence::FindNext), &QAction::triggered, this, [this] { find(); });
    connect(addWindowKey(this, QKeySequence::FindPrevious), &QAction::triggered, this,
        [this] { find(true); });
    auto* hideFind = new QAction(m_findBar);
    hideFind->setShortcut(Qt::Key_Escape);
    hideFind->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    m_findBar->addAction(hideFind);
    connect(hideFind, &QAction::triggered, m_findBar, &QWidget::hide);

    load(manualFile);
    buildContents();
    resize(920, 680);
}

void HelpWindow::load(const QString& manualFile)
{
    QFile file(manualFile);
    if (!manualFile.isEmpty() && file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        m_browser->setMarkdown(QString::fromUtf8(file.readAll()));
        return;
    }
    const QString where = manualFile.isEmpty()
        ? tr("beside the program or in its folder")
        : QStringLiteral("<code>%1</code>").arg(manualFile.toHtmlEscaped());
    m_browser->setHtml(tr("<h1>Manual not found</h1><p>The user manual %1 could not be read %2. "
                          "It is installed beside the program; building Quillon puts it there.</p>")
                           .arg(manualFileName(), where));
}

void HelpWindow::buildContents()
{
    // A heading goes under the nearest heading of a higher level before it.
    std::vector<std::pair<int, QTreeWidgetItem*>> open;
    for (QTextBlock block = m_browser->document()->begin(); block.isValid(); block = block.next()) {
        const int level = block.blockFormat().headingLevel();
        if (level == 0)
            continue;
        while (!open.empty() && open.back().first >= level)
            open.pop_back();
        auto* item = open.empty() ? new QTreeWidgetItem(m_contents)
                                  : new QTreeWidgetItem(open.back().second);
        item->setText(0, block.text());
        item->setData(0, BlockNumberRole, block.blockNumber());
        open.emplace_back(level, item);
    }
    m_contents->expandAll();
}

void HelpWindow::goToHeading(QTreeWidgetItem* item)
{
    const QTextBlock block
        = m_browser->document()->findBlockByNumber(item->data(0, BlockNumberRole).toInt());
    if (!block.isValid())
        return;
    m_browser->setTextCursor(QTextCursor(block));
    // The heading goes to the top of the page, not just into view.
    const QRectF area = m_browser->document()->documentLayout()->blockBoundingRect(block);
    m_browser->verticalScrollBar()->setValue(int(area.top()));
}

void HelpWindow::showFindBar()
{
    m_findBar->show();
    m_findText->setFocus(Qt::ShortcutFocusReason);
    m_findText->selectAll();
}

bool HelpWindow::find(bool backward)
{
    const QString text = m_findText->text();
    if (text.isEmpty()) {
        showFound(true);
        return false;
    }
    const QTextDocument::FindFlags flags
        = backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    const QTextCursor before = m_browser->textCursor();
    bool found = m_browser->find(text, flags);
    if (!found) {
        QTextCursor round = before;
        round.movePosition(backward ? QTextCursor::End : QTextCursor::Start);
        m_browser->setTextCursor(round);
        found = m_browser->find(text, flags);
        if (!found)
            m_browser->setTextCursor(before);
    }
    showFound(found);
    return found;
}

void HelpWindow::findAsTyped()
{
    QTextCursor from = m_browser->textCursor();
    from.setPosition(from.selectionStart());
    m_browser->setTextCursor(from);
    find();
}

void HelpWindow::showFound(bool found)
{
    m_findStatus->setText(found ? QString() : tr("Not found"));
}

} // namespace quillon
