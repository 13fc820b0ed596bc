// Any bytes as a settings file: reading never fails, a written value comes back, and a write leaves
// the other values alone.
#include "platform/PrivateProfile.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <unistd.h>

namespace {

/// A folder for the whole run, in memory where there is such a place.
class RunFolder {
  public:
    RunFolder() {
        for (const char* Place : {"/dev/shm", "/tmp"}) {
            Name = std::string(Place) + "/quoril-fuzz-XXXXXX";
            if (::mkdtemp(Name.data()) != nullptr)
                return;
        }
        std::abort();
    }
    ~RunFolder() {
        std::error_code Ignored;
        std::filesystem::remove_all(Name, Ignored);
    }
    RunFolder(const RunFolder&) = delete;
    RunFolder& operator=(const RunFolder&) = delete;
    std::string Name;
};

std::string SettingsFile() {
    static const RunFolder Folder;
    return Folder.Name + "/settings.ini";
}

std::string Read(const std::string& Section, const std::string& Key) {
    return quoril::GetPrivateProfileStringA(Section, Key, "default", SettingsFile());
}

void Require(bool Holds) {
    if (!Holds)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
    const std::string Bytes(reinterpret_cast<const char*>(Data), Size);
    {
        std::ofstream Out(SettingsFile(), std::ios::binary | std::ios::trunc);
        Out << Bytes;
    }
    // The bytes themselves also give a name and a value.
    const std::string Name = "n" + Bytes.substr(0, Size / 3);
    std::string Value = Bytes.substr(Size / 3, 200);
    for (char& Letter : Value)
        if (Letter == '\r' || Letter == '\n' || Letter == '\0')
            Letter = ' ';
    const std::string Channel = Read("Format", "Channel");
    const std::string NoSection = Read("", "END");
    const std::string General = Read("General", "END");

    Require(quoril::WritePrivateProfileStringA("Unheard of", Name, Value, SettingsFile()));
    Require(Read("Unheard of", Name) == Value);
    Require(Read("Format", "Channel") == Channel);
    Require(Read("", "END") == NoSection);
    Require(Read("General", "END") == General);

    Require(quoril::DeletePrivateProfileKey("Unheard of", Name, SettingsFile()));
    Require(Read("Unheard of", Name) == "default");
    Require(Read("Format", "Channel") == Channel);
    Require(Read("", "END") == NoSection);
    Require(Read("General", "END") == General);
    return 0;
}
