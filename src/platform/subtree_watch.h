// Who wants to be told before files of a subtree are touched, and how often each subtree was changed.
// Subtrees are known by their canonical host path, so a folder reached through its drive and through its
// share is one.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::platform {

class SubtreeWatch {
 public:
  using Before = std::function<void(std::string_view path)>;
  struct Registration;
  struct Table;

  // What applies to one folder, so that nothing is searched per file. Kept beside the folder; brought up to
  // date by each call that takes it.
  struct Scope {
    std::uint64_t Version = 0;
    std::vector<std::weak_ptr<Registration>> Registrations;
    std::vector<std::uint64_t*> Counters;
  };

  SubtreeWatch();

  // `windowsFolder`: how the caller names the subtree; paths that are told begin with it.
  std::shared_ptr<void> Register(std::string_view windowsFolder, std::string_view canonicalHostPath,
                                 Before before);
  std::uint64_t Generation(std::string_view canonicalHostPath);

  // Before a file `hostName` in the folder is touched. Whether anybody was told.
  bool TellFile(const std::string& canonicalFolder, Scope& scope, std::string_view hostName);
  // After it was changed.
  void CountChange(const std::string& canonicalFolder, Scope& scope);
  // The same for a folder that is deleted or renamed with all that is in it: those that watch it or a folder
  // in it are told once, with its path or their own folder's.
  void TellFolder(const std::string& canonicalPath);
  void CountFolderChange(const std::string& canonicalPath);
  // Whether anyone wants to be told of files at or below the folder.
  bool IsWatched(const std::string& canonicalPath) const;

 private:
  void Update(const std::string& canonicalFolder, Scope& scope);

  std::shared_ptr<Table> table_;  // shared with the tokens, which may outlive this
};

}  // namespace velmora::platform
