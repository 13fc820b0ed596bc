#include "view/ColorSettings.h"

#include "settings/STD1.h"
#include "support/ScriptedMessages.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace quoril {
namespace {

TEST(ColorsAtStart, AreTheDefaults) {
    for (std::size_t i = 0; i < WaveColorCount; ++i)
        EXPECT_EQ(WaveColors[i], WaveColorTable[i].Default) << WaveColorTable[i].Key;
    EXPECT_EQ(WaveFormDrawStyle, 3);
}

class Colors : public ::testing::Test {
  protected:
    Colors() {
        AppPath = Folder.Path();
        for (std::size_t i = 0; i < WaveColorCount; ++i)
            WaveColors[i] = WaveColorTable[i].Default;
    }

    static std::string Stored(const char* Key) { return IniGet("Color", Key, "missing"); }
    static void Store(WaveColor Which, const std::string& Value) {
        IniPut("Color", WaveColorTable[static_cast<std::size_t>(Which)].Key, Value);
    }
    void ExpectWarnings(const std::vector<std::string>& Heads) {
        ColorSettingsRead();
        std::vector<std::string> Texts;
        Texts.reserve(Heads.size());
        for (const std::string& Head : Heads)
            Texts.push_back(Head + "\nPlease go to Options and change the colors");
        EXPECT_EQ(Messages.TakeTexts(), Texts);
    }

    const test::TempFolder Folder;
    test::ScriptedMessages Messages;
};

TEST_F(Colors, TheTableHasItsKeysDefaultsAndListEntries) {
    struct Row {
        WaveColor Which;
        const char* Key;
        std::int32_t Default;
        const char* Entry;
    };
    const Row Rows[] = {
        {WaveColor::WaveFormNormalColor, "WaveFormNormalColor", 8388863, "Waveform Bars"},
        {WaveColor::WaveFormBetweenColor, "WaveFormBetweenColor", 65535, "Waveform Lines"},
        {WaveColor::WaveFormDrawColor, "WaveFormDrawColor", 16777215, "Pen/Hand Draw Waveform"},
        {WaveColor::WaveFormSampleColor, "WaveFormSampleColor", 16777088,
         "Sample Waveform (not in use)"},
        {WaveColor::CenterLineColor, "CenterLineColor", 8421504, "Center Line"},
        {WaveColor::NormalBackColor, "NormalBackColor", 10485760, "Normal Background"},
        {WaveColor::SelectBackColor, "SelectBackColor", 25600, "Selected Background"},
        {WaveColor::LineCursorColor, "LineCursorColor", 16777215, "Line Cursor"},
        {WaveColor::SecPtSelLineCursorColor, "SecPtSelLineCursorColor", 65280,
         "Line Cursor2 (for 2nd pt. select)"},
        {WaveColor::OnePtSelLineColor, "OnePtSelLineColor", 65535, "One Pt. Select Line"},
        {WaveColor::BookMarkColor, "BookMarkColor", 12632256, "Bookmark"},
        {WaveColor::ScaleBackColor, "ScaleBackColor", 16761024, "Scale Background"},
        {WaveColor::PlayPosIndiColor, "PlayPosIndiColor", 16711935, "Play Position Indicator"},
    };
    std::size_t Index = 0;
    for (const Row& Each : Rows) {
        ASSERT_EQ(static_cast<std::size_t>(Each.Which), Index);
        EXPECT_STREQ(WaveColorTable[Index].Key, Each.Key);
        EXPECT_EQ(WaveColorTable[Index].Default, Each.Default) << Each.Key;
        EXPECT_STREQ(WaveColorTable[Index].ListEntry, Each.Entry);
        ++Index;
    }
    EXPECT_EQ(Index, WaveColorCount);
}

TEST_F(Colors, TheDrawingStylesHaveTheirNames) {
    const std::array<std::string, 5> Names = {"Line Graph", "Bar Graph", "Bar and Line Graph",
                                              "Uniform Bar Graph", "Uniform Bar and Line Graph"};
    for (std::size_t i = 0; i < Names.size(); ++i)
        EXPECT_EQ(WaveDrawStyleNames[i], Names[i]);
}

TEST_F(Colors, AMissingFileGivesTheDefaultsWithoutAWarning) {
    WaveColors.fill(1);
    WaveFormDrawStyle = 1;
    ExpectWarnings({});
    for (std::size_t i = 0; i < WaveColorCount; ++i)
        EXPECT_EQ(WaveColors[i], WaveColorTable[i].Default);
    EXPECT_EQ(WaveFormDrawStyle, 3);
}

TEST_F(Colors, AColorOutsideTheRangeTakesItsDefault) {
    struct Row {
        const char* Value;
        std::int32_t Color;
    };
    constexpr std::int32_t Default = 0xC0C0C0;
    const Row Rows[] = {{"16777216", Default},
                        {"16777215", 16777215},
                        {"0", 0},
                        {"-1", Default},
                        {"-0.5", 0},
                        {"99999999999", Default},
                        {"-99999999999", Default},
                        {"1e300", Default},
                        {"junk", 0},
                        {"12abc", 12}};
    for (const Row& Each : Rows) {
        Store(WaveColor::BookMarkColor, Each.Value);
        ExpectWarnings({});
        EXPECT_EQ(ColorOf(WaveColor::BookMarkColor), Each.Color) << Each.Value;
    }
}

TEST_F(Colors, AStyleOutside1To4BecomesTheThird) {
    struct Row {
        const char* Value;
        std::int32_t Style;
    };
    for (const Row& Each : {Row{"1", 1}, Row{"2", 2}, Row{"3", 3}, Row{"4", 4}, Row{"5", 3},
                            Row{"6", 3}, Row{"0", 3}, Row{"-7", 3}, Row{"junk", 3}}) {
        IniPut("Color", "WaveFormDrawStyle", Each.Value);
        ExpectWarnings({});
        EXPECT_EQ(WaveFormDrawStyle, Each.Style) << Each.Value;
    }
}

TEST_F(Colors, TheFifthStyleIsWrittenButDoesNotComeBack) {
    WaveFormDrawStyle = 5;
    ColorSettingsWrite();
    EXPECT_EQ(Stored("WaveFormDrawStyle"), "5");
    ExpectWarnings({});
    EXPECT_EQ(WaveFormDrawStyle, 3);
}

TEST_F(Colors, AllOfThemAreWrittenInOneChangeOfTheFile) {
    // The file takes its place by a new name. Without the old name's going the system would report
    // several comings as one.
    const int Watch = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    ASSERT_GE(::inotify_add_watch(Watch, Folder.Path().c_str(), IN_MOVED_FROM | IN_MOVED_TO), 0);
    ColorSettingsWrite();
    alignas(inotify_event) char Events[8192];
    const ssize_t Bytes = ::read(Watch, Events, sizeof Events);
    ::close(Watch);
    int Comings = 0;
    for (ssize_t At = 0; At < Bytes;) {
        const auto* const Event = reinterpret_cast<const inotify_event*>(Events + At);
        Comings += (Event->mask & IN_MOVED_TO) != 0 ? 1 : 0;
        At += static_cast<ssize_t>(sizeof *Event + Event->len);
    }
    EXPECT_EQ(Comings, 1);
    EXPECT_EQ(Stored("PlayPosIndiColor"), "16711935");
}

TEST_F(Colors, WrittenColorsComeBack) {
    for (std::size_t i = 0; i < WaveColorCount; ++i)
        WaveColors[i] = static_cast<std::int32_t>(1000 + i);
    WaveFormDrawStyle = 1;
    ColorSettingsWrite();
    EXPECT_EQ(Stored("WaveFormNormalColor"), "1000");
    EXPECT_EQ(Stored("PlayPosIndiColor"), "1012");
    EXPECT_EQ(Stored("WaveFormDrawStyle"), "1");
    const auto Written = WaveColors;
    WaveColors.fill(0);
    WaveFormDrawStyle = 2;
    ExpectWarnings({});
    EXPECT_EQ(WaveColors, Written);
    EXPECT_EQ(WaveFormDrawStyle, 1);
}

TEST_F(Colors, EachPairOfColorsThatHidesSomethingIsWarnedOf) {
    struct Row {
        WaveColor A;
        WaveColor B;
        const char* Head;
    };
    const Row Rows[] = {
        {WaveColor::WaveFormNormalColor, WaveColor::NormalBackColor,
         "Waveform Color and the Back color are the same\n"
         "You may not see the wave correctly"},
        {WaveColor::WaveFormNormalColor, WaveColor::SelectBackColor,
         "Waveform Color and the Selected area back color are the same\n"
         "You may not see the wave correctly in selected area"},
        {WaveColor::SelectBackColor, WaveColor::NormalBackColor,
         "Normal back Color and the Selected area back color are the same\n"
         "You may not see the selected area differently"},
        {WaveColor::PlayPosIndiColor, WaveColor::NormalBackColor,
         "Play position indicator Color and the Back color are the same\n"
         "You may not see the play indicator"},
        {WaveColor::PlayPosIndiColor, WaveColor::SelectBackColor,
         "Play position indicator Color and Selected area back color are the same\n"
         "You may not see the play indicator in Selected area"},
    };
    for (const Row& Each : Rows) {
        Store(Each.A, "4711");
        Store(Each.B, "4711");
        ExpectWarnings({Each.Head});
        Store(Each.A, "-1");
        Store(Each.B, "-1");
    }
}

TEST_F(Colors, AllClashesTogetherAreWarnedOfInOrder) {
    for (const WaveColor Which : {WaveColor::WaveFormNormalColor, WaveColor::NormalBackColor,
                                  WaveColor::SelectBackColor, WaveColor::PlayPosIndiColor})
        Store(Which, "0");
    ExpectWarnings({"Waveform Color and the Back color are the same\n"
                    "You may not see the wave correctly",
                    "Waveform Color and the Selected area back color are the same\n"
                    "You may not see the wave correctly in selected area",
                    "Normal back Color and the Selected area back color are the same\n"
                    "You may not see the selected area differently",
                    "Play position indicator Color and the Back color are the same\n"
                    "You may not see the play indicator",
                    "Play position indicator Color and Selected area back color are the same\n"
                    "You may not see the play indicator in Selected area"});
}

TEST_F(Colors, ChoosingClashingColorsWarnsAtTheNextReadingOnly) {
    WaveColors[static_cast<std::size_t>(WaveColor::WaveFormNormalColor)] =
        ColorOf(WaveColor::NormalBackColor);
    ColorSettingsWrite();
    EXPECT_TRUE(Messages.Requests.empty());
    ColorSettingsRead();
    EXPECT_EQ(Messages.Requests.size(), 1U);
    EXPECT_TRUE(Messages.Requests[0].Title.empty());
}

} // namespace
} // namespace quoril
