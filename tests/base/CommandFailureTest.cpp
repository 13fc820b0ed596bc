#include "base/CommandFailure.h"
#include "base/Failure.h"
#include "base/ProgressReport.h"
#include "support/OrderLog.h"
#include "support/ScriptedMessages.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <new>
#include <stdexcept>
#include <vector>

namespace quoril {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(RunCommand, SaysNothingAboutACommandThatEnds) {
    const test::ScriptedMessages Messages;
    bool Ran = false;
    EXPECT_TRUE(RunCommand("Title", [&] { Ran = true; }));
    EXPECT_TRUE(Ran);
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST(RunCommand, ShowsTheTextOfAFailureUnderTheTitle) {
    test::ScriptedMessages Messages;
    EXPECT_FALSE(RunCommand("Title", [] { throw Failure("Overflow"); }));
    EXPECT_FALSE(RunCommand("Title", [] { throw SystemFailure(ENOSPC, "/a/b.wav"); }));
    EXPECT_FALSE(RunCommand("Title", [] { throw std::bad_alloc(); }));
    EXPECT_FALSE(RunCommand("Title", [] { throw std::length_error("vector"); }));
    EXPECT_FALSE(RunCommand("Title", [] { throw std::runtime_error("other"); }));
    EXPECT_THAT(Messages.Texts(),
                ElementsAre("Title|Overflow", "Title|No space left on device\n/a/b.wav",
                            "Title|Out of memory", "Title|Out of memory", "Title|other"));
}

TEST(RunCommand, HidesTheProgressWindowBeforeTheMessage) {
    test::OrderLog Log;
    EXPECT_FALSE(RunCommand("Title", [] {
        const ProgressScope Progress(BarColorGather);
        throw Failure("no");
    }));
    EXPECT_THAT(Log.Lines, ElementsAre("show", "color 25600", "0.000", "hide", "message Title|no"));
}

} // namespace
} // namespace quoril
