// Settings files of sections and keys, shared by all running copies of the program.
//
// A read goes to the file each time, so that no copy in memory grows stale. A write is read,
// change, rename under a lock file: several processes never lose each other's keys, and a crash
// never leaves half a file. Sections and keys are compared without case; blanks around a value and
// one pair of quotes around it are taken off. Order, comments and unknown keys are kept.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace quoril {

/// The value of a key, or `Default` when file, section or key are missing. Cut off after
/// `MostCharacters` bytes; 0 means whole. Never fails.
[[nodiscard]] std::string GetPrivateProfileStringA(const std::string& Section,
                                                   const std::string& Key,
                                                   const std::string& Default,
                                                   const std::string& FileName,
                                                   std::size_t MostCharacters = 0);

/// What a settings file holds at one moment, for those who read many values of one file.
class PrivateProfileContents {
  public:
    /// Never fails: of a file that cannot be read every key is missing.
    explicit PrivateProfileContents(const std::string& FileName);
    ~PrivateProfileContents();
    PrivateProfileContents(const PrivateProfileContents&) = delete;
    PrivateProfileContents& operator=(const PrivateProfileContents&) = delete;
    /// As GetPrivateProfileStringA.
    [[nodiscard]] std::string Get(const std::string& Section, const std::string& Key,
                                  const std::string& Default, std::size_t MostCharacters = 0) const;

  private:
    struct Inner;
    std::unique_ptr<const Inner> Parsed; ///< null when there is nothing to read
};

/// Stores a value; the file and its section are made when missing. False when the file cannot be
/// written: then it is as it was.
bool WritePrivateProfileStringA(const std::string& Section, const std::string& Key,
                                const std::string& Value, const std::string& FileName);

/// Stores values of several keys of one section in one change of the file, which costs no more
/// waiting for the disk than one value.
bool WritePrivateProfileStrings(const std::string& Section,
                                const std::vector<std::pair<std::string, std::string>>& Values,
                                const std::string& FileName);

/// Takes a key out of the file. False when the file cannot be written.
bool DeletePrivateProfileKey(const std::string& Section, const std::string& Key,
                             const std::string& FileName);

} // namespace quoril
