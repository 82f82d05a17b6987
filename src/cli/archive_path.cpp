#include "cli/archive_path.h"

#include <string>

#include "base/text.h"
#include "store/errors.h"

namespace velmora::cli {
namespace {

using store::DvArchive;
namespace store_error = store::store_error;

// A physical directory: nothing can be made there by names.
bool IsDirectoryForm(std::string_view path) {
  return path.starts_with("\\\\") || path.starts_with("//") || (path.size() > 1 && path[1] == ':');
}

}  // namespace

Result<std::shared_ptr<DvArchive>> GetOrCreateArchive(store::DvAccount& account, std::string_view path) {
  auto present = account.GetArchive(path);
  if (present || present.error().Number != store_error::NotFound || IsDirectoryForm(path)) return present;

  // The longest part of the path that is there; the rest is made below it. Of archives that only lead on, as
  // the root does for an ordinary user, no rights are needed.
  auto reached = account.GetSpecialArchive(store::special::ArchiveRoot);
  std::string walked;
  for (const auto& name : Split(ReplaceAll(path, "\\", "/"), "/")) {
    if (name.empty()) continue;
    walked += "/" + name;
    auto next = account.GetArchive(walked);
    if (!next && next.error().Number == store_error::NotFound && reached)
      next = (*reached)->CreateSubArchive(name);
    if (!next && next.error().Number == store_error::NotFound) return reached;
    reached = std::move(next);
  }
  return reached;
}

}  // namespace velmora::cli
