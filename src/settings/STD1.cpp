#include "settings/STD1.h"

#include "base/Arithmetic.h"
#include "base/Failure.h"
#include "base/MsgBoxMod.h"
#include "platform/FileSystem.h"
#include "platform/PrivateProfile.h"
#include "platform/SystemStatus.h"
#include "platform/Text.h"

#include <chrono>
#include <ctime>
#include <thread>

namespace quoril {

std::string InstalledPath;
std::string AppPath;
std::string SysTempDir;
std::string TmpDir0;
std::string SessionDir;
std::int32_t TempNameCounter = 0;

namespace {

constexpr std::size_t MostCharactersOfIniGet = 99;

std::string SectionOrGeneral(const std::string& Section) {
    return Section.empty() ? "General" : Section;
}

void SessionDirMakeRecorded() {
    IniPut("General", "FreeHardDisk", std::to_string(FreeDiskBytes()));
    SessionDir = SessionDirMake();
}

} // namespace

std::string SettingsFileName() {
    return AppPath + "/quoril-wave-editor.ini";
}

std::string IniGet(std::string& Section, std::string& Key, const std::string& Default) {
    if (Section.empty())
        Section = "General";
    if (Key.empty())
        Key = "END";
    return GetPrivateProfileStringA(Section, Key, Default, SettingsFileName(),
                                    MostCharactersOfIniGet);
}

std::string IniGet(const char* Section, const char* Key, const std::string& Default) {
    std::string SectionText = Section;
    std::string KeyText = Key;
    return IniGet(SectionText, KeyText, Default);
}

void IniPut(const std::string& Section, const std::string& Key, const std::string& Value) {
    ProfilePut(Section, Key, Value, SettingsFileName());
}

std::string ProfileGet(const std::string& Section, const std::string& Key,
                       const std::string& Default, const std::string& FileName) {
    return GetPrivateProfileStringA(Section, Key, Default, FileName);
}

void ProfilePut(const std::string& Section, const std::string& Key, const std::string& Value,
                const std::string& FileName) {
    // A file that cannot be written is no error: the settings of this session are not kept.
    (void)WritePrivateProfileStringA(SectionOrGeneral(Section), Key, Value, FileName);
}

std::int64_t FreeDiskBytes() {
    return GetDiskFreeSpaceExA(TmpDir0 + "/").value_or(0);
}

bool FreeDiskEnough(std::int64_t Needed) {
    if (FreeDiskBytes() > Needed)
        return true;
    MsgBox("Free disk space for this is low.");
    return false;
}

bool FileThere(const std::string& FileName) {
    return !Trim(FileName).empty() && FileExists(FileName);
}

bool FileDelete(const std::string& FileName) noexcept {
    return !FileExists(FileName) || DeleteFileIfFree(FileName);
}

std::string TempFileName() {
    std::string Name;
    do {
        TempNameCounter = AddLong(TempNameCounter, 1);
        Name = SessionDir + "/tm" + std::to_string(TempNameCounter) + ".tmp";
    } while (FileExists(Name) || FolderExists(Name));
    return Name;
}

std::int32_t SecondsSinceMidnight() {
    const std::time_t Now = std::time(nullptr);
    std::tm Local{};
    ::localtime_r(&Now, &Local);
    return (Local.tm_hour * 60 + Local.tm_min) * 60 + Local.tm_sec;
}

std::string SessionDirMake() {
    std::int32_t Number = SecondsSinceMidnight();
    std::string Name;
    do {
        Number = AddLong(Number, 1);
        Name = TmpDir0 + "/qw" + std::to_string(Number);
    } while (!MakePrivateFolder(Name));
    return Name;
}

void SessionDirRemove() {
    if (SessionDir.empty())
        return;
    bool AllGone = true;
    for (const std::string& Name : FilesInFolder(SessionDir))
        AllGone = FileDelete(Name) && AllGone;
    if (!AllGone) {
        // Whoever reads them is this session's own player. If it still does, it keeps what it has
        // open, and no work file stays on the disk for ever.
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        for (const std::string& Name : FilesInFolder(SessionDir))
            (void)DeleteFileAnyway(Name);
    }
    (void)RemoveFolder(SessionDir);
}

void FileSetLength(const std::string& FileName, std::int64_t Bytes) {
    (void)SetLengthOfFile(FileName, Bytes);
}

void WorkingFilesSetUp() {
    IniPut("General", "InstalledPath", InstalledPath);
    // Read whole: a folder's name may be longer than what IniGet gives.
    TmpDir0 =
        WithoutEndSeparators(ProfileGet("General", "TmpDir0", SysTempDir, SettingsFileName()));
    if (TmpDir0.empty() || !FolderExists(TmpDir0 + "/"))
        TmpDir0 = SysTempDir;
    try {
        SessionDirMakeRecorded();
    } catch (const SystemFailure&) {
        // A disk that has become read-only must not keep the program from starting.
        if (TmpDir0 == SysTempDir)
            throw;
        TmpDir0 = SysTempDir;
        SessionDirMakeRecorded();
    }
}

} // namespace quoril
