#include "effects/BandChoice.h"

#include <utility>

namespace quoril {

namespace {

std::size_t Place(std::int32_t Band) {
    return static_cast<std::size_t>(Band);
}

} // namespace

BandChoice BandChoice::Read(std::int32_t WorkingMode) {
    BandChoice Choice;
    Choice.WorkingMode = WorkingMode;
    if (WorkingMode == EqualizerMode) {
        Choice.EqBands = BandSetRead();
        Choice.BandStop.resize(Choice.EqBands.Bands.size(), false);
    } else {
        Choice.BandStop = BandStopRead();
        BandSetResize(Choice.EqBands, static_cast<std::int32_t>(Choice.BandStop.size()) - 1);
    }
    return Choice;
}

bool BandChoice::SetNoOfBands(std::int32_t Count) {
    if (Count < FewestBands || Count > MostBands || Count == NoOfBands())
        return false;
    BandSetResize(EqBands, Count);
    BandStop.resize(EqBands.Bands.size(), false);
    return true;
}

bool BandChoice::SetValue(std::int32_t Band, std::int32_t Value) {
    std::int32_t& Present = EqBands.Bands[Place(Band)];
    return std::exchange(Present, ClampedBandValue(Value)) != ClampedBandValue(Value);
}

std::int32_t BandChoice::Value(std::int32_t Band) const {
    return EqBands.Bands[Place(Band)];
}

bool BandChoice::Stopped(std::int32_t Band) const {
    return BandStop[Place(Band)];
}

void BandChoice::Toggle(std::int32_t Band) {
    BandStop[Place(Band)] = !BandStop[Place(Band)];
}

void BandChoice::Accept() const {
    if (WorkingMode == EqualizerMode) {
        EqBandSet = EqBands;
        for (std::int32_t& Each : EqBandSet.Bands)
            Each = ClampedBandValue(Each);
        BandSetWrite(EqBandSet);
    } else {
        EqBandSet = BandSetOfStops(BandStop);
        BandStopWrite(BandStop);
    }
}

} // namespace quoril
