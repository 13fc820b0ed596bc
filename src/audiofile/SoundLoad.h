// What the readers of all formats share: the words, the counting of frames, the way of decoded
// samples into the document.
#pragma once

#include "audiofile/LooseBlocks.h"
#include "audiofile/SampleCoders.h"
#include "base/DocumentState.h"
#include "platform/FileHandle.h"
#include "storage/FileMemoClass.h"

#include <cstdint>
#include <functional>
#include <string>

namespace quoril {

/// How far a load came: all the way, or to a refusal, which some are told a second time.
enum class LoadEnding { Loaded, Refused, RefusedQuietly };

/// One load of one file. A reader derives from it, tells what is wrong with the file, and fills
/// the document.
class SoundLoad {
  public:
    /// `Name` must live as long as this. `BlockLength` as OpenSaveClass::FileBlockLength.
    SoundLoad(FileMemoClass& Document, const std::string& Name, std::int32_t BlockLength)
        : Store(Document), FileName(Name), FileBlockLength(BlockLength) {}
    SoundLoad(const SoundLoad&) = delete;
    SoundLoad& operator=(const SoundLoad&) = delete;

  protected:
    ~SoundLoad() = default;

    /// Notes which file it is and how long. False when it has fewer bytes than `Fewest`, which is
    /// told as `TooShort`. Of a file of more than 2 GB the rest is left, which is told, too.
    [[nodiscard]] bool TakeLength(std::int64_t Fewest, const char* TooShort);
    /// Says that the disk is short of room, if it is. The load goes on: the file itself needs none
    /// at once.
    static void TellLowSpace(std::int64_t Bytes);
    /// False when the rate is none that a document can have, which is told.
    [[nodiscard]] static bool RateFits(std::int32_t Hz);
    /// Throws Failure when the file is no longer the one whose length was taken.
    void OpenFile();
    void CheckSameFile(const FileIdentity& Now) const;
    /// Tells the user what is wrong with the file; false.
    bool Refuse(const std::string& Text) const;

    /// Whole frames that the file has from `DataStart` on.
    [[nodiscard]] double AvailableFrames(double FrameBytes) const;
    /// Takes so many `Frames`, or what a document can have, if that is less, which is told.
    void TakeFrames(double Count);
    /// Takes what the header claims in bytes, or what the file has, if that is less, which is told.
    /// Throws Failure when a frame has no bytes.
    void CountFrames(double FrameBytes, double HeaderBytes);

    /// Runs `Fill`, which is to make the blocks of both channels, and makes them the document, with
    /// nothing to undo. When it fails the document is empty.
    void FillStore(const std::function<void(LooseBlocks& Left, LooseBlocks& Right)>& Fill);
    /// Reads all frames into memory blocks, chunk by chunk.
    void DecodeAll(SampleCode Code, LooseBlocks& Left, LooseBlocks& Right);
    /// The old document gives place to an empty one of this format.
    void BeginDocument(std::int32_t Bits);

    void ShowProgress(std::int32_t Position) const;
    [[nodiscard]] bool Stereo() const { return Channels == 2; }

    FileMemoClass& Store;
    const std::string& FileName;
    const std::int32_t FileBlockLength;

    FileIdentity Identity; ///< of the file whose length was taken
    FileForReading File;
    std::int64_t Length = 0; ///< bytes of the file that count
    std::int32_t Channels = 1;
    std::int32_t Rate = 0;
    std::int64_t DataStart = 0; ///< offset of the first sample, from 0
    std::int32_t Frames = 0;

  private:
    void DecodeChunk(SampleCode Code, std::int32_t Position, std::int32_t Count, LooseBlocks& Left,
                     LooseBlocks& Right);

    bool ToldTooLarge = false;
};

/// The frame of a reader. `Result` tells whether the file is in the store; a refusal is told as
/// `Refused`, what fails on the way under "Wave file load error".
void RunLoad(bool& Result, const char* Refused, const std::function<LoadEnding()>& Load);

} // namespace quoril
