#include "audiofile/SoundLoad.h"

#include "audiofile/FrameWriter.h"
#include "audiofile/OpenSaveClass.h"
#include "base/Arithmetic.h"
#include "base/CommandFailure.h"
#include "base/MsgBoxMod.h"
#include "base/ProgressReport.h"
#include "settings/STD1.h"
#include "storage/UndoOffScope.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace quoril {

namespace {

constexpr std::int64_t MostFileBytes = 2146435072;
constexpr double MostFrames = 2143289344.0;
constexpr std::int32_t LowestRate = 1000;
constexpr std::int32_t HighestRate = 200000;

/// Frames that are decoded at a time: their bytes stay in the processor's cache.
constexpr std::int32_t SliceFrames = 65536;

} // namespace

bool SoundLoad::TakeLength(std::int64_t Fewest, const char* TooShort) {
    Identity = IdentityOfFile(FileName);
    Length = Identity.Bytes;
    if (Length < Fewest)
        return Refuse(TooShort);
    if (Length > MostFileBytes) {
        MsgBox("This wav file is too large\nOnly about 2GB will be opened");
        Length = MostFileBytes;
        ToldTooLarge = true;
    }
    return true;
}

void SoundLoad::TellLowSpace(std::int64_t Bytes) {
    (void)FreeDiskEnough(Bytes); // whatever the answer is, it has told the user
}

bool SoundLoad::RateFits(std::int32_t Hz) {
    if (Hz >= LowestRate && Hz <= HighestRate)
        return true;
    MsgBox(fmt::format("Sampling rate {} Hz is not supported", Hz));
    return false;
}

void SoundLoad::CheckSameFile(const FileIdentity& Now) const {
    if (Now != Identity)
        throw Failure("Another program changed the file while it was being opened.\n" + FileName);
}

void SoundLoad::OpenFile() {
    File = FileForReading(FileName);
    CheckSameFile(File.Identity());
}

bool SoundLoad::Refuse(const std::string& Text) const {
    MsgBox(Text, "Error Loading " + FileName);
    return false;
}

double SoundLoad::AvailableFrames(double FrameBytes) const {
    return std::max(0.0, std::floor(static_cast<double>(Length - DataStart) / FrameBytes));
}

void SoundLoad::TakeFrames(double Count) {
    if (Count > MostFrames && !ToldTooLarge)
        MsgBox("This wav file is too long\nOnly about 2GB will be opened");
    Frames = RoundToLong(std::min(Count, MostFrames));
}

void SoundLoad::CountFrames(double FrameBytes, double HeaderBytes) {
    if (FrameBytes == 0.0)
        throw Failure("Division by zero");
    const double Available = AvailableFrames(FrameBytes);
    const double Claimed = RoundEven(HeaderBytes / FrameBytes);
    if (Claimed > Available)
        MsgBox(fmt::format("Header shows that the size of audio is\n"
                           "{:.0f} Samples ({:.3f} Seconds)\n"
                           "But as per the size of the file it will be\n"
                           "{:.0f} Samples ({:.3f} Seconds)",
                           Claimed, Claimed / Rate, Available, Available / Rate));
    TakeFrames(std::min(Claimed, Available));
}

void SoundLoad::BeginDocument(std::int32_t Bits) {
    Store.StorageReset();
    Store.WavFmtFreq = Rate;
    Store.WavFmtChannel = Channels;
    Store.WavFmtBits = Bits;
}

void SoundLoad::ShowProgress(std::int32_t Position) const {
    ProgressFrm->SetCurrentProgress(
        Frames == 0 ? 0.0F : static_cast<float>(Position) / static_cast<float>(Frames));
}

void SoundLoad::DecodeAll(SampleCode Code, LooseBlocks& Left, LooseBlocks& Right) {
    const std::int32_t ChunkFrames = FramesPerChunk(FileBlockLength, BitsInFile(Code), Channels);
    for (std::int32_t Position = 0; Position < Frames;) {
        ShowProgress(Position);
        const std::int32_t Count = std::min(ChunkFrames, Frames - Position);
        DecodeChunk(Code, Position, Count, Left, Right);
        Position += Count;
    }
    // Nothing of what another program wrote meanwhile is taken for the file.
    CheckSameFile(File.Identity());
}

void SoundLoad::DecodeChunk(SampleCode Code, std::int32_t Position, std::int32_t Count,
                            LooseBlocks& Left, LooseBlocks& Right) {
    const FrameDecoder Decode = FrameDecoderFor(Code);
    const std::int32_t FrameBytes = Channels * BitsInFile(Code) / 8;
    std::vector<std::uint8_t> Bytes(static_cast<std::size_t>(std::min(SliceFrames, Count)) *
                                    static_cast<std::size_t>(FrameBytes));
    SampleRun SamplesL = SampleRun::Unfilled(Count);
    SampleRun SamplesR = Stereo() ? SampleRun::Unfilled(Count) : SampleRun();
    for (std::int32_t Done = 0; Done < Count;) {
        const std::int32_t Slice = std::min(SliceFrames, Count - Done);
        File.Read(DataStart + std::int64_t{Position + Done} * FrameBytes, Bytes.data(),
                  static_cast<std::size_t>(Slice) * static_cast<std::size_t>(FrameBytes));
        Decode(Bytes.data(), static_cast<std::size_t>(Slice), SamplesL.Write() + Done,
               Stereo() ? SamplesR.Write() + Done : nullptr);
        Done += Slice;
    }
    const auto Keep = [&](LooseBlocks& Set, SampleRun& Samples) {
        const std::int32_t BlockNo =
            Set.Add([&] { return BlockNewFilled(Count, std::move(Samples)); });
        BlockTable[static_cast<std::size_t>(BlockNo)].BlockStart = Position + 1;
    };
    Keep(Left, SamplesL);
    if (Stereo())
        Keep(Right, SamplesR);
}

void SoundLoad::FillStore(const std::function<void(LooseBlocks& Left, LooseBlocks& Right)>& Fill) {
    try {
        BlockCarrBuffClass CarrierL;
        BlockCarrBuffClass CarrierR;
        AuWriteMode = 0;
        {
            LooseBlocks Left;
            LooseBlocks Right;
            Fill(Left, Right);
            Left.GiveTo(CarrierL);
            Right.GiveTo(CarrierR);
        }
        File.Close();
        const UndoOffScope NoUndo(Store);
        Store.WaveDataInsert(1, Stereo() ? 0 : 1, &CarrierL, &CarrierR, {}, true);
    } catch (...) {
        // One channel may be in already, or some of its blocks.
        Store.OrgRoFileInUse = 0;
        Store.StorageReset();
        throw;
    }
}

void RunLoad(bool& Result, const char* Refused, const std::function<LoadEnding()>& Load) {
    Result = false;
    LoadEnding How = LoadEnding::RefusedQuietly;
    RunCommand("Wave file load error", [&] { How = Load(); });
    if (How == LoadEnding::Refused)
        MsgBox(Refused);
    if (How != LoadEnding::Loaded)
        return;
    WaveChanged = false;
    BookmarkChanged = false;
    Result = true;
}

} // namespace quoril
