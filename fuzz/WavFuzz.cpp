// Any bytes as a WAV file: opening ends in a document or a message, every sample of the document
// can be read, and what is written of it opens with the same samples.
#include "RunFolder.h"

#include "audiofile/OpenSaveClass.h"
#include "base/MsgBoxMod.h"
#include "settings/STD1.h"
#include "storage/WoroFileBlockMod.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

using quoril::fuzz::Require;
using quoril::fuzz::RunFolder;

namespace {

/// Says OK to everything, so that each load goes as far as it can.
class SaysOk final : public quoril::UserMessages {
  public:
    quoril::MsgBoxAnswer MsgBox(const quoril::MsgBoxRequest& Request) override {
        ++Count;
        // These guards tell of a mistake inside the program.
        Require(!Request.Text.starts_with("Error - "));
        return quoril::MsgBoxAnswer::Ok;
    }
    quoril::InputBoxAnswer InputBox(const std::string&, const std::string&,
                                    const std::string&) override {
        return {};
    }
    int Count = 0;
};

const RunFolder& Folder() {
    static const RunFolder Run;
    return Run;
}

/// The samples of both channels, in pieces, one after the other.
std::vector<std::int16_t> AllSamples(const quoril::FileMemoClass& Store) {
    constexpr std::int32_t Piece = 1000;
    std::vector<std::int16_t> All;
    quoril::SampleArray Left;
    quoril::SampleArray Right;
    for (std::int32_t Position = 1; Position <= Store.WavWaveINos; Position += Piece) {
        const std::int32_t Count = std::min(Piece, Store.WavWaveINos - Position + 1);
        Store.QuickBuffGet(Position, Count, 0, Left, Right);
        All.insert(All.end(), Left.begin() + 1, Left.end());
        All.insert(All.end(), Right.begin() + 1, Right.end());
        Require(Store.WaveL(Position) == Left[1]);
        Require(Store.WaveR(Position) == (Store.WavFmtChannel == 2 ? Right[1] : 0));
    }
    return All;
}

bool Load(quoril::FileMemoClass& Store, const std::string& Path) {
    bool Result = false;
    quoril::OpenSaveClass().FileLoadWave(Store, Path, Result);
    Require(!Store.SwitchUndoOff);
    return Result;
}

void Try(const std::string& Path, std::size_t Size) {
    SaysOk Messages;
    quoril::SetUserMessages(&Messages);
    quoril::FileMemoClass Store;
    if (!Load(Store, Path)) {
        Require(Messages.Count > 0);
        return;
    }
    Require(Store.WavWaveINos >= 0);
    Require(static_cast<std::size_t>(Store.WavWaveINos) <= Size);
    const std::vector<std::int16_t> All = AllSamples(Store);
    if (Store.WavWaveINos == 0)
        return;
    const std::string Copy = Folder().Name + "/copy.wav";
    Require(quoril::OpenSaveClass().FileWriteWave(Store, Copy));
    Require(AllSamples(Store) == All);
    quoril::FileMemoClass Again;
    Require(Load(Again, Copy));
    Require(Again.WavFmtChannel == Store.WavFmtChannel && Again.WavFmtBits == Store.WavFmtBits &&
            Again.WavFmtFreq == Store.WavFmtFreq);
    Require(AllSamples(Again) == All);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
    quoril::SysTempDir = quoril::TmpDir0 = quoril::SessionDir = Folder().Name;
    quoril::MemoryBudget = quoril::LowestMemoryBudget;
    const std::string Path = Folder().Name + "/input.wav";
    {
        std::ofstream Out(Path, std::ios::binary | std::ios::trunc);
        Out.write(reinterpret_cast<const char*>(Data), static_cast<std::streamsize>(Size));
    }
    Try(Path, Size);
    quoril::SetUserMessages(nullptr);
    // With the documents gone nothing is left in the tables.
    for (const quoril::BlockRec& Block : quoril::BlockTable)
        Require(Block.BlockKind == quoril::BlockFreeSlot);
    for (const quoril::OrgFileRec& File : quoril::OrgFileTable)
        Require(File.OrgFileName.empty() && File.OrgFileUse == 0);
    Require(quoril::MemoryUsed == 0);
    return 0;
}
