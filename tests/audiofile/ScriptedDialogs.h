// The dialogs of file formats in tests: what they were shown with is noted, and they answer from a
// script.
#pragma once

#include "audiofile/EncoderParams.h"
#include "audiofile/EncoderRun.h"
#include "audiofile/Encoders.h"
#include "audiofile/RawFormat.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace quoril::test {

class ScriptedRaw final : public RawLoadDialog {
  public:
    ScriptedRaw() { SetRawLoadDialog(this); }
    ~ScriptedRaw() override { SetRawLoadDialog(nullptr); }
    ScriptedRaw(const ScriptedRaw&) = delete;
    ScriptedRaw& operator=(const ScriptedRaw&) = delete;
    bool ShowRawLoad(RawChoice& Choice) override {
        Shown.push_back(Choice);
        if (Meanwhile)
            Meanwhile();
        if (Change)
            Change(Choice);
        return Ok;
    }
    void Answer(std::int32_t Channels, std::int32_t Bits, std::int32_t Offset = 0) {
        Change = [=](RawChoice& Choice) {
            Choice.FmtChnOpn = Channels - 1;
            Choice.FmtBitsOpn = Bits == 8 ? 0 : 1;
            Choice.FmtFreqOpn = 2; // 44100 Hz
            Choice.DataOffsetCmb = Offset;
        };
    }
    std::vector<RawChoice> Shown;
    std::function<void(RawChoice&)> Change;
    std::function<void()> Meanwhile;
    bool Ok = true;
};

/// All that is asked around an encoder.
class ScriptedEncoder final : public EncChoseAppDialog,
                              public Mp3ParamDialog,
                              public WmaParamDialog,
                              public EncoderWaitDialog {
  public:
    ScriptedEncoder() {
        SetEncChoseAppDialog(this);
        SetMp3ParamDialog(this);
        SetWmaParamDialog(this);
        SetEncoderWaitDialog(this);
    }
    ~ScriptedEncoder() override {
        SetEncChoseAppDialog(nullptr);
        SetMp3ParamDialog(nullptr);
        SetWmaParamDialog(nullptr);
        SetEncoderWaitDialog(nullptr);
    }
    ScriptedEncoder(const ScriptedEncoder&) = delete;
    ScriptedEncoder& operator=(const ScriptedEncoder&) = delete;

    void ShowEncChoseApp(std::int32_t WhichEncoder) override {
        Calls.push_back("choose " + std::to_string(WhichEncoder));
        if (!Chosen.empty())
            ChooseEncoder(WhichEncoder, Chosen);
    }
    bool ShowMp3Param(Mp3Params& Params) override {
        Calls.push_back("mp3 " + std::to_string(Params.CurrentBitRate) + " " +
                        std::to_string(Params.CurrentStereoMode) + " " +
                        std::to_string(Params.CurrentFreq));
        if (Ok && Mp3.CurrentBitRate != 0)
            Params = Mp3;
        return Ok;
    }
    bool ShowWmaParam(WmaParams& Params) override {
        Calls.push_back("wma " + std::to_string(Params.CurrentBitRate) + " " +
                        std::to_string(Params.CurrentChannel) + " " +
                        std::to_string(Params.CurrentFreq));
        if (Ok && WmaBitRate != 0)
            Params.CurrentBitRate = WmaBitRate;
        return Ok;
    }
    bool WaitForEncoder(const std::string& Encoder,
                        const std::function<bool()>& HasEnded) override {
        WaitedFor = Encoder;
        while (!HasEnded())
            if (EndsIt)
                return false;
        return true;
    }
    std::vector<std::string> TakeCalls() { return std::exchange(Calls, {}); }

    std::string Chosen; ///< what is entered in `EncChoseAppFrm`
    Mp3Params Mp3;      ///< what is answered, unless its rate is 0
    std::int32_t WmaBitRate = 0;
    bool Ok = true;
    bool EndsIt = false; ///< the user ends what still runs when the window comes up
    std::string WaitedFor;
    std::vector<std::string> Calls;
};

} // namespace quoril::test
