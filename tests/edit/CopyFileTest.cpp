// A copy of a whole file that is not open.
#include "audiofile/AudioFileNames.h"
#include "audiofile/DocumentFile.h"
#include "audiofile/WavMaker.h"
#include "edit/ClipMarker.h"
#include "edit/CopyPasteFixture.h"
#include "storage/UndoListener.h"

namespace quoril::test {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using CopyFile = CopyPasteFixture;

TEST_F(CopyFile, AnotherFileIsCopiedWholeAndTheDocumentStays) {
    Document({1, 2});
    WaveChanged = false;
    Windows.Choice = Session.WriteFile(
        "b.wav",
        WavFile{.Channels = 2, .Rate = 1000, .Data = AudioBytes({1, 2, 3, 4, 5, 6}, 16)}.Whole());
    Commands.CopyFile();
    ASSERT_EQ(Windows.Requests.size(), 1U);
    EXPECT_EQ(Windows.Requests[0].Title, "Select a Wave file to Copy");
    ASSERT_EQ(Windows.Copied.size(), 1U);
    EXPECT_TRUE(Windows.Copied[0].First.ends_with(" is copied"));
    EXPECT_EQ(Windows.Copied[0].Second, "Duration: 00, Samples: 3");
    EXPECT_THAT(Left(), ElementsAre(1, 2));
    EXPECT_FALSE(WaveChanged);
    Document({9}, {9});
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Left(), ElementsAre(1, 3, 5, 9));
    EXPECT_THAT(Right(), ElementsAre(2, 4, 6, 9));
}

/// What the menu says last.
struct MenuSeen final : UndoListener {
    MenuSeen() { SetUndoListener(this); }
    ~MenuSeen() override { SetUndoListener(nullptr); }
    MenuSeen(const MenuSeen&) = delete;
    MenuSeen& operator=(const MenuSeen&) = delete;
    void UndoMenuChanged(const UndoMenuState& State) override { Last = State; }
    void SetMenu_To_DefaultFormat() override { ++FormatsShown; }
    UndoMenuState Last;
    int FormatsShown = 0;
};

TEST_F(CopyFile, ACopyOfAnotherFileLeavesWhatIsKnownOfTheDocument) {
    Document({1, 2, 3, 4});
    const MenuSeen Menu;
    Select(2, 3);
    Commands.Delete();
    EXPECT_EQ(Menu.Last.Caption, "Undo [Delete]");
    WaveDir = Session.Path("music");
    WaveFileName = "mine.wav";
    WaveFilePath = WaveDir + "/mine.wav";
    const WaveFormat Format = {2, 8000, 8};
    CurrentFormat = Format;
    Select(1, 2);
    const std::string Good =
        Session.WriteFile("b.wav", WavFile{.Data = AudioBytes({1, 2, 3}, 16)}.Whole());
    const std::string Bad = Session.WriteFile("d.wav", {1, 2, 3});
    for (const std::string& Other : {Good, Bad})
        for (const bool Changed : {true, false}) {
            WaveChanged = BookmarkChanged = Changed;
            Windows.Choice = Other;
            Commands.CopyFile();
            EXPECT_EQ(WaveChanged, Changed) << Other;
            EXPECT_EQ(BookmarkChanged, Changed) << Other;
            EXPECT_EQ(WaveDir, Session.Path("music"));
            EXPECT_EQ(WaveFileName, "mine.wav");
            EXPECT_EQ(WaveFilePath, WaveDir + "/mine.wav");
            EXPECT_EQ(CurrentFormat, Format);
            EXPECT_EQ(SelStart, 1);
            EXPECT_EQ(SelEnd, 2);
            EXPECT_EQ(Menu.Last.Caption, "Undo [Delete]") << Other;
            EXPECT_TRUE(Menu.Last.Enabled) << Other;
            EXPECT_EQ(Menu.FormatsShown, 0);
        }
    EXPECT_THAT(Left(), ElementsAre(1, 4));
    WaveStore->Undo();
    EXPECT_THAT(Left(), ElementsAre(1, 2, 3, 4));
    EXPECT_EQ(Windows.Copied.size(), 2U);
    BookmarkChanged = false;
}

TEST_F(CopyFile, AFileThatIsNoSoundIsNotCopied) {
    Document({1, 2});
    Windows.Choice = Session.WriteFile("c.txt", {1, 2, 3});
    Commands.CopyFile();
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Can not open this file type\n\nIf you know that audio data exists in "
                            "this file,\nyou can rename it to .raw type and try opening it."));
    Windows.Choice = Session.WriteFile("d.wav", {1, 2, 3});
    Commands.CopyFile();
    EXPECT_EQ(Messages.TakeTexts().back(), "Copying failed");
    EXPECT_THAT(Windows.Copied, IsEmpty());
}

TEST_F(CopyFile, AnotherFileIsAskedForWhereTheLastOneWas) {
    Document({1});
    WaveDir = Session.Path("music");
    Commands.CopyFile();
    ASSERT_EQ(Windows.Requests.size(), 1U);
    EXPECT_EQ(Windows.Requests[0].Title, "Select a Wave file to Copy");
    EXPECT_EQ(Windows.Requests[0].Folder, Session.Path("music"));
    EXPECT_EQ(Windows.Requests[0].Filter, AudioFileFilter);
    EXPECT_EQ(Windows.Requests[0].DefaultExtension, "wav");
    EXPECT_TRUE(Windows.Requests[0].FileMustExist);
    // Cancelled: nothing is said.
    EXPECT_THAT(Messages.Texts(), IsEmpty());
    EXPECT_THAT(Windows.Copied, IsEmpty());
    EXPECT_EQ(ClipPointer, 0);
}

TEST_F(CopyFile, AFileIsCopiedWithItsOwnChannelsBitsAndRate) {
    Document({1}, {2});
    SelBoth = false;
    SelSingle = 2;
    Windows.Choice = Session.WriteFile(
        "m.wav", WavFile{.Rate = 8000, .Bits = 8, .Data = AudioBytes({1, -128}, 8)}.Whole());
    Commands.CopyFile();
    const auto Marker = ClipMarkerRead(Slot.Held);
    ASSERT_TRUE(Marker.has_value());
    EXPECT_EQ(Marker->Channels, 1);
    EXPECT_EQ(Marker->Bits, 8);
    EXPECT_EQ(Marker->Freq, 8000);
    EXPECT_EQ(Marker->Length, 2);
}

} // namespace

} // namespace quoril::test
