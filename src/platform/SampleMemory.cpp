#include "platform/SampleMemory.h"

#include "base/Failure.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <sys/mman.h>
#include <vector>

namespace quoril {

namespace {

/// From this size on memory is mapped by itself, so that it goes back to the system at once.
constexpr std::size_t MappedFrom = std::size_t{256} << 10;
constexpr std::size_t MappedUnit = std::size_t{64} << 10;
/// Mappings of this size and more begin at a border of large pages.
constexpr std::size_t LargePage = std::size_t{2} << 20;
/// What is kept for the next use at most.
constexpr std::size_t MostSpareBytes = std::size_t{64} << 20;

struct Spare {
    void* Place;
    std::size_t Bytes;
};

/// The newest last. Never destroyed: blocks may be given back at the very end of the process. There
/// is room for all that can be kept, so that giving back never needs memory.
std::vector<Spare>& Spares = []() -> std::vector<Spare>& {
    auto* const Room = new std::vector<Spare>;
    Room->reserve(MostSpareBytes / MappedUnit);
    return *Room;
}();
std::size_t SpareBytes = 0;
std::int64_t BytesInUse = 0;

std::size_t RoundedUp(std::size_t Bytes, std::size_t Unit) {
    return (Bytes + Unit - 1) / Unit * Unit;
}

std::size_t BytesFor(std::int32_t Count) {
    const std::size_t Bytes = std::max<std::size_t>(static_cast<std::size_t>(Count) * 2, 64);
    return RoundedUp(Bytes, Bytes < MappedFrom ? 64 : MappedUnit);
}

[[noreturn]] void FailNoMemory() {
    throw Failure("Out of memory");
}

/// The smallest spare that is large enough, the newest of equal ones. What is too much stays spare.
void* SpareTake(std::size_t Bytes) {
    auto Best = Spares.end();
    for (auto One = Spares.begin(); One != Spares.end(); ++One)
        if (One->Bytes >= Bytes && (Best == Spares.end() || One->Bytes <= Best->Bytes))
            Best = One;
    if (Best == Spares.end())
        return nullptr;
    void* const Place = Best->Place;
    SpareBytes -= Bytes;
    if (Best->Bytes == Bytes)
        Spares.erase(Best);
    else
        *Best = {static_cast<char*>(Place) + Bytes, Best->Bytes - Bytes};
    return Place;
}

/// Gives the oldest spares back to the system, the last of them only as far as it must be.
void SparesKeepAtMost(std::size_t Bytes) noexcept {
    while (SpareBytes > Bytes) {
        Spare& Oldest = Spares.front();
        const std::size_t Given = std::min(Oldest.Bytes, SpareBytes - Bytes);
        Oldest.Bytes -= Given;
        SpareBytes -= Given;
        ::munmap(static_cast<char*>(Oldest.Place) + Oldest.Bytes, Given);
        if (Oldest.Bytes == 0)
            Spares.erase(Spares.begin());
    }
}

void* MapZeroed(std::size_t Bytes) {
    const auto Map = [Bytes] {
        return ::mmap(nullptr, Bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    };
    void* Mapped = Map();
    if (Mapped == MAP_FAILED) {
        SparesKeepAtMost(0); // what is only kept must not be missing
        Mapped = Map();
    }
    if (Mapped == MAP_FAILED)
        FailNoMemory();
    return Mapped;
}

/// Mapped at a border of large pages, so that the system can back it with them.
void* MapLarge(std::size_t Bytes) {
    const std::size_t Wide = Bytes + LargePage;
    void* const Mapped = MapZeroed(Wide);
    char* const Begin = static_cast<char*>(Mapped);
    const std::size_t Head =
        (LargePage - reinterpret_cast<std::uintptr_t>(Begin) % LargePage) % LargePage;
    if (Head > 0)
        ::munmap(Begin, Head);
    if (Wide - Head - Bytes > 0)
        ::munmap(Begin + Head + Bytes, Wide - Head - Bytes);
    ::madvise(Begin + Head, Bytes, MADV_HUGEPAGE);
    return Begin + Head;
}

} // namespace

std::int16_t* SampleMemoryTake(std::int32_t Count, bool Zeroed) {
    if (Count < 0)
        FailNoMemory();
    const std::size_t Bytes = BytesFor(Count);
    void* Place = nullptr;
    if (Bytes < MappedFrom) {
        Place = std::aligned_alloc(64, Bytes);
        if (Place == nullptr)
            FailNoMemory();
        if (Zeroed)
            std::memset(Place, 0, Bytes);
    } else if ((Place = SpareTake(Bytes)) != nullptr) {
        if (Zeroed)
            std::memset(Place, 0, Bytes);
    } else {
        Place = Bytes < LargePage ? MapZeroed(Bytes) : MapLarge(Bytes);
    }
    BytesInUse += static_cast<std::int64_t>(Bytes);
    return static_cast<std::int16_t*>(Place);
}

void SampleMemoryGive(std::int16_t* Samples, std::int32_t Count) noexcept {
    const std::size_t Bytes = BytesFor(Count);
    BytesInUse -= static_cast<std::int64_t>(Bytes);
    if (Bytes < MappedFrom) {
        std::free(Samples);
        return;
    }
    if (Bytes > MostSpareBytes) {
        ::munmap(Samples, Bytes);
        return;
    }
    SparesKeepAtMost(MostSpareBytes - Bytes);
    Spares.push_back({Samples, Bytes});
    SpareBytes += Bytes;
}

std::int64_t SampleMemoryInUse() noexcept {
    return BytesInUse;
}

void SampleMemoryTrim() noexcept {
    SparesKeepAtMost(0);
}

} // namespace quoril
