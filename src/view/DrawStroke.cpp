#include "view/DrawStroke.h"

#include "base/Arithmetic.h"
#include "base/BusyPointer.h"
#include "storage/CarrierWriter.h"
#include "storage/FileMemoClass.h"

#include <algorithm>

namespace quoril {

void DrawStroke::Begin(std::int32_t Pos, std::int32_t Val) {
    DrawCount = 0;
    DrawPos.assign(1, 0);
    DrawVal.assign(1, 0);
    Add(Pos, Val);
    DrawLastPos = Pos;
    DrawLastVal = Val;
}

std::int32_t DrawStroke::Move(std::int32_t Pos, std::int32_t Val, std::int32_t Freq) {
    const std::int32_t FirstAdded = DrawCount + 1;
    if (DrawCount > Freq)
        return FirstAdded;
    const double Dp = static_cast<double>(Pos) - DrawLastPos;
    const double Dv = static_cast<double>(Val) - DrawLastVal;
    if (Pos == DrawLastPos)
        Add(Pos, Val);
    else
        for (std::int32_t p = DrawLastPos;; p += Pos > DrawLastPos ? 1 : -1) {
            Add(p, RoundToLong((static_cast<double>(p) - DrawLastPos) / Dp * Dv + DrawLastVal));
            if (p == Pos)
                break;
        }
    DrawLastPos = Pos;
    DrawLastVal = Val;
    return FirstAdded;
}

void DrawStroke::Add(std::int32_t Pos, std::int32_t Val) {
    DrawPos.push_back(Pos);
    DrawVal.push_back(Val);
    ++DrawCount;
}

DrawnStretch DrawStroke::Drawn(std::int32_t First, std::int32_t Last, std::int32_t Bits) {
    const std::int32_t Lowest = Bits == 8 ? SampleLow(Bits) : -SampleHigh(Bits);
    DrawnStretch Stretch;
    std::int32_t Hi = 0;
    DrawSkip.assign(DrawPos.size(), true);
    for (std::size_t i = 1; i < DrawPos.size(); ++i) {
        const std::int32_t Pos = DrawPos[i];
        DrawSkip[i] = Pos < First || Pos > Last;
        if (DrawSkip[i])
            continue;
        Stretch.Lo = Stretch.Lo == 0 ? Pos : std::min(Stretch.Lo, Pos);
        Hi = std::max(Hi, Pos);
    }
    if (Stretch.Lo == 0)
        return Stretch;
    Stretch.Samples.assign(static_cast<std::size_t>(Hi - Stretch.Lo) + 1, 0);
    for (std::size_t i = 1; i < DrawPos.size(); ++i)
        if (!DrawSkip[i])
            Stretch.Samples[static_cast<std::size_t>(DrawPos[i] - Stretch.Lo)] =
                static_cast<std::int16_t>(std::clamp(DrawVal[i], Lowest, SampleHigh(Bits)));
    return Stretch;
}

void DrawnStretchPut(std::int32_t Channel, const DrawnStretch& Drawn) {
    const BusyPointer Busy;
    CarrierWriter Writer(static_cast<std::int32_t>(Drawn.Samples.size()));
    Writer.Put(Drawn.Samples);
    const auto Made = Writer.Finish();
    BlockCarrBuffClass* const Left = Channel == 1 ? Made.get() : nullptr;
    BlockCarrBuffClass* const Right = Channel == 2 ? Made.get() : nullptr;
    WaveStore->EditAsOne([&] {
        WaveStore->WaveDataReplace(Drawn.Lo, Channel, Left, Right, "Draw - with mouse", true);
    });
}

} // namespace quoril
