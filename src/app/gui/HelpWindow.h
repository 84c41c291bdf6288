#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QTextBrowser;
class QTreeWidget;
class QTreeWidgetItem;

namespace quillon {

// The user manual in a window of its own: its headings as contents on the
// left, the text on the right, and a find bar that Ctrl+F opens below.
//
// The suite's own help is a compiled HTML file (.chm), a format that only
// Windows can show. Quillon keeps its manual as Markdown beside the program
// and shows it here with Qt alone, so it reads the same on every platform,
// offline, and the same file reads well in the repository.
class HelpWindow final : public QWidget {
    Q_OBJECT
public:
    // Shows `manualFile`, or a page that says where the manual was looked
    // for when the file can't be read.
    explicit HelpWindow(const QString& manualFile, QWidget* parent = nullptr);

    QTextBrowser* browser() const { return m_browser; }
    QTreeWidget* contents() const { return m_contents; }

    // Opens the find bar with the focus and its text selected.
    void showFindBar();
    // Selects the next (or previous) place of the find bar's text, going
    // round at the end. False, and the selection kept, when the manual
    // doesn't hold the text.
    bool find(bool backward = false);

private:
    void load(const QString& manualFile);
    void buildContents();
    void goToHeading(QTreeWidgetItem* item);
    // Typing in the find bar searches again from where the match began,
    // so that the match grows with the text.
    void findAsTyped();
    void showFound(bool found);

    QTreeWidget* m_contents;
    QTextBrowser* m_browser;
    QWidget* m_findBar;
    QLineEdit* m_findText;
    QLabel* m_findStatus;
};

} // namespace quillon
