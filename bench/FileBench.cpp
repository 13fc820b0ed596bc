// Opening, editing and saving large files, beside copies of the same files.
#include "BenchSupport.h"
#include "audiofile/OpenSaveClass.h"
#include "effects/GainKernel.h"
#include "storage/CarrierWalk.h"
#include "storage/FileMemoClass.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace quoril;
using namespace quoril::bench;

constexpr std::int64_t TwoGigabytes = 2000000000;
constexpr double Megabyte = 1000000;

void Write(FileMemoClass& Store, const std::string& FileName) {
    if (!OpenSaveClass().FileWriteWave(Store, FileName))
        std::exit(1);
}

void Opening(const BenchFolder& Folder) {
    FileMemoClass Store;
    const std::string Large = Folder.Path("large.wav");
    MakeWav(Large, 2, TwoGigabytes / 4, false);
    OpenWav(Store, Large);
    const std::int64_t Before = BytesRead();
    OpenWav(Store, Large);
    Report("open 2 GB: bytes read", static_cast<double>(BytesRead() - Before) / 1024, "KiB", 128);
    Report("open 2 GB: time", 1000 * BestSecondsOf(5, [&] { OpenWav(Store, Large); }), "ms", 5);
}

/// The times of many runs of one operation.
class Times {
  public:
    void Add(double Seconds) { All.push_back(Seconds); }
    void Tell(const std::string& Name, double Limit) {
        std::sort(All.begin(), All.end());
        Report((Name + ", middle of " + std::to_string(All.size())).c_str(),
               1000 * All[All.size() / 2], "ms", Limit);
        Report((Name + ", longest").c_str(), 1000 * All.back(), "ms", 0);
    }

  private:
    std::vector<double> All;
};

/// Edits in the middle of a document with a thousand earlier ones. `AtBorders`: all edits stand at
/// borders of blocks, so that nothing is read and nothing has to leave the memory. Otherwise they
/// stand anywhere: then a border inside the original file is the stated read of one block, and
/// what was read is pushed out to work files again.
void Editing(const BenchFolder& Folder, bool AtBorders) {
    FileMemoClass Store;
    OpenWav(Store, Folder.Path("large.wav"));
    BlockCarrBuffClass Clip;
    Clip.ReDimSize(1000);
    Clip.WaveLR(1, 1);
    BlockWriteThrough(Clip.Blocks().At(0));
    std::uint32_t Seed = 1;
    const auto Place = [&] {
        Seed = Seed * 1664525U + 1013904223U;
        std::uint32_t Any = Seed >> 4;
        if (!AtBorders)
            return static_cast<std::int32_t>(
                1 + Any % static_cast<std::uint32_t>(Store.WavWaveINos - 200000000));
        const BlockListClass& List = Store.BlocksL();
        std::int32_t Start = 0;
        do {
            const auto Index =
                static_cast<std::int32_t>(Any++ % static_cast<std::uint32_t>(List.Count()));
            Start = BlockTable[static_cast<std::size_t>(List.At(Index))].BlockStart;
        } while (Start > Store.WavWaveINos - 200000000);
        return Start;
    };
    for (int i = 0; i < 1000; ++i)
        Store.WaveDataInsert(Place(), 0, &Clip, &Clip, "Paste", true);
    Times Insert;
    Times Delete;
    Times Take;
    Times Undo;
    for (int i = 0; i < 101; ++i) {
        const std::int32_t At = Place();
        Insert.Add(SecondsOf([&] { Store.WaveDataInsert(At, 0, &Clip, &Clip, "Paste", true); }));
        Delete.Add(SecondsOf([&] { Store.WaveDataDelete(At, 0, 1000, "Cut", true); }));
        Undo.Add(SecondsOf([&] { Store.Undo(); }));
        std::unique_ptr<BlockCarrBuffClass> L;
        std::unique_ptr<BlockCarrBuffClass> R;
        Take.Add(SecondsOf([&] { Store.WaveCollectData(At, At + 99999999, 0, L, R); }));
        Undo.Add(SecondsOf([&] { Store.Undo(); }));
    }
    const std::string Where = AtBorders ? " at a border" : " anywhere";
    const double Limit = AtBorders ? 1 : 0;
    Insert.Tell("insert after 1000 edits" + Where, Limit);
    Delete.Tell("delete after 1000 edits" + Where, Limit);
    Take.Tell("take a carrier of 100 M samples" + Where, Limit);
    Undo.Tell("undo after 1000 edits" + Where, Limit);
}

void Saving(const BenchFolder& Folder) {
    const std::string In = Folder.Path("in.wav");
    const std::string Out = Folder.Path("out.wav");
    constexpr std::int64_t Frames = 75000000; // 300 MB
    MakeWav(In, 2, Frames, true);
    const std::string Command = "cp '" + In + "' '" + Out + "'";
    const auto Copy = [&] {
        if (std::remove(Out.c_str()) != 0 && errno != ENOENT)
            std::exit(1);
        if (std::system(Command.c_str()) != 0)
            std::exit(1);
    };
    Copy();
    const double CopyTime = BestSecondsOf(3, Copy);
    FileMemoClass Store;
    double Untouched = 1e9;
    for (int i = 0; i < 3; ++i) {
        OpenWav(Store, In);
        Untouched = std::min(Untouched, SecondsOf([&] { Write(Store, Out); }));
    }
    Report("save 300 MB untouched / cp", Untouched / CopyTime, "times", 3);
    OpenWav(Store, In);
    std::unique_ptr<BlockCarrBuffClass> L;
    std::unique_ptr<BlockCarrBuffClass> R;
    Store.WaveCollectData(1, static_cast<std::int32_t>(Frames), 0, L, R);
    const auto Half = [](std::int32_t, std::span<const std::int16_t> InRun,
                         std::span<std::int16_t> OutRun) { GainRun(InRun, OutRun, 0.5, 16); };
    ChangeSideBySide(std::array{ChannelChange{L.get(), Half}, ChannelChange{R.get(), Half}});
    Store.WaveDataReplace(1, 0, L.get(), R.get(), "Volume", true);
    L.reset();
    R.reset();
    Report("save 300 MB changed, in memory / cp",
           BestSecondsOf(3, [&] { Write(Store, Out); }) / CopyTime, "times", 2);
    Report("cp of 300 MB", CopyTime, "s", 0);
}

/// In a process of its own, so that its peak is its own.
void Memory(const BenchFolder& Folder) {
    const std::string Large = Folder.Path("large.wav");
    MakeWav(Large, 2, TwoGigabytes / 4, true);
    FileMemoClass Store;
    OpenWav(Store, Large);
    SampleArray L;
    SampleArray R;
    for (std::int32_t From = 1; From <= Store.WavWaveINos; From += 1000000)
        Store.WaveCollectBuff(From, std::min(From + 999999, Store.WavWaveINos), 0, L, R);
    Write(Store, Folder.Path("out.wav"));
    Report("2 GB opened, walked, saved: peak memory above the budget",
           (static_cast<double>(PeakMemory()) - MemoryBudget) / Megabyte, "MB", 150);
}

} // namespace

int main(int argc, char** argv) {
    const std::string What = argc > 1 ? argv[1] : "";
    const BenchFolder Folder;
    MemoryBudget = 536870912;
    if (What == "speed") {
        Opening(Folder);
        Editing(Folder, true);
        Editing(Folder, false);
        Saving(Folder);
    } else if (What == "memory") {
        Memory(Folder);
    } else {
        std::fprintf(stderr, "usage: quoril_file_bench speed|memory\n");
        return 2;
    }
    return 0;
}
