// Any answers of the dialog for raw files, and any bytes as such a file. The first eight bytes are
// the answers: channels, bits, the option of the rate, the offset, and four bytes of what is typed
// as another rate; the rest is the file.
#include "SoundFileTrial.h"

#include "audiofile/RawFormat.h"

#include <cstring>

namespace {

constexpr std::size_t AnswerBytes = 8;

/// The dialog as a user may leave it: each option is one of those that there are.
class AnyAnswer final : public quoril::RawLoadDialog {
  public:
    explicit AnyAnswer(const std::uint8_t* Bytes) {
        Choice.FmtChnOpn = Bytes[0] % 2;
        Choice.FmtBitsOpn = Bytes[1] % 2;
        Choice.FmtFreqOpn = Bytes[2] % 4;
        Choice.DataOffsetCmb = Bytes[3] % 4;
        Cancels = (Bytes[3] & 0x80) != 0;
        Typed.assign(reinterpret_cast<const char*>(Bytes + 4), 4);
        quoril::SetRawLoadDialog(this);
    }
    ~AnyAnswer() override { quoril::SetRawLoadDialog(nullptr); }
    AnyAnswer(const AnyAnswer&) = delete;
    AnyAnswer& operator=(const AnyAnswer&) = delete;

    bool ShowRawLoad(quoril::RawChoice& Given) override {
        const std::int32_t Other = Given.OtherFreq;
        quoril::fuzz::Require(Other == 0 || (Other >= 1000 && Other <= 200000));
        quoril::RawChoice Now = Choice;
        Now.OtherFreq = Other;
        Now.AskOtherFreq();
        quoril::fuzz::Require(!Now.OtherCaption().empty() && Now.Freq() >= 1000 &&
                              Now.Freq() <= 200000);
        // What is written is without the bytes that were left out in front.
        if (Again)
            Now.DataOffsetCmb = 0;
        Again = true;
        Given = Now;
        return !Cancels;
    }
    std::string Typed;

  private:
    quoril::RawChoice Choice;
    bool Cancels = false;
    bool Again = false;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
    using quoril::OpenSaveClass;
    if (Size < AnswerBytes)
        return 0;
    const AnyAnswer Answer(Data);
    quoril::fuzz::SoundFileTrial(
        {&OpenSaveClass::FileLoadRaw, &OpenSaveClass::FileWriteRaw, ".raw", true, Answer.Typed})
        .Run(Data + AnswerBytes, Size - AnswerBytes);
    return 0;
}
