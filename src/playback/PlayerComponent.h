// The player component as the program sees it, wherever it runs.
#pragma once

#include "base/Failure.h"
#include "storage/PortableBlock.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quoril {

/// The component has ended, or does not answer: nothing plays any more. The text is what the user
/// reads.
class PlayerGone final : public Failure {
  public:
    using Failure::Failure;
};

/// What `PlayStatus` gives when nothing plays, and while playing is held.
inline constexpr std::int32_t StatusStopped = 0;
inline constexpr std::int32_t StatusPaused = 3;

/// The operations in the order of the component's table. Every one throws PlayerGone when the
/// component does not answer. Offsets and positions count samples from the start of the snapshot,
/// from 0.
class PlayerComponent {
  public:
    virtual ~PlayerComponent() = default;

    /// A window's handle switches the driver on, 0 off. The state afterwards: 0 off or failed, 1
    /// sound server, 2 plain system sound.
    virtual std::int32_t DriverState(std::int32_t Window) = 0;
    virtual std::int32_t PlayPosition() = 0;
    virtual void PlayForward() = 0;
    virtual void PlayReverse() = 0;
    /// 0 stopped, 1 or 2 playing, 3 paused.
    virtual std::int32_t PlayStatus() = 0;
    virtual void UTurn() = 0;
    virtual void Stop() = 0;
    virtual void Continue() = 0;
    virtual void Pause() = 0;
    virtual void PauseStart() = 0;
    /// A snapshot of `Length` samples of each channel; the lists are in the portable form.
    virtual void Load(std::int32_t Bits, std::int32_t Channels, std::int32_t Freq,
                      std::int32_t Length, const std::vector<std::int32_t>& LeftList,
                      const std::vector<std::int32_t>& RightList) = 0;
    virtual void MemoryBytes(std::int32_t Bytes) = 0;
    virtual void Loop(bool On) = 0;
    virtual void TempoForward(float Tempo) = 0;
    virtual void TempoReverse(float Tempo) = 0;
    virtual void TempDir(const std::string& Folder) = 0;
    virtual void ReleaseFiles() = 0;
    virtual void PlayForwardFrom(std::int32_t Offset) = 0;
    virtual void PlayReverseFrom(std::int32_t Offset) = 0;
    /// The original files of the snapshot that is loaded next. The component plays them only as
    /// they were when they were entered; what has been changed since is silent, and told.
    virtual void FilesEntered(const std::vector<EnteredFile>& Files) = 0;

    /// Whether the component is still there. It can end by itself.
    [[nodiscard]] virtual bool IsAlive() const = 0;
    /// The component's message to the user, on the program's own thread.
    std::function<void(const std::string& Prompt, const std::string& Title)> MsgBoxOb;
};

/// Starts a component. Throws Failure when there is none to be had.
using PlayerMaker = std::function<std::unique_ptr<PlayerComponent>()>;

} // namespace quoril
