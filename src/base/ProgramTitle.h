// The name of the program as users read it.
#pragma once

namespace quoril {

inline constexpr const char* ProgramTitle = "Quoril Wave Editor";

} // namespace quoril
