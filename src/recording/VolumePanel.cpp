#include "recording/VolumePanel.h"

#include "base/MsgBoxMod.h"
#include "platform/ChildProcess.h"
#include "settings/STD1.h"

#include <array>
#include <fmt/ranges.h>

namespace quoril {

namespace {

/// A program and its switches for each page, in the order of VolumePage.
struct PanelProgram {
    const char* Name;
    std::array<const char*, 3> Switches;
};
constexpr std::array<PanelProgram, 2> Programs = {
    {{"pavucontrol", {"--tab=4", "--tab=3", ""}}, {"sndvol32.exe", {"/R", "/V", ""}}}};

} // namespace

std::vector<std::string> VolumePanelFolders() {
    return {"/usr/bin", "/usr/local/bin"};
}

std::vector<std::string> VolumePanelCommand(const std::vector<std::string>& Folders,
                                            VolumePage Page) {
    for (const PanelProgram& Program : Programs)
        for (const std::string& Folder : Folders) {
            const std::string File = Folder + "/" + Program.Name;
            if (!FileThere(File))
                continue;
            const std::string Switch = Program.Switches.at(static_cast<std::size_t>(Page));
            return Switch.empty() ? std::vector{File} : std::vector{File, Switch};
        }
    return {};
}

void OpenVolumePanel(const std::vector<std::string>& Folders, VolumePage Page) {
    const std::vector<std::string> Command = VolumePanelCommand(Folders, Page);
    if (Command.empty()) {
        MsgBox(fmt::format("The file sndvol32.exe is not found in {}\n"
                           "that is needed to set recording sound source\n"
                           "Please set recording source using volume control in windows task bar.",
                           fmt::join(Folders, " and ")));
        return;
    }
    if (const ChildResult Result = StartDetached(Command); !Result.Started)
        MsgBox(Result.StartError);
}

} // namespace quoril
