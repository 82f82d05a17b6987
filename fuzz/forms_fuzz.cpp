// Forms and values of any content: one pass gives what replacing one variable after the other gives. The
// input is a form and three values, each ending at a line feed.
#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/text.h"
#include "mailarchive/format/file_names.h"
#include "mailarchive/format/forms.h"
#include "mailarchive/format/page_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view rest(reinterpret_cast<const char*>(data), size);
  std::array<std::string_view, 4> parts;
  for (auto& part : parts) {
    const auto end = rest.find('\n');
    part = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  }
  const std::vector<velmora::mailarchive::FormValue> values = {
      {"%VELMORA_SUBJECT%", parts[1]}, {"%VELMORA_FROM%", parts[2]}, {"%VELMORA_TO%", parts[3]}};

  std::string oneByOne(parts[0]);
  for (const auto& [variable, value] : values) oneByOne = velmora::ReplaceAll(oneByOne, variable, value);
  if (velmora::mailarchive::FillForm(parts[0], values) != oneByOne) std::abort();

  const auto neutral = velmora::mailarchive::NeutralizeHeadTags(parts[0]);
  if (velmora::mailarchive::NeutralizeHeadTags(neutral) != neutral) std::abort();
  const auto name = velmora::mailarchive::EntryBaseName(parts[0]);
  if (name.find_first_of("\\/:*?\"<>|") != std::string::npos || velmora::CountCharacters(name) > 59)
    std::abort();
  return 0;
}
