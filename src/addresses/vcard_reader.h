// Reading vCards: 2.1, 3.0 (RFC 2426), 4.0 (RFC 6350), and those that this program writes.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "addresses/vcard_lines.h"
#include "store/address_item.h"

namespace velmora::addresses {

struct VCard {
  store::AddressValues Values;  // those that are not empty; only notes have more than one line
  std::size_t Line = 0;         // of its BEGIN, from 1
};

// The cards of a file, one after the other in linear time, whatever the bytes are. What stands outside of
// cards is passed over, a card without an end ends where the next one begins, and what an address has no
// place for is left out. The bytes must outlive the reader.
class VCardReader {
 public:
  explicit VCardReader(std::string_view bytes) : lines_(bytes) {}
  // The next card; nothing at the end. A card may be without any value.
  std::optional<VCard> Next();
  // The bytes read so far.
  std::size_t Position() const { return lines_.Position(); }

 private:
  VCardLineReader lines_;
  std::optional<std::size_t> begun_;  // the line of a BEGIN that ended the card before it
};

}  // namespace velmora::addresses
