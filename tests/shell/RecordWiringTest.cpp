#include "shell/RecordWiring.h"

#include "gui/WindowFixture.h"
#include "recording/ScriptedCapture.h"
#include "settings/STD1.h"
#include "shell/WithDialog.h"
#include "view/SelConfFrm.h"

#include <QAction>

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
        Press(Dialog, "Done_Btn");
        EXPECT_FALSE(Dialog->isVisible());
    });
    Window->Entry("Record_Mnu")->trigger();
    EXPECT_TRUE(Came);
    EXPECT_TRUE(Window->isVisible());
    EXPECT_FALSE(Commands->HoldsTake());
    EXPECT_EQ(WaveStore->WavWaveINos, 1000 + 5 * 2205);
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
