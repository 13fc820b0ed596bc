// Names of audio files.
#pragma once

#include <string>

namespace quoril {

/// Whether the text after the last "." of a name, in any case, is that of an audio file.
[[nodiscard]] bool IsFileTypeSupported(const std::string& FileName);
/// The same test, for a name from outside: the command line, the recent files, a drop.
[[nodiscard]] inline bool IsAudioFileName(const std::string& FileName) {
    return IsFileTypeSupported(FileName);
}

/// The last three characters of a name in lower case, fewer when it is shorter.
[[nodiscard]] std::string LastThreeOf(const std::string& FileName);

/// The filter of the file dialogs: pairs of a caption and patterns, all divided by "|".
inline constexpr const char* AudioFileFilter =
    "Audio files (Wav, Mp3, Au, Raw, Snd)|*.wav;*.Mp3;*.au;*.raw;*.snd|Wave files (Wav)|*.Wav|"
    "Mp3 files (Mp3)|*.Mp3|(Sun/Next) Sound Clip (Au)|*.au|Raw Sound file (Raw, Snd)|*.raw;*.snd|"
    "All files (*.*)|*.*";

/// The bookmark file beside an audio file: its last three characters, or two for ".au", make place
/// for "bok". Empty for a name that is shorter.
[[nodiscard]] std::string BookmarkFileOf(const std::string& AudioFile);

} // namespace quoril
