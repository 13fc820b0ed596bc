// What reads and writes each type of audio file.
#pragma once

#include "audiofile/OpenSaveClass.h"
#include "storage/FileMemoClass.h"

#include <cstdint>
#include <string>

namespace quoril {

/// What a writer of a whole file is told beside the document and the name.
struct WriteChoice {
    bool ReuseParameters = false; ///< take the parameters of the last save without asking
};

/// One type of file, found by the last three characters of a name.
struct AudioFileType {
    const char* LastThree;
    void (OpenSaveClass::*Load)(FileMemoClass&, const std::string& FileName, bool& Result);
    bool (*Write)(OpenSaveClass&, FileMemoClass&, const std::string& FileName,
                  const WriteChoice& Choice);
    bool (OpenSaveClass::*WritePart)(FileMemoClass&, std::int32_t FromPos, std::int32_t ToPos,
                                     std::int32_t WorkChn, const std::string& FileName);
    bool HasBookmarkFile; ///< a save writes the bookmarks beside the audio
};

/// The type of a name, whatever the case of its letters; null when there is none.
[[nodiscard]] const AudioFileType* AudioFileTypeOf(const std::string& FileName);

} // namespace quoril
