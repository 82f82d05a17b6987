#include "platform/file_bytes.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <vector>

namespace velmora::platform {
namespace {

// More than this is not set aside on the word of a caller or of a file's length alone.
constexpr std::size_t ReadStep = std::size_t{1} << 20;
constexpr std::size_t MostExpected = std::size_t{1} << 26;
// Behind the end that a file tells, so much is tried for what came since.
constexpr std::size_t EndStep = 4096;
constexpr std::size_t CopyStep = std::size_t{1} << 30;

}  // namespace

int WriteAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return errno;
    if (written == 0) return ENOSPC;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return 0;
}

int ReadUpTo(int descriptor, std::size_t count, std::string& bytes) {
  while (count > 0) {
    const std::size_t start = bytes.size();
    bytes.resize(start + std::min(count, ReadStep));
    const ssize_t taken = read(descriptor, bytes.data() + start, bytes.size() - start);
    const int error = errno;
    bytes.resize(start + static_cast<std::size_t>(std::max<ssize_t>(0, taken)));
    if (taken < 0 && error == EINTR) continue;
    if (taken < 0) return error;
    if (taken == 0) return 0;
    count -= static_cast<std::size_t>(taken);
  }
  return 0;
}

int ReadWhole(int descriptor, std::string& bytes) {
  struct stat status {};
  if (fstat(descriptor, &status) != 0) return errno;
  const auto size = static_cast<std::size_t>(std::max<off_t>(0, status.st_size));
  const std::size_t expected = std::min(size, MostExpected);
  bytes.reserve(bytes.size() + expected + EndStep);
  if (const int error = ReadUpTo(descriptor, expected, bytes); error != 0) return error;
  const std::size_t before = bytes.size();
  if (const int error = ReadUpTo(descriptor, EndStep, bytes); error != 0) return error;
  if (bytes.size() < before + EndStep) return 0;
  return ReadUpTo(descriptor, std::numeric_limits<std::size_t>::max(), bytes);
}

int CopyAll(int from, int to) {
  // The kernel may share the blocks; where it cannot, or says "nothing left" of a file without a length, the
  // bytes go by hand.
  ssize_t copied = 0;
  while ((copied = copy_file_range(from, nullptr, to, nullptr, CopyStep, 0)) > 0) {
  }
  if (copied < 0 && (errno == ENOSPC || errno == EDQUOT || errno == EFBIG || errno == EIO)) return errno;
  std::vector<char> buffer(std::size_t{1} << 16);
  for (;;) {
    const ssize_t taken = read(from, buffer.data(), buffer.size());
    if (taken < 0 && errno == EINTR) continue;
    if (taken < 0) return errno;
    if (taken == 0) return 0;
    if (const int error = WriteAll(to, {buffer.data(), static_cast<std::size_t>(taken)}); error != 0) {
      return error;
    }
  }
}

}  // namespace velmora::platform
