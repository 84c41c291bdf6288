#pragma once

namespace quillon {

// The switches behind "Don't show this message again.": DontShowOption.txt
// for the refresh notice, DontShowNew.txt for the new-file notice, in the
// program's folder. True only if the file exists and its first line holds
// the number 1; the installation delivers the 1, the program only ever
// writes 0.
bool DontShowOptionRefresh();
bool DontShowOptionNew();
void DontShowOption_Remove();
void DontShowNew_Remove();

} // namespace quillon
