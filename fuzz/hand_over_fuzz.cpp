// Any bytes as the file by which a second instance hands over its command line.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/text.h"
#include "require.h"
#include "startup/command_line.h"
#include "startup/hand_over.h"

using velmora::fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace velmora;
  const std::string line = startup::HandOverLine({reinterpret_cast<const char*>(data), size});
  Require(IsValidUtf8(line) && line.find('\n') == std::string::npos && line == Trim(line));
  const std::string argument = startup::ArgumentOf(line);
  Require(IsValidUtf8(argument) && argument.size() <= line.size());
  (void)startup::DecodeStartOption(line);
  return 0;
}
