// The carrier that owns one flat temporary file of samples, with a sliding window in memory.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quoril {

/// One channel's worth of samples in a file of signed 16-bit little-endian samples, positions
/// from 1: sample p lies at byte 2p - 2. For results of unknown length that are produced in
/// sequence. Access that jumps about is slow. The file is deleted at the carrier's end.
/// Files that cannot be read or written throw Failure.
class FileCarrBuffClass {
  public:
    FileCarrBuffClass();
    ~FileCarrBuffClass();
    FileCarrBuffClass(const FileCarrBuffClass&) = delete;
    FileCarrBuffClass& operator=(const FileCarrBuffClass&) = delete;

    std::int32_t WaveINos = 0;         ///< samples in the file
    bool FileNameUseItNotCopy = false; ///< setting FileName1 adopts the file instead of copying it

    /// The longest window in samples. Setting it flushes and moves the window to the start.
    [[nodiscard]] std::int32_t BuffLength() const noexcept { return LongestWindow; }
    void BuffLength(std::int32_t NewSz);

    /// Flushes and gives up the file without deleting it.
    void FileRelease();
    /// Changes the length of the file. Growing writes zeros if `DoInitilize`, otherwise it leaves
    /// the gap, which reads as zeros, to the file system.
    void ReDimSize(std::int32_t NewSz, bool DoInitilize);
    /// The file's name, after flushing: the file is then complete on the disk.
    [[nodiscard]] std::string FileName1();
    /// Replaces the contents by a file, adopted or copied.
    void FileName1(const std::string& NewName);
    /// Writes a run, PutData[1] to its last index, growing the file as needed.
    void BuffPut(std::int32_t WavPos, const std::vector<std::int16_t>& PutData);
    /// Reads a run into GetData[1] to its last index.
    void BuffGet(std::int32_t WavPos, std::vector<std::int16_t>& GetData);
    /// Moves the window to begin after `NewZeroPtr` samples; changes BuffLength if `NewRange` > 0.
    void MovePointer(std::int32_t NewZeroPtr, std::int32_t NewRange);

    /// One sample. Position 0 is held apart and never reaches the file.
    [[nodiscard]] std::int16_t WaveLR(std::int32_t WavPos);
    void WaveLR(std::int32_t WavPos, std::int16_t Sample);

  private:
    void NameMake();
    /// Makes the file on first need: zeros, as many as WaveINos tells, at least one.
    void FileMakeIfNone();
    /// Deletes the file if there is one that is ours.
    void FileDrop() noexcept;
    void Flush();
    /// The window's place for a position, moving it there; null when there is none.
    [[nodiscard]] std::int16_t* Reach(std::int32_t WavPos);

    bool WindowDirty = false;
    std::int32_t ZeroPtr = 0;
    std::int32_t WindowLen = 0;
    std::vector<std::int16_t> Window;
    std::string FileName;
    bool FileMade = false; ///< there is a file of that name, and it is ours; else only reserved
    std::int16_t ZeroSample = 0;
    std::int32_t LongestWindow;
};

} // namespace quoril
