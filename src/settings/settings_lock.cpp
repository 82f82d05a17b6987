#include "settings/settings_lock.h"

#include <chrono>
#include <string_view>
#include <thread>

#include "platform/file_errors.h"

namespace velmora::settings {
namespace {

constexpr std::string_view LockName = "settings.lock";
constexpr auto LockWait = std::chrono::seconds(5);
constexpr auto LockPoll = std::chrono::milliseconds(5);

}  // namespace

Result<std::unique_ptr<platform::InstanceLock>> LockSettings(const std::string& hostDirectory) {
  const std::string hostPath = hostDirectory + "/" + std::string(LockName);
  const auto deadline = std::chrono::steady_clock::now() + LockWait;
  for (;;) {
    Result<std::unique_ptr<platform::InstanceLock>> lock = platform::TryInstanceLock(hostPath);
    if (!lock || *lock != nullptr) {
      return lock;
    }
    if (std::chrono::steady_clock::now() >= deadline) {
      return Fail(platform::file_error::AccessDenied,
                  "Die Einstellungen werden von einem anderen Prozess benutzt");
    }
    std::this_thread::sleep_for(LockPoll);
  }
}

}  // namespace velmora::settings
