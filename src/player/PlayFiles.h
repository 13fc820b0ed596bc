// The files that a snapshot reads, opened when they are first needed.
#pragma once

#include "platform/FileHandle.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quoril {

/// A few files stay open, those used last, and those that are held. One thread at a time.
class PlayFiles {
  public:
    /// The number of a file; the same name has the same number.
    [[nodiscard]] std::size_t Add(const std::string& Name);
    /// Throws Failure when the file cannot be opened, or is no longer the one that was opened
    /// first. The reference is good until the next call.
    [[nodiscard]] const FileForReading& Open(std::size_t No);
    /// Opens a file and keeps it open, so that it is read to its end as it is now even when its
    /// name goes or is given to another file; nobody is asked any more to leave it alone. What
    /// cannot be opened is told when it is read.
    void Hold(std::size_t No) noexcept;
    /// Closes all of them.
    void Close() noexcept;
    [[nodiscard]] std::size_t OpenCount() const noexcept;

  private:
    struct Entry {
        std::string Name;
        FileForReading Handle;
        std::optional<FileIdentity> Identity;
        bool Held = false;
    };
    std::vector<Entry> Files;
    std::map<std::string, std::size_t> Numbers;
    std::vector<std::size_t> OpenNow; ///< not the held ones; the one used last at the end
};

} // namespace quoril
