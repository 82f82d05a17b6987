// Markers of foreign mail archives.
#include <cstdint>
#include <cstdlib>

#include "mailarchive/format/marker.h"
#include "single_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const auto host = velmora::platform::MakeHostFileSystem({});
  velmora::fuzz::SingleFile files(*host, {reinterpret_cast<const char*>(data), size});
  const auto descriptor = velmora::mailarchive::ReadArcDescriptor(files, "Z:\\archive");
  if (!descriptor || descriptor->ArchiveDisplayName.find('\n') != std::string::npos) std::abort();
  return 0;
}
