// What the machine has: memory and disk.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quoril {

struct MemoryStatus {
    /// Physical memory in bytes, or the limit of the control group if that is lower; never more
    /// than 2147483647, so that a large machine has the largest budget and no warning.
    std::int32_t Total = 0;
    std::int32_t LoadPercent = 0; ///< how much of it is in use, 0 to 100
};

/// Memory of the machine. All zero when the system does not tell.
[[nodiscard]] MemoryStatus GlobalMemoryStatus();

/// The same from made-up folders in place of /proc and /sys/fs/cgroup.
[[nodiscard]] MemoryStatus GlobalMemoryStatusIn(const std::string& ProcFolder,
                                                const std::string& ControlGroupFolder);

/// Bytes that an ordinary user may still write on the disk of a folder; none when the folder
/// cannot be asked.
[[nodiscard]] std::optional<std::int64_t> GetDiskFreeSpaceExA(const std::string& Folder);

} // namespace quoril
