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

/// Bytes that this process has asked the system to read so far, but for those of asking.
inline std::int64_t BytesReadSoFar() {
    std::ifstream In("/proc/self/io");
    std::string Key;
    std::int64_t Count = -1;
    In >> Key >> Count;
    EXPECT_EQ(Key, "rchar:");
    return Count;
}

} // namespace quoril::test
