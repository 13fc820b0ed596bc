#include "player/PlaySource.h"
#include "BlockWords.h"
#include "base/Failure.h"
#include "player/PlayTrack.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;
using Samples = std::vector<std::int16_t>;

const std::vector<std::int32_t> NoList{0};

/// The next frames in pieces of at most `Piece`.
Samples Play(PlaySource& Source, std::size_t Most, bool Loop = false, std::size_t Piece = 7) {
    const auto Width = static_cast<std::size_t>(Source.Channels());
    Samples All;
    while (All.size() < Most * Width) {
        Samples Part(Piece * Width);
        const std::size_t Left = Most - All.size() / Width;
        const auto Got = Source.Next(std::min(Piece, Left), Loop, Part.data());
        if (Got.Count == 0)
            break;
        All.insert(All.end(), Part.begin(),
                   Part.begin() + static_cast<std::ptrdiff_t>(Got.Count * Width));
    }
    return All;
}

Samples Reversed(Samples What) {
    std::reverse(What.begin(), What.end());
    return What;
}

class PlaySourceTest : public ::testing::Test {
  protected:
    TempFolder Folder;
};

TEST_F(PlaySourceTest, EveryKindOfBlockIsReadAcrossTheBorders) {
    const Samples Work = Noise(40, 1);
    const Samples Frames = Noise(60, 2); // of two channels
    std::string Bytes;
    for (int i = 0; i < 24; ++i)
        Bytes.push_back(static_cast<char>(i * 10));
    const std::string WorkName = WriteSamples(Folder, "work", Work);
    const std::string StereoName = WriteSamples(Folder, "stereo", Frames);
    const std::string ByteName = Folder.Write("bytes", "head" + Bytes);
    BlockWords List;
    // The order of the list is none: places come from the blocks themselves.
    List.Add(StereoName, 10, 4, 31, 2 * 2 * 5 + 3, 2, 16); // right samples of frames 5 to 14
    List.Add(WorkName, 20, 3, 1, 11);                      // samples 5 to 24
    List.Silence(10, 21);
    List.Add(ByteName, 12, 4, 41, 5 + 1, 2, 8); // right bytes of all frames
    List.Add(WorkName, 5, 3, 60, 1);            // after a hole of seven
    Samples Expected(64, 0);
    for (std::size_t i = 0; i < 20; ++i)
        Expected[i] = Work[5 + i];
    for (std::size_t i = 0; i < 10; ++i)
        Expected[30 + i] = Frames[(5 + i) * 2 + 1];
    for (std::size_t i = 0; i < 12; ++i)
        Expected[40 + i] =
            static_cast<std::int16_t>(static_cast<std::uint8_t>(Bytes[2 * i + 1]) - 128);
    for (std::size_t i = 0; i < 5; ++i)
        Expected[59 + i] = Work[i];
    for (const std::size_t Piece : {1U, 3U, 7U, 64U, 1000U}) {
        PlaySource Source(16, 1, 8000, 64, List.Words, NoList);
        EXPECT_EQ(Play(Source, 1000, false, Piece), Expected) << Piece;
        Source.PlaceAt(63, -1);
        EXPECT_EQ(Play(Source, 1000, false, Piece), Reversed(Expected)) << Piece;
        EXPECT_EQ(Source.TakeFailure(), "");
    }
}

TEST_F(PlaySourceTest, TwoChannelsComeInterleavedInBothDirections) {
    const Samples Left = Noise(50, 3);
    const Samples Right = Noise(50, 4);
    BlockWords ListL;
    BlockWords ListR;
    ListL.Add(WriteSamples(Folder, "l", Left), 50, 3, 1);
    ListR.Add(WriteSamples(Folder, "r", Right), 50, 3, 1);
    PlaySource Source(16, 2, 44100, 50, ListL.Words, ListR.Words);
    Samples Forward;
    Samples Backward;
    for (std::size_t i = 0; i < 50; ++i) {
        Forward.insert(Forward.end(), {Left[i], Right[i]});
        Backward.insert(Backward.end(), {Left[49 - i], Right[49 - i]});
    }
    EXPECT_EQ(Play(Source, 1000), Forward);
    Source.PlaceAt(49, -1);
    EXPECT_EQ(Play(Source, 1000), Backward);
}

TEST_F(PlaySourceTest, EightBitsFillTheWholeScaleAndNeverWrapAround) {
    BlockWords List;
    List.Add(WriteSamples(Folder, "w", {-128, -1, 0, 1, 127, 300, -300}), 7, 3, 1);
    PlaySource Source(8, 1, 8000, 7, List.Words, NoList);
    EXPECT_THAT(Play(Source, 7), ElementsAre(-32768, -256, 0, 256, 32512, 32512, -32768));
}

TEST_F(PlaySourceTest, ALoopGoesOnAtItsOtherEndWithoutASeam) {
    BlockWords List;
    List.Add(WriteSamples(Folder, "w", {1, 2, 3}), 3, 3, 1);
    PlaySource Source(16, 1, 8000, 3, List.Words, NoList);
    EXPECT_THAT(Play(Source, 8, true), ElementsAre(1, 2, 3, 1, 2, 3, 1, 2));
    Source.PlaceAt(1, -1);
    EXPECT_THAT(Play(Source, 7, true), ElementsAre(2, 1, 3, 2, 1, 3, 2));
    EXPECT_THAT(Play(Source, 7, false), ElementsAre(1));
}

TEST_F(PlaySourceTest, ATurnAtAnyPlaceGoesBackOverTheSameFrames) {
    const Samples All = Noise(30, 5);
    BlockWords List;
    const std::string Name = WriteSamples(Folder, "w", All);
    List.Add(Name, 11, 3, 1).Add(Name, 19, 3, 12, 23);
    for (std::int64_t Place = 0; Place <= 30; ++Place) {
        PlaySource Source(16, 1, 8000, 30, List.Words, NoList);
        Samples Expected(All.begin(), All.begin() + Place);
        EXPECT_EQ(Play(Source, static_cast<std::size_t>(Place)), Expected);
        Source.PlaceAt(Place - 1, -1);
        EXPECT_EQ(Play(Source, 100), Reversed(Expected)) << Place;
        Source.PlaceAt(Place, 1);
        EXPECT_EQ(Play(Source, 100), Samples(All.begin() + Place, All.end())) << Place;
    }
}

TEST_F(PlaySourceTest, AnOffsetOutsideIsWhereTheWalkEndsOrBeginsAnew) {
    BlockWords List;
    List.Add(WriteSamples(Folder, "w", {1, 2, 3}), 3, 3, 1);
    PlaySource Source(16, 1, 8000, 3, List.Words, NoList);
    Source.PlaceAt(-5, 1);
    EXPECT_THAT(Play(Source, 9), ElementsAre(1, 2, 3));
    Source.PlaceAt(99, -1);
    EXPECT_THAT(Play(Source, 9), ElementsAre(3, 2, 1));
    Source.PlaceAt(99, 1);
    EXPECT_THAT(Play(Source, 9), ElementsAre());
    Source.PlaceAt(-1, -1);
    EXPECT_THAT(Play(Source, 2, true), ElementsAre(3, 2));
}

TEST_F(PlaySourceTest, AMissingOrShortFileIsSilentAndTold) {
    BlockWords List;
    List.Add(Folder / "nothing", 4, 3, 1);
    List.Add(WriteSamples(Folder, "short", {1, 2}), 4, 3, 5);
    List.Add(WriteSamples(Folder, "good", {7, 8}), 2, 3, 9);
    PlaySource Source(16, 1, 8000, 10, List.Words, NoList);
    EXPECT_THAT(Play(Source, 10, false, 100), ElementsAre(0, 0, 0, 0, 0, 0, 0, 0, 7, 8));
    EXPECT_THAT(Source.TakeFailure(), ::testing::HasSubstr("nothing"));
    EXPECT_EQ(Source.TakeFailure(), "");
}

TEST_F(PlaySourceTest, AFileThatWasReplacedIsNotReadAsTheSound) {
    const std::string Name = WriteSamples(Folder, "a", {1, 2, 3});
    BlockWords List;
    List.Add(Name, 3, 3, 1);
    PlaySource Source(16, 1, 8000, 3, List.Words, NoList);
    EXPECT_THAT(Play(Source, 1), ElementsAre(1));
    Source.CloseFiles();
    EXPECT_EQ(Source.OpenFiles(), 0U);
    // Made before the old one goes, so that it is another file on every disk.
    const std::string Other = WriteSamples(Folder, "b", {9, 9, 9});
    std::filesystem::rename(Other, Name);
    EXPECT_THAT(Play(Source, 2), ElementsAre(0, 0));
    EXPECT_THAT(Source.TakeFailure(), ::testing::HasSubstr("changed by another program"));
}

/// A snapshot of the opened file as it was entered.
class EnteredFileTest : public PlaySourceTest {
  protected:
    EnteredFileTest() {
        Name = WriteSamples(Folder, "a", {1, 2, 3});
        List.Add(Name, 3, 4, 1, 1, 1, 16);
        Entered.push_back({Name, IdentityOfFile(Name)});
    }
    PlaySource Snapshot() const { return {16, 1, 8000, 3, List.Words, NoList, Entered}; }
    static void ExpectSilentAndTold(PlaySource& Source, std::size_t Frames) {
        EXPECT_EQ(Play(Source, Frames), Samples(Frames, 0));
        EXPECT_THAT(Source.TakeFailure(), ::testing::HasSubstr("changed by another program"));
    }
    std::string Name;
    BlockWords List;
    std::vector<EnteredFile> Entered;
};

TEST_F(EnteredFileTest, PlaysAsLongAsItIsTheSame) {
    PlaySource Source = Snapshot();
    EXPECT_THAT(Play(Source, 3), ElementsAre(1, 2, 3));
    Source.CloseFiles();
    Source.PlaceAt(2, -1);
    EXPECT_THAT(Play(Source, 3), ElementsAre(3, 2, 1));
    EXPECT_EQ(Source.TakeFailure(), "");
}

TEST_F(EnteredFileTest, OneThatWasRewrittenBeforeItIsFirstReadIsSilent) {
    PlaySource Source = Snapshot();
    WriteSamples(Folder, "a", {9, 9, 9});
    ExpectSilentAndTold(Source, 3);
}

TEST_F(EnteredFileTest, OneThatWasReplacedBeforeItIsFirstReadIsSilentAlsoWhenItIsHeld) {
    PlaySource Source = Snapshot();
    std::filesystem::rename(WriteSamples(Folder, "b", {9, 9, 9}), Name);
    Source.HoldOriginal();
    ExpectSilentAndTold(Source, 3);
}

TEST_F(EnteredFileTest, OneThatIsRewrittenInItsPlaceWhileItPlaysIsSilentFromThereOn) {
    for (const bool Held : {false, true}) {
        PlaySource Source = Snapshot();
        EXPECT_THAT(Play(Source, 1), ElementsAre(1));
        if (Held)
            Source.HoldOriginal();
        WriteSamples(Folder, "a", {9, 9, 9});
        ExpectSilentAndTold(Source, 2);
        WriteSamples(Folder, "a", {1, 2, 3});
        Entered = {{Name, IdentityOfFile(Name)}};
    }
}

TEST_F(EnteredFileTest, OneThatIsReplacedOrDeletedWhileItPlaysIsHeardToItsEnd) {
    PlaySource Source = Snapshot();
    EXPECT_THAT(Play(Source, 1), ElementsAre(1));
    std::filesystem::rename(WriteSamples(Folder, "b", {9, 9, 9}), Name);
    EXPECT_THAT(Play(Source, 1), ElementsAre(2));
    std::filesystem::remove(Name);
    EXPECT_THAT(Play(Source, 1), ElementsAre(3));
    EXPECT_EQ(Source.TakeFailure(), "");
}

TEST_F(PlaySourceTest, ManyFilesNeverStayOpenTogether) {
    BlockWords List;
    for (std::int32_t i = 0; i < 40; ++i)
        List.Add(WriteSamples(Folder, std::to_string(i), {static_cast<std::int16_t>(i)}), 1, 3,
                 i + 1);
    PlaySource Source(16, 1, 8000, 40, List.Words, NoList);
    const Samples All = Play(Source, 40);
    for (std::size_t i = 0; i < 40; ++i)
        EXPECT_EQ(All[i], static_cast<std::int16_t>(i));
    EXPECT_LE(Source.OpenFiles(), 16U);
}

TEST_F(PlaySourceTest, WordsThatMakeNoListAreRefused) {
    const std::string Name = WriteSamples(Folder, "w", Noise(10));
    const BlockWords Good = BlockWords().Add(Name, 10, 4, 1, 1, 1, 16);
    for (std::size_t Cut = 0; Cut < Good.Words.size(); ++Cut) {
        const std::vector<std::int32_t> Short(
            Good.Words.begin(), Good.Words.begin() + static_cast<std::ptrdiff_t>(Cut));
        EXPECT_THROW(PlaySource(16, 1, 8000, 10, Short, NoList), Failure) << Cut;
    }
    EXPECT_THROW(PlaySource(16, 2, 8000, 10, Good.Words, std::vector<std::int32_t>{}), Failure);
    EXPECT_THROW(PlaySource(24, 1, 8000, 10, Good.Words, NoList), Failure);
    EXPECT_THROW(PlaySource(16, 3, 8000, 10, Good.Words, NoList), Failure);
    EXPECT_THROW(PlaySource(16, 1, 0, 10, Good.Words, NoList), Failure);
    EXPECT_THROW(PlaySource(16, 1, 8000, -1, Good.Words, NoList), Failure);
}

TEST_F(PlaySourceTest, ARateThatCanNotBePlayedIsTold) {
    const BlockWords List = BlockWords().Silence(5, 1);
    for (const std::int32_t Freq : {-44100, 0, 99, 200001, 300000})
        try {
            const PlaySource Source(16, 1, Freq, 5, List.Words, NoList);
            ADD_FAILURE() << Freq;
        } catch (const Failure& Why) {
            EXPECT_EQ(std::string(Why.what()),
                      "The player can not play sound with a sampling rate of " +
                          std::to_string(Freq) + " Hz");
        }
    for (const std::int32_t Freq : {100, 500, 200000})
        EXPECT_EQ(PlaySource(16, 1, Freq, 5, List.Words, NoList).Freq(), Freq);
}

TEST_F(PlaySourceTest, AnyNumbersInTheWordsEndInFramesOrInARefusal) {
    const std::string Name = WriteSamples(Folder, "w", Noise(10));
    const BlockWords Good = BlockWords().Add(Name, 10, 4, 1, 1, 2, 8).Silence(5, 11);
    std::mt19937 Random(7);
    const std::int32_t Nasty[] = {-1, 0, 1, 2, 5, 2147483647, -2147483647 - 1, 1 << 20};
    int Played = 0;
    for (int Round = 0; Round < 3000; ++Round) {
        std::vector<std::int32_t> Words = Good.Words;
        for (auto Change = Random() % 3; Change < 3; ++Change)
            Words[Random() % Words.size()] = Nasty[Random() % 8];
        try {
            PlaySource Source(16, 1, 8000, 20, Words, NoList);
            EXPECT_EQ(Play(Source, 25, true).size(), 25U);
            Source.PlaceAt(19, -1);
            EXPECT_EQ(Play(Source, 25).size(), 20U);
            Source.ReadAhead(1000);
            ++Played;
        } catch (const Failure&) {
            continue;
        }
    }
    EXPECT_GT(Played, 0);
}

TEST_F(PlaySourceTest, AnEmptySnapshotIsAtItsEndEvenInALoop) {
    PlaySource Source(16, 1, 8000, 0, NoList, NoList);
    EXPECT_TRUE(Play(Source, 5, true).empty());
}

TEST(PlayTrack, KnowsThePlaceInEveryStretch) {
    PlayTrack Track;
    EXPECT_EQ(Track.OffsetAt(5), 0);
    Track.Add(0, 100, 1);
    Track.Add(50, 150, 1); // goes on
    EXPECT_EQ(Track.Count(), 1U);
    Track.Add(60, 0, 1);  // a loop point
    Track.Add(70, 9, -1); // a turn
    EXPECT_EQ(Track.OffsetAt(59), 159);
    EXPECT_EQ(Track.OffsetAt(60), 0);
    EXPECT_EQ(Track.OffsetAt(69), 9);
    EXPECT_EQ(Track.OffsetAt(72), 7);
    EXPECT_EQ(Track.DirectionAt(69), 1);
    EXPECT_EQ(Track.DirectionAt(70), -1);
    Track.CutFrom(65);
    EXPECT_EQ(Track.OffsetAt(72), 12);
    Track.ForgetBefore(61);
    EXPECT_EQ(Track.Count(), 1U);
    EXPECT_EQ(Track.OffsetAt(61), 1);
}

} // namespace
} // namespace quoril::test
