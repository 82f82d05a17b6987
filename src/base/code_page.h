// Windows-1252, the code page of the program's text files. The one place that converts.
#pragma once

#include <string>
#include <string_view>

namespace velmora {

// What becomes of a character that the code page lacks.
enum class Unmappable {
  QuestionMark,  // "?"
  Reference,     // decimal character reference "&#1055;" (HTML, .add, .vla)
  Underscore,    // "_" (names of files that we make)
};

// UTF-8 to Windows-1252. The five undefined codes (0x81, 0x8D, 0x8F, 0x90, 0x9D) map to the control
// characters of the same value, as Windows does. Never fails.
std::string ToCodePage(std::string_view utf8, Unmappable unmappable = Unmappable::QuestionMark);
// Windows-1252 to UTF-8. Never fails; every byte has a character.
std::string FromCodePage(std::string_view bytes);
// Whether the code page has every character of the text.
bool FitsCodePage(std::string_view utf8);
// Decimal references above 255 back to their characters, all others untouched: the reverse of
// Unmappable::Reference for .add and .vla.
std::string DecodeReferences(std::string_view utf8);

}  // namespace velmora
