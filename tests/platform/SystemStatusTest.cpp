#include "platform/SystemStatus.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace quoril {
namespace {

using test::TempFolder;

/// A made-up machine: /proc and the tree of control groups.
class Machine : public ::testing::Test {
  protected:
    void Memory(std::int64_t TotalKilobytes, std::int64_t AvailableKilobytes) const {
        Folder.Write("proc/meminfo", "MemTotal:       " + std::to_string(TotalKilobytes) +
                                         " kB\nMemFree:          1 kB\nMemAvailable:   " +
                                         std::to_string(AvailableKilobytes) + " kB\n");
    }
    void Groups(const std::string& Lines) const { Folder.Write("proc/self/cgroup", Lines); }
    void Group(const std::string& Entry, const std::string& Text) const {
        Folder.Write("cgroup/" + Entry, Text);
    }
    [[nodiscard]] MemoryStatus Status() const {
        return GlobalMemoryStatusIn(Folder / "proc", Folder / "cgroup");
    }
    const TempFolder Folder;
};

TEST_F(Machine, GivesMemoryAndLoad) {
    Memory(1000000, 250000);
    EXPECT_EQ(Status().Total, 1024000000);
    EXPECT_EQ(Status().LoadPercent, 75);
}

TEST_F(Machine, LargeMemoryIsCapped) {
    Memory(2097152, 2097152); // 2 GiB: one byte more than the largest number
    EXPECT_EQ(Status().Total, 2147483647);
    EXPECT_EQ(Status().LoadPercent, 0);
    Memory(64000000, 16000000);
    EXPECT_EQ(Status().Total, 2147483647);
    EXPECT_EQ(Status().LoadPercent, 75); // of the true memory
    Memory(2097151, 0);
    EXPECT_EQ(Status().Total, 2147482624);
    EXPECT_EQ(Status().LoadPercent, 100);
}

TEST_F(Machine, WithoutFiguresAllIsZero) {
    EXPECT_EQ(Status().Total, 0);
    EXPECT_EQ(Status().LoadPercent, 0);
    for (const char* Broken : {"", "MemTotal:", "MemTotal: kB\n", "MemTotal: -5 kB\n", "\xFF\xFE",
                               "MemTotal: 99999999999999999999 kB\n", "MemTotal: 0 kB\n",
                               "MemTotal: 9223372036854775807 kB\n"}) {
        Folder.Write("proc/meminfo", Broken);
        EXPECT_EQ(Status().Total, 0) << Broken;
        EXPECT_EQ(Status().LoadPercent, 0) << Broken;
    }
}

TEST_F(Machine, MoreAvailableThanThereIsCountsAsNoLoad) {
    Memory(1000, 5000);
    EXPECT_EQ(Status().LoadPercent, 0);
}

TEST_F(Machine, LowerLimitOfTheControlGroupCounts) {
    Memory(8000000, 6000000);
    Groups("0::/user.slice/app.scope\n");
    Group("user.slice/app.scope/memory.max", "500000000\n");
    Group("user.slice/app.scope/memory.current", "200000000\n");
    Group("user.slice/app.scope/memory.stat", "anon 1\ninactive_file 100000000\nactive_file 7\n");
    EXPECT_EQ(Status().Total, 500000000);
    EXPECT_EQ(Status().LoadPercent, 20);
}

TEST_F(Machine, LimitOfAGroupAboveCounts) {
    Memory(8000000, 8000000);
    Groups("0::/a/b/c\n");
    Group("a/b/c/memory.max", "max\n");
    Group("a/b/memory.max", "600000000\n");
    Group("a/memory.max", "400000000\n");
    EXPECT_EQ(Status().Total, 400000000);
    Group("a/b/memory.max", "300000000\n");
    EXPECT_EQ(Status().Total, 300000000);
}

TEST_F(Machine, HigherOrMissingLimitDoesNotCount) {
    Memory(1000, 500);
    Groups("0::/a\n");
    EXPECT_EQ(Status().Total, 1024000);
    Group("a/memory.max", "max\n");
    EXPECT_EQ(Status().Total, 1024000);
    Group("a/memory.max", "999999999999\n");
    Group("a/memory.current", "5\n");
    EXPECT_EQ(Status().Total, 1024000);
    EXPECT_EQ(Status().LoadPercent, 50);
}

TEST_F(Machine, UseBeyondTheLimitIsFullLoad) {
    Memory(8000000, 8000000);
    Groups("0::/\n");
    Group("memory.max", "1000\n");
    Group("memory.current", "2000\n");
    EXPECT_EQ(Status().Total, 1000);
    EXPECT_EQ(Status().LoadPercent, 100);
}

TEST_F(Machine, OlderControlGroupsCountToo) {
    Memory(8000000, 8000000);
    Groups("12:cpu,cpuacct:/wrong\n5:memory:/docker/abc\n1:name=systemd:/wrong\n");
    Group("memory/wrong/memory.limit_in_bytes", "1\n");
    Group("memory/docker/abc/memory.limit_in_bytes", "700000000\n");
    Group("memory/docker/abc/memory.usage_in_bytes", "350000000\n");
    Group("memory/memory.limit_in_bytes", "9223372036854771712\n");
    EXPECT_EQ(Status().Total, 700000000);
    EXPECT_EQ(Status().LoadPercent, 50);
    Groups("5:hugetlb,memory:/docker/abc\n");
    EXPECT_EQ(Status().Total, 700000000);
}

TEST_F(Machine, LimitAtTheTopCountsWhereOurOwnGroupIsNotSeen) {
    Memory(8000000, 8000000);
    Groups("4:memory:/docker/unseen\n0::/../../unseen\n");
    Group("memory/memory.limit_in_bytes", "700000000\n");
    EXPECT_EQ(Status().Total, 700000000);
    Group("memory.max", "600000000\n");
    EXPECT_EQ(Status().Total, 600000000);
}

TEST_F(Machine, BrokenGroupFilesAreIgnored) {
    Memory(1000, 1000);
    for (const char* Broken : {"", ":", "::", "0:", "0::", "\n\n", "0::no-slash\n", "0::////\n"}) {
        Groups(Broken);
        EXPECT_EQ(Status().Total, 1024000) << Broken;
    }
    Groups("0::/a\n");
    for (const char* Broken : {"", "maximum\n", "-1\n", "99999999999999999999\n", "\xFF"}) {
        Group("a/memory.max", Broken);
        EXPECT_EQ(Status().Total, 1024000) << Broken;
    }
}

TEST(SystemStatus, ThisMachineHasMemory) {
    const MemoryStatus Status = GlobalMemoryStatus();
    EXPECT_GT(Status.Total, 10000000);
    EXPECT_GE(Status.LoadPercent, 0);
    EXPECT_LE(Status.LoadPercent, 100);
    const auto Physical = static_cast<std::int64_t>(::sysconf(_SC_PHYS_PAGES)) *
                          static_cast<std::int64_t>(::sysconf(_SC_PAGESIZE));
    EXPECT_LE(Status.Total, Physical);
}

TEST(SystemStatus, FreeSpaceIsWhatAnOrdinaryUserMayWrite) {
    const TempFolder Folder;
    struct statvfs Known {};
    std::optional<std::int64_t> Free;
    // Others write to the same disk: asked again until it held still.
    for (int Try = 0; Try < 100; ++Try) {
        Free = GetDiskFreeSpaceExA(Folder.Path() + "/");
        ASSERT_EQ(::statvfs(Folder.Path().c_str(), &Known), 0);
        if (Free == static_cast<std::int64_t>(Known.f_bavail * Known.f_frsize))
            break;
    }
    EXPECT_EQ(Free, static_cast<std::int64_t>(Known.f_bavail * Known.f_frsize));
}

TEST(SystemStatus, MissingFolderHasNoFreeSpace) {
    const TempFolder Folder;
    EXPECT_EQ(GetDiskFreeSpaceExA(Folder / "missing/"), std::nullopt);
    EXPECT_EQ(GetDiskFreeSpaceExA(""), std::nullopt);
    EXPECT_EQ(GetDiskFreeSpaceExA("/proc"), 0);
}

} // namespace
} // namespace quoril
