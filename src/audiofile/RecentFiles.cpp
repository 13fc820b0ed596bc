#include "audiofile/RecentFiles.h"

#include "platform/Text.h"
#include "settings/STD1.h"

#include <algorithm>
#include <vector>

namespace quoril {

namespace {

constexpr const char* Section = "LastFiles";
constexpr std::size_t WholeBelow = 38;
constexpr std::size_t FirstCharacters = 3;
constexpr std::size_t LastCharacters = 30;

/// Offsets at which the characters of a text begin, and its end: a byte that continues a UTF-8
/// character begins none, so that no character is cut in two.
std::vector<std::size_t> CharacterStarts(const std::string& Text) {
    std::vector<std::size_t> Starts;
    for (std::size_t At = 0; At < Text.size(); ++At)
        if ((static_cast<unsigned char>(Text[At]) & 0xC0U) != 0x80U || At == 0)
            Starts.push_back(At);
    Starts.push_back(Text.size());
    return Starts;
}

} // namespace

std::array<std::string, RecentFileCount + 1> RecentFilesRead() {
    std::array<std::string, RecentFileCount + 1> Entries;
    // Read whole: a path may be longer than what IniGet gives.
    for (std::size_t Place = 1; Place < Entries.size(); ++Place)
        Entries[Place] = ProfileGet(Section, std::to_string(Place), "", SettingsFileName());
    return Entries;
}

void RecentFilesAdd(const std::string& FileName) {
    if (FileName.empty() || FileName.find_first_of("\r\n") != std::string::npos)
        return;
    auto Entries = RecentFilesRead();
    const auto Same =
        std::find_if(Entries.begin() + 1, Entries.end(), [&FileName](const std::string& Entry) {
            return EqualIgnoringCase(Entry, FileName);
        });
    const auto Last = Same != Entries.end() ? Same : Entries.end() - 1;
    std::move_backward(Entries.begin() + 1, Last, Last + 1);
    Entries[1] = FileName;
    for (std::size_t Place = 1; Place < Entries.size(); ++Place)
        IniPut(Section, std::to_string(Place), Entries[Place]);
}

std::string RecentFileCaption(const std::string& FileName) {
    const std::vector<std::size_t> Starts = CharacterStarts(FileName);
    const std::size_t Characters = Starts.size() - 1;
    if (Characters < WholeBelow)
        return FileName;
    return FileName.substr(0, Starts[FirstCharacters]) + " .. " +
           FileName.substr(Starts[Characters - LastCharacters]);
}

} // namespace quoril
