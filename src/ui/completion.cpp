#include "ui/completion.h"

#include "base/text.h"

namespace velmora::ui {
namespace {

// What was typed, up to its last separator and behind it.
struct Typed {
  std::string_view Directory, Beginning;
  bool HasDirectory() const { return !Directory.empty(); }
};

Typed SplitTyped(std::string_view typed) {
  const std::size_t separator = typed.find_last_of("/\\");
  if (separator == std::string_view::npos) return {};
  return {typed.substr(0, separator + 1), typed.substr(separator + 1)};
}

// A wildcard in what was typed would be taken for more than itself.
bool HasWildcard(std::string_view text) { return text.find_first_of("*?") != std::string_view::npos; }

}  // namespace

std::vector<std::string> CompleteDirectory(platform::FileSystem& fileSystem, std::string_view typed) {
  const Typed parts = SplitTyped(typed);
  if (!parts.HasDirectory() || HasWildcard(parts.Beginning)) return {};
  const auto folders = fileSystem.List(fileSystem.FromUserPath(parts.Directory),
                                       std::string(parts.Beginning) + "*", platform::ListWhat::Folders);
  if (!folders) return {};
  std::vector<std::string> paths;
  for (const platform::FileEntry& folder : *folders) {
    if (paths.size() == MostCompletions) break;
    paths.push_back(std::string(parts.Directory) + folder.Name);
  }
  return paths;
}

std::vector<std::string> CompleteArchive(store::Session& session, std::string_view typed) {
  const Typed parts = SplitTyped(typed);
  if (!parts.HasDirectory() || session.Account == nullptr) return {};
  const auto archive = session.Account->GetArchive(parts.Directory);
  if (!archive) return {};
  const auto children = (*archive)->SubArchives();
  if (!children) return {};
  std::vector<std::string> paths;
  for (const auto& child : *children) {
    const auto name = child->DisplayName();
    if (!name || !StartsWithFold(*name, parts.Beginning)) continue;
    paths.push_back(std::string(parts.Directory) + *name);
    if (paths.size() == MostCompletions) break;
  }
  return paths;
}

}  // namespace velmora::ui
