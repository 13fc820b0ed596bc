#include "storage/DiskSpaceGuardMod.h"

#include "base/Arithmetic.h"
#include "base/Failure.h"
#include "settings/STD1.h"
#include "storage/WoroFileBlockMod.h"

#include <fmt/format.h>

#include <limits>

namespace quoril {

namespace {

ChkDskSpcDialog* Dialog = nullptr;

constexpr std::int64_t MostBytes = std::numeric_limits<std::int32_t>::max();

constexpr DiskSpaceStateRec Enough = {"Ok, Continue", true, "Free space is enough, try again now.",
                                      65280};
constexpr DiskSpaceStateRec Risky = {"Try again", true,
                                     "Free space is not enough, trying now is risky.", 255};
constexpr DiskSpaceStateRec Lacking = {
    "Can not continue", false, "Disk free space available is not sufficient for this operation.",
    0};

/// Whether the samples of a block have no place in a work file yet.
bool IsToTransfer(const BlockRec& Block) noexcept {
    return Block.BlockKind == BlockMemory || Block.BlockKind == BlockOrgFile ||
           Block.BlockKind == BlockSilence;
}

} // namespace

void SetChkDskSpcDialog(ChkDskSpcDialog* Receiver) noexcept {
    Dialog = Receiver;
}

std::int64_t DiskSpaceTransfer() noexcept {
    std::int64_t Samples = 0;
    for (const BlockRec& Block : BlockTable)
        if (IsToTransfer(Block))
            Samples += Block.BlockLen;
    return Samples * 2;
}

bool DiskSpaceGuard(std::int64_t Needed) {
    return DiskSpaceGuard(Needed, FreeDiskBytes);
}

bool DiskSpaceGuard(std::int64_t Needed, const FreeBytesRoutine& FreeBytes) {
    DiskSpaceNumbers Numbers;
    Numbers.Needed1 = DiskSpaceTransfer();
    Numbers.Needed2 = Needed;
    Numbers.Needed0 = Numbers.Needed1 + Numbers.Needed2;
    if (Numbers.Needed0 > MostBytes)
        throw Failure("The document and this command together need more than 2 GB of work space.\n"
                      "It helps to use \"Clear Undo Backup Data\" of the Edit menu, to select a "
                      "smaller part,\nor to save the document in parts and to work on these.");
    Numbers.Available = FreeBytes();
    if (Numbers.Available > Numbers.Needed0)
        return true;
    return Dialog != nullptr && Dialog->ShowChkDskSpc(Numbers, FreeBytes) == 1;
}

const DiskSpaceStateRec& DiskSpaceStateOf(const DiskSpaceNumbers& Numbers) noexcept {
    if (Numbers.Needed0 < Numbers.Available)
        return Enough;
    return Numbers.Needed2 < Numbers.Available ? Risky : Lacking;
}

const DiskSpaceStateRec& DiskSpaceStateFirst() noexcept {
    return Lacking;
}

std::string DiskSpaceText(std::int64_t Bytes) {
    constexpr double BytesPerMegabyte = 1048576.0;
    const double Hundredths = RoundEven(static_cast<double>(Bytes) * 100.0 / BytesPerMegabyte);
    return fmt::format("{:.2f} mb", Hundredths / 100.0);
}

} // namespace quoril
