#include "player/SampleRing.h"

#include <algorithm>
#include <bit>

namespace quoril {

void SampleRing::SetUp(std::int32_t Channels, std::size_t LeastFrames) {
    Width = static_cast<std::size_t>(Channels);
    Frames = std::bit_ceil(std::max<std::size_t>(LeastFrames, 2));
    Samples.assign(Frames * Width, 0);
    WriteIndex.store(0, std::memory_order_relaxed); // nobody else is at work
    ReadIndex.store(0, std::memory_order_relaxed);
}

void SampleRing::Discard(std::uint64_t TakenBack) noexcept {
    // Nobody else is at work; the threads are told by the locks that hold them.
    const std::uint64_t Read = ReadIndex.load(std::memory_order_relaxed) - TakenBack;
    ReadIndex.store(Read, std::memory_order_relaxed);
    WriteIndex.store(Read, std::memory_order_relaxed);
}

std::size_t SampleRing::Room() const noexcept {
    // Acquire: the taking side has done with the frames before it moved its index, so their places
    // may be written.
    const std::uint64_t Read = ReadIndex.load(std::memory_order_acquire);
    return Frames - static_cast<std::size_t>(WriteIndex.load(std::memory_order_relaxed) - Read);
}

void SampleRing::Push(const std::int16_t* Source, std::size_t Count) noexcept {
    const std::uint64_t Write = WriteIndex.load(std::memory_order_relaxed); // our own index
    const std::size_t At = static_cast<std::size_t>(Write) & (Frames - 1);
    const std::size_t First = std::min(Count, Frames - At);
    std::copy_n(Source, First * Width, Samples.data() + At * Width);
    std::copy_n(Source + First * Width, (Count - First) * Width, Samples.data());
    // Release: who sees the new index sees the frames, too.
    WriteIndex.store(Write + Count, std::memory_order_release);
}

std::size_t SampleRing::Fill() const noexcept {
    // Acquire: pairs with the release in Push, so that the frames are there.
    const std::uint64_t Write = WriteIndex.load(std::memory_order_acquire);
    return static_cast<std::size_t>(Write - ReadIndex.load(std::memory_order_relaxed));
}

std::size_t SampleRing::Pop(std::int16_t* Target, std::size_t Most) noexcept {
    const std::size_t Count = std::min(Most, Fill());
    const std::uint64_t Read = ReadIndex.load(std::memory_order_relaxed); // our own index
    Copy(Read, Count, Target);
    // Release: the frames have been read before their places count as free.
    ReadIndex.store(Read + Count, std::memory_order_release);
    return Count;
}

void SampleRing::Copy(std::uint64_t From, std::size_t Count, std::int16_t* Target) const noexcept {
    const std::size_t At = static_cast<std::size_t>(From) & (Frames - 1);
    const std::size_t First = std::min(Count, Frames - At);
    std::copy_n(Samples.data() + At * Width, First * Width, Target);
    std::copy_n(Samples.data(), (Count - First) * Width, Target + First * Width);
}

} // namespace quoril
