// Records as bytes at the end of a stream.
#pragma once

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "tables/biff.h"
#include "tables/byte_order.h"

namespace velmora::tables {

template <std::unsigned_integral T>
constexpr std::size_t PartSize(T) {
  return sizeof(T);
}
constexpr std::size_t PartSize(double) { return sizeof(double); }
constexpr std::size_t PartSize(std::string_view bytes) { return bytes.size(); }

template <std::unsigned_integral T>
void AppendPart(std::string& stream, T value) {
  AppendLittle(stream, value);
}
inline void AppendPart(std::string& stream, double value) {
  AppendLittle(stream, std::bit_cast<std::uint64_t>(value));
}
inline void AppendPart(std::string& stream, std::string_view bytes) { stream += bytes; }

// A record of these parts: whole numbers of the width of their types, IEEE numbers, bytes as they are.
// Altogether they have at most MaxRecordData bytes.
template <typename... Parts>
void AppendRecord(std::string& stream, biff::Id id, Parts... parts) {
  AppendLittle(stream, static_cast<std::uint16_t>(id));
  AppendLittle(stream, static_cast<std::uint16_t>((PartSize(parts) + ... + 0)));
  (AppendPart(stream, parts), ...);
}

// A text as records hold it: one byte for each unit where all of them allow it, else two.
class EncodedText {
 public:
  explicit EncodedText(std::string_view utf8);

  std::size_t Units() const { return units_.size(); }
  std::size_t UnitSize() const { return isWide_ ? 2 : 1; }
  std::uint8_t Flags() const { return isWide_ ? biff::HighByte : 0; }
  // How many units from `first` on, at most `limit`, leave no pair of surrogates split.
  std::size_t WholeUnits(std::size_t first, std::size_t limit) const;
  void AppendUnits(std::string& stream, std::size_t first, std::size_t count) const;

  // Count, flags and units; the count in one byte or two (2.5.240 ShortXLUnicodeString, 2.5.294
  // XLUnicodeString).
  template <std::unsigned_integral Count>
  std::string Whole() const {
    std::string bytes;
    AppendLittle(bytes, static_cast<Count>(Units()));
    AppendLittle(bytes, Flags());
    AppendUnits(bytes, 0, Units());
    return bytes;
  }

 private:
  std::u16string units_;
  bool isWide_;
};

}  // namespace velmora::tables
