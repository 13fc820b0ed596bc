// The sound systems as the capture engines see them.
#pragma once

#include "base/Failure.h"
#include "platform/Descriptor.h"
#include "recording/CaptureQueue.h"
#include "recording/RecordFormats.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace quoril {

/// How the capture thread says that there is something to take out. The window waits for the
/// handle to become readable.
class CaptureNotice {
  public:
    CaptureNotice();
    [[nodiscard]] int Handle() const noexcept { return Event.Get(); }
    /// Any thread; never waits.
    void Raise() const noexcept;
    /// Makes the handle unreadable again.
    void Lower() const noexcept;

  private:
    Descriptor Event;
};

/// Where captured sound goes, and how that is told. Both live as long as anybody may still fill
/// them: a sound system that does not answer can hold the capture thread beyond the end of its
/// stream.
struct CaptureLine {
    std::shared_ptr<CaptureQueue> Queue;
    std::shared_ptr<const CaptureNotice> Notice;
};

/// An open device. Sound comes into its queue, on a thread of its own, until the object ends. That
/// takes half a second at most, whatever the sound system does; what is filled afterwards is to be
/// forgotten.
class CaptureStream {
  public:
    CaptureStream() = default;
    virtual ~CaptureStream() = default;
    CaptureStream(const CaptureStream&) = delete;
    CaptureStream& operator=(const CaptureStream&) = delete;

    /// Halves have been taken out of a full queue: what waits behind it may come. Never waits.
    virtual void RoomMade() noexcept = 0;
    /// No sound will come any more: the server or the device is gone. What the queue holds is good.
    [[nodiscard]] virtual bool Lost() const noexcept = 0;
};

/// What went wrong at opening, by the codes that the user is told in words.
enum CaptureErrors : std::int32_t {
    CaptureBadDevice = 2,
    CaptureInUse = 4,
    CaptureBadHandle = 5,
    CaptureNoDriver = 6,
    CaptureNoMemory = 7,
    CaptureBadParameter = 11,
    CaptureBadFormat = 32
};
/// The words for a code; those for a bad parameter when there are none.
[[nodiscard]] std::string CaptureErrorText(std::int32_t Code);
/// The short form for the status label.
[[nodiscard]] std::string CaptureErrorStatus(std::int32_t Code);

/// A device that could not be opened, or whose buffers could not be prepared.
class CaptureFailure final : public Failure {
  public:
    CaptureFailure(std::int32_t ErrorCode, bool WhilePreparing);
    std::int32_t Code;
    bool Preparing;
};

/// One sound system: its devices, and the way to open one. Every routine comes back within about a
/// second, also when the sound system does not answer.
class CaptureSystem {
  public:
    virtual ~CaptureSystem() = default;
    /// The devices as they are now, in words for the user; the first one is what one would take.
    [[nodiscard]] virtual std::vector<std::string> Devices() = 0;
    /// Which of the named formats a device of that list takes.
    [[nodiscard]] virtual std::uint32_t FormatBits(std::size_t Device) = 0;
    /// Opens a device of that list and starts it. The queue has been set up for the format. Throws
    /// CaptureFailure.
    [[nodiscard]] virtual std::unique_ptr<CaptureStream>
    Open(std::size_t Device, const CaptureFormat& Format, const CaptureLine& To) = 0;
};

} // namespace quoril
