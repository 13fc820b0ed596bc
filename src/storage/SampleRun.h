// The samples of a memory block. Copies share them until one side writes, and count once meanwhile.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <span>

namespace quoril {

/// Which samples of a buffer are held, each by how many.
class HeldStretches {
  public:
    /// One more holds the samples from `From` up to `To`, which is not one of them. Gives how many
    /// of them nobody held before.
    std::int32_t Hold(std::int32_t From, std::int32_t To);
    /// One of those that hold just these samples lets go. Gives how many nobody holds any more.
    std::int32_t Release(std::int32_t From, std::int32_t To) noexcept;
    /// True while nobody holds any.
    [[nodiscard]] bool None() const noexcept { return Edges.empty(); }

  private:
    struct Edge {
        std::int32_t Holders = 0; ///< of the samples from here to the next edge
        std::int32_t Ends = 0;    ///< stretches that begin or end here; without one the edge goes
    };
    std::map<std::int32_t, Edge>::iterator EdgeAt(std::int32_t Place);
    void EndsGo(std::int32_t Place) noexcept;

    std::map<std::int32_t, Edge> Edges;
};

/// A stretch of samples in memory, a view on a buffer that other runs may view too. Copying a run
/// copies no sample. The length is the block's and is not kept here.
class SampleRun {
  public:
    SampleRun() noexcept = default;
    /// `Length` zero samples.
    [[nodiscard]] static SampleRun Zeros(std::int32_t Length);
    /// `Length` samples with whatever was there, to be filled at once.
    [[nodiscard]] static SampleRun Unfilled(std::int32_t Length);

    /// The stretch that begins `Offset` samples further on, sharing the buffer.
    [[nodiscard]] SampleRun From(std::int32_t Offset) const;

    [[nodiscard]] const std::int16_t* Read() const noexcept { return First; }
    /// May be written through only while the run is alone.
    [[nodiscard]] std::int16_t* Write() noexcept { return First; }
    /// True when no other run views the buffer.
    [[nodiscard]] bool Alone() const noexcept { return Owner.use_count() == 1; }
    /// A block begins to hold the run's `Length` samples, or lets them go again. Gives how many of
    /// them no other block holds.
    [[nodiscard]] std::int32_t Hold(std::int32_t Length) const;
    [[nodiscard]] std::int32_t Release(std::int32_t Length) const noexcept;
    /// Bytes of all buffers that blocks hold samples of, also of those samples that no block holds.
    [[nodiscard]] static std::int64_t BytesOfHeldBuffers() noexcept;

    /// The buffer's identity and size, and where in it the run begins.
    [[nodiscard]] const void* BufferId() const noexcept { return Owner.get(); }
    [[nodiscard]] std::int32_t Offset() const noexcept;
    [[nodiscard]] std::int32_t BufferLength() const noexcept;
    /// Replaces the view by an own copy of just `Length` samples.
    void CopyOut(std::int32_t Length);

  private:
    struct Buffer {
        explicit Buffer(std::int32_t Count, bool Zeroed);
        ~Buffer();
        Buffer(const Buffer&) = delete;
        Buffer& operator=(const Buffer&) = delete;
        std::int16_t* Samples;
        std::int32_t Count;
        HeldStretches Held;
    };
    std::shared_ptr<Buffer> Owner;
    std::int16_t* First = nullptr;
};

} // namespace quoril
