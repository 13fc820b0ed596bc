// A disk that is full as long as a test wants.
#pragma once

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace quoril::test {

/// While it is on, the system refuses to let any file grow, as it does when the disk is full.
class FullDisk {
  public:
    FullDisk() {
        std::signal(SIGXFSZ, SIG_IGN);
        EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &Normal), 0);
    }
    ~FullDisk() { Empty(); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    void Fill() const {
        const rlimit None{0, Normal.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &None), 0);
    }
    void Empty() const { EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &Normal), 0); }

  private:
    rlimit Normal{};
};

} // namespace quoril::test
