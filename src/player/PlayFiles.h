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
    /// The same for a file that must be as it was entered elsewhere, in size and time of change,
    /// too, whenever it is read.
    void Expect(const std::string& Name, const FileIdentity& Entered);
    /// Throws Failure when the file cannot be opened, or is no longer the one that was expected or
    /// opened first. The reference is good until the next call.
    [[nodiscard]] const FileForReading& Open(std::size_t No);
    /// Reads exactly `Bytes` bytes from `Offset` (from 0) on. Throws Failure likewise, and when the
    /// file ends before.
    void Read(std::size_t No, std::int64_t Offset, void* Target, std::size_t Bytes);
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
        bool Entered = false; ///< all of the identity counts
        bool Held = false;
    };
    static void Check(const Entry& File, const FileIdentity& Now);

    std::vector<Entry> Files;
    std::map<std::string, std::size_t> Numbers;
    std::vector<std::size_t> OpenNow; ///< not the held ones; the one used last at the end
};

} // namespace quoril
