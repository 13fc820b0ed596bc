// The two capture engines: which one is open on which device, and how its blocks come to the
// recording.
#pragma once

#include "recording/CaptureSystem.h"
#include "recording/RecordMachine.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quoril {

/// What the engines stand on: the two sound systems, and whether the first one is there.
struct RecordSurroundings {
    CaptureSystem& Dx7; ///< the sound server
    CaptureSystem& Api; ///< the plain sound of the system
    std::function<bool()> Dx7IsThere;
};

/// The indexes of `Dx7OrApiOpn`.
enum RecEngineOptions : std::int32_t { OptionDx7 = 0, OptionApi = 1 };

/// Opens and closes the device, and hands its blocks to the machine. All routines on the thread of
/// the windows.
class RecordDriver {
  public:
    /// Both must outlive the driver.
    RecordDriver(RecordMachine& Recording, const RecordSurroundings& Surroundings);

    // ---- Fields that the window shows

    std::int32_t RecEngine = RecEngineNone;
    bool DxAvailable = false;
    std::int32_t Dx7OrApiOpn = OptionDx7;  ///< the engine that is wanted
    std::vector<std::string> DevicesShown; ///< `DxDivLstCmb`; "---" for an empty entry
    std::int32_t DeviceIndex = -1;         ///< the chosen one, from 0; -1 when there is none
    std::string FmtSup_Lbl;                ///< empty when no device was looked at
    bool FormatSupported = false;
    std::int32_t Dx7Div = 0; ///< chosen device of each engine, from 1; 0 is the first, too
    std::int32_t ApiDiv = 0;

    /// What is captured from the next opening on.
    void SetFormat(const CaptureFormat& Wanted) { Format = Wanted; }

    /// Closes what is open, and opens the wanted engine on its device. With `Same` false it is
    /// found out first whether the sound server is there. False when nothing is open then: the user
    /// has been told.
    bool InitilizeDriver(bool Same);
    /// Afterwards no block comes.
    void Close();

    /// The user wants the engine of an option, or a device of the list shown: what is open is
    /// closed, and InitilizeDriver is to follow in a while.
    void ChangeEngine(std::int32_t Option);
    void ChangeDevice(std::int32_t Index);

    /// Readable when blocks have come.
    [[nodiscard]] int NoticeHandle() const noexcept { return Line.Notice->Handle(); }
    /// Hands over what has come, one block after the other; false when there was none. A call from
    /// within does nothing.
    bool Deliver();
    /// The text of the box of `ShowFmtBtn`.
    [[nodiscard]] std::string SupportedFormatsText() const;

  private:
    [[nodiscard]] CaptureSystem& Wanted() const noexcept;
    [[nodiscard]] std::int32_t& ChosenDevice() noexcept;
    void BeginChange();
    [[nodiscard]] bool ChooseDevice();
    [[nodiscard]] bool FormatAccepted();
    [[nodiscard]] bool OpenDevice();
    void DeliverHalf();

    RecordMachine& Machine;
    RecordSurroundings Around;
    CaptureFormat Format;
    std::vector<RecordFormatName> Formats;
    CaptureLine Line; // a queue for each opening, one notice for all
    std::unique_ptr<CaptureStream> Stream;
    bool Delivering = false;
    std::vector<std::int16_t> RecBuffL;
    std::vector<std::int16_t> RecBuffR;
};

} // namespace quoril
