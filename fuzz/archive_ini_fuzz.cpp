// Any bytes as a file of options: reading and writing the access data keep every other line.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "require.h"
#include "store/archive_ini.h"
#include "store/remote_access.h"

using velmora::fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view content(reinterpret_cast<const char*>(data), size);
  const std::string once = velmora::store::WithAccessData(content, {"name", "word"});
  Require(velmora::store::WithAccessData(once, {"name", "word"}) == once);
  Require(velmora::store::LinesOf(once).size() >= velmora::store::LinesOf(content).size());
  const auto access = velmora::store::RemoteAccess::Parse(content);
  for (const auto& row : velmora::store::RemoteAccessKeys)
    (void)velmora::store::DecodeAccessValue(row.Decoder, access.Value(row.Key));  // must come to an end
  return 0;
}
