#include "BenchSupport.h"

#include "audiofile/OpenSaveClass.h"
#include "platform/FileHandle.h"
#include "platform/ProgramPlaces.h"
#include "settings/STD1.h"
#include "storage/FileMemoClass.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

namespace quoril::bench {

namespace fs = std::filesystem;

namespace {

std::int64_t FigureOf(const char* File, const std::string& Key) {
    std::ifstream In(File);
    for (std::string Line; std::getline(In, Line);)
        if (Line.rfind(Key, 0) == 0)
            return std::strtoll(Line.c_str() + Key.size(), nullptr, 10);
    throw std::runtime_error(std::string("no ") + Key + " in " + File);
}

void Put32(std::uint8_t* To, std::int64_t Value) {
    for (int i = 0; i < 4; ++i)
        To[i] = static_cast<std::uint8_t>(Value >> (8 * i));
}

} // namespace

BenchFolder::BenchFolder() {
    std::string Pattern = GetTempPathA() + "/quoril-bench-XXXXXX";
    if (::mkdtemp(Pattern.data()) == nullptr)
        throw std::runtime_error("no folder for the benchmark");
    Root = Pattern;
    AppPath = TmpDir0 = SysTempDir = Root;
    SessionDir = Root + "/session";
    fs::create_directory(SessionDir);
}

BenchFolder::~BenchFolder() {
    std::error_code Ignored;
    fs::remove_all(Root, Ignored);
}

double SecondsOf(const std::function<void()>& What) {
    const auto Begin = std::chrono::steady_clock::now();
    What();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - Begin).count();
}

double BestSecondsOf(int Rounds, const std::function<void()>& What) {
    double Best = SecondsOf(What);
    for (int i = 1; i < Rounds; ++i)
        Best = std::min(Best, SecondsOf(What));
    return Best;
}

std::int64_t BytesRead() {
    return FigureOf("/proc/self/io", "rchar:");
}

std::int64_t PeakMemory() {
    return FigureOf("/proc/self/status", "VmHWM:") * 1024;
}

void MakeWav(const std::string& FileName, std::int32_t Channels, std::int64_t Frames, bool Real) {
    const std::int64_t DataBytes = Frames * Channels * 2;
    std::array<std::uint8_t, 44> Header{};
    std::memcpy(Header.data(), "RIFF    WAVEfmt ", 16);
    Put32(&Header[4], DataBytes + 36);
    Put32(&Header[16], 16);
    Header[20] = 1;
    Header[22] = static_cast<std::uint8_t>(Channels);
    Put32(&Header[24], 44100);
    Put32(&Header[28], 44100LL * Channels * 2);
    Header[32] = static_cast<std::uint8_t>(Channels * 2);
    Header[34] = 16;
    std::memcpy(&Header[36], "data", 4);
    Put32(&Header[40], DataBytes);
    FileForWriting File(FileName, FileForWriting::Mode::CreateNew);
    File.Write(0, Header.data(), Header.size());
    File.SetLength(44 + DataBytes);
    std::vector<std::int16_t> Piece(1 << 20);
    for (std::int64_t Done = 0; Real && Done < DataBytes;) {
        for (std::size_t i = 0; i < Piece.size(); ++i)
            Piece[i] =
                static_cast<std::int16_t>((static_cast<std::int64_t>(i) * 31 + Done) % 20011);
        const auto Bytes = static_cast<std::size_t>(
            std::min<std::int64_t>(DataBytes - Done, static_cast<std::int64_t>(Piece.size()) * 2));
        File.Write(44 + Done, Piece.data(), Bytes);
        Done += static_cast<std::int64_t>(Bytes);
    }
    File.Close();
}

void OpenWav(FileMemoClass& Store, const std::string& FileName) {
    bool Result = false;
    OpenSaveClass().FileLoadWave(Store, FileName, Result);
    if (!Result)
        throw std::runtime_error(FileName + " could not be opened");
}

void DocumentOf(const std::string& FileName) {
    WaveStore = std::make_unique<FileMemoClass>();
    OpenWav(*WaveStore, FileName);
}

void DocumentInWorkFiles(const std::string& Samples, std::int32_t Frames) {
    WaveStore = std::make_unique<FileMemoClass>();
    WaveStore->WavFmtChannel = 2;
    WaveStore->WavFmtFreq = 44100;
    const std::int32_t Longest = DefaultBlockLen();
    std::array<BlockCarrBuffClass, 2> Carriers;
    for (BlockCarrBuffClass& Carrier : Carriers) {
        const std::int32_t FileNo = WorkFileNew();
        fs::create_hard_link(Samples, WorkFileTable[static_cast<std::size_t>(FileNo)].WorkFileName);
        BlockSet Blocks;
        for (std::int32_t Done = 0; Done < Frames; Done += Longest) {
            const std::int32_t BlockNo = BlockNew(std::min(Longest, Frames - Done), BlockSilence);
            BlockRec& Block = BlockTable[static_cast<std::size_t>(BlockNo)];
            Block.BlockKind = BlockWorkFile;
            Block.FileNo = FileNo;
            Block.FilePos = 2 * Done + 1;
            Block.BlockStart = Done + 1;
            ++WorkFileTable[static_cast<std::size_t>(FileNo)].WorkFileUse;
            Blocks.push_back(BlockNo);
        }
        Carrier.BuffBlocksPutFresh(std::move(Blocks));
    }
    WaveStore->WaveDataInsert(1, 0, &Carriers[0], &Carriers[1], "Fill", true);
    WaveStore->UndoInfoReset();
}

void Report(const char* Name, double Value, const char* Unit, double Limit) {
    std::printf("%s\t%.4g\t%s\t%.4g\n", Name, Value, Unit, Limit);
    std::fflush(stdout);
}

} // namespace quoril::bench
