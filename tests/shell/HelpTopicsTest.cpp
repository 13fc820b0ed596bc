// The table of topics against the pages and the menus.
#include "shell/HelpTopics.h"
#include "support/TempFolder.h"
#include "view/MenuTable.h"
#include "view/ToolbarTable.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

namespace quoril {

namespace {

TEST(HelpTopicsTest, NumbersRiseAndArePositive) {
    int Before = 0;
    for (const HelpTopic& Topic : HelpTopics()) {
        EXPECT_GT(Topic.Number, Before) << Topic.Page;
        Before = Topic.Number;
    }
    EXPECT_GT(HelpTopics().size(), 40U);
}

TEST(HelpTopicsTest, EveryTopicHasItsPageAndItsPlaceOnIt) {
    for (const HelpTopic& Topic : HelpTopics()) {
        const std::string Page = Topic.Page;
        const std::size_t Hash = Page.find('#');
        const std::string Html =
            test::TempFolder::Read(std::string(HELP_PAGES) + "/" + Page.substr(0, Hash));
        if (Hash != std::string::npos) {
            EXPECT_NE(Html.find("<h2 id=\"" + Page.substr(Hash + 1) + "\">"), std::string::npos)
                << Page;
        }
    }
}

TEST(HelpTopicsTest, EveryPlaceLeadsToATopicAndEveryTopicHasAPlace) {
    std::set<int> Numbers;
    for (const HelpTopic& Topic : HelpTopics())
        Numbers.insert(Topic.Number);
    std::set<int> Reached;
    std::set<std::string> Controls;
    for (const HelpPlace& Place : HelpPlaces()) {
        EXPECT_TRUE(Numbers.contains(Place.Number)) << Place.Control;
        EXPECT_TRUE(Controls.insert(Place.Control).second) << Place.Control << " stands twice";
        Reached.insert(Place.Number);
    }
    EXPECT_EQ(Reached, Numbers);
}

TEST(HelpTopicsTest, PlacesNamedLikeMenuEntriesAreInTheMenus) {
    const auto InMenus = [](const std::string& Name) {
        return MenuRowOf(Name) != nullptr || MenuRowOf(Name + "_0") != nullptr;
    };
    int Seen = 0;
    for (const HelpPlace& Place : HelpPlaces()) {
        const std::string Name = Place.Control;
        if (Name.find("Mnu") == std::string::npos && Name.find("_Menu") == std::string::npos)
            continue;
        ++Seen;
        EXPECT_TRUE(Name == "PopMnu" || InMenus(Name)) << Name;
    }
    EXPECT_GT(Seen, 30);
}

TEST(HelpTopicsTest, AnElementWithoutARowHasTheTopicOfItsArray) {
    EXPECT_EQ(HelpPageOf(HelpContextOf("Wave_Pic_2")), "window.html#waveform");
    EXPECT_EQ(HelpPageOf(HelpContextOf("FileLastFilesMnu_3")), "files.html#recent");
    EXPECT_EQ(HelpPageOf(HelpContextOf("Open_Mnu_1")), "files.html#open-new-window");
}

TEST(HelpTopicsTest, AButtonHasTheTopicOfItsCommand) {
    EXPECT_EQ(HelpPageOf(HelpContextOf("ViewToolbar_ZoomIn")), "view.html#zoom-in");
    EXPECT_EQ(HelpPageOf(HelpContextOf("MouseToolbar_SelChannel")), "mouse.html#both");
}

TEST(HelpTopicsTest, AnEntryWithoutARowHasTheTopicOfItsMenu) {
    EXPECT_EQ(HelpPageOf(HelpContextOf("Save_Bookmark_Mnu")), "files.html#save-bookmarked");
    EXPECT_EQ(HelpPageOf(HelpContextOf("File_OtherItem_Mnu_1")), "files.html");
}

TEST(HelpTopicsTest, ANameThatNothingKnowsHasNoTopic) {
    EXPECT_EQ(HelpContextOf(""), 0);
    EXPECT_EQ(HelpContextOf("_1"), 0);
    EXPECT_EQ(HelpContextOf("Nothing_12"), 0);
    EXPECT_EQ(HelpContextOf("12"), 0);
}

TEST(HelpTopicsTest, ANumberThatNoTopicHasLeadsToTheOverview) {
    EXPECT_EQ(HelpPageOf(0), "index.html");
    EXPECT_EQ(HelpPageOf(-5), "index.html");
    EXPECT_EQ(HelpPageOf(99999), "index.html");
}

} // namespace

} // namespace quoril
