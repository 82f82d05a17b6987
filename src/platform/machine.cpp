// What the operating system tells of the machine and the user.

#include <limits.h>
#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <vector>

#include "base/text.h"
#include "platform/host.h"

namespace velmora::platform {
namespace {

constexpr std::size_t MaxComputerName = 16;
constexpr std::size_t UserRecordBytes = 16'384;

struct UserNames {
  std::string Login;
  std::string Full;
};

UserNames FindUser() {
  std::vector<char> buffer(UserRecordBytes);
  struct passwd record {};
  struct passwd* found = nullptr;
  if (getpwuid_r(geteuid(), &record, buffer.data(), buffer.size(), &found) == 0 && found != nullptr) {
    // The comment field holds the full name up to the first comma.
    const std::string_view comment = found->pw_gecos != nullptr ? found->pw_gecos : "";
    return {found->pw_name, MakeValidUtf8(Trim(comment.substr(0, comment.find(','))))};
  }
  // A user without an entry: a container with a bare user number.
  return {EnvironmentVariable("USER").value_or(std::to_string(geteuid())), ""};
}

}  // namespace

std::string ComputerName() {
  std::array<char, HOST_NAME_MAX + 1> name{};
  if (gethostname(name.data(), name.size() - 1) != 0) return "";
  return std::string(LeftCharacters(name.data(), MaxComputerName));
}

std::string UserLoginName() { return FindUser().Login; }

std::string UserFullName() {
  const UserNames names = FindUser();
  return names.Full.empty() ? names.Login : names.Full;
}

bool IsOsAdministrator() { return geteuid() == 0; }

std::optional<std::string> EnvironmentVariable(const std::string& name) {
  const char* value = std::getenv(name.c_str());
  if (value == nullptr) return std::nullopt;
  return value;
}

}  // namespace velmora::platform
