// Little-endian numbers out of bytes and into them.
#pragma once

#include <array>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace velmora::tables {

// The number that starts at `position`; the bytes must be there.
template <std::unsigned_integral T>
T ReadLittle(std::string_view bytes, std::size_t position) {
  std::uint64_t value = 0;
  for (std::size_t i = 0; i < sizeof(T); ++i) {
    value |= std::uint64_t{static_cast<unsigned char>(bytes[position + i])} << (8 * i);
  }
  return static_cast<T>(value);
}

template <std::unsigned_integral T>
void AppendLittle(std::string& bytes, T value) {
  std::array<char, sizeof(T)> parts{};
  for (std::size_t i = 0; i < sizeof(T); ++i) {
    parts[i] = static_cast<char>(static_cast<std::uint64_t>(value) >> (8 * i));
  }
  bytes.append(parts.data(), parts.size());
}

// Over bytes that are there.
template <std::unsigned_integral T>
void PutLittle(std::string& bytes, std::size_t position, T value) {
  for (std::size_t i = 0; i < sizeof(T); ++i) {
    bytes[position + i] = static_cast<char>(static_cast<std::uint64_t>(value) >> (8 * i));
  }
}

inline double ReadDouble(std::string_view bytes, std::size_t position) {
  return std::bit_cast<double>(ReadLittle<std::uint64_t>(bytes, position));
}

}  // namespace velmora::tables
