// The play controls: the one entry to playback, and where playing stands.
#pragma once

#include "storage/BlockCarrBuffClass.h"

#include <cstdint>
#include <memory>

namespace quoril {

/// What `PlayCommand` is asked for. Codes that are not here only bring the buttons up to date.
enum PlayCodes : std::int32_t {
    PlayNew = 1, ///< the main selection, which becomes the play selection
    PlayCodeStop = 2,
    PlayCodePause = 3,      ///< pause, or go on when paused
    PlayCodeUTurn = 4,      ///< the other direction from here
    PlayPrepared = 5,       ///< what PlayBuffL and PlayBuffR already hold
    PlayStopAndRelease = 6, ///< stop, and drop PlayBuffL and PlayBuffR
    PlayNewRev = 10,
    PlaySelection = 11, ///< the play selection
    PlaySelectionRev = 12,
    PlayFrom = 13, ///< the play selection, beginning `Arg` samples into it
    PlayFromRev = 14
};

// Where playing stands. The snapshot is what was handed to the player last.
extern std::int32_t PlayBaseSample; ///< document position of the snapshot's first sample
extern std::int32_t PlayEndSample;  ///< document position of its last sample
extern std::int32_t PlayLength;     ///< its samples
extern std::int32_t PlayBits;
extern std::int32_t PlayChannels;  ///< 1 or 2; 0 before anything has played
extern std::int32_t PlayFreq;      ///< Hz
extern std::int32_t PlayDirection; ///< 1 forward, -1 reverse: the last play command's
extern std::int32_t PlayWorkChn;   ///< 0 both, 1 left, 2 right: which play cursors show
extern std::unique_ptr<BlockCarrBuffClass> PlayBuffL; ///< the snapshot's blocks
extern std::unique_ptr<BlockCarrBuffClass> PlayBuffR; ///< empty when one channel plays

/// A play control was used. What goes wrong is told. What plays makes a component anew that has
/// ended; one that ends in the midst, or does not answer, is given up as PlayerLost has it, which
/// PlayStopAndRelease does without a word. A snapshot that cannot be made stops what played before.
void PlayCommand(std::int32_t Code, std::int32_t Arg);
/// Brings "Pause" and `PlayPosTimer` in line with what plays. Throws PlayerGone.
void PlayButtonsRefresh();
/// There is no component any more: one that is still held is given up, and the window shows that
/// nothing plays. The next command that plays makes another.
void PlayerLost();

/// What the component does, as its `PlayStatus` has it; StatusStopped without a driver and when it
/// is gone. Throws PlayerGone.
[[nodiscard]] std::int32_t PlayStatusNow();
/// Whether something plays or is paused. Throws PlayerGone.
[[nodiscard]] bool PlayIsOn();
/// The document position that is heard now. Throws Failure without a component that answers.
[[nodiscard]] std::int32_t PlayPositionNow();

/// `PlayPosTimer` has fired: turns itself off when playing has ended. Throws Failure when the
/// component does not answer; the timer is off then.
void PlayPosTimerFired();
/// Moves the play cursors and writes the position. Throws Failure likewise.
void PlayCursorPositioning();

/// Shows `LoopOn` on the button "Loop", stores it and tells the player. Throws PlayerGone.
void SetLoopONOFF();
/// Space: plays when nothing plays, else stops.
void PlayOrStop();

} // namespace quoril
