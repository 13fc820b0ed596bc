// A folder of its own for one test, gone at the end.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quoril::test {

class TempFolder {
  public:
    TempFolder() {
        Name = (std::filesystem::temp_directory_path() / "quoril-test-XXXXXX").string();
        if (::mkdtemp(Name.data()) == nullptr)
            throw std::runtime_error("no temporary folder for the test");
    }
    ~TempFolder() {
        std::error_code Ignored;
        // A test may have taken the right to write away.
        std::filesystem::permissions(Name, std::filesystem::perms::owner_all,
                                     std::filesystem::perm_options::add, Ignored);
        std::filesystem::remove_all(Name, Ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    [[nodiscard]] const std::string& Path() const { return Name; }
    /// Full path of an entry of the folder.
    [[nodiscard]] std::string operator/(std::string_view Entry) const {
        return Name + "/" + std::string(Entry);
    }
    /// Writes a file there, with its folders, and gives its path.
    std::string Write(std::string_view Entry, std::string_view Bytes) const {
        const std::string Where = *this / Entry;
        std::filesystem::create_directories(std::filesystem::path(Where).parent_path());
        std::ofstream Out(Where, std::ios::binary);
        Out.write(Bytes.data(), static_cast<std::streamsize>(Bytes.size()));
        if (!Out.flush())
            throw std::runtime_error("cannot write " + Where);
        return Where;
    }
    [[nodiscard]] static std::string Read(const std::string& Path) {
        std::ifstream In(Path, std::ios::binary);
        if (!In)
            throw std::runtime_error("cannot read " + Path);
        return {std::istreambuf_iterator<char>(In), std::istreambuf_iterator<char>()};
    }

  private:
    std::string Name;
};

} // namespace quoril::test
