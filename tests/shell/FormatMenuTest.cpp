// The format changed from the menu of the real window: marks, status bar, panels, what is saved,
// and what a new document takes.
#include "base/ViewState.h"
#include "bookmarks/BookmarkRec.h"
#include "shell/EditorFixture.h"
#include "shell/MessageBoxes.h"
#include "shell/WithDialog.h"
#include "storage/FileMemoClass.h"
#include "storage/StorageChecks.h"
#include "storage/UndoListener.h"
#include "view/WavePanel.h"

#include <QAction>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <iterator>

namespace quoril::test {
namespace {

class FormatMenuTest : public EditorFixture {
  protected:
    using Samples = std::vector<std::int16_t>;

    void Open(std::uint32_t Channels) {
        Start(WriteWav("a.wav", 1000, Channels));
        ASSERT_EQ(WaveStore->WavWaveINos, 1000);
    }
    /// The marked entries of the Format menu, in their order on the screen.
    [[nodiscard]] QStringList Marks() const {
        QStringList Marked;
        for (const QAction* Action : Window().findChildren<QAction*>())
            if (Action->objectName().startsWith(QLatin1String("Format_")) && Action->isChecked())
                Marked << Action->text().remove('&');
        return Marked;
    }
    [[nodiscard]] std::string Status() const {
        return Part<QLabel>(&Window(), "StatusBar1_Format")->text().toStdString();
    }
    using PlainChannels = std::pair<Samples, Samples>;
    static PlainChannels Channels() {
        return {ChannelSamples(*WaveStore, 1), ChannelSamples(*WaveStore, 2)};
    }
    void MonoBy(const char* Option) {
        const WithDialog Act([Option](QWidget* Dialog) {
            Part<QRadioButton>(Dialog, Option)->click();
            Press(Dialog, "OkBtn");
        });
        Menu("Format_Channel_Mono_Menu");
    }
    /// The bytes of the file that Save writes now.
    std::string Saved() {
        Menu("Save_Mnu_0");
        std::ifstream In(Music() + "/a.wav", std::ios::binary);
        return {std::istreambuf_iterator<char>(In), {}};
    }
};

TEST_F(FormatMenuTest, MarksAndStatusBarFollowTheBitsAndTheirUndo) {
    Open(2);
    const Samples Old = ChannelSamples(*WaveStore, 1);
    EXPECT_EQ(Marks(), (QStringList{"Stereo", "16 Bit", "11025 Hz"}));
    Menu("Format_Bit_Menu_0");
    EXPECT_EQ(Marks(), (QStringList{"Stereo", "8 Bit", "11025 Hz"}));
    EXPECT_EQ(Status(), "11025Hz, 8bits");
    EXPECT_EQ(Window().Entry("Undo_Mnu_1")->text().remove('&'), "Undo [8 bits]");
    Menu("Format_Bit_Menu_1");
    EXPECT_EQ(Marks(), (QStringList{"Stereo", "16 Bit", "11025 Hz"}));
    EXPECT_NE(ChannelSamples(*WaveStore, 1), Old); // what 8 bits could not hold is gone
    Menu("Undo_Mnu_1");
    EXPECT_EQ(Status(), "11025Hz, 8bits");
    EXPECT_EQ(Marks(), (QStringList{"Stereo", "8 Bit", "11025 Hz"}));
    Menu("Undo_Mnu_1");
    EXPECT_EQ(Status(), "11025Hz, 16bits");
    EXPECT_EQ(Marks(), (QStringList{"Stereo", "16 Bit", "11025 Hz"}));
    EXPECT_EQ(ChannelSamples(*WaveStore, 1), Old);
    EXPECT_FALSE(Window().Entry("Undo_Mnu_1")->isEnabled());
}

TEST_F(FormatMenuTest, ThePanelOfTheRightChannelGoesAndComesBack) {
    Open(2);
    const Samples R = ChannelSamples(*WaveStore, 2);
    SelBoth = false;
    SelSingle = 2;
    EXPECT_FALSE(Window().Wave_Pic[2]->isHidden());
    EXPECT_TRUE(Window().Entry("Interchange_Mnu")->isEnabled());
    EXPECT_TRUE(Window().Entry("SelectBoth_Mnu")->isEnabled());
    MonoBy("MonoOpn_1");
    EXPECT_EQ(ChannelSamples(*WaveStore, 1), R);
    EXPECT_EQ(ChannelSamples(*WaveStore, 2), Samples{});
    EXPECT_EQ(Marks(), (QStringList{"Mono", "16 Bit", "11025 Hz"}));
    EXPECT_TRUE(Window().Wave_Pic[2]->isHidden());
    EXPECT_FALSE(Window().Entry("Interchange_Mnu")->isEnabled());
    EXPECT_FALSE(Window().Entry("SelectBoth_Mnu")->isEnabled());
    // The channel that was worked on is gone; commands work on the one that there is.
    SelStart = 1;
    SelEnd = 1000;
    Menu("Wave_Reverse_Mnu");
    EXPECT_EQ(ChannelSamples(*WaveStore, 1), Samples(R.rbegin(), R.rend()));
    Menu("Undo_Mnu_1");
    Menu("Format_Channel_Stereo_Menu");
    EXPECT_EQ(ChannelSamples(*WaveStore, 2), R);
    EXPECT_FALSE(Window().Wave_Pic[2]->isHidden());
    Menu("Undo_Mnu_1");
    EXPECT_TRUE(Window().Wave_Pic[2]->isHidden());
    Menu("Undo_Mnu_1");
    EXPECT_EQ(Marks(), (QStringList{"Stereo", "16 Bit", "11025 Hz"}));
    EXPECT_FALSE(Window().Wave_Pic[2]->isHidden());
    EXPECT_TRUE(Window().Entry("Interchange_Mnu")->isEnabled());
    EXPECT_EQ(ChannelSamples(*WaveStore, 2), R);
    EXPECT_FALSE(WaveStore->UndoMenu().Enabled);
}

TEST_F(FormatMenuTest, MarksAndStatusBarFollowTheRateAndItsUndo) {
    Open(2);
    const Samples Old = ChannelSamples(*WaveStore, 1);
    QAction* Custom = Window().Entry("Format_FrQ_Menu_9");
    EXPECT_FALSE(Custom->isEnabled());
    Menu("Format_FrQ_Menu_1");
    EXPECT_EQ(Marks(), (QStringList{"Stereo", "16 Bit", "22050 Hz"}));
    EXPECT_EQ(Status(), "22050Hz, 16bits");
    EXPECT_EQ(WaveStore->WavWaveINos, 2000); // 1999 places, half a sample apart, and the silent one
    Messages->AnswerInput("5000");
    Menu("Format_FrQ_Menu_10");
    EXPECT_EQ(Marks(), (QStringList{"Stereo", "16 Bit", "5000 Hz"}));
    EXPECT_EQ(Custom->text(), "5000 Hz");
    EXPECT_TRUE(Custom->isEnabled());
    const std::int32_t Records = WaveStore->UndoCount();
    Menu("Format_FrQ_Menu_9");
    EXPECT_EQ(WaveStore->UndoCount(), Records);
    Menu("Undo_Mnu_1");
    EXPECT_EQ(Custom->text(), "Custom Hz");
    EXPECT_FALSE(Custom->isEnabled());
    EXPECT_EQ(Marks(), (QStringList{"Stereo", "16 Bit", "22050 Hz"}));
    Menu("Undo_Mnu_1");
    EXPECT_EQ(Marks(), (QStringList{"Stereo", "16 Bit", "11025 Hz"}));
    EXPECT_EQ(Status(), "11025Hz, 16bits");
    EXPECT_EQ(ChannelSamples(*WaveStore, 1), Old);
    EXPECT_THAT(
        Messages->TakeTexts(),
        ::testing::ElementsAre("Changing Sampling rate (Frequency format)|"
                               "Do you wish to Change Sampling rate?",
                               "Sampling rate|Enter other (not standard) sampling rate Hz"));
}

TEST_F(FormatMenuTest, WhatLiesBehindTheEndOfTheNewRateIsLimitedAndUndoBringsItBack) {
    Open(2);
    BookmarkAppend({"late", "", BokRange, 700, 900, false});
    SelStart = 600;
    SelEnd = 800;
    PlaySelStart = 900;
    PlaySelEnd = 950;
    ViewAll = false;
    ViewFrom = 801;
    ViewTotal = 200;
    Window().Refresh_Wave_View();
    Menu("Format_FrQ_Menu_3"); // 8000 Hz: 726 samples
    const std::int32_t Total = WaveStore->WavWaveINos;
    EXPECT_EQ(Total, 726);
    EXPECT_LE(SelEnd, Total);
    EXPECT_EQ(PlaySelStart, 0);
    EXPECT_EQ(ViewFrom, Total - 200 + 1);
    EXPECT_EQ(Bookmarks.at(1).From, 700); // and it means the last sample where it is used
    EXPECT_EQ(Bookmarks.at(1).To, 900);
    Menu("Undo_Mnu_1");
    EXPECT_EQ(SelStart, 600);
    EXPECT_EQ(SelEnd, 800);
    EXPECT_EQ(ViewFrom, 801);
    EXPECT_EQ(ViewTotal, 200);
}

TEST_F(FormatMenuTest, AfterARateFarBelowTheRangeEveryLaterCommandWorks) {
    Start(WriteWav("a.wav", 60000, 2));
    Messages->AnswerInput("500");
    Menu("Format_FrQ_Menu_10");
    EXPECT_THAT(Messages->TakeTexts(),
                ::testing::ElementsAre(
                    "Sampling rate|Enter other (not standard) sampling rate Hz",
                    "Change Sampling rate - failed|Invalid entry\n(Valid range - 1000 ~ 200000)"));
    ASSERT_EQ(WaveStore->WavFmtFreq, 500);
    ASSERT_GT(WaveStore->WavWaveINos, 2700);
    EXPECT_EQ(Status(), "500Hz, 16bits");
    EXPECT_EQ(Part<QLabel>(&Window(), "StatusBar1_Size")->text(), "Samples 2723, Duration 05.45");
    for (const char* View : {"Zoom_Mnu_2", "Zoom_Mnu_3", "Zoom_Mnu_4", "ViewAll_Mnu",
                             "DisplayToggleMnu_0", "DisplayToggleMnu_1", "SelectAll_Mnu"})
        Menu(View);
    const std::int32_t Records = WaveStore->UndoCount();
    const PlainChannels Before = Channels();
    int Steps = 0;
    const auto Step = [&](const char* Entry, const std::string& Name) {
        Menu("SelectAll_Mnu");
        Menu(Entry);
        EXPECT_EQ(WaveStore->UndoMenu().Caption, "Undo [" + Name + "]");
        ++Steps;
    };
    Step("Edit_AdjVol_Mnu_16", "Chg. Vol. 50%");
    Step("Wave_Reverse_Mnu", "Reverse");
    Menu("SelectAll_Mnu");
    Menu("EffectNoisReduMnu_0");
    Step("EffectNoisReduMnu_1", "Filter Noise");
    for (const auto& [Entry, Name] : {std::pair("Equalize_Mnu_0", "Equalize"),
                                      std::pair("Equalize_Mnu_1", "Band Pass Filter")}) {
        const WithDialog Act([](QWidget* Dialog) { Press(Dialog, "OK_Btn"); });
        Step(Entry, Name);
    }
    Step("Insert_Silence_Mnu", "Insert Silence");
    Step("Format_Bit_Menu_0", "8 bits");
    Step("Format_FrQ_Menu_0", "11025 Hz");
    EXPECT_EQ(Saved().size(), 44U + 2U * static_cast<unsigned>(WaveStore->WavWaveINos));
    for (; Steps > 0; --Steps)
        Menu("Undo_Mnu_1");
    EXPECT_EQ(WaveStore->UndoCount(), Records);
    EXPECT_TRUE(Channels() == Before);
    const std::string Bytes = Saved();
    EXPECT_EQ(static_cast<unsigned char>(Bytes[24]) + 256 * Bytes[25], 500);
    Menu("New_Mnu"); // as long as the shortest new sound
    EXPECT_EQ(WaveStore->WavFmtFreq, 500);
    EXPECT_EQ(WaveStore->WavWaveINos, 10000);
    for (const std::string& Text : Messages->TakeTexts())
        EXPECT_THAT(Text, ::testing::HasSubstr("Do you wish")); // and nothing failed
}

TEST_F(FormatMenuTest, WhatIsSavedHasTheNewFormatAndAfterUndoTheOldOne) {
    Open(2);
    const std::string Original = Saved();
    Menu("Format_Bit_Menu_0");
    MonoBy("MonoOpn_0");
    const std::string Narrow = Saved();
    ASSERT_EQ(Narrow.size(), 44U + 1000U);
    EXPECT_EQ(Narrow[22], 1); // channels
    EXPECT_EQ(Narrow[34], 8); // bits
    // Sample 900 is 900: 3.5 steps of 256, and 4 is even.
    EXPECT_EQ(static_cast<unsigned char>(Narrow[44 + 900]), 132);
    EXPECT_EQ(static_cast<unsigned char>(Narrow[44 + 639]), 130);
    Menu("Undo_Mnu_1");
    Menu("Undo_Mnu_1");
    EXPECT_EQ(Saved(), Original);
    EXPECT_THAT(Messages->TakeTexts(),
                ::testing::ElementsAre("Changing Bit format|Do you wish to Change Bit format?"));
}

TEST_F(FormatMenuTest, ANewDocumentTakesTheFormatThatWasChosenLast) {
    Open(2);
    Menu("Format_Bit_Menu_0");
    MonoBy("MonoOpn_2");
    WaveChanged = false;
    Menu("New_Mnu");
    EXPECT_EQ(WaveStore->WavFmtBits, 8);
    EXPECT_EQ(WaveStore->WavFmtChannel, 1);
    EXPECT_EQ(WaveStore->WavFmtFreq, 11025);
    EXPECT_EQ(Marks(), (QStringList{"Mono", "8 Bit", "11025 Hz"}));
}

TEST_F(FormatMenuTest, SelectionViewAndBookmarksKeepTheirSamples) {
    Open(2);
    BookmarkAppend({"range", "", BokRange, 251, 350, false});
    BookmarkChanged = false;
    SelStart = 201;
    SelEnd = 400;
    PlaySelStart = 501;
    PlaySelEnd = 600;
    ViewAll = false;
    ViewFrom = 101;
    ViewTotal = 500;
    Window().Refresh_Wave_View();
    const auto Places = [] {
        return std::vector<std::int32_t>{
            SelStart, SelEnd,    PlaySelStart,         PlaySelEnd,
            ViewFrom, ViewTotal, Bookmarks.at(1).From, Bookmarks.at(1).To};
    };
    const std::vector<std::int32_t> Before = Places();
    Menu("Format_Bit_Menu_0");
    EXPECT_EQ(Places(), Before);
    MonoBy("MonoOpn_2");
    EXPECT_EQ(Places(), Before);
    Menu("Format_Channel_Stereo_Menu");
    EXPECT_EQ(Places(), Before);
    for (int Step = 0; Step < 3; ++Step)
        Menu("Undo_Mnu_1");
    EXPECT_EQ(Places(), Before);
    EXPECT_FALSE(BookmarkChanged);
}

TEST_F(FormatMenuTest, TheQuestionsAreAnsweredByKeys) {
    Open(1);
    MessageBoxesClass Real;
    const auto Ask = [this](const char* Entry, Qt::Key Key, QStringList Buttons) {
        const WithDialog Act([&](QWidget* Box) {
            ASSERT_TRUE(QTest::qWaitForWindowActive(Box));
            QStringList Shown;
            for (const auto* Each : Box->findChildren<QPushButton*>())
                Shown << Each->objectName();
            Shown.sort();
            EXPECT_EQ(Shown, Buttons);
            EXPECT_EQ(Box->focusWidget(), Part<QPushButton>(Box, "YesBtn"));
            QTest::keyClick(Box->focusWidget(), Key);
        });
        Menu(Entry);
    };
    const QStringList Three = {"CancelBtn", "NoBtn", "YesBtn"};
    const QStringList Two = {"NoBtn", "YesBtn"};
    for (const Qt::Key Key : {Qt::Key_Escape, Qt::Key_N}) {
        Ask("Format_Bit_Menu_0", Key, Three);
        Ask("Format_Channel_Stereo_Menu", Key, Two);
    }
    EXPECT_EQ(WaveStore->UndoCount(), 0);
    Ask("Format_Bit_Menu_0", Qt::Key_Return, Three);
    Ask("Format_Channel_Stereo_Menu", Qt::Key_Return, Two);
    EXPECT_EQ(Marks(), (QStringList{"Stereo", "8 Bit", "11025 Hz"}));
}

TEST_F(FormatMenuTest, AMarkedEntryDoesNothing) {
    Open(2);
    for (const char* Entry : {"Format_Channel_Stereo_Menu", "Format_Bit_Menu_1"})
        Menu(Entry);
    EXPECT_THAT(Messages->TakeTexts(), ::testing::IsEmpty());
    EXPECT_EQ(WaveStore->UndoCount(), 0);
    EXPECT_EQ(Marks(), (QStringList{"Stereo", "16 Bit", "11025 Hz"}));
}

} // namespace
} // namespace quoril::test
