#include "shell/WebLinks.h"

#include "base/CommandFailure.h"
#include "base/Failure.h"
#include "base/MsgBoxMod.h"
#include "base/QtText.h"
#include "platform/FileSystem.h"
#include "shell/HelpViewer.h"
#include "view/WaveEditor_Frm.h"

#include <QDesktopServices>
#include <QUrl>
#include <array>

namespace quoril {

namespace {

struct WebLink {
    const char* Entry;
    const char* Site; ///< below the site's address
    const char* Page; ///< of the help, where there is no site
    const char* Note; ///< told first, unless empty
};

constexpr std::array<WebLink, 3> WebLinks = {
    {{"MnuWebsite_0", "/", "index.html", ""},
     {"MnuWebsite_1", "/support", "support.html", ""},
     {"MnuCDRipper", "/cd-ripper", "cd.html",
      "This will take you to our web site to view free CD Ripper/Extractor"}}};

void OpenAddress(const QUrl& Address) {
    if (!QDesktopServices::openUrl(Address))
        throw Failure("No browser could be started for the page " + CoreText(Address.toString()));
}

} // namespace

void OpenPageInBrowser(const std::string& ExecutableFolder, const std::string& Page) {
    const std::string File = HelpPageBeside(ExecutableFolder, Page);
    if (!FileExists(File))
        throw Failure("The page " + File + " is not there.");
    OpenAddress(QUrl::fromLocalFile(ShownText(File)));
}

void WireWebLinks(WaveEditor_Frm& Window, const std::string& Site,
                  const std::string& ExecutableFolder) {
    for (const WebLink& Link : WebLinks)
        Window.Commands.Set(Link.Entry, [Link, Site, ExecutableFolder] {
            if (*Link.Note != '\0')
                MsgBox(Link.Note);
            RunCommand({}, [&] {
                if (Site.empty())
                    OpenPageInBrowser(ExecutableFolder, Link.Page);
                else
                    OpenAddress(QUrl(ShownText(Site + Link.Site)));
            });
        });
}

} // namespace quoril
