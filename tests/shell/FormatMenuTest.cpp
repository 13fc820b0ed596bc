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
