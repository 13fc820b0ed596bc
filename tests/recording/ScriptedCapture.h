// A sound system of a test: its devices, what they take, and what they deliver.
#pragma once

#include "recording/CaptureSystem.h"

#include <algorithm>
#include <functional>

namespace quoril::test {

class ScriptedCapture final : public CaptureSystem {
  public:
    std::vector<std::string> Names = {"first", "second"};
    std::uint32_t Bits = AllFormatBits;
    std::int32_t FailCode = 0; ///< 0: devices can be opened
    bool FailPreparing = false;

    /// Called when a device is about to be opened or closed.
    std::function<void()> Watch = [] {};

    // What came to pass.
    std::vector<std::string> Log;
    CaptureFormat Opened;
    int OpenNow = 0;
    bool LostNow = false;
    std::shared_ptr<CaptureQueue> Queue;
    std::shared_ptr<const CaptureNotice> Notice;

    std::vector<std::string> Devices() override { return Names; }
    std::uint32_t FormatBits(std::size_t) override { return Bits; }
    std::unique_ptr<CaptureStream> Open(std::size_t Device, const CaptureFormat& Format,
                                        const CaptureLine& To) override {
        Watch();
        if (FailCode != 0)
            throw CaptureFailure(FailCode, FailPreparing);
        Log.push_back("open " + std::to_string(Device));
        Opened = Format;
        Queue = To.Queue;
        Notice = To.Notice;
        LostNow = false;
        return std::make_unique<Stream>(*this);
    }

    /// As many halves as are asked for, each of one byte value, as far as there is room.
    void Deliver(int Halves, int Value = 0) const {
        for (int No = 0; No < Halves; ++No) {
            const std::vector<std::byte> Half(Queue->Room(), static_cast<std::byte>(Value));
            if (Queue->Fill(Half.data(), Half.size()))
                Notice->Raise();
        }
    }
    int RoomMadeCount = 0;

  private:
    class Stream final : public CaptureStream {
      public:
        explicit Stream(ScriptedCapture& From) : System(From) { ++System.OpenNow; }
        ~Stream() override {
            System.Watch();
            --System.OpenNow;
            System.Log.emplace_back("close");
        }
        void RoomMade() noexcept override { ++System.RoomMadeCount; }
        [[nodiscard]] bool Lost() const noexcept override { return System.LostNow; }

      private:
        ScriptedCapture& System;
    };
};

} // namespace quoril::test
