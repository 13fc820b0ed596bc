// The equalizer and the band filter as commands: what comes out, what the user reads, and undo.
#include "effects/EqualizerCommands.h"

#include "effects/BandFilter.h"
#include "effects/EffectFixture.h"
#include "effects/LiteralFilters.h"
#include "effects/ScriptedEqliz.h"
#include "effects/TestWaves.h"
#include "selection/ScriptedSelConf.h"
#include "settings/UserGuideMod.h"

#include <algorithm>

namespace quoril::test {
namespace {

void Equalizer() {
    Equalize(0);
}
void BandFilter() {
    Equalize(1);
}

class EqualizerTest : public EffectTest {
  protected:
    static constexpr std::int32_t Freq = 8000;
    static void DocumentAt(const Samples& L, const Samples& R, std::int32_t Bits,
                           std::size_t Piece) {
        Document(L, R, Bits, Piece);
        WaveStore->WavFmtFreq = Freq;
    }
    static Samples Noise(std::int32_t Count, std::uint32_t Seed, std::int32_t Bits = 16) {
        const std::int32_t High = Bits == 8 ? 127 : 32767;
        return NoiseWave(Count, -High - 1, High, Seed);
    }
    [[nodiscard]] Samples Expected(const Samples& Source, std::int32_t Bits = 16) const {
        return LiteralEqualize(Source, Freq, Bits, Dialog.Answer.Bands);
    }

    ScriptedEqliz Dialog;
};

TEST_F(EqualizerTest, EqualizesBothChannelsAcrossBordersOfBlocks) {
    Dialog.Accept({-50, -10, 0, 7, 20, 50, 7, 33});
    const Samples L = Noise(150000, 1);
    const Samples R = Noise(150000, 2);
    DocumentAt(L, R, 16, 40007);
    ExpectStep(Equalizer, "Equalize", Expected(L), Expected(R));
    EXPECT_EQ(Dialog.Modes, std::vector<std::int32_t>{0});
}

TEST_F(EqualizerTest, EqualizesEightBits) {
    Dialog.Accept({50, 40, -30, 7});
    const Samples L = Noise(5000, 1, 8);
    DocumentAt(L, {}, 8, 999);
    ExpectStep(Equalizer, "Equalize", Expected(L, 8));
}

TEST_F(EqualizerTest, KeepsToTheRangeAndTheChannel) {
    Dialog.Accept({7, 20, -50, 7, 9});
    const Samples L = Noise(3000, 1);
    const Samples R = Noise(3000, 2);
    DocumentAt(L, R, 16, 700);
    Select(501, 2500);
    SelBoth = false;
    SelSingle = 2;
    Samples New = R;
    const Samples Middle = Expected({R.begin() + 500, R.begin() + 2500});
    std::copy(Middle.begin(), Middle.end(), New.begin() + 500);
    ExpectStep(Equalizer, "Equalize", L, New);
}

TEST_F(EqualizerTest, TheFilterHasANameOfItsOwn) {
    Dialog.Accept({-50, 7, -50});
    const Samples L = Noise(3000, 1);
    DocumentAt(L, {}, 16, 700);
    ExpectStep(BandFilter, "Band Pass Filter", Expected(L));
    EXPECT_EQ(Dialog.Modes, std::vector<std::int32_t>{1});
}

TEST_F(EqualizerTest, AllBandsStoppedGiveSilence) {
    Dialog.Accept({-50, -50, -50});
    DocumentAt(Noise(3000, 1), {}, 16, 700);
    ExpectStep(BandFilter, "Band Pass Filter", Samples(3000, 0));
}

TEST_F(EqualizerTest, TheShortestSelectionsWork) {
    Dialog.Accept({7, 20, -50, 50, 9, 30, -20, 1});
    const Samples L = Noise(3000, 1);
    DocumentAt(L, {}, 16, 700);
    // Half windows at 8000 Hz: 200, 77, 29, 10, 4, 1, 1 and 0.
    for (const std::int32_t Length : {2, 3, 4, 5, 10, 11, 29, 30, 77, 78, 200, 201, 1023, 1025}) {
        Select(101, 100 + Length);
        Samples New = L;
        const Samples Part = Expected({L.begin() + 100, L.begin() + 100 + Length});
        std::copy(Part.begin(), Part.end(), New.begin() + 100);
        ExpectStep(Equalizer, "Equalize", New);
    }
}

TEST_F(EqualizerTest, OneSampleIsShorterThanAllBands) {
    Dialog.Accept({7, 20, -50, 50, 9, 30, -20, 1});
    const Samples L = Noise(3000, 1);
    DocumentAt(L, {}, 16, 700);
    Select(101, 101);
    const ScriptedSelConf PointAsRange(3);
    Samples New = L;
    New[100] = 0;
    Equalizer();
    EXPECT_EQ(Left(), New);
    WaveStore->Undo();
    EXPECT_EQ(Left(), L);
}

TEST_F(EqualizerTest, CancelledItChangesNothing) {
    DocumentAt(Noise(3000, 1), {}, 16, 700);
    EqBandSet.NoOfBands = 5;
    EXPECT_TRUE(Unchanged(Equalizer).empty());
    EXPECT_EQ(Dialog.Found, BandSet()); // nothing is left of the last time
    EXPECT_EQ(BusyCalls, 0);
}

TEST_F(EqualizerTest, AsksTheDiskBeforeTheDialog) {
    DocumentAt(Noise(3000, 1), Noise(3000, 2), 16, 700);
    EXPECT_EQ(Refused(Equalizer), std::vector<std::int64_t>{2 * 2999 * 2});
    Select(11, 20);
    SelBoth = false;
    EXPECT_EQ(Refused(BandFilter), std::vector<std::int64_t>{2 * 9});
    EXPECT_TRUE(Dialog.Modes.empty());
}

TEST_F(EqualizerTest, AsksForARange) {
    DocumentAt(Noise(3000, 1), {}, 16, 700);
    Select(0, 0);
    const ScriptedSelConf Refusing;
    EXPECT_TRUE(Unchanged(Equalizer).empty());
    EXPECT_TRUE(Dialog.Modes.empty());
}

TEST_F(EqualizerTest, TheBarMovesAlongAndEndsFull) {
    Dialog.Accept({7, 20, -50, 7, 9});
    DocumentAt(Noise(500000, 1), Noise(500000, 2), 16, 100000);
    Equalizer();
    ASSERT_GE(Progress.Values.size(), 5U);
    EXPECT_TRUE(std::ranges::is_sorted(Progress.Values));
    EXPECT_NEAR(Progress.Values.back(), 1, 1e-6);
}

TEST_F(EqualizerTest, AFailureIsToldUnderItsTitleAndChangesNothing) {
    Dialog.Accept({7, 20, -50, 7, 9});
    DocumentAt(Noise(300000, 1), Noise(300000, 2), 16, 100000);
    Progress.FailAt = 0.3F;
    EXPECT_EQ(Unchanged(Equalizer), std::vector<std::string>{"Equalizier Error|Disk full"});
    EXPECT_EQ(Unchanged(BandFilter), std::vector<std::string>{"Band Pass Filter Error|Disk full"});
}

TEST_F(EqualizerTest, StandsAFullDisk) {
    Dialog.Accept({7, 20, -50, 7, 9});
    DocumentAt(Noise(60000, 1), Noise(60000, 2), 16, 9000);
    EXPECT_GT(FailuresOnAFullDisk(Equalizer, "Equalizier Error|"), 3);
}

class BandSplitTest : public EqualizerTest {};

TEST_F(BandSplitTest, EachBandEqualsThatOfThePlainCascade) {
    for (const std::int32_t Bits : {8, 16})
        for (const std::int32_t Rate : {1000, 44100, 200000})
            for (const NamedWave& Wave : TestWaves(7001, Bits)) {
                const auto Source = Carrier(Wave.Samples);
                const auto Bands = BandSplit(*Source, Rate, Bits, 8);
                const auto Plain = LiteralSplit(Wave.Samples, Rate, Bits, 8);
                ASSERT_EQ(Bands.size(), 8U);
                for (std::size_t Band = 1; Band <= 8; ++Band) {
                    SampleArray Got(Wave.Samples.size() + 1);
                    Bands[Band - 1]->QuickBuffGet(1, Got);
                    EXPECT_EQ(Bands[Band - 1]->WaveINos, 7001);
                    EXPECT_TRUE(std::equal(Got.begin() + 1, Got.end(), Plain[Band].begin(),
                                           Plain[Band].end()))
                        << Wave.Name << " at " << Rate << " band " << Band;
                }
            }
}

TEST_F(BandSplitTest, BandsThatAreLongerThanTheSignalAreSilent) {
    // Half a window of 20 Hz has 200 samples at 8000 Hz.
    for (const std::int32_t Length : {1, 100, 199, 200, 201}) {
        const auto Source = Carrier(Noise(Length, 1));
        const auto Bands = BandSplit(*Source, 8000, 16, 2);
        ASSERT_EQ(Bands.size(), 2U);
        for (const auto& Band : Bands)
            EXPECT_EQ(Band->WaveINos, Length);
        bool Silent = true;
        for (std::int32_t Index = 1; Index <= Length; ++Index)
            Silent = Silent && Bands[0]->WaveLR(Index) == 0;
        EXPECT_EQ(Silent, Length <= 200) << Length;
    }
}

TEST_F(BandSplitTest, TheSplitterTellsWhatItWillBeAlsoToThoseWhoKnow) {
    class Tips final : public UserGuideWindow {
      public:
        bool ShowGuideTip(const GuideTip& Tip) override {
            Shown.push_back(Tip.Message);
            return true;
        }
        void ShowStatusGuide(const std::string&) override {}
        std::vector<std::string> Shown;
    } Window;
    SetUserGuideWindow(&Window);
    BandSplitter();
    BandSplitter();
    SetUserGuideWindow(nullptr);
    const std::string Words =
        "This will separate audio of each band and save them to multiple files";
    EXPECT_EQ(Window.Shown, (std::vector<std::string>{Words, Words}));
}

} // namespace
} // namespace quoril::test
