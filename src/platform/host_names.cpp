#include "platform/host_names.h"

#include <limits.h>
#include <algorithm>

#include "base/text.h"
#include "platform/file_errors.h"

namespace velmora::platform {
namespace {

constexpr char32_t PrivateRange = 0xF000;

constexpr bool IsForbidden(unsigned char byte) {
  return byte < 0x20 ||
         std::string_view("\\:*?\"<>|").find(static_cast<char>(byte)) != std::string_view::npos;
}

// The characters of the private range that stand for a byte. "/" and NUL are in no host name.
constexpr bool StandsForByte(char32_t character) {
  if (character <= PrivateRange || character > PrivateRange + 0xFF) return false;
  const auto byte = static_cast<unsigned char>(character - PrivateRange);
  return byte >= 0x80 || IsForbidden(byte);
}

bool IsPlain(std::string_view name) {
  return std::ranges::all_of(name, [](char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte < 0x80 && !IsForbidden(byte) && byte != '/';
  });
}

}  // namespace

std::string ToWindowsName(std::string_view hostName) {
  if (IsPlain(hostName)) return std::string(hostName);
  std::string name;
  for (std::size_t position = 0; position < hostName.size();) {
    const std::size_t start = position;
    const char32_t character = NextCharacter(hostName, position);
    const std::string_view bytes = hostName.substr(start, position - start);
    // A host name that really holds one of our private characters is taken apart too: else it would come
    // back as another name.
    const bool isInvalid = character == 0xFFFD && bytes.size() == 1;
    const bool isForbidden = bytes.size() == 1 && IsForbidden(static_cast<unsigned char>(bytes[0]));
    if (isInvalid || isForbidden || StandsForByte(character)) {
      for (const char byte : bytes) AppendCharacter(name, PrivateRange + static_cast<unsigned char>(byte));
    } else {
      name += bytes;
    }
  }
  return name;
}

Result<std::string> ToHostName(std::string_view windowsName) {
  if (windowsName.empty() || windowsName == "." || windowsName == "..") return FailWith(file_error::BadName);
  std::string name;
  if (IsPlain(windowsName)) {
    name = windowsName;
  } else {
    if (!IsValidUtf8(windowsName)) return FailWith(file_error::BadName);
    for (std::size_t position = 0; position < windowsName.size();) {
      const std::size_t start = position;
      const char32_t character = NextCharacter(windowsName, position);
      if (character < 0x80 && (IsForbidden(static_cast<unsigned char>(character)) || character == '/')) {
        return FailWith(file_error::BadName);
      }
      if (StandsForByte(character)) {
        name += static_cast<char>(character - PrivateRange);
      } else {
        name += windowsName.substr(start, position - start);
      }
    }
  }
  if (name.size() > NAME_MAX) return FailWith(file_error::BadName);
  return name;
}

std::string JoinHostPath(std::string_view directory, std::string_view hostName) {
  std::string path(directory == "/" ? "" : directory);
  path += '/';
  return path += hostName;
}

}  // namespace velmora::platform
