#include "audiofile/AudioFileNames.h"

#include "platform/FileSystem.h"
#include "platform/Text.h"

#include <algorithm>
#include <array>

namespace quoril {

bool IsFileTypeSupported(const std::string& FileName) {
    constexpr std::array<const char*, 5> Endings = {"wav", "mp3", "raw", "snd", "au"};
    return std::ranges::find(Endings, EndingOfPath(FileName)) != Endings.end();
}

std::string LastThreeOf(const std::string& FileName) {
    return LowerCase(FileName.substr(FileName.size() - std::min<std::size_t>(FileName.size(), 3)));
}

std::string BookmarkFileOf(const std::string& AudioFile) {
    const std::size_t Cut = LastThreeOf(AudioFile) == ".au" ? 2 : 3;
    if (AudioFile.size() < Cut)
        return {};
    return AudioFile.substr(0, AudioFile.size() - Cut) + "bok";
}

} // namespace quoril
