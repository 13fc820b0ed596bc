#include "effects/BandSet.h"

#include "base/Arithmetic.h"
#include "platform/Text.h"
#include "settings/STD1.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

namespace quoril {

namespace {

constexpr const char* Section = "Effects";
constexpr const char* ValuesKey = "Equalizer";
constexpr const char* StopsKey = "EqBandStop";
constexpr std::size_t UsualBands = 8;
constexpr std::size_t MostRememberedBands = 100;

std::int32_t Number(std::string_view Text) {
    // Far beyond all limits is as good as further.
    constexpr double Far = 1e6;
    return RoundToLong(std::clamp(LeadingNumber(Text), -Far, Far));
}

/// The numbers of a remembered list, from index 1 on, as many as its count says.
std::vector<std::int32_t> ListRead(const char* Key, const char* Default) {
    // Read whole: fifty bands are longer than what the other settings may be.
    const std::string Text = ProfileGet(Section, Key, Default, SettingsFileName());
    std::vector<std::int32_t> List;
    for (std::size_t At = 0; At <= Text.size();) {
        const std::size_t End = std::min(Text.find(',', At), Text.size());
        List.push_back(Number(std::string_view(Text).substr(At, End - At)));
        At = End + 1;
    }
    const auto Count = static_cast<std::size_t>(std::max(List[0], 0));
    const bool Sound = Count >= std::size_t{FewestBands} && Count <= MostRememberedBands;
    List.resize((Sound ? Count : UsualBands) + 1, 0);
    return List;
}

template <typename Values>
void ListWrite(const char* Key, const Values& List) {
    std::string Text = std::to_string(List.size() - 1);
    for (std::size_t Band = 1; Band < List.size(); ++Band)
        Text.append(1, ',').append(std::to_string(static_cast<std::int32_t>(List[Band])));
    IniPut(Section, Key, Text);
}

/// The value at `Step` of `Steps` from one end of the range to the other.
std::int32_t Rising(std::int32_t Step, std::int32_t Steps) {
    return RoundToLong(static_cast<double>(Step) / Steps * 100 - 50);
}
std::int32_t Falling(std::int32_t Step, std::int32_t Steps) {
    return RoundToLong(50 - static_cast<double>(Step) / Steps * 100);
}

} // namespace

BandSet EqBandSet;

float BandGain(std::int32_t Value) {
    constexpr double Base = 1.03;
    return Single(std::pow(Base, Value) - std::pow(Base, BandValueLow));
}

std::int32_t BandPercent(std::int32_t Value) {
    return RoundToLong(static_cast<double>(BandGain(Value)) * 100);
}

std::int32_t BandValueOfPercent(std::int32_t Percent) {
    std::int32_t Nearest = BandValueLow;
    for (std::int32_t Value = BandValueLow; Value <= BandValueHigh; ++Value)
        if (Distance(BandPercent(Value), Percent) < Distance(BandPercent(Nearest), Percent))
            Nearest = Value;
    return Nearest;
}

std::int32_t ClampedBandValue(std::int32_t Value) noexcept {
    return std::clamp(Value, BandValueLow, BandValueHigh);
}

BandSet BandSetRead() {
    BandSet Set;
    Set.Bands = ListRead(ValuesKey, "8,7,7,7,7,7,7,7,7,");
    Set.NoOfBands = static_cast<std::int32_t>(Set.Bands.size()) - 1;
    Set.Bands[0] = 0;
    for (std::int32_t& Value : Set.Bands)
        Value = ClampedBandValue(Value);
    return Set;
}

void BandSetWrite(const BandSet& Set) {
    ListWrite(ValuesKey, Set.Bands);
}

std::vector<bool> BandStopRead() {
    const std::vector<std::int32_t> List = ListRead(StopsKey, "8,0,0,0,1,1,0,0,1");
    std::vector<bool> BandStop(List.size(), false);
    for (std::size_t Band = 1; Band < List.size(); ++Band)
        BandStop[Band] = List[Band] != 0;
    return BandStop;
}

void BandStopWrite(const std::vector<bool>& BandStop) {
    ListWrite(StopsKey, BandStop);
}

BandSet BandSetOfStops(const std::vector<bool>& BandStop) {
    BandSet Set;
    BandSetResize(Set, static_cast<std::int32_t>(BandStop.size()) - 1);
    for (std::size_t Band = 1; Band < BandStop.size(); ++Band)
        if (BandStop[Band])
            Set.Bands[Band] = BandValueLow;
    return Set;
}

void BandSetResize(BandSet& Set, std::int32_t NoOfBands) {
    Set.Bands.resize(static_cast<std::size_t>(NoOfBands) + 1, BandValueNeutral);
    Set.NoOfBands = NoOfBands;
}

void BandSetShape(BandSet& Set, BandShape Shape) {
    const std::int32_t Count = Set.NoOfBands;
    const std::int32_t Middle = RoundToLong(Count / 2.0 + 0.5);
    for (std::int32_t Band = 1; Band <= Count; ++Band) {
        const bool Upper = Band >= Middle && Middle < Count;
        const std::int32_t Step = Upper ? Band - Middle : Band - 1;
        const std::int32_t Steps = Upper ? Count - Middle : Middle - 1;
        std::int32_t& Value = Set.Bands[static_cast<std::size_t>(Band)];
        switch (Shape) {
        case BandShape::MiddleLow:
            Value = Upper ? Rising(Step, Steps) : Falling(Step, Steps);
            break;
        case BandShape::MiddleHigh:
            Value = Upper ? Falling(Step, Steps) : Rising(Step, Steps);
            break;
        case BandShape::Increasing:
            Value = Rising(Band - 1, Count - 1);
            break;
        case BandShape::Decreasing:
            Value = Falling(Band - 1, Count - 1);
            break;
        }
    }
}

void BandSetReverse(BandSet& Set) {
    std::reverse(Set.Bands.begin() + 1, Set.Bands.end());
}

void BandSetInvert(BandSet& Set) {
    for (std::size_t Band = 1; Band < Set.Bands.size(); ++Band)
        Set.Bands[Band] = -Set.Bands[Band];
}

void BandSetNeutral(BandSet& Set) {
    std::fill(Set.Bands.begin() + 1, Set.Bands.end(), BandValueNeutral);
}

} // namespace quoril
