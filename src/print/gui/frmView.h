#pragma once

#include "app/UserInterface.h"
#include "print/FileView.h"

#include <QDialog>

#include <functional>

class QPlainTextEdit;

namespace quillon {

class frmExpidentify;

// Shows the text of the experiment file as Save would write it, in a fixed
// font, and prints it as it stands. The text comes from running the writer
// into the scratch file Temp.txt, which lives as long as the window.
// The checker uses the same window to show its findings ("View Errors").
class frmView final : public QDialog {
    Q_OBJECT
public:
    // `writer` makes the text; an empty writer leaves the pane to loadFile().
    explicit frmView(print::Writer writer, QWidget* parent = nullptr);
    ~frmView() override;

    // Runs once at load, before the writer: stores the identification so that
    // the file's first line is complete.
    void setPrepare(std::function<void()> prepare) { m_prepare = std::move(prepare); }

    // Marks the view open, prepares, runs the writer into the scratch file
    // and shows its text.
    void Form_Load();
    // Marks the view closed and deletes the scratch file. Runs once.
    void Form_Unload();

    // Makes `path` the pane's file and shows it.
    void loadFile(const QString& path);
    // Shows the text `source` gives; Refresh asks it again.
    void setSource(std::function<QString()> source);
    QString text() const;

    void cmdExit_Click();
    // Writes the scratch file anew, so that changes made since the window
    // opened appear. A pane showing another file reads that file again.
    void cmdRefresh_Click();
    // Prints the pane's text through the printer dialog in a fixed 8-point font.
    void Command1_Click();

    // The fixed font of the pane and the printout.
    static QFont fixedFont(qreal pointSize);

protected:
    void done(int result) override;

private:
    print::Writer m_writer;
    std::function<void()> m_prepare;
    std::function<QString()> m_source;
    QString m_paneFile;
    QPlainTextEdit* m_RhTBView;
    bool m_loaded = false;
};

// Prints text as it stands in `font`, to the printer the choice names or to
// its PDF file. Page breaks are those of the text's layout on the page.
// Returns false when the output could not be started.
bool printText(const QString& text, const PrintChoice& choice, const QFont& font);

// The prepare step of a preview: pads the identification in the window's
// boxes and stores it in ExpDetails.
std::function<void()> viewIdentityFrom(frmExpidentify* identification);

// Print Preview: loads the view if it isn't loaded and shows it, not modally.
frmView* ShowFileView(
    QWidget* parent, const print::Writer& writer, const std::function<void()>& prepare);

// Print from the menu: asks for the printer, prints the text the view holds
// (loading the view, and with it the scratch file, when none was open), and
// unloads the view afterwards. Cancel in the printer dialog ends the command
// quietly.
void printFileView(
    QWidget* parent, const print::Writer& writer, const std::function<void()>& prepare);

// The checker's findings: `path` shown modally under the caption "View Errors".
void showErrors(QWidget* parent, const QString& path);

// A report of ours in the view, not modally, under its own caption: the
// text `source` gives, made again by Refresh. Showing a report while one is
// open replaces it in the same window.
frmView* showReport(QWidget* parent, const QString& caption, std::function<QString()> source);

} // namespace quillon
