// The lock of the directory with the stores that tests copy: held shared while one is copied and alone while
// a build makes them anew.
#pragma once

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <stdexcept>
#include <string>

namespace velmora::test {

enum class StoresUse { Copy, Make };

class StoresLock {
 public:
  StoresLock(const std::string& directory, StoresUse use)
      : descriptor_(open((directory + "/lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666)) {
    if (descriptor_ < 0 || flock(descriptor_, use == StoresUse::Make ? LOCK_EX : LOCK_SH) != 0) {
      throw std::runtime_error("cannot lock the stores in " + directory);
    }
  }
  ~StoresLock() { close(descriptor_); }
  StoresLock(const StoresLock&) = delete;
  StoresLock& operator=(const StoresLock&) = delete;

 private:
  int descriptor_;
};

}  // namespace velmora::test
