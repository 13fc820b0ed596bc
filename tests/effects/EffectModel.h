// What a model of the commands that compute consists of: a document as plain arrays beside the real
// one, its past, and the faults that commands and undo have to stand.
#pragma once

#include "effects/EffectFixture.h"
#include "effects/ScriptedMix.h"
#include "platform/SampleMemory.h"
#include "selection/ScriptedSelConf.h"
#include "storage/UndoClearMod.h"
#include "storage/UndoListener.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <optional>
#include <random>
#include <utility>

namespace quoril::test {

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
    std::array<std::vector<std::int16_t>, 2> Channels;
    std::int32_t Channel = 1;
    std::int32_t Freq = 22050;
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

inline std::ptrdiff_t OpenHandles() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                         std::filesystem::directory_iterator());
}

/// The document as plain arrays, and what happens to it besides the commands that compute.
class ModelOfDocument : public EffectTest {
  protected:
    using Samples = std::vector<std::int16_t>;

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
        WaveStore->WavFmtFreq = Now.Freq = 22050;
        CurrentFormat = {Now.Channel, Now.Freq, Now.Bits};
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
        const bool AllFits = MemoryBudget > 10000000;
        const std::int32_t Used = MemoryUsed;
        const std::int64_t Held = SampleMemoryInUse();
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
        std::erase_if(Told, [](const std::string& One) {
            constexpr std::array<const char*, 7> Questions = {
                "Enter ",          "Changing Bit format|", "Convert to Stereo|",
                "Changing Samp",   "Sampling rate|",       "Change Sampling rate - failed|",
                "Noise Generated|"};
            return std::ranges::any_of(Questions,
                                       [&](const char* Each) { return One.starts_with(Each); });
        });
        if (!Told.empty()) {
            EXPECT_LE(How, 3) << Name << Told.back();
            EXPECT_EQ(Told.size(), 1U) << Name;
            ++Failed;
            if (How == 0 && AllFits) {
                EXPECT_EQ(MemoryUsed, Used) << Name;
                EXPECT_EQ(SampleMemoryInUse(), Held) << Name;
            }
            return;
        }
        EXPECT_GT(View.Redraws, Redraws) << Name;
        Follow();
        if (UndoOptionON)
            Past.push_back(Earlier);
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

    [[nodiscard]] std::string Difference() const {
        const WaveFormat Format{Now.Channel, Now.Freq, Now.Bits};
        if (WaveStore->WavFmtChannel != Format.Channel || WaveStore->WavFmtFreq != Format.Freq ||
            WaveStore->WavFmtBits != Format.Bits || CurrentFormat != Format)
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
    ScriptedSelConf Point{3};
    ScriptedMix Mix{{true, {}}};
    ClearAnswer Clearing;
};

} // namespace quoril::test
