// A disk with little room.
#pragma once

#include <cstddef>
#include <gtest/gtest.h>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <unistd.h>

namespace quoril::test {

/// While it lives, a folder lies on a disk of its own with so many pages of room: a file can grow
/// there, with a gap, and then find no room for what is to fill the gap. Only this process sees it.
/// Where the system lets no program do that, Is() is false.
class SmallDisk {
  public:
    SmallDisk(std::string Over, std::size_t Pages) : Folder(std::move(Over)) {
        const std::size_t Bytes = Pages * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
        const std::string Size = "size=" + std::to_string(Bytes);
        Mounted = OwnMounts() && ::mount("none", Folder.c_str(), "tmpfs", 0, Size.c_str()) == 0;
    }
    ~SmallDisk() {
        if (Mounted) {
            EXPECT_EQ(::umount2(Folder.c_str(), MNT_DETACH), 0);
        }
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    [[nodiscard]] bool Is() const { return Mounted; }

  private:
    static bool OwnMounts() {
        static const bool Own =
            (::unshare(CLONE_NEWNS) == 0 || ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0) &&
            ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
        return Own;
    }
    std::string Folder;
    bool Mounted = false;
};

} // namespace quoril::test
