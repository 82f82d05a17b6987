// Any bytes as a file of vCards: reading must end and give texts that the store can keep.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "addresses/vcard_reader.h"
#include "base/text.h"
#include "require.h"

using velmora::fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using velmora::store::AddressProperty;
  velmora::addresses::VCardReader reader({reinterpret_cast<const char*>(data), size});
  std::size_t line = 0;
  while (const auto card = reader.Next()) {
    Require(card->Line > line);
    line = card->Line;
    for (const auto& [property, text] : card->Values) {
      Require(!text.empty() && velmora::IsValidUtf8(text));
      if (property != AddressProperty::Notes) Require(velmora::BlankControlCharacters(text) == text);
    }
  }
  return 0;
}
