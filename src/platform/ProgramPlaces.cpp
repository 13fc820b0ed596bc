#include "platform/ProgramPlaces.h"

#include "base/Failure.h"
#include "platform/FileSystem.h"

#include <cerrno>
#include <cstdlib>
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

std::string WithoutEndingSeparators(std::string Folder) {
    while (!Folder.empty() && Folder.back() == '/')
        Folder.pop_back();
    return Folder;
}

std::string HomeFolder() {
    if (std::string Home = Variable("HOME"); Home.starts_with('/'))
        return WithoutEndingSeparators(Home);
    const passwd* User = ::getpwuid(::geteuid());
    return User == nullptr || User->pw_dir == nullptr ? std::string()
                                                      : WithoutEndingSeparators(User->pw_dir);
}

/// The user's own folder for settings; a relative path in the variable does not count.
std::string SettingsFolderOfUser() {
    std::string Folder = Variable("XDG_CONFIG_HOME");
    Folder = Folder.starts_with('/') ? WithoutEndingSeparators(Folder) : HomeFolder() + "/.config";
    return Folder + "/quoril-wave-editor";
}

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

std::string FolderForSettings(const std::string& ExecutableFolder) {
    if (FolderExists(ExecutableFolder + "/") &&
        ::access((ExecutableFolder + "/").c_str(), W_OK | X_OK) == 0)
        return ExecutableFolder;
    std::string Folder = SettingsFolderOfUser();
    // Where it cannot be made, the settings of this session are not kept.
    (void)MakeFolderPath(Folder);
    return Folder;
}

std::string FolderOfProgram() {
    return FolderForSettings(FolderOfPath(ProgramFile()));
}

std::string GetTempPathA() {
    std::string Chosen = WithoutEndingSeparators(Variable("TMPDIR"));
    if (!Chosen.empty() && FolderExists(Chosen))
        return Chosen;
    return FolderExists("/var/tmp") ? "/var/tmp" : "/tmp";
}

} // namespace quoril
