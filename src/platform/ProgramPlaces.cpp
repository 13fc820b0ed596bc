#include "platform/ProgramPlaces.h"

#include "base/Failure.h"
#include "platform/FileSystem.h"
#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <pwd.h>
#include <string_view>
#include <unistd.h>

namespace quoril {

namespace {

/// A variable of the environment; empty when it is not set.
std::string Variable(const char* Name) {
    const char* Value = std::getenv(Name);
    return Value == nullptr ? std::string() : Value;
}

std::string HomeFolder() {
    if (std::string Home = Variable("HOME"); Home.starts_with('/'))
        return WithoutEndSeparators(Home);
    const passwd* User = ::getpwuid(::geteuid());
    return User == nullptr || User->pw_dir == nullptr ? std::string()
                                                      : WithoutEndSeparators(User->pw_dir);
}

/// The user's own folder for settings of programs; a relative path in the variable does not count.
std::string ConfigFolder() {
    const std::string Folder = Variable("XDG_CONFIG_HOME");
    return Folder.starts_with('/') ? WithoutEndSeparators(Folder) : HomeFolder() + "/.config";
}

/// The music folder that the desktop has noted for the user; empty without one. The line reads
/// XDG_MUSIC_DIR="$HOME/Music", or has a whole path.
std::string NotedMusicFolder() {
    constexpr std::string_view Key = "XDG_MUSIC_DIR=\"";
    constexpr std::string_view Home = "$HOME/";
    std::ifstream Notes(ConfigFolder() + "/user-dirs.dirs");
    std::string Folder;
    for (std::string Line; std::getline(Notes, Line);)
        if (const std::size_t End = Line.rfind('"'); Line.starts_with(Key) && End >= Key.size())
            Folder = Line.substr(Key.size(), End - Key.size());
    return Folder.starts_with(Home) ? HomeFolder() + "/" + Folder.substr(Home.size()) : Folder;
}

bool LiesIn(const std::filesystem::path& Folder, const std::filesystem::path& Root) {
    return std::ranges::mismatch(Root, Folder).in1 == Root.end();
}

constexpr std::array<const char*, 8> SystemFolders = {
    {"/usr", "/opt", "/bin", "/sbin", "/lib", "/lib64", "/nix", "/snap"}};

} // namespace

std::string ProgramFile() {
    std::string Path(256, '\0');
    for (;;) {
        const ssize_t Length = ::readlink("/proc/self/exe", Path.data(), Path.size());
        if (Length < 0)
            throw SystemFailure(errno, "/proc/self/exe");
        if (static_cast<std::size_t>(Length) < Path.size()) {
            Path.resize(static_cast<std::size_t>(Length));
            break;
        }
        Path.resize(Path.size() * 2);
    }
    // After an update in place the old program runs on; its name leads to the new one.
    constexpr std::string_view Replaced = " (deleted)";
    if (Path.ends_with(Replaced) && !FileExists(Path))
        Path.resize(Path.size() - Replaced.size());
    return Path;
}

std::string FolderOfProgram() {
    return FolderOfPath(ProgramFile());
}

bool IsSystemFolder(const std::string& Folder) {
    const std::filesystem::path Plain =
        std::filesystem::path(Folder + "/").lexically_normal().parent_path();
    return std::ranges::any_of(SystemFolders,
                               [&Plain](const char* Root) { return LiesIn(Plain, Root); });
}

std::string FolderForSettings(const std::string& ExecutableFolder) {
    if (!IsSystemFolder(ExecutableFolder) && FolderExists(ExecutableFolder + "/") &&
        ::access((ExecutableFolder + "/").c_str(), W_OK | X_OK) == 0)
        return ExecutableFolder;
    std::string Folder = ConfigFolder() + "/quoril-wave-editor";
    // Where it cannot be made, the settings of this session are not kept.
    (void)MakeFolderPath(Folder);
    return Folder;
}

std::string FolderForSounds() {
    for (const std::string& Folder : {NotedMusicFolder(), HomeFolder() + "/Music", HomeFolder()})
        if (Folder.starts_with('/') && FolderExists(Folder))
            return WithoutEndSeparators(Folder);
    return {};
}

std::string GetTempPathA() {
    std::string Chosen = WithoutEndSeparators(Variable("TMPDIR"));
    if (!Chosen.empty() && FolderExists(Chosen))
        return Chosen;
    return FolderExists("/var/tmp") ? "/var/tmp" : "/tmp";
}

} // namespace quoril
