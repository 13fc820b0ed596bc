#include "recording/CaptureQueue.h"

#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <thread>

namespace quoril::test {
namespace {

const std::byte* AsBytes(const std::string& Text) {
    return reinterpret_cast<const std::byte*>(Text.data());
}

std::string TextOf(const CaptureQueue::Half& Half) {
    return {reinterpret_cast<const char*>(Half.Frames.data()), Half.Bytes};
}

TEST(CaptureQueueTest, HalvesComeOutInOrderOnceTheyAreFull) {
    CaptureQueue Queue;
    Queue.SetUp(4);
    EXPECT_EQ(Queue.Room(), 4U);
    EXPECT_FALSE(Queue.Fill(AsBytes("abc"), 3));
    EXPECT_EQ(Queue.Room(), 1U);
    EXPECT_EQ(Queue.Oldest(), nullptr);
    EXPECT_TRUE(Queue.Fill(AsBytes("d"), 1));
    EXPECT_TRUE(Queue.Fill(AsBytes("efgh"), 4));
    EXPECT_EQ(Queue.Waiting(), 2U);
    ASSERT_NE(Queue.Oldest(), nullptr);
    EXPECT_EQ(TextOf(*Queue.Oldest()), "abcd");
    Queue.Drop();
    EXPECT_EQ(TextOf(*Queue.Oldest()), "efgh");
    Queue.Drop();
    EXPECT_EQ(Queue.Oldest(), nullptr);
}

TEST(CaptureQueueTest, AShortHalfIsHandedOverAsItIs) {
    CaptureQueue Queue;
    Queue.SetUp(4);
    EXPECT_FALSE(Queue.HandOver()) << "an empty one";
    Queue.Fill(AsBytes("ab"), 2);
    EXPECT_TRUE(Queue.HandOver());
    ASSERT_NE(Queue.Oldest(), nullptr);
    EXPECT_EQ(TextOf(*Queue.Oldest()), "ab");
    Queue.Drop();
    Queue.Fill(AsBytes("wxyz"), 4);
    EXPECT_EQ(TextOf(*Queue.Oldest()), "wxyz") << "the next one is whole again";
}

TEST(CaptureQueueTest, AHoleIsSilence) {
    CaptureQueue Queue;
    Queue.SetUp(2);
    EXPECT_TRUE(Queue.Fill(nullptr, 2));
    EXPECT_EQ(TextOf(*Queue.Oldest()), std::string(2, '\0'));
    Queue.SetUp(2);
    EXPECT_EQ(Queue.Oldest(), nullptr);
}

TEST(CaptureQueueTest, ALossGoesWithTheHalfThatComesAfterIt) {
    CaptureQueue Queue;
    Queue.SetUp(2);
    for (std::size_t No = 0; No < CaptureQueue::Halves; ++No)
        Queue.Fill(AsBytes("ab"), 2);
    Queue.NoteLoss(); // there is no half at hand
    for (std::size_t No = 0; No < CaptureQueue::Halves; ++No) {
        EXPECT_FALSE(Queue.Oldest()->AfterLoss) << No;
        Queue.Drop();
    }
    Queue.Fill(AsBytes("cd"), 2);
    Queue.Fill(AsBytes("ef"), 2);
    EXPECT_TRUE(Queue.Oldest()->AfterLoss);
    Queue.Drop();
    EXPECT_FALSE(Queue.Oldest()->AfterLoss) << "told once";
    Queue.NoteLoss();
    Queue.SetUp(2);
    Queue.Fill(AsBytes("gh"), 2);
    EXPECT_FALSE(Queue.Oldest()->AfterLoss);
}

TEST(CaptureQueueTest, APlaceThatWasUsedBeforeKnowsOfNoLoss) {
    CaptureQueue Queue;
    Queue.SetUp(1);
    Queue.NoteLoss();
    for (std::size_t No = 0; No < CaptureQueue::Halves + 1; ++No) {
        Queue.Fill(AsBytes("x"), 1);
        EXPECT_EQ(Queue.Oldest()->AfterLoss, No == 0) << No;
        Queue.Drop();
    }
}

TEST(CaptureQueueTest, TakesNoMoreThanItHolds) {
    CaptureQueue Queue;
    Queue.SetUp(1);
    for (std::size_t No = 0; No < CaptureQueue::Halves; ++No) {
        ASSERT_EQ(Queue.Room(), 1U);
        EXPECT_TRUE(Queue.Fill(AsBytes("x"), 1));
    }
    EXPECT_EQ(Queue.Room(), 0U);
    EXPECT_FALSE(Queue.HandOver());
    Queue.Drop();
    EXPECT_EQ(Queue.Room(), 1U);
}

TEST(CaptureQueueTest, KeepsAtLeastFiveSeconds) {
    EXPECT_GE(CaptureQueue::Halves, 5U * 10U);
    EXPECT_EQ(CaptureQueue::Halves, static_cast<std::size_t>(CaptureQueue::Seconds) * 10U);
}

TEST(CaptureQueueTest, NothingIsLostOrDoubledBetweenTwoThreads) {
    constexpr std::uint32_t Words = 2000000;
    constexpr std::uint32_t Seed = 7;
    CaptureQueue Queue;
    Queue.SetUp(400);
    std::thread Filling([&Queue] {
        std::mt19937 Random(Seed);
        std::vector<std::uint32_t> Piece;
        for (std::uint32_t Next = 0; Next < Words;) {
            const std::size_t Most = Queue.Room() / 4;
            if (Most == 0) {
                std::this_thread::yield();
                continue;
            }
            Piece.clear();
            const std::size_t Count = 1 + Random() % Most;
            while (Piece.size() < Count && Next < Words)
                Piece.push_back(Next++);
            Queue.Fill(reinterpret_cast<const std::byte*>(Piece.data()), Piece.size() * 4);
        }
        Queue.HandOver();
    });
    std::uint32_t Expected = 0;
    while (Expected < Words) {
        const CaptureQueue::Half* const Half = Queue.Oldest();
        if (Half == nullptr) {
            std::this_thread::yield();
            continue;
        }
        for (std::size_t At = 0; At < Half->Bytes; At += 4) {
            std::uint32_t Word = 0;
            std::memcpy(&Word, Half->Frames.data() + At, 4);
            ASSERT_EQ(Word, Expected++);
        }
        Queue.Drop();
    }
    Filling.join();
}

} // namespace
} // namespace quoril::test
