#include "storage/SampleRun.h"

#include "platform/SampleMemory.h"

#include <cstddef>
#include <cstring>
#include <iterator>
#include <utility>

namespace quoril {

namespace {
std::int64_t HeldBuffersSamples = 0;
}

std::map<std::int32_t, HeldStretches::Edge>::iterator HeldStretches::EdgeAt(std::int32_t Place) {
    const auto [Found, IsNew] = Edges.try_emplace(Place);
    if (IsNew && Found != Edges.begin())
        Found->second.Holders = std::prev(Found)->second.Holders;
    return Found;
}

std::int32_t HeldStretches::Hold(std::int32_t From, std::int32_t To) {
    if (From >= To)
        return 0;
    const auto First = EdgeAt(From);
    const auto Last = EdgeAt(To);
    ++First->second.Ends;
    ++Last->second.Ends;
    std::int32_t Fresh = 0;
    for (auto One = First; One != Last; ++One)
        if (One->second.Holders++ == 0)
            Fresh += std::next(One)->first - One->first;
    return Fresh;
}

std::int32_t HeldStretches::Release(std::int32_t From, std::int32_t To) noexcept {
    if (From >= To)
        return 0;
    std::int32_t Free = 0;
    const auto Last = Edges.find(To);
    for (auto One = Edges.find(From); One != Last; ++One)
        if (--One->second.Holders == 0)
            Free += std::next(One)->first - One->first;
    EndsGo(From);
    EndsGo(To);
    return Free;
}

void HeldStretches::EndsGo(std::int32_t Place) noexcept {
    if (const auto Found = Edges.find(Place); --Found->second.Ends == 0)
        Edges.erase(Found);
}

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

std::int32_t SampleRun::Hold(std::int32_t Length) const {
    if (Length > 0 && Owner->Held.None())
        HeldBuffersSamples += Owner->Count;
    return Owner->Held.Hold(Offset(), Offset() + Length);
}

std::int32_t SampleRun::Release(std::int32_t Length) const noexcept {
    const std::int32_t Free = Owner->Held.Release(Offset(), Offset() + Length);
    if (Length > 0 && Owner->Held.None())
        HeldBuffersSamples -= Owner->Count;
    return Free;
}

std::int64_t SampleRun::BytesOfHeldBuffers() noexcept {
    return 2 * HeldBuffersSamples;
}

std::int32_t SampleRun::Offset() const noexcept {
    return static_cast<std::int32_t>(First - Owner->Samples);
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
