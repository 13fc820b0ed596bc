#include "platform/SystemStatus.h"

#include "platform/Text.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <fstream>
#include <limits>
#include <string_view>
#include <sys/statvfs.h>

namespace quoril {

namespace {

/// What is known of the memory, in bytes.
struct MemoryFigures {
    std::int64_t Total = 0;
    std::int64_t Available = 0;
};

std::optional<std::int64_t> CountAtStart(std::string_view Text) {
    Text.remove_prefix(std::min(Text.find_first_not_of(" \t"), Text.size()));
    std::int64_t Value = 0;
    const auto Parsed = std::from_chars(Text.data(), Text.data() + Text.size(), Value);
    if (Parsed.ec != std::errc() || Value < 0)
        return std::nullopt;
    return Value;
}

/// The number in a file of one line; none when the file is missing or says "max".
std::optional<std::int64_t> NumberInFile(const std::string& FileName) {
    std::ifstream In(FileName);
    std::string Line;
    if (!std::getline(In, Line))
        return std::nullopt;
    return CountAtStart(Line);
}

/// The number of a line "name: number" or "name number".
std::optional<std::int64_t> NumberAfterName(const std::string& FileName, std::string_view Name) {
    std::ifstream In(FileName);
    std::string Line;
    while (std::getline(In, Line))
        if (Line.starts_with(Name) && Line.size() > Name.size())
            return CountAtStart(std::string_view(Line).substr(Name.size()));
    return std::nullopt;
}

std::optional<MemoryFigures> MemoryOfTheMachine(const std::string& ProcFolder) {
    constexpr std::int64_t MostKilobytes = std::numeric_limits<std::int64_t>::max() / 1024;
    const std::string FileName = ProcFolder + "/meminfo";
    const auto Total = NumberAfterName(FileName, "MemTotal:");
    if (!Total || *Total > MostKilobytes)
        return std::nullopt;
    const auto Available = NumberAfterName(FileName, "MemAvailable:");
    return MemoryFigures{*Total * 1024, std::min(Available.value_or(*Total), MostKilobytes) * 1024};
}

/// The names that the two versions of control groups give to the same things.
struct ControlGroupNames {
    std::string_view Controller; ///< in the lines "number:controllers:path" of /proc/self/cgroup
    std::string_view Mount;
    std::string_view Limit;
    std::string_view Usage;
    std::string_view Cache; ///< part of the usage that the system gives up on demand
};
constexpr ControlGroupNames Versions[] = {
    {"", "", "/memory.max", "/memory.current", "inactive_file"},
    {"memory", "/memory", "/memory.limit_in_bytes", "/memory.usage_in_bytes",
     "total_inactive_file"},
};

/// True when a list such as "cpu,memory" names the wanted one; the wanted empty name is an empty
/// list.
bool NamesController(std::string_view Controllers, std::string_view Wanted) {
    while (!Controllers.empty()) {
        const std::string_view Next = Controllers.substr(0, Controllers.find(','));
        if (Next == Wanted)
            return true;
        Controllers.remove_prefix(std::min(Next.size() + 1, Controllers.size()));
    }
    return Wanted.empty();
}

/// The path of our group in the tree of one version; none when there is no such tree.
std::optional<std::string> ControlGroupPath(const std::string& ProcFolder,
                                            const ControlGroupNames& Names) {
    std::ifstream In(ProcFolder + "/self/cgroup");
    std::string Line;
    while (std::getline(In, Line)) {
        const std::size_t First = Line.find(':');
        const std::size_t Second = First == std::string::npos ? First : Line.find(':', First + 1);
        if (Second != std::string::npos &&
            NamesController(std::string_view(Line).substr(First + 1, Second - First - 1),
                            Names.Controller))
            return Line.substr(Second + 1);
    }
    return std::nullopt;
}

/// Lowers the figures by the limits of one group.
void ApplyGroup(const std::string& Group, const ControlGroupNames& Names, MemoryFigures& Figures) {
    const auto Limit = NumberInFile(Group + std::string(Names.Limit));
    if (!Limit)
        return;
    const std::int64_t Usage = NumberInFile(Group + std::string(Names.Usage)).value_or(0);
    const std::int64_t Cache =
        NumberAfterName(Group + "/memory.stat", std::string(Names.Cache) + " ").value_or(0);
    const std::int64_t InUse = std::max<std::int64_t>(0, Usage - Cache);
    Figures.Total = std::min(Figures.Total, *Limit);
    Figures.Available = std::min(Figures.Available, std::max<std::int64_t>(0, *Limit - InUse));
}

/// Lowers the figures by the limits of our group and of every group above it. Where the tree is
/// seen from inside a container, our own path may be missing and the top is what counts.
void ApplyControlGroups(const std::string& ProcFolder, const std::string& ControlGroupFolder,
                        MemoryFigures& Figures) {
    for (const ControlGroupNames& Names : Versions) {
        std::optional<std::string> Path = ControlGroupPath(ProcFolder, Names);
        if (!Path)
            continue;
        if (Path->find("/..") != std::string::npos) // outside of what we can see
            Path->clear();
        const std::string Top = ControlGroupFolder + std::string(Names.Mount);
        for (;;) {
            *Path = WithoutEndSeparators(*Path);
            ApplyGroup(Top + *Path, Names, Figures);
            if (Path->empty())
                break;
            Path->resize(Path->find_last_of('/') == std::string::npos ? 0
                                                                      : Path->find_last_of('/'));
        }
    }
}

} // namespace

MemoryStatus GlobalMemoryStatusIn(const std::string& ProcFolder,
                                  const std::string& ControlGroupFolder) {
    std::optional<MemoryFigures> Figures = MemoryOfTheMachine(ProcFolder);
    if (!Figures)
        return {};
    ApplyControlGroups(ProcFolder, ControlGroupFolder, *Figures);
    if (Figures->Total <= 0)
        return {};
    const double InUse =
        static_cast<double>(Figures->Total - std::min(Figures->Available, Figures->Total)) /
        static_cast<double>(Figures->Total);
    constexpr std::int64_t Most = std::numeric_limits<std::int32_t>::max();
    return {static_cast<std::int32_t>(std::min(Figures->Total, Most)),
            static_cast<std::int32_t>(InUse * 100.0)};
}

MemoryStatus GlobalMemoryStatus() {
    return GlobalMemoryStatusIn("/proc", "/sys/fs/cgroup");
}

std::optional<std::int64_t> GetDiskFreeSpaceExA(const std::string& Folder) {
    struct statvfs Status {};
    int Result;
    do
        Result = ::statvfs(Folder.c_str(), &Status);
    while (Result != 0 && errno == EINTR);
    std::int64_t Bytes = 0;
    if (Result != 0)
        return std::nullopt;
    if (__builtin_mul_overflow(Status.f_bavail, Status.f_frsize, &Bytes))
        return std::numeric_limits<std::int64_t>::max();
    return Bytes;
}

} // namespace quoril
