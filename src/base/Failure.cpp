#include "base/Failure.h"

#include <system_error>

namespace quoril {

SystemFailure::SystemFailure(int ErrorCode, const std::string& FileName)
    : Failure(std::generic_category().message(ErrorCode) +
              (FileName.empty() ? std::string() : "\n" + FileName)),
      CodeOfError(ErrorCode) {}

} // namespace quoril
