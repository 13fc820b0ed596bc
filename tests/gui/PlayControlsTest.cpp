// The play controls in the main window: buttons, keys, cursors, labels and the speed panel, with a
// player that writes down what it is told.
#include "WindowFixture.h"

#include "base/Arithmetic.h"
#include "playback/PlaySpeed.h"
#include "playback/PlaybackDoubles.h"
#include "settings/STD1.h"
#include "settings/UserGuideMod.h"
#include "shell/CommandWiring.h"
#include "shell/PlayControls.h"
#include "view/ReadOutLabel.h"
#include "view/SpeedBox.h"
#include "view/WavePanel.h"

#include <QLabel>
#include <QSlider>
#include <QTest>
#include <QTimer>
#include <QToolButton>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PlayControlsTest : public WindowTest {
  protected:
    PlayControlsTest() {
        GuideChanceFix(0.9); // no tips
        SoundDriverState = 1;
        TempoFor = TempoRev = 1.0F;
        LoopOn = false;
        PlayChannels = 0;
        DsPlayer = std::make_unique<DsPlayClass>(
            [this] { return std::make_unique<PlayerDouble>(Player); });
        Controls = std::make_unique<PlayControls>(*Window);
        Player.Calls.clear();
        Document(10000, 2, 8000);
        Show();
    }
    ~PlayControlsTest() override {
        Controls.reset();
        DsPlayer.reset();
        PlayBuffL.reset();
        PlayBuffR.reset();
    }
    [[nodiscard]] QToolButton* Button(const char* Key) const {
        return Window->ToolButton("PlayToolbar", Key);
    }
    void Click(const char* Key) const { QTest::mouseClick(Button(Key), Qt::LeftButton); }
    void Press(Qt::Key Key) const { QTest::keyClick(Window.get(), Key); }
    /// What the player was told, without the speeds that precede every command.
    Lines TakeActs() {
        Lines Acts = std::exchange(Player.Calls, {});
        std::erase_if(Acts, [](const std::string& Call) { return Call.starts_with("Tempo"); });
        return Acts;
    }
    [[nodiscard]] QTimer* Timer() const {
        return Controls->findChild<QTimer*>(QStringLiteral("PlayPosTimer"));
    }
    [[nodiscard]] std::string PosLbl() const { return Window->PlayPosLbl->text().toStdString(); }
    [[nodiscard]] SpeedBox* Box() const {
        return Window->findChild<SpeedBox*>(QStringLiteral("SpeedBoxPic"));
    }

    PlayerDouble::Answers Player;
    std::unique_ptr<PlayControls> Controls;
};

TEST_F(PlayControlsTest, BeforeTheFirstPlayOnlyWhatStartsFromTheSelectionCanBeUsed) {
    for (const char* Key : {"PlayNew", "PlayNewRev", "Loop"})
        EXPECT_TRUE(Button(Key)->isEnabled()) << Key;
    for (const char* Key : {"Play", "PlayRev", "Pause", "Stop", "UTurn"})
        EXPECT_FALSE(Button(Key)->isEnabled()) << Key;
    Click("PlayNew");
    for (const char* Key : {"PlayNew", "PlayNewRev", "Play", "PlayRev", "Pause", "Stop", "UTurn"})
        EXPECT_TRUE(Button(Key)->isEnabled()) << Key;
}

TEST_F(PlayControlsTest, EachButtonIsItsCommand) {
    SelStart = 1001;
    SelEnd = 2000;
    Click("PlayNew");
    EXPECT_THAT(TakeActs(), ElementsAre("Load 16 2 8000 1000", "PlayForward"));
    EXPECT_EQ(PlaySelStart, 1001);
    Click("PlayNewRev");
    EXPECT_THAT(TakeActs(), ElementsAre("Load 16 2 8000 1000", "PlayReverse"));
    PlaySelEnd = 3000;
    PlayChannels = 0;
    Click("Play");
    EXPECT_THAT(TakeActs(), ElementsAre("Load 16 2 8000 2000", "PlayForward"));
    PlayChannels = 0;
    Click("PlayRev");
    EXPECT_THAT(TakeActs(), ElementsAre("Load 16 2 8000 2000", "PlayReverse"));
    Click("UTurn");
    EXPECT_THAT(TakeActs(), ElementsAre("UTurn"));
    Click("Pause");
    EXPECT_THAT(TakeActs(), ElementsAre("PauseStart", "Pause"));
    Click("Stop");
    EXPECT_THAT(TakeActs(), ElementsAre("Stop"));
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(PlayControlsTest, PauseSaysWhatItWillDoAndIsDisabledWhenNothingPlays) {
    Click("PlayNew");
    EXPECT_TRUE(Timer()->isActive());
    EXPECT_EQ(Button("Pause")->toolTip(), QStringLiteral("Pause"));
    Click("Pause");
    EXPECT_EQ(Button("Pause")->toolTip(), QStringLiteral("Continue"));
    EXPECT_EQ(Button("Pause")->accessibleName(), QStringLiteral("Continue"));
    EXPECT_TRUE(Timer()->isActive());
    Click("Pause");
    EXPECT_EQ(Button("Pause")->toolTip(), QStringLiteral("Pause"));
    EXPECT_TRUE(Button("Pause")->isEnabled());
    Click("Stop");
    EXPECT_FALSE(Button("Pause")->isEnabled());
    EXPECT_EQ(Button("Pause")->toolTip(), QStringLiteral("Pause"));
    EXPECT_TRUE(Button("Play")->isEnabled()) << "the others stay";
}

TEST_F(PlayControlsTest, WhenThePlayerEndsTheWindowSaysSoAndPlayStartsItAnew) {
    Click("PlayNew");
    Player.Now->MsgBoxOb("S2", "Playing");
    EXPECT_EQ(Window->PlayStatusLbl->text(), QStringLiteral("Playing"));
    Player.FailingCall = "PlayStatus";
    ASSERT_TRUE(QTest::qWaitFor([this] { return !Timer()->isActive(); }));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Play failed|The player does not answer"));
    EXPECT_EQ(Window->PlayStatusLbl->text(), QString());
    EXPECT_EQ(PosLbl(), "");
    for (const char* Key : {"Pause", "Stop", "UTurn"})
        EXPECT_FALSE(Button(Key)->isEnabled()) << Key;
    for (const char* Key : {"PlayNew", "PlayNewRev", "Play", "PlayRev"})
        EXPECT_TRUE(Button(Key)->isEnabled()) << Key;
    Player.FailingCall.clear();
    Player.Status = 0;
    Click("Play");
    for (const char* Key : {"Pause", "Stop", "UTurn", "Play", "PlayRev"})
        EXPECT_TRUE(Button(Key)->isEnabled()) << Key;
    EXPECT_EQ(Player.Calls.back(), "PlayForward");
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(PlayControlsTest, LoopIsTheStateOfItsButton) {
    Click("Loop");
    EXPECT_TRUE(LoopOn);
    EXPECT_EQ(IniGet("Setting", "LoopOn", ""), "1");
    EXPECT_THAT(TakeActs(), ElementsAre("Loop true"));
    Click("Loop");
    EXPECT_FALSE(LoopOn);
    EXPECT_EQ(IniGet("Setting", "LoopOn", ""), "0");
    EXPECT_THAT(TakeActs(), ElementsAre("Loop false"));
    LoopOn = true;
    SetLoopONOFF();
    EXPECT_TRUE(Button("Loop")->isChecked());
}

TEST_F(PlayControlsTest, WithTheDriverOffEveryCommandSaysWhereToPutItOn) {
    SoundDriverState = 0;
    Click("PlayNew");
    Press(Qt::Key_Space);
    Press(Qt::Key_QuoteLeft);
    Press(Qt::Key_U);
    const std::string Told =
        "Play failed|Put ON the Sound driver in Options box (Tools-Options menu) to play";
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(Told, Told, Told, Told));
    EXPECT_THAT(Player.Calls, IsEmpty());
}

TEST_F(PlayControlsTest, SpaceBackquoteAndUAreKeysOfThePlayControls) {
    Press(Qt::Key_QuoteLeft);
    EXPECT_THAT(TakeActs(), ElementsAre("Load 16 2 8000 10000", "PlayForward"));
    Press(Qt::Key_U);
    EXPECT_THAT(TakeActs(), ElementsAre("UTurn"));
    Press(Qt::Key_Space);
    EXPECT_THAT(TakeActs(), ElementsAre("Stop"));
    PlayChannels = 0;
    Press(Qt::Key_Space);
    EXPECT_THAT(TakeActs(), ElementsAre("Load 16 2 8000 10000", "PlayForward"));
    Player.Status = 3;
    Press(Qt::Key_Space);
    EXPECT_THAT(TakeActs(), ElementsAre("Stop")) << "what is paused is stopped, too";
}

TEST_F(PlayControlsTest, BookmarkKeysActOnTheLastBookmarkAndSayWhenTheyCannot) {
    const std::string OnlyWhilePlaying =
        "These hot keys \\ [  ] = and backspace work only while playing\nfor bookmarking";
    for (const Qt::Key Key : {Qt::Key_Backslash, Qt::Key_BracketLeft, Qt::Key_BracketRight,
                              Qt::Key_Backspace, Qt::Key_Equal}) {
        Press(Key);
        EXPECT_THAT(Messages.TakeTexts(), ElementsAre(OnlyWhilePlaying)) << Key;
        EXPECT_EQ(BookmarkNos(), 0);
    }
    Click("PlayNew");
    Player.Position = 99;
    Press(Qt::Key_Backslash);
    ASSERT_EQ(BookmarkNos(), 1);
    EXPECT_EQ(Bookmarks[1].From, 100);
    EXPECT_EQ(Bookmarks[1].BokType, BokPoint);
    Player.Position = 199;
    Press(Qt::Key_BracketRight);
    EXPECT_EQ(Bookmarks[1].To, 200);
    Player.Position = 149;
    Press(Qt::Key_BracketLeft);
    EXPECT_EQ(Bookmarks[1].From, 150);
    Press(Qt::Key_Backspace);
    EXPECT_EQ(Bookmarks[1].BokType, BokPoint);
    Press(Qt::Key_Backspace);
    EXPECT_EQ(BookmarkNos(), 0);
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(PlayControlsTest, CursorAndLabelFollowTheSoundAndGoWithIt) {
    ViewAll = false;
    ViewFrom = 1;
    ViewTotal = 10000;
    Window->Refresh_Wave_View();
    Click("PlayNew");
    Player.Position = 5000;
    PlayPosTimerFired();
    const int X = RoundToLong(5000 * PixelsPerSample);
    EXPECT_EQ(Window->Wave_Pic[1]->PlayPosShp->X(), X);
    EXPECT_EQ(Window->Wave_Pic[2]->PlayPosShp->X(), X);
    EXPECT_TRUE(QString::fromStdString(PosLbl()).endsWith(QStringLiteral("/5001"))) << PosLbl();
    PlayWorkChn = 2;
    Player.Position = 12345; // a little more than there is
    PlayPosTimerFired();
    EXPECT_EQ(Window->Wave_Pic[1]->PlayPosShp->X(), -2);
    EXPECT_GT(Window->Wave_Pic[2]->PlayPosShp->X(), X);
    EXPECT_TRUE(QString::fromStdString(PosLbl()).endsWith(QStringLiteral("/10000"))) << PosLbl();
    Player.Status = 0;
    PlayPosTimerFired();
    EXPECT_FALSE(Timer()->isActive());
    EXPECT_EQ(Window->Wave_Pic[2]->PlayPosShp->X(), -2);
    EXPECT_EQ(PosLbl(), "");
}

TEST_F(PlayControlsTest, ThePositionIsAskedForEveryFortyMilliseconds) {
    EXPECT_EQ(Timer()->interval(), 40);
    Click("PlayNew");
    Player.Position = 700;
    EXPECT_TRUE(QTest::qWaitFor([this] { return !PosLbl().empty(); }));
}

TEST_F(PlayControlsTest, AStatusTextStandsInItsLabel) {
    Player.Now->MsgBoxOb("S2", "Playing");
    EXPECT_EQ(Window->PlayStatusLbl->text(), QStringLiteral("Playing"));
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(PlayControlsTest, AnotherDocumentEndsTheSoundAndSavingDoesNot) {
    FileCommandsWindow Files(*Window);
    Click("PlayNew");
    TakeActs();
    Files.ReleasePlayingFiles(true);
    EXPECT_THAT(TakeActs(), IsEmpty()) << "the snapshot is in work files alone";
    EXPECT_TRUE(Button("Pause")->isEnabled());
    Files.ReleasePlayingFiles(false);
    EXPECT_THAT(TakeActs(), ElementsAre("Stop", "ReleaseFiles"));
    EXPECT_FALSE(Button("Pause")->isEnabled());
}

// ---- The speed panel

class SpeedPanelTest : public PlayControlsTest {
  protected:
    [[nodiscard]] QSlider* Slider(int Index) const {
        return Window->findChild<QSlider*>(QStringLiteral("PlaySpeedSlider_%1").arg(Index));
    }
    [[nodiscard]] std::string Label(std::size_t Index) const {
        return Window->SpeedDispLbl.at(Index)->text().toStdString();
    }
};

TEST_F(SpeedPanelTest, TheMenuThePictureAndTheLabelsOpenItAndTheCrossAndEscCloseIt) {
    EXPECT_FALSE(Box()->isVisible());
    TempoFor = 1.4F;
    TempoRev = 0.3F;
    Window->Entry("SoundTmpoMnu")->trigger();
    ASSERT_TRUE(Box()->isVisible());
    EXPECT_EQ(Slider(1)->value(), -4);
    EXPECT_EQ(Slider(2)->value(), 7);
    EXPECT_THAT(TakeActs(), IsEmpty()) << "opening changes nothing";
    QTest::mouseClick(Find<QToolButton>("SpeedCloseBtn"), Qt::LeftButton);
    EXPECT_FALSE(Box()->isVisible());
    for (QWidget* Place : {static_cast<QWidget*>(Window->SpeedDispPic),
                           static_cast<QWidget*>(Window->SpeedDispLbl[1]),
                           static_cast<QWidget*>(Window->SpeedDispLbl[2])}) {
        QTest::mouseClick(Place, Qt::LeftButton);
        EXPECT_TRUE(Box()->isVisible()) << qPrintable(Place->objectName());
        QTest::keyClick(Slider(1), Qt::Key_Escape);
        EXPECT_FALSE(Box()->isVisible());
    }
}

TEST_F(SpeedPanelTest, SlidersGoFromTwiceTheSpeedToATenthAndShowWholePercents) {
    PlaySpeedShow();
    for (const int Index : {1, 2}) {
        QSlider* const S = Slider(Index);
        EXPECT_EQ(S->orientation(), Qt::Vertical);
        EXPECT_EQ(S->minimum(), -10);
        EXPECT_EQ(S->maximum(), 9);
        const float& Tempo = Index == 1 ? TempoFor : TempoRev;
        S->setValue(-10);
        EXPECT_EQ(Tempo, 2.0F);
        EXPECT_EQ(Label(static_cast<std::size_t>(Index)), "200%");
        EXPECT_EQ(S->toolTip(), QStringLiteral("200%"));
        S->setValue(1000); // as far as it goes
        EXPECT_EQ(Tempo, 0.1F);
        EXPECT_EQ(Label(static_cast<std::size_t>(Index)), "10%");
        S->setValue(3);
        EXPECT_EQ(Tempo, 0.7F);
        EXPECT_EQ(Label(static_cast<std::size_t>(Index)), "70%");
        S->setValue(0);
    }
}

TEST_F(SpeedPanelTest, WhatPlaysTakesTheSpeedOnByPauseAndContinue) {
    Click("PlayNew");
    PlaySpeedShow();
    Player.Calls.clear();
    Slider(1)->setValue(5);
    EXPECT_THAT(Player.Calls,
                ElementsAre("TempoForward 0.5", "TempoReverse 1", "PauseStart", "Pause",
                            "TempoForward 0.5", "TempoReverse 1", "Continue"));
    EXPECT_EQ(Button("Pause")->toolTip(), QStringLiteral("Pause"));
}

TEST_F(SpeedPanelTest, PlainSoundHasNoPanel) {
    SoundDriverState = 2;
    Window->Entry("SoundTmpoMnu")->trigger();
    EXPECT_FALSE(Box()->isVisible());
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("You need to install directX7 or higher for this"));
}

TEST_F(SpeedPanelTest, ItLiesUnderTheToolbarAndForStereoClearOfTheScale) {
    PlaySpeedShow();
    QWidget* const Around = Box()->parentWidget();
    const auto Place = [&](const QWidget* Part) {
        return QRect(Part->mapTo(Around, QPoint()), Part->size());
    };
    EXPECT_GT(Box()->geometry().top(), Place(Window->TopFrame).bottom());
    const QRect Shown = Box()->geometry();
    const QRect Scale = Place(Window->ScalePic);
    EXPECT_FALSE(Shown.intersects(Scale))
        << Shown.top() << " to " << Shown.bottom() << ", the scale " << Scale.top() << " to "
        << Scale.bottom();
    EXPECT_TRUE(Around->rect().contains(Box()->geometry()));
    Document(10000, 1, 8000);
    Window->Refresh_Wave_View();
    QApplication::processEvents();
    PlaySpeedShow();
    EXPECT_LT(Box()->geometry().top(), Place(Window->TopFrame).bottom() + 20)
        << "right under the toolbar";
}

} // namespace
} // namespace quoril::test
