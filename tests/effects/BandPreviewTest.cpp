// Listening to one band: what is handed to the player, and what becomes of it.
#include "effects/BandPreview.h"

#include "effects/LiteralFilters.h"
#include "effects/TestWaves.h"
#include "playback/PlaybackDoubles.h"
#include "selection/ScriptedSelConf.h"
#include "storage/StorageChecks.h"

#include <algorithm>
#include <optional>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class BandPreviewTest : public PlaybackFixture {
  protected:
    static constexpr std::int32_t Freq = 8000;

    BandPreviewTest() {
        SelBoth = true;
        SelSingle = 1;
    }
    ~BandPreviewTest() override { SelStart = SelEnd = 0; }

    /// A document of noise, with a range selected.
    void Document(std::int32_t Channels, std::int32_t Total, std::int32_t From, std::int32_t To) {
        MakeDocument(Channels, Freq, 16, Total);
        for (std::int32_t Chn = 1; Chn <= Channels; ++Chn) {
            Noise[static_cast<std::size_t>(Chn)] =
                NoiseWave(Total, -32768, 32767, static_cast<std::uint32_t>(Chn));
            BlockCarrBuffClass Filled;
            Filled.ReDimSize(Total);
            std::int32_t Pos = 0;
            for (const std::int16_t Sample : Noise[static_cast<std::size_t>(Chn)])
                Filled.WaveLR(++Pos, Sample);
            WaveStore->SwitchUndoOff = true;
            WaveStore->WaveDataReplace(1, Channels == 1 ? 1 : Chn, &Filled, &Filled, "", true);
            WaveStore->SwitchUndoOff = false;
        }
        SelStart = From;
        SelEnd = To;
    }
    [[nodiscard]] LiteralWave Band(std::size_t Chn, std::int32_t From, std::int32_t To,
                                   std::size_t Which, std::int32_t NoOfBands) const {
        const LiteralWave& All = Noise.at(Chn);
        return LiteralSplit({All.begin() + From - 1, All.begin() + To}, Freq, 16, NoOfBands)[Which];
    }
    static LiteralWave SamplesOf(const BlockCarrBuffClass& Carrier) {
        SampleArray Got(static_cast<std::size_t>(Carrier.WaveINos) + 1);
        Carrier.QuickBuffGet(1, Got);
        return {Got.begin() + 1, Got.end()};
    }

    std::array<LiteralWave, 3> Noise;
};

TEST_F(BandPreviewTest, PlaysOneBandOfTheFirstTwoSeconds) {
    Document(1, 40000, 1001, 30000);
    BandPreview Preview;
    Preview.Audition(5, 8);
    EXPECT_THAT(TakeActs(), ElementsAre("Load 16 1 8000 16000", "PlayForward"));
    EXPECT_EQ(PlayBaseSample, 1001);
    EXPECT_EQ(PlayEndSample, 17000);
    EXPECT_EQ(PlayWorkChn, 1);
    EXPECT_TRUE(SamplesOf(*PlayBuffL) == Band(1, 1001, 17000, 5, 8));
    EXPECT_EQ(PlayBuffR, nullptr);
}

TEST_F(BandPreviewTest, PlaysBothChannels) {
    Document(2, 9000, 1, 9000);
    BandPreview Preview;
    Preview.Audition(2, 4);
    EXPECT_THAT(TakeActs(), ElementsAre("Load 16 2 8000 9000", "PlayForward"));
    EXPECT_TRUE(SamplesOf(*PlayBuffL) == Band(1, 1, 9000, 2, 4));
    EXPECT_TRUE(SamplesOf(*PlayBuffR) == Band(2, 1, 9000, 2, 4));
    EXPECT_EQ(PlayWorkChn, 0);
    Preview.Audition(2, 4); // and once more
    EXPECT_TRUE(SamplesOf(*PlayBuffL) == Band(1, 1, 9000, 2, 4));
    EXPECT_TRUE(SamplesOf(*PlayBuffR) == Band(2, 1, 9000, 2, 4));
}

TEST_F(BandPreviewTest, TheRightChannelAloneIsPlayedAsOne) {
    Document(2, 9000, 11, 5000);
    SelBoth = false;
    SelSingle = 2;
    BandPreview Preview;
    Preview.Audition(3, 8);
    EXPECT_THAT(TakeActs(), ElementsAre("Load 16 1 8000 4990", "PlayForward"));
    EXPECT_TRUE(SamplesOf(*PlayBuffL) == Band(2, 11, 5000, 3, 8));
    EXPECT_EQ(PlayWorkChn, 2);
}

TEST_F(BandPreviewTest, TheSecondBandNeedsNoSplitting) {
    Document(1, 9000, 1, 9000);
    BandPreview Preview;
    EXPECT_TRUE(Preview.MustSplit());
    Preview.Audition(3, 8);
    EXPECT_FALSE(Preview.MustSplit());
    Preview.Audition(4, 8);
    EXPECT_THAT(TakeActs(), ElementsAre("Load 16 1 8000 9000", "PlayForward", "Stop",
                                        "Load 16 1 8000 9000", "PlayForward"));
    EXPECT_TRUE(SamplesOf(*PlayBuffL) == Band(1, 1, 9000, 4, 8));
}

TEST_F(BandPreviewTest, AnotherNumberOfBandsIsSplitAnew) {
    Document(1, 9000, 1, 9000);
    BandPreview Preview;
    Preview.Audition(3, 8);
    Preview.BandsChanged();
    Preview.Audition(10, 10);
    EXPECT_TRUE(SamplesOf(*PlayBuffL) == Band(1, 1, 9000, 10, 10));
}

TEST_F(BandPreviewTest, ItsEndStopsTheSoundAndGivesTheBandsBack) {
    Document(2, 9000, 1, 9000);
    std::optional<BandPreview> Preview(std::in_place);
    const std::int32_t Used = MemoryUsed;
    Preview->Audition(3, 8);
    EXPECT_GT(MemoryUsed, Used);
    (void)TakeActs();
    Preview.reset();
    EXPECT_THAT(TakeActs(), ElementsAre("Stop"));
    PlayBuffL.reset();
    PlayBuffR.reset();
    EXPECT_EQ(MemoryUsed, Used);
    EXPECT_EQ(BrokenRule(*WaveStore), "");
}

TEST_F(BandPreviewTest, WhatPlaysIsStoppedWhenItBegins) {
    Document(1, 9000, 1, 9000);
    Player.Status = 1;
    BandPreview Preview;
    EXPECT_TRUE(Preview.Collect());
    EXPECT_THAT(TakeActs(), ElementsAre("Stop"));
}

TEST_F(BandPreviewTest, WithoutASelectionItAsksUnderItsName) {
    Document(1, 9000, 0, 0);
    const ScriptedSelConf Refusing;
    BandPreview Preview;
    EXPECT_FALSE(Preview.Collect());
    Preview.Audition(1, 8);
    EXPECT_EQ(Refusing.Captions,
              (std::vector<std::string>{" Confirm Selection [Band split preview]",
                                        " Confirm Selection [Band split preview]"}));
    EXPECT_THAT(TakeActs(), IsEmpty());
}

TEST_F(BandPreviewTest, WithoutADriverTheUserIsToldOnlyWhenListening) {
    Document(1, 9000, 1, 9000);
    SoundDriverState = 0;
    {
        BandPreview Preview;
        EXPECT_TRUE(Preview.Collect());
        EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
        Preview.Audition(1, 8);
        EXPECT_THAT(
            Messages.TakeTexts(),
            ElementsAre(
                "Play failed|Put ON the Sound driver in Options box (Tools-Options menu) to play"));
    }
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(BandPreviewTest, APlayerThatIsGoneHarmsNothing) {
    Document(1, 9000, 1, 9000);
    for (const char* Call : {"Load", "PlayForward", "Stop", "PlayStatus"}) {
        Player.FailingCall = Call;
        BandPreview Preview;
        EXPECT_NO_THROW(Preview.Audition(3, 8)) << Call;
        Player.FailingCall.clear();
    }
    PlayBuffL.reset();
    EXPECT_EQ(BrokenRule(*WaveStore), "");
}

} // namespace
} // namespace quoril::test
