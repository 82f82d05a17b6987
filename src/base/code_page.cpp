#include "base/code_page.h"

#include <fmt/format.h>

#include <array>
#include <cstdint>
#include <optional>

#include "base/text.h"

namespace velmora {
namespace {

// Codes 0x80 to 0x9F of Windows-1252; every other code is its own code point.
constexpr std::array<char16_t, 32> UpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr std::size_t MostReferenceDigits = 7;

std::optional<char> CodeOf(char32_t character) {
  if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) return static_cast<char>(character);
  for (std::size_t i = 0; i < UpperControls.size(); ++i)
    if (UpperControls[i] == character) return static_cast<char>(0x80 + i);
  return std::nullopt;
}

void AppendUnmappable(std::string& bytes, char32_t character, Unmappable unmappable) {
  switch (unmappable) {
    case Unmappable::QuestionMark:
      bytes += '?';
      break;
    case Unmappable::Underscore:
      bytes += '_';
      break;
    case Unmappable::Reference:
      bytes.append("&#").append(fmt::format_int(static_cast<std::uint32_t>(character)).c_str()) += ';';
      break;
  }
}

// The character of the reference at the start of `text` and the reference's length; nothing when there is
// none that stands for a character above 255.
struct Reference {
  char32_t Character;
  std::size_t Length;
};

std::optional<Reference> ReadReference(std::string_view text) {
  if (!text.starts_with("&#")) return std::nullopt;
  char32_t value = 0;
  std::size_t position = 2;
  while (position < text.size() && position < 2 + MostReferenceDigits && text[position] >= '0' &&
         text[position] <= '9') {
    value = value * 10 + static_cast<char32_t>(text[position] - '0');
    ++position;
  }
  const bool closed = position < text.size() && text[position] == ';';
  const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
  if (!closed || value <= 0xFF || value > LastCharacter || surrogate) return std::nullopt;
  return Reference{value, position + 1};
}

}  // namespace

std::string ToCodePage(std::string_view utf8, Unmappable unmappable) {
  std::string bytes;
  bytes.reserve(utf8.size());
  for (std::size_t position = 0; position < utf8.size();) {
    const std::size_t ascii = AsciiPrefix(utf8.substr(position));
    bytes.append(utf8, position, ascii);
    position += ascii;
    if (position == utf8.size()) break;
    const char32_t character = NextCharacter(utf8, position);
    if (const auto code = CodeOf(character)) {
      bytes += *code;
    } else {
      AppendUnmappable(bytes, character, unmappable);
    }
  }
  return bytes;
}

std::string FromCodePage(std::string_view bytes) {
  std::string utf8;
  utf8.reserve(bytes.size() + bytes.size() / 8);
  for (std::size_t position = 0; position < bytes.size();) {
    const std::size_t ascii = AsciiPrefix(bytes.substr(position));
    utf8.append(bytes, position, ascii);
    position += ascii;
    if (position == bytes.size()) break;
    const auto code = static_cast<unsigned char>(bytes[position++]);
    AppendCharacter(utf8, code < 0xA0 ? UpperControls[code - 0x80] : char32_t{code});
  }
  return utf8;
}

bool FitsCodePage(std::string_view utf8) {
  for (std::size_t position = 0; position < utf8.size();)
    if (!CodeOf(NextCharacter(utf8, position))) return false;
  return true;
}

std::string DecodeReferences(std::string_view utf8) {
  std::string decoded;
  decoded.reserve(utf8.size());
  for (std::size_t position = 0; position < utf8.size();) {
    const auto reference = utf8[position] == '&' ? ReadReference(utf8.substr(position)) : std::nullopt;
    if (reference) {
      AppendCharacter(decoded, reference->Character);
      position += reference->Length;
    } else {
      decoded += utf8[position++];
    }
  }
  return decoded;
}

}  // namespace velmora
