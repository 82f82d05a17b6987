// The settings store: two levels, section and value, in two scopes. The user's values stand in settings.toml
// of his configuration directory, the machine's in settings.toml of the machine's, which an administrator
// writes. A missing or damaged file reads as empty, so that every value has its default; a damaged one is
// kept aside as settings.toml.damaged before it is written anew.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "platform/file_system.h"
#include "settings/toml_text.h"
#include "settings/values.h"

namespace velmora::settings {

enum class Scope { User, Machine };

class Store {
 public:
  // Windows paths of the two configuration directories; a missing one is made at the first write.
  Store(platform::FileSystem& fileSystem, std::string userDirectory, std::string machineDirectory);

  // --- All values at once. ---
  Values Read(Scope scope);
  bool IsDamaged(Scope scope);
  std::string FilePath(Scope scope) const;
  // One locked read, merge and atomic write: what other processes wrote in the meantime stays. `decide` gets
  // what stands in the store now. Busy for longer than five seconds, unreadable or unwritable: an error, and
  // the file is as it was.
  using Decide = std::function<std::vector<Change>(const Values& stored)>;
  Status Merge(Scope scope, const Decide& decide);

  // --- Single values. ---
  Value GetUserSetting(std::string_view section, std::string_view name, Value defaultValue);
  Status SetUserSetting(std::string_view section, std::string_view name, Value value);
  Status DeleteUserSetting(std::string_view section, std::string_view name);  // its absence is no error
  Value GetMachineSetting(std::string_view section, std::string_view name, Value defaultValue);
  Status SetMachineSetting(std::string_view section, std::string_view name, Value value);
  Status DeleteMachineSetting(std::string_view section, std::string_view name);

  // --- The primitives beneath them. ---
  bool KeyExists(Scope root, std::string_view path);
  Status CreateKey(Scope root, std::string_view path);
  std::optional<Value> GetValue(Scope root, std::string_view path, std::string_view name);
  Status SetValue(Scope root, std::string_view path, std::string_view name, Value value);
  Status DeleteValue(Scope root, std::string_view path, std::string_view name);

 private:
  struct File {
    std::string Bytes;
    std::optional<Values> Content;  // nothing: damaged
  };
  const std::string& Directory(Scope scope) const;
  Result<File> ReadFile(Scope scope);
  Status Write(Scope scope, const File& file, const std::vector<Change>& changes);

  platform::FileSystem& fileSystem_;
  std::string userDirectory_, machineDirectory_;
};

}  // namespace velmora::settings
