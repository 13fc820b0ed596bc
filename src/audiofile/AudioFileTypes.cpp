#include "audiofile/AudioFileTypes.h"

#include "audiofile/AudioFileNames.h"

#include <algorithm>
#include <array>

namespace quoril {

namespace {

using O = OpenSaveClass;

/// A writer that has nothing to choose.
template <bool (O::*Writer)(FileMemoClass&, const std::string&)>
bool Plain(O& Files, FileMemoClass& Store, const std::string& FileName, const WriteChoice&) {
    return (Files.*Writer)(Store, FileName);
}

bool WriteMp3(O& Files, FileMemoClass& Store, const std::string& FileName,
              const WriteChoice& Choice) {
    return Files.FileWriteMp3(Store, FileName, Choice.ReuseParameters);
}

constexpr std::array Types = {
    AudioFileType{"wav", &O::FileLoadWave, &Plain<&O::FileWriteWave>, &O::FileWriteWavePart, true},
    AudioFileType{".au", &O::FileLoadAuSnd, &Plain<&O::FileWriteAuSnd>, &O::FileWriteAuSndPart,
                  true},
    AudioFileType{"raw", &O::FileLoadRaw, &Plain<&O::FileWriteRaw>, &O::FileWriteRawPart, false},
    AudioFileType{"snd", &O::FileLoadRaw, &Plain<&O::FileWriteRaw>, &O::FileWriteRawPart, false},
    AudioFileType{"mp3", &O::FileLoadMp3, &WriteMp3, &O::FileWriteMp3Part, true},
};

} // namespace

const AudioFileType* AudioFileTypeOf(const std::string& FileName) {
    const std::string LastThree = LastThreeOf(FileName);
    const auto* const Found = std::ranges::find_if(
        Types, [&LastThree](const AudioFileType& Each) { return LastThree == Each.LastThree; });
    return Found == Types.end() ? nullptr : Found;
}

} // namespace quoril
