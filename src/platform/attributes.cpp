#include "platform/attributes.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/xattr.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/clock.h"
#include "platform/file_errors.h"

namespace velmora::platform {
namespace {

constexpr const char* AttributeName = "user.DOSATTRIB";
constexpr std::uint32_t HiddenBit = 0x2;

// The record: an empty text (one zero byte and one to align), the version twice as 16 bits, the valid fields
// and the DOS attributes as 32 bits each, all little-endian, then fields that differ by version.
constexpr std::size_t VersionOffset = 2;
constexpr std::size_t ValidFieldsOffset = 8;
constexpr std::size_t DosBitsOffset = 12;
constexpr std::size_t MinRecordSize = 16;
constexpr unsigned char ValidDosBits = 0x1;

// A value longer than this is none that we know.
using Value = std::array<char, 512>;

bool IsRecord(std::string_view value) {
  return value.size() >= MinRecordSize && value[0] == 0 && value[VersionOffset] >= 3 &&
         value[VersionOffset] <= 5 && value[VersionOffset + 1] == 0;
}

std::uint32_t ReadDosBits(std::string_view value) {
  if (IsRecord(value)) {
    if ((static_cast<unsigned char>(value[ValidFieldsOffset]) & ValidDosBits) == 0) return 0;
    std::uint32_t bits = 0;
    for (std::size_t i = 4; i-- > 0;) bits = bits << 8 | static_cast<unsigned char>(value[DosBitsOffset + i]);
    return bits;
  }
  if (value.starts_with("0x")) value.remove_prefix(2);
  std::uint32_t bits = 0;
  const auto parsed = std::from_chars(value.data(), value.data() + value.size(), bits, 16);
  return parsed.ec == std::errc() ? bits : 0;
}

std::string WithDosBits(std::string_view old, std::uint32_t bits) {
  if (!IsRecord(old)) return fmt::format("{:#x}", bits);
  std::string record(old);
  record[ValidFieldsOffset] = static_cast<char>(record[ValidFieldsOffset] | ValidDosBits);
  for (std::size_t i = 0; i < 4; ++i) record[DosBitsOffset + i] = static_cast<char>(bits >> (8 * i) & 0xFF);
  return record;
}

std::string_view Taken(const Value& value, ssize_t size) {
  return size <= 0 ? std::string_view() : std::string_view(value.data(), static_cast<std::size_t>(size));
}

bool IsUnsupported(int error) { return error == ENOTSUP || error == ENOSYS; }

}  // namespace

bool IsHidden(const std::string& hostPath) {
  Value value;
  const ssize_t size = lgetxattr(hostPath.c_str(), AttributeName, value.data(), value.size());
  return (ReadDosBits(Taken(value, size)) & HiddenBit) != 0;
}

Status StoreHidden(const std::string& hostPath, bool hidden) {
  Value value;
  const ssize_t size = getxattr(hostPath.c_str(), AttributeName, value.data(), value.size());
  if (size < 0 && IsUnsupported(errno)) return {};
  const std::string_view old = Taken(value, size);
  const std::uint32_t bits = ReadDosBits(old);
  const std::uint32_t wanted = hidden ? bits | HiddenBit : bits & ~HiddenBit;
  if (wanted == bits) return {};
  const std::string stored = WithDosBits(old, wanted);
  if (setxattr(hostPath.c_str(), AttributeName, stored.data(), stored.size(), 0) == 0 ||
      IsUnsupported(errno)) {
    return {};
  }
  return FailWithErrno(errno);
}

void CopyDosAttributes(int fromDescriptor, int toDescriptor) {
  Value value;
  const ssize_t size = fgetxattr(fromDescriptor, AttributeName, value.data(), value.size());
  if (size <= 0) return;
  // A copy that cannot be hidden is still a copy.
  (void)fsetxattr(toDescriptor, AttributeName, value.data(), static_cast<std::size_t>(size), 0);
}

struct timespec ToTimespec(DateTime time) {
  struct timespec moment {};
  moment.tv_sec = ToUnixTime(time);
  return moment;
}

int StoreTime(int descriptor, DateTime time) {
  if (time.IsNull()) return 0;
  const std::array<struct timespec, 2> times{ToTimespec(time), ToTimespec(time)};
  return futimens(descriptor, times.data()) == 0 ? 0 : errno;
}

}  // namespace velmora::platform
