// All commands that compute, mixed with plain edits, changes of the format and undo, against plain
// arrays: mono and stereo, 8 and 16 bits, any channel, single samples, a budget so small that
// nearly everything lies in work files and one that all fits, failures in the midst of a command,
// and a disk that is full whenever a step is taken back.
//
// QUORIL_MODEL_STEPS sets the number of commands, QUORIL_MODEL_SEED the first seed.
#include "base/Random.h"
#include "effects/BandFilter.h"
#include "effects/FormatModel.h"
#include "effects/LiteralEcho.h"
#include "effects/LiteralStretch.h"
#include "effects/LiteralWaves.h"
#include "effects/NoiseCommands.h"
#include "effects/NoiseFrames.h"
#include "effects/NoiseProfile.h"
#include "effects/ScriptedEcho.h"
#include "effects/ScriptedEqliz.h"
#include "effects/ScriptedFrequency.h"
#include "effects/ScriptedSilence.h"
#include "effects/ScriptedStretch.h"
#include "effects/TransformCommands.h"
#include "effects/VolumeCommands.h"
#include "support/FromEnvironment.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace quoril::test {
namespace {

class EffectModel : public FormatModel {
  protected:
    void Ramp(const std::string& Name, const std::function<void()>& Command, double First,
              double Second, bool Optimize) {
        Run(Name, Command, [&] {
            EachInWork([&](std::span<std::int16_t> Part) {
                float Start = static_cast<float>(First / 100);
                float End = static_cast<float>(Second / 100);
                if (Optimize) {
                    std::int32_t Peak = 0;
                    for (const std::int16_t One : Part)
                        Peak = std::max<std::int32_t>(Peak, std::abs(std::int32_t{One}));
                    const double q = std::max(Peak, 1) / static_cast<double>(High());
                    Start = static_cast<float>(static_cast<double>(Start) / q);
                    End = static_cast<float>(static_cast<double>(End) / q);
                }
                const double Inc = (static_cast<double>(End) - static_cast<double>(Start)) /
                                   static_cast<double>(Part.size());
                for (std::size_t i = 0; i < Part.size(); ++i)
                    Part[i] =
                        Clip((static_cast<double>(Start) + Inc * static_cast<double>(i)) * Part[i]);
            });
        });
    }
    void Volume() {
        const bool Optimize = Number(0, 1) == 1;
        const auto Start = [Optimize](std::int32_t Mode) {
            return [=] { Optimize ? OptimizeVolume(Mode) : AdjustVolume(Mode); };
        };
        static constexpr std::array<std::int32_t, 7> Percents = {200, 160, 120, 85, 70, 50, 25};
        switch (Number(0, 4)) {
        case 0: {
            const std::int32_t Mode = Number(11, 17);
            const std::int32_t Percent = Percents[static_cast<std::size_t>(Mode) - 11];
            Ramp((Optimize ? "Opti.Vol." : "Chg. Vol. ") + std::to_string(Percent) + "%",
                 Start(Mode), Percent, Percent, Optimize);
            return;
        }
        case 1:
            Optimize ? Ramp("Maximize", Start(3), 100, 100, true)
                     : Ramp("Fade Out", Start(4), 100, 0, false);
            return;
        case 2:
            Optimize ? Ramp("Opti.Vol.100%", Start(21), 100, 100, true)
                     : Ramp("Fade In", Start(5), 0, 100, false);
            return;
        case 3:
            if (Optimize)
                return;
            Ramp("Silence", Start(21), 0, 0, false);
            return;
        default: {
            const std::int32_t One = Number(0, 2000);
            const std::int32_t Other = Number(0, 1) == 0 ? One : Number(0, 2000);
            Messages.AnswerInput(std::to_string(One) +
                                 (One == Other ? "" : "~" + std::to_string(Other)));
            Ramp(Optimize ? "Opti.Vol.Enter" : "Adj. Vol. Enter", Start(0), One, Other, Optimize);
            return;
        }
        }
    }
    void Turn() {
        Run("Reverse", WaveReverse,
            [&] { EachInWork([](auto Part) { std::reverse(Part.begin(), Part.end()); }); });
    }
    void Flip() {
        Run("Invert", WaveInvert, [&] {
            EachInWork([&](auto Part) {
                for (std::int16_t& One : Part)
                    One = Clip(-static_cast<double>(One));
            });
        });
    }
    void Height() {
        std::int32_t Percent = Number(-100, 100);
        if (Percent == 0)
            Percent = 7;
        Messages.AnswerInput(std::to_string(Percent));
        Run(Percent < 0 ? "Move Down" : "Move Up", WaveMoveUpDown, [&] {
            const double Offset = std::nearbyint(Percent / 100.0 * High());
            EachInWork([&](auto Part) {
                for (std::int16_t& One : Part)
                    One = Clip(One + Offset);
            });
        });
    }
    void Move() {
        std::int32_t Place = Number(1, Total());
        if (Place == SelStart)
            return;
        Duration.Answer = {true, std::to_string(Place - SelStart)};
        Run(Place < SelStart ? "Move Back" : "Move Forward", WaveMoveForwardBack, [&] {
            for (std::size_t c = 0; c < 2; ++c) {
                if (!InWork(c))
                    continue;
                Samples& Mine = Now.Channels[c];
                const Samples Part(Mine.begin() + SelStart - 1, Mine.begin() + SelEnd);
                std::fill(Mine.begin() + SelStart - 1, Mine.begin() + SelEnd, std::int16_t{0});
                const std::size_t End = static_cast<std::size_t>(Place) - 1 + Part.size();
                if (Mine.size() < End)
                    Mine.resize(End, 0);
                std::copy(Part.begin(), Part.end(), Mine.begin() + Place - 1);
            }
            Pad();
        });
    }
    void Exchange() {
        if (!Stereo())
            return;
        Run("Interchange Left-Right", InterchangeChannels, [&] {
            if (SelBoth)
                std::swap_ranges(Now.Channels[0].begin() + SelStart - 1,
                                 Now.Channels[0].begin() + SelEnd,
                                 Now.Channels[1].begin() + SelStart - 1);
        });
    }
    void MixChannels() {
        if (!Stereo())
            return;
        SelBoth = true;
        ChnMixChoice& Choice = Mix.Answer.Choice;
        Choice = {Number(0, 6), Number(0, 6)};
        Run("Interchange Left-Right", ChannelMix, [&] {
            for (auto i = static_cast<std::size_t>(SelStart) - 1;
                 i < static_cast<std::size_t>(SelEnd); ++i) {
                const double L = Now.Channels[0][i];
                const double R = Now.Channels[1][i];
                const std::array<double, 7> Made = {L, R, (L + R) / 2, L + R, L - R, R - L, 0};
                Now.Channels[0][i] = Clip(Made[static_cast<std::size_t>(Choice.LeftSrc)]);
                Now.Channels[1][i] = Clip(Made[static_cast<std::size_t>(Choice.RightSrc)]);
            }
        });
    }
    /// What a kernel that takes runs and gives runs makes of a whole channel in one run.
    template <typename Kernel>
    static void InOneRun(Kernel& Made, std::span<std::int16_t> Part) {
        const Samples Source(Part.begin(), Part.end());
        auto Out = Part.begin();
        Made.Push(Source, [&Out](std::span<const std::int16_t> Ready) {
            Out = std::copy(Ready.begin(), Ready.end(), Out);
        });
        EXPECT_TRUE(Out == Part.end());
    }
    void FilterBands() {
        std::vector<std::int32_t> Bands(static_cast<std::size_t>(Number(2, 12)));
        for (std::int32_t& Each : Bands)
            Each = Number(-50, 50);
        Eqliz.Answer = {};
        const bool Accepted = Number(0, 9) > 0;
        if (Accepted)
            Eqliz.Accept(Bands);
        const std::int32_t Index = Number(0, 1);
        if (!Accepted) {
            Doing = "equalizer given up";
            Equalize(Index);
            EXPECT_EQ(Messages.TakeTexts(), std::vector<std::string>());
            return;
        }
        Run(
            Index == 0 ? "Equalize" : "Band Pass Filter", [Index] { Equalize(Index); },
            [&] {
                EachInWork([&](std::span<std::int16_t> Part) {
                    BandCascade Cascade(CascadeBands(Eqliz.Answer, WaveStore->WavFmtFreq),
                                        static_cast<std::int32_t>(Part.size()), High());
                    InOneRun(Cascade, Part);
                });
            });
    }
    void SelectFrames() {
        SelStart = Number(1, Total() - NoiseFrameLength + 1);
        SelEnd = Number(SelStart + NoiseFrameLength - 1, Total());
    }
    /// Changes nothing but the profile, which is that of the same samples in memory.
    void LearnNoise() {
        Doing = "define noise";
        SelectFrames();
        EffectNoisRedu(0);
        EXPECT_EQ(Messages.TakeTexts(), std::vector<std::string>());
        const std::vector<float> Learnt = NoiseProfile;
        const Samples& Source = Now.Channels[WorkChn() == 2 ? 1 : 0];
        NoiseDefine(NoiseFrameLength,
                    *Carrier(Samples(Source.begin() + SelStart - 1, Source.begin() + SelEnd)),
                    Now.Bits, WaveStore->WavFmtFreq);
        EXPECT_TRUE(Learnt == NoiseProfile);
    }
    void FilterNoise() {
        if (Total() < NoiseFrameLength)
            return;
        if (Number(0, 2) == 0 || !NoiseDefined(Now.Bits, WaveStore->WavFmtFreq, NoiseFrameLength))
            LearnNoise();
        SelectFrames();
        Run(
            "Filter Noise", [] { EffectNoisRedu(1); },
            [&] {
                EachInWork([&](std::span<std::int16_t> Part) {
                    NoiseFrames Frames(NoiseProfile, NoiseBits,
                                       static_cast<std::int32_t>(Part.size()));
                    InOneRun(Frames, Part);
                });
            });
    }
    /// Puts `New` in the place of the samples from `From` on, as far as there are some.
    static void Overwrite(Samples& Mine, std::size_t From, const Samples& New) {
        Mine.resize(std::max(Mine.size(), From + New.size()), 0);
        std::copy(New.begin(), New.end(), Mine.begin() + static_cast<std::ptrdiff_t>(From));
    }
    void Lengthen() {
        const std::int32_t Index = Number(0, 1);
        // A document that has become long is shrunk.
        const bool Long = Total() > 6000;
        const double Start =
            Index == 0 ? Number(10, Long ? 90 : 400) : Number(Long ? 110 : 25, 999);
        const double End = Number(0, 1) == 0 && Start != 100 ? Start : Start + 1;
        const bool Moves = Number(0, 1) == 0;
        Strch.Accept({std::to_string(Start), std::to_string(End), true, Moves});
        Run(
            Index == 0 ? "Stretch/Shrink" : "Change Speed", [Index] { Stretch(Index); },
            [&] {
                const auto From = static_cast<std::size_t>(SelStart) - 1;
                for (std::size_t c = 0; c < 2; ++c) {
                    if (!InWork(c))
                        continue;
                    Samples& Mine = Now.Channels[c];
                    const Samples Part(Mine.begin() + SelStart - 1, Mine.begin() + SelEnd);
                    Samples New = Index == 0
                                      ? LiteralStretch(Part, Now.Bits, Start, End)
                                      : LiteralStretch(Part, Now.Bits, 10000 / Start, 10000 / End);
                    if (!Moves) {
                        New.resize(std::max(New.size(), Part.size()), 0);
                        Overwrite(Mine, From, New);
                        continue;
                    }
                    Mine.erase(Mine.begin() + SelStart - 1, Mine.begin() + SelEnd);
                    Mine.insert(Mine.begin() + SelStart - 1, New.begin(), New.end());
                }
                Pad();
            });
    }
    void Repeat() {
        if (Total() > 6000)
            return Delete();
        const EchoParamsRec Set{static_cast<float>(Number(1, 30)) / 1000,
                                static_cast<float>(Number(1, 20)) / 1000,
                                Number(1, 5),
                                Number(1, 200),
                                Number(0, 100),
                                Number(0, 2) > 0 ? 100 : Number(1, 200)};
        Repeats.Left = Set;
        Run("Echo", Echo, [&] {
            RandomSeed(static_cast<double>(Set.NextDelays) + Set.DelayVariation);
            const auto From = static_cast<std::size_t>(SelStart) - 1;
            std::array<Samples, 2> Wet;
            for (std::size_t c = 0; c < 2; ++c)
                if (InWork(c))
                    Wet[c] = LiteralEcho(
                        {Now.Channels[c].begin() + SelStart - 1, Now.Channels[c].begin() + SelEnd},
                        WaveStore->WavFmtFreq, Now.Bits,
                        {Set.FirstDelay, Set.NextDelays, Set.Repeats, Set.VolReduceAll,
                         Set.DelayVariation, Set.VolReduceHiFi},
                        RandomDraw);
            const std::size_t Reach = std::max(Wet[0].size(), Wet[1].size());
            for (std::size_t c = 0; c < 2; ++c) {
                if (!InWork(c))
                    continue;
                Samples& Mine = Now.Channels[c];
                const auto End = static_cast<std::ptrdiff_t>(std::min(From + Reach, Mine.size()));
                const Samples Dry(Mine.begin() + SelStart - 1, Mine.begin() + End);
                Overwrite(Mine, From, LiteralDryMix(Wet[c], Dry, Now.Bits));
            }
            Pad();
        });
    }
    /// Puts what `Made` gives for a channel's part of the selection in its place.
    template <typename Routine>
    void Replaced(const Routine& Made) {
        EachInWork([&](std::span<std::int16_t> Part) {
            const Samples New = Made(Samples(Part.begin(), Part.end()));
            std::copy(New.begin(), New.end(), Part.begin());
        });
    }
    void Tone(bool Modulates) {
        const std::int32_t StartHz = Number(2, 20000);
        const std::int32_t EndHz = Number(2, 20000);
        Frequency.Entries = {{std::to_string(StartHz), std::to_string(EndHz), true}};
        Run(Modulates ? "Modulate" : "Sine", Modulates ? Modulate : DrawSine, [&] {
            if (Modulates && WorkChn() == 2)
                return; // the tone is as long as the left channel's part, which is empty
            const std::int32_t High = Modulates ? 15000 : Now.Bits == 8 ? 89 : 22937;
            Replaced([&](const Samples& Part) {
                const Samples Sine = LiteralSine(static_cast<std::int32_t>(Part.size()), High,
                                                 StartHz, EndHz, WaveStore->WavFmtFreq);
                return Modulates ? LiteralModulate(Part, Sine, Now.Bits) : Sine;
            });
        });
        Frequency.Entries.clear();
    }
    void RandomWalk() {
        const double Seed = Number(1, 1000);
        RandomSeed(Seed);
        Run("Noise", DrawNoise, [&] {
            Replaced([&](const Samples& Part) {
                RandomSeed(Seed);
                return LiteralNoise(static_cast<std::int32_t>(Part.size()), Now.Bits, RandomDraw);
            });
        });
    }
    void ShortenSilence() {
        DelSilenChoice& Choice = Silence.Answer.Choice;
        Choice.SilenVol = Number(0, 100);
        Choice.SilenDur = Number(25, 300) / 10000.0 + 0.0225;
        Choice.SilenDelStyl = static_cast<std::int16_t>(Number(1, 2));
        Choice.BalDur = Number(0, 300) / 10000.0;
        Choice.BalPer = Number(0, 100);
        Choice.BalMax = Number(25, 100) / 1000.0;
        Run("Delete Silence", DeleteSilence, [&] {
            const LiteralSilenceRule Rule = {
                WaveStore->WavFmtFreq, Choice.SilenVol / 100, Choice.SilenDur, Choice.SilenDelStyl,
                Choice.BalDur,         Choice.BalPer / 100,   Choice.BalMin,   Choice.BalMax};
            std::array<Samples, 2> Parts;
            for (std::size_t c = 0; c < 2; ++c)
                if (InWork(c)) {
                    Samples& Mine = Now.Channels[c];
                    Parts[c].assign(Mine.begin() + SelStart - 1, Mine.begin() + SelEnd);
                    Mine.erase(Mine.begin() + SelStart - 1, Mine.begin() + SelEnd);
                    Parts[c] =
                        Stereo() && SelBoth ? Parts[c] : LiteralDeleteSilence(Parts[c], Rule);
                }
            if (Stereo() && SelBoth) {
                const std::array<Samples, 2> Whole = Parts;
                LiteralDeleteSilence(Whole[0], Whole[1], Rule, Parts[0], Parts[1]);
            }
            for (std::size_t c = 0; c < 2; ++c)
                Now.Channels[c].insert(Now.Channels[c].begin() + (InWork(c) ? SelStart - 1 : 0),
                                       Parts[c].begin(), Parts[c].end());
            Pad();
        });
    }
    void MakeOrClean() {
        switch (Number(0, 3)) {
        case 0:
            return Tone(false);
        case 1:
            return Tone(true);
        case 2:
            return RandomWalk();
        default:
            return ShortenSilence();
        }
    }
    void Insert() {
        if (Total() > 6000)
            return Delete();
        const std::int32_t Place = Number(1, Total() + 1);
        const std::array<Samples, 2> New = {Noise(Number(1, 300)), Noise(Number(1, 300))};
        const auto L = Carrier(New[0]);
        const auto R = Carrier(New[1]);
        Edit(
            "Insert",
            [&] { WaveStore->WaveDataInsert(Place, WorkChn(), L.get(), R.get(), "Insert", true); },
            [&](Samples& Mine, std::size_t c) {
                Mine.insert(Mine.begin() + Place - 1, New[c].begin(), New[c].end());
            });
    }
    void Delete() {
        Edit(
            "Delete",
            [&] {
                WaveStore->WaveDataDelete(SelStart, WorkChn(), SelEnd - SelStart + 1, "Delete",
                                          true);
            },
            [&](Samples& Mine, std::size_t) {
                Mine.erase(Mine.begin() + SelStart - 1, Mine.begin() + SelEnd);
            });
    }
    void Paste() {
        if (Total() > 6000)
            return;
        std::unique_ptr<BlockCarrBuffClass> L;
        std::unique_ptr<BlockCarrBuffClass> R;
        WaveStore->WaveCollectData(SelStart, SelEnd, 0, L, R);
        std::array<Samples, 2> Part;
        for (std::size_t c = 0; c < (Stereo() ? 2U : 1U); ++c)
            Part[c].assign(Now.Channels[c].begin() + SelStart - 1,
                           Now.Channels[c].begin() + SelEnd);
        const std::int32_t Place = Number(1, Total());
        const bool Over = Number(0, 1) == 0;
        Edit(
            "Paste",
            [&] {
                if (Over)
                    WaveStore->WaveDataReplace(Place, WorkChn(), L.get(), R.get(), "Paste", true);
                else
                    WaveStore->WaveDataInsert(Place, WorkChn(), L.get(), R.get(), "Paste", true);
            },
            [&](Samples& Mine, std::size_t c) {
                if (Over)
                    Mine.erase(Mine.begin() + Place - 1,
                               Mine.begin() +
                                   std::min<std::ptrdiff_t>(Place - 1 + std::ssize(Part[c]),
                                                            std::ssize(Mine)));
                Mine.insert(Mine.begin() + Place - 1, Part[c].begin(), Part[c].end());
            });
    }
    void Any() {
        if (Total() == 0 || Number(0, 120) == 0)
            Begin();
        PickRange();
        Look();
        struct Choice {
            std::int32_t Weight;
            void (EffectModel::*Run)();
        };
        static constexpr std::array<Choice, 19> Choices = {{{12, &EffectModel::Volume},
                                                            {10, &EffectModel::ChangeTheFormat},
                                                            {6, &EffectModel::Turn},
                                                            {6, &EffectModel::Flip},
                                                            {6, &EffectModel::Height},
                                                            {8, &EffectModel::Move},
                                                            {4, &EffectModel::Exchange},
                                                            {8, &EffectModel::MixChannels},
                                                            {6, &EffectModel::FilterBands},
                                                            {5, &EffectModel::FilterNoise},
                                                            {6, &EffectModel::Lengthen},
                                                            {4, &EffectModel::Repeat},
                                                            {20, &EffectModel::MakeOrClean},
                                                            {6, &EffectModel::Insert},
                                                            {5, &EffectModel::Delete},
                                                            {5, &EffectModel::Paste},
                                                            {17, &EffectModel::TakeBack},
                                                            {3, &EffectModel::Clear},
                                                            {3, &EffectModel::Rarely}}};
        std::int32_t Sum = 0;
        for (const Choice& Each : Choices)
            Sum += Each.Weight;
        std::int32_t Pick = Number(1, Sum);
        const Choice* Chosen = Choices.data();
        while (Pick > Chosen->Weight) {
            Pick -= Chosen->Weight;
            ++Chosen;
        }
        (this->*Chosen->Run)();
    }
    void Rarely() {
        if (Number(0, 2) == 0 || !UndoOptionON)
            Toggle();
        else if (Number(0, 1) == 0)
            LeaveFile();
    }

    ScriptedEqliz Eqliz;
    ScriptedStretch Strch;
    ScriptedEcho Repeats;
    ScriptedFrequency Frequency;
    ScriptedSilence Silence{{true, {}}};
};

class EffectModelOf : public EffectModel, public ::testing::WithParamInterface<int> {};

TEST_P(EffectModelOf, AgreesWithPlainArraysAfterEveryCommand) {
    const std::uint32_t Seed =
        FromEnvironment("QUORIL_MODEL_SEED", 700) + static_cast<std::uint32_t>(GetParam());
    const std::uint32_t Steps = FromEnvironment("QUORIL_MODEL_STEPS", 1500);
    std::printf("seed %u, %u steps\n", Seed, Steps);
    Random.seed(Seed);
    MemoryBudget = GetParam() == 4 ? 50000000 : GetParam() % 2 == 0 ? 20000 : 2;
    WorkFilesGo = GetParam() == 2 || GetParam() == 3;
    const std::int64_t Held = SampleMemoryInUse();
    const std::ptrdiff_t Handles = OpenHandles();
    for (std::uint32_t i = 0; i < Steps; ++i) {
        Any();
        ASSERT_EQ(Difference(), "") << Doing << ", step " << i;
        ASSERT_FALSE(HasFailure()) << Doing << ", step " << i;
    }
    EXPECT_GT(Failed, 0);
    WaveStore.reset();
    EXPECT_EQ(SampleMemoryInUse(), Held);
    EXPECT_EQ(OpenHandles(), Handles);
    if (!WorkFilesGo) {
        EXPECT_EQ(TestSession::SessionFiles(), std::vector<std::string>());
    }
    EXPECT_EQ(BrokenRule(std::vector<const BlockSet*>{}), "");
}

INSTANTIATE_TEST_SUITE_P(Seeds, EffectModelOf, ::testing::Range(0, 5));

} // namespace
} // namespace quoril::test
