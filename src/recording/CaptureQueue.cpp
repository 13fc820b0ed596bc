#include "recording/CaptureQueue.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace quoril {

void CaptureQueue::SetUp(std::size_t BytesOfHalf) {
    HalfBytes = std::max<std::size_t>(BytesOfHalf, 1);
    for (Half& Each : Row) {
        Each.Frames.assign(HalfBytes, std::byte{0});
        Each.Bytes = 0;
        Each.AfterLoss = false;
    }
    Filled = 0;
    TakenOut = 0;
    LossNoted = false;
}

std::size_t CaptureQueue::Room() const noexcept {
    const std::uint64_t Index = Filled.load(std::memory_order_relaxed);
    if (AllFull(Index))
        return 0;
    return HalfBytes - Row[Index % Halves].Bytes;
}

bool CaptureQueue::AllFull(std::uint64_t Index) const noexcept {
    return Index - TakenOut.load(std::memory_order_acquire) >= Halves;
}

bool CaptureQueue::Fill(const std::byte* Source, std::size_t Bytes) noexcept {
    if (Bytes == 0)
        return false; // the half at hand may not be ours yet
    Half& Now = At(Filled.load(std::memory_order_relaxed));
    if (Source != nullptr)
        std::memcpy(Now.Frames.data() + Now.Bytes, Source, Bytes);
    else
        std::memset(Now.Frames.data() + Now.Bytes, 0, Bytes);
    Now.Bytes += Bytes;
    if (std::exchange(LossNoted, false))
        Now.AfterLoss = true;
    return Now.Bytes == HalfBytes && HandOver();
}

bool CaptureQueue::HandOver() noexcept {
    const std::uint64_t Index = Filled.load(std::memory_order_relaxed);
    if (AllFull(Index) || At(Index).Bytes == 0)
        return false;
    Filled.store(Index + 1, std::memory_order_release);
    return true;
}

const CaptureQueue::Half* CaptureQueue::Oldest() const noexcept {
    const std::uint64_t Index = TakenOut.load(std::memory_order_relaxed);
    return Index == Filled.load(std::memory_order_acquire) ? nullptr : &Row[Index % Halves];
}

void CaptureQueue::Drop() noexcept {
    const std::uint64_t Index = TakenOut.load(std::memory_order_relaxed);
    At(Index).Bytes = 0;
    At(Index).AfterLoss = false;
    TakenOut.store(Index + 1, std::memory_order_release);
}

std::size_t CaptureQueue::Waiting() const noexcept {
    return static_cast<std::size_t>(Filled.load(std::memory_order_acquire) -
                                    TakenOut.load(std::memory_order_relaxed));
}

} // namespace quoril
