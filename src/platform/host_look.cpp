// Looking: what exists, entries, listings, free names, drives and host paths.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include "base/paths.h"
#include "base/text.h"
#include "platform/attributes.h"
#include "platform/clock.h"
#include "platform/file_errors.h"
#include "platform/host.h"
#include "platform/host_files.h"
#include "platform/host_names.h"
#include "platform/name_mask.h"

namespace velmora::platform {
namespace {

// Nothing when the name is gone.
std::optional<FileEntry> EntryOf(const Folder& folder, const std::string& hostName) {
  struct stat status {};
  const int directory = folder.Index.Get();
  if (fstatat(directory, hostName.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return std::nullopt;
  FileEntry entry;
  entry.Name = ToWindowsName(hostName);
  entry.IsLink = S_ISLNK(status.st_mode);
  struct stat target {};
  // A link that leads nowhere is shown as the link itself, an empty file.
  const bool isFollowed = entry.IsLink && fstatat(directory, hostName.c_str(), &target, 0) == 0;
  if (isFollowed) status = target;
  entry.IsFolder = S_ISDIR(status.st_mode);
  entry.Size = entry.IsFolder || (entry.IsLink && !isFollowed) ? 0 : status.st_size;
  entry.Modified = FromUnixTime(status.st_mtim.tv_sec);
  entry.ReadOnly = IsReadOnly(status);
  entry.Hidden = !entry.IsLink && IsHidden(folder.HostPathOf(hostName));
  return entry;
}

std::string AbsoluteHostPath(std::string_view path) {
  if (path.starts_with('/')) return std::string(path);
  std::error_code error;
  const std::filesystem::path current = std::filesystem::current_path(error);
  return error ? std::string(path) : current.string() + "/" + std::string(path);
}

}  // namespace

HostFiles::HostFiles(const std::vector<PathMapping>& mappings) : map_(mappings), folders_(map_) {}

bool HostFiles::FileExists(std::string_view path) {
  const Result<Place> place = folders_.Locate(path);
  if (!place) return false;
  struct stat status {};
  const std::string name = folders_.FindName(*place, &status);
  if (name.empty()) return false;
  if (!S_ISLNK(status.st_mode)) return !S_ISDIR(status.st_mode);
  return fstatat(place->In->Index.Get(), name.c_str(), &status, 0) == 0 && !S_ISDIR(status.st_mode);
}

bool HostFiles::FolderExists(std::string_view path) {
  const Result<Place> place = folders_.Locate(path);
  // Not found by name also means: the root of a drive or share.
  if (!place) return place.error().Number == file_error::PathNotFound && folders_.Find(path).has_value();
  struct stat status {};
  const std::string name = folders_.FindName(*place, &status);
  return !name.empty() && fstatat(place->In->Index.Get(), name.c_str(), &status, 0) == 0 &&
         S_ISDIR(status.st_mode);
}

Result<FileEntry> HostFiles::GetEntry(std::string_view path) {
  const Result<MappedPath> mapped = map_.Parse(path);
  if (mapped && mapped->Names.empty()) {
    const Result<std::shared_ptr<Folder>> root = folders_.Find(path);
    if (!root) return Fail(root.error());
    std::optional<FileEntry> entry = EntryOf(**root, ".");
    if (!entry) return FailWith(file_error::PathNotFound);
    entry->Name.clear();
    return *std::move(entry);
  }
  const Result<Place> place = folders_.Locate(path);
  if (!place) return Fail(place.error());
  const std::string name = folders_.FindName(*place, nullptr);
  std::optional<FileEntry> entry;
  if (!name.empty()) entry = EntryOf(*place->In, name);
  if (!entry) return FailWith(file_error::FileNotFound);
  return *std::move(entry);
}

Result<std::vector<FileEntry>> HostFiles::List(std::string_view folder, std::string_view mask,
                                               ListWhat what) {
  const Result<std::shared_ptr<Folder>> found = folders_.Find(folder);
  if (!found) return Fail(found.error());
  DirectoryIndex& index = (*found)->Index;
  const NameMask nameMask(mask);
  const std::string& prefix = nameMask.LiteralPrefix();
  const auto trust = prefix.empty() ? DirectoryIndex::Trust::List : DirectoryIndex::Trust::LookUp;
  if (Status fresh = index.Refresh(trust); !fresh) return Fail(fresh.error());

  std::vector<FileEntry> entries;
  for (auto name = index.All().lower_bound(prefix); name != index.All().end(); ++name) {
    if (!name->first.starts_with(prefix)) break;
    if (!nameMask.Matches(name->first)) continue;
    const NameKind unwanted = what == ListWhat::Files ? NameKind::Folder : NameKind::File;
    if (what != ListWhat::All && name->second.Kind == unwanted) continue;
    std::optional<FileEntry> entry = EntryOf(**found, name->second.HostName);
    if (!entry || (what != ListWhat::All && entry->IsFolder != (what == ListWhat::Folders))) continue;
    entries.push_back(*std::move(entry));
  }
  return entries;
}

std::string HostFiles::UniqueFileName(std::string_view folder, std::string_view fileName) {
  const Result<std::shared_ptr<Folder>> found = folders_.Find(folder);
  if (!found) return std::string(fileName);  // nothing is taken in a folder that does not exist
  DirectoryIndex& index = (*found)->Index;
  const bool isReadable = index.Refresh(DirectoryIndex::Trust::LookUp).has_value();
  return index.Numbers().FirstFree(fileName, [&](const std::string& name) {
    const Result<std::string> hostName = ToHostName(name);
    if (!hostName) return true;  // writing it will tell what is wrong
    if (isReadable && index.Find(*hostName, FoldCase(name)) != nullptr) return false;
    struct stat status {};
    return fstatat(index.Get(), hostName->c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0;
  });
}

std::vector<Drive> HostFiles::Drives() {
  std::vector<Drive> drives;
  for (const PathMapping& row : map_.Rows()) {
    if (!IsDriveName(row.WindowsPrefix)) continue;
    struct stat status {};
    const std::string hostPath = row.HostDirectory.empty() ? "/" : row.HostDirectory;
    const bool isReady = stat(hostPath.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
    drives.push_back({row.WindowsPrefix, map_.ShareOfDrive(row.WindowsPrefix), isReady});
  }
  std::ranges::sort(drives, {}, &Drive::Name);
  return drives;
}

std::string HostFiles::FromUserPath(std::string_view text) {
  if (text.starts_with("~/")) {
    const std::optional<std::string> home = EnvironmentVariable("HOME");
    return home ? FromHostPath(*home + std::string(text.substr(1))) : std::string(text);
  }
  if (text.starts_with('/') || text.starts_with("./")) return FromHostPath(text);
  return std::string(text);
}

std::string HostFiles::FromHostPath(std::string_view hostPath) {
  return map_.ToWindows(AbsoluteHostPath(hostPath)).value_or(std::string(hostPath));
}

Result<std::string> HostFiles::HostPath(std::string_view path) {
  const Result<MappedPath> mapped = map_.Parse(path);
  if (!mapped) return Fail(mapped.error());
  if (mapped->Names.empty()) return mapped->HostPath();
  const Result<Place> place = folders_.Locate(path);
  if (!place) return Fail(place.error());
  const std::string name = folders_.FindName(*place, nullptr);
  return place->In->HostPathOf(name.empty() ? place->HostName : name);
}

Result<std::string> HostFiles::ExistingHostPath(std::string_view path) {
  const Result<Place> place = folders_.Locate(path);
  if (!place) return Fail(place.error());
  const std::string name = folders_.FindName(*place, nullptr);
  if (name.empty()) return FailWith(file_error::FileNotFound);
  return place->In->HostPathOf(name);
}

std::string HostFiles::CanonicalPathOf(std::string_view windowsFolder) {
  const Result<MappedPath> mapped = map_.Parse(windowsFolder);
  if (!mapped) return "";
  std::string path(windowsFolder);
  std::string missing;
  for (std::size_t known = mapped->Names.size();; --known) {
    if (const Result<std::shared_ptr<Folder>> folder = folders_.Find(path)) {
      const std::string& canonical = (*folder)->CanonicalPath;
      return missing.empty() ? canonical : (canonical == "/" ? "" : canonical) + missing;
    }
    if (known == 0) return mapped->HostPath();
    missing = "/" + mapped->Names[known - 1] + missing;
    path.resize(path.find_last_not_of("\\/") + 1);
    path.resize(path.find_last_of("\\/"));
  }
}

std::shared_ptr<void> HostFiles::RegisterSubtree(std::string_view folder,
                                                 std::function<void(std::string_view path)> before) {
  const std::string canonical = CanonicalPathOf(folder);
  // Without a mapping no path leads there, so nobody is ever told.
  if (canonical.empty()) return std::make_shared<int>();
  return watch_.Register(folder, canonical, std::move(before));
}

std::uint64_t HostFiles::Generation(std::string_view folder) {
  const std::string canonical = CanonicalPathOf(folder);
  return canonical.empty() ? 0 : watch_.Generation(canonical);
}

std::unique_ptr<FileSystem> MakeHostFileSystem(std::vector<PathMapping> mappings) {
  return std::make_unique<HostFiles>(mappings);
}

}  // namespace velmora::platform
