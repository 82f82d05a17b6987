#include <algorithm>

#include "base/text.h"
#include "mailarchive/format/forms.h"

namespace velmora::mailarchive {
namespace {

constexpr std::string_view Prefix = "%VELMORA_";

std::string FillOneByOne(std::string_view form, const std::vector<FormValue>& values) {
  std::string text(form);
  for (const auto& [variable, value] : values) text = ReplaceAll(text, variable, value);
  return text;
}

bool IsPlainVariable(std::string_view variable) {
  return variable.size() > Prefix.size() && variable.starts_with(Prefix) &&
         variable.find('%', 1) == variable.size() - 1;
}

// Whether a variable may begin in a text that follows a "%" and go on in what is inserted behind it.
bool MayGoOn(std::string_view afterPercent) {
  constexpr auto Rest = Prefix.substr(1);
  return afterPercent.starts_with(Rest) || Rest.starts_with(afterPercent);
}
bool MayBegin(std::string_view text) {
  const auto percent = text.rfind('%');
  return percent != std::string_view::npos && MayGoOn(text.substr(percent + 1));
}

// The form with its variables filled in one pass. Nothing when this could differ from replacing one variable
// after the other: when an inserted value holds a variable, or makes one together with its surroundings.
std::optional<std::string> FillInOnePass(std::string_view form, const std::vector<FormValue>& values) {
  const auto isPlain = [](const FormValue& value) {
    return IsPlainVariable(value.first) && value.second.find(Prefix) == std::string_view::npos &&
           !MayBegin(value.second);
  };
  if (!std::ranges::all_of(values, isPlain)) return std::nullopt;

  std::string text;
  std::size_t copied = 0;  // the form up to here stands in `text`
  for (auto start = form.find(Prefix); start != std::string_view::npos;) {
    const auto end = form.find('%', start + Prefix.size());
    if (end == std::string_view::npos) break;
    const auto name = form.substr(start, end + 1 - start);
    const auto value = std::ranges::find(values, name, &FormValue::first);
    if (value == values.end()) {
      start = form.find(Prefix, start + 1);
      continue;
    }
    const auto literal = form.substr(copied, start - copied);
    const bool followsVariable = copied > 0 && literal.find('%') == std::string_view::npos;
    if (MayBegin(literal) || (followsVariable && MayGoOn(literal))) return std::nullopt;
    text += literal;
    text += value->second;
    copied = end + 1;
    start = form.find(Prefix, end);
    if (start == end) return std::nullopt;  // two variables share a "%": the order decides which one it is
  }
  text += form.substr(copied);
  return text;
}

}  // namespace

std::string FillForm(std::string_view form, const std::vector<FormValue>& values) {
  if (auto text = FillInOnePass(form, values)) return *std::move(text);
  return FillOneByOne(form, values);
}

}  // namespace velmora::mailarchive
