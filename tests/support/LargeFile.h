// WAV files whose length is what a test is about, and how much of them is read.
#pragma once

#include "audiofile/OpenSaveClass.h"
#include "audiofile/WavHeader.h"
#include "storage/FileMemoClass.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>

namespace quoril::test {

/// A stereo 16-bit file of zeros, which takes no room on the disk.
inline void MakeLongWav(const std::string& FileName, std::int32_t Frames) {
    const auto Header = WavHeaderMake({2, 44100, 16}, Frames);
    std::ofstream(FileName, std::ios::binary)
        .write(reinterpret_cast<const char*>(Header.data()),
               static_cast<std::streamsize>(Header.size()));
    std::filesystem::resize_file(FileName, Header.size() + static_cast<std::uintmax_t>(Frames) * 4);
}

/// Opens a file as the document.
inline void OpenAsDocument(const std::string& FileName) {
    WaveStore = std::make_unique<FileMemoClass>();
    bool Result = false;
    OpenSaveClass().FileLoadWave(*WaveStore, FileName, Result);
    ASSERT_TRUE(Result);
}

/// A figure of what this process has asked of the system so far, but for those of asking.
inline std::int64_t SystemCount(const std::string& Wanted) {
    std::ifstream In("/proc/self/io");
    std::string Key;
    std::int64_t Count = -1;
    while (In >> Key >> Count)
        if (Key == Wanted)
            return Count;
    ADD_FAILURE() << Wanted;
    return -1;
}
/// Bytes read, and bytes written.
inline std::int64_t BytesReadSoFar() {
    return SystemCount("rchar:");
}
inline std::int64_t BytesWrittenSoFar() {
    return SystemCount("wchar:");
}

} // namespace quoril::test
