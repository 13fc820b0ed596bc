// Any bytes as the descriptions of a clip of another process, or as the line that leads to them: a
// paste gives a clip or one message, a clip that was read is the same after it was copied on, and
// the files of the other process stay as they were.
//
// The first byte tells what follows: bit 0 a clip of two channels, bit 1 the line of text itself.
// Otherwise there are 4 bytes with the clip's length, 2 with the size of the left description, and
// the descriptions. The other process's files are reached by names that are the same in each run.
#include "RunFolder.h"

#include "base/DocumentState.h"
#include "base/MsgBoxMod.h"
#include "edit/ClipDescription.h"
#include "edit/ClipMarker.h"
#include "edit/PrivateClipboard.h"
#include "edit/SystemClipboard.h"
#include "settings/STD1.h"
#include "storage/FileMemoClass.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

using quoril::fuzz::Require;
using quoril::fuzz::RunFolder;

namespace {

constexpr int FolderHandle = 900; // the seeds name files by it
constexpr std::uintmax_t ForeignBytes = 6000;
constexpr std::int32_t MostCompared = 5000;

using Carrier = std::unique_ptr<quoril::BlockCarrBuffClass>;
using Samples = std::vector<std::int16_t>;

class SaysYes final : public quoril::UserMessages {
  public:
    quoril::MsgBoxAnswer MsgBox(const quoril::MsgBoxRequest& Request) override {
        // These guards tell of a mistake inside the program.
        Require(!Request.Text.starts_with("Error - "));
        if (Request.Buttons == quoril::MsgBoxButtons::YesNo)
            return quoril::MsgBoxAnswer::Yes;
        ++Count;
        return quoril::MsgBoxAnswer::Ok;
    }
    quoril::InputBoxAnswer InputBox(const std::string&, const std::string&,
                                    const std::string&) override {
        return {};
    }
    int Count = 0; ///< of messages that ask nothing
};

struct TextSlot final : quoril::SystemClipboard {
    [[nodiscard]] std::string Text() const override { return Held; }
    void SetText(const std::string& Text) override { Held = Text; }
    void Clear() override { Held.clear(); }
    std::string Held;
};

void WriteFile(const std::string& Name, const std::uint8_t* Data, std::size_t Size) {
    std::ofstream Out(Name, std::ios::binary | std::ios::trunc);
    Out.write(reinterpret_cast<const char*>(Data), static_cast<std::streamsize>(Size));
}

/// The folder of the other process, with two files that samples can lie in; and one of this one.
class Folders {
  public:
    Folders() {
        std::filesystem::create_directory(Own());
        std::filesystem::create_directory(Run.Name + "/session");
        std::vector<std::uint8_t> Bytes(ForeignBytes);
        for (std::size_t i = 0; i < Bytes.size(); ++i)
            Bytes[i] = static_cast<std::uint8_t>(i * 7 + i / 256);
        for (const char* Name : {"/w", "/o"})
            WriteFile(Run.Name + Name, Bytes.data(), Bytes.size());
        const int Handle = ::open(Run.Name.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
        Require(Handle >= 0 && ::dup2(Handle, FolderHandle) == FolderHandle);
    }
    [[nodiscard]] const std::string& Foreign() const { return Run.Name; }
    [[nodiscard]] std::string Own() const { return Run.Name + "/own"; }
    void CheckForeign() const {
        for (const char* Name : {"/w", "/o"})
            Require(std::filesystem::file_size(Run.Name + Name) == ForeignBytes);
    }

  private:
    RunFolder Run;
};

const Folders& Places() {
    static const Folders All;
    return All;
}

Samples FirstSamples(const Carrier& Which) {
    Samples All;
    if (Which != nullptr)
        for (std::int32_t i = 1; i <= std::min(Which->WaveINos, MostCompared); ++i)
            All.push_back(Which->WaveLR(i));
    return All;
}

/// Puts the input where a paste looks, and gives the line of text.
std::string Offer(const std::uint8_t* Data, std::size_t Size) {
    for (const std::int32_t Channel : {1, 2})
        quoril::FileDelete(quoril::ClipDescriptionName(Places().Foreign(), Channel));
    if ((Data[0] & 2) != 0)
        return {reinterpret_cast<const char*>(Data + 1), Size - 1};
    quoril::ClipMarker Marker;
    Marker.Channels = (Data[0] & 1) != 0 ? 2 : 1;
    Marker.ClipPointer = 4711;
    Marker.Folder = Places().Foreign();
    constexpr std::size_t Header = 7;
    std::uint16_t LeftSize = 0;
    if (Size >= Header) {
        std::memcpy(&Marker.Length, Data + 1, 4);
        std::memcpy(&LeftSize, Data + 5, 2);
    }
    const std::size_t Start = std::min(Size, Header);
    const std::size_t LeftBytes = std::min<std::size_t>(LeftSize, Size - Start);
    WriteFile(quoril::ClipDescriptionName(Marker.Folder, 1), Data + Start, LeftBytes);
    WriteFile(quoril::ClipDescriptionName(Marker.Folder, 2), Data + Start + LeftBytes,
              Size - Start - LeftBytes);
    return quoril::ClipMarkerLine(Marker);
}

void PasteInto(TextSlot& Slot, SaysYes& Messages) {
    Carrier Left;
    Carrier Right;
    if (!quoril::GetClipboard(Left, Right, 0)) {
        Require(Left == nullptr && Right == nullptr);
        // A disk that is too small for the clip ends the command without a word of its own.
        Require(Messages.Count <= 1);
        Require(quoril::ClipPointer == 0);
        return;
    }
    Require(Messages.Count == 0 && Left != nullptr && Right != nullptr);
    const auto Marker = quoril::ClipMarkerRead(Slot.Held);
    Require(Marker.has_value() && Left->WaveINos == Marker->Length);
    const Samples ClipL = FirstSamples(Left);
    const Samples ClipR = FirstSamples(Right);

    // Copied on, it is the same for yet another process.
    if (Left->WaveINos == Right->WaveINos && Left->WaveINos <= MostCompared) {
        Require(
            quoril::PutClipboard(0, 16, quoril::WaveStore->WavFmtFreq, Left.get(), Right.get()));
        const Carrier KeptL = std::move(quoril::ClipCarrL);
        const Carrier KeptR = std::move(quoril::ClipCarrR);
        quoril::ClipPointer = 0;
        Carrier AgainL;
        Carrier AgainR;
        Require(quoril::GetClipboard(AgainL, AgainR, 0));
        Require(FirstSamples(AgainL) == ClipL && FirstSamples(AgainR) == ClipR);
    }
    quoril::WaveStore->WavFmtChannel = 2;
    quoril::WaveStore->WaveDataInsert(1, 0, Left.get(), Right.get(), "Paste Insert", true);
    quoril::WaveStore->Undo();
    Require(quoril::WaveStore->WavWaveINos == 0);
    Require(Messages.Count == 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
    if (Size == 0)
        return 0;
    quoril::AppPath = Places().Own();
    quoril::SysTempDir = quoril::TmpDir0 = Places().Foreign();
    quoril::SessionDir = Places().Foreign() + "/session";
    quoril::MemoryBudget = quoril::LowestMemoryBudget;
    quoril::UndoOptionON = true;
    SaysYes Messages;
    TextSlot Slot;
    quoril::SetUserMessages(&Messages);
    quoril::SetSystemClipboard(&Slot);
    quoril::WaveStore = std::make_unique<quoril::FileMemoClass>();
    Slot.Held = Offer(Data, Size);
    PasteInto(Slot, Messages);
    quoril::ClearClipboard();
    quoril::WaveStore.reset();
    quoril::FilesSweep();
    quoril::SetSystemClipboard(nullptr);
    quoril::SetUserMessages(nullptr);
    Places().CheckForeign();
    // With the document and the clip gone nothing is left in the tables, and no working file.
    for (const quoril::BlockRec& Block : quoril::BlockTable)
        Require(Block.BlockKind == quoril::BlockFreeSlot);
    for (const quoril::OrgFileRec& File : quoril::OrgFileTable)
        Require(File.OrgFileUse == 0);
    for (const quoril::WorkFileRec& File : quoril::WorkFileTable)
        Require(File.WorkFileUse == 0);
    Require(std::filesystem::is_empty(quoril::SessionDir));
    Require(quoril::MemoryUsed == 0);
    return 0;
}
