#include "platform/path_map.h"

#include <algorithm>

#include "base/text.h"
#include "platform/file_errors.h"
#include "platform/host_names.h"

namespace velmora::platform {
namespace {

constexpr std::string_view Separators = "\\/";

bool IsSeparator(char character) { return Separators.find(character) != std::string_view::npos; }

// What lies between separators, empty pieces left out.
std::vector<std::string_view> PiecesOf(std::string_view path) {
  std::vector<std::string_view> pieces;
  for (std::size_t start = 0;
       (start = path.find_first_not_of(Separators, start)) != std::string_view::npos;) {
    const std::size_t end = std::min(path.find_first_of(Separators, start), path.size());
    pieces.push_back(path.substr(start, end - start));
    start = end;
  }
  return pieces;
}

// An absolute host path without "." and "..", without doubled and trailing "/": "" for the root.
std::string NormalizeHostPath(std::string_view path) {
  std::vector<std::string> kept;
  for (const std::string& piece : Split(path, "/")) {
    if (piece.empty() || piece == ".") continue;
    if (piece != "..") {
      kept.push_back(piece);
    } else if (!kept.empty()) {
      kept.pop_back();
    }
  }
  std::string normal;
  for (const std::string& piece : kept) normal += "/" + piece;
  return normal;
}

bool IsHostPathBelow(std::string_view path, std::string_view directory) {
  return path.starts_with(directory) && (path.size() == directory.size() || path[directory.size()] == '/');
}

// `\\SERVER\SHARE` or "Z:" in one spelling; "" when it is neither.
std::string NormalizePrefix(std::string_view prefix) {
  while (!prefix.empty() && IsSeparator(prefix.back())) prefix.remove_suffix(1);
  if (IsDriveName(prefix)) return ToUpper(prefix);
  if (prefix.size() < 2 || !IsSeparator(prefix[0]) || !IsSeparator(prefix[1])) return "";
  const std::vector<std::string_view> pieces = PiecesOf(prefix);
  if (pieces.size() != 2) return "";
  return "\\\\" + std::string(pieces[0]) + "\\" + std::string(pieces[1]);
}

}  // namespace

bool IsDriveName(std::string_view prefix) {
  return prefix.size() == 2 && prefix[1] == ':' &&
         ((prefix[0] >= 'A' && prefix[0] <= 'Z') || (prefix[0] >= 'a' && prefix[0] <= 'z'));
}

std::string MappedPath::HostPath() const {
  std::string path = HostRoot;
  for (const std::string& name : Names) path += "/" + name;
  return path.empty() ? "/" : path;
}

PathMap::PathMap(const std::vector<PathMapping>& mappings) {
  for (const PathMapping& mapping : mappings) {
    std::string prefix = NormalizePrefix(mapping.WindowsPrefix);
    if (prefix.empty() || !mapping.HostDirectory.starts_with('/')) continue;
    // A later row replaces an earlier one of the same name: the user's rows follow the machine's.
    std::erase_if(rows_, [&](const PathMapping& row) { return EqualsFold(row.WindowsPrefix, prefix); });
    rows_.push_back({std::move(prefix), NormalizeHostPath(mapping.HostDirectory)});
  }
  if (std::ranges::none_of(rows_, [](const PathMapping& row) { return row.WindowsPrefix == "Z:"; })) {
    rows_.push_back({"Z:", ""});
  }
  std::ranges::stable_sort(rows_, [](const PathMapping& a, const PathMapping& b) {
    if (a.HostDirectory.size() != b.HostDirectory.size()) {
      return a.HostDirectory.size() > b.HostDirectory.size();
    }
    return !IsDriveName(a.WindowsPrefix) && IsDriveName(b.WindowsPrefix);
  });
}

Result<MappedPath> PathMap::Parse(std::string_view windowsPath) const {
  const bool isUnc = windowsPath.size() >= 2 && IsSeparator(windowsPath[0]) && IsSeparator(windowsPath[1]);
  const std::vector<std::string_view> pieces = PiecesOf(windowsPath);
  const std::size_t rootPieces = isUnc ? 2 : 1;
  if (pieces.size() < rootPieces) return FailWith(file_error::PathNotFound);
  if (!isUnc && (IsSeparator(windowsPath[0]) || !IsDriveName(pieces[0]))) {
    return FailWith(file_error::PathNotFound);
  }
  const std::string root =
      isUnc ? "\\\\" + std::string(pieces[0]) + "\\" + std::string(pieces[1]) : std::string(pieces[0]);
  const auto row = std::ranges::find_if(
      rows_, [&](const PathMapping& mapping) { return EqualsFold(mapping.WindowsPrefix, root); });
  if (row == rows_.end()) return FailWith(file_error::PathNotFound);

  MappedPath mapped{row->HostDirectory, {}};
  for (std::size_t i = rootPieces; i < pieces.size(); ++i) {
    Result<std::string> name = ToHostName(pieces[i]);
    if (!name) return Fail(name.error());
    mapped.Names.push_back(std::move(*name));
  }
  return mapped;
}

std::optional<std::string> PathMap::ToWindows(std::string_view hostPath) const {
  if (!hostPath.starts_with('/')) return std::nullopt;
  const std::string normal = NormalizeHostPath(hostPath);
  const auto row = std::ranges::find_if(
      rows_, [&](const PathMapping& mapping) { return IsHostPathBelow(normal, mapping.HostDirectory); });
  if (row == rows_.end()) return std::nullopt;
  std::string path = row->WindowsPrefix;
  const std::string_view rest = std::string_view(normal).substr(row->HostDirectory.size());
  if (rest.empty()) return IsDriveName(path) ? path + "\\" : path;
  for (const std::string& name : Split(rest.substr(1), "/")) path += "\\" + ToWindowsName(name);
  return path;
}

std::string PathMap::ShareOfDrive(std::string_view drive) const {
  const auto row = std::ranges::find_if(rows_, [&](const PathMapping& mapping) {
    return IsDriveName(mapping.WindowsPrefix) &&
           EqualsFold(mapping.WindowsPrefix, drive.substr(0, std::min<std::size_t>(2, drive.size())));
  });
  if (row == rows_.end()) return "";
  const auto share = std::ranges::find_if(rows_, [&](const PathMapping& mapping) {
    return !IsDriveName(mapping.WindowsPrefix) && mapping.HostDirectory == row->HostDirectory;
  });
  return share == rows_.end() ? "" : share->WindowsPrefix;
}

}  // namespace velmora::platform
