// The menu entries that open web pages, with a browser that only writes addresses down.
#include "shell/WebLinks.h"

#include "gui/WindowFixture.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QDesktopServices>
#include <QUrl>

namespace quoril::test {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Browser final : public QObject {
    Q_OBJECT

  public:
    explicit Browser(const char* Name) : Scheme(QString::fromLatin1(Name)) {
        QDesktopServices::setUrlHandler(Scheme, this, "Open");
    }
    ~Browser() override { QDesktopServices::unsetUrlHandler(Scheme); }
    std::vector<std::string> Addresses;

  public slots:
    void Open(const QUrl& Address) { Addresses.push_back(Address.toString().toStdString()); }

  private:
    QString Scheme;
};

class WebLinksTest : public WindowTest {
  protected:
    void Wire(const std::string& Site) {
        WireWebLinks(*Window, Site, Folder / "bin");
        Window->RefreshCommands();
    }
    /// Where an installation has a page of the help.
    static std::string Installed(const char* Page) {
        return std::string("share/quoril-wave-editor/help/pages/") + Page;
    }
    [[nodiscard]] std::string AddressOf(const char* Page) const {
        return "file://" + (Folder / Installed(Page));
    }
    void Choose(const char* Entry) { Window->Entry(Entry)->trigger(); }
    TempFolder Folder;
};

TEST_F(WebLinksTest, EachEntryOpensItsPage) {
    Browser Browser("https");
    Wire("https://sound.example");
    Choose("MnuWebsite_0");
    Choose("MnuWebsite_1");
    EXPECT_THAT(Browser.Addresses,
                ElementsAre("https://sound.example/", "https://sound.example/support"));
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(WebLinksTest, TheEntryOnCdRippersTellsFirstWhereItLeads) {
    Browser Browser("https");
    Wire("https://sound.example");
    Choose("MnuCDRipper");
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("This will take you to our web site to view free CD Ripper/Extractor"));
    EXPECT_THAT(Browser.Addresses, ElementsAre("https://sound.example/cd-ripper"));
}

TEST_F(WebLinksTest, WithoutABrowserTheAddressIsTold) {
    Wire("https://sound.example");
    Choose("MnuWebsite_1");
    EXPECT_THAT(
        Messages.TakeTexts(),
        ElementsAre("No browser could be started for the page https://sound.example/support"));
}

TEST_F(WebLinksTest, WithoutASiteTheEntriesOpenThePagesOfTheHelp) {
    Browser Browser("file");
    for (const char* Page : {"index.html", "support.html", "cd.html"})
        Folder.Write(Installed(Page), "<p>A page</p>");
    Wire("");
    for (const char* Entry : {"MnuWebsite_0", "MnuWebsite_1", "MnuCDRipper"})
        Choose(Entry);
    EXPECT_THAT(Browser.Addresses, ElementsAre(AddressOf("index.html"), AddressOf("support.html"),
                                               AddressOf("cd.html")));
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("This will take you to our web site to view free CD Ripper/Extractor"));
}

TEST_F(WebLinksTest, APageThatIsMissingIsTold) {
    Browser Browser("file");
    Wire("");
    Choose("MnuWebsite_1");
    EXPECT_THAT(
        Messages.TakeTexts(),
        ElementsAre("The page " + (Folder / "bin/help/pages/support.html") + " is not there."));
    EXPECT_THAT(Browser.Addresses, IsEmpty());
}

} // namespace

} // namespace quoril::test

#include "WebLinksTest.moc"
