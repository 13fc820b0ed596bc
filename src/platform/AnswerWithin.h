// Questions whose answer may never come.
#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <thread>

namespace quoril {

/// Asks on a thread of its own, and gives the answer if it comes within the limit; passes on what
/// the question throws by then. A question that takes longer is left to itself: it must own all
/// that it works with, and its late answer is dropped.
template <class T>
[[nodiscard]] std::optional<T> AnswerWithin(std::chrono::milliseconds Limit,
                                            std::function<T()> Ask) {
    const auto Question = std::make_shared<std::packaged_task<T()>>(std::move(Ask));
    std::future<T> Answer = Question->get_future();
    std::thread([Question] { (*Question)(); }).detach();
    if (Answer.wait_for(Limit) != std::future_status::ready)
        return std::nullopt;
    return Answer.get();
}

} // namespace quoril
