#include "recording/VolumePanel.h"

#include "support/ScriptedMessages.h"
#include "support/TempFolder.h"

#include <chrono>
#include <gmock/gmock.h>
#include <thread>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;

class VolumePanelTest : public ::testing::Test {
  protected:
    [[nodiscard]] std::vector<std::string> Places() const {
        return {Folder / "system", Folder / "windows"};
    }
    void Program(const std::string& Name, const std::string& Text = "#!/bin/sh\n") const {
        std::filesystem::permissions(Folder.Write(Name, Text), std::filesystem::perms::owner_all);
    }
    TempFolder Folder;
    ScriptedMessages Messages;
};

TEST_F(VolumePanelTest, TheMixerOfTheDesktopComesFirst) {
    Program("system/sndvol32.exe");
    Program("windows/pavucontrol");
    const std::string Mixer = Folder / "windows/pavucontrol";
    EXPECT_THAT(VolumePanelCommand(Places(), VolumePage::Recording), ElementsAre(Mixer, "--tab=4"));
    EXPECT_THAT(VolumePanelCommand(Places(), VolumePage::Playing), ElementsAre(Mixer, "--tab=3"));
    EXPECT_THAT(VolumePanelCommand(Places(), VolumePage::Whole), ElementsAre(Mixer));
}

TEST_F(VolumePanelTest, WithoutItTheNamedProgramHasItsSwitches) {
    Program("windows/sndvol32.exe");
    const std::string Panel = Folder / "windows/sndvol32.exe";
    EXPECT_THAT(VolumePanelCommand(Places(), VolumePage::Recording), ElementsAre(Panel, "/R"));
    EXPECT_THAT(VolumePanelCommand(Places(), VolumePage::Playing), ElementsAre(Panel, "/V"));
    EXPECT_THAT(VolumePanelCommand(Places(), VolumePage::Whole), ElementsAre(Panel));
    Program("system/sndvol32.exe");
    EXPECT_THAT(VolumePanelCommand(Places(), VolumePage::Whole),
                ElementsAre(Folder / "system/sndvol32.exe"));
}

TEST_F(VolumePanelTest, WithoutAnyTheUserIsTold) {
    OpenVolumePanel({"/nowhere", "/nor here"}, VolumePage::Whole);
    ASSERT_EQ(Messages.Texts().size(), 1U);
    EXPECT_EQ(Messages.Texts().back(),
              "The file sndvol32.exe is not found in /nowhere and /nor here\n"
              "that is needed to set recording sound source\n"
              "Please set recording source using volume control in windows task "
              "bar.");
}

TEST_F(VolumePanelTest, TheProgramIsStarted) {
    const std::string Told = Folder / "told";
    Program("system/sndvol32.exe",
            "#!/bin/sh\necho \"$@\" >'" + Told + ".new'\nmv '" + Told + ".new' '" + Told + "'\n");
    OpenVolumePanel(Places(), VolumePage::Recording);
    const auto Until = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!std::filesystem::exists(Told) && std::chrono::steady_clock::now() < Until)
        std::this_thread::yield();
    EXPECT_EQ(TempFolder::Read(Told), "/R\n");
    EXPECT_THAT(Messages.Texts(), ::testing::IsEmpty());
}

TEST_F(VolumePanelTest, AProgramThatCannotStartIsTold) {
    Folder.Write("system/sndvol32.exe", "no program");
    OpenVolumePanel(Places(), VolumePage::Whole);
    EXPECT_EQ(Messages.Texts().size(), 1U);
}

TEST_F(VolumePanelTest, ItIsLookedForInTheFoldersOfPrograms) {
    EXPECT_THAT(VolumePanelFolders(), ElementsAre("/usr/bin", "/usr/local/bin"));
}

} // namespace
} // namespace quoril::test
