#include "storage/SampleRun.h"

#include "platform/SampleMemory.h"

#include <cstddef>
#include <cstring>

namespace quoril {

SampleRun::Buffer::Buffer(std::int32_t HowMany, bool Zeroed)
    : Samples(SampleMemoryTake(HowMany, Zeroed)), Count(HowMany) {}

SampleRun::Buffer::~Buffer() {
    SampleMemoryGive(Samples, Count);
}

SampleRun SampleRun::Zeros(std::int32_t Length) {
    SampleRun Result;
    Result.Owner = std::make_shared<Buffer>(Length, true);
    Result.First = Result.Owner->Samples;
    return Result;
}

SampleRun SampleRun::Unfilled(std::int32_t Length) {
    SampleRun Result;
    Result.Owner = std::make_shared<Buffer>(Length, false);
    Result.First = Result.Owner->Samples;
    return Result;
}

SampleRun SampleRun::From(std::int32_t Offset) const {
    SampleRun Result = *this;
    Result.First += Offset;
    return Result;
}

void SampleRun::MakeAlone(std::int32_t Length) {
    if (!Alone())
        CopyOut(Length);
}

void SampleRun::CopyOut(std::int32_t Length) {
    SampleRun Own = Unfilled(Length);
    std::memcpy(Own.First, First, static_cast<std::size_t>(Length) * sizeof(std::int16_t));
    *this = std::move(Own);
}

std::int32_t SampleRun::BufferLength() const noexcept {
    return Owner ? Owner->Count : 0;
}

} // namespace quoril
