// What the writers of Sun/NeXT files put into a file, what they ask and what they say.
#include "audiofile/OpenSaveClass.h"
#include "audiofile/ULawTable.h"
#include "base/DocumentState.h"
#include "settings/STD1.h"
#include "storage/WoroFileBlockMod.h"
#include "support/FullDisk.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include "AuMaker.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <functional>

namespace quoril {
namespace {

using test::AuFile;
using test::Bytes;
using test::Samples;
using test::ScriptedMessages;
using test::TestSession;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace fs = std::filesystem;

const std::string QuestionTitle = "Choose .au file compress option|";
const std::string WholeQuestion = QuestionTitle +
                                  "Do you wish compress the 16-bit data to 8-bit uLaw?\n"
                                  "Click 'Yes' - save space & loose quality\n"
                                  "Click 'No' - retain quality";
const std::string PartQuestion = QuestionTitle +
                                 "Do you wish compress the 16-bit data to 8-bit uLaw?\n"
                                 "Click 'Yes' - save space loose quality\n"
                                 "Click 'No' - retain quality";
const std::string Unchanged = "\n\nThe file that was there before is unchanged.";
const std::string ErrorTitle = "Sound Clip (.au) file write error|";

class AuWriter : public ::testing::Test {
  protected:
    bool Write(const std::string& Name = "out.au") {
        const bool Written = OpenSave.FileWriteAuSnd(Store, Session.Path(Name));
        EXPECT_TRUE(test::CountsHold());
        return Written;
    }
    bool WritePart(std::int32_t From, std::int32_t To, std::int32_t WorkChn,
                   const std::string& Name = "out.au") {
        return OpenSave.FileWriteAuSndPart(Store, From, To, WorkChn, Session.Path(Name));
    }
    [[nodiscard]] Bytes Out(const std::string& Name = "out.au") const {
        return TestSession::ReadFile(Session.Path(Name));
    }
    bool Load(const std::string& Name = "out.au") {
        bool Result = false;
        OpenSave.FileLoadAuSnd(Store, Session.Path(Name), Result);
        return Result;
    }
    void Fill(std::int32_t Bits, std::int32_t Channels, std::int32_t Frames) {
        Store.StorageReset();
        All = test::Noise(Frames * Channels, Bits, 99);
        if (Channels == 2)
            test::FillStore(Store, {2, 22050, Bits}, test::EveryOther(All, 0),
                            test::EveryOther(All, 1));
        else
            test::FillStore(Store, {1, 22050, Bits}, All);
    }
    /// The file of interleaved samples in a mode.
    [[nodiscard]] static Bytes FileOf(const Samples& Interleaved, std::int32_t Mode,
                                      std::int32_t Channels) {
        AuFile File{.Encoding = Mode, .Rate = 22050, .Channels = Channels};
        if (Mode == 3)
            File.Data = test::SwappedBytes(Interleaved);
        else if (Mode == 2)
            File.Data = test::AudioBytes(Interleaved, 8);
        else
            for (const std::int16_t Sample : Interleaved)
                File.Data.push_back(ULawCode(ULawEncodeTable(), Sample));
        return File.Whole();
    }

    TestSession Session;
    ScriptedMessages Messages;
    OpenSaveClass OpenSave;
    FileMemoClass Store;
    Samples All;
};

TEST_F(AuWriter, TheFileIsByteForByteWhatItMustBe) {
    test::FillStore(Store, {2, 44100, 16}, {1, -2}, {0x1234, -32768});
    ASSERT_TRUE(Write());
    EXPECT_EQ(Out(),
              (Bytes{'.', 's', 'n',  'd',  0, 0, 0, 24, 0, 0, 0,    8,    0,    0,    0,    3,
                     0,   0,   0xAC, 0x44, 0, 0, 0, 2,  0, 1, 0x12, 0x34, 0xFF, 0xFE, 0x80, 0}));
    Store.StorageReset();
    test::FillStore(Store, {1, 200000, 8}, {-128, 127, 0});
    ASSERT_TRUE(Write());
    EXPECT_EQ(Out(), (Bytes{'.', 's', 'n', 'd', 0,    0,    0, 24, 0, 0, 0, 3,   0,  0,
                            0,   2,   0,   3,   0x0D, 0x40, 0, 0,  0, 1, 0, 255, 128}));
    Store.StorageReset();
    AuWriteMode = 1;
    test::FillStore(Store, {1, 8000, 16}, {0, 4, -4, 32767, -32768, -1});
    ASSERT_TRUE(Write());
    EXPECT_EQ(Out(), (Bytes{'.', 's', 'n', 'd',  0,    0, 0, 24, 0, 0,   0,   6,   0,   0, 0,
                            1,   0,   0,   0x1F, 0x40, 0, 0, 0,  1, 255, 254, 126, 128, 0, 127}))
        << "of two steps equally near the lower code; -32768 has a code";
}

TEST_F(AuWriter, EveryFormAndModeIsWrittenWhateverItsLength) {
    for (const std::int32_t Mode : {1, 2, 3})
        for (const std::int32_t Channels : {1, 2})
            for (const std::int32_t Frames : {1, 2, 65535, 65536, 65537, 262145, 1048577}) {
                Fill(Mode == 2 ? 8 : 16, Channels, Frames);
                AuWriteMode = Mode;
                ASSERT_TRUE(Write());
                ASSERT_TRUE(Out() == FileOf(All, Mode, Channels)) << Mode << " " << Frames;
            }
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(AuWriter, SmallChunksGiveTheSameFile) {
    OpenSave.FileBlockLength = 12;
    for (const std::int32_t Mode : {1, 2, 3})
        for (std::int32_t Frames = 1; Frames < 60; ++Frames) {
            Fill(Mode == 2 ? 8 : 16, 2, Frames);
            AuWriteMode = Mode;
            ASSERT_TRUE(Write());
            ASSERT_TRUE(Out() == FileOf(All, Mode, 2)) << Mode << " " << Frames;
        }
}

TEST_F(AuWriter, APartTakesTheChannelThatIsWorkedOn) {
    for (const std::int32_t Channels : {1, 2}) {
        Fill(16, Channels, 1000);
        AuWriteMode = 3;
        for (const std::int32_t WorkChn : {0, 1, 2}) {
            ASSERT_TRUE(WritePart(11, 110, WorkChn));
            const Samples Whole(All.begin() + 10 * Channels, All.begin() + 110 * Channels);
            if (Channels == 2 && WorkChn != 0)
                EXPECT_EQ(Out(), FileOf(test::EveryOther(Whole, WorkChn == 2 ? 1 : 0), 3, 1));
            else
                EXPECT_EQ(Out(), FileOf(Whole, 3, Channels));
        }
    }
}

// ---- The mode

TEST_F(AuWriter, SixteenBitsAskWithNoAsTheDefault) {
    Fill(16, 1, 100);
    ASSERT_TRUE(Write());
    ASSERT_EQ(Messages.Requests.size(), 1U);
    EXPECT_EQ(Messages.Requests[0].Buttons, MsgBoxButtons::YesNo);
    EXPECT_EQ(Messages.Requests[0].Default, MsgBoxAnswer::No);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(WholeQuestion));
    EXPECT_EQ(AuWriteMode, 3);
    EXPECT_EQ(Out(), FileOf(All, 3, 1));
}

TEST_F(AuWriter, YesIsRememberedUntilALoadOrAWavFile) {
    Fill(16, 2, 100);
    Messages.Answer(MsgBoxAnswer::Yes);
    ASSERT_TRUE(Write());
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(WholeQuestion));
    EXPECT_EQ(AuWriteMode, 1);
    EXPECT_EQ(Out(), FileOf(All, 1, 2));
    ASSERT_TRUE(Write("again.au"));
    ASSERT_TRUE(WritePart(1, 10, 0, "part.au"));
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    EXPECT_EQ(Out("again.au"), FileOf(All, 1, 2));

    ASSERT_TRUE(OpenSave.FileWriteWave(Store, Session.Path("a.wav")));
    EXPECT_EQ(AuWriteMode, 0);
    AuWriteMode = 1;
    ASSERT_TRUE(OpenSave.FileWriteWavePart(Store, 1, 10, 0, Session.Path("b.wav")));
    EXPECT_EQ(AuWriteMode, 0);
    AuWriteMode = 1;
    ASSERT_TRUE(Load());
    EXPECT_EQ(AuWriteMode, 0);
    ASSERT_TRUE(Write());
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(WholeQuestion));
}

TEST_F(AuWriter, APartAsksInItsOwnWords) {
    Fill(16, 2, 100);
    Messages.Answer(MsgBoxAnswer::Yes);
    ASSERT_TRUE(WritePart(1, 50, 0));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(PartQuestion));
    EXPECT_EQ(AuWriteMode, 1);
}

TEST_F(AuWriter, EightBitsAreNotAskedAbout) {
    Fill(8, 1, 100);
    ASSERT_TRUE(Write());
    EXPECT_THAT(Messages.Texts(), IsEmpty());
    EXPECT_EQ(AuWriteMode, 2);
    EXPECT_EQ(Out(), FileOf(All, 2, 1));
}

TEST_F(AuWriter, AModeOfTheOtherDepthIsNoAnswer) {
    Fill(8, 1, 100);
    for (const std::int32_t Mode : {1, 3}) {
        AuWriteMode = Mode;
        ASSERT_TRUE(Write());
        EXPECT_EQ(Out(), FileOf(All, 2, 1));
    }
    EXPECT_THAT(Messages.Texts(), IsEmpty());
    Fill(16, 1, 100);
    AuWriteMode = 2;
    ASSERT_TRUE(Write());
    EXPECT_THAT(Messages.Texts(), ElementsAre(WholeQuestion));
    EXPECT_EQ(Out(), FileOf(All, 3, 1));
}

TEST_F(AuWriter, AFileOfULawGrowsWhenItIsSavedWithoutIt) {
    const Bytes Codes = test::AudioBytes(test::Noise(1000, 8, 3), 8);
    Session.WriteFile("out.au", AuFile{.Encoding = 1, .Rate = 8000, .Data = Codes}.Whole());
    ASSERT_TRUE(Load());
    EXPECT_EQ(Store.WavFmtBits, 16);
    ASSERT_TRUE(Write());
    EXPECT_EQ(Out().size(), 24U + 2000U);
    ASSERT_TRUE(Load());
    Messages.Answer(MsgBoxAnswer::Yes);
    ASSERT_TRUE(Write());
    EXPECT_EQ(Out().size(), 24U + 1000U);
}

TEST_F(AuWriter, AFileOf8BitsComesBackAsItWas) {
    const Bytes File =
        AuFile{.Encoding = 2, .Channels = 2, .Data = test::AudioBytes(test::Noise(50, 8, 1), 8)}
            .Whole();
    Session.WriteFile("out.au", File);
    ASSERT_TRUE(Load());
    ASSERT_TRUE(Write("b.au"));
    EXPECT_EQ(Out("b.au"), File);
}

// ---- What is refused, and what fails

TEST_F(AuWriter, TheChecksComeInTheirOrder) {
    const auto Part = [this](std::int32_t From, std::int32_t To, const std::string& Name) {
        EXPECT_FALSE(OpenSave.FileWriteAuSndPart(Store, From, To, 0, Name));
        return Messages.TakeTexts();
    };
    EXPECT_THAT(Part(5, 1, ""), ElementsAre("Writing wave error|Zero size wave found"));
    Fill(16, 1, 100);
    for (const auto& [From, To] : {std::pair(0, 10), std::pair(1, 101), std::pair(20, 19)})
        EXPECT_THAT(Part(From, To, ""), ElementsAre("Invalid selection to save selected"));
    Store.WavFmtBits = 24;
    EXPECT_THAT(Part(1, 10, ""), ElementsAre("No file name given to write"));
    EXPECT_THAT(Part(1, 10, Session.Path("x.au")),
                ElementsAre("Format not Known to write wave file"));
    EXPECT_FALSE(Write("x.au"));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Format not Known to write wave file"));
    EXPECT_FALSE(fs::exists(Session.Path("x.au")));
}

TEST_F(AuWriter, WhatFailsLeavesTheOldFileAsItWas) {
    const Bytes Before = Bytes(1000, 7);
    Session.WriteFile("out.au", Before);
    Fill(8, 1, 300000);
    {
        BlockCarrBuffClass Loud;
        Loud.ReDimSize(1);
        Loud.WaveLR(1, 128);
        Store.WaveDataInsert(200000, 1, &Loud, nullptr, "Paste", true);
    }
    EXPECT_FALSE(Write());
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(ErrorTitle + "Overflow" + Unchanged));
    EXPECT_EQ(Out(), Before);
    Store.Undo();
    {
        const test::FullDisk Disk;
        Disk.Fill();
        EXPECT_FALSE(Write());
    }
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre(ErrorTitle + "File too large\n" + Session.Path("out.au") + Unchanged));
    EXPECT_EQ(Out(), Before);
    fs::permissions(Session.Path("out.au"), fs::perms::owner_read);
    EXPECT_FALSE(Write());
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre(ErrorTitle + "Permission denied\n" + Session.Path("out.au")));
    EXPECT_EQ(Out(), Before);
    fs::permissions(Session.Path("out.au"), fs::perms::owner_all);
    EXPECT_TRUE(Write());
    EXPECT_EQ(Out(), FileOf(All, 2, 1));
}

TEST_F(AuWriter, TheDocumentsOwnWavFileCanBecomeAnAuFileAndUndoStillWorks) {
    const Samples Sound = test::Noise(200000, 16, 4);
    const std::string Path =
        Session.WriteFile("own.au", test::WavFile{.Data = test::AudioBytes(Sound, 16)}.Whole());
    bool Result = false;
    OpenSave.FileLoadWave(Store, Path, Result);
    ASSERT_TRUE(Result);
    Store.WaveDataDelete(1001, 1, 5000, "Delete", true);
    ASSERT_TRUE(Write("own.au"));
    EXPECT_EQ(Out("own.au").size(), 24U + 2U * 195000U);
    Store.Undo();
    EXPECT_TRUE(test::LeftOf(Store) == Sound);
}

TEST_F(AuWriter, MoreThanAHeaderCanTellIsAnOverflow) {
    Store.WavFmtChannel = 1;
    Store.WavFmtFreq = 44100;
    Store.WavFmtBits = 16;
    BlockCarrBuffClass Silence;
    Silence.ReDimSize(1100000000);
    Store.SwitchUndoOff = true;
    Store.WaveDataInsert(1, 1, &Silence, nullptr, {}, true);
    Store.SwitchUndoOff = false;
    Session.WriteFile("out.au", {1, 2, 3});
    EXPECT_FALSE(Write());
    EXPECT_THAT(Messages.Texts(), ElementsAre(WholeQuestion, ErrorTitle + "Overflow" + Unchanged));
    EXPECT_EQ(Out(), (Bytes{1, 2, 3}));
}

} // namespace
} // namespace quoril
