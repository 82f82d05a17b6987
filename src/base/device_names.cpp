#include "base/device_names.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>

#include "base/text.h"

namespace velmora {
namespace {

constexpr std::array<std::string_view, 6> Devices = {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
constexpr std::array<std::string_view, 2> NumberedDevices = {"COM", "LPT"};
constexpr std::array<std::string_view, 13> DeviceNumbers = {"0", "1", "2", "3", "4", "5", "6",
                                                            "7", "8", "9", "¹", "²", "³"};

bool IsOneOf(std::span<const std::string_view> names, std::string_view name) {
  return std::ranges::find(names, name) != names.end();
}

}  // namespace

bool IsDeviceName(std::string_view name) {
  const std::string upper = ToUpper(Trim(name.substr(0, name.find('.'))));
  const std::string_view device = upper;
  return IsOneOf(Devices, device) ||
         (IsOneOf(NumberedDevices, device.substr(0, 3)) && IsOneOf(DeviceNumbers, device.substr(3)));
}

}  // namespace velmora
