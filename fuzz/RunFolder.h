// What every fuzz target needs: a place for its files, and a check that ends the run.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>
#include <unistd.h>

namespace quoril::fuzz {

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

/// What holds for every input; a failure ends the run, and the fuzzer keeps the input.
inline void Require(bool Holds) {
    if (!Holds)
        std::abort();
}

} // namespace quoril::fuzz
