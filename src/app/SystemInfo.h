#pragma once

#include <QString>

#include <vector>

namespace quillon {

// One line of the system information: what it is and its value.
struct SystemInfoLine {
    QString label;
    QString value;
};

// The name of the user manual, shipped beside the program.
QString manualFileName();

// The user manual: beside the program, else in the program's folder
// (AppFolder, which QUILLON_APP_DIR may move elsewhere). Empty when neither
// holds it.
QString manualFile();

// What a support request needs to know: version, build date, Qt version and
// operating system, then the folders and files in use — program folder,
// suite folder, working database and its size, the profile and the folders
// it names, the defaults files, the open experiment and the manual.
//
// Only reads: the working database is opened read-only under a connection of
// its own, so this works before any document was opened and changes nothing.
// What can't be read is said in the line's value.
std::vector<SystemInfoLine> systemInformation();

// The lines as "label: value", one a line, for the clipboard.
QString systemInformationText(const std::vector<SystemInfoLine>& lines);

} // namespace quillon
