// How the program holds the player component.
#pragma once

#include "playback/PlayerComponent.h"

#include <memory>
#include <string>

namespace quoril {

class DsPlayClass {
  public:
    /// Starts the component and tells it the memory budget, the work folder and the state of loop
    /// play. When there is none to be had `Dll` stays empty.
    explicit DsPlayClass(PlayerMaker Maker);
    ~DsPlayClass();
    DsPlayClass(const DsPlayClass&) = delete;
    DsPlayClass& operator=(const DsPlayClass&) = delete;

    /// The component, empty when it could not start.
    std::unique_ptr<PlayerComponent> Dll;

    /// Before an operation that may overwrite or remove a file: the player lets go of the files of
    /// the snapshot; what plays is heard to its end all the same. With `OnlyOriginal` only if the
    /// snapshot reads the opened file itself.
    void ReleasePlayingFiles(bool OnlyOriginal);
    /// The component's messages: "S2" writes the status line, everything else is a box.
    static void Dll_MsgBoxOb(const std::string& Prompt, const std::string& Title);
    /// Makes the component anew if there is none, or if it has ended by itself. Whether there is
    /// one now, and a new one.
    bool MakeAnew();
    /// The component. Throws Failure when there is none.
    [[nodiscard]] PlayerComponent& Component() const;

  private:
    PlayerMaker Make;
};

/// The player of the process.
extern std::unique_ptr<DsPlayClass> DsPlayer;

/// The same for `DsPlayer`; without one nothing happens.
void ReleasePlayingFiles(bool OnlyOriginal);

} // namespace quoril
