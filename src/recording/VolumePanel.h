// The volume control of the system.
#pragma once

#include <string>
#include <vector>

namespace quoril {

/// What the volume control is to show.
enum class VolumePage { Recording, Playing, Whole };

/// Where it is looked for, one folder after the other.
[[nodiscard]] std::vector<std::string> VolumePanelFolders();
/// The words of the command that opens it: the desktop's mixer, else a program of the name
/// "sndvol32.exe" with its own switch; empty when neither is in the folders.
[[nodiscard]] std::vector<std::string> VolumePanelCommand(const std::vector<std::string>& Folders,
                                                          VolumePage Page);
/// Opens it, or tells the user that it cannot be found or started. It lives on by itself.
void OpenVolumePanel(const std::vector<std::string>& Folders, VolumePage Page);

} // namespace quoril
