// Files that sox and ffmpeg make, compared sample by sample with what these programs read in them.
#include "audiofile/OpenSaveClass.h"
#include "storage/WoroFileBlockMod.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include "SoundTools.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace quoril {
namespace {

using test::Bytes;
using test::Samples;
using test::ScriptedMessages;
using test::TestSession;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr std::int32_t Rates[] = {1000, 8000, 11025, 22050, 44100, 48000, 96000, 200000};

class WavMaterial : public ::testing::Test {
  protected:
    Samples ReadBySox(const std::string& Path, std::int32_t Bits) {
        return test::ReadBySox(Path, Bits, Raw());
    }
    Samples ReadByFfmpeg(const std::string& Path, std::int32_t Bits) {
        return test::ReadByFfmpeg(Path, Bits, Raw());
    }
    void MakeBySox(std::int32_t Channels, std::int32_t Rate, const std::vector<std::string>& Form) {
        test::MakeBySox(Path(), Channels, Rate, Form);
    }
    void MakeByFfmpeg(std::int32_t Channels, std::int32_t Rate, const std::string& Codec,
                      const std::vector<std::string>& More = {}) {
        test::MakeByFfmpeg(Path(), Channels, Rate, Codec, More);
    }
    bool Load() {
        bool Result = false;
        OpenSaveClass().FileLoadWave(Store, Path(), Result);
        EXPECT_TRUE(test::CountsHold());
        return Result;
    }
    /// The document has the samples, and a file that is written of it has them for both tools.
    void ExpectDocument(std::int32_t Channels, std::int32_t Bits, const Samples& Expected) {
        ASSERT_FALSE(Expected.empty());
        EXPECT_EQ(Store.WavFmtChannel, Channels);
        EXPECT_EQ(Store.WavFmtBits, Bits);
        ASSERT_TRUE(test::LeftOf(Store) ==
                    (Channels == 2 ? test::EveryOther(Expected, 0) : Expected));
        ASSERT_TRUE(test::RightOf(Store) ==
                    (Channels == 2 ? test::EveryOther(Expected, 1) : Samples()));
        const std::string Written = Session.Path("written.wav");
        ASSERT_TRUE(OpenSaveClass().FileWriteWave(Store, Written));
        EXPECT_TRUE(ReadBySox(Written, Bits) == Expected);
        EXPECT_TRUE(ReadByFfmpeg(Written, Bits) == Expected);
    }
    [[nodiscard]] std::string Path() const { return Session.Path("made.wav"); }
    [[nodiscard]] std::string Raw() const { return Session.Path("made.raw"); }
    [[nodiscard]] bool IsExtensible() const {
        const Bytes File = TestSession::ReadFile(Path());
        return File.at(20) == 0xFE && File.at(21) == 0xFF;
    }

    TestSession Session;
    ScriptedMessages Messages;
    FileMemoClass Store;
};

class WavMaterialForms : public WavMaterial,
                         public ::testing::WithParamInterface<test::SampleForm> {};

INSTANTIATE_TEST_SUITE_P(All, WavMaterialForms, ::testing::ValuesIn(test::SampleForms),
                         [](const auto& Info) { return test::NameOf(Info.param); });

TEST_P(WavMaterialForms, FilesOfSoxAtEveryRateHaveTheSamplesThatSoxReads) {
    const auto [Channels, Bits] = GetParam();
    for (const std::int32_t Rate : Rates) {
        SCOPED_TRACE(Rate);
        ASSERT_NO_FATAL_FAILURE(MakeBySox(Channels, Rate, {"-b", std::to_string(Bits)}));
        ASSERT_TRUE(Load());
        EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
        EXPECT_EQ(Store.WavFmtFreq, Rate);
        ASSERT_NO_FATAL_FAILURE(ExpectDocument(Channels, Bits, ReadBySox(Path(), Bits)));
    }
}

TEST_P(WavMaterialForms, FilesOfFfmpegAtEveryRateHaveTheSamplesThatFfmpegReads) {
    const auto [Channels, Bits] = GetParam();
    int Extensible = 0;
    for (const std::int32_t Rate : Rates) {
        SCOPED_TRACE(Rate);
        ASSERT_NO_FATAL_FAILURE(MakeByFfmpeg(Channels, Rate, Bits == 8 ? "pcm_u8" : "pcm_s16le",
                                             {"-metadata", "title=Noise"}));
        ASSERT_TRUE(Load());
        // At high rates ffmpeg writes the extensible form of the header, and the user is asked.
        if (IsExtensible()) {
            ++Extensible;
            EXPECT_THAT(Messages.TakeTexts(), ElementsAre(HasSubstr("Format Tag = -2\n")));
        } else {
            EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
        }
        EXPECT_EQ(Store.WavFmtFreq, Rate);
        ASSERT_NO_FATAL_FAILURE(ExpectDocument(Channels, Bits, ReadByFfmpeg(Path(), Bits)));
    }
    EXPECT_GT(Extensible, 0) << "the material has both forms";
    EXPECT_LT(Extensible, 8);
}

TEST_F(WavMaterial, ULawOfSoxAndFfmpegDecodesAsTheyDecodeIt) {
    for (const std::int32_t Channels : {1, 2})
        for (const std::int32_t Rate : {8000, 44100}) {
            ASSERT_NO_FATAL_FAILURE(MakeBySox(Channels, Rate, {"-e", "u-law", "-b", "8"}));
            ASSERT_TRUE(Load());
            EXPECT_EQ(test::TablesInUse().OrgFiles, 0);
            ASSERT_NO_FATAL_FAILURE(ExpectDocument(Channels, 16, ReadBySox(Path(), 16)));
            ASSERT_NO_FATAL_FAILURE(MakeByFfmpeg(Channels, Rate, "pcm_mulaw"));
            ASSERT_TRUE(Load());
            ASSERT_NO_FATAL_FAILURE(ExpectDocument(Channels, 16, ReadByFfmpeg(Path(), 16)));
        }
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(WavMaterial, BroadcastFilesOfFfmpegOpen) {
    ASSERT_NO_FATAL_FAILURE(MakeByFfmpeg(
        2, 48000, "pcm_s16le",
        {"-write_bext", "1", "-metadata", "description=Noise", "-metadata", "originator=Us"}));
    ASSERT_THAT(TestSession::ReadFile(Path()), ::testing::Contains('b'));
    ASSERT_TRUE(Load());
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    ASSERT_NO_FATAL_FAILURE(ExpectDocument(2, 16, ReadByFfmpeg(Path(), 16)));
}

TEST_F(WavMaterial, CodedFilesAreToldAsWhatTheyAre) {
    const std::string Failed = "Wave file loading failed";
    const std::string Adpcm = "Can not open this (4bit/adpcm) format";
    const auto Bits = [&](const std::string& Number) {
        return "Error Loading " + Path() + "|Bits per sample " + Number +
               " is invalid or not supported (at byte location 35)";
    };
    ASSERT_NO_FATAL_FAILURE(MakeBySox(1, 22050, {"-e", "ms-adpcm"}));
    EXPECT_FALSE(Load());
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(Adpcm, "Wave file load error|Division by zero"));

    ASSERT_NO_FATAL_FAILURE(MakeBySox(2, 22050, {"-e", "ms-adpcm"}));
    EXPECT_TRUE(Load());
    EXPECT_EQ(Store.WavWaveINos, 0);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(Adpcm));

    ASSERT_NO_FATAL_FAILURE(MakeBySox(1, 22050, {"-e", "floating-point", "-b", "32"}));
    EXPECT_FALSE(Load());
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre(HasSubstr("Format Tag = 3\n"), Bits("32"), Failed));

    ASSERT_NO_FATAL_FAILURE(MakeBySox(2, 22050, {"-b", "24"}));
    EXPECT_FALSE(Load());
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre(HasSubstr("Format Tag = -2\n"), Bits("24"), Failed));

    ASSERT_NO_FATAL_FAILURE(MakeByFfmpeg(2, 44100, "libmp3lame"));
    EXPECT_FALSE(Load());
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(HasSubstr("This is mp3-compressed data")));
    EXPECT_EQ(test::TablesInUse(), test::TableUse());
}

} // namespace
} // namespace quoril
