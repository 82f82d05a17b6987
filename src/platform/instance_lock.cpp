#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

#include "platform/descriptor.h"
#include "platform/file_errors.h"
#include "platform/host.h"

namespace velmora::platform {
namespace {

class HostInstanceLock : public InstanceLock {
 public:
  explicit HostInstanceLock(Descriptor file) : file_(std::move(file)), owner_(getpid()) {}
  HostInstanceLock(const HostInstanceLock&) = delete;
  HostInstanceLock& operator=(const HostInstanceLock&) = delete;
  ~HostInstanceLock() override {
    // A forked child shares the lock: it must not take it from its parent, and must not keep it either when
    // the parent lets go.
    if (getpid() == owner_) (void)flock(file_.Get(), LOCK_UN);
  }

 private:
  Descriptor file_;
  pid_t owner_;
};

}  // namespace

Result<std::unique_ptr<InstanceLock>> TryInstanceLock(const std::string& hostPath) {
  Descriptor file(open(hostPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
  if (!file) return FailWithErrno(errno, file_error::PathNotFound);
  if (flock(file.Get(), LOCK_EX | LOCK_NB) != 0) {
    if (errno == EWOULDBLOCK) return nullptr;
    return FailWithErrno(errno);
  }
  return std::make_unique<HostInstanceLock>(std::move(file));
}

}  // namespace velmora::platform
