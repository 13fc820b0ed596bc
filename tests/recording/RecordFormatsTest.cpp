#include "recording/RecordFormats.h"

#include <gmock/gmock.h>

namespace quoril::test {
namespace {

std::vector<std::string> Keys(const std::vector<RecordFormatName>& List) {
    std::vector<std::string> Result;
    Result.reserve(List.size());
    for (const RecordFormatName& Each : List)
        Result.push_back(Each.Key + " = " + Each.Name);
    return Result;
}

TEST(RecordFormatsTest, ThePlainSoundNamesTwelve) {
    EXPECT_THAT(Keys(RecordFormatList(AllFormatBits, RecEngineApi)),
                ::testing::ElementsAre(
                    "11025,1,8 = 11.025 kHz, mono, 8-bit", "11025,2,8 = 11.025 kHz, stereo, 8-bit",
                    "11025,1,16 = 11.025 kHz, mono, 16-bit",
                    "11025,2,16 = 11.025 kHz, stereo, 16-bit", "22050,1,8 = 22.05 kHz, mono, 8-bit",
                    "22050,2,8 = 22.05 kHz, stereo, 8-bit", "22050,1,16 = 22.05 kHz, mono, 16-bit",
                    "22050,2,16 = 22.05 kHz, stereo, 16-bit", "44100,1,8 = 44.1 kHz, mono, 8-bit",
                    "44100,2,8 = 44.1 kHz, stereo, 8-bit", "44100,1,16 = 44.1 kHz, mono, 16-bit",
                    "44100,2,16 = 44.1 kHz, stereo, 16-bit"));
}

TEST(RecordFormatsTest, TheSoundServerNamesNoEightBits) {
    const auto List = RecordFormatList(AllFormatBits, RecEngineDx7);
    EXPECT_EQ(List.size(), 6U);
    for (const RecordFormatName& Each : List)
        EXPECT_THAT(Each.Key, ::testing::EndsWith(",16"));
}

TEST(RecordFormatsTest, EachFormatHasItsBit) {
    struct Row {
        std::int32_t Freq;
        std::int32_t Bits;
        std::uint32_t Base;
    };
    for (const Row& Each : {Row{11025, 8, 1}, Row{11025, 16, 4}, Row{22050, 8, 16},
                            Row{22050, 16, 64}, Row{44100, 8, 256}, Row{44100, 16, 1024},
                            Row{8000, 16, 0}, Row{48000, 16, 0}, Row{192000, 8, 0}})
        for (const std::int32_t Channels : {1, 2})
            EXPECT_EQ(RecordFormatBit({Channels, Each.Bits, Each.Freq}),
                      Each.Base * static_cast<std::uint32_t>(Channels))
                << Each.Freq << " " << Each.Bits << " " << Channels;
    for (int BitNo = 0; BitNo < 12; ++BitNo) {
        const auto List = RecordFormatList(1U << BitNo, RecEngineApi);
        ASSERT_EQ(List.size(), 1U);
        EXPECT_EQ(List.front().Key, RecordFormatKey(RecordFormatOfBit(BitNo)));
    }
}

TEST(RecordFormatsTest, AHalfIsATenthOfASecondInWholeFrames) {
    EXPECT_EQ((CaptureFormat{1, 16, 44100}.HalfFrames()), 4410);
    EXPECT_EQ((CaptureFormat{2, 16, 44100}.HalfBytes()), 17640U);
    EXPECT_EQ((CaptureFormat{2, 8, 22050}.HalfBytes()), 4410U);
    EXPECT_EQ((CaptureFormat{1, 16, 11025}.HalfFrames()), 1102) << "ties go to even";
    EXPECT_EQ((CaptureFormat{1, 8, 1000}.HalfFrames()), 100);
    EXPECT_EQ((CaptureFormat{1, 8, 1}.HalfFrames()), 1);
}

TEST(RecordFormatsTest, TheWordsOfTheWindow) {
    EXPECT_EQ(Fmt_LblText({1, 16, 22050}), "(Mono,22050 Hz, 16 Bits)");
    EXPECT_EQ(Fmt_LblText({2, 8, 192000}), "(Stereo,192000 Hz, 8 Bits)");
    EXPECT_EQ(InsertLblText(22050, 22050), "Sample:22050 (01)");
}

std::vector<std::byte> Bytes(std::initializer_list<int> Values) {
    std::vector<std::byte> Result;
    for (const int Each : Values)
        Result.push_back(static_cast<std::byte>(Each));
    return Result;
}

TEST(RecordFormatsTest, FramesAreSplitByChannelAndDepth) {
    std::vector<std::int16_t> L;
    std::vector<std::int16_t> R = {1, 2, 3};
    const std::vector<std::byte> Frames = Bytes({0x00, 0x80, 0xFF, 0x7F, 0x34, 0x12, 0x01, 0x00});
    EXPECT_EQ(SplitFrames(Frames, 8, {1, 16, 8000}, L, R), 4);
    EXPECT_THAT(L, ::testing::ElementsAre(0, -32768, 32767, 0x1234, 1));
    EXPECT_THAT(R, ::testing::IsEmpty());
    EXPECT_EQ(SplitFrames(Frames, 8, {2, 16, 8000}, L, R), 2);
    EXPECT_THAT(L, ::testing::ElementsAre(0, -32768, 0x1234));
    EXPECT_THAT(R, ::testing::ElementsAre(0, 32767, 1));
    EXPECT_EQ(SplitFrames(Frames, 8, {1, 8, 8000}, L, R), 8);
    EXPECT_THAT(L, ::testing::ElementsAre(0, -128, 0, 127, -1, -76, -110, -127, -128));
    EXPECT_EQ(SplitFrames(Frames, 8, {2, 8, 8000}, L, R), 4);
    EXPECT_THAT(L, ::testing::ElementsAre(0, -128, 127, -76, -127));
    EXPECT_THAT(R, ::testing::ElementsAre(0, 0, -1, -110, -128));
}

TEST(RecordFormatsTest, FewerBytesGiveAShorterBlock) {
    std::vector<std::int16_t> L;
    std::vector<std::int16_t> R;
    const std::vector<std::byte> Frames(400);
    EXPECT_EQ(SplitFrames(Frames, 44, {2, 16, 8000}, L, R), 11);
    EXPECT_EQ(L.size(), 12U);
    EXPECT_EQ(SplitFrames(Frames, 7, {2, 16, 8000}, L, R), 1) << "a frame that is not whole";
    EXPECT_EQ(SplitFrames(Frames, 0, {2, 16, 8000}, L, R), 0);
}

} // namespace
} // namespace quoril::test
