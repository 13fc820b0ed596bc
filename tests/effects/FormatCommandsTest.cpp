// The commands of the Format menu that change the bits and the channels: samples, format, what the
// user is asked, undo.
#include "effects/FormatFixture.h"
#include "effects/TransformCommands.h"
#include "support/LargeFile.h"

#include <algorithm>

namespace quoril::test {

namespace {

class FormatCommandsTest : public FormatTest {};

constexpr std::array<WaveFormat, 4> Formats = {
    {{1, 8000, 8}, {2, 8000, 8}, {1, 44100, 16}, {2, 44100, 16}}};

// ---- ChangeBits

TEST_F(FormatCommandsTest, EachPairOfBitsHasItsKernel) {
    const auto Made = [](std::int32_t OldBits, std::int32_t NewBits, const Samples& In) {
        Samples Out(In.size(), 99);
        const RunChange Change = ChangeBits(OldBits, NewBits);
        if (!Change)
            return Samples{};
        Change(1, In, Out);
        return Out;
    };
    EXPECT_EQ(Made(8, 16, {127, -128, 4}), (Samples{32512, -32768, 1024}));
    EXPECT_EQ(Made(16, 8, {32767, -32768, 1000}), (Samples{127, -128, 4}));
    EXPECT_EQ(Made(16, 16, {5, -32768}), (Samples{5, -32768}));
    EXPECT_EQ(Made(8, 8, {5, -128}), (Samples{5, -128}));
    EXPECT_EQ(Made(16, 8, {}), Samples{});
    EXPECT_EQ(Made(24, 16, {1}), Samples{});
    EXPECT_EQ(Made(16, 4, {1}), Samples{});
    // No bits mean those of the program.
    CurrentFormat.Bits = 8;
    EXPECT_EQ(Made(16, 0, {1000}), Samples{4});
    CurrentFormat.Bits = 16;
    EXPECT_EQ(Made(8, 0, {4}), Samples{1024});
}

// ---- Bits

TEST_F(FormatCommandsTest, AThousandTo8BitsAndBackIs1024) {
    Begin({{1, 8000, 16}, {Samples{1000, -1000, 32767, -32768}, {}}});
    FormatBit(0);
    EXPECT_EQ(Left(), (Samples{4, -4, 127, -128}));
    FormatBit(1);
    EXPECT_EQ(Left(), (Samples{1024, -1024, 32512, -32768}));
    WaveStore->Undo();
    WaveStore->Undo();
    EXPECT_EQ(Left(), (Samples{1000, -1000, 32767, -32768}));
}

TEST_F(FormatCommandsTest, BitsChangeInEveryFormatAcrossBordersOfBlocks) {
    for (const WaveFormat& Format : Formats) {
        BeginNoise(Format, 12001, 3001);
        const bool Wide = Format.Bits == 16;
        ExpectChange([Wide] { FormatBit(Wide ? 0 : 1); }, Wide ? "8 bits" : "16 bits",
                     InBits(Now(), Wide ? 8 : 16), {BitsQuestion});
        ASSERT_FALSE(HasFailure()) << Format.Channel << " channels, " << Format.Bits << " bits";
    }
}

TEST_F(FormatCommandsTest, BitsChangeInAnOpenedFile) {
    for (const WaveFormat& Format : Formats) {
        Open(Format, 70001);
        const bool Wide = Format.Bits == 16;
        ExpectChange([Wide] { FormatBit(Wide ? 0 : 1); }, Wide ? "8 bits" : "16 bits",
                     InBits(Now(), Wide ? 8 : 16), {BitsQuestion});
    }
}

TEST_F(FormatCommandsTest, BitsChangeInADocumentLargerThanMemory) {
    MemoryBudget = 100000;
    for (const WaveFormat& Format : Formats) {
        BeginNoise(Format, 200000, 30000);
        const bool Wide = Format.Bits == 16;
        ExpectChange([Wide] { FormatBit(Wide ? 0 : 1); }, Wide ? "8 bits" : "16 bits",
                     InBits(Now(), Wide ? 8 : 16), {BitsQuestion});
    }
}

TEST_F(FormatCommandsTest, OnlyYesChangesTheBits) {
    BeginNoise({2, 8000, 16}, 10);
    for (const MsgBoxAnswer Answer : {MsgBoxAnswer::No, MsgBoxAnswer::Cancel}) {
        Messages.Answer(Answer);
        EXPECT_EQ(NoChange([] { FormatBit(0); }), std::vector<std::string>{BitsQuestion});
    }
    Messages.Answer(MsgBoxAnswer::Yes);
    FormatBit(0);
    ASSERT_EQ(Messages.Requests.size(), 1U);
    EXPECT_EQ(Messages.Requests[0].Buttons, MsgBoxButtons::YesNoCancel);
    EXPECT_EQ(WaveStore->WavFmtBits, 8);
}

TEST_F(FormatCommandsTest, AnEntryThatIsTickedAsksNothing) {
    BeginNoise({2, 8000, 16}, 10);
    EXPECT_TRUE(NoChange([] { FormatBit(1); }).empty());
    EXPECT_TRUE(NoChange(FormatChannelStereo).empty());
    EXPECT_TRUE(Menu.Shown.empty());
    Begin({{1, 8000, 8}, {Samples{1, 2, 3}, {}}});
    EXPECT_TRUE(NoChange([] { FormatBit(0); }).empty());
    EXPECT_TRUE(NoChange(FormatChannelMono).empty());
    EXPECT_EQ(Mono.Shown, 0);
    EXPECT_TRUE(Menu.Shown.empty());
}

TEST_F(FormatCommandsTest, BitsThatTheDocumentHasAlreadyOnlyBringTheMenuInLine) {
    BeginNoise({1, 8000, 8}, 10);
    CurrentFormat.Bits = 16; // as the menu shows it, but not the document
    EXPECT_EQ(NoChange([] { FormatBit(0); }), std::vector<std::string>{BitsQuestion});
    EXPECT_EQ(Menu.Shown.size(), 1U);
    // Channels need agree with neither.
    CurrentFormat = {2, 8000, 8};
    EXPECT_TRUE(NoChange(FormatChannelMono).empty());
    EXPECT_TRUE(NoChange(FormatChannelStereo).empty());
    BeginNoise({2, 8000, 8}, 10);
    CurrentFormat.Channel = 1;
    EXPECT_TRUE(NoChange(FormatChannelStereo).empty());
    EXPECT_TRUE(NoChange(FormatChannelMono).empty());
}

TEST_F(FormatCommandsTest, TheBarMovesEvery10000Samples) {
    for (const std::int32_t Channels : {1, 2}) {
        BeginNoise({Channels, 8000, 16}, 30000, 10000);
        Progress.Values.clear();
        FormatBit(0);
        EXPECT_EQ(Progress.Values, (std::vector<float>{0, 1 / 3.0F, 2 / 3.0F, 1, 1}));
    }
    BeginNoise({2, 8000, 16}, 20000, 10000);
    Progress.Values.clear();
    FormatChannelMono();
    EXPECT_EQ(Progress.Values, (std::vector<float>{0, 0.5F, 1, 1}));
}

// ---- Stereo

TEST_F(FormatCommandsTest, StereoCopiesTheLeftChannel) {
    for (const std::int32_t Bits : {8, 16}) {
        BeginNoise({1, 8000, Bits}, 12001, 3001);
        ExpectChange(FormatChannelStereo, "Stereo", InStereo(Now()), {StereoQuestion});
        Open({1, 8000, Bits}, 70001);
        ExpectChange(FormatChannelStereo, "Stereo", InStereo(Now()), {StereoQuestion});
    }
    WaveChanged = false;
    Messages.Answer(MsgBoxAnswer::No);
    EXPECT_EQ(NoChange(FormatChannelStereo), std::vector<std::string>{StereoQuestion});
}

TEST_F(FormatCommandsTest, TheTwoChannelsOfOneAreToldApartWhenOneChanges) {
    Begin({{1, 8000, 16}, {Samples{1, 2, 3}, {}}});
    FormatChannelStereo();
    Select(1, 3);
    SelBoth = false;
    SelSingle = 2;
    WaveInvert();
    EXPECT_EQ(Left(), (Samples{1, 2, 3}));
    EXPECT_EQ(Right(), (Samples{-1, -2, -3}));
    WaveStore->Undo();
    WaveStore->Undo();
    EXPECT_EQ(Left(), (Samples{1, 2, 3}));
    EXPECT_EQ(Right(), Samples{});
}

// ---- Mono

TEST_F(FormatCommandsTest, MonoComesOfTwoChannelsInThreeWays) {
    for (const std::int32_t Bits : {8, 16})
        for (const std::int32_t Way : {TrenchRight, TrenchLeft, MergeBoth}) {
            Mono.Answer = {true, Way};
            BeginNoise({2, 8000, Bits}, 12001, 3001);
            ExpectChange(FormatChannelMono, "Mono", InMono(Now(), Way), {});
            Open({2, 8000, Bits}, 70001);
            ExpectChange(FormatChannelMono, "Mono", InMono(Now(), Way), {});
            ASSERT_FALSE(HasFailure()) << Bits << " bits, way " << Way;
        }
    EXPECT_EQ(Mono.Shown, 12);
}

TEST_F(FormatCommandsTest, MonoComesOfADocumentLargerThanMemory) {
    MemoryBudget = 100000;
    for (const std::int32_t Way : {TrenchRight, TrenchLeft, MergeBoth}) {
        Mono.Answer = {true, Way};
        BeginNoise({2, 8000, 16}, 200000, 30000);
        ExpectChange(FormatChannelMono, "Mono", InMono(Now(), Way), {});
    }
}

TEST_F(FormatCommandsTest, LoudChannelsAreClippedWhereTheyAreMerged) {
    Begin(
        {{2, 8000, 16},
         {Samples{30000, 32767, -32768, 24600, 10, 1, 0}, {30000, 32767, -32768, 24600, 5, 0, 0}}});
    FormatChannelMono(); // 60000 x 0.666 would be 39960
    EXPECT_EQ(Left(), (Samples{32767, 32767, -32768, 32767, 10, 1, 0}));
    Begin({{2, 8000, 8}, {Samples{127, -128, 95, 60}, {127, -128, 95, 60}}});
    FormatChannelMono();
    EXPECT_EQ(Left(), (Samples{127, -128, 127, 80}));
}

TEST_F(FormatCommandsTest, CancelOfTheWaysChangesNothing) {
    BeginNoise({2, 8000, 16}, 10);
    for (const std::int32_t Way : {TrenchRight, TrenchLeft, MergeBoth}) {
        Mono.Answer = {false, Way};
        EXPECT_TRUE(NoChange(FormatChannelMono).empty());
    }
    EXPECT_EQ(Mono.Shown, 3);
    SetCompMonoDialog(nullptr);
    EXPECT_TRUE(NoChange(FormatChannelMono).empty());
}

TEST_F(FormatCommandsTest, AChannelThatEndsEarlyLeavesNothingOfTheOther) {
    const auto Uneven = [this](std::int32_t Short) {
        BeginNoise({2, 8000, 16}, 40);
        WaveStore->WaveDataDelete(11, Short, 30, "Cut", false);
        ASSERT_NE(WaveStore->WaveNosL(), WaveStore->WaveNosR());
    };
    for (const std::int32_t Way : {TrenchRight, TrenchLeft, MergeBoth}) {
        Mono.Answer = {true, Way};
        for (const std::int32_t Short : {1, 2}) {
            Uneven(Short);
            PlainSound Expected = Now();
            if (Way == MergeBoth)
                for (Samples& Each : Expected.Channels)
                    Each.resize(40);
            FormatChannelMono();
            Expected = InMono(Expected, Way);
            EXPECT_EQ(Left(), Expected.Channels[0]) << Way << " " << Short;
            EXPECT_EQ(Right(), Samples{});
            EXPECT_EQ(WaveStore->WavWaveINos, std::ssize(Expected.Channels[0]));
            EXPECT_EQ(BrokenRule(*WaveStore), "");
        }
    }
}

// ---- All of them

TEST_F(FormatCommandsTest, AnEmptyDocumentOnlyTakesTheFormat) {
    for (const WaveFormat& Format : Formats) {
        Begin({Format, {}});
        const bool Wide = Format.Bits == 16;
        ExpectChange([Wide] { FormatBit(Wide ? 0 : 1); }, Wide ? "8 bits" : "16 bits",
                     InBits(Now(), Wide ? 8 : 16), {BitsQuestion});
        if (Format.Channel == 1)
            ExpectChange(FormatChannelStereo, "Stereo", InStereo(Now()), {StereoQuestion});
        for (const std::int32_t Way : {TrenchRight, TrenchLeft, MergeBoth}) {
            Mono.Answer = {true, Way};
            if (Format.Channel == 2)
                ExpectChange(FormatChannelMono, "Mono", InMono(Now(), Way), {});
        }
    }
}

TEST_F(FormatCommandsTest, OneSampleIsChangedAsAnyOther) {
    Begin({{2, 8000, 16}, {Samples{1000}, {300}}});
    Mono.Answer = {true, TrenchLeft};
    ExpectChange(FormatChannelMono, "Mono", {{1, 8000, 16}, {Samples{300}, {}}}, {});
    Mono.Answer = {true, MergeBoth};
    ExpectChange(FormatChannelMono, "Mono", {{1, 8000, 16}, {Samples{866}, {}}}, {});
    ExpectChange([] { FormatBit(0); }, "8 bits", {{2, 8000, 8}, {Samples{4}, {1}}}, {BitsQuestion});
}

TEST_F(FormatCommandsTest, TheWholeSoundChangesWhateverIsSelected) {
    BeginNoise({2, 8000, 16}, 100);
    Select(11, 20);
    SelBoth = false;
    SelSingle = 2;
    ViewFrom = 5;
    ViewTotal = 50;
    ExpectChange([] { FormatBit(0); }, "8 bits", InBits(Now(), 8), {BitsQuestion});
    ExpectChange(FormatChannelMono, "Mono", InMono(Now(), MergeBoth), {});
    FormatChannelMono();
    EXPECT_EQ(SelStart, 11);
    EXPECT_EQ(SelEnd, 20);
    EXPECT_EQ(ViewFrom, 5);
    EXPECT_EQ(ViewTotal, 50);
    // Undo brings what stood before the command.
    Select(0, 0);
    ViewFrom = 1;
    WaveStore->Undo();
    EXPECT_EQ(SelStart, 11);
    EXPECT_EQ(SelEnd, 20);
    EXPECT_EQ(ViewFrom, 5);
}

TEST_F(FormatCommandsTest, TheDiskIsAskedBehindTheQuestion) {
    using Bytes = std::vector<std::int64_t>;
    BeginNoise({2, 8000, 16}, 1000);
    EXPECT_EQ(AskedOfTheDisk([] { FormatBit(0); }, {BitsQuestion}), Bytes{4000});
    BeginNoise({1, 8000, 16}, 1000);
    EXPECT_EQ(AskedOfTheDisk([] { FormatBit(0); }, {BitsQuestion}), Bytes{2000});
    EXPECT_EQ(AskedOfTheDisk(FormatChannelStereo, {StereoQuestion}), Bytes{2000});
    // Also where nothing is left to do.
    CurrentFormat.Bits = 8;
    EXPECT_EQ(AskedOfTheDisk([] { FormatBit(1); }, {BitsQuestion}), Bytes{2000});
    // Mono needs less than there was.
    BeginNoise({2, 8000, 16}, 1000);
    TmpDir0 = "/nowhere";
    for (const std::int32_t Way : {TrenchRight, TrenchLeft, MergeBoth}) {
        Mono.Answer = {true, Way};
        ExpectChange(FormatChannelMono, "Mono", InMono(Now(), Way), {});
    }
    EXPECT_EQ(Disk.Needed, Bytes{2000}); // of the last question above
}

TEST_F(FormatCommandsTest, AFailureInTheMiddleLeavesSamplesAndFormat) {
    BeginNoise({2, 8000, 16}, 100000, 30000);
    for (const float Where : {0.1F, 0.5F, 1.0F}) {
        Progress.FailAt = Where;
        Progress.BarColor = 0;
        EXPECT_EQ(NoChange([] { FormatBit(0); }),
                  (std::vector<std::string>{BitsQuestion, "Disk full"}));
        EXPECT_EQ(NoChange(FormatChannelMono), std::vector<std::string>{"Disk full"});
    }
    EXPECT_TRUE(Menu.Shown.empty());
}

TEST_F(FormatCommandsTest, AFullDiskLeavesSamplesAndFormat) {
    for (const bool WithUndo : {true, false}) {
        BeginNoise({2, 8000, 16}, 9000, 1000);
        UndoOptionON = WithUndo;
        EXPECT_GE(FailuresThatKeepTheFormat([] { FormatBit(0); }), 15);
        BeginNoise({2, 8000, 16}, 9000, 1000);
        EXPECT_GE(FailuresThatKeepTheFormat(FormatChannelMono), 7);
        BeginNoise({1, 8000, 8}, 9000, 1000);
        EXPECT_GE(FailuresThatKeepTheFormat([] { FormatBit(1); }), 7);
        // These compute nothing, so no disk keeps them from it.
        BeginNoise({1, 8000, 8}, 9000, 1000);
        EXPECT_EQ(FailuresThatKeepTheFormat(FormatChannelStereo), 0);
        for (const std::int32_t Way : {TrenchRight, TrenchLeft}) {
            Mono.Answer = {true, Way};
            BeginNoise({2, 8000, 16}, 9000, 1000);
            EXPECT_EQ(FailuresThatKeepTheFormat(FormatChannelMono), 0);
        }
        Mono.Answer = {true, MergeBoth};
    }
}

TEST_F(FormatCommandsTest, WithoutUndoTheFormatChangesAndLeavesNoStep) {
    BeginNoise({2, 8000, 16}, 9000, 1000);
    UndoOptionON = false;
    PlainSound Expected = InMono(InBits(Now(), 8), MergeBoth);
    FormatBit(0);
    FormatChannelMono();
    EXPECT_TRUE(Now() == Expected);
    EXPECT_EQ(CurrentFormat, Expected.Format);
    Expected = InStereo(Expected);
    FormatChannelStereo();
    EXPECT_TRUE(Now() == Expected);
    EXPECT_EQ(WaveStore->UndoCount(), 0);
    EXPECT_EQ(BrokenRule(*WaveStore), "");
}

TEST_F(FormatCommandsTest, AChainOfChangesIsUndoneStepByStep) {
    BeginNoise({2, 8000, 16}, 5000, 700);
    std::vector<PlainSound> Past;
    const auto Step = [&](const std::function<void()>& Command, const PlainSound& Expected) {
        Past.push_back(Now());
        Command();
        EXPECT_TRUE(Now() == Expected) << Past.size();
    };
    Step([] { FormatBit(0); }, InBits(Now(), 8));
    Step(FormatChannelMono, InMono(Now(), MergeBoth));
    Step(FormatChannelStereo, InStereo(Now()));
    Step([] { FormatBit(1); }, InBits(Now(), 16));
    Mono.Answer = {true, TrenchLeft};
    Step(FormatChannelMono, InMono(Now(), TrenchLeft));
    Step(FormatChannelStereo, InStereo(Now()));
    Mono.Answer = {true, TrenchRight};
    Step(FormatChannelMono, InMono(Now(), TrenchRight));
    for (; !Past.empty(); Past.pop_back()) {
        WaveStore->Undo();
        EXPECT_TRUE(Now() == Past.back()) << Past.size();
        EXPECT_EQ(CurrentFormat, Past.back().Format);
        EXPECT_EQ(BrokenRule(*WaveStore), "");
    }
    EXPECT_FALSE(WaveStore->UndoMenu().Enabled);
}

// ---- Long files

class LongFormatTest : public FormatTest {
  protected:
    LongFormatTest() {
        MakeLongWav(Session.Path("long.wav"), Frames);
        Reopen();
    }
    void Reopen() {
        OpenAsDocument(Session.Path("long.wav"));
        Established({2, 44100, 16});
    }
    /// Bytes that a command reads, and those that it writes.
    static std::pair<std::int64_t, std::int64_t> Traffic(const std::function<void()>& Command) {
        const std::int64_t Read = BytesReadSoFar();
        const std::int64_t Written = BytesWrittenSoFar();
        Command();
        return {BytesReadSoFar() - Read, BytesWrittenSoFar() - Written};
    }

    /// The commands that compute samples.
    static constexpr std::array<void (*)(), 2> Computing = {[] { FormatBit(0); },
                                                            FormatChannelMono};
    static constexpr std::int32_t Frames = 20000000;
    static constexpr std::int64_t FileBytes = std::int64_t{Frames} * 4;
    static constexpr std::int64_t NoBytes = 4096; // what asking costs
};

TEST_F(LongFormatTest, TrenchingAndItsUndoTouchNoSample) {
    for (const std::int32_t Way : {TrenchRight, TrenchLeft}) {
        Mono.Answer = {true, Way};
        for (const auto& Each : {std::function<void()>(FormatChannelMono),
                                 std::function<void()>([] { WaveStore->Undo(); })}) {
            const auto [Read, Written] = Traffic(Each);
            EXPECT_LT(Read, NoBytes) << Way;
            EXPECT_LT(Written, NoBytes) << Way;
            EXPECT_EQ(MemoryUsed, 0) << Way;
        }
        EXPECT_EQ(FormatNow(), (WaveFormat{2, 44100, 16}));
    }
    EXPECT_TRUE(Messages.Texts().empty());
}

TEST_F(LongFormatTest, StereoAndItsUndoTouchNoSample) {
    Mono.Answer = {true, TrenchRight};
    FormatChannelMono();
    const auto [Read, Written] = Traffic(FormatChannelStereo);
    EXPECT_EQ(FormatNow(), (WaveFormat{2, 44100, 16}));
    EXPECT_LT(Read, NoBytes);
    EXPECT_LT(Written, NoBytes);
    EXPECT_EQ(MemoryUsed, 0);
    const auto [ReadBack, WrittenBack] = Traffic([] { WaveStore->Undo(); });
    EXPECT_LT(ReadBack, NoBytes);
    EXPECT_LT(WrittenBack, NoBytes);
}

TEST_F(LongFormatTest, BitsAndMergeReadTheFileOnceAndTheirUndoNothing) {
    MemoryBudget = 100000000; // the results have 80 and 40 MB
    for (void (*const Each)() : Computing) {
        Reopen();
        const auto [Read, Written] = Traffic(Each);
        EXPECT_NE(FormatNow(), (WaveFormat{2, 44100, 16}));
        EXPECT_LE(Read, FileBytes * 102 / 100);
        EXPECT_LT(Written, NoBytes);
        EXPECT_LE(MemoryUsed, MemoryBudget);
        const auto [ReadBack, WrittenBack] = Traffic([] { WaveStore->Undo(); });
        EXPECT_LT(ReadBack, NoBytes);
        EXPECT_LT(WrittenBack, NoBytes);
    }
}

TEST_F(LongFormatTest, BeyondTheBudgetTheResultIsWrittenOnce) {
    for (void (*const Each)() : Computing) {
        Reopen();
        const auto [Read, Written] = Traffic(Each);
        EXPECT_NE(FormatNow(), (WaveFormat{2, 44100, 16}));
        EXPECT_LE(Read, FileBytes * 102 / 100);
        EXPECT_LE(Written, FileBytes);
        EXPECT_LE(MemoryUsed, MemoryBudget);
    }
}

TEST_F(LongFormatTest, TheBarMovesAllTheTime) {
    for (void (*const Each)() : Computing) {
        Reopen();
        Progress.Values.clear();
        Each();
        ASSERT_FALSE(Progress.Values.empty());
        EXPECT_FLOAT_EQ(Progress.Values.back(), 1);
        float Longest = Progress.Values.front();
        for (std::size_t i = 1; i < Progress.Values.size(); ++i)
            Longest = std::max(Longest, Progress.Values[i] - Progress.Values[i - 1]);
        EXPECT_LE(Longest, 1.01 * 40000 / Frames); // a run may hold more than one step
    }
}

} // namespace

} // namespace quoril::test
