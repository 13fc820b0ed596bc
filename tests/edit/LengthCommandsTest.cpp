#include "edit/EditFixture.h"

#include "base/Failure.h"
#include "settings/STD1.h"
#include "storage/WoroFileBlockMod.h"

namespace quoril::test {
namespace {

// ---- Trim

class Trim : public EditTest {};

TEST_F(Trim, KeepsTheSelectionOnly) {
    Stereo(1000);
    Select(301, 500);
    OneStep(EditTrim, "Trim");
    EXPECT_EQ(MadeL, TestSamples(301, 500, 1));
    EXPECT_EQ(MadeR, TestSamples(301, 500, 2));
}

TEST_F(Trim, DropsOnlyTheFrontOrOnlyTheTail) {
    Mono(1000);
    Select(301, 1000);
    OneStep(EditTrim, "Trim");
    EXPECT_EQ(MadeL, TestSamples(301, 1000));
    Select(1, 300);
    OneStep(EditTrim, "Trim");
    EXPECT_EQ(MadeL, TestSamples(1, 300));
}

TEST_F(Trim, OfTheWholeDocumentDeletesNothing) {
    Stereo(1000);
    Select(1, 1000);
    ExpectUntouched(EditTrim);
    ExpectCalls({"Refresh_Wave_View"});
}

TEST_F(Trim, OfTheLeftChannelLeavesBothEquallyLong) {
    Stereo(1000);
    OneChannel(1);
    Select(301, 500);
    OneStep(EditTrim, "Trim");
    EXPECT_EQ(MadeL, Joined({TestSamples(301, 500, 1), Silence(800)}));
    EXPECT_EQ(MadeR, TestSamples(1, 1000, 2));
}

TEST_F(Trim, OfTheRightChannelLeavesTheLeftOneAlone) {
    Stereo(1000);
    OneChannel(2);
    Select(301, 1000);
    OneStep(EditTrim, "Trim");
    EXPECT_EQ(MadeL, TestSamples(1, 1000, 1));
    EXPECT_EQ(MadeR, Joined({TestSamples(301, 1000, 2), Silence(300)}));
}

TEST_F(Trim, LeavesTheSelectionToTheRefresh) {
    Stereo(1000);
    Select(301, 500);
    EditTrim();
    ExpectSelection(301, 500);
    ExpectCalls({"Refresh_Wave_View"});
}

TEST_F(Trim, NeedsARangeAndAsksForIt) {
    ScriptedSelConf Dialog;
    Stereo(1000);
    Select(300, 300);
    ExpectUntouched(EditTrim);
    ASSERT_EQ(Dialog.Requests.size(), 1U);
    EXPECT_EQ(Dialog.Requests[0].Need, 2);
    EXPECT_EQ(Dialog.Requests[0].Caption, " Confirm Selection [Trim]");
}

TEST_F(Trim, DoesNotLookAtTheDisk) {
    TmpDir0 = Session.Path("nowhere");
    Stereo(1000);
    Select(301, 500);
    EditTrim();
    EXPECT_THAT(Questions.Needs, ::testing::IsEmpty());
    EXPECT_EQ(WaveStore->WavWaveINos, 200);
}

TEST_F(Trim, OfAnEndlessDocumentMovesNoSample) {
    WaveStore->StorageReset();
    WaveStore->WavFmtChannel = 1;
    BlockCarrBuffClass Long;
    Long.ReDimSize(2000000000);
    WaveStore->WaveDataInsert(1, 1, &Long, nullptr, "", true);
    Select(2, 1999999999);
    EditTrim();
    EXPECT_EQ(WaveStore->WavWaveINos, 1999999998);
    // At most the two blocks at the borders are touched.
    EXPECT_LE(MemoryUsed, 2 * 2 * DefaultBlockLen());
}

// ---- Insert Silence

class Insert : public EditTest {
  protected:
    Insert() { LastSilenceLen = 0; }
};

TEST_F(Insert, ARangeGivesTheLengthWithoutADialog) {
    Stereo(5000);
    Select(2001, 3000);
    OneStep(InsertSilence, "Insert Silence");
    EXPECT_EQ(MadeL, Joined({TestSamples(1, 2000, 1), Silence(1000), TestSamples(2001, 5000, 1)}));
    EXPECT_EQ(MadeR, Joined({TestSamples(1, 2000, 2), Silence(1000), TestSamples(2001, 5000, 2)}));
    EXPECT_THAT(Questions.Entries, ::testing::IsEmpty());
    EXPECT_EQ(LastSilenceLen, 1000);
}

TEST_F(Insert, TwoSamplesAreARange) {
    Mono(100);
    Select(11, 12);
    OneStep(InsertSilence, "Insert Silence");
    EXPECT_EQ(MadeL, Joined({TestSamples(1, 10), Silence(2), TestSamples(11, 100)}));
    EXPECT_THAT(Questions.Entries, ::testing::IsEmpty());
}

TEST_F(Insert, ShowsTheNewSoundAndLeavesTheSelection) {
    Stereo(100);
    Select(11, 20);
    InsertSilence();
    ExpectSelection(11, 20);
    ExpectCalls({"Refresh_Wave_View"});
}

TEST_F(Insert, APointAsksAndOffersOneSecondAtFirst) {
    Stereo(5000);
    Select(5, 5);
    Questions.Entry = {true, "70"};
    OneStep(InsertSilence, "Insert Silence");
    EXPECT_EQ(MadeL, Joined({TestSamples(1, 4, 1), Silence(70), TestSamples(5, 5000, 1)}));
    ASSERT_EQ(Questions.Entries.size(), 1U);
    const EntDurRequest& Asked = Questions.Entries[0];
    EXPECT_EQ(Asked.Caption, " Insert Silence (Duration)");
    EXPECT_EQ(Asked.Prompt, "Enter Length of Silence to insert:");
    EXPECT_EQ(Asked.CurSizeDur, "05");
    EXPECT_EQ(Asked.CurSizeSmp, "5000");
    EXPECT_EQ(Asked.EnterDur, "01");
    EXPECT_EQ(Asked.EnterSmp, "1000");
    EXPECT_EQ(Asked.Freq, 1000);
}

TEST_F(Insert, TheSecondOneOffersTheLengthOfTheFirst) {
    Mono(1000);
    Select(5, 5);
    Questions.Entry = {true, "70"};
    InsertSilence();
    InsertSilence();
    EXPECT_EQ(Questions.Entries.back().EnterSmp, "70");
    EXPECT_EQ(Questions.Entries.back().EnterDur, "00.07");
    Select(11, 40);
    InsertSilence();
    Select(5, 5);
    Questions.Entry.OkClicked = false;
    InsertSilence();
    EXPECT_EQ(Questions.Entries.back().EnterSmp, "30");
}

TEST_F(Insert, OneChannelIsFilledUpInTheOther) {
    Stereo(100);
    OneChannel(2);
    Select(11, 20);
    OneStep(InsertSilence, "Insert Silence");
    EXPECT_EQ(MadeL, Joined({TestSamples(1, 100, 1), Silence(10)}));
    EXPECT_EQ(MadeR, Joined({TestSamples(1, 10, 2), Silence(10), TestSamples(11, 100, 2)}));
}

TEST_F(Insert, CancelledOrBelowOneDoesNothing) {
    Stereo(100);
    Select(5, 5);
    for (const EntDurAnswer& Each : {EntDurAnswer{false, "70"},
                                     {true, "0"},
                                     {true, "-3"},
                                     {true, "junk"},
                                     {true, ""},
                                     {true, "0.5"}}) {
        SCOPED_TRACE(Each.EnterSmp);
        Questions.Entry = Each;
        ExpectUntouched(InsertSilence);
        EXPECT_EQ(LastSilenceLen, 1000);
    }
    ExpectCalls({});
}

TEST_F(Insert, AnAbsurdLengthFailsWithNothingChanged) {
    Stereo(100);
    Select(5, 5);
    for (const char* Text : {"1e300", "99999999999", "2147483647", "1000000000"}) {
        SCOPED_TRACE(Text);
        Questions.Entry = {true, Text};
        ExpectUntouched([] { EXPECT_THROW(InsertSilence(), Failure); });
    }
}

TEST_F(Insert, AsksTheDiskForTwiceTheLengthPerChannel) {
    Stereo(100);
    Select(11, 20);
    TmpDir0 = Session.Path("nowhere");
    ExpectUntouched(InsertSilence);
    OneChannel(1);
    ExpectUntouched(InsertSilence);
    EXPECT_THAT(Questions.Needs, ::testing::ElementsAre(40, 20));
    Questions.GoOn = true;
    OneStep(InsertSilence, "Insert Silence");
}

TEST_F(Insert, CostsNoMemory) {
    Mono(100);
    const std::int32_t Before = MemoryUsed;
    Select(5, 5);
    Questions.Entry = {true, "500000000"};
    Questions.GoOn = true;
    InsertSilence();
    EXPECT_EQ(WaveStore->WavWaveINos, 500000100);
    EXPECT_EQ(MemoryUsed, Before);
}

TEST_F(Insert, MoreThanTwoGigabytesIsRefusedInWordsThatHelp) {
    Mono(100);
    Select(5, 5);
    Questions.Entry = {true, "1500000000"};
    EXPECT_THAT([] { InsertSilence(); },
                ::testing::ThrowsMessage<Failure>(::testing::HasSubstr("more than 2 GB")));
    EXPECT_EQ(WaveStore->WavWaveINos, 100);
}

TEST_F(Insert, NeedsAPointOrARange) {
    ScriptedSelConf Dialog;
    Stereo(100);
    Select(0, 0);
    ExpectUntouched(InsertSilence);
    ASSERT_EQ(Dialog.Requests.size(), 1U);
    EXPECT_EQ(Dialog.Requests[0].Need, 3);
    EXPECT_EQ(Dialog.Requests[0].Caption, " Confirm Selection [Insert Silence]");
}

// ---- Change Size

class Size : public EditTest {};

TEST_F(Size, AsksWithThePresentLength) {
    Stereo(2500);
    ExpectUntouched(ChangeSize);
    ASSERT_EQ(Questions.Entries.size(), 1U);
    const EntDurRequest& Asked = Questions.Entries[0];
    EXPECT_EQ(Asked.Caption, " Change Size (Duration)");
    EXPECT_EQ(Asked.Prompt, "Enter New Size:");
    EXPECT_EQ(Asked.CurSizeDur, "02.50");
    EXPECT_EQ(Asked.CurSizeSmp, "2500");
    EXPECT_EQ(Asked.EnterDur, "02.50");
    EXPECT_EQ(Asked.EnterSmp, "2500");
}

TEST_F(Size, ShorterLosesTheEndOfBothChannels) {
    Stereo(1000);
    OneChannel(2);
    Questions.Entry = {true, "400"};
    OneStep(ChangeSize, "Change Size");
    EXPECT_EQ(MadeL, TestSamples(1, 400, 1));
    EXPECT_EQ(MadeR, TestSamples(1, 400, 2));
}

TEST_F(Size, LongerGetsSilence) {
    Stereo(1000);
    Questions.Entry = {true, "1400"};
    OneStep(ChangeSize, "Change Size");
    EXPECT_EQ(MadeL, Joined({TestSamples(1, 1000, 1), Silence(400)}));
    EXPECT_EQ(MadeR, Joined({TestSamples(1, 1000, 2), Silence(400)}));
    Mono(1000);
    OneStep(ChangeSize, "Change Size");
    EXPECT_EQ(MadeL, Joined({TestSamples(1, 1000), Silence(400)}));
}

TEST_F(Size, ShowsTheNewSoundAndLeavesTheSelection) {
    Stereo(1000);
    Select(11, 20);
    for (const char* Length : {"400", "500"}) {
        Questions.Entry = {true, Length};
        ChangeSize();
        ExpectSelection(11, 20);
        ExpectCalls({"Refresh_Wave_View"});
    }
}

TEST_F(Size, ThePresentLengthDoesNothing) {
    Stereo(1000);
    Questions.Entry = {true, "1000"};
    ExpectUntouched(ChangeSize);
    ExpectCalls({});
}

TEST_F(Size, BelowOneDoesNothing) {
    Stereo(1000);
    for (const char* Text : {"0", "-5", "", "junk", "0.4"}) {
        Questions.Entry = {true, Text};
        ExpectUntouched(ChangeSize);
    }
}

TEST_F(Size, AnAbsurdLengthFailsWithNothingChanged) {
    Stereo(1000);
    for (const char* Text : {"1e300", "99999999999", "2147483647"}) {
        Questions.Entry = {true, Text};
        ExpectUntouched([] { EXPECT_THROW(ChangeSize(), Failure); });
    }
}

TEST_F(Size, AsksTheDiskForWhatIsAdded) {
    TmpDir0 = Session.Path("nowhere");
    Stereo(1000);
    Questions.Entry = {true, "1010"};
    ExpectUntouched(ChangeSize);
    Mono(1000);
    ExpectUntouched(ChangeSize);
    Questions.Entry = {true, "990"};
    ChangeSize();
    EXPECT_EQ(WaveStore->WavWaveINos, 990);
    EXPECT_THAT(Questions.Needs, ::testing::ElementsAre(40, 20));
}

} // namespace
} // namespace quoril::test
