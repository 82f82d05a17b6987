#include "platform/subtree_watch.h"

#include <algorithm>

#include "base/paths.h"
#include "base/text.h"
#include "platform/host_names.h"

namespace velmora::platform {
namespace {

std::size_t CountComponents(std::string_view hostPath) {
  return hostPath == "/" ? 0 : static_cast<std::size_t>(std::ranges::count(hostPath, '/'));
}

// Both folded.
bool IsAtOrBelow(std::string_view path, std::string_view folder) {
  if (folder == "/") return true;
  return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

}  // namespace

struct SubtreeWatch::Registration {
  std::string Folder;      // as the caller names it
  std::string Key;         // folded canonical host path
  std::size_t Components;  // of the key: folding may change lengths, but never their number
  Before Tell;

  // The canonical host path of something below, in the caller's spelling.
  std::string PathOf(std::string_view canonicalPath) const {
    std::string path = StripBackslash(Folder);
    std::size_t component = 0;
    for (const std::string& name : Split(canonicalPath, "/")) {
      if (component++ > Components && !name.empty()) path += "\\" + ToWindowsName(name);
    }
    return path;
  }
};

struct SubtreeWatch::Table {
  std::uint64_t Version = 1;  // of registrations and counters: scopes with another one are outdated
  std::vector<std::shared_ptr<Registration>> Registrations;
  std::map<std::string, std::uint64_t> Counters;  // addresses stay: scopes point into it
};

SubtreeWatch::SubtreeWatch() : table_(std::make_shared<Table>()) {}

std::shared_ptr<void> SubtreeWatch::Register(std::string_view windowsFolder,
                                             std::string_view canonicalHostPath, Before before) {
  auto registration =
      std::make_shared<Registration>(Registration{std::string(windowsFolder), FoldCase(canonicalHostPath),
                                                  CountComponents(canonicalHostPath), std::move(before)});
  table_->Registrations.push_back(registration);
  ++table_->Version;
  return {registration.get(), [table = std::weak_ptr<Table>(table_)](Registration* ended) {
            const std::shared_ptr<Table> alive = table.lock();
            if (!alive) return;
            std::erase_if(alive->Registrations, [&](const auto& kept) { return kept.get() == ended; });
            ++alive->Version;
          }};
}

std::uint64_t SubtreeWatch::Generation(std::string_view canonicalHostPath) {
  const auto [counter, isNew] = table_->Counters.try_emplace(FoldCase(canonicalHostPath), 0);
  if (isNew) ++table_->Version;
  return counter->second;
}

void SubtreeWatch::Update(const std::string& canonicalFolder, Scope& scope) {
  if (scope.Version == table_->Version) return;
  const std::string key = FoldCase(canonicalFolder);
  scope = {table_->Version, {}, {}};
  for (const auto& registration : table_->Registrations) {
    if (IsAtOrBelow(key, registration->Key)) scope.Registrations.push_back(registration);
  }
  for (auto& [folder, count] : table_->Counters) {
    if (IsAtOrBelow(key, folder)) scope.Counters.push_back(&count);
  }
}

bool SubtreeWatch::TellFile(const std::string& canonicalFolder, Scope& scope, std::string_view hostName) {
  Update(canonicalFolder, scope);
  if (scope.Registrations.empty()) return false;
  const std::string path = JoinHostPath(canonicalFolder, hostName);
  // A copy: who is told may register or end a registration.
  const auto registrations = scope.Registrations;
  for (const auto& entry : registrations) {
    if (const auto registration = entry.lock()) registration->Tell(registration->PathOf(path));
  }
  return true;
}

void SubtreeWatch::CountChange(const std::string& canonicalFolder, Scope& scope) {
  Update(canonicalFolder, scope);
  for (std::uint64_t* counter : scope.Counters) ++*counter;
}

void SubtreeWatch::TellFolder(const std::string& canonicalPath) {
  const std::string key = FoldCase(canonicalPath);
  const auto registrations = table_->Registrations;
  for (const auto& registration : registrations) {
    if (IsAtOrBelow(key, registration->Key)) {
      registration->Tell(registration->PathOf(canonicalPath));
    } else if (IsAtOrBelow(registration->Key, key)) {
      registration->Tell(registration->Folder);
    }
  }
}

void SubtreeWatch::CountFolderChange(const std::string& canonicalPath) {
  const std::string key = FoldCase(canonicalPath);
  for (auto& [folder, count] : table_->Counters) {
    if (IsAtOrBelow(key, folder) || IsAtOrBelow(folder, key)) ++count;
  }
}

bool SubtreeWatch::IsWatched(const std::string& canonicalPath) const {
  const std::string key = FoldCase(canonicalPath);
  return std::ranges::any_of(table_->Registrations, [&](const auto& registration) {
    return IsAtOrBelow(key, registration->Key) || IsAtOrBelow(registration->Key, key);
  });
}

}  // namespace velmora::platform
