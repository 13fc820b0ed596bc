#include "shell/RecordWiring.h"

#include "gui/WindowFixture.h"
#include "playback/PlaybackDoubles.h"
#include "recording/ScriptedCapture.h"
#include "settings/STD1.h"
#include "shell/WithDialog.h"
#include "view/SelConfFrm.h"

#include <QAction>
#include <QCheckBox>

namespace quoril::test {
namespace {

class RecordWiringTest : public WindowTest {
  protected:
    RecordWiringTest() {
        WaveStore->WavFmtFreq = 22050;
        Commands = std::make_unique<RecordCommands>(
            *Window, RecordSurroundings{Dx7, Api, [] { return true; }});
        WireRecordCommands(*Window, *Commands);
        Window->RefreshCommands();
        Show();
    }
    ScriptedCapture Dx7;
    ScriptedCapture Api;
    std::unique_ptr<RecordCommands> Commands;
};

TEST_F(RecordWiringTest, TheMenuOpensTheWindowInPlaceOfTheMainWindow) {
    SelStart = SelEnd = 1;
    bool Came = false;
    const WithDialog Act([&](QWidget* Dialog) {
        Came = true;
        EXPECT_EQ(Dialog->objectName(), "Recd_Frm");
        EXPECT_FALSE(Window->isVisible());
        EXPECT_FALSE(Commands->HoldsTake());
        Press(Dialog, "Start_Btn_0");
        EXPECT_TRUE(Commands->HoldsTake());
        Dx7.Deliver(5, 0x10);
        Press(Dialog, "Start_Btn_2");
        EXPECT_TRUE(Commands->HoldsTake());
        ViewFrom = 1000000;
        Press(Dialog, "Done_Btn");
        EXPECT_FALSE(Dialog->isVisible());
    });
    Window->Entry("Record_Mnu")->trigger();
    EXPECT_TRUE(Came);
    EXPECT_TRUE(Window->isVisible());
    EXPECT_FALSE(Commands->HoldsTake());
    EXPECT_EQ(WaveStore->WavWaveINos, 1000 + 5 * 2205);
    EXPECT_LE(ViewFrom, WaveStore->WavWaveINos) << "the view was drawn anew";
}

TEST_F(RecordWiringTest, WhatPlaysIsStoppedBeforeTheWindowComes) {
    SelStart = SelEnd = 1;
    PlayerDouble::Answers Player;
    DsPlayer =
        std::make_unique<DsPlayClass>([&Player] { return std::make_unique<PlayerDouble>(Player); });
    SoundDriverState = 1; // the sound server
    Player.Status = 1;
    const WithDialog Act([&](QWidget* Dialog) {
        EXPECT_EQ(Player.Status, 0);
        Press(Dialog, "Cancel_Btn");
    });
    Window->Entry("Record_Mnu")->trigger();
    EXPECT_THAT(Player.Calls, ::testing::Contains("Stop"));
    Player.Calls.clear();
    {
        const WithDialog Again([](QWidget* Dialog) { Press(Dialog, "Cancel_Btn"); });
        Window->Entry("Record_Mnu")->trigger();
    }
    EXPECT_THAT(Player.Calls, ::testing::IsEmpty()) << "nothing plays";
    DsPlayer.reset();
}

TEST_F(RecordWiringTest, TheChoicesOfTheLastTimeAreThere) {
    SelStart = SelEnd = 1;
    IniPut("Record", "StopIfSilentfor", "1");
    const WithDialog Act([](QWidget* Dialog) {
        EXPECT_TRUE(Part<QCheckBox>(Dialog, "StopIfSilenChk")->isChecked());
        Press(Dialog, "Cancel_Btn");
    });
    Window->Entry("Record_Mnu")->trigger();
}

TEST_F(RecordWiringTest, ASecondCommandOpensNoSecondWindow) {
    SelStart = SelEnd = 1;
    const WithDialog Act([this](QWidget* Dialog) {
        Commands->Record();
        EXPECT_EQ(Dx7.Log, std::vector<std::string>{"open 0"});
        Press(Dialog, "Cancel_Btn");
    });
    Window->Entry("Record_Mnu")->trigger();
}

TEST_F(RecordWiringTest, TheEndOfTheProgramTakesTheWindowDown) {
    SelStart = SelEnd = 1;
    const WithDialog Act([&](QWidget* Dialog) {
        Press(Dialog, "Start_Btn_0");
        Dx7.Deliver(5, 0x10);
        Commands->TakeDown();
        EXPECT_FALSE(Dialog->isVisible());
        EXPECT_EQ(Dx7.OpenNow, 0);
        EXPECT_FALSE(Window->isVisible()) << "the main window does not come back";
        EXPECT_EQ(TestSession::SessionFiles().size(), 0U);
        EXPECT_EQ(IniGet("Record", "RecordTime", ""), "300") << "the choices are kept";
    });
    Window->Entry("Record_Mnu")->trigger();
    EXPECT_EQ(WaveStore->WavWaveINos, 1000);
}

TEST_F(RecordWiringTest, WithoutAPlaceNoWindowComes) {
    SelStart = SelEnd = 0;
    const SelConfAsker Questions;
    const WithDialog Act([](QWidget* Dialog) {
        EXPECT_EQ(Dialog->objectName(), "SelConfFrm");
        Press(Dialog, "CancelBtn");
    });
    Window->Entry("Record_Mnu")->trigger();
    EXPECT_TRUE(Window->isVisible());
    EXPECT_TRUE(Dx7.Log.empty());
}

} // namespace
} // namespace quoril::test
