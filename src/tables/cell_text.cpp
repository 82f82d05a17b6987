#include "tables/cell_text.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"
#include "tables/utf16.h"

namespace velmora::tables {
namespace {

std::string ShowNumber(double number) {
  std::string text = fmt::format("{:.15G}", number == 0 ? 0.0 : number);  // no "-0"
  std::ranges::replace(text, '.', ',');
  return text;
}

std::string ShowDate(DateTime date) {
  if (date.IsNull()) return {};
  if (date.Seconds() > 0 && date.Seconds() < SecondsPerDay) return FormatTime(date);
  return date.Seconds() % SecondsPerDay == 0 ? FormatDate(date) : FormatDateTime(date);
}

struct Show {
  std::string operator()(std::monostate) const { return {}; }
  std::string operator()(double number) const { return ShowNumber(number); }
  std::string operator()(bool value) const { return value ? "WAHR" : "FALSCH"; }
  std::string operator()(const std::string& text) const { return text; }
  std::string operator()(DateTime date) const { return ShowDate(date); }
};

bool IsControl(char character) { return static_cast<unsigned char>(character) < 0x20 || character == 0x7F; }

}  // namespace

CellText MakeCellText(std::string_view text) {
  std::string clean;
  clean.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const char byte = text[at];
    if (byte == '\r') {
      clean += '\n';
      at += text.substr(at).starts_with("\r\n") ? 2 : 1;
    } else if (static_cast<unsigned char>(byte) < 0x80) {
      clean += IsControl(byte) && byte != '\n' && byte != '\t' ? ' ' : byte;
      ++at;
    } else {
      const char32_t character = NextCharacter(text, at);
      AppendCharacter(clean, character < 0xA0 ? U' ' : character);  // the control characters behind ASCII
    }
  }
  const std::string_view kept = LeftUtf16(clean, MaxCellText);
  const bool isCut = kept.size() < clean.size();
  clean.resize(kept.size());
  return {std::move(clean), isCut};
}

std::string ShowCell(const Cell& cell) { return std::visit(Show{}, cell); }

bool HoldsValue(const Cell& cell) {
  const auto* text = std::get_if<std::string>(&cell);
  return text != nullptr ? !text->empty() : !std::holds_alternative<std::monostate>(cell);
}

}  // namespace velmora::tables
