// The duration entry dialog `EntDurFrm`, shared by the value labels and the commands that ask for a
// length: what goes in, what comes out, and how its two boxes follow each other.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quoril {

/// What the dialog is shown with. The two boxes and the two labels are filled with these texts.
struct EntDurRequest {
    std::string Caption = "Change Size";
    std::string Prompt;                         ///< `PromptLbl`
    std::string RefSize = "Current File Size:"; ///< `RefSizeLbl`
    std::string CurSizeDur;                     ///< `CurSizeDurLbl`
    std::string CurSizeSmp;                     ///< `CurSizeSmpLbl`
    std::string EnterDur;                       ///< `EnterDurTxt` at first
    std::string EnterSmp;                       ///< `EnterSmpTxt` at first
    std::int32_t Freq = 22050;                  ///< Hz, for the boxes that follow each other
};

/// How it was closed. The samples are the result, whichever box was typed in.
struct EntDurAnswer {
    bool OkClicked = false;
    std::string EnterSmp;
};

/// Implemented by `EntDurFrm`, and by tests.
class EntDurDialog {
  public:
    virtual ~EntDurDialog() = default;
    virtual EntDurAnswer ShowEntDur(const EntDurRequest& Request) = 0;
};

/// Names who asks from now on. The object must outlive its use; with null every entry counts as
/// cancelled.
void SetEntDurDialog(EntDurDialog* Receiver) noexcept;
[[nodiscard]] EntDurAnswer EntDurAsk(const EntDurRequest& Request);

/// A request whose labels and boxes show `Current` and `Proposed` samples at `Freq` Hz.
[[nodiscard]] EntDurRequest EntDurFor(std::int64_t Current, std::int64_t Proposed,
                                      std::int32_t Freq);

/// What `EnterSmpTxt` becomes after an edit of `EnterDurTxt`: digits, not limited to 32 bits. Empty
/// for a time beyond single precision.
[[nodiscard]] std::string EntDurSamplesFollow(std::string_view EnterDur, std::int32_t Freq);
/// What `EnterDurTxt` becomes after an edit of `EnterSmpTxt`; empty when there is no text for such
/// a time.
[[nodiscard]] std::string EntDurTimeFollow(std::string_view EnterSmp, std::int32_t Freq);

/// The leading number of `EnterSmpTxt`, rounded. Not limited to 32 bits.
[[nodiscard]] double EntDurNumber(std::string_view EnterSmp) noexcept;
/// The same as samples; fails with "Overflow" outside 32 bits.
[[nodiscard]] std::int32_t EntDurSamples(std::string_view EnterSmp);

} // namespace quoril
