#include "base/UserFileWriting.h"

#include <exception>
#include <utility>

namespace quoril {

namespace {

UserFileWriting* Innermost = nullptr;

} // namespace

UserFileWriting::UserFileWriting(std::function<void()> WriteTheRest)
    : Rest(std::move(WriteTheRest)), Around(std::exchange(Innermost, this)) {}

UserFileWriting::~UserFileWriting() {
    Innermost = Around;
}

bool UserFileWriting::IsOn() noexcept {
    return Innermost != nullptr;
}

bool UserFileWriting::FinishNow() noexcept {
    if (Innermost == nullptr)
        return true;
    try {
        Innermost->Rest();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace quoril
