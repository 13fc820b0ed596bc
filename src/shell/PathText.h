// A box for the path of a file.
#pragma once

#include <QLineEdit>
#include <string>

namespace quoril {

/// Names of files are bytes that need not be text. What cannot be shown comes back as it was, as
/// long as the user leaves it alone.
class PathText final : public QLineEdit {
  public:
    using QLineEdit::QLineEdit;
    void SetPath(const std::string& Path);
    [[nodiscard]] std::string Path() const;

  private:
    std::string Given;
};

} // namespace quoril
