// The entries of the menus that open a page in the system's browser.
#pragma once

#include <string>

namespace quoril {

class WaveEditor_Frm;

/// Registers the entries `MnuWebsite` and `MnuCDRipper`. They open pages of the site that begins
/// with this address, as "https://sound.example"; without one, the pages of the help of a program
/// in that folder. A page that is missing or that no browser takes is told.
void WireWebLinks(WaveEditor_Frm& Window, const std::string& Site,
                  const std::string& ExecutableFolder);

/// Opens a page of the help of a program in that folder in the system's browser. Throws Failure
/// when the page is missing or no browser takes it.
void OpenPageInBrowser(const std::string& ExecutableFolder, const std::string& Page);

} // namespace quoril
