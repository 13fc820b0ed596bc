// Sun/NeXT files that sox and ffmpeg make, compared sample by sample with what these programs read
// in them; and ours, read by them.
#include "audiofile/OpenSaveClass.h"
#include "storage/WoroFileBlockMod.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include "AuMaker.h"
#include "SoundTools.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>

namespace quoril {
namespace {

using test::Bytes;
using test::Samples;
using test::ScriptedMessages;
using test::TestSession;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string Failed = "Sound Clip (Au) file loading failed";

class AuMaterial : public ::testing::Test {
  protected:
    [[nodiscard]] std::string Made() const { return Session.Path("made.au"); }
    [[nodiscard]] std::string Raw() const { return Session.Path("made.raw"); }
    bool Load() {
        bool Result = false;
        OpenSaveClass().FileLoadAuSnd(Store, Made(), Result);
        return Result;
    }
    void ExpectSamples(std::int32_t Channels, std::int32_t Rate, std::int32_t Bits,
                       const Samples& Expected) {
        ASSERT_FALSE(Expected.empty());
        EXPECT_EQ(Store.WavFmtChannel, Channels);
        EXPECT_EQ(Store.WavFmtFreq, Rate);
        EXPECT_EQ(Store.WavFmtBits, Bits);
        EXPECT_TRUE(test::LeftOf(Store) ==
                    (Channels == 2 ? test::EveryOther(Expected, 0) : Expected));
        EXPECT_TRUE(test::RightOf(Store) ==
                    (Channels == 2 ? test::EveryOther(Expected, 1) : Samples()));
    }

    TestSession Session;
    ScriptedMessages Messages;
    FileMemoClass Store;
};

TEST_F(AuMaterial, SixteenBitsAndULawOfSoxHaveTheSamplesThatSoxReads) {
    for (const std::int32_t Channels : {1, 2})
        for (const std::int32_t Rate : {1000, 8000, 44100, 200000})
            for (const auto& Form :
                 std::vector<std::vector<std::string>>{{"-b", "16"}, {"-e", "u-law", "-b", "8"}}) {
                SCOPED_TRACE(Form[1]);
                ASSERT_NO_FATAL_FAILURE(test::MakeBySox(Made(), Channels, Rate, Form));
                ASSERT_TRUE(Load());
                ExpectSamples(Channels, Rate, 16, test::ReadBySox(Made(), 16, Raw()));
            }
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(AuMaterial, SixteenBitsAndULawOfFfmpegHaveTheSamplesThatFfmpegReads) {
    for (const std::int32_t Channels : {1, 2})
        for (const std::int32_t Rate : {8000, 48000})
            for (const char* Codec : {"pcm_s16be", "pcm_mulaw"}) {
                SCOPED_TRACE(Codec);
                ASSERT_NO_FATAL_FAILURE(test::MakeByFfmpeg(Made(), Channels, Rate, Codec,
                                                           {"-metadata", "title=A long title"}));
                ASSERT_TRUE(Load());
                ExpectSamples(Channels, Rate, 16, test::ReadByFfmpeg(Made(), 16, Raw()));
            }
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(AuMaterial, EightBitsFromElsewhereHaveTheirSignBitTurnedOver) {
    ASSERT_NO_FATAL_FAILURE(test::MakeBySox(Made(), 2, 22050, {"-b", "8", "-e", "signed-integer"}));
    ASSERT_TRUE(Load());
    Samples Expected = test::ReadBySox(Made(), 8, Raw());
    for (std::int16_t& Sample : Expected)
        Sample = static_cast<std::int16_t>(Sample < 0 ? Sample + 128 : Sample - 128);
    ExpectSamples(2, 22050, 8, Expected);
}

TEST_F(AuMaterial, WhatCannotBeReadIsToldAsWhatItIs) {
    const auto ExpectRefused = [this](const std::string& What) {
        EXPECT_FALSE(Load());
        EXPECT_THAT(Messages.TakeTexts(),
                    ElementsAre("Could not open this format .au file\n" + What, Failed));
    };
    ASSERT_NO_FATAL_FAILURE(test::MakeBySox(Made(), 1, 8000, {"-b", "24"}));
    ExpectRefused("24-bit linear PCM");
    ASSERT_NO_FATAL_FAILURE(test::MakeBySox(Made(), 1, 8000, {"-b", "32"}));
    ExpectRefused("32-bit linear PCM");
    ASSERT_NO_FATAL_FAILURE(test::MakeBySox(Made(), 1, 8000, {"-e", "floating-point", "-b", "32"}));
    ExpectRefused("32-bit IEEE floating point");
    ASSERT_NO_FATAL_FAILURE(test::MakeBySox(Made(), 1, 8000, {"-e", "floating-point", "-b", "64"}));
    ExpectRefused("64-bit IEEE floating point");
    ASSERT_NO_FATAL_FAILURE(test::MakeByFfmpeg(Made(), 1, 8000, "pcm_alaw"));
    ExpectRefused("");
    ASSERT_NO_FATAL_FAILURE(test::MakeByFfmpeg(Made(), 1, 8000, "adpcm_g722"));
    EXPECT_FALSE(Load());
    ASSERT_EQ(Messages.Texts().size(), 2U);
    EXPECT_TRUE(Messages.TakeTexts()[0].starts_with("Could not open this format .au file\n"));
}

TEST_F(AuMaterial, AFileThatWasWrittenIntoAPipeOpensAtItsLength) {
    ASSERT_NO_FATAL_FAILURE(test::RunTool(
        {"sh", "-c",
         "ffmpeg -v error -f lavfi -i 'aevalsrc=0.8*sin(900*t):s=8000:d=0.25' -f au - >'" + Made() +
             "'"}));
    const Bytes File = TestSession::ReadFile(Made());
    ASSERT_EQ(Bytes(File.begin() + 8, File.begin() + 12), Bytes(4, 0xFF)) << "the size is unknown";
    ASSERT_TRUE(Load());
    EXPECT_EQ(Store.WavWaveINos, 2000);
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre(::testing::StartsWith("Header shows that the size of audio is\n")));
    ExpectSamples(1, 8000, 16, test::ReadByFfmpeg(Made(), 16, Raw()));
}

TEST_F(AuMaterial, OursIsReadBySoxAndFfmpegAsItIs) {
    for (const std::int32_t Channels : {1, 2}) {
        const Samples All = test::Noise(30011 * Channels, 16, 8);
        Store.StorageReset();
        test::FillStore(Store, {Channels, 44100, 16},
                        Channels == 2 ? test::EveryOther(All, 0) : All, test::EveryOther(All, 1));
        AuWriteMode = 3;
        ASSERT_TRUE(OpenSaveClass().FileWriteAuSnd(Store, Made()));
        EXPECT_TRUE(test::ReadBySox(Made(), 16, Raw()) == All);
        EXPECT_TRUE(test::ReadByFfmpeg(Made(), 16, Raw()) == All);
        AuWriteMode = 1;
        ASSERT_TRUE(OpenSaveClass().FileWriteAuSnd(Store, Made()));
        const Samples Decoded = test::ReadBySox(Made(), 16, Raw());
        ASSERT_EQ(Decoded.size(), All.size());
        EXPECT_TRUE(test::ReadByFfmpeg(Made(), 16, Raw()) == Decoded);
        for (std::size_t i = 0; i < All.size(); ++i) // the widest step is 1024
            ASSERT_LE(std::abs(Decoded[i] - All[i]), 644) << All[i];
    }
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

} // namespace
} // namespace quoril
