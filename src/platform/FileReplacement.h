// Writing a file of the user's anew without putting at risk what it holds.
#pragma once

#include "platform/FileHandle.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace quoril {

/// A file that is written anew. What is there stays as it is until the new contents are complete:
/// they go into a neighbour, which then takes the file's place with its owner, rights and notes. A
/// symbolic link stays one, and the file behind it is replaced. A file that has several names, or
/// an owner that cannot be given to another file, stays itself and gets the complete contents; as
/// long as that takes, they also lie beside it as "NAME (complete).ENDING".
/// Where there is no file yet, it is written itself.
class FileReplacement {
  public:
    /// Throws SystemFailure when the file cannot be made or is protected against writing, and
    /// Failure when its name stands for a device or a pipe, or no neighbour can be made.
    explicit FileReplacement(const std::string& FileName);
    /// Gives up what was not put in place: the neighbour goes; a file that was not there before
    /// stays as far as it was written.
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    /// The name that was asked for.
    [[nodiscard]] const std::string& Name() const noexcept { return Asked; }
    /// Writes all bytes at `Offset` (from 0). Throws SystemFailure, naming the file asked for.
    void Write(std::int64_t Offset, const void* Source, std::size_t Bytes);
    /// The contents are complete and take the place of the old ones. Done once; a second call does
    /// nothing. Throws SystemFailure, and Failure when another program holds the old file locked;
    /// the old contents are whole then, unless the words say where the new ones lie instead.
    void PutInPlace();
    [[nodiscard]] bool IsInPlace() const noexcept { return Placed; }
    /// What the end of the object does, for a process that ends without it.
    void GiveUp() noexcept;

  private:
    void MakeNeighbour();
    [[nodiscard]] bool TakesThePlace();
    /// Gives the complete neighbour a name that the user sees and that no save clears away. Where
    /// that is not possible it keeps its own.
    void ShowNeighbour() noexcept;
    void CopyIntoThePlace();

    std::string Asked;
    std::string Target;    ///< the file itself, behind all links; empty where there is none yet
    std::string Neighbour; ///< empty when there is none, or none any more
    unsigned RightsBefore = 0;
    FileForWriting File;
    bool Placed = false;
};

/// Writes a file anew by `Write`, and puts it in place. What fails is thrown on; the words then say
/// that the file that was there is unchanged, if there was one.
void ReplaceFile(const std::string& FileName, const std::function<void(FileReplacement&)>& Write);

} // namespace quoril
