#include "audiofile/AudioFileTypes.h"

#include "audiofile/AudioFileNames.h"

#include <algorithm>
#include <array>

namespace quoril {

namespace {

const std::array Types = {
    AudioFileType{"wav",
                  [](OpenSaveClass& Files, FileMemoClass& Store, const std::string& Name,
                     bool& Result) { Files.FileLoadWave(Store, Name, Result); },
                  [](OpenSaveClass& Files, FileMemoClass& Store, const std::string& Name,
                     const WriteChoice&) { return Files.FileWriteWave(Store, Name); },
                  [](OpenSaveClass& Files, FileMemoClass& Store, std::int32_t FromPos,
                     std::int32_t ToPos, std::int32_t WorkChn, const std::string& Name) {
                      return Files.FileWriteWavePart(Store, FromPos, ToPos, WorkChn, Name);
                  },
                  true},
};

} // namespace

const AudioFileType* AudioFileTypeOf(const std::string& FileName) {
    const std::string LastThree = LastThreeOf(FileName);
    const auto* const Found = std::ranges::find_if(
        Types, [&LastThree](const AudioFileType& Each) { return LastThree == Each.LastThree; });
    return Found == Types.end() ? nullptr : Found;
}

} // namespace quoril
