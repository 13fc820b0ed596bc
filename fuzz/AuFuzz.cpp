// Any bytes as a Sun/NeXT file.
#include "SoundFileTrial.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
    using quoril::OpenSaveClass;
    quoril::fuzz::SoundFileTrial(
        {&OpenSaveClass::FileLoadAuSnd, &OpenSaveClass::FileWriteAuSnd, ".au"})
        .Run(Data, Size);
    return 0;
}
