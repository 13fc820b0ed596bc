// The document: two channels as lists of blocks, and the journal that takes edits back.
#pragma once

#include "storage/BlockCarrBuffClass.h"
#include "storage/BlockListClass.h"
#include "storage/UndoRec.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quoril {

struct UndoMenuState;

/// The samples of one channel as they cross the store's interface: indexed from 1, index 0 unused.
using SampleArray = std::vector<std::int16_t>;

/// Positions run from 1 to a channel's length, ranges are inclusive. `WorkChn`: 0 both channels,
/// 1 left, 2 right. A mono document uses the left channel, and the right one stays empty. Samples
/// are signed 16-bit; 8-bit audio is held as byte - 128.
///
/// A failure inside an edit leaves each channel either as it was or as after one of the edit's
/// steps; the document can always be read, saved and undone further.
class FileMemoClass {
  public:
    FileMemoClass();
    ~FileMemoClass();
    FileMemoClass(const FileMemoClass&) = delete;
    FileMemoClass& operator=(const FileMemoClass&) = delete;

    std::int32_t WavFmtChannel = 1;
    std::int32_t WavFmtFreq = 22050;
    std::int32_t WavFmtBits = 16;
    std::int32_t WavWaveINos = 0;    ///< the longer channel's length
    bool SwitchUndoOff = false;      ///< edits leave no record while it is set
    std::int32_t OrgRoFileInUse = 0; ///< number of the file that the document was opened from

    // ---- Reading

    /// A stretch in memory. Brings the touched blocks into memory, but silence, which needs none.
    /// Places without a block are 0.
    /// An array of a channel that is not asked for, or does not exist, has the single index 0.
    void WaveCollectBuff(std::int32_t FromPos, std::int32_t ToPos, std::int32_t WorkChn,
                         SampleArray& WavBuffL, SampleArray& WavBuffR);
    /// The same for `BuffSz` samples, leaving memory and age order alone; for display.
    void QuickBuffGet(std::int32_t FromPos, std::int32_t BuffSz, std::int32_t WorkChn,
                      SampleArray& QBuffL, SampleArray& QBuffR) const;
    /// A stretch for editing: two new carriers that clone the range. A channel that is not asked
    /// for, or does not exist, gives an empty carrier.
    void WaveCollectData(std::int32_t FromPos, std::int32_t ToPos, std::int32_t WorkChn,
                         std::unique_ptr<BlockCarrBuffClass>& FileObL,
                         std::unique_ptr<BlockCarrBuffClass>& FileObR);
    /// The same with all samples in files or silent, as the player needs them. Throws Failure,
    /// naming the file, when one is no longer the file that was entered.
    void WaveCollectData_ForPlay(std::int32_t FromPos, std::int32_t ToPos, std::int32_t WorkChn,
                                 std::unique_ptr<BlockCarrBuffClass>& FileObL,
                                 std::unique_ptr<BlockCarrBuffClass>& FileObR);
    /// One sample, leaving memory and age order alone; 0 where no block is.
    [[nodiscard]] std::int16_t WaveL(std::int32_t WPosition) const;
    [[nodiscard]] std::int16_t WaveR(std::int32_t WPosition) const;
    /// WaveL (channel 1) or WaveR (channel 2) for many positions, from index 0.
    void WaveSamples(std::int32_t Channel, const std::vector<std::int32_t>& Positions,
                     SampleArray& Samples) const;
    /// Tells the system that these positions will be asked of WaveL and WaveR soon.
    void WaveWillNeed(const std::vector<std::int32_t>& Positions) const;
    /// Empties the document and its journal. The format stays.
    void StorageReset();
    /// BudgetEnforce, for callers that have let memory grow.
    void MemoryCheck();

    // ---- Editing
    // Each comes to pass as a whole, or throws and leaves all samples and the journal as they were.

    /// Puts the carriers' samples (clones of their blocks) at `PosStart`; later samples move up.
    /// `IsLastOperation` marks the last operation of a user command. Always true.
    bool WaveDataInsert(std::int32_t PosStart, std::int32_t WorkChn,
                        const BlockCarrBuffClass* FileObL, const BlockCarrBuffClass* FileObR,
                        const std::string& UndoName, bool IsLastOperation);
    /// Takes `DeleteLen` samples out. The range must lie in the channel. Always true.
    bool WaveDataDelete(std::int32_t PosStart, std::int32_t WorkChn, std::int32_t DeleteLen,
                        const std::string& UndoName, bool IsLastOperation);
    /// Puts the carriers' samples in place of as many; what runs past the end makes it longer.
    bool WaveDataReplace(std::int32_t PosStart, std::int32_t WorkChn,
                         const BlockCarrBuffClass* FileObL, const BlockCarrBuffClass* FileObR,
                         const std::string& UndoName, bool IsLastOperation);
    /// WaveDataDelete and WaveDataInsert at the same place.
    void WaveDataExchange(std::int32_t PosStart, std::int32_t WorkChn, std::int32_t DeleteLen,
                          const BlockCarrBuffClass* FileObL, const BlockCarrBuffClass* FileObR,
                          const std::string& UndoName, bool IsLastOperation);
    /// Sets the parts of the format that are not 0. No sample changes. Always false.
    bool WaveDataChangeFmt(std::int32_t NewChn, std::int32_t NewBits, std::int32_t NewFreq,
                           const std::string& UndoName);

    /// Runs the edits of a command as one. If it fails, what was done so far is taken back and
    /// leaves no record, whether undo is on or off, and the failure goes on.
    void EditAsOne(const std::function<void()>& Edits);

    // ---- Undo

    /// Takes the last step back.
    void Undo();
    void UndoInfoUpdateMenu();
    /// Drops the whole journal.
    void UndoInfoReset();
    /// Drops the records up to a number, the oldest first.
    void UndoInfoReleaseUpto(std::int32_t UpToNo);
    [[nodiscard]] UndoMenuState UndoMenu() const;

    [[nodiscard]] std::int32_t WaveNosL() const noexcept { return LengthL; }
    [[nodiscard]] std::int32_t WaveNosR() const noexcept { return LengthR; }
    [[nodiscard]] const BlockListClass& BlocksL() const noexcept { return ListL; }
    [[nodiscard]] const BlockListClass& BlocksR() const noexcept { return ListR; }
    /// Records 1 to UndoCount, index 0 unused; those up to UndoReleased have been given up.
    [[nodiscard]] const std::vector<UndoRec>& UndoRecords() const noexcept { return Journal; }
    /// The number of the last record. A step of the user has one record or several.
    [[nodiscard]] std::int32_t UndoCount() const noexcept;
    [[nodiscard]] std::int32_t UndoReleased() const noexcept { return Released; }

  private:
    void CollectCarriers(std::int32_t FromPos, std::int32_t ToPos, std::int32_t WorkChn,
                         std::unique_ptr<BlockCarrBuffClass>& FileObL,
                         std::unique_ptr<BlockCarrBuffClass>& FileObR, bool ForPlay);
    [[nodiscard]] static BlockSet CollectBlocks(const BlockListClass& List, std::int32_t Length,
                                                std::int32_t FromPos, std::int32_t ToPos,
                                                bool ForPlay, double Base, double Scale);
    /// Puts blocks that are placed from 1 on into a list. `Fresh` gives them, after the last step
    /// that may fail.
    static void BlocksInsert(BlockListClass& List, std::int32_t& Length, std::int32_t PosStart,
                             std::int32_t FreshLen, const std::function<BlockSet()>& Fresh);
    /// Clones on their way into the channels; given up unless they arrive.
    struct EditClones {
        EditClones() = default;
        ~EditClones();
        EditClones(const EditClones&) = delete;
        EditClones& operator=(const EditClones&) = delete;
        BlockSet L;
        BlockSet R;
    };
    /// All that may fail in taking so many samples out of a channel and putting a carrier's, or
    /// none, in their place. Changes no sample.
    static void EditPrepare(BlockListClass& List, std::int32_t Length, std::int32_t PosStart,
                            std::int32_t DeleteLen, const BlockCarrBuffClass* Carrier,
                            BlockSet& Clones);
    /// The same in the channels that are worked on; without carriers nothing is put in.
    void EditPrepareChannels(std::int32_t PosStart, std::int32_t WorkChn, std::int32_t DeleteLen,
                             const BlockCarrBuffClass* FileObL, const BlockCarrBuffClass* FileObR,
                             EditClones& Clones);
    /// What has been prepared.
    void DeletePrepared(std::int32_t PosStart, std::int32_t WorkChn, std::int32_t DeleteLen,
                        const std::string& UndoName, bool IsLastOperation);
    void InsertPrepared(std::int32_t PosStart, std::int32_t WorkChn,
                        const BlockCarrBuffClass* FileObL, const BlockCarrBuffClass* FileObR,
                        EditClones& Clones, const std::string& UndoName, bool IsLastOperation);
    [[nodiscard]] static BlockSet DeleteFrom(BlockListClass& List, std::int32_t& Length,
                                             std::int32_t PosStart, std::int32_t DeleteLen);
    void EditEnd(const std::string& UndoName, bool IsLastOperation);
    void PadChannels(const std::string& UndoName);
    [[nodiscard]] bool JournalOn() const noexcept;
    /// Takes back the records above a number, without a step and its view.
    void EditsTakeBack(std::int32_t UpToNo);
    /// Gives up the records above a number; their edits stay.
    void RecordsDrop(std::int32_t UpToNo);
    UndoRec& JournalAdd(std::int32_t Kind, std::int32_t Pos, std::int32_t Chn, std::int32_t Len,
                        const std::string& UndoName, bool IsLastOperation);
    [[nodiscard]] std::int32_t UndoStepFirst() const;
    void UndoStep();
    /// The selection and the view that stood before the step that begins at a record.
    void SelectionReturn(std::int32_t FirstNo) const;
    void UndoOne(UndoRec& Record);
    /// Puts what a record holds of a channel back where it was.
    static void BlocksReturn(BlockListClass& List, std::int32_t& Length, const UndoRec& Record,
                             BlockSet& Removed);
    static void UndoRecordFree(UndoRec& Record);
    /// Frees the blocks of a channel that begin behind its end.
    static void BlocksBehindFree(BlockListClass& List, std::int32_t Length);

    std::int32_t LengthL = 0;
    std::int32_t LengthR = 0;
    std::int32_t NewBlockLen;
    BlockListClass ListL;
    BlockListClass ListR;
    std::vector<UndoRec> Journal;
    std::int32_t Released = 0;
    bool EditingAsOne = false; ///< records are made even while undo is off
};

/// The document of the process.
extern std::unique_ptr<FileMemoClass> WaveStore;

} // namespace quoril
