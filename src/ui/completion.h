// What a path that is being typed can become.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/file_system.h"
#include "store/session.h"

namespace velmora::ui {

inline constexpr std::size_t MostCompletions = 200;

// The directories whose paths begin with what was typed, as a person would go on typing them: a host path
// stays one.
std::vector<std::string> CompleteDirectory(platform::FileSystem& fileSystem, std::string_view typed);
// The same for the sub-archives of what stands before the last separator.
std::vector<std::string> CompleteArchive(store::Session& session, std::string_view typed);

}  // namespace velmora::ui
