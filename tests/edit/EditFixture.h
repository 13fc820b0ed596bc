// A document of test material, and every question of the edit commands answered by script.
#pragma once

#include "base/DocumentState.h"
#include "edit/LapMod.h"
#include "edit/LengthCommands.h"
#include "selection/DurationEntry.h"
#include "selection/ViewFixture.h"
#include "storage/DiskSpaceGuardMod.h"
#include "storage/StorageChecks.h"
#include "storage/UndoListener.h"

#include <gmock/gmock.h>

#include <functional>

namespace quoril::test {

/// Answers all three dialogs.
class ScriptedQuestions final : public EntDurDialog, public LapDialog, public ChkDskSpcDialog {
  public:
    ScriptedQuestions() {
        SetEntDurDialog(this);
        SetLapDialog(this);
        SetChkDskSpcDialog(this);
    }
    ~ScriptedQuestions() override {
        SetEntDurDialog(nullptr);
        SetLapDialog(nullptr);
        SetChkDskSpcDialog(nullptr);
    }
    ScriptedQuestions(const ScriptedQuestions&) = delete;
    ScriptedQuestions& operator=(const ScriptedQuestions&) = delete;

    EntDurAnswer ShowEntDur(const EntDurRequest& Request) override {
        Entries.push_back(Request);
        return Entry;
    }
    LapAnswer ShowLap() override {
        ++LapsAsked;
        return Lap;
    }
    std::int32_t ShowChkDskSpc(const DiskSpaceNumbers& Numbers, const FreeBytesRoutine&) override {
        Needs.push_back(Numbers.Needed2);
        return GoOn ? 1 : 0;
    }

    EntDurAnswer Entry;
    std::vector<EntDurRequest> Entries;
    LapAnswer Lap;
    int LapsAsked = 0;
    bool GoOn = false;
    std::vector<std::int64_t> Needs; ///< of commands that found the disk too full
};

class EditTest : public ViewTest {
  protected:
    using Samples = std::vector<std::int16_t>;

    /// Puts samples of the test's choice into the store; no step that can be undone.
    static void Fill(const Samples& Left, const Samples& Right = {}, std::int32_t Bits = 16) {
        WaveStore->StorageReset();
        WaveStore->WavFmtChannel = Right.empty() ? 1 : 2;
        WaveStore->WavFmtBits = Bits;
        WaveStore->WavFmtFreq = 1000;
        BlockCarrBuffClass CarrierL;
        BlockCarrBuffClass CarrierR;
        const auto Put = [](BlockCarrBuffClass& Carrier, const Samples& From) {
            Carrier.ReDimSize(static_cast<std::int32_t>(From.size()));
            for (std::size_t i = 0; i < From.size(); ++i)
                Carrier.WaveLR(static_cast<std::int32_t>(i + 1), From[i]);
        };
        Put(CarrierL, Left);
        if (!Right.empty())
            Put(CarrierR, Right);
        WaveStore->SwitchUndoOff = true;
        WaveStore->WaveDataInsert(1, Right.empty() ? 1 : 0, &CarrierL, &CarrierR, "", true);
        WaveStore->SwitchUndoOff = false;
        WaveChanged = false;
    }
    static void Stereo(std::int32_t Count) {
        Fill(TestSamples(1, Count, 1), TestSamples(1, Count, 2));
    }
    static void Mono(std::int32_t Count) { Fill(TestSamples(1, Count)); }
    static Samples Left() { return ChannelSamples(*WaveStore, 1); }
    static Samples Right() { return ChannelSamples(*WaveStore, 2); }
    static Samples Joined(std::initializer_list<Samples> Parts) {
        Samples All;
        for (const Samples& Part : Parts)
            All.insert(All.end(), Part.begin(), Part.end());
        return All;
    }
    static Samples Silence(std::size_t Count) { return Samples(Count); }
    static void OneChannel(std::int16_t Single) {
        SelBoth = false;
        SelSingle = Single;
    }
    /// Runs a command that is to be one step, called `Name`, and checks that undo takes it back to
    /// the byte. What the command made is in `MadeL` and `MadeR`.
    void OneStep(const std::function<void()>& Command, const std::string& Name) {
        const Samples BeforeL = Left();
        const Samples BeforeR = Right();
        const std::int32_t Length = WaveStore->WavWaveINos;
        Command();
        EXPECT_EQ(BrokenRule(*WaveStore), "");
        MadeL = Left();
        MadeR = Right();
        EXPECT_EQ(WaveStore->WavWaveINos, static_cast<std::int32_t>(MadeL.size()));
        EXPECT_TRUE(WaveStore->UndoMenu().Enabled);
        EXPECT_THAT(WaveStore->UndoMenu().Caption, ::testing::HasSubstr(Name));
        WaveStore->Undo();
        EXPECT_EQ(Left(), BeforeL);
        EXPECT_EQ(Right(), BeforeR);
        EXPECT_EQ(WaveStore->WavWaveINos, Length);
        EXPECT_FALSE(WaveStore->UndoMenu().Enabled) << "more than one step";
        EXPECT_EQ(BrokenRule(*WaveStore), "");
    }
    void ExpectUntouched(const std::function<void()>& Command) {
        const Samples BeforeL = Left();
        const Samples BeforeR = Right();
        WaveChanged = false;
        Command();
        EXPECT_EQ(Left(), BeforeL);
        EXPECT_EQ(Right(), BeforeR);
        EXPECT_FALSE(WaveStore->UndoMenu().Enabled);
        EXPECT_FALSE(WaveChanged);
        EXPECT_EQ(BrokenRule(*WaveStore), "");
    }

    ScriptedQuestions Questions;
    Samples MadeL;
    Samples MadeR;
};

} // namespace quoril::test
