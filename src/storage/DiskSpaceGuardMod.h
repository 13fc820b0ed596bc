// Asking for disk space before a command begins: an edit does not look at the disk while it runs.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace quoril {

/// What is needed and what there is, in bytes.
struct DiskSpaceNumbers {
    std::int64_t Needed1 = 0;   ///< what the blocks would need in work files
    std::int64_t Needed2 = 0;   ///< what the command asks for
    std::int64_t Needed0 = 0;   ///< the sum of the two
    std::int64_t Available = 0; ///< free now
};

/// Free bytes of the place for temporary data; 0 when it cannot be asked.
using FreeBytesRoutine = std::function<std::int64_t()>;

/// Implemented by `ChkDskSpcFrm`, and by tests.
class ChkDskSpcDialog {
  public:
    virtual ~ChkDskSpcDialog() = default;
    /// Shows the numbers until the user decides: 1 to go on, 0 to cancel. `FreeBytes` tells what is
    /// free from time to time meanwhile.
    virtual std::int32_t ShowChkDskSpc(const DiskSpaceNumbers& Numbers,
                                       const FreeBytesRoutine& FreeBytes) = 0;
};

/// Names who asks from now on; the object must outlive its use. With null the question counts as
/// cancelled.
void SetChkDskSpcDialog(ChkDskSpcDialog* Receiver) noexcept;

/// True when a command that needs `Needed` bytes may go on: the disk has more free than that and
/// than everything that is not yet in a work file, or the user wants to try. With false the command
/// ends without having changed anything. Throws Failure when all that is needed leaves 32 bits.
[[nodiscard]] bool DiskSpaceGuard(std::int64_t Needed);
/// The same with the free space told by `FreeBytes`.
[[nodiscard]] bool DiskSpaceGuard(std::int64_t Needed, const FreeBytesRoutine& FreeBytes);

/// Bytes that every block in memory only, in an original file, or silent, would need in work files.
/// Blocks of the document, of carriers and of the journal count alike.
[[nodiscard]] std::int64_t DiskSpaceTransfer() noexcept;

// ---- What the dialog shows

/// How things stand while the dialog is open.
struct DiskSpaceStateRec {
    const char* TryAgainCaption;
    bool TryAgainEnabled;
    const char* Message;
    std::int32_t MessageColor; ///< 0x00BBGGRR
};
[[nodiscard]] const DiskSpaceStateRec& DiskSpaceStateOf(const DiskSpaceNumbers& Numbers) noexcept;
/// How the dialog comes up, before it has looked at the disk by itself.
[[nodiscard]] const DiskSpaceStateRec& DiskSpaceStateFirst() noexcept;

/// Bytes as megabytes of 1048576 with two decimals, "12.50 mb".
[[nodiscard]] std::string DiskSpaceText(std::int64_t Bytes);

inline constexpr std::int32_t DiskSpaceTick = 800; ///< milliseconds between two looks at the disk

} // namespace quoril
