// The samples of a memory block. Copies share them until one side writes.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

namespace quoril {

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
    /// Makes the run alone, copying its `Length` samples if it is not.
    void MakeAlone(std::int32_t Length);

    /// The buffer's identity and size, for giving back buffers that only small parts view.
    [[nodiscard]] const void* BufferId() const noexcept { return Owner.get(); }
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
    };
    std::shared_ptr<Buffer> Owner;
    std::int16_t* First = nullptr;
};

} // namespace quoril
