// Design files: whatever they name, nothing is made outside of the target directory.
#include <cstdint>
#include <cstdlib>

#include "base/paths.h"
#include "mailarchive/format/forms.h"
#include "single_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using velmora::mailarchive::Form;
  static const auto host = velmora::platform::MakeHostFileSystem({});
  velmora::fuzz::SingleFile files(*host, {reinterpret_cast<const char*>(data), size});
  velmora::mailarchive::DesignSet designs(files, "Z:\\designs", "Standard");
  (void)designs.LoadDesignSet();
  for (int form = 0; form < static_cast<int>(velmora::mailarchive::FormCount); ++form) {
    (void)designs.LoadDesignForm(static_cast<Form>(form), "Z:\\target");
    if (!designs.FormText(static_cast<Form>(form))) std::abort();
  }
  for (const auto& path : files.Made) {
    if (!velmora::IsSafeRelativePath(path.substr(std::string_view("Z:\\target\\").size()))) std::abort();
  }
  return 0;
}
