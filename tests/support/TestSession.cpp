#include "support/TestSession.h"

#include "base/DocumentState.h"
#include "base/ViewState.h"
#include "settings/STD1.h"
#include "storage/FileMemoClass.h"
#include "storage/WoroFileBlockMod.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace quoril::test {

namespace fs = std::filesystem;

TestSession::TestSession(std::int32_t Budget) {
    // Thousands of small files: in memory where the system has such a place.
    const fs::path Memory = "/dev/shm";
    const fs::path Where = fs::is_directory(Memory) ? Memory : fs::temp_directory_path();
    std::string Pattern = (Where / "quoril-test-XXXXXX").string();
    if (::mkdtemp(Pattern.data()) == nullptr)
        throw std::runtime_error("no temporary folder for the test");
    Root = Pattern;
    InstalledPath = AppPath = Root + "/app";
    SysTempDir = Root;
    TmpDir0 = Root;
    SessionDir = Root + "/qw1";
    fs::create_directory(AppPath);
    fs::create_directory(SessionDir);
    TempNameCounter = 0;
    BlockTableReset();
    MemoryBudget = Budget;
    CurrentFormat = {};
    WaveChanged = BookmarkChanged = false;
    UndoOptionON = true;
    SelStart = SelEnd = PlaySelStart = PlaySelEnd = 0;
    ViewFrom = 1;
    ViewTotal = 0;
    ViewAll = true;
}

TestSession::~TestSession() {
    WaveStore.reset();
    BlockTableReset();
    std::error_code Ignored;
    fs::remove_all(Root, Ignored);
}

std::string TestSession::WriteFile(const std::string& Name,
                                   const std::vector<std::uint8_t>& Bytes) const {
    const std::string Where = Path(Name);
    std::ofstream Out(Where, std::ios::binary);
    Out.write(reinterpret_cast<const char*>(Bytes.data()),
              static_cast<std::streamsize>(Bytes.size()));
    if (!Out.flush())
        throw std::runtime_error("cannot write " + Where);
    return Where;
}

std::vector<std::uint8_t> TestSession::ReadFile(const std::string& Path) {
    std::ifstream In(Path, std::ios::binary);
    if (!In)
        throw std::runtime_error("cannot read " + Path);
    return {std::istreambuf_iterator<char>(In), std::istreambuf_iterator<char>()};
}

std::vector<std::string> TestSession::SessionFiles() {
    std::vector<std::string> Names;
    for (const auto& Entry : fs::directory_iterator(SessionDir))
        Names.push_back(Entry.path().filename().string());
    std::sort(Names.begin(), Names.end());
    return Names;
}

} // namespace quoril::test
