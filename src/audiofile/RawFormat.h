// What the user says of a file that tells nothing of itself.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace quoril {

inline constexpr std::array<const char*, 2> RawChnCaptions = {"&Mono", "&Stereo"};
inline constexpr std::array<const char*, 2> RawBitsCaptions = {"&8 bits per sample",
                                                               "1&6 bits per sample"};
inline constexpr std::array<const char*, 4> RawFreqCaptions = {"&11025 Hz", "&22050 Hz",
                                                               "&44100 Hz", "Other H&z"};
inline constexpr std::array<const char*, 4> RawOffsetCaptions = {
    "No Offset", "Offset 1 byte", "Offset 2 bytes", "Offset 3 bytes"};

/// The answers of the dialog, as its options count them.
struct RawChoice {
    static constexpr std::int32_t OtherRate = 3; ///< the last one of `FmtFreqOpn`

    std::int32_t FmtChnOpn = 0;     ///< 0 mono, 1 stereo
    std::int32_t FmtBitsOpn = 1;    ///< 0 8 bits, 1 16 bits
    std::int32_t FmtFreqOpn = 2;    ///< 0 to 2 the rates that have an option, 3 another one
    std::int32_t OtherFreq = 0;     ///< the other rate in Hz; 0 counts as 44100
    std::int32_t DataOffsetCmb = 0; ///< bytes before the first sample, 0 to 3

    [[nodiscard]] std::int32_t Channels() const noexcept { return FmtChnOpn + 1; }
    [[nodiscard]] std::int32_t Bits() const noexcept { return FmtBitsOpn == 0 ? 8 : 16; }
    [[nodiscard]] std::int32_t Freq() const noexcept;
    /// The caption of the option for another rate: the rate, if there is one that has no option of
    /// its own.
    [[nodiscard]] std::string OtherCaption() const;
    /// `FmtFreqOthBtn`: asks for another rate, and chooses the option that has it. What is no rate
    /// is told, and changes nothing.
    void AskOtherFreq();
};

/// Implemented by `RawLoadFrm`, and by tests.
class RawLoadDialog {
  public:
    virtual ~RawLoadDialog() = default;
    /// Lets the user change the choice; true for OK. What AskOtherFreq made of `OtherFreq` stays in
    /// either case.
    virtual bool ShowRawLoad(RawChoice& Choice) = 0;
};

/// Names who asks from now on; the object must outlive its use. With null every dialog counts as
/// cancelled.
void SetRawLoadDialog(RawLoadDialog* Receiver) noexcept;

/// Asks for the format of a file. It begins with the answer of the last time, the first time with
/// the current format. False when the user cancelled.
[[nodiscard]] bool AskRawFormat(RawChoice& Choice);

} // namespace quoril
