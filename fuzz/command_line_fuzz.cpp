// Any text as a command line.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/text.h"
#include "require.h"
#include "startup/command_line.h"

using velmora::fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace velmora;
  using namespace velmora::startup;
  const std::string_view line(reinterpret_cast<const char*>(data), size);
  const LineOption option = DecodeStartOption(line);
  Require((option == LineOption::None) == line.empty());
  Require(!IsUnattended(line) || ControlFileOf(line).has_value());
  Require(!IsUnattended(line) || DecodeStartOption(Trim(line)) == LineOption::Batch);
  Require(!IsMigration(line) || !IsUnattended(line));
  (void)DecodeSaveOption(line);
  const std::string argument = ArgumentOf(line);
  Require(argument.size() <= line.size() && line.find(argument) != std::string_view::npos);
  return 0;
}
