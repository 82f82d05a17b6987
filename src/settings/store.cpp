#include "settings/store.h"

#include <utility>

#include "base/paths.h"
#include "platform/make_folders.h"
#include "settings/settings_lock.h"

namespace velmora::settings {
namespace {

constexpr std::string_view FileName = "settings.toml";
constexpr std::string_view DamagedSuffix = ".damaged";

// Whether the changes would leave everything as it stands.
bool IsNoChange(const Values& stored, const std::vector<Change>& changes) {
  for (const Change& change : changes) {
    const Value* value = FindValue(stored, change.Section, change.Name);
    const bool same = change.NewValue ? value != nullptr && *value == *change.NewValue : value == nullptr;
    if (!same) {
      return false;
    }
  }
  return true;
}

}  // namespace

Store::Store(platform::FileSystem& fileSystem, std::string userDirectory, std::string machineDirectory)
    : fileSystem_(fileSystem),
      userDirectory_(std::move(userDirectory)),
      machineDirectory_(std::move(machineDirectory)) {}

const std::string& Store::Directory(Scope scope) const {
  return scope == Scope::User ? userDirectory_ : machineDirectory_;
}

std::string Store::FilePath(Scope scope) const { return JoinPath(Directory(scope), FileName); }

Result<Store::File> Store::ReadFile(Scope scope) {
  Result<std::string> bytes = fileSystem_.ReadFile(FilePath(scope));
  if (bytes) {
    std::optional<Values> content = ParseSettings(*bytes);
    return File{*std::move(bytes), std::move(content)};
  }
  const int number = bytes.error().Number;
  if (number == platform::file_error::FileNotFound || number == platform::file_error::PathNotFound) {
    return File{"", Values{}};
  }
  return Fail(bytes.error());
}

Values Store::Read(Scope scope) {
  Result<File> file = ReadFile(scope);
  return file && file->Content ? *std::move(file->Content) : Values{};
}

bool Store::IsDamaged(Scope scope) {
  const Result<File> file = ReadFile(scope);
  return !file || !file->Content;
}

Status Store::Merge(Scope scope, const Decide& decide) {
  const bool ownerOnly = scope == Scope::User;
  if (Status made = platform::MakeFolders(fileSystem_, Directory(scope), ownerOnly); !made) {
    return made;
  }
  const Result<std::string> directory = fileSystem_.HostPath(Directory(scope));
  if (!directory) {
    return Fail(directory.error());
  }
  const auto lock = LockSettings(*directory);
  if (!lock) {
    return Fail(lock.error());
  }
  const Result<File> file = ReadFile(scope);
  if (!file) {
    return Fail(file.error());
  }
  return Write(scope, *file, decide(file->Content.value_or(Values{})));
}

Status Store::Write(Scope scope, const File& file, const std::vector<Change>& changes) {
  if (changes.empty() || (file.Content && IsNoChange(*file.Content, changes))) {
    return {};
  }
  const std::string path = FilePath(scope);
  if (!file.Content) {
    if (Status kept = fileSystem_.CopyFile(path, path + std::string(DamagedSuffix)); !kept) {
      return kept;
    }
  }
  const std::string bytes = ChangeSettings(file.Bytes, changes);
  if (!ParseSettings(bytes)) {
    return Fail(platform::file_error::DeviceError, "Die Einstellungen sind zu umfangreich");
  }
  platform::WriteOptions options;
  options.OwnerOnly = scope == Scope::User;
  return fileSystem_.ReplaceFile(path, bytes, options);
}

// --- Single values. ---

Value Store::GetUserSetting(std::string_view section, std::string_view name, Value defaultValue) {
  return GetValue(Scope::User, section, name).value_or(std::move(defaultValue));
}
Status Store::SetUserSetting(std::string_view section, std::string_view name, Value value) {
  return SetValue(Scope::User, section, name, std::move(value));
}
Status Store::DeleteUserSetting(std::string_view section, std::string_view name) {
  return DeleteValue(Scope::User, section, name);
}
Value Store::GetMachineSetting(std::string_view section, std::string_view name, Value defaultValue) {
  return GetValue(Scope::Machine, section, name).value_or(std::move(defaultValue));
}
Status Store::SetMachineSetting(std::string_view section, std::string_view name, Value value) {
  return SetValue(Scope::Machine, section, name, std::move(value));
}
Status Store::DeleteMachineSetting(std::string_view section, std::string_view name) {
  return DeleteValue(Scope::Machine, section, name);
}

// --- Primitives. ---

bool Store::KeyExists(Scope root, std::string_view path) {
  const Values values = Read(root);
  return values.find(path) != values.end();
}

Status Store::CreateKey(Scope root, std::string_view path) {
  if (KeyExists(root, path)) {
    return {};
  }
  // A section stands as long as its table does: a value that is written and removed leaves the table.
  const std::string section(path);
  return Merge(root, [&](const Values&) {
    return std::vector<Change>{{section, "", Value(std::string())}, {section, "", std::nullopt}};
  });
}

std::optional<Value> Store::GetValue(Scope root, std::string_view path, std::string_view name) {
  const Values values = Read(root);
  const Value* value = FindValue(values, path, name);
  return value != nullptr ? std::optional(*value) : std::nullopt;
}

Status Store::SetValue(Scope root, std::string_view path, std::string_view name, Value value) {
  return Merge(root, [&](const Values&) {
    return std::vector<Change>{{std::string(path), std::string(name), value}};
  });
}

Status Store::DeleteValue(Scope root, std::string_view path, std::string_view name) {
  if (!GetValue(root, path, name)) {
    return {};
  }
  return Merge(root, [&](const Values&) {
    return std::vector<Change>{{std::string(path), std::string(name), std::nullopt}};
  });
}

}  // namespace velmora::settings
