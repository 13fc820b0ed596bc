#include "shell/WebLinks.h"

#include "base/CommandFailure.h"
#include "base/Failure.h"
#include "base/MsgBoxMod.h"
#include "base/QtText.h"
#include "view/WaveEditor_Frm.h"

#include <QDesktopServices>
#include <QUrl>
#include <array>

namespace quoril {

namespace {

struct WebLink {
    const char* Entry;
    const char* Page; ///< below the site's address
    const char* Note; ///< told first, unless empty
};

constexpr std::array<WebLink, 3> WebLinks = {
    {{"MnuWebsite_0", "/", ""},
     {"MnuWebsite_1", "/support", ""},
     {"MnuCDRipper", "/cd-ripper",
      "This will take you to our web site to view free CD Ripper/Extractor"}}};

void OpenPage(const std::string& Address) {
    if (!QDesktopServices::openUrl(QUrl(ShownText(Address))))
        throw Failure("No browser could be started for the page " + Address);
}

} // namespace

void WireWebLinks(WaveEditor_Frm& Window, const std::string& Site) {
    if (Site.empty())
        return;
    for (const WebLink& Link : WebLinks)
        Window.Commands.Set(Link.Entry, [Link, Address = Site + Link.Page] {
            if (*Link.Note != '\0')
                MsgBox(Link.Note);
            RunCommand({}, [&Address] { OpenPage(Address); });
        });
}

} // namespace quoril
