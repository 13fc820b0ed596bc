// Any bytes as a settings file: reading never fails, a written value comes back, and a write leaves
// the other values alone.
#include "RunFolder.h"

#include "platform/PrivateProfile.h"

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>

using quoril::fuzz::Require;
using quoril::fuzz::RunFolder;

namespace {

std::string SettingsFile() {
    static const RunFolder Folder;
    return Folder.Name + "/settings.ini";
}

std::string Read(const std::string& Section, const std::string& Key) {
    return quoril::GetPrivateProfileStringA(Section, Key, "default", SettingsFile());
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
