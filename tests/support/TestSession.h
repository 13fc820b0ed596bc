// A session folder, a settings folder and clean tables for one test.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quoril::test {

/// Made at a test's start: AppPath, TmpDir0 and SessionDir lie in a new temporary folder, the
/// block table is empty, the memory budget is `Budget`, all flags have their first values. At the
/// end the folder goes.
class TestSession {
  public:
    explicit TestSession(std::int32_t Budget = 10000000);
    ~TestSession();
    TestSession(const TestSession&) = delete;
    TestSession& operator=(const TestSession&) = delete;

    /// A path in the test's own folder (not the session folder).
    [[nodiscard]] std::string Path(const std::string& Name) const { return Root + "/" + Name; }
    /// Writes a file there and gives its path.
    std::string WriteFile(const std::string& Name, const std::vector<std::uint8_t>& Bytes) const;
    [[nodiscard]] static std::vector<std::uint8_t> ReadFile(const std::string& Path);
    /// Names of the files in the session folder, sorted.
    [[nodiscard]] static std::vector<std::string> SessionFiles();

  private:
    std::string Root;
};

} // namespace quoril::test
