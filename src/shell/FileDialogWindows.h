// The dialogs that ask for a file.
#pragma once

#include "audiofile/FileCommands.h"

#include <QString>
#include <QStringList>

namespace quoril {

/// The desktop's own file dialogs behind the requests of the core. Names cross as their bytes.
class FileDialogWindows final : public FileDialogs {
  public:
    std::optional<std::string> OpenFile(const FileDialogRequest& Request) override;
    std::optional<std::string> SaveFile(const FileDialogRequest& Request) override;
};

/// A filter of captions and patterns divided by "|", as file dialogs of Qt take it: letters match
/// in either case, and "*.*" is every file.
[[nodiscard]] QStringList FilterForQt(const std::string& Filter);

} // namespace quoril
