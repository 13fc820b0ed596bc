#include "edit/ClipMarker.h"

#include "base/Arithmetic.h"
#include "platform/Text.h"

#include <fmt/format.h>
#include <string_view>
#include <vector>

namespace quoril {

namespace {

constexpr std::size_t FieldCount = 7;
/// Bytes; more than a line with the longest name of a folder has.
constexpr std::size_t MostLength = 8192;

std::int32_t FieldNumber(const std::string& Field) {
    const double Value = RoundEven(LeadingNumber(Field));
    return Value >= -2147483648.0 && Value <= 2147483647.0 ? RoundToLong(Value) : 0;
}

} // namespace

std::string ClipMarkerLine(const ClipMarker& Marker) {
    return fmt::format("{},{},{},{},{},ClipPointer:{},{}", ClipMarkerWord, Marker.Channels,
                       Marker.Length, Marker.Bits, Marker.Freq, Marker.ClipPointer, Marker.Folder);
}

std::optional<ClipMarker> ClipMarkerRead(const std::string& Line) {
    if (Line.size() > MostLength || Line.find('\0') != std::string::npos)
        return std::nullopt;
    const std::vector<std::string> Fields = TextParts(Line, ',', FieldCount);
    if (Fields.size() != FieldCount || Fields[0] != ClipMarkerWord)
        return std::nullopt;
    ClipMarker Marker;
    Marker.Channels = FieldNumber(Fields[1]);
    Marker.Length = FieldNumber(Fields[2]);
    Marker.Bits = FieldNumber(Fields[3]);
    Marker.Freq = FieldNumber(Fields[4]);
    Marker.FreqText = Fields[4];
    const std::vector<std::string> Pointer = TextParts(Fields[5], ':', 2);
    Marker.ClipPointer = Pointer.size() > 1 ? FieldNumber(Pointer[1]) : 0;
    Marker.Folder = Fields[6];
    if (Marker.Length < 1 || (Marker.Channels != 1 && Marker.Channels != 2))
        return std::nullopt;
    return Marker;
}

} // namespace quoril
