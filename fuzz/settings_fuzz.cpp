// Any bytes as a settings file: loading never fails, and what is written anew is read back.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "require.h"
#include "settings/options_store.h"
#include "settings/path_mappings.h"
#include "settings/server_list.h"
#include "settings/toml_text.h"

using velmora::fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace velmora::settings;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::optional<Values> values = ParseSettings(bytes);
  if (values) {
    const Options options = LoadOptions(*values, "ZEB1", {});
    (void)SaveChanges(*values, "ZEB1", options, options);
    (void)LoadPathMappings(*values, *values);
    (void)ServerListChanges(*values, "ZEB1");
  }
  // The bytes as a text, written into the file that they are.
  const std::string text(bytes.substr(0, 2000));
  const std::string changed = ChangeSettings(bytes, {{"Options", "Text", Value(text)}});
  const std::optional<Values> written = ParseSettings(changed);
  Require(written.has_value());
  Require(FindValue(*written, "Options", "Text") != nullptr);
  return 0;
}
