// The entries of the menus that open a page of the program's web site in the system's browser.
#pragma once

#include <string>

namespace quoril {

class WaveEditor_Frm;

/// Registers the entries `MnuWebsite` and `MnuCDRipper` for the site that begins with this address,
/// as "https://sound.example". Without an address they stay disabled.
void WireWebLinks(WaveEditor_Frm& Window, const std::string& Site);

} // namespace quoril
