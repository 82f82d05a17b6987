// A disk that is full, on any machine: files of this process cannot grow beyond some bytes.
#pragma once

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

namespace velmora::test {

class SmallDisk {
 public:
  explicit SmallDisk(rlim_t bytes) {
    EXPECT_EQ(getrlimit(RLIMIT_FSIZE, &before_), 0);
    handler_ = signal(SIGXFSZ, SIG_IGN);
    const struct rlimit limit {
      bytes, before_.rlim_max
    };
    EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;
  ~SmallDisk() {
    EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &before_), 0);
    signal(SIGXFSZ, handler_);
  }

 private:
  struct rlimit before_ {};
  sighandler_t handler_ = SIG_DFL;
};

}  // namespace velmora::test
