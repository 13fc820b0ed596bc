// The menu entries that open web pages, with a browser that only writes addresses down.
#include "shell/WebLinks.h"

#include "gui/WindowFixture.h"

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
    Browser() { QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "Open"); }
    ~Browser() override { QDesktopServices::unsetUrlHandler(QStringLiteral("https")); }
    std::vector<std::string> Addresses;

  public slots:
    void Open(const QUrl& Address) { Addresses.push_back(Address.toString().toStdString()); }
};

class WebLinksTest : public WindowTest {
  protected:
    void Wire(const std::string& Site) {
        WireWebLinks(*Window, Site);
        Window->RefreshCommands();
    }
    void Choose(const char* Entry) { Window->Entry(Entry)->trigger(); }
};

TEST_F(WebLinksTest, EachEntryOpensItsPage) {
    Browser Browser;
    Wire("https://sound.example");
    Choose("MnuWebsite_0");
    Choose("MnuWebsite_1");
    EXPECT_THAT(Browser.Addresses,
                ElementsAre("https://sound.example/", "https://sound.example/support"));
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(WebLinksTest, TheEntryOnCdRippersTellsFirstWhereItLeads) {
    Browser Browser;
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

TEST_F(WebLinksTest, WithoutASiteTheEntriesAreDisabled) {
    Wire("");
    for (const char* Entry : {"MnuWebsite_0", "MnuWebsite_1", "MnuCDRipper"}) {
        EXPECT_FALSE(Window->Entry(Entry)->isEnabled()) << Entry;
        EXPECT_TRUE(Window->Entry(Entry)->isVisible()) << Entry;
    }
}

} // namespace

} // namespace quoril::test

#include "WebLinksTest.moc"
