#include "base/text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace velmora {
namespace {

constexpr char32_t Replacement = 0xFFFD;
constexpr std::string_view Blanks = " \t\r\n";

constexpr bool IsSurrogate(char32_t character) { return character >= 0xD800 && character <= 0xDFFF; }

// The length in bytes of the valid sequence at `position`, 0 where there is none; its code point in
// `character`. Overlong forms, surrogates and values above U+10FFFF are not valid (RFC 3629).
std::size_t DecodeSequence(std::string_view text, std::size_t position, char32_t& character) {
  const auto byte = [&](std::size_t offset) -> char32_t {
    return static_cast<unsigned char>(text[position + offset]);
  };
  const std::size_t left = text.size() - position;
  const char32_t lead = byte(0);
  if (lead < 0x80) {
    character = lead;
    return 1;
  }
  std::size_t length = 0;
  char32_t smallest = 0;
  if ((lead & 0xE0) == 0xC0) {
    length = 2, smallest = 0x80, character = lead & 0x1F;
  } else if ((lead & 0xF0) == 0xE0) {
    length = 3, smallest = 0x800, character = lead & 0x0F;
  } else if ((lead & 0xF8) == 0xF0) {
    length = 4, smallest = 0x10000, character = lead & 0x07;
  }
  if (length == 0 || left < length) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
    character = (character << 6) | (byte(i) & 0x3F);
  }
  return character >= smallest && character <= LastCharacter && !IsSurrogate(character) ? length : 0;
}

// The bytes that the next character takes; an invalid byte stands alone.
std::size_t CharacterLength(std::string_view text, std::size_t position) {
  char32_t character = 0;
  return std::max<std::size_t>(1, DecodeSequence(text, position, character));
}

}  // namespace

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(Blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

std::vector<std::string> Split(std::string_view text, std::string_view separator, std::size_t limit) {
  std::vector<std::string> pieces;
  std::size_t start = 0;
  while (!separator.empty() && (limit == 0 || pieces.size() + 1 < limit)) {
    const std::size_t end = text.find(separator, start);
    if (end == std::string_view::npos) break;
    pieces.emplace_back(text.substr(start, end - start));
    start = end + separator.size();
  }
  pieces.emplace_back(text.substr(start));
  return pieces;
}

std::string Join(const std::vector<std::string>& pieces, std::string_view separator) {
  std::string joined;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    if (i > 0) joined += separator;
    joined += pieces[i];
  }
  return joined;
}

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
  std::string replaced;
  std::size_t start = 0;
  if (!from.empty()) {
    for (std::size_t hit = text.find(from); hit != std::string_view::npos; hit = text.find(from, start)) {
      replaced.append(text, start, hit - start).append(to);
      start = hit + from.size();
    }
  }
  replaced.append(text, start);
  return replaced;
}

std::size_t AsciiPrefix(std::string_view text) {
  constexpr std::uint64_t highBits = 0x8080808080808080;
  std::size_t size = 0;
  for (std::uint64_t block = 0; text.size() - size >= sizeof block; size += sizeof block) {
    std::memcpy(&block, text.data() + size, sizeof block);
    if ((block & highBits) != 0) break;
  }
  while (size < text.size() && static_cast<unsigned char>(text[size]) < 0x80) ++size;
  return size;
}

std::size_t CountCharacters(std::string_view text) {
  std::size_t count = 0;
  for (std::size_t position = 0; position < text.size(); ++count) position += CharacterLength(text, position);
  return count;
}

std::string_view LeftCharacters(std::string_view text, std::size_t count) {
  std::size_t position = 0;
  for (; count > 0 && position < text.size(); --count) position += CharacterLength(text, position);
  return text.substr(0, position);
}

char32_t NextCharacter(std::string_view text, std::size_t& position) {
  char32_t character = 0;
  const std::size_t length = DecodeSequence(text, position, character);
  position += std::max<std::size_t>(1, length);
  return length > 0 ? character : Replacement;
}

void AppendCharacter(std::string& text, char32_t character) {
  if (character > LastCharacter || IsSurrogate(character)) character = Replacement;
  const auto append = [&](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
  if (character < 0x80) {
    append(character);
  } else if (character < 0x800) {
    append(0xC0 | (character >> 6));
    append(0x80 | (character & 0x3F));
  } else if (character < 0x10000) {
    append(0xE0 | (character >> 12));
    append(0x80 | ((character >> 6) & 0x3F));
    append(0x80 | (character & 0x3F));
  } else {
    append(0xF0 | (character >> 18));
    append(0x80 | ((character >> 12) & 0x3F));
    append(0x80 | ((character >> 6) & 0x3F));
    append(0x80 | (character & 0x3F));
  }
}

bool IsValidUtf8(std::string_view text) {
  for (std::size_t position = 0; position < text.size();) {
    char32_t character = 0;
    const std::size_t length = DecodeSequence(text, position, character);
    if (length == 0) return false;
    position += length;
  }
  return true;
}

std::string MakeValidUtf8(std::string_view text) {
  std::string valid;
  valid.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t ascii = AsciiPrefix(text.substr(position));
    valid.append(text, position, ascii);
    position += ascii;
    if (position < text.size()) AppendCharacter(valid, NextCharacter(text, position));
  }
  return valid;
}

std::string BlankControlCharacters(std::string_view text) {
  std::string blanked;
  blanked.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t start = position;
    const char32_t character = NextCharacter(text, position);
    if (character < 0x20 || (character >= 0x7F && character <= 0x9F)) {
      blanked += ' ';
    } else {
      blanked.append(text, start, position - start);
    }
  }
  return blanked;
}

}  // namespace velmora
