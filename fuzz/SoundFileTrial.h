// Opening any bytes as an audio file: it ends in a document or a message, every sample of the
// document can be read, and what is written of it opens with the same samples.
#pragma once

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
#include <utility>
#include <vector>

namespace quoril::fuzz {

/// Says OK to everything, or No, so that each load goes as far as it can.
class SaysOk final : public UserMessages {
  public:
    explicit SaysOk(std::string WhatIsTyped) : Typed(std::move(WhatIsTyped)) {
        SetUserMessages(this);
    }
    ~SaysOk() override { SetUserMessages(nullptr); }
    SaysOk(const SaysOk&) = delete;
    SaysOk& operator=(const SaysOk&) = delete;
    MsgBoxAnswer MsgBox(const MsgBoxRequest& Request) override {
        ++Count;
        // These guards tell of a mistake inside the program.
        Require(!Request.Text.starts_with("Error - "));
        return Request.Buttons == MsgBoxButtons::YesNo ? MsgBoxAnswer::No : MsgBoxAnswer::Ok;
    }
    InputBoxAnswer InputBox(const std::string&, const std::string&, const std::string&) override {
        return {!Typed.empty(), Typed};
    }
    int Count = 0;

  private:
    std::string Typed;
};

/// A reader and the writer of the same format, with the ending of their files.
struct SoundFormat {
    void (OpenSaveClass::*Load)(FileMemoClass&, const std::string& FileName, bool& Result);
    bool (OpenSaveClass::*Write)(FileMemoClass&, const std::string& FileName);
    const char* Ending;
    bool MayRefuseQuietly = false;
    std::string Typed = {}; ///< into each box; empty for Cancel
};

/// Tries the bytes as a file of this format.
class SoundFileTrial {
  public:
    explicit SoundFileTrial(const SoundFormat& WhichFormat) : Format(WhichFormat) {}

    void Run(const std::uint8_t* Data, std::size_t Size) const {
        static const RunFolder Folder;
        SysTempDir = TmpDir0 = SessionDir = Folder.Name;
        MemoryBudget = LowestMemoryBudget;
        const std::string Path = Folder.Name + "/input" + Format.Ending;
        std::ofstream(Path, std::ios::binary | std::ios::trunc)
            .write(reinterpret_cast<const char*>(Data), static_cast<std::streamsize>(Size));
        Try(Path, Size, Folder.Name + "/copy" + Format.Ending);
        // With the documents gone nothing is left in the tables.
        for (const BlockRec& Block : BlockTable)
            Require(Block.BlockKind == BlockFreeSlot);
        for (const OrgFileRec& File : OrgFileTable)
            Require(File.OrgFileName.empty() && File.OrgFileUse == 0);
        Require(MemoryUsed == 0);
    }

  private:
    void Try(const std::string& Path, std::size_t Size, const std::string& Copy) const {
        const SaysOk Messages(Format.Typed);
        FileMemoClass Store;
        if (!Load(Store, Path)) {
            Require(Messages.Count > 0 || Format.MayRefuseQuietly);
            return;
        }
        Require(Store.WavWaveINos >= 0);
        Require(static_cast<std::size_t>(Store.WavWaveINos) <= Size);
        const std::vector<std::int16_t> All = AllSamples(Store);
        if (Store.WavWaveINos == 0)
            return;
        Require((OpenSaveClass().*Format.Write)(Store, Copy));
        Require(AllSamples(Store) == All);
        FileMemoClass Again;
        if (!Load(Again, Copy)) { // shorter than what the format takes for a sound
            Require(static_cast<std::size_t>(Store.WavWaveINos) < ShortestFile);
            return;
        }
        Require(Again.WavFmtChannel == Store.WavFmtChannel &&
                Again.WavFmtBits == Store.WavFmtBits && Again.WavFmtFreq == Store.WavFmtFreq);
        Require(AllSamples(Again) == All);
    }
    [[nodiscard]] bool Load(FileMemoClass& Store, const std::string& Path) const {
        bool Result = false;
        (OpenSaveClass().*Format.Load)(Store, Path, Result);
        Require(!Store.SwitchUndoOff);
        return Result;
    }
    /// The samples of both channels, in pieces, one after the other.
    [[nodiscard]] static std::vector<std::int16_t> AllSamples(const FileMemoClass& Store) {
        constexpr std::int32_t Piece = 1000;
        std::vector<std::int16_t> All;
        SampleArray Left;
        SampleArray Right;
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

    static constexpr std::size_t ShortestFile = 45;
    SoundFormat Format;
};

} // namespace quoril::fuzz
