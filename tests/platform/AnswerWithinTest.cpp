#include "platform/AnswerWithin.h"

#include "base/Failure.h"

#include <gtest/gtest.h>

namespace quoril::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

TEST(AnswerWithinTest, AnAnswerInTimeIsGiven) {
    EXPECT_EQ(AnswerWithin<int>(seconds(20), [] { return 42; }), 42);
}

TEST(AnswerWithinTest, WhatTheQuestionThrowsIsPassedOn) {
    EXPECT_THROW((void)AnswerWithin<int>(seconds(20), []() -> int { throw Failure("no"); }),
                 Failure);
}

TEST(AnswerWithinTest, ALateAnswerIsDropped) {
    struct Meeting {
        std::promise<void> MayGo;
        std::promise<void> Gone;
    };
    const auto Met = std::make_shared<Meeting>();
    const auto Answer = AnswerWithin<int>(milliseconds(20), [Met] {
        Met->MayGo.get_future().wait();
        Met->Gone.set_value();
        return 1;
    });
    EXPECT_EQ(Answer, std::nullopt);
    Met->MayGo.set_value();
    EXPECT_EQ(Met->Gone.get_future().wait_for(seconds(20)), std::future_status::ready);
}

} // namespace
} // namespace quoril::test
