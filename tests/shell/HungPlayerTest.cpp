// The whole program beside a player that does not answer.
#include "playback/PlaybackDoubles.h"
#include "shell/EditorFixture.h"
#include "shell/WithDialog.h"

#include <QAction>
#include <QCheckBox>
#include <QToolButton>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class HungPlayerTest : public EditorFixture {
  protected:
    HungPlayerTest() {
        Start();
        DsPlayer = std::make_unique<DsPlayClass>(
            [this] { return std::make_unique<PlayerDouble>(Player); });
        SoundDriverState = 1;
    }
    ~HungPlayerTest() override {
        Editor.reset(); // before the answers of its player
        SoundDriverState = 0;
        LoopOn = false;
    }
    PlayerDouble::Answers Player;
};

TEST_F(HungPlayerTest, TheOptionsAreTakenAllTheSame) {
    IniPut("Setting", "QuickPlay", "1");
    Player.FailingCall = "Loop";
    const WithDialog Options([](QWidget* Window) {
        Part<QCheckBox>(Window, "LoopPlay_Chk")->setChecked(true);
        Part<QCheckBox>(Window, "QuickPlay_Chk")->setChecked(false);
        Press(Window, "OkBtn");
    });
    Menu("Options_Mnu");
    EXPECT_THAT(Messages->TakeTexts(), ElementsAre("Play failed|The player does not answer"));
    EXPECT_EQ(DsPlayer->Dll, nullptr);
    EXPECT_EQ(IniGet("Setting", "LoopOn", ""), "1");
    EXPECT_EQ(IniGet("Setting", "QuickPlay", ""), "0");
}

TEST_F(HungPlayerTest, TheLoopButtonTellsItAsAnyPlayButtonDoes) {
    Player.FailingCall = "Loop";
    Window().ToolButton("PlayToolbar", "Loop")->click();
    EXPECT_THAT(Messages->TakeTexts(), ElementsAre("Play failed|The player does not answer"));
    EXPECT_EQ(DsPlayer->Dll, nullptr);
}

TEST_F(HungPlayerTest, TheProgramEndsWithoutABox) {
    Player.FailingCall = "Stop";
    Window().close();
    EXPECT_EQ(Exit, 1);
    EXPECT_THAT(Messages->TakeTexts(), IsEmpty());
}

} // namespace
} // namespace quoril::test
