// Every command that computes samples, on a disk that fills up at any place of its work.
#include "effects/ChannelMix.h"
#include "effects/EffectFixture.h"
#include "effects/ScriptedEcho.h"
#include "effects/ScriptedFrequency.h"
#include "effects/ScriptedMix.h"
#include "effects/ScriptedSilence.h"
#include "effects/ScriptedStretch.h"
#include "effects/TransformCommands.h"
#include "effects/VolumeCommands.h"
#include "storage/UndoListener.h"

#include <random>

namespace quoril::test {

namespace {

struct DiskRow {
    const char* Name;
    std::function<void()> Command;
    const char* Title; ///< what the message of a failure begins with
    int Failures;      ///< as many at least: the work has places to fail
};

class FullDiskTest : public EffectTest {
  protected:
    static Samples Noise(std::size_t Count, unsigned Seed) {
        std::mt19937 Random(Seed);
        Samples Made(Count);
        for (std::int16_t& Value : Made)
            Value = static_cast<std::int16_t>(Random());
        return Made;
    }
    /// Blocks of 1000 samples, and a selection that begins and ends inside a block.
    static void ManyBlocks() {
        Document(Noise(9000, 1), Noise(9000, 2), 16, 1000);
        Select(1501, 6500);
    }
    std::function<void()> Stretching(std::int32_t Index, const char* Percent, bool Move) {
        return [=, this] {
            Strch.Accept({Percent, Percent, false, Move});
            Stretch(Index);
        };
    }
    std::function<void()> Echoing(std::int32_t HiFi) {
        return [=, this] {
            Repeats.Left = EchoParamsRec{0.08F, 0.06F, 5, 80, 10, HiFi};
            Echo();
        };
    }
    std::vector<DiskRow> Rows() {
        const auto Move = [this](const char* Distance) {
            return [this, Distance] {
                Duration.Answer = {true, Distance};
                WaveMoveForwardBack();
            };
        };
        const auto Height = [this](const char* Percent) {
            return [this, Percent] {
                Messages.AnswerInput(Percent);
                WaveMoveUpDown();
            };
        };
        const auto WithTone = [this](void (*Command)()) {
            return [this, Command] {
                Frequency.Entries = {{"200", "1000", true}};
                Command();
            };
        };
        return {
            {"change", [] { AdjustVolume(16); }, "", 15},
            {"fade", [] { AdjustVolume(5); }, "", 15},
            {"silence", [] { AdjustVolume(21); }, "", 15},
            {"maximize", [] { OptimizeVolume(3); }, "", 15},
            {"reverse", WaveReverse, "Reverse Error|", 15},
            {"invert", WaveInvert, "Invert Error|", 15},
            {"up", Height("5"), "Move Up Error|", 15},
            {"down", Height("-5"), "Move Down Error|", 15},
            // These move blocks and compute nothing: no disk keeps them from it.
            {"forward", Move("1200"), "Move Forward Error|", 0},
            {"back", Move("-1200"), "Move Back Error|", 0},
            {"beyond the end", Move("7000"), "Move Forward Error|", 0},
            {"interchange", InterchangeChannels, "Interchange Left-Right Error|", 0},
            {"mix", ChannelMix, "Interchange Left-Right Error|", 15},
            {"stretch", Stretching(0, "130", false), "Stretch / Shrink Error|", 15},
            {"shrink", Stretching(0, "60", false), "Stretch / Shrink Error|", 7},
            {"speed that moves", Stretching(1, "70", true), "Change speed Error|", 15},
            {"echo", Echoing(100), "Echo Error|", 15},
            {"filtered echo", Echoing(50), "Echo Error|", 15},
            // Both channels share one tone or one noise.
            {"sine", WithTone(DrawSine), "Generate Sine Error|", 8},
            {"noise", DrawNoise, "Generate Noise Error|", 8},
            {"modulate", WithTone(Modulate), "Modulate Error|", 15},
            {"delete silence", DeleteSilence, "Delete Silence Error|", 15},
        };
    }

    ScriptedFrequency Frequency;
    ScriptedSilence Silence{{true, {}}};
    ScriptedMix Mix{{true, {MixSum, MixLeftLessRight}}}; // the most work
    ScriptedStretch Strch;
    ScriptedEcho Repeats;
};

TEST_F(FullDiskTest, WhereverItFillsUpTheDocumentStaysAsItWas) {
    for (const DiskRow& Row : Rows()) {
        ManyBlocks();
        const Samples OldLeft = Left();
        const Samples OldRight = Right();
        const int Failures = FailuresOnAFullDisk(Row.Command, Row.Title);
        ASSERT_FALSE(HasFailure()) << Row.Name;
        EXPECT_GE(Failures, Row.Failures) << Row.Name;
        // With room it is done, and is one step.
        WaveStore->Undo();
        EXPECT_TRUE(Left() == OldLeft && Right() == OldRight) << Row.Name;
        EXPECT_EQ(WaveStore->UndoCount(), 0) << Row.Name;
    }
}

TEST_F(FullDiskTest, WithoutUndoTheDocumentStaysAsItWasJustTheSame) {
    for (const DiskRow& Row : Rows()) {
        ManyBlocks();
        UndoOptionON = false;
        const int Failures = FailuresOnAFullDisk(Row.Command, Row.Title);
        ASSERT_FALSE(HasFailure()) << Row.Name;
        EXPECT_GE(Failures, Row.Failures) << Row.Name;
        EXPECT_EQ(WaveStore->UndoCount(), 0) << Row.Name;
        EXPECT_EQ(WaveStore->UndoMenu().Caption, "Undo [Off]");
        UndoOptionON = true;
    }
}

TEST_F(FullDiskTest, OneChannelAloneStaysAsItWasToo) {
    for (const DiskRow& Row : Rows()) {
        if (std::string(Row.Name) == "mix" || std::string(Row.Name) == "interchange" ||
            std::string(Row.Name) == "modulate")
            continue; // they work on both, or need the left one
        ManyBlocks();
        SelBoth = false;
        SelSingle = 2;
        EXPECT_GE(FailuresOnAFullDisk(Row.Command, Row.Title), std::min(Row.Failures, 8))
            << Row.Name;
        ASSERT_FALSE(HasFailure()) << Row.Name;
    }
}

TEST_F(FullDiskTest, WhatWasDoneBeforeCanStillBeUndoneAfterAFailure) {
    ManyBlocks();
    const Samples OldLeft = Left();
    WaveInvert();
    EXPECT_GE(FailuresOnAFullDisk(WaveReverse, "Reverse Error|"), 15);
    WaveStore->Undo();
    WaveStore->Undo();
    EXPECT_EQ(Left(), OldLeft);
    EXPECT_EQ(WaveStore->UndoCount(), 0);
}

} // namespace

} // namespace quoril::test
