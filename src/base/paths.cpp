#include "base/paths.h"

#include <algorithm>

#include "base/text.h"

namespace velmora {
namespace {

constexpr std::string_view UncPrefix = "\\\\";
constexpr std::string_view DavidName = "david";

std::string AddLast(std::string_view path, char last) {
  std::string text(path);
  if (!path.ends_with(last)) text += last;
  return text;
}

std::string StripLast(std::string_view path, char last) {
  if (path.ends_with(last)) path.remove_suffix(1);
  return std::string(path);
}

bool HasDrive(std::string_view path) { return path.substr(LeftCharacters(path, 1).size()).starts_with(':'); }

// Windows drops blanks and points at a component's end: what is made of them alone leads to the folder
// itself or above it.
bool LeadsUpwards(std::string_view component) {
  return component.find_first_not_of(". ") == std::string_view::npos &&
         std::count(component.begin(), component.end(), '.') > 1;
}

}  // namespace

std::string AddBackslash(std::string_view path) { return AddLast(path, '\\'); }
std::string StripBackslash(std::string_view path) { return StripLast(path, '\\'); }
std::string AddSlash(std::string_view path) { return AddLast(path, '/'); }
std::string StripSlash(std::string_view path) { return StripLast(path, '/'); }

std::string_view FileNameOf(std::string_view path) { return path.substr(DirectoryOf(path).size()); }

std::string_view DirectoryOf(std::string_view path) {
  const std::size_t last = path.rfind('\\');
  return last == std::string_view::npos ? std::string_view{} : path.substr(0, last + 1);
}

std::string JoinPath(std::string_view directory, std::string_view name) {
  while (directory.ends_with('\\')) directory.remove_suffix(1);
  while (name.starts_with('\\')) name.remove_prefix(1);
  return std::string(directory).append("\\").append(name);
}

std::string PathToUrl(std::string_view path) {
  std::string url(path);
  std::replace(url.begin(), url.end(), '\\', '/');
  return url;
}

std::string NormalizePath(std::string_view path) {
  if (HasDrive(path) || path.find_first_of(":\\") == std::string_view::npos) return std::string(path);
  std::string unc(path);
  std::replace(unc.begin(), unc.end(), ':', '\\');
  if (!unc.starts_with(UncPrefix)) unc.insert(0, UncPrefix);
  return unc;
}

std::string ToNetWareForm(std::string_view path,
                          const std::function<std::string(std::string_view drive)>& shareOfDrive) {
  std::string unc(path);
  if (HasDrive(path)) {
    const std::size_t behindDrive = LeftCharacters(path, 2).size();
    const std::string share = shareOfDrive(path.substr(0, behindDrive));
    if (share.empty()) return unc;
    unc = AddBackslash(share).append(LeftCharacters(path, 3).size() < path.size()
                                         ? path.substr(LeftCharacters(path, 3).size())
                                         : std::string_view{});
  }
  if (!unc.starts_with(UncPrefix) || unc.find(':') != std::string::npos) return unc;
  const std::vector<std::string> parts = Split(unc, "\\", 5);
  if (parts.size() < 5) return unc;
  return parts[2] + "\\" + parts[3] + ":" + parts[4];
}

std::string MapToDavidRoot(std::string_view path, std::string_view davidRoot) {
  const std::string lowerPath = ToLower(path);
  const std::string lowerRoot = ToLower(davidRoot);
  const std::size_t inPath = lowerPath.find(DavidName);
  if (inPath == std::string::npos) return std::string(path);
  return lowerRoot.substr(0, lowerRoot.find(DavidName)) + "DAVID" +
         lowerPath.substr(inPath + DavidName.size());
}

bool IsSameOrBelow(std::string_view path, std::string_view directory) {
  const std::string foldedPath = FoldCase(StripBackslash(path));
  const std::string foldedDirectory = FoldCase(StripBackslash(directory));
  if (!foldedPath.starts_with(foldedDirectory)) return false;
  return foldedPath.size() == foldedDirectory.size() || foldedPath[foldedDirectory.size()] == '\\';
}

bool IsSafeRelativePath(std::string_view path) {
  if (path.empty() || path.starts_with('\\') || path.starts_with('/')) return false;
  if (path.find(':') != std::string_view::npos || BlankControlCharacters(path) != path) return false;
  const std::vector<std::string> components = Split(PathToUrl(path), "/");
  return std::none_of(components.begin(), components.end(), LeadsUpwards);
}

}  // namespace velmora
