#pragma once

class QMainWindow;
class QMenu;

namespace quillon {

class HelpWindow;

// Adds the Help menu at the right end of the window's menu bar: Contents
// (F1) shows the user manual, About Quillon the version and the folders and
// files in use. Its entries are named mnuHelpContents and mnuHelpAbout.
QMenu* addHelpMenu(QMainWindow* window);

// Shows the manual's window, opening it if it isn't open; there is one.
HelpWindow* showHelpContents();

} // namespace quillon
