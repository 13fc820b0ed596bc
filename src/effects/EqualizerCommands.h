// The equalizer and the band filter: one dialog, one arithmetic.
#pragma once

#include <cstdint>

namespace quoril {

/// Implemented by `EqlizFrm`, and by tests.
class EqlizDialog {
  public:
    virtual ~EqlizDialog() = default;
    /// Asks for the bands in mode 0 (equalizer) or 1 (bands pass or are stopped), and puts them
    /// into `EqBandSet`, whose `NoOfBands` is 0 when the user backs out.
    virtual void ShowEqliz(std::int32_t WorkingMode) = 0;
};

/// Names who asks from now on. The object must outlive its use; with null the question counts as
/// cancelled.
void SetEqlizDialog(EqlizDialog* Receiver) noexcept;

/// `Equalize_Mnu` of that index: asks for the bands and equalizes the selection, as one undo step.
/// 0 is the equalizer, 1 the filter that stops bands or lets them pass. A failure is told, and
/// leaves the document as it was.
void Equalize(std::int32_t Index);

/// `EqBandSplit_Mnu`: tells what it will be.
void BandSplitter();

} // namespace quoril
