// Names that Windows keeps for devices.
#pragma once

#include <string_view>

namespace velmora {

// Whether Windows takes a file or folder of that name, with or without an extension, for a device (CON,
// nul.txt, COM1): none can be made there.
bool IsDeviceName(std::string_view name);

}  // namespace velmora
