#include "player/PlaySource.h"

#include "base/Arithmetic.h"
#include "base/Failure.h"

#include <algorithm>
#include <string>
#include <utility>

namespace quoril {

namespace {

// Below, the output would be faster than the sound.
constexpr std::int32_t LowestFreq = 100;
constexpr std::int32_t HighestFreq = 200000;

} // namespace

PlaySource::PlaySource(std::int32_t Bits, std::int32_t Channels, std::int32_t Freq,
                       std::int32_t Length, std::span<const std::int32_t> LeftList,
                       std::span<const std::int32_t> RightList,
                       std::span<const EnteredFile> Entered)
    : Depth(Bits), ChannelCount(Channels), Rate(Freq), Frames(Length) {
    if (Freq < LowestFreq || Freq > HighestFreq)
        throw Failure("The player can not play sound with a sampling rate of " +
                      std::to_string(Freq) + " Hz");
    if ((Bits != 8 && Bits != 16) || (Channels != 1 && Channels != 2) || Length < 0)
        throw Failure("The player can not play sound of this format");
    for (const EnteredFile& Each : Entered)
        Files.Expect(Each.Name, Each.Identity);
    Lists.emplace_back(LeftList, Files);
    if (Channels == 2)
        Lists.emplace_back(RightList, Files);
}

void PlaySource::PlaceAt(std::int64_t Offset, std::int32_t Direction) {
    Way = Direction < 0 ? -1 : 1;
    At = Way > 0 ? std::clamp<std::int64_t>(Offset, 0, Frames)
                 : std::clamp<std::int64_t>(Offset, -1, std::int64_t{Frames} - 1);
}

bool PlaySource::Begin(bool Loop) {
    if (Frames == 0)
        return false;
    if (At >= 0 && At < Frames)
        return true;
    if (Loop)
        At = Way > 0 ? 0 : Frames - 1;
    return Loop;
}

PlaySource::Stretch PlaySource::Next(std::size_t Most, bool Loop, std::int16_t* Target) {
    if (Most == 0 || !Begin(Loop))
        return {At, Way, 0};
    const std::int64_t Left = Way > 0 ? Frames - At : At + 1;
    const std::size_t Count = std::min<std::size_t>(Most, static_cast<std::size_t>(Left));
    const std::int64_t Lowest = Way > 0 ? At : At - static_cast<std::int64_t>(Count) + 1;
    const auto Stride = static_cast<std::size_t>(ChannelCount);
    for (std::size_t Channel = 0; Channel < Lists.size(); ++Channel)
        Lists[Channel].Read(Lowest + 1, Count, Target + Channel, Stride);
    if (Depth == 8)
        ToFullScale(Target, Count * Stride);
    if (Way < 0)
        Reverse(Target, Count);
    const Stretch Result{At, Way, Count};
    At += Way * static_cast<std::int64_t>(Count);
    return Result;
}

void PlaySource::ToFullScale(std::int16_t* Target, std::size_t Count) const noexcept {
    for (std::size_t i = 0; i < Count; ++i)
        Target[i] = static_cast<std::int16_t>(ClipSample(Target[i], 8) * 256);
}

void PlaySource::Reverse(std::int16_t* Target, std::size_t Count) const noexcept {
    const auto Stride = static_cast<std::size_t>(ChannelCount);
    for (std::size_t i = 0, j = Count - 1; i < j; ++i, --j)
        for (std::size_t Channel = 0; Channel < Stride; ++Channel)
            std::swap(Target[i * Stride + Channel], Target[j * Stride + Channel]);
}

void PlaySource::ReadAhead(std::size_t Count) {
    const auto Wanted = static_cast<std::int64_t>(Count);
    const std::int64_t First = Way > 0 ? At : std::max<std::int64_t>(0, At - Wanted);
    for (ChannelBlocks& List : Lists)
        List.WillNeed(First + 1, Count);
}

void PlaySource::HoldOriginal() noexcept {
    for (ChannelBlocks& List : Lists)
        List.HoldOriginal();
}

std::string PlaySource::TakeFailure() {
    std::string Seen;
    for (ChannelBlocks& List : Lists)
        if (std::string One = List.TakeFailure(); Seen.empty())
            Seen = std::move(One);
    return Seen;
}

} // namespace quoril
