#include "platform/PrivateProfile.h"

#include "platform/Descriptor.h"
#include "platform/FileSystem.h"
#include "platform/Text.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <limits.h>
#include <optional>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

// The parser is all in its header, for bytes as they are.
#define SI_IMPLEMENTATION
#define SI_NO_CONVERSION
#include <SimpleIni.h>

namespace quoril {

namespace {

/// A settings file has a few kilobytes. What is larger than this is none, and is not touched.
constexpr std::size_t MostBytes = 1U << 20;

constexpr std::string_view Signature = "\xEF\xBB\xBF";

/// Bytes of a settings file; none when there is something of that name that cannot be one.
std::optional<std::string> ContentsOf(const std::string& FileName) {
    const Descriptor File(::open(FileName.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!File.IsOpen())
        return errno == ENOENT ? std::optional<std::string>(std::string()) : std::nullopt;
    struct stat Status {};
    if (::fstat(File.Get(), &Status) != 0 || !S_ISREG(Status.st_mode))
        return std::nullopt;
    if (Status.st_size > static_cast<off_t>(MostBytes))
        return std::nullopt;
    // Files are replaced whole and do not grow, so one byte more tells the end.
    std::string Bytes(static_cast<std::size_t>(Status.st_size) + 1, '\0');
    std::size_t Length = 0;
    while (Length < Bytes.size()) {
        const ssize_t Count = ReadOnce(File, Bytes.data() + Length, Bytes.size() - Length);
        if (Count < 0)
            return std::nullopt;
        if (Count == 0) {
            Bytes.resize(Length);
            return Bytes;
        }
        Length += static_cast<std::size_t>(Count);
    }
    return std::nullopt;
}

void ReplaceByBlanks(std::string& Text, std::string_view Unwanted) {
    std::replace_if(
        Text.begin(), Text.end(),
        [&](char Letter) { return Unwanted.find(Letter) != std::string_view::npos; }, ' ');
}

/// What would end a line, a name or the text itself becomes a blank, so that no name and no value
/// can bring in lines of its own. Reading and writing change names alike.
constexpr std::string_view LineEnds("\r\n\0", 3);

std::string SectionName(std::string Section) {
    ReplaceByBlanks(Section, LineEnds);
    ReplaceByBlanks(Section, "]");
    return Trim(Section);
}

std::string KeyName(std::string Key) {
    ReplaceByBlanks(Key, LineEnds);
    ReplaceByBlanks(Key, "=");
    const std::size_t First = Key.find_first_not_of("[;# \t");
    return First == std::string::npos ? std::string() : Trim(std::string_view(Key).substr(First));
}

bool StandsInQuotes(std::string_view Value) {
    return Value.size() >= 2 && (Value.front() == '"' || Value.front() == '\'') &&
           Value.front() == Value.back();
}

std::string WithoutQuotes(const std::string& Value) {
    return StandsInQuotes(Value) ? Value.substr(1, Value.size() - 2) : Value;
}

/// The value as it stands in the file: quoted where reading would otherwise take off more than it
/// should, so that every value comes back as it was given.
std::string AsWritten(std::string Value) {
    ReplaceByBlanks(Value, LineEnds);
    const bool NeedsQuotes = StandsInQuotes(Value) || Trim(Value) != Value;
    return NeedsQuotes ? '"' + Value + '"' : Value;
}

/// The parsed file: sections and keys in their order, each with its comment.
class Profile {
  public:
    explicit Profile(std::string_view Bytes) {
        HasSignature = Bytes.starts_with(Signature);
        if (HasSignature)
            Bytes.remove_prefix(Signature.size());
        Ini.SetMultiKey(true); // of a repeated key the first counts, and none gets lost
        Ini.SetMultiLine(false);
        Ini.SetQuotes(false);
        Ini.SetSpaces(false);
        Usable = Ini.LoadData(TakeLines(Bytes)) >= 0;
    }

    [[nodiscard]] bool IsUsable() const { return Usable; }

    /// The bytes after the "=", without surrounding blanks; null when there is no such key.
    [[nodiscard]] const char* Find(const std::string& Section, const std::string& Key) const {
        return Usable ? Ini.GetValue(Section.c_str(), Key.c_str()) : nullptr;
    }
    [[nodiscard]] bool Set(const std::string& Section, const std::string& Key,
                           const std::string& Value) {
        return Ini.SetValue(Section.c_str(), Key.c_str(), Value.c_str(), nullptr, true) >= 0;
    }
    void Delete(const std::string& Section, const std::string& Key) {
        Ini.Delete(Section.c_str(), Key.c_str());
    }
    [[nodiscard]] std::optional<std::string> Bytes() const {
        std::string Body;
        if (Ini.Save(Body) < 0)
            return std::nullopt;
        std::string Result(HasSignature ? Signature : std::string_view());
        // Only one signature counts: a name that begins with its bytes must not come first.
        if (Body.starts_with(Signature))
            Result += '\n';
        return Result + Body + Tail;
    }

  private:
    /// The lines with their entries, in the form that the parser keeps whole; what follows the last
    /// entry goes to `Tail`, since comments there belong to no entry and would be dropped.
    std::string TakeLines(std::string_view Bytes) {
        std::string Lines(Bytes.starts_with(Signature) ? "\n" : ""); // only one signature counts
        Lines.reserve(Bytes.size() + 2);
        std::size_t EndOfLastEntry = 0;
        while (!Bytes.empty()) {
            const std::string_view Line = Bytes.substr(0, Bytes.find_first_of(LineEnds));
            Bytes.remove_prefix(Line.size());
            Bytes.remove_prefix(Bytes.starts_with("\r\n") ? 2
                                                          : std::min<std::size_t>(1, Bytes.size()));
            Lines += Line;
            const std::size_t First = Line.find_first_not_of(" \t");
            const bool IsEntry =
                First != std::string_view::npos && Line[First] != ';' && Line[First] != '#';
            // The parser would give a key without "=" the value of the key before.
            if (IsEntry && Line[First] != '[' && Line.find('=') == std::string_view::npos)
                Lines += '=';
            Lines += '\n';
            if (IsEntry)
                EndOfLastEntry = Lines.size();
        }
        Tail = Lines.substr(EndOfLastEntry);
        Lines.resize(EndOfLastEntry);
        return Lines;
    }

    CSimpleIniA Ini;
    std::string Tail;
    bool HasSignature = false;
    bool Usable = false;
};

/// The file that a name leads to. A link stays a link: what is replaced is the file behind it.
std::string BehindLinks(std::string FileName) {
    for (int Step = 0; Step < 40; ++Step) {
        char Target[PATH_MAX];
        const ssize_t Length = ::readlink(FileName.c_str(), Target, sizeof Target);
        if (Length <= 0 || static_cast<std::size_t>(Length) == sizeof Target)
            return FileName;
        const std::string Next(Target, static_cast<std::size_t>(Length));
        const std::size_t Slash = FileName.rfind('/');
        if (Next.front() == '/' || Slash == std::string::npos)
            FileName = Next;
        else
            FileName.replace(Slash + 1, std::string::npos, Next);
    }
    return FileName;
}

/// Waits for the lock beside the file, which every writer takes. The lock ends with its process;
/// the empty lock file stays, since deleting it would let two writers hold two locks.
Descriptor LockBeside(const std::string& FileName) {
    Descriptor Lock(
        ::open((FileName + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666));
    if (!Lock.IsOpen())
        return Lock;
    // A holder needs milliseconds. One that was stopped in its midst must not stop this one too.
    const auto Latest = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (::flock(Lock.Get(), LOCK_EX | LOCK_NB) != 0) {
        const bool WorthWaiting = errno == EWOULDBLOCK || errno == EINTR;
        if (!WorthWaiting || std::chrono::steady_clock::now() > Latest)
            return {};
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return Lock;
}

/// Puts the bytes in the place of the file, or leaves the file as it is. Needs the lock.
bool ReplaceContents(const std::string& FileName, const std::string& Bytes) {
    const std::string NewName = FileName + ".new";
    if (!DeleteFileAnyway(NewName)) // a leftover of a process that died
        return false;
    Descriptor New(::open(NewName.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (!New.IsOpen())
        return false;
    bool Good = true;
    struct stat Old {};
    if (::stat(FileName.c_str(), &Old) == 0) {
        // The owner can be kept only by one who may give files away; the rights always.
        if (::fchown(New.Get(), Old.st_uid, Old.st_gid) != 0 && errno != EPERM)
            Good = false;
        Good = Good && ::fchmod(New.Get(), Old.st_mode & 07777) == 0;
    }
    Good = Good && WriteAll(New, Bytes.data(), Bytes.size()) && ::fsync(New.Get()) == 0;
    Good = New.Close() && Good;
    Good = Good && ::rename(NewName.c_str(), FileName.c_str()) == 0;
    if (!Good)
        (void)DeleteFileAnyway(NewName);
    return Good;
}

/// One change of the file under the lock. `Apply` gives false when it failed, nothing when there
/// is nothing to change.
template <typename Change>
bool ChangeProfile(const std::string& NameGiven, const Change& Apply) {
    if (NameGiven.empty() || NameGiven.find('\0') != std::string::npos)
        return false;
    const std::string FileName = BehindLinks(NameGiven);
    const Descriptor Lock = LockBeside(FileName);
    if (!Lock.IsOpen())
        return false;
    const std::optional<std::string> Bytes = ContentsOf(FileName);
    if (!Bytes || (FileExists(FileName) && ::access(FileName.c_str(), W_OK) != 0))
        return false;
    Profile Parsed(*Bytes);
    if (!Parsed.IsUsable())
        return false;
    const std::optional<bool> Changed = Apply(Parsed);
    if (!Changed)
        return true;
    const std::optional<std::string> NewBytes = *Changed ? Parsed.Bytes() : std::nullopt;
    return NewBytes && NewBytes->size() <= MostBytes && ReplaceContents(FileName, *NewBytes);
}

} // namespace

struct PrivateProfileContents::Inner {
    Profile Lines;
};

PrivateProfileContents::PrivateProfileContents(const std::string& FileName) {
    if (FileName.find('\0') != std::string::npos)
        return;
    if (const std::optional<std::string> Bytes = ContentsOf(FileName); Bytes && !Bytes->empty())
        Parsed.reset(new Inner{Profile(*Bytes)});
}

PrivateProfileContents::~PrivateProfileContents() = default;

std::string PrivateProfileContents::Get(const std::string& Section, const std::string& Key,
                                        const std::string& Default,
                                        std::size_t MostCharacters) const {
    std::string Result = Default;
    const std::string Name = KeyName(Key);
    if (Parsed != nullptr && !Name.empty())
        if (const char* Value = Parsed->Lines.Find(SectionName(Section), Name))
            Result = WithoutQuotes(Value);
    if (MostCharacters > 0 && Result.size() > MostCharacters)
        Result.resize(MostCharacters);
    return Result;
}

std::string GetPrivateProfileStringA(const std::string& Section, const std::string& Key,
                                     const std::string& Default, const std::string& FileName,
                                     std::size_t MostCharacters) {
    return PrivateProfileContents(FileName).Get(Section, Key, Default, MostCharacters);
}

bool WritePrivateProfileStringA(const std::string& Section, const std::string& Key,
                                const std::string& Value, const std::string& FileName) {
    return WritePrivateProfileStrings(Section, {{Key, Value}}, FileName);
}

bool WritePrivateProfileStrings(const std::string& Section,
                                const std::vector<std::pair<std::string, std::string>>& Values,
                                const std::string& FileName) {
    const std::string Place = SectionName(Section);
    std::vector<std::pair<std::string, std::string>> Entries;
    for (const auto& [Key, Value] : Values) {
        Entries.emplace_back(KeyName(Key), AsWritten(Value));
        if (Entries.back().first.empty())
            return false;
    }
    return ChangeProfile(FileName, [&](Profile& Parsed) -> std::optional<bool> {
        std::optional<bool> Changed;
        for (const auto& [Name, Written] : Entries) {
            const char* Present = Parsed.Find(Place, Name);
            if (Present != nullptr && Present == Written)
                continue;
            Changed = Changed.value_or(true) && Parsed.Set(Place, Name, Written);
        }
        return Changed;
    });
}

bool DeletePrivateProfileKey(const std::string& Section, const std::string& Key,
                             const std::string& FileName) {
    const std::string Place = SectionName(Section);
    const std::string Name = KeyName(Key);
    return ChangeProfile(FileName, [&](Profile& Parsed) -> std::optional<bool> {
        if (Name.empty() || Parsed.Find(Place, Name) == nullptr)
            return std::nullopt;
        Parsed.Delete(Place, Name);
        return true;
    });
}

} // namespace quoril
