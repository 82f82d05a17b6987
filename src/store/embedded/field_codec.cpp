#include "store/embedded/field_codec.h"

#include <fmt/core.h>

#include <charconv>

#include "base/text.h"

namespace velmora::store::embedded {
namespace {

// As they stand in the database; never renumbered.
enum class ValueKind : std::int64_t { Bool = 1, Number = 2, Real = 3, Text = 4, Date = 5, Texts = 6 };

constexpr std::string_view TextSeparator = "\x1E";

CodedValue OfNumber(ValueKind kind, std::int64_t number) {
  return {static_cast<std::int64_t>(kind), true, number, {}};
}
CodedValue OfText(ValueKind kind, std::string text) {
  return {static_cast<std::int64_t>(kind), false, 0, std::move(text)};
}

struct Encoder {
  CodedValue operator()(std::monostate) const { return OfText(ValueKind::Text, {}); }
  CodedValue operator()(bool value) const { return OfNumber(ValueKind::Bool, value ? 1 : 0); }
  CodedValue operator()(std::int64_t value) const { return OfNumber(ValueKind::Number, value); }
  CodedValue operator()(double value) const { return OfText(ValueKind::Real, fmt::format("{}", value)); }
  CodedValue operator()(const std::string& value) const {
    return OfText(ValueKind::Text, MakeValidUtf8(value));
  }
  CodedValue operator()(DateTime value) const { return OfNumber(ValueKind::Date, value.Seconds()); }
  CodedValue operator()(const std::vector<std::string>& value) const {
    return OfText(ValueKind::Texts, Join(value, TextSeparator));
  }
};

}  // namespace

bool IsNumberKind(std::int64_t kind) {
  const auto valueKind = static_cast<ValueKind>(kind);
  return valueKind == ValueKind::Bool || valueKind == ValueKind::Number || valueKind == ValueKind::Date;
}

CodedValue EncodeValue(const FieldValue& value) { return std::visit(Encoder{}, value); }

FieldValue DecodeValue(const CodedValue& coded) {
  switch (static_cast<ValueKind>(coded.Kind)) {
    case ValueKind::Bool:
      return coded.Number != 0;
    case ValueKind::Number:
      return coded.Number;
    case ValueKind::Date:
      return DateTime::FromSeconds(coded.Number);
    case ValueKind::Texts:
      return Split(coded.Text, TextSeparator);
    case ValueKind::Real: {
      double value = 0;
      // A text that is no number leaves 0.
      (void)std::from_chars(coded.Text.data(), coded.Text.data() + coded.Text.size(), value);
      return value;
    }
    case ValueKind::Text:
      break;
  }
  return coded.Text;
}

}  // namespace velmora::store::embedded
