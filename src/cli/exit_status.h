// What velmoractl tells the shell.
#pragma once

namespace velmora::cli::exit_status {

inline constexpr int Done = 0;
inline constexpr int DoneWithErrors = 1;
inline constexpr int WrongUsage = 2;
inline constexpr int NoSignOn = 3;

}  // namespace velmora::cli::exit_status
