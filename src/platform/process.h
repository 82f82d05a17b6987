// Starting programs that outlive the call.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "base/result.h"

namespace velmora::platform {

// Starts a program in a session of its own, without input and output. Its exit status if it ends within
// `patience`, nothing if it goes on. Fails when it cannot be started.
Result<std::optional<int>> StartProcess(const std::vector<std::string>& arguments,
                                        std::chrono::milliseconds patience);

}  // namespace velmora::platform
