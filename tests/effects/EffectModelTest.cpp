// All commands that compute, mixed with plain edits and undo, against plain arrays: mono and
// stereo, 8 and 16 bits, any channel, single samples, a budget so small that nearly everything lies
// in work files, failures in the midst of a command, and a disk that is full whenever a step is
// taken back.
//
// QUORIL_MODEL_STEPS sets the number of commands, QUORIL_MODEL_SEED the first seed.
#include "effects/ChannelMix.h"
#include "effects/EffectFixture.h"
#include "effects/TransformCommands.h"
#include "effects/VolumeCommands.h"
#include "platform/SampleMemory.h"
#include "selection/SelectionMod.h"
#include "storage/UndoClearMod.h"

#include <algorithm>
#include <array>
#include <cfenv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <optional>
#include <random>
#include <utility>

namespace quoril::test {
namespace {

using Samples = std::vector<std::int16_t>;

class ForcedPoint final : public SelConfDialog {
  public:
    ForcedPoint() { SetSelConfDialog(this); }
    ~ForcedPoint() override { SetSelConfDialog(nullptr); }
    ForcedPoint(const ForcedPoint&) = delete;
    ForcedPoint& operator=(const ForcedPoint&) = delete;
    std::optional<std::int32_t> ShowSelConf(const SelConfRequest&) override { return 3; }
};

class MixAnswer final : public ChnMixDialog {
  public:
    MixAnswer() { SetChnMixDialog(this); }
    ~MixAnswer() override { SetChnMixDialog(nullptr); }
    MixAnswer(const MixAnswer&) = delete;
    MixAnswer& operator=(const MixAnswer&) = delete;
    ChnMixAnswer ShowChnMix(const ChnMixChoice&) override { return {true, Choice}; }
    ChnMixChoice Choice;
};

class ClearAnswer final : public UndoClearDialog {
  public:
    ClearAnswer() { SetUndoClearDialog(this); }
    ~ClearAnswer() override { SetUndoClearDialog(nullptr); }
    ClearAnswer(const ClearAnswer&) = delete;
    ClearAnswer& operator=(const ClearAnswer&) = delete;
    UndoClearAnswer ShowUndoClear(const std::vector<std::string>& Names) override {
        Shown = Names;
        return std::exchange(Next, {});
    }
    void UndoClearDone() override {}
    UndoClearAnswer Next;
    std::vector<std::string> Shown;
};

struct State {
    std::array<Samples, 2> Channels;
    std::int32_t Channel = 1;
    std::int32_t Bits = 16;
};

struct Step {
    State Before;
    std::string Name;
    std::int32_t SelStart = 0;
    std::int32_t SelEnd = 0;
};

/// While it lives a file or a folder is away, and no handle on a file in it is open.
class Away {
  public:
    explicit Away(std::string Path) : Name(std::move(Path)) {
        OrgFileClose(OrgFileOpenNo);
        WorkFileClose(WorkFileOpenNo);
        if (std::rename(Name.c_str(), (Name + ".away").c_str()) != 0)
            Name.clear();
    }
    ~Away() {
        if (!Name.empty()) {
            EXPECT_EQ(std::rename((Name + ".away").c_str(), Name.c_str()), 0);
        }
    }
    Away(const Away&) = delete;
    Away& operator=(const Away&) = delete;

  private:
    std::string Name;
};

std::ptrdiff_t OpenHandles() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                         std::filesystem::directory_iterator());
}

class EffectModel : public EffectTest {
  protected:
    std::int32_t Number(std::int32_t From, std::int32_t To) {
        return std::uniform_int_distribution<std::int32_t>(From, To)(Random);
    }
    [[nodiscard]] bool Stereo() const { return Now.Channel == 2; }
    [[nodiscard]] std::int32_t Low() const { return Now.Bits == 8 ? -128 : -32768; }
    [[nodiscard]] std::int32_t High() const { return Now.Bits == 8 ? 127 : 32767; }
    [[nodiscard]] std::int32_t Total() const {
        return static_cast<std::int32_t>(Now.Channels[0].size());
    }
    std::int16_t Clip(double Value) const {
        return static_cast<std::int16_t>(std::clamp<double>(std::nearbyint(Value), Low(), High()));
    }
    Samples Noise(std::int32_t Count) {
        Samples Made(static_cast<std::size_t>(Count));
        const bool Loud = Number(0, 1) == 1;
        for (std::int16_t& Value : Made)
            Value = static_cast<std::int16_t>(Loud ? Number(Low(), High())
                                                   : Number(Low() / 8, High() / 8));
        if (!Made.empty() && Number(0, 4) == 0)
            Made[0] = static_cast<std::int16_t>(Low());
        return Made;
    }

    /// A new document, of samples in memory or in an interleaved file.
    void Begin() {
        WaveStore = std::make_unique<FileMemoClass>();
        Past.clear();
        Now.Channel = Number(1, 2);
        Now.Bits = Number(0, 1) == 0 ? 8 : 16;
        WaveStore->WavFmtChannel = Now.Channel;
        WaveStore->WavFmtBits = Now.Bits;
        const std::int32_t Frames = Number(1, 3000);
        const std::string Name = "doc" + std::to_string(++Files) + ".raw";
        LastFile = RawFile(Session, Name, Frames, Now.Channel, Now.Bits);
        const std::int32_t OrgNo = OrgFileAdd(LastFile, Now.Channel, Now.Bits);
        BlockCarrBuffClass L;
        BlockCarrBuffClass R;
        const std::int32_t LeftNo = OrgBlock(OrgNo, Frames, 1);
        if (Stereo()) {
            const std::int32_t RightNo = OrgBlock(OrgNo, Frames, 2);
            OrgPairAdd(LeftNo, RightNo);
            R.BuffBlocksPutFresh({RightNo});
        }
        L.BuffBlocksPutFresh({LeftNo});
        WaveStore->SwitchUndoOff = true;
        WaveStore->WaveDataInsert(1, Stereo() ? 0 : 1, &L, &R, "", true);
        WaveStore->SwitchUndoOff = false;
        for (std::int32_t c = 1; c <= 2; ++c) {
            Samples& Mine = Now.Channels[static_cast<std::size_t>(c) - 1];
            Mine = c <= Now.Channel ? TestSamples(1, Frames, c) : Samples();
            if (Now.Bits == 8)
                for (std::int16_t& One : Mine)
                    One = static_cast<std::int16_t>((One & 255) - 128);
        }
    }

    void PickRange() {
        SelStart = Number(1, Total());
        SelEnd = Number(0, 5) == 0 ? SelStart : std::min(Total(), SelStart + Number(0, 900));
        if (Number(0, 9) == 0) {
            SelStart = 1;
            SelEnd = Total();
        }
        SelBoth = Number(0, 1) == 0;
        SelSingle = static_cast<std::int16_t>(Number(1, 2));
    }
    [[nodiscard]] bool InWork(std::size_t c) const {
        if (!Stereo())
            return c == 0;
        return SelBoth || SelSingle == static_cast<std::int32_t>(c) + 1;
    }
    [[nodiscard]] std::int32_t WorkChn() const { return !Stereo() ? 1 : SelBoth ? 0 : SelSingle; }
    void Remember(const std::string& Name) { Earlier = {Now, Name, SelStart, SelEnd}; }
    void Pad() {
        if (!Stereo())
            return;
        const std::size_t Longer = std::max(Now.Channels[0].size(), Now.Channels[1].size());
        for (Samples& Mine : Now.Channels)
            Mine.resize(Longer, 0);
    }
    template <typename Routine>
    void EachInWork(const Routine& Change) {
        for (std::size_t c = 0; c < 2; ++c)
            if (InWork(c))
                Change(std::span<std::int16_t>(Now.Channels[c])
                           .subspan(static_cast<std::size_t>(SelStart) - 1,
                                    static_cast<std::size_t>(SelEnd - SelStart) + 1));
    }

    /// Runs a command: as it is, with a failure in the midst, or on a disk that fills up. What
    /// failed has changed nothing. Otherwise the model follows.
    void Run(const std::string& Name, const std::function<void()>& Command,
             const std::function<void()>& Follow) {
        Remember(Name);
        Doing = Name;
        const int Redraws = View.Redraws;
        const int How = Number(0, 9);
        const FullDisk Work;
        const std::int32_t Good = MemoryBudget;
        if (How == 0)
            Progress.FailAt = 0.3F;
        if (How == 1)
            Progress.WhenComputing = [&] {
                Work.Fill();
                MemoryBudget = MemoryUsed + Number(0, 4000);
            };
        {
            // As far as the command gets along without them; the file may be gone already.
            const std::optional<Away> Gone = How == 2 ? std::optional<Away>(std::in_place, LastFile)
                                             : How == 3 && WorkFilesGo
                                                 ? std::optional<Away>(std::in_place, SessionDir)
                                                 : std::nullopt;
            Command();
        }
        Work.Empty();
        MemoryBudget = Good;
        Progress.FailAt = -1;
        Progress.WhenComputing = nullptr;
        ExpectQuiet();
        while (InputBox("Enter nothing", {}, {}).Accepted) {
            // The command failed before it asked.
        }
        std::vector<std::string> Told = Messages.TakeTexts();
        std::erase_if(Told, [](const std::string& One) { return One.starts_with("Enter "); });
        if (!Told.empty()) {
            EXPECT_LE(How, 3) << Name << Told.back();
            EXPECT_EQ(Told.size(), 1U) << Name;
            ++Failed;
            return;
        }
        EXPECT_GT(View.Redraws, Redraws) << Name;
        Follow();
        if (UndoOptionON)
            Past.push_back(Earlier);
    }

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
        Mix.Choice = {Number(0, 6), Number(0, 6)};
        Run("Interchange Left-Right", ChannelMix, [&] {
            for (auto i = static_cast<std::size_t>(SelStart) - 1;
                 i < static_cast<std::size_t>(SelEnd); ++i) {
                const double L = Now.Channels[0][i];
                const double R = Now.Channels[1][i];
                const std::array<double, 7> Made = {L, R, (L + R) / 2, L + R, L - R, R - L, 0};
                Now.Channels[0][i] = Clip(Made[static_cast<std::size_t>(Mix.Choice.LeftSrc)]);
                Now.Channels[1][i] = Clip(Made[static_cast<std::size_t>(Mix.Choice.RightSrc)]);
            }
        });
    }
    /// A command of the store's own: inserts, deletes or replaces, in the channels in work.
    void Edit(const std::string& Name, const std::function<void()>& Change,
              const std::function<void(Samples&, std::size_t)>& Follow) {
        Remember(Name);
        Doing = Name;
        WaveStore->EditAsOne(Change);
        for (std::size_t c = 0; c < 2; ++c)
            if (InWork(c))
                Follow(Now.Channels[c], c);
        Pad();
        if (UndoOptionON)
            Past.push_back(Earlier);
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
    void TakeBack() {
        if (Past.empty())
            return;
        Doing = "undo of " + Past.back().Name;
        EXPECT_EQ(WaveStore->UndoMenu().Caption, "Undo [" + Past.back().Name + "]");
        const FullDisk Work;
        const std::int32_t Good = MemoryBudget;
        Work.Fill();
        MemoryBudget = std::max(1, std::min(MemoryUsed, MemoryBudget));
        {
            const std::optional<Away> Gone =
                Number(0, 4) == 0 ? std::optional<Away>(std::in_place, LastFile) : std::nullopt;
            const std::optional<Away> Also = Number(0, 4) == 0 && WorkFilesGo
                                                 ? std::optional<Away>(std::in_place, SessionDir)
                                                 : std::nullopt;
            WaveStore->Undo();
        }
        Work.Empty();
        MemoryBudget = Good;
        EXPECT_EQ(Messages.TakeTexts(), std::vector<std::string>()) << Doing;
        Now = Past.back().Before;
        EXPECT_EQ(SelStart, Past.back().SelStart);
        EXPECT_EQ(SelEnd, Past.back().SelEnd);
        Past.pop_back();
    }
    void Clear() {
        Doing = "clear";
        std::vector<std::string> Names;
        for (const Step& One : Past)
            Names.push_back(One.Name);
        const std::int32_t What = Number(0, 3);
        const auto Upto = static_cast<std::size_t>(
            Number(0, std::max<std::int32_t>(0, static_cast<std::int32_t>(Past.size()) - 1)));
        Clearing.Next = {static_cast<decltype(UndoClearAnswer::Result)>(What), Upto};
        UndoClearFiles_UserAssisted(*WaveStore);
        const std::vector<std::string> Told = Messages.TakeTexts();
        if (Past.empty()) {
            EXPECT_EQ(Told, std::vector<std::string>{"No undo data is left to clear."});
            return;
        }
        if (What == 1)
            Past.erase(Past.begin());
        else if (What == 2)
            Past.erase(Past.begin(), Past.begin() + static_cast<std::ptrdiff_t>(Upto) + 1);
        else if (What == 3)
            Past.clear();
        Names.erase(Names.begin(), Names.end() - std::ssize(Past));
        if (!Past.empty()) {
            EXPECT_EQ(Clearing.Shown, Names);
        }
    }
    void Toggle() {
        Doing = "toggle";
        UndoOptionON = !UndoOptionON;
        if (UndoOptionON)
            WaveStore->UndoInfoUpdateMenu();
        else
            WaveStore->UndoInfoReset();
        Past.clear();
        EXPECT_EQ(WaveStore->UndoMenu().Caption, UndoOptionON ? "Undo [Nothing]" : "Undo [Off]");
        EXPECT_EQ(WaveStore->UndoCount(), 0);
    }
    /// Reads a stretch into arrays that were used before.
    void Look() {
        for (const std::int32_t Chn : {1, Now.Channel}) {
            const Samples& Mine = Now.Channels[static_cast<std::size_t>(Chn) - 1];
            const Samples Part(Mine.begin() + SelStart - 1, Mine.begin() + SelEnd);
            std::array<SampleArray, 2> Quick;
            Quick.fill(SampleArray(Part.size() + 1, 77));
            std::array<SampleArray, 2> Collected = Quick;
            WaveStore->QuickBuffGet(SelStart, SelEnd - SelStart + 1, Chn, Quick[0], Quick[1]);
            WaveStore->WaveCollectBuff(SelStart, SelEnd, Chn, Collected[0], Collected[1]);
            for (const SampleArray* Each : {&Quick[static_cast<std::size_t>(Chn) - 1],
                                            &Collected[static_cast<std::size_t>(Chn) - 1]})
                EXPECT_TRUE(std::equal(Each->begin() + 1, Each->end(), Part.begin(), Part.end()))
                    << "channel " << Chn << " from " << SelStart << " to " << SelEnd;
        }
    }
    void LeaveFile() {
        OrgFileReleaseByName(LastFile);
        (void)FileDelete(LastFile);
    }

    void Any() {
        if (Total() == 0 || Number(0, 120) == 0)
            Begin();
        PickRange();
        Look();
        const std::int32_t Pick = Number(0, 99);
        if (Pick < 22)
            Volume();
        else if (Pick < 28)
            Turn();
        else if (Pick < 34)
            Flip();
        else if (Pick < 40)
            Height();
        else if (Pick < 48)
            Move();
        else if (Pick < 52)
            Exchange();
        else if (Pick < 60)
            MixChannels();
        else if (Pick < 66)
            Insert();
        else if (Pick < 71)
            Delete();
        else if (Pick < 76)
            Paste();
        else if (Pick < 93)
            TakeBack();
        else if (Pick < 96)
            Clear();
        else if (Pick < 97 || !UndoOptionON)
            Toggle();
        else if (Pick < 98)
            LeaveFile();
    }

    [[nodiscard]] std::string Difference() const {
        if (WaveStore->WavFmtBits != Now.Bits || WaveStore->WavFmtChannel != Now.Channel)
            return "format";
        if (Left() != Now.Channels[0])
            return "left";
        if (Right() != Now.Channels[1])
            return "right";
        if (WaveStore->WavWaveINos != Total())
            return "total";
        return BrokenRule(*WaveStore);
    }

    std::mt19937 Random;
    State Now;
    Step Earlier;
    std::vector<Step> Past;
    std::string Doing;
    std::string LastFile;
    int Files = 0;
    int Failed = 0;
    bool WorkFilesGo = false; ///< the session folder is away at times, and nothing is deleted there
    ForcedPoint Point;
    MixAnswer Mix;
    ClearAnswer Clearing;
};

std::uint32_t FromEnvironment(const char* Name, std::uint32_t Otherwise) {
    const char* const Text = std::getenv(Name);
    return Text == nullptr ? Otherwise
                           : static_cast<std::uint32_t>(std::strtoul(Text, nullptr, 10));
}

class EffectModelOf : public EffectModel, public ::testing::WithParamInterface<int> {};

TEST_P(EffectModelOf, agrees_with_plain_arrays_after_every_command) {
    const std::uint32_t Seed =
        FromEnvironment("QUORIL_MODEL_SEED", 700) + static_cast<std::uint32_t>(GetParam());
    const std::uint32_t Steps = FromEnvironment("QUORIL_MODEL_STEPS", 1500);
    std::printf("seed %u, %u steps\n", Seed, Steps);
    Random.seed(Seed);
    MemoryBudget = GetParam() % 2 == 0 ? 20000 : 2;
    WorkFilesGo = GetParam() >= 2;
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

INSTANTIATE_TEST_SUITE_P(Seeds, EffectModelOf, ::testing::Range(0, 4));

} // namespace
} // namespace quoril::test
