#include "player/PlayFiles.h"

#include "base/Failure.h"

#include <algorithm>

namespace quoril {

namespace {

constexpr std::size_t MostOpenFiles = 16;

} // namespace

std::size_t PlayFiles::Add(const std::string& Name) {
    const auto [Where, IsNew] = Numbers.try_emplace(Name, Files.size());
    if (IsNew)
        Files.push_back({Name, {}, {}, false, false});
    return Where->second;
}

void PlayFiles::Expect(const std::string& Name, const FileIdentity& Entered) {
    Entry& File = Files[Add(Name)];
    File.Identity = Entered;
    File.Entered = true;
}

void PlayFiles::Check(const Entry& File, const FileIdentity& Now) {
    // A work file may grow while others read it; what it is stays the same.
    const bool Same = !File.Identity || (File.Entered ? *File.Identity == Now
                                                      : File.Identity->Device == Now.Device &&
                                                            File.Identity->Inode == Now.Inode);
    if (!Same)
        FailChangedFile(File.Name);
}

const FileForReading& PlayFiles::Open(std::size_t No) {
    Entry& File = Files[No];
    if (File.Held)
        return File.Handle;
    if (!OpenNow.empty() && OpenNow.back() == No)
        return File.Handle;
    if (const auto Found = std::find(OpenNow.begin(), OpenNow.end(), No); Found != OpenNow.end()) {
        OpenNow.erase(Found);
        OpenNow.push_back(No);
        return File.Handle;
    }
    FileForReading Fresh(File.Name);
    const FileIdentity Identity = Fresh.Identity();
    Check(File, Identity);
    if (OpenNow.size() == MostOpenFiles) {
        Files[OpenNow.front()].Handle.Close();
        OpenNow.erase(OpenNow.begin());
    }
    OpenNow.reserve(MostOpenFiles);
    File.Identity = Identity;
    File.Handle = std::move(Fresh);
    OpenNow.push_back(No);
    return File.Handle;
}

void PlayFiles::Read(std::size_t No, std::int64_t Offset, void* Target, std::size_t Bytes) {
    const FileForReading& Handle = Open(No);
    Handle.Read(Offset, Target, Bytes);
    // What was written over the file in its place, at any time up to now, is not the sound.
    if (Files[No].Entered)
        Check(Files[No], Handle.Identity());
}

void PlayFiles::Hold(std::size_t No) noexcept {
    if (Files[No].Held)
        return;
    try {
        (void)Open(No);
    } catch (const Failure&) {
        return; // the reading that follows tells why
    }
    Files[No].Handle.Unlock();
    Files[No].Held = true;
    std::erase(OpenNow, No);
}

void PlayFiles::Close() noexcept {
    for (Entry& File : Files) {
        File.Handle.Close();
        File.Held = false;
    }
    OpenNow.clear();
}

std::size_t PlayFiles::OpenCount() const noexcept {
    return static_cast<std::size_t>(std::count_if(
        Files.begin(), Files.end(), [](const Entry& File) { return File.Handle.IsOpen(); }));
}

} // namespace quoril
