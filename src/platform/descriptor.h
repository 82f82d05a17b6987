// A file descriptor that closes itself.
#pragma once

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace velmora::platform {

class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int fd) : fd_(fd) {}
  Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    if (this != &other) {
      (void)Close();  // nothing was written through what is given up here
      fd_ = std::exchange(other.fd_, -1);
    }
    return *this;
  }
  ~Descriptor() { (void)Close(); }  // who wants to know closes before

  int Get() const { return fd_; }
  explicit operator bool() const { return fd_ >= 0; }
  // Closes now; 0 or the errno of what the system reported late.
  int Close() {
    const int fd = std::exchange(fd_, -1);
    return fd < 0 || close(fd) == 0 || errno == EINTR ? 0 : errno;
  }

 private:
  int fd_ = -1;
};

}  // namespace velmora::platform
