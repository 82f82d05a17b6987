// The entry of every test program.

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>

namespace {

constexpr const char* MemoryDirectory = "/dev/shm";
constexpr std::uintmax_t NeededBytes = std::uintmax_t{1} << 30;

// Whether files there can have the attributes that the program gives to files.
bool TakesAttributes(const std::string& directory) {
  std::string path = directory + "/velmora-test-XXXXXX";
  const int descriptor = mkstemp(path.data());
  if (descriptor < 0) {
    return false;
  }
  const bool taken = fsetxattr(descriptor, "user.DOSATTRIB", "0x2", 3, 0) == 0;
  close(descriptor);
  unlink(path.c_str());
  return taken;
}

// Tests make and remove many small files, and whole stores; in memory that takes a tenth of the time. Who
// wants them on a disk sets TMPDIR.
void PreferMemoryForTemporaryFiles() {
  std::error_code error;
  const std::filesystem::space_info space = std::filesystem::space(MemoryDirectory, error);
  if (!error && space.available >= NeededBytes && TakesAttributes(MemoryDirectory)) {
    setenv("TMPDIR", MemoryDirectory, 0);
  }
}

}  // namespace

int main(int argc, char** argv) {
  PreferMemoryForTemporaryFiles();
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
