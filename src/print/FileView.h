#pragma once

#include <QString>

#include <functional>

namespace quillon {
struct ExperimentDetails;
}

namespace quillon::print {

// The text side of Print Preview and Print: the program has no report layout
// of its own, it shows and prints the experiment file's text exactly as the
// writer produces it, by running the writer into a scratch file.

// Writes the working database as an experiment file to `path`. Reports its
// own failures to the user; returns false when it failed.
using Writer = std::function<bool(const QString& path)>;

// Whether the file view window is loaded: set from its load to its unload, so
// that printing from the menu knows whether a preview was open before.
bool& ViewOpen();

// The scratch file: "Temp.txt" in the program's folder.
QString ViewFilePath();

// Deletes a scratch file; a file that can't be deleted is left alone.
void removeViewFile(const QString& path);

// Runs the writer into `path`, replacing what lay there, and returns the text
// the file then holds. A writer that failed has told the user already; the
// result is then whatever the file holds (often nothing).
QString writeViewText(const Writer& writer, const QString& path);

// The text of a file as the view shows it: single-byte text, with the end
// mark (a lone 0x1A) and the line break before it left out.
QString readViewText(const QString& path);

// `text` with leading blanks up to `width` characters; longer text as it is.
QString padLeft(const QString& text, int width);

// Before a preview is written: pads the identification in place (EXPTNO to
// 4, INSTE and SITEE to 2 characters, leading blanks) so that the first line
// of the file keeps its columns, and stores it in the first row of
// ExpDetails with CODE = `cropCode` for an experimental file, else the code
// of the state's file type, and the title. Throws RuntimeError when the
// database refuses.
void storeViewIdentity(ExperimentDetails& details, const QString& cropCode);

} // namespace quillon::print
