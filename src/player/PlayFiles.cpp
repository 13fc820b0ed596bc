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
        Files.push_back({Name, {}, {}});
    return Where->second;
}

const FileForReading& PlayFiles::Open(std::size_t No) {
    Entry& File = Files[No];
    if (!OpenNow.empty() && OpenNow.back() == No)
        return File.Handle;
    if (const auto Found = std::find(OpenNow.begin(), OpenNow.end(), No); Found != OpenNow.end()) {
        OpenNow.erase(Found);
        OpenNow.push_back(No);
        return File.Handle;
    }
    FileForReading Fresh(File.Name);
    const FileIdentity Identity = Fresh.Identity();
    // A work file may grow while others read it; what it is stays the same.
    if (File.Identity &&
        (File.Identity->Device != Identity.Device || File.Identity->Inode != Identity.Inode))
        throw Failure("This file has been changed by another program\n" + File.Name);
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

void PlayFiles::Close() noexcept {
    for (const std::size_t No : OpenNow)
        Files[No].Handle.Close();
    OpenNow.clear();
}

} // namespace quoril
