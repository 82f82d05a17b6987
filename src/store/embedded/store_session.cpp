#include "store/embedded/store_session.h"

#include <fmt/core.h>

#include <optional>
#include <utility>

#include "base/paths.h"
#include "base/text.h"
#include "store/embedded/list_cache.h"
#include "store/errors.h"

namespace velmora::store::embedded {
namespace {

std::string WithoutEndSeparators(std::string_view path) {
  while (!path.empty() && (path.back() == '\\' || path.back() == '/')) path.remove_suffix(1);
  return std::string(path);
}

std::vector<std::string> SplitNames(std::string_view path) {
  std::vector<std::string> names;
  for (auto& name : Split(ReplaceAll(path, "\\", "/"), "/")) {
    if (!name.empty()) names.push_back(std::move(name));
  }
  return names;
}

bool IsDriveForm(std::string_view path) {
  return path.size() >= 2 && path[1] == ':' && (path.size() == 2 || path[2] == '\\' || path[2] == '/');
}
bool IsUncForm(std::string_view path) { return path.starts_with("\\\\") || path.starts_with("//"); }

// The UNC form, below the store's share, of a text that is a physical directory; nothing for any other text
// and for a directory outside the store.
std::optional<std::string> StoreDirectory(StoreSession& session, std::string_view path) {
  const std::string root = session.Layout.ArchiveRoot();
  const std::string plain = WithoutEndSeparators(path);
  if (IsUncForm(plain) || IsDriveForm(plain)) {
    const std::string windows = ReplaceAll(plain, "/", "\\");
    if (IsSameOrBelow(windows, root)) return windows;
    // Another drive or share may map the same host directory.
    const auto host = session.FileSystem.HostPath(windows);
    if (!host) return std::nullopt;
    std::string mapped = WithoutEndSeparators(session.FileSystem.FromHostPath(*host));
    if (IsSameOrBelow(mapped, root)) return mapped;
    return std::nullopt;
  }
  // A display name may hold a colon too: only a path that leads into this store is one.
  if (plain.find(':') == std::string::npos) return std::nullopt;
  std::string normalized = NormalizePath(plain);
  if (IsSameOrBelow(normalized, root)) return normalized;
  return std::nullopt;
}

Result<ArchiveRecord> FindByRelativeNames(StoreSession& session, const std::vector<std::string>& names) {
  const std::string& root = session.Layout.ArchiveRoot();
  if (!names.empty() && EqualsFold(names.front(), ShownName(session.Tree.Root()))) {
    auto found = session.Tree.FindByNames(root, {names.begin() + 1, names.end()});
    if (found || found.error().Number != store_error::NotFound) return found;
  }
  auto found = session.Tree.FindByNames(root, names);
  if (found || found.error().Number != store_error::NotFound) return found;
  // By directories, which must be there: a name that nobody has would else cost a look at every list.
  const std::string directory = JoinPath(root, Join(names, "\\"));
  if (!session.FileSystem.FolderExists(directory)) return found;
  return session.Tree.FindByDirectory(directory);
}

}  // namespace

StoreSession::StoreSession(platform::FileSystem& fileSystem, platform::Clock& clock,
                           const std::string& serverName, SiteDatabase site, UserRecord user)
    : FileSystem(fileSystem),
      Clock(clock),
      ServerName(serverName),
      Layout(serverName),
      Site(std::move(site)),
      User(std::move(user)),
      Tree(fileSystem, Layout.ArchiveRoot()),
      Logs(fileSystem, clock, Layout),
      Messages(fileSystem, clock, Layout.MoveJournals()),
      Access(Tree, Layout, User) {}

bool StoreSession::IsSpecial(std::string_view directory) {
  const auto users = Site.Users();
  if (!users) return true;
  return Layout.IsSpecial(directory, *users);
}

std::string ShownName(const ArchiveRecord& record) { return ShownName(record.Name, record.Directory); }

std::string ChildPath(std::string_view parentPath, const ArchiveRecord& record) {
  return fmt::format("{}/{}", parentPath, ShownName(record));
}

Result<std::string> FullPathOf(ArchiveTree& tree, const ArchiveRecord& record) {
  const auto names = tree.NamesDownTo(record.IsLink ? record.ParentDirectory : record.Directory);
  if (!names) return Fail(names.error());
  const std::string path = "/" + Join(*names, "/");
  return record.IsLink ? ChildPath(path, record) : path;
}

Result<ArchiveRecord> FindArchive(StoreSession& session, std::string_view path) {
  const auto notFound = Fail(store_error::NotFound, fmt::format("Das Archiv {} ist nicht vorhanden", path));
  if (path.empty()) return notFound;
  const auto directory = StoreDirectory(session, path);
  if (!directory && (IsUncForm(path) || IsDriveForm(path))) return notFound;
  auto found =
      directory ? session.Tree.FindByDirectory(*directory) : FindByRelativeNames(session, SplitNames(path));
  if (!found && found.error().Number == store_error::NotFound) return notFound;
  return found;
}

}  // namespace velmora::store::embedded
