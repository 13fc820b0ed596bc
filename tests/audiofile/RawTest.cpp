// Files without a header: what the user says of them, what they become, and what is written.
#include "audiofile/OpenSaveClass.h"
#include "base/DocumentState.h"
#include "settings/STD1.h"
#include "storage/WoroFileBlockMod.h"
#include "support/FullDisk.h"
#include "support/OrderLog.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include "ScriptedDialogs.h"
#include "WavMaker.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

namespace quoril {
namespace {

using test::Bytes;
using test::Samples;
using test::ScriptedMessages;
using test::TestSession;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace fs = std::filesystem;

const std::string Failed = "Raw file loading failed";

// ---- What the user says

TEST(RawChoice, KnowsItsFormat) {
    RawChoice Choice{0, 0, 0, 0, 0};
    EXPECT_EQ(Choice.Channels(), 1);
    EXPECT_EQ(Choice.Bits(), 8);
    EXPECT_EQ(Choice.Freq(), 11025);
    Choice = {1, 1, 1, 0, 0};
    EXPECT_EQ(Choice.Channels(), 2);
    EXPECT_EQ(Choice.Bits(), 16);
    EXPECT_EQ(Choice.Freq(), 22050);
    Choice.FmtFreqOpn = 2;
    EXPECT_EQ(Choice.Freq(), 44100);
    Choice.FmtFreqOpn = 3;
    EXPECT_EQ(Choice.Freq(), 44100) << "no other rate yet";
    Choice.OtherFreq = 8000;
    EXPECT_EQ(Choice.Freq(), 8000);
}

TEST(RawChoice, AnotherRateIsAskedForInItsRange) {
    const struct {
        const char* Typed;
        std::int32_t OtherFreq;
        std::int32_t Option;
        bool Refused;
        const char* Caption;
    } Cases[] = {
        {"1000", 1000, 3, false, "1,000 H&z"},   {"200000", 200000, 3, false, "200,000 H&z"},
        {" 8000 ", 8000, 3, false, "8,000 H&z"}, {"96001.4", 96001, 3, false, "96,001 H&z"},
        {"11025", 11025, 0, false, "Other H&z"}, {"22050", 22050, 1, false, "Other H&z"},
        {"44100", 44100, 2, false, "Other H&z"}, {"", 0, 1, false, "Other H&z"},
        {"  ", 0, 1, false, "Other H&z"},        {"999", 0, 1, true, "Other H&z"},
        {"999.9", 0, 1, true, "Other H&z"},      {"200001", 0, 1, true, "Other H&z"},
        {"200000.4", 0, 1, true, "Other H&z"},   {"-8000", 0, 1, true, "Other H&z"},
        {"1e30", 0, 1, true, "Other H&z"},       {"abc", 0, 1, true, "Other H&z"}};
    for (const auto& Case : Cases) {
        ScriptedMessages Messages;
        Messages.AnswerInput(Case.Typed);
        RawChoice Choice{0, 1, 1, 0, 0};
        Choice.AskOtherFreq();
        EXPECT_EQ(Messages.LastProposed(), "44100") << "0 counts as that";
        EXPECT_EQ(Choice.OtherFreq, Case.OtherFreq) << Case.Typed;
        EXPECT_EQ(Choice.FmtFreqOpn, Case.Option) << Case.Typed;
        EXPECT_EQ(Choice.OtherCaption(), Case.Caption);
        std::vector<std::string> Texts = {
            "Sampling rate|Enter the other frequency (Hz) for sampling rate"};
        if (Case.Refused)
            Texts.emplace_back("Invalid entry\nPlease enter in this range: 1000 ~ 200000 Hz");
        EXPECT_EQ(Messages.Texts(), Texts) << Case.Typed;
    }
}

TEST(RawChoice, ACancelledInputBoxChangesNothingAndBeginsWithTheLastRate) {
    ScriptedMessages Messages;
    RawChoice Choice{0, 1, 0, 12345, 0};
    Choice.AskOtherFreq();
    EXPECT_EQ(Messages.LastProposed(), "12345");
    EXPECT_EQ(Choice.OtherFreq, 12345);
    EXPECT_EQ(Choice.FmtFreqOpn, 0);
}

TEST(RawFormat, BeginsWithTheCurrentFormatAndThenWithTheLastAnswer) {
    const TestSession Session;
    test::ScriptedRaw Dialog;
    RawChoice Choice;
    CurrentFormat = {2, 48000, 8};
    Dialog.Ok = false;
    EXPECT_FALSE(AskRawFormat(Choice));
    EXPECT_EQ(Dialog.Shown[0].Channels(), 2);
    EXPECT_EQ(Dialog.Shown[0].Bits(), 8);
    EXPECT_EQ(Dialog.Shown[0].Freq(), 48000);
    EXPECT_EQ(Dialog.Shown[0].DataOffsetCmb, 0);
    CurrentFormat = {1, 22050, 16};
    Dialog.Change = [](RawChoice& Given) { Given = {1, 0, 3, 9000, 2}; };
    EXPECT_FALSE(AskRawFormat(Choice));
    EXPECT_EQ(Dialog.Shown[1].Freq(), 22050) << "what was cancelled is no answer";
    Dialog.Ok = true;
    EXPECT_TRUE(AskRawFormat(Choice));
    EXPECT_EQ(Dialog.Shown[2].OtherFreq, 9000) << "but the other rate stays";
    EXPECT_EQ(Dialog.Shown[2].Freq(), 22050);
    Dialog.Change = nullptr;
    EXPECT_TRUE(AskRawFormat(Choice));
    EXPECT_EQ(Dialog.Shown[3].Channels(), 2);
    EXPECT_EQ(Dialog.Shown[3].Bits(), 8);
    EXPECT_EQ(Dialog.Shown[3].Freq(), 9000);
    EXPECT_EQ(Dialog.Shown[3].DataOffsetCmb, 2);
}

// ---- Reading

class RawReader : public ::testing::Test {
  protected:
    bool Load(const std::string& Path) {
        bool Result = false;
        OpenSave.FileLoadRaw(Store, Path, Result);
        EXPECT_FALSE(Store.SwitchUndoOff);
        EXPECT_TRUE(test::CountsHold());
        return Result;
    }
    bool LoadBytes(const Bytes& What) { return Load(Session.WriteFile("a.raw", What)); }

    TestSession Session;
    ScriptedMessages Messages;
    test::ScriptedRaw Dialog;
    OpenSaveClass OpenSave;
    FileMemoClass Store;
};

TEST_F(RawReader, EveryFormAndOffsetHasItsSamples) {
    for (const test::SampleForm& Form : test::SampleForms)
        for (const std::int32_t Offset : {0, 1, 2, 3})
            for (const std::int32_t Frames : {8, 1000, 65537}) {
                SCOPED_TRACE(test::NameOf(Form) + " " + std::to_string(Offset));
                const Samples All = test::Noise(Frames * Form.Channels, Form.Bits, 7);
                Dialog.Answer(Form.Channels, Form.Bits, Offset);
                ASSERT_TRUE(LoadBytes(test::Joined({Bytes(static_cast<std::size_t>(Offset), 0xEE),
                                                    test::AudioBytes(All, Form.Bits),
                                                    Bytes(Form.Bits == 8 ? 0 : 1)})));
                EXPECT_EQ(Store.WavFmtChannel, Form.Channels);
                EXPECT_EQ(Store.WavFmtBits, Form.Bits);
                EXPECT_EQ(Store.WavFmtFreq, 44100);
                EXPECT_TRUE(test::LeftOf(Store) ==
                            (Form.Channels == 2 ? test::EveryOther(All, 0) : All));
                EXPECT_TRUE(test::RightOf(Store) ==
                            (Form.Channels == 2 ? test::EveryOther(All, 1) : Samples()));
                EXPECT_EQ(test::TablesInUse().OrgFiles, 0) << "the file is not held";
            }
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(RawReader, SevenBytesAreTooFewAndEightOpen) {
    const std::string Path = Session.WriteFile("a.raw", Bytes(7));
    EXPECT_FALSE(Load(Path));
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Error Loading " + Path + "|File size is too small to load", Failed));
    EXPECT_THAT(Dialog.Shown, IsEmpty());
    Dialog.Answer(1, 8);
    EXPECT_TRUE(LoadBytes(Bytes(8, 130)));
    EXPECT_EQ(test::LeftOf(Store), Samples(8, 2));
}

TEST_F(RawReader, EightBytesBehindThreeAreOneStereoFrame) {
    Dialog.Answer(2, 16, 3);
    ASSERT_TRUE(LoadBytes({9, 9, 9, 1, 2, 3, 4, 9}));
    EXPECT_THAT(test::LeftOf(Store), ElementsAre(0x0201));
    EXPECT_THAT(test::RightOf(Store), ElementsAre(0x0403));
}

TEST_F(RawReader, EightBitsOpenedAs16HaveHalfTheLength) {
    Dialog.Answer(1, 16);
    ASSERT_TRUE(LoadBytes(Bytes(1001, 1)));
    EXPECT_EQ(Store.WavWaveINos, 500) << "the odd byte at the end is dropped";
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(RawReader, CancelIsSilentAndKeepsTheDocument) {
    test::FillStore(Store, {1, 12345, 16}, {3, 1, 4});
    WaveChanged = true;
    AuWriteMode = 1;
    Dialog.Ok = false;
    EXPECT_FALSE(LoadBytes(Bytes(100)));
    EXPECT_THAT(Messages.Texts(), IsEmpty());
    EXPECT_THAT(test::LeftOf(Store), ElementsAre(3, 1, 4));
    EXPECT_TRUE(WaveChanged);
    EXPECT_EQ(AuWriteMode, 1);
}

TEST_F(RawReader, NoNameNoFileAndAFolderAreToldWithoutTheDialog) {
    fs::create_directory(Session.Path("folder.raw"));
    for (const std::string& Path : {std::string(), std::string(" "), Session.Path("missing.raw"),
                                    Session.Path("folder.raw")}) {
        EXPECT_FALSE(Load(Path));
        EXPECT_THAT(Messages.TakeTexts(), ElementsAre(Failed));
    }
    EXPECT_THAT(Dialog.Shown, IsEmpty());
}

TEST_F(RawReader, ALoadForgetsTheModeOfAuFilesAndTheFlags) {
    WaveChanged = BookmarkChanged = true;
    AuWriteMode = 1;
    ASSERT_TRUE(LoadBytes(Bytes(100)));
    EXPECT_EQ(AuWriteMode, 0);
    EXPECT_FALSE(WaveChanged);
    EXPECT_FALSE(BookmarkChanged);
    EXPECT_EQ(Store.UndoCount(), 0);
}

TEST_F(RawReader, AFileThatChangesWhileTheDialogIsOpenDoesNotOpen) {
    test::FillStore(Store, {1, 12345, 16}, {3, 1, 4});
    Dialog.Meanwhile = [this] { fs::resize_file(Session.Path("a.raw"), 12); };
    EXPECT_FALSE(LoadBytes(Bytes(100)));
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Wave file load error|Another program changed the file while it was "
                            "being opened.\n" +
                            Session.Path("a.raw")));
    EXPECT_THAT(test::LeftOf(Store), ElementsAre(3, 1, 4));
    Dialog.Meanwhile = [this] { fs::remove(Session.Path("a.raw")); };
    EXPECT_FALSE(LoadBytes(Bytes(100)));
    EXPECT_THAT(
        Messages.TakeTexts(),
        ElementsAre("Wave file load error|No such file or directory\n" + Session.Path("a.raw")));
}

TEST_F(RawReader, TheDialogComesBeforeTheProgressWindow) {
    const std::string Path = Session.WriteFile("a.raw", Bytes(100));
    test::OrderLog Log;
    Dialog.Meanwhile = [&Log] { Log.Lines.emplace_back("dialog"); };
    Load(Path);
    EXPECT_THAT(Log.Lines, ElementsAre("dialog", "show", "color 25600", "0.000", "0.000", "hide"));
}

TEST_F(RawReader, MoreThan2GBOpenUpToThat) {
    const std::string Path = Session.WriteFile("a.raw", Bytes(10));
    fs::resize_file(Path, 2146435073);
    Dialog.Ok = false;
    EXPECT_FALSE(Load(Path));
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("This wav file is too large\nOnly about 2GB will be opened"));
}

// ---- Writing

class RawWriter : public RawReader {
  protected:
    [[nodiscard]] Bytes Out() const { return TestSession::ReadFile(Session.Path("out.raw")); }
    bool Write() { return OpenSave.FileWriteRaw(Store, Session.Path("out.raw")); }
    bool WritePart(std::int32_t From, std::int32_t To, std::int32_t WorkChn) {
        return OpenSave.FileWriteRawPart(Store, From, To, WorkChn, Session.Path("out.raw"));
    }
    Samples Fill(const test::SampleForm& Form, std::int32_t Frames) {
        Samples All = test::Noise(Frames * Form.Channels, Form.Bits, 11);
        Store.StorageReset();
        if (Form.Channels == 2)
            test::FillStore(Store, {2, 44100, Form.Bits}, test::EveryOther(All, 0),
                            test::EveryOther(All, 1));
        else
            test::FillStore(Store, {1, 44100, Form.Bits}, All);
        return All;
    }
};

TEST_F(RawWriter, WritesTheSamplesAndNothingElse) {
    AuWriteMode = 1;
    for (const test::SampleForm& Form : test::SampleForms)
        for (const std::int32_t Frames : {1, 2, 65537, 262145}) {
            const Samples All = Fill(Form, Frames);
            ASSERT_TRUE(Write());
            EXPECT_TRUE(Out() == test::AudioBytes(All, Form.Bits)) << test::NameOf(Form);
        }
    EXPECT_EQ(AuWriteMode, 1) << "only loads and WAV files end its round";
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(RawWriter, APartTakesTheChannelThatIsWorkedOn) {
    const Samples All = Fill({2, 16}, 100);
    const Samples Part(All.begin() + 20, All.begin() + 60);
    for (const std::int32_t WorkChn : {0, 1, 2}) {
        ASSERT_TRUE(WritePart(11, 30, WorkChn));
        const auto First = static_cast<std::size_t>(WorkChn == 2 ? 1 : 0);
        EXPECT_EQ(Out(), test::AudioBytes(WorkChn == 0 ? Part : test::EveryOther(Part, First), 16));
    }
}

TEST_F(RawWriter, TheChecksComeInTheirOrder) {
    EXPECT_FALSE(OpenSave.FileWriteRawPart(Store, 2, 1, 0, ""));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Writing wave error|Zero size wave found"));
    EXPECT_FALSE(Write());
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Writing wave error|Zero size wave found"));
    Fill({1, 16}, 100);
    EXPECT_FALSE(OpenSave.FileWriteRawPart(Store, 0, 1, 0, ""));
    EXPECT_FALSE(OpenSave.FileWriteRawPart(Store, 1, 101, 0, ""));
    EXPECT_FALSE(OpenSave.FileWriteRawPart(Store, 3, 2, 0, ""));
    EXPECT_FALSE(OpenSave.FileWriteRawPart(Store, 1, 100, 0, ""));
    const std::string Selection = "Invalid selection to save selected";
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre(Selection, Selection, Selection, "No file name given to write"));
}

TEST_F(RawWriter, WhatFailsLeavesTheOldFileAsItWas) {
    const Bytes Before(1000, 7);
    Session.WriteFile("out.raw", Before);
    const Samples All = Fill({1, 16}, 300000);
    {
        const test::FullDisk Disk;
        Disk.Fill();
        EXPECT_FALSE(Write());
    }
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Wave file write error|File too large\n" + Session.Path("out.raw") +
                            "\n\nThe file that was there before is unchanged."));
    fs::permissions(Session.Path("out.raw"), fs::perms::owner_read);
    EXPECT_FALSE(Write());
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Wave file write error|Permission denied\n" + Session.Path("out.raw")));
    EXPECT_EQ(Out(), Before);
    fs::permissions(Session.Path("out.raw"), fs::perms::owner_all);
    EXPECT_TRUE(Write());
    EXPECT_TRUE(Out() == test::AudioBytes(All, 16));
}

} // namespace
} // namespace quoril
